#include "skin/Colours.h"
#include "skin/MenuBar.h"
#include "skin/MenuStyle.h"
#include "skin/SkinPalette.h"
#include "tests/fixtures/Contrast.h"

#include <QActionGroup>

namespace {

/// How many pixels of each colour a menu shows at the place of an item.
std::map<QRgb, int> ColoursOf(QMenu& menu, QAction* action) {
    const QImage image =
        menu.grab(menu.actionGeometry(action)).toImage().convertToFormat(QImage::Format_ARGB32);
    std::map<QRgb, int> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++colours[image.pixel(x, y)];
    return colours;
}

QRgb GroundOf(const std::map<QRgb, int>& colours) {
    return std::max_element(colours.begin(), colours.end(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->first;
}

} // namespace

TEST(MenuTest, DrawsItsItems) {
    UseSkinPalette();
    QApplication::setStyle(new CMenuStyle);
    BCMenu menu;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    QAction* plain = menu.addAction("Text");
    QAction* icon = menu.addAction(red, "Text");
    QAction* disabled = menu.addAction(red, "Text");
    disabled->setEnabled(false);
    QAction* separator = menu.addSeparator();
    QAction* arrow = menu.AddSubMenu("Text").menuAction();
    QAction* check = menu.addAction("Text");
    check->setCheckable(true);
    QActionGroup group(&menu);
    QAction* radio = group.addAction("Text");
    radio->setCheckable(true);
    menu.addAction(radio);
    menu.ensurePolished();

    const auto text = ColoursOf(menu, plain);
    EXPECT_EQ(GroundOf(text), Colours::kInk1);
    EXPECT_TRUE(text.contains(Colours::kQuietText));
    EXPECT_EQ(ColoursOf(menu, check), text) << "no mark yet";
    check->setChecked(true);
    radio->setChecked(true);
    EXPECT_NE(ColoursOf(menu, check), text);
    EXPECT_NE(ColoursOf(menu, radio), text);
    EXPECT_NE(ColoursOf(menu, radio), ColoursOf(menu, check));
    EXPECT_NE(ColoursOf(menu, arrow), text);
    EXPECT_EQ(ColoursOf(menu, icon)[QColor(Qt::red).rgb()], 16 * 16);
    const auto grey = ColoursOf(menu, disabled);
    EXPECT_TRUE(grey.contains(Colours::kDisabledText));
    for (const auto& [colour, count] : grey)
        EXPECT_LT(QColor(colour).hsvSaturation(), 80) << std::hex << colour;
    EXPECT_EQ(menu.actionGeometry(separator).height(), 9);
    EXPECT_TRUE(ColoursOf(menu, separator).contains(Colours::kLine));

    EXPECT_EQ(menu.grab().toImage().pixel(menu.width() / 2, 0), Colours::kLine) << "its edge";

    menu.setActiveAction(plain);
    const auto hot = ColoursOf(menu, plain);
    EXPECT_TRUE(hot.contains(Colours::kAccent));
    EXPECT_TRUE(hot.contains(Colours::kText));
    EXPECT_GE(Contrast(Colours::kText, GroundOf(hot)), 4.5);
    EXPECT_GE(Contrast(Colours::kQuietText, GroundOf(text)), 4.5);
}
