#include "skin/BitmapSlider.h"
#include "skin/Colours.h"
#include "skin/ImageButton.h"
#include "skin/PicButton.h"
#include "skin/ProgressSlider.h"
#include "skin/SkinLabel.h"
#include "tests/fixtures/Contrast.h"

#include <QAccessible>
#include <QAnimationDriver>
#include <QApplication>
#include <QMenu>
#include <QProxyStyle>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

namespace {

/// Of a desktop that asks for reduced motion.
class StillStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_Widget_Animation_Duration
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

/// A window, and beside it another one, with the mouse outside the controls.
class ControlsTest : public testing::Test {
protected:
    void Show() {
        m_window.resize(300, 200);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        Move(m_window, {280, 180}); // a mouse that is told where it was has not moved
        Leave();
    }

    // The mouse as the window system tells it, so that entering, leaving and holding are real.

    void Move(const QWidget& control, QPoint place) {
        QTest::mouseMove(m_window.windowHandle(), control.mapTo(&m_window, place));
        QCoreApplication::processEvents();
    }
    void MoveOnto(const QWidget& control) { Move(control, control.rect().center()); }
    void Leave() { Move(m_window, {290, 190}); }
    void Press(const QWidget& control, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(m_window.windowHandle(), button, {}, control.mapTo(&m_window, place));
    }
    void Release(const QWidget& control, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(m_window.windowHandle(), button, {}, control.mapTo(&m_window, place));
    }

    /// Two kinds of buttons, still.
    std::vector<QAbstractButton*> MakeButtons() {
        const std::vector<QAbstractButton*> buttons{
            new CImageButton(PictureId::Ok, QStringLiteral("OK"), &m_window),
            new CPicButton(PictureId::NewPlaylist, QStringLiteral("New"), &m_window),
        };
        for (QAbstractButton* button : buttons) {
            button->setStyle(&m_still);
            button->resize(button->sizeHint());
        }
        buttons[1]->move(60, 0);
        return buttons;
    }

    StillStyle m_still;
    QWidget m_window;
};

QImage Look(QWidget& control) {
    return control.grab().toImage();
}

} // namespace

TEST_F(ControlsTest, EachStateOfAButtonHasALookOfItsOwn) {
    const auto buttons = MakeButtons();
    Show();
    for (QAbstractButton* button : buttons) {
        MoveOnto(*button);
        const QImage hot = Look(*button);
        button->setDown(true);
        const QImage pressed = Look(*button);
        button->setDown(false);
        Leave();
        button->setEnabled(false);
        const QImage disabled = Look(*button);
        button->setEnabled(true);
        const QImage normal = Look(*button);
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Tab);
        QTest::keyClick(m_window.focusWidget(), Qt::Key_Backtab);
        const QImage focused = Look(*button);
        MoveOnto(*button);
        const std::array looks{normal, hot, pressed, disabled, focused, Look(*button)};
        for (std::size_t a = 0; a < looks.size(); ++a)
            for (std::size_t b = 0; b < a; ++b)
                EXPECT_NE(looks[a], looks[b]) << a << " and " << b;
    }
    CImageButton normal(PictureId::Ok, {}, nullptr);
    CImageButton preset(PictureId::Ok, {}, nullptr);
    preset.setDefault(true);
    EXPECT_NE(Look(normal), Look(preset));
}

TEST_F(ControlsTest, HoverEnds) {
    const auto buttons = MakeButtons();
    Show();
    QWidget other;
    for (QAbstractButton* button : buttons) {
        const QImage normal = Look(*button);
        button->setEnabled(false);
        const QImage disabled = Look(*button);
        button->setEnabled(true);
        struct Ending {
            const char* name;
            std::function<void()> end;
            const QImage& look;
        };
        const std::array endings{
            Ending{"the mouse leaves fast", [&] { Leave(); }, normal},
            Ending{"the button is disabled", [&] { button->setEnabled(false); }, disabled},
            Ending{"the mouse over a disabled button",
                   [&] {
                       button->setEnabled(false);
                       Move(*button, {10, 10});
                   },
                   disabled},
            Ending{"the focus goes",
                   [&] {
                       button->setFocus(Qt::MouseFocusReason);
                       button->clearFocus();
                   },
                   normal},
            Ending{"the mouse is dragged out",
                   [&] {
                       Press(*button, {20, 20});
                       Leave();
                       EXPECT_FALSE(button->isDown());
                   },
                   normal},
            Ending{"another window is active",
                   [&] {
                       other.show();
                       other.activateWindow();
                       ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
                   },
                   normal},
        };
        for (const Ending& ending : endings) {
            button->clearFocus(); // which would end it, too
            MoveOnto(*button);
            EXPECT_NE(Look(*button), normal) << ending.name;
            ending.end();
            EXPECT_EQ(Look(*button), ending.look) << ending.name;
            Release(m_window, {290, 190});
            button->setEnabled(true);
            m_window.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
            Leave();
        }
    }
}

TEST_F(ControlsTest, HoverFadesWhereTheDesktopAllowsMotion) {
    class Clock : public QAnimationDriver {
    public:
        void AdvanceTo(qint64 milliseconds) {
            m_now = milliseconds;
            advance();
        }
        qint64 elapsed() const override { return m_now; }

    private:
        qint64 m_now = 0;
    } clock;
    clock.install();
    CImageButton button(PictureId::Ok, {}, &m_window);
    Show();
    const QImage normal = Look(button);
    MoveOnto(button);
    clock.AdvanceTo(60);
    const QImage half = Look(button);
    clock.AdvanceTo(120);
    const QImage full = Look(button);
    EXPECT_NE(half, normal);
    EXPECT_NE(half, full);
    Leave();
    EXPECT_EQ(Look(button), full);
    clock.AdvanceTo(240);
    EXPECT_EQ(Look(button), normal);
    clock.uninstall();
}

TEST_F(ControlsTest, APressTakesTheFocusAndADoubleClickIsTwoClicks) {
    for (QAbstractButton* button : MakeButtons()) {
        Show();
        int clicks = 0;
        QObject::connect(button, &QAbstractButton::clicked, [&] { ++clicks; });
        const QPoint corner = button->rect().bottomRight();
        Press(*button, corner);
        EXPECT_TRUE(button->hasFocus());
        EXPECT_TRUE(button->isDown());
        Release(*button, corner);
        EXPECT_EQ(clicks, 1);
        QTest::mouseDClick(m_window.windowHandle(), Qt::LeftButton, {}, button->pos() + corner);
        EXPECT_EQ(clicks, 3);
        QTest::keyClick(button, Qt::Key_Space);
        EXPECT_EQ(clicks, 4);
    }
}

TEST_F(ControlsTest, AButtonStaysPressedWhileItsMenuIsOpen) {
    CImageButton button(PictureId::Ok, {}, &m_window);
    button.setStyle(&m_still);
    QMenu menu;
    menu.addAction(QStringLiteral("Entry"));
    button.setMenu(&menu);
    Show();
    button.setDown(true);
    const QImage pressed = Look(button);
    button.setDown(false);
    bool opened = false;
    QTimer::singleShot(0, &menu, [&] {
        opened = menu.isVisible();
        EXPECT_EQ(Look(button), pressed);
        EXPECT_GE(menu.y(), button.mapToGlobal(QPoint(0, button.height())).y());
        menu.close();
    });
    Press(button, {20, 20});
    Release(button, {20, 20});
    EXPECT_TRUE(opened);
    EXPECT_FALSE(button.isDown());
}

namespace {

/// A slider whose thumb has 100 pixels to move in: one for each position.
class SliderTest : public ControlsTest {
protected:
    static constexpr int kThumb = 12; ///< its length

    struct Told {
        CBitmapSlider::Notice notice;
        int position;
        bool operator==(const Told&) const = default;
    };

    void Make(Qt::Orientation orientation) {
        m_slider = std::make_unique<CBitmapSlider>(
            CBitmapSlider::Pictures{PictureId::VolumeChannel, PictureId::VolumeThumb}, orientation,
            QStringLiteral("Volume"), &m_window);
        const QSize size(100 + kThumb, 24);
        m_slider->resize(orientation == Qt::Horizontal ? size : size.transposed());
        m_slider->SetNoticeHandler([this](CBitmapSlider::Notice notice, int position) {
            m_told.push_back({notice, position});
        });
        m_slider->show();
        Show();
    }

    /// Where the mouse is over the thumb's centre at a position.
    QPoint At(int position) const {
        const int along = position + kThumb / 2;
        return m_slider->orientation() == Qt::Horizontal ? QPoint(along, 12) : QPoint(12, along);
    }

    std::vector<Told> TakeTold() { return std::exchange(m_told, {}); }

    static constexpr auto kMoved = CBitmapSlider::Notice::Moved;
    static constexpr auto kKey = CBitmapSlider::Notice::Key;

    std::unique_ptr<CBitmapSlider> m_slider;
    std::vector<Told> m_told;
};

} // namespace

TEST_F(SliderTest, AGrabKeepsItsOffsetAndAPressElsewhereJumps) {
    struct Drag {
        int press;
        int pressed;
        int move;
        int moved;
    };
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        Make(orientation);
        const int half = kThumb / 2;
        for (const Drag drag : {
                 Drag{50, 50, 60, 60},
                 Drag{50 + half, 50, 60 + half, 60}, // by the edge of the thumb
                 Drag{50 - half, 50, 20 - half, 20},
                 Drag{51 + half, 51 + half, 71, 71},
                 Drag{49 - half, 49 - half, 20, 20},
                 Drag{50, 50, 150, 100},
                 Drag{50, 50, -6, 0},
             }) {
            m_slider->setValue(50);
            EXPECT_TRUE(TakeTold().empty());
            Press(*m_slider, At(drag.press));
            EXPECT_TRUE(m_slider->isSliderDown());
            Move(*m_slider, At(drag.move));
            Release(*m_slider, At(drag.move));
            EXPECT_FALSE(m_slider->isSliderDown());
            Move(*m_slider, At(30));
            EXPECT_EQ(TakeTold(), (std::vector<Told>{{kMoved, drag.pressed}, {kMoved, drag.moved}}))
                << drag.press;
        }
        Press(*m_slider, At(10), Qt::RightButton);
        Release(*m_slider, At(10), Qt::RightButton);
        EXPECT_TRUE(TakeTold().empty());
    }
}

TEST_F(SliderTest, KeysMoveItAndAreToldAlwaysAndADisabledOneTakesNothing) {
    Make(Qt::Horizontal);
    struct Key {
        Qt::Key key;
        int from;
        int to;
    };
    const std::array keys{
        Key{Qt::Key_Left, 50, 49},  Key{Qt::Key_Up, 50, 49},     Key{Qt::Key_Right, 50, 51},
        Key{Qt::Key_Down, 50, 51},  Key{Qt::Key_PageUp, 50, 30}, Key{Qt::Key_PageDown, 50, 70},
        Key{Qt::Key_Home, 50, 0},   Key{Qt::Key_End, 50, 100},   Key{Qt::Key_Right, 100, 100},
        Key{Qt::Key_End, 100, 100}, Key{Qt::Key_PageUp, 10, 0},  Key{Qt::Key_PageDown, 90, 100},
        Key{Qt::Key_Left, 0, 0},
    };
    for (const Key& key : keys) {
        m_slider->setValue(key.from);
        QTest::keyClick(m_slider.get(), key.key);
        EXPECT_EQ(TakeTold(), (std::vector<Told>{{kKey, key.to}})) << key.key;
    }
    QTest::keyClick(m_slider.get(), Qt::Key_A);
    EXPECT_TRUE(TakeTold().empty());

    m_slider->setValue(50);
    const QImage enabled = Look(*m_slider);
    Press(*m_slider, At(50));
    TakeTold();
    m_slider->setEnabled(false);
    EXPECT_FALSE(m_slider->isSliderDown());
    EXPECT_NE(Look(*m_slider), enabled);
    Move(*m_slider, At(80));
    Press(*m_slider, At(20));
    Release(*m_slider, At(20));
    for (const Key& key : keys)
        QTest::keyClick(m_slider.get(), key.key);
    EXPECT_TRUE(TakeTold().empty());
    EXPECT_EQ(m_slider->value(), 50);
}

TEST_F(SliderTest, TheWheelMovesTheThumbItsOwnWay) {
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        Make(orientation);
        m_slider->setValue(50);
        QWheelEvent up({10, 10}, m_slider->mapToGlobal(QPointF(10, 10)), {}, {0, 120}, Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_slider.get(), &up);
        const int step = QApplication::wheelScrollLines();
        const int expected = orientation == Qt::Horizontal ? 50 + step : 50 - step;
        EXPECT_EQ(TakeTold(), (std::vector<Told>{{kMoved, expected}}));
    }
}

TEST_F(SliderTest, OnlyTheThumbIsDrawnElsewhere) {
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        Make(orientation);
        m_slider->setValue(0);
        const QImage before = Look(*m_slider);
        m_slider->setValue(60);
        const QImage after = Look(*m_slider);
        const bool horizontal = orientation == Qt::Horizontal;
        for (int along = 0; along < 100 + kThumb; ++along) {
            bool changed = false;
            for (int across = 0; across < 24; ++across) {
                const QPoint pixel = horizontal ? QPoint(along, across) : QPoint(across, along);
                changed |= before.pixel(pixel) != after.pixel(pixel);
            }
            const bool expected = along < kThumb || (along >= 60 && along < 60 + kThumb);
            EXPECT_EQ(changed, expected) << along;
        }
    }
}

namespace {

class ProgressTest : public ControlsTest {
protected:
    void Make(QStyle* style) {
        m_bar = std::make_unique<CProgressSlider>(QStringLiteral("Position"), &m_window);
        if (style != nullptr)
            m_bar->setStyle(style);
        m_bar->resize(200, 22);
        Show();
    }

    QTimer& Timer() { return *m_bar->findChild<QTimer*>(); }

    void Tick() {
        QTimerEvent tick(Timer().timerId());
        QCoreApplication::sendEvent(&Timer(), &tick);
    }

    std::unique_ptr<CProgressSlider> m_bar;
    const QString m_strLong = QStringLiteral("<b>Artist</b> - Album - Title ").repeated(4);
};

} // namespace

TEST_F(ProgressTest, TheBarIsFilledUpToItsPositionAndTextOnItCanBeRead) {
    Make(nullptr);
    m_bar->setValue(50);
    const QImage look = Look(*m_bar);
    const QColor ground = look.pixelColor(110, 11);
    const QColor fill = look.pixelColor(90, 11);
    EXPECT_EQ(ground.rgb(), Colours::kInk0);
    EXPECT_EQ(look.pixelColor(99, 11), fill);
    EXPECT_EQ(look.pixelColor(100, 11), ground);
    EXPECT_GE(Contrast(Colours::kText, fill), 4.5);
    QTest::mouseClick(m_bar.get(), Qt::LeftButton, {}, {150, 11});
    EXPECT_EQ(m_bar->value(), 75);
}

TEST_F(ProgressTest, ALongCaptionMovesAPixelWithEachTickWhileItIsSeen) {
    Make(nullptr);
    m_bar->SetCaption(QStringLiteral("Short"));
    EXPECT_FALSE(Timer().isActive());
    m_bar->SetCaption(m_strLong);
    ASSERT_TRUE(Timer().isActive());
    const QRect inside(20, 1, 150, 20);
    const QImage first = Look(*m_bar);
    Tick();
    EXPECT_EQ(Look(*m_bar).copy(inside), first.copy(inside.translated(1, 0)));
    Tick();
    EXPECT_EQ(Look(*m_bar).copy(inside), first.copy(inside.translated(2, 0)));
    int ticks = 2; // until it has come round
    for (; ticks < 5000 && (ticks == 2 || Look(*m_bar) != first); ++ticks)
        Tick();
    EXPECT_GT(ticks, m_bar->fontMetrics().horizontalAdvance(m_strLong));
    EXPECT_LT(ticks, 5000);

    m_bar->hide();
    EXPECT_FALSE(Timer().isActive());
    m_bar->show();
    EXPECT_TRUE(Timer().isActive());
    m_bar->resize(3000, 22);
    EXPECT_FALSE(Timer().isActive());
}

TEST_F(ProgressTest, WithReducedMotionALongCaptionIsCutAndItsToolTipIsWhole) {
    Make(&m_still);
    m_bar->SetCaption(m_strLong);
    EXPECT_FALSE(Timer().isActive());
    EXPECT_TRUE(m_bar->toolTip().contains(m_strLong.trimmed().toHtmlEscaped()))
        << m_bar->toolTip().toStdString();
    m_bar->SetCaption(QStringLiteral("Short"));
    EXPECT_EQ(m_bar->toolTip(), u"Position");
}

TEST_F(ProgressTest, AScreenReaderIsToldTheCaption) {
    Make(nullptr);
    m_bar->SetCaption(QStringLiteral("Title"));
    const auto* told = QAccessible::queryAccessibleInterface(m_bar.get());
    EXPECT_EQ(told->text(QAccessible::Name), u"Position");
    EXPECT_EQ(told->text(QAccessible::Description), u"Title");
}

TEST_F(ControlsTest, TextsAreShownAsTheyAre) {
    EXPECT_EQ(CImageButton(PictureId::Ok, QStringLiteral("&Scan..."), &m_window).toolTip(),
              u"Scan");
    EXPECT_EQ(CSkinLabel(QStringLiteral("<b>"), &m_window).textFormat(), Qt::PlainText);
}
