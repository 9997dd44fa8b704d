#pragma once

#include "grid/GridTypes.h"

#include <memory>

class BCMenu;
class CCommandMap;
class CGridCtrl;
class CMediaList;
class QAction;
class QMenu;
class QString;
struct MenuItem;

/// The menus that open on the grid: of the header, of a list's title, of a track or playlist. Each
/// pops up at the mouse, or at the focused cell when the keyboard asked for it.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CContextMenus {
public:
    CContextMenus(CGridCtrl& grid, const CCommandMap& commands);
    ~CContextMenus();

    /// Lets columns be shown or not; `columns` is the mask of those that are.
    void ShowHeaderMenu(CCellID cell, unsigned columns);

    /// For the record at an index, or the list's title for -1, which not every list has a menu for.
    void ShowRowMenu(CCellID cell, const CMediaList& list, int index);

private:
    QAction& Add(const MenuItem& item, const char* prefix);
    void BuildBodyMenu(const CMediaList& list, int index);
    void AddPlaylists(QMenu& menu, const CMediaList& list) const;
    void AddGenres(BCMenu& menu) const;
    void AddNamed(QMenu& menu, const QString& name, int command) const;
    void PopUp(CCellID cell);

    CGridCtrl& m_grid;
    const CCommandMap& m_commands;
    std::unique_ptr<BCMenu> m_pMenu; ///< the last one
};
