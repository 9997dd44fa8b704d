#include "app/ContextMenus.h"

#include "app/CommandAction.h"
#include "base/FileKinds.h"
#include "base/Language.h"
#include "grid/GridCtrl.h"
#include "library/BodyMenu.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "library/MediaList.h"
#include "library/TrackColumns.h"
#include "platform/Path.h"
#include "skin/BCMenu.h"
#include "tags/GenreMenu.h"

#include <QCursor>

namespace {

constexpr auto kHeaderPrefix = "IDS_HEADER_";

BCMenu& MakeSubMenu(QAction& item) {
    auto* menu = new BCMenu(static_cast<QWidget*>(item.parent()));
    item.setMenu(menu);
    return *menu;
}

} // namespace

CContextMenus::CContextMenus(CGridCtrl& grid, const CCommandMap& commands)
    : m_grid(grid)
    , m_commands(commands) {}

CContextMenus::~CContextMenus() = default;

QAction& CContextMenus::Add(const MenuItem& item, const char* prefix) {
    QAction* action = MakeCommandAction(item, prefix, m_commands, m_pMenu.get());
    m_pMenu->addAction(action);
    return *action;
}

void CContextMenus::ShowHeaderMenu(CCellID cell, unsigned columns) {
    m_pMenu = std::make_unique<BCMenu>(&m_grid);
    for (const TrackColumn& column : AllTrackColumns()) {
        QAction& action = Add({column.command, column.name}, kHeaderPrefix);
        action.setCheckable(true);
        action.setChecked(columns & column.bit);
        action.setEnabled(column.bit != kTitleColumn);
    }
    m_pMenu->addSeparator();
    Add({Command::kHeaderCustomize, "Customize"}, kHeaderPrefix);
    PopUp(cell);
}

void CContextMenus::ShowRowMenu(CCellID cell, const CMediaList& list, int index) {
    m_pMenu = std::make_unique<BCMenu>(&m_grid);
    if (index >= 0)
        BuildBodyMenu(list, index);
    else if (list.m_iType == MEDIA_TYPE_COLLECTION || list.m_iType == MEDIA_TYPE_PHONE)
        Add({Command::kTitleRefresh, "Refresh"}, "IDS_TITLE_");
    PopUp(cell);
}

void CContextMenus::BuildBodyMenu(const CMediaList& list, int index) {
    const BodyMenu body = MakeBodyMenu(list, index);
    for (MenuItem item : kBodyItems) {
        if (item.command == 0) {
            m_pMenu->addSeparator();
            continue;
        }
        const ItemState state = body.items.at(item.command);
        if (state == ItemState::Gone)
            continue;
        if (item.command == Command::kBodyEdit && body.opens)
            item.name = "Open";
        QAction& action = Add(item, "IDS_BODY_");
        if (state == ItemState::Gray) {
            action.setEnabled(false);
        } else if (item.command == Command::kBodyEdit && !body.opens) {
            action.setEnabled(false); // tracks wait for the editor of their tags
        } else if (item.command == Command::kFirstPlaylist) {
            AddPlaylists(MakeSubMenu(action), list);
        } else if (item.command == Command::kFirstGenre) {
            AddGenres(MakeSubMenu(action));
        }
    }
}

void CContextMenus::AddNamed(QMenu& menu, const QString& name, int command) const {
    menu.addAction(MenuTextOf(name), &menu,
                   [&commands = m_commands, command] { commands.Run(command); });
}

/// One for each playlist of the list, in their order.
void CContextMenus::AddPlaylists(QMenu& menu, const CMediaList& list) const {
    int command = Command::kFirstPlaylist;
    for (int index = 0; index < list.GetCount() && command <= Command::kLastPlaylist; ++index)
        if (IsPlaylistFile(list[index]->m_strPath))
            AddNamed(menu, Path::ForDisplay(list[index]->m_strTitle), command++);
}

void CContextMenus::AddGenres(BCMenu& menu) const {
    for (const GenreMenu::Group& group : GenreMenu::Groups()) {
        BCMenu& genres = menu.AddSubMenu(MenuTextOf(group.name));
        int command = group.firstId;
        for (const QString& genre : group.entries)
            AddNamed(genres, genre, command++);
    }
}

void CContextMenus::PopUp(CCellID cell) {
    if (m_pMenu->isEmpty())
        return;
    const QPoint mouse = QCursor::pos();
    const QRect place = m_grid.GetCellRect(cell).intersected(m_grid.viewport()->rect());
    const bool isUnderMouse = place.contains(m_grid.viewport()->mapFromGlobal(mouse));
    m_pMenu->popup(isUnderMouse ? mouse : m_grid.viewport()->mapToGlobal(place.bottomLeft()));
}
