#include "skin/BitmapSlider.h"
#include "skin/Colours.h"
#include "skin/ImageButton.h"
#include "skin/PicButton.h"
#include "skin/ProgressSlider.h"
#include "tests/fixtures/Contrast.h"

#include <QProxyStyle>
#include <QTest>
#include <QTimer>

#include <array>
#include <tuple>

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
    void SetUp() override {
        m_window.resize(300, 200);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        Move(m_window, {280, 180}); // so that the next place is another
        Leave();
    }

    // The mouse as the window system reports it, so that entering, leaving and holding are real.

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
            new CImageButton(PictureId::Ok, "OK", &m_window),
            new CPicButton(PictureId::NewPlaylist, "New", &m_window),
        };
        for (QAbstractButton* button : buttons) {
            button->setStyle(&m_still);
            button->resize(button->sizeHint());
            button->show();
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

TEST_F(ControlsTest, EachStateOfAButtonHasALookOfItsOwn) {
    for (QAbstractButton* button : MakeButtons()) {
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
    CImageButton button(PictureId::Ok, "&Scan...", nullptr);
    EXPECT_EQ(button.toolTip(), u"Scan");
    const QImage normal = Look(button);
    button.setDefault(true);
    EXPECT_NE(Look(button), normal);
}

TEST_F(ControlsTest, HoverEnds) {
    QWidget other;
    for (QAbstractButton* button : MakeButtons()) {
        const QImage normal = Look(*button);
        button->setEnabled(false);
        const QImage disabled = Look(*button);
        button->setEnabled(true);
        const std::pair<const char*, std::function<void()>> endings[] = {
            {"the mouse leaves fast", [&] { Leave(); }},
            {"the button is disabled, and the mouse over it",
             [&] {
                 button->setEnabled(false);
                 EXPECT_EQ(Look(*button), disabled);
                 Move(*button, {10, 10});
             }},
            {"another window is active",
             [&] {
                 other.show();
                 other.activateWindow();
                 ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
             }},
        };
        for (const auto& [name, end] : endings) {
            MoveOnto(*button);
            EXPECT_NE(Look(*button), normal) << name;
            end();
            EXPECT_EQ(Look(*button), button->isEnabled() ? normal : disabled) << name;
            button->setEnabled(true);
            m_window.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
            Leave();
        }
    }
}

TEST_F(ControlsTest, APressTakesTheFocusAndADoubleClickIsTwoClicks) {
    for (QAbstractButton* button : MakeButtons()) {
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
    }
}

/// A slider whose thumb has 100 pixels to move in: one for each position.
class SliderTest : public ControlsTest {
protected:
    static constexpr int kThumb = 12; ///< its length

    SliderTest() { m_slider.resize(100 + kThumb, 24); }

    /// Where the mouse is over the thumb's centre at a position.
    static QPoint At(int position) { return {position + kThumb / 2, 12}; }

    CBitmapSlider m_slider{{PictureId::VolumeChannel, PictureId::VolumeThumb}, {}, &m_window};
};

TEST_F(SliderTest, AGrabKeepsItsOffsetAndAPressElsewhereJumps) {
    constexpr int half = kThumb / 2;
    const int drags[][4] = {
        // press, value then, move, value then
        {50, 50, 60, 60},
        {50 + half, 50, 60 + half, 60}, // by the edge of the thumb
        {50 - half, 50, 20 - half, 20},
        {51 + half, 51 + half, 71, 71},
        {49 - half, 49 - half, 20, 20},
        {50, 50, 150, 100},
        {50, 50, -6, 0},
    };
    for (const auto& [press, pressed, move, moved] : drags) {
        m_slider.setValue(50);
        Press(m_slider, At(press));
        EXPECT_TRUE(m_slider.isSliderDown());
        EXPECT_EQ(m_slider.value(), pressed);
        Move(m_slider, At(move));
        EXPECT_EQ(m_slider.value(), moved);
        Release(m_slider, At(move));
        EXPECT_FALSE(m_slider.isSliderDown());
        Move(m_slider, At(30));
        EXPECT_EQ(m_slider.value(), moved);
    }
    Press(m_slider, At(10), Qt::RightButton);
    Release(m_slider, At(10), Qt::RightButton);
    EXPECT_EQ(m_slider.value(), 0);
    m_slider.setRange(0, 1000); // ten to a pixel: a press alone moves nothing
    m_slider.setValue(57);
    Press(m_slider, At(6));
    EXPECT_EQ(m_slider.value(), 57);
}

TEST_F(SliderTest, KeysMoveItAndADisabledOneTakesNothing) {
    const std::tuple<Qt::Key, int, int> keys[] = {
        {Qt::Key_Left, 50, 49},    {Qt::Key_Up, 50, 49},   {Qt::Key_Right, 50, 51},
        {Qt::Key_Down, 50, 51},    {Qt::Key_Home, 50, 0},  {Qt::Key_PageUp, 50, 30},
        {Qt::Key_PageUp, 10, 0},   {Qt::Key_End, 50, 100}, {Qt::Key_PageDown, 50, 70},
        {Qt::Key_Right, 100, 100}, {Qt::Key_A, 50, 50},
    };
    for (const auto& [key, from, to] : keys) {
        m_slider.setValue(from);
        QTest::keyClick(&m_slider, key);
        EXPECT_EQ(m_slider.value(), to) << key;
    }
    const QImage enabled = Look(m_slider);
    EXPECT_NE(enabled.pixelColor(0, 0), QColor(Colours::kAccent)) << "the edge of the focus";
    Press(m_slider, At(50));
    m_slider.setEnabled(false);
    EXPECT_FALSE(m_slider.isSliderDown());
    EXPECT_NE(Look(m_slider), enabled);
    Move(m_slider, At(80));
    Press(m_slider, At(20));
    Release(m_slider, At(20));
    for (const auto& [key, from, to] : keys)
        QTest::keyClick(&m_slider, key);
    EXPECT_EQ(m_slider.value(), 50);
}

class ProgressTest : public ControlsTest {
protected:
    ProgressTest() { m_bar.resize(200, 22); }

    QTimer& Timer() { return *m_bar.findChild<QTimer*>(); }

    void Tick() {
        QTimerEvent tick(Timer().timerId());
        QCoreApplication::sendEvent(&Timer(), &tick);
    }

    CProgressSlider m_bar{"Position", &m_window};
    const QString m_strLong = QStringLiteral("<b>Artist</b> - Album - Title ").repeated(4);
};

TEST_F(ProgressTest, TheBarIsFilledUpToItsPositionAndTextOnItCanBeRead) {
    m_bar.setValue(50);
    const QImage look = Look(m_bar);
    const QColor ground = look.pixelColor(110, 11);
    const QColor fill = look.pixelColor(90, 11);
    EXPECT_EQ(ground.rgb(), Colours::kInk0);
    EXPECT_EQ(look.pixelColor(99, 11), fill);
    EXPECT_EQ(look.pixelColor(100, 11), ground);
    EXPECT_GE(Contrast(Colours::kText, fill), 4.5);
    QTest::mouseClick(&m_bar, Qt::LeftButton, {}, {150, 11});
    EXPECT_EQ(m_bar.value(), 75);
}

TEST_F(ProgressTest, ALongCaptionMovesAPixelWithEachTickWhileItIsSeen) {
    m_bar.SetCaption("Short");
    EXPECT_FALSE(Timer().isActive());
    m_bar.SetCaption(m_strLong);
    ASSERT_TRUE(Timer().isActive());
    const QRect inside(20, 1, 150, 20);
    const QImage first = Look(m_bar);
    const int round = m_bar.fontMetrics().horizontalAdvance(m_strLong) + 40;
    for (int ticks = 0; ticks < round; ++ticks) {
        if (ticks < 3) {
            EXPECT_EQ(Look(m_bar).copy(inside), first.copy(inside.translated(ticks, 0)));
        }
        Tick();
    }
    EXPECT_EQ(Look(m_bar), first);

    m_bar.hide();
    EXPECT_FALSE(Timer().isActive());
    m_bar.show();
    EXPECT_TRUE(Timer().isActive());
    m_bar.resize(3000, 22);
    EXPECT_FALSE(Timer().isActive());
}

TEST_F(ProgressTest, WithReducedMotionALongCaptionIsCutAndItsToolTipIsWhole) {
    m_bar.setStyle(&m_still);
    m_bar.SetCaption(m_strLong);
    EXPECT_FALSE(Timer().isActive());
    EXPECT_TRUE(m_bar.toolTip().contains(m_strLong.trimmed().toHtmlEscaped()))
        << m_bar.toolTip().toStdString();
    m_bar.SetCaption("Short");
    EXPECT_EQ(m_bar.toolTip(), u"Position");
    EXPECT_EQ(m_bar.accessibleDescription(), u"Short");
}

} // namespace
