#include "skin/SkinPalette.h"

#include "skin/Colours.h"
#include "tests/fixtures/Contrast.h"

#include <QCheckBox>
#include <QScrollArea>
#include <QTest>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace {

/// How many pixels differ by a contrast that is plain to see from what `ground` has there.
int CountPlain(const QImage& image, const std::function<QColor(QPoint)>& ground) {
    int plain = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            plain += Contrast(image.pixelColor(x, y), ground({x, y})) >= 3;
    return plain;
}

} // namespace

TEST(SkinPaletteTest, LeavesNoRoleToTheDesktopAndAllTextReadable) {
    using enum QPalette::ColorRole;
    const std::pair<QPalette::ColorRole, std::vector<QPalette::ColorRole>> textsOnGrounds[] = {
        {Window, {WindowText, Text, BrightText}},
        {Base, {Text, PlaceholderText, Link, LinkVisited}},
        {AlternateBase, {Text}},
        {Button, {ButtonText}},
        {Highlight, {HighlightedText}},
        {ToolTipBase, {ToolTipText}}};
    for (const QPalette& palette : {SkinPalette(), PagePalette()}) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            for (int role = 0; role < QPalette::NColorRoles; ++role)
                EXPECT_TRUE(role == QPalette::NoRole ||
                            palette.isBrushSet(group, QPalette::ColorRole(role)))
                    << role;
            for (const auto& [ground, texts] : textsOnGrounds)
                for (const auto text : texts)
                    EXPECT_TRUE(
                        group == QPalette::Disabled ||
                        Contrast(palette.color(group, text), palette.color(group, ground)) >= 4.5)
                        << text << " on " << ground;
        }
    }
}

TEST(SkinPaletteTest, ShowsWhereTheKeyboardIs) {
    UseSkinPalette();
    QWidget window;
    QVBoxLayout layout(&window);
    QCheckBox box("Text");
    QTreeWidget tree;
    QScrollArea text;
    const std::vector<QWidget*> controls{&box, &tree, &text};
    for (QWidget* control : controls)
        layout.addWidget(control);
    auto* folder = new QTreeWidgetItem(&tree);
    new QTreeWidgetItem(folder);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    text.setFocus();
    for (QWidget* control : controls) {
        const QImage before = control->grab().toImage();
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(window.focusWidget(), control);
        const QImage after = control->grab().toImage();
        EXPECT_GE(CountPlain(after, [&](QPoint at) { return before.pixelColor(at); }), 40)
            << control->metaObject()->className();
    }
    tree.setCurrentItem(folder);
    const int height = tree.visualItemRect(folder).height();
    const QImage arrow = tree.viewport()->grab({0, 0, tree.indentation(), height}).toImage();
    EXPECT_GT(CountPlain(arrow, [](QPoint) { return QColor(Colours::kAccent); }), 0);
}
