#include "skin/BCMenu.h"

BCMenu::BCMenu(QWidget* parent)
    : QMenu(parent) {}

BCMenu::BCMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent) {}

BCMenu& BCMenu::AddSubMenu(const QString& title) {
    auto* menu = new BCMenu(title, this);
    addMenu(menu);
    return *menu;
}
