#include "skin/SkinPalette.h"

#include "skin/Colours.h"
#include "skin/SkinStyle.h"

#include <QApplication>

namespace {

using namespace Colours;

struct RoleColour {
    QPalette::ColorRole role;
    QRgb enabled;
    QRgb disabled;
};

constexpr QRgb kWhite = 0xFFFFFFFF;

constexpr RoleColour kDark[] = {
    {QPalette::Window, kInk1, kInk1},
    {QPalette::WindowText, kQuietText, kDisabledText},
    {QPalette::Base, kInk0, kInk1},
    {QPalette::AlternateBase, kInk1, kInk1},
    {QPalette::Text, kText, kDisabledText},
    {QPalette::PlaceholderText, kDisabledText, kDisabledText},
    {QPalette::Button, kInk2, kInk1},
    {QPalette::ButtonText, kText, kDisabledText},
    {QPalette::BrightText, kText, kDisabledText},
    {QPalette::Highlight, kAccent, kLine},
    {QPalette::HighlightedText, kInk0, kQuietText},
    {QPalette::Link, kAccent, kDisabledText},
    {QPalette::LinkVisited, kDeepAccent, kDisabledText},
    {QPalette::ToolTipBase, kInk2, kInk2},
    {QPalette::ToolTipText, kText, kText},
    {QPalette::Light, kLine, kLine},
    {QPalette::Midlight, kLine, kInk2},
    {QPalette::Mid, kInk2, kInk2},
    {QPalette::Dark, kInk0, kInk0},
    {QPalette::Shadow, kInk0, kInk0},
};

/// What paper has otherwise than the dark parts.
constexpr RoleColour kPaper[] = {
    {QPalette::Window, kPage, kPage},
    {QPalette::WindowText, kInk1, kDisabledText},
    {QPalette::Base, kWhite, kPage},
    {QPalette::AlternateBase, kPage, kPage},
    {QPalette::Text, kInk1, kDisabledText},
    {QPalette::PlaceholderText, kLine, kDisabledText},
    {QPalette::Button, kPage, kPage},
    {QPalette::ButtonText, kInk1, kDisabledText},
    {QPalette::BrightText, kInk0, kDisabledText},
    {QPalette::HighlightedText, kInk0, kInk1},
    {QPalette::Highlight, kAccent, kQuietText},
    {QPalette::Link, kInk2, kDisabledText},
    {QPalette::LinkVisited, kLine, kDisabledText},
    {QPalette::Light, kWhite, kWhite},
    {QPalette::Midlight, kPage, kPage},
    {QPalette::Mid, kQuietText, kQuietText},
    {QPalette::Dark, kDisabledText, kDisabledText},
    {QPalette::Shadow, kLine, kLine},
};

template <std::size_t N>
void SetRoles(QPalette& palette, const RoleColour (&roles)[N]) {
    for (const RoleColour& entry : roles) {
        palette.setColor(QPalette::Active, entry.role, entry.enabled);
        palette.setColor(QPalette::Inactive, entry.role, entry.enabled);
        palette.setColor(QPalette::Disabled, entry.role, entry.disabled);
    }
}

/// The classes for which a desktop may have colours beside those of its palette. For a widget of
/// such a class they would come before the application's.
constexpr const char* kClassesWithColours[] = {
    "QAbstractButton", "QAbstractItemView", "QCheckBox",        "QComboBox",
    "QGroupBox",       "QHeaderView",       "QLabel",           "QLineEdit",
    "QMenu",           "QMenuBar",          "QMessageBoxLabel", "QPushButton",
    "QRadioButton",    "QTabBar",           "QTextControl",     "QTextEdit",
    "QToolButton",
};

} // namespace

QPalette SkinPalette() {
    QPalette palette;
    SetRoles(palette, kDark);
    return palette;
}

QPalette PagePalette() {
    QPalette palette = SkinPalette();
    SetRoles(palette, kPaper);
    return palette;
}

void UseSkinPalette() {
    QApplication::setStyle(new CSkinStyle(SkinPalette()));
    const QPalette palette = SkinPalette();
    QApplication::setPalette(palette);
    for (const char* name : kClassesWithColours)
        QApplication::setPalette(palette, name);
}
