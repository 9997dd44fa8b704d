#include "skin/BaseDlg.h"

#include "base/Language.h"
#include "tests/fixtures/Printers.h"
#include "tests/skin/SyntheticTheme.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScreen>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr QSize kSize(400, 300);
constexpr QPoint kCaption(120, 15);
constexpr FrameStyles kAll =
    FrameStyle::Sizable | FrameStyle::MinimizeBox | FrameStyle::MaximizeBox;

// The buttons of the theme are 10 by 8 at y = 10, these their middles.
constexpr QPoint kClose(385, 14);
constexpr QPoint kMaximize(365, 14);
constexpr QPoint kMinimize(345, 14);
constexpr QPoint kClient(200, 200);

class Dialog : public CBaseDlg {
public:
    using CBaseDlg::CBaseDlg;

    int m_nPresses = 0; ///< that got through to the window's own class
    int m_nScale = 1;   ///< of the screen that it is on

protected:
    int metric(PaintDeviceMetric metric) const override {
        return QDialog::metric(metric) * (metric == PdmDevicePixelRatioScaled ? m_nScale : 1);
    }
    void mousePressEvent(QMouseEvent*) override { ++m_nPresses; }
};

class BaseDlgTest : public ::testing::Test {
protected:
    BaseDlgTest() {
        SetLanguageFile(QString());
        theme.AddButton(0, Picture::Close, {30, 8}, 20, 10);
        theme.AddButton(1, Picture::Maximize, {30, 8}, 40, 10);
        theme.AddButton(2, Picture::Minimize, {30, 8}, 60, 10);
        EXPECT_TRUE(theme.Load());
        SetThemeFile(theme.File("theme.ini"));
    }
    ~BaseDlgTest() override {
        SetThemeFile(QString());
        if (dialog) // no button is left held for the next test
            QTest::mouseRelease(dialog->windowHandle(), Qt::LeftButton, {}, kClient);
    }

    Dialog& Open(FrameStyles style = kAll) {
        dialog = std::make_unique<Dialog>(nullptr, style);
        dialog->setGeometry(QRect({50, 60}, kSize));
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
        return *dialog;
    }

    /// Which picture a button shows, and which of its states.
    [[nodiscard]] std::pair<Picture, int> Shown(QPoint button) const {
        const QRgb pixel = dialog->grab().toImage().pixel(button);
        return {static_cast<Picture>(qBlue(pixel)), qRed(pixel) / 10};
    }

    void Click(QPoint place) { QTest::mouseClick(dialog.get(), Qt::LeftButton, {}, place); }
    void Move(QPoint place) {
        QHoverEvent hover(QEvent::HoverMove, place, dialog->mapToGlobal(place), place);
        QApplication::sendEvent(dialog.get(), &hover);
    }

    SyntheticTheme theme;
    std::unique_ptr<Dialog> dialog;
};

} // namespace

TEST_F(BaseDlgTest, LayoutLiesInsideTheFrame) {
    Open();
    QWidget inside(dialog.get());
    auto* layout = new QVBoxLayout(dialog.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&inside);
    inside.show();
    layout->activate();
    EXPECT_EQ(inside.geometry(), QRect(4, 30, 400 - 4 - 6, 300 - 30 - 5));
    EXPECT_TRUE(dialog->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(dialog->minimumSize(), QSize(40 + 9 + 12, 50 + 20));
}

TEST_F(BaseDlgTest, WithoutAThemeTheDesktopsFrameStays) {
    SetThemeFile(theme.File("none.ini"));
    Dialog& plain = Open();
    EXPECT_FALSE(plain.windowFlags() & (Qt::FramelessWindowHint | Qt::WindowSystemMenuHint));
    EXPECT_EQ(plain.contentsMargins(), QMargins());
    plain.GetSkin().Maximize();
    EXPECT_EQ(plain.size(), kSize);
    EXPECT_FALSE(plain.GetSkin().IsMaximized());
}

TEST_F(BaseDlgTest, ButtonsAndTheCursorFollowTheMouseOverTheFrame) {
    Open();
    EXPECT_EQ(Shown(kClose), std::pair(Picture::Close, 0));
    Move(kClose);
    EXPECT_EQ(Shown(kClose), std::pair(Picture::Close, 2));
    Move(kClient); // only the frame follows the mouse
    EXPECT_EQ(Shown(kClose), std::pair(Picture::Close, 2));
    Move(kMaximize);
    EXPECT_EQ(Shown(kClose), std::pair(Picture::Close, 0));
    EXPECT_EQ(Shown(kMaximize), std::pair(Picture::Maximize, 2));
    QTest::mousePress(dialog.get(), Qt::LeftButton, {}, kMinimize);
    EXPECT_EQ(Shown(kMinimize), std::pair(Picture::Minimize, 1));
    EXPECT_EQ(dialog->m_nPresses, 0); // the frame stops what is its own
    QTest::mouseRelease(dialog.get(), Qt::LeftButton, {}, kCaption); // which counts where it is
    EXPECT_EQ(dialog->windowState(), Qt::WindowNoState);
    Click(kClient);
    EXPECT_EQ(dialog->m_nPresses, 1);
    QTest::mouseRelease(dialog.get(), Qt::LeftButton, {}, kClose); // what was not pressed here
    EXPECT_TRUE(dialog->isVisible());
    Move({1, 1});
    EXPECT_EQ(dialog->cursor().shape(), Qt::SizeFDiagCursor);
    Move(kClient);
    EXPECT_EQ(dialog->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(BaseDlgTest, ButtonsHaveTipsAndOwnOnesSendTheirCommand) {
    Open();
    CSkinWnd& skin = dialog->GetSkin();
    skin.SetFrameTips("min", "max", "restore", "close");
    int sent = 0;
    skin.SetCommandHandler([&](int command) { sent = command; });
    skin.AddFrameButton(PictureId::MiniPlayer, 999, 130, 1, "mini");
    const QPoint own(290, 15);
    for (const auto& [place, tip] : {std::pair(kClose, "close"), std::pair(kMaximize, "max"),
                                     std::pair(kMinimize, "min"), std::pair(own, "mini")}) {
        QHelpEvent help(QEvent::ToolTip, place, dialog->mapToGlobal(place));
        QApplication::sendEvent(dialog.get(), &help);
        EXPECT_EQ(QToolTip::text(), QLatin1String(tip));
    }
    Click(own);
    EXPECT_EQ(std::exchange(sent, 0), 999);
    EXPECT_TRUE(skin.ChangeFrameButton(PictureId::NormalWindow, 999, 200, 1, "N"));
    EXPECT_FALSE(skin.ChangeFrameButton(PictureId::NormalWindow, 998, 0, 0, QString()));
    Click(own);
    EXPECT_EQ(sent, 0);
    Click({400 - 180, 15});
    EXPECT_EQ(sent, 999);
}

TEST_F(BaseDlgTest, HolesOfTheThemeAreHolesOfTheWindow) {
    QImage left = MakePlaces(Picture::Left, {9, 50});
    left.setPixel(0, 0, kKeyColour);
    theme.Write("left.bmp", left);
    theme.Set("UsesTran", 1);
    EXPECT_TRUE(theme.Load());
    Open();
    EXPECT_EQ(dialog->mask(), QRegion(dialog->rect()) - QRegion(0, 0, 1, 1));
    dialog->resize(500, 350);
    EXPECT_EQ(dialog->mask(), QRegion(0, 0, 500, 350) - QRegion(0, 0, 1, 1));
}

TEST_F(BaseDlgTest, MaximizesMinimizesAndComesBackAsItWas) {
    Open();
    CSkinWnd& skin = dialog->GetSkin();
    dialog->setMaximumSize(500, 400); // as made for a smaller screen
    const QRect before = dialog->geometry();
    const auto doubleClick = [&] {
        QTest::mouseDClick(dialog.get(), Qt::LeftButton, {}, kCaption);
    };
    doubleClick();
    EXPECT_EQ(dialog->geometry(), QGuiApplication::primaryScreen()->availableGeometry());
    EXPECT_FALSE(dialog->isMaximized()); // for the desktop it is a window like any
    Click({dialog->width() - 55, 14});
    EXPECT_TRUE(dialog->isMinimized());
    EXPECT_TRUE(skin.IsMaximized());
    dialog->setWindowState(dialog->windowState() & ~Qt::WindowMinimized);
    doubleClick();
    EXPECT_EQ(dialog->geometry(), before); // from maximized, not from minimized
    skin.Minimize();
    skin.Restore();
    EXPECT_FALSE(dialog->isMinimized());
    dialog->showMaximized(); // as a desktop's own key does
    EXPECT_TRUE(skin.IsMaximized());
    Click(skin.GetButtons().back().place.center());
    EXPECT_FALSE(dialog->isMaximized());
    EXPECT_FALSE(skin.IsMaximized());

    Open(FrameStyle::Fixed);
    doubleClick();
    EXPECT_EQ(dialog->size(), kSize);
}

TEST_F(BaseDlgTest, TitleAndActivityAreDrawn) {
    Open();
    const QRect title(25, 0, 200, 30);
    const auto drawn = [&] { return dialog->grab(title).toImage(); };
    const QImage empty = drawn();
    dialog->setWindowTitle("A title");
    EXPECT_NE(drawn(), empty);
    for (const auto& [type, wanted] :
         {std::pair(QEvent::WindowActivate, 0), std::pair(QEvent::WindowDeactivate, 1)}) {
        QEvent event(type);
        QApplication::sendEvent(dialog.get(), &event);
        const QRgb strip = dialog->grab().toImage().pixel(100, 2);
        EXPECT_EQ(qGreen(strip) / 30, wanted) << "the lower half of its picture is inactive";
    }
}

TEST_F(BaseDlgTest, FrameFollowsTheWindowToAScreenOfAnotherScale) {
    Open();
    dialog->GetSkin().AddFrameButton(PictureId::MiniPlayer, 999, 130, 1, QString());
    const QRect added = dialog->GetSkin().GetButtons().back().place;
    dialog->m_nScale = 2;
    EXPECT_EQ(Shown(2 * kClose), std::pair(Picture::Close, 0));
    EXPECT_EQ(dialog->contentsMargins(), QMargins(5, 31, 6, 5));
    EXPECT_EQ(dialog->GetSkin().GetButtons().back().place, added);
    dialog->m_nScale = 1;
    EXPECT_EQ(Shown(kClose), std::pair(Picture::Close, 0));

    // A theme that can't be read there is drawn larger than it is.
    theme.Write("top@2x.png", QByteArray("damaged"));
    dialog->m_nScale = 2;
    EXPECT_EQ(dialog->grab().toImage().pixel(2 * kClose), PixelOf(Picture::Close, 5, 4));
    EXPECT_EQ(dialog->GetSkin().GetButtons().size(), 4);
    Click(kClose);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(BaseDlgTest, ScreenReadersFindTheButtonsOfTheFrame) {
    Open();
    EXPECT_TRUE(dialog->GetSkin().InstallSkin(dialog.get(),
                                              FrameStyle::MinimizeBox | FrameStyle::MaximizeBox));
    int seen = -1;
    (new QWidget(dialog.get()))->show();
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(dialog.get());
    ASSERT_EQ(window->childCount(), 4);
    QStringList names;
    for (int i = 1; i < 4; ++i) {
        QAccessibleInterface* button = window->child(i);
        names += button->text(QAccessible::Name);
        EXPECT_EQ(button->role(), QAccessible::Button);
        EXPECT_EQ(window->indexOfChild(button), i);
        EXPECT_EQ(window->childAt(button->rect().center().x(), button->rect().center().y()),
                  button);
    }
    EXPECT_EQ(names.join(u' '), u"IDS_MAIN_CLOSE IDS_MAIN_MIN IDS_MAIN_MAX");
    window->child(3)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(dialog->GetSkin().IsMaximized());
    EXPECT_EQ(window->child(3)->text(QAccessible::Name), u"IDS_MAIN_RESTOR");
    QObject::connect(dialog->windowHandle(), &QWindow::visibleChanged,
                     [window, &seen] { seen = window->childCount(); });
    dialog.reset();
    EXPECT_EQ(seen, 1); // of a window that goes, what still stands
}
