#include "skin/SkinPalette.h"

#include "tests/fixtures/Contrast.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QSpinBox>
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
    const QFont font = QApplication::font();
    QApplication::setPalette(QPalette(Qt::white), "QMenu");
    UseSkinPalette();
    const QPalette ours = SkinPalette();
    EXPECT_EQ(QApplication::palette(), ours);
    EXPECT_EQ(QMenu().palette(), ours);
    QToolTip::setPalette(QPalette(Qt::white)); // as a desktop's change of its colours does
    QToolTip::showText({}, QStringLiteral("Tip"));
    ASSERT_TRUE(TipLabel());
    EXPECT_EQ(TipLabel()->palette(), ours);
    EXPECT_EQ(QApplication::font(), font);
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
