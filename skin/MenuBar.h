#pragma once

#include "skin/BCMenu.h"

#include <QMenuBar>

/// The strip with the program's menu, at the top of the window's client area. It lies in the window
/// whatever the desktop does with menus. Alt with a title's letter opens that menu, Alt alone takes
/// the keyboard to the bar, and F10 opens the first menu.
///
/// Its sizeHint() has the height that the menu font asks for. Thread: interface thread.
class CMenuBar : public QMenuBar {
public:
    explicit CMenuBar(QWidget* parent = nullptr);

    /// Appends a menu, which the bar owns.
    BCMenu& AddMenu(const QString& title);
};
