#include "skin/SkinPalette.h"

#include "skin/Colours.h"
#include "tests/fixtures/Contrast.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTest>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformtheme.h>
#include <qpa/qwindowsysteminterface.h>

namespace {

constexpr QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive,
                                            QPalette::Disabled};

struct TextOnGround {
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

constexpr TextOnGround kPairs[] = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::PlaceholderText, QPalette::Base},
    {QPalette::ButtonText, QPalette::Button},
    {QPalette::BrightText, QPalette::Window},
    {QPalette::HighlightedText, QPalette::Highlight},
    {QPalette::Link, QPalette::Window},
    {QPalette::Link, QPalette::Base},
    {QPalette::LinkVisited, QPalette::Window},
    {QPalette::LinkVisited, QPalette::Base},
    {QPalette::ToolTipText, QPalette::ToolTipBase},
};

/// A desktop all of whose colours come from one.
class Desktop : public QPlatformTheme {
public:
    explicit Desktop(Qt::GlobalColor colour) {
        QGuiApplicationPrivate::platform_theme = this;
        Change(colour);
    }
    void Change(Qt::GlobalColor colour) {
        m_palette = QPalette(colour);
        QWindowSystemInterface::handleThemeChange();
        QCoreApplication::processEvents();
    }
    const QPalette* palette(Palette) const override { return &m_palette; }

private:
    QPalette m_palette;
};

const QWidget* TipLabel() {
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits("QTipLabel"))
            return widget;
    return nullptr;
}

} // namespace

TEST(SkinPaletteTest, LeavesNoRoleToTheDesktopAndAllTextReadable) {
    for (const QPalette& palette : {SkinPalette(), PagePalette()}) {
        for (const QPalette::ColorGroup group : kGroups) {
            for (int role = 0; role < QPalette::NColorRoles; ++role) {
                if (role != QPalette::NoRole) {
                    EXPECT_TRUE(palette.isBrushSet(group, QPalette::ColorRole(role))) << role;
                }
            }
            if (group == QPalette::Disabled)
                continue;
            for (const auto& [text, ground] : kPairs)
                EXPECT_GE(Contrast(palette.color(group, text), palette.color(group, ground)), 4.5)
                    << text << " on " << ground;
        }
    }
}

TEST(SkinPaletteTest, ComesBeforeWhatTheDesktopSays) {
    const QPalette ours = SkinPalette();
    auto* const former = QGuiApplicationPrivate::platform_theme;
    {
        Desktop desktop(Qt::white);
        const QFont font = QApplication::font();
        QApplication::setPalette(QPalette(Qt::white), "QMenu"); // as some desktops do at the start
        UseSkinPalette();
        EXPECT_EQ(QApplication::font(), font);
        QCheckBox box;
        QMenu menu;
        for (const Qt::GlobalColor change : {Qt::black, Qt::white}) {
            desktop.Change(change);
            QToolTip::showText({}, QStringLiteral("Tip"));
            ASSERT_TRUE(TipLabel());
            const QCheckBox newBox;
            for (const QWidget* widget :
                 std::initializer_list<const QWidget*>{&box, &menu, &newBox, TipLabel()})
                EXPECT_EQ(widget->palette(), ours) << widget->metaObject()->className();
            EXPECT_EQ(QApplication::palette(), ours);
        }
    }
    QGuiApplicationPrivate::platform_theme = former;
}

TEST(SkinPaletteTest, ShowsWhereToTypeAndTick) {
    UseSkinPalette();
    QLineEdit field;
    QSpinBox number;
    QCheckBox box;
    QRadioButton button;
    const QColor ground = SkinPalette().color(QPalette::Window);
    for (QWidget* control : std::initializer_list<QWidget*>{&field, &number, &box, &button}) {
        control->resize(100, 24);
        const QImage image = control->grab().toImage();
        double best = 0; // in the row through the middle, before any text
        for (int x = 0; x < 8; ++x)
            best = std::max(best, Contrast(image.pixelColor(x, image.height() / 2), ground));
        EXPECT_GE(best, 3) << control->metaObject()->className();
    }
}

TEST(SkinPaletteTest, ShowsWhereTheKeyboardIs) {
    UseSkinPalette();
    QWidget window;
    QVBoxLayout layout(&window);
    QCheckBox box(QStringLiteral("Text"));
    QTreeWidget tree;
    QScrollArea text;
    for (QWidget* control : std::initializer_list<QWidget*>{&box, &tree, &text})
        layout.addWidget(control);
    auto* folder = new QTreeWidgetItem(&tree);
    new QTreeWidgetItem(folder);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    text.setFocus();
    for (QWidget* control : std::initializer_list<QWidget*>{&box, &tree, &text}) {
        const QImage before = control->grab().toImage();
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(window.focusWidget(), control);
        const QImage after = control->grab().toImage();
        int plain = 0; // pixels
        for (int y = 0; y < after.height(); ++y)
            for (int x = 0; x < after.width(); ++x)
                plain += Contrast(before.pixelColor(x, y), after.pixelColor(x, y)) >= 3;
        EXPECT_GE(plain, 40) << control->metaObject()->className();
    }
    tree.setCurrentItem(folder);
    const int height = tree.visualItemRect(folder).height();
    const QImage arrow = tree.viewport()->grab({0, 0, tree.indentation(), height}).toImage();
    double best = 0;
    for (int y = 0; y < arrow.height(); ++y)
        for (int x = 0; x < arrow.width(); ++x)
            best = std::max(best, Contrast(arrow.pixelColor(x, y), Colours::kAccent));
    EXPECT_GE(best, 3) << "the arrow of the selected row";
}
