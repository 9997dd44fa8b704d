#include "library/BodyMenu.h"

#include "base/FileKinds.h"
#include "library/Commands.h"
#include "library/MediaList.h"

#include <initializer_list>

namespace {

using namespace Command;

bool CanAddToPlaylist(const CMediaList& list) {
    return list.CountChecked(1) > 0 && list.CountPlaylists() > 0 &&
           list.CountCheckedPlaylists() == 0;
}

} // namespace

BodyMenu MakeBodyMenu(const CMediaList& list, int index) {
    BodyMenu menu;
    const auto set = [&menu](ItemState state, std::initializer_list<int> commands) {
        for (const int command : commands)
            menu.items[command] = state;
    };
    const auto setIf = [&set](bool condition, ItemState state, int command) {
        if (condition)
            set(state, {command});
    };
    const bool isPlaylist = list[index] && IsPlaylistFile(list[index]->m_strPath);
    set(ItemState::Gray,
        {kBodyEdit, kBodyPlay, kBodyDelete, kBodyCancel, kFirstPlaylist, kFirstGenre});
    set(ItemState::Enabled, {kBodyRename, kBodySelectAll, kBodyDeselectAll});
    switch (list.m_iType == MEDIA_TYPE_SELECTION ? list.m_iSourceType : list.m_iType) {
    case MEDIA_TYPE_COLLECTION:
        set(ItemState::Enabled, {kBodyEdit, kBodyPlay, kBodyDelete});
        setIf(CanAddToPlaylist(list), ItemState::Enabled, kFirstPlaylist);
        setIf(!isPlaylist, ItemState::Enabled, kFirstGenre);
        setIf(!isPlaylist, ItemState::Gone, kBodyRename);
        menu.opens = isPlaylist;
        break;
    case MEDIA_TYPE_PHONE:
        set(ItemState::Enabled, {kBodyEdit, kBodyDelete});
        setIf(CanAddToPlaylist(list), ItemState::Enabled, kFirstPlaylist);
        menu.opens = isPlaylist;
        break;
    case MEDIA_TYPE_ALL:
        set(ItemState::Enabled, {kBodyPlay});
        set(ItemState::Gone, {kBodyDelete, kBodyEdit, kBodyRename});
        break;
    case MEDIA_TYPE_CD:
        set(ItemState::Enabled, {kBodyEdit, kBodyPlay, kFirstGenre});
        set(ItemState::Gone, {kBodyDelete, kBodyRename});
        break;
    case MEDIA_TYPE_PLAYLIST:
        set(ItemState::Enabled, {kBodyEdit, kBodyPlay, kBodyDelete});
        setIf(CanAddToPlaylist(list), ItemState::Enabled, kFirstPlaylist);
        set(ItemState::Gone, {kBodyRename});
        break;
    default:
        break;
    }
    setIf(list.GetCount() == list.CountChecked(0), ItemState::Gone, kBodySelectAll);
    return menu;
}
