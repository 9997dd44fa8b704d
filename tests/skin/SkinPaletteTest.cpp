#include "skin/SkinPalette.h"

#include "tests/fixtures/Contrast.h"

#include <QApplication>
#include <QMenu>
#include <QToolTip>
#include <gtest/gtest.h>

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
    const QFont font = QApplication::font();
    QApplication::setPalette(QPalette(Qt::white), "QMenu");
    UseSkinPalette();
    const QPalette ours = SkinPalette();
    EXPECT_EQ(QApplication::palette(), ours);
    EXPECT_EQ(QMenu().palette(), ours);
    EXPECT_EQ(QToolTip::palette(), ours);
    EXPECT_EQ(QApplication::font(), font);
}
