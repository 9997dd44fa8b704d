#pragma once

#include <QMenu>

/// A menu of the program: popup of the menu bar, context menu or submenu. Its items are QActions
/// with text, icon, check or radio mark and shortcut; CMenuStyle draws them.
///
/// Thread: interface thread.
class BCMenu : public QMenu {
public:
    explicit BCMenu(QWidget* parent = nullptr);
    explicit BCMenu(const QString& title, QWidget* parent = nullptr);

    /// Appends an item that opens a menu of its own, which this menu owns.
    BCMenu& AddSubMenu(const QString& title);
};
