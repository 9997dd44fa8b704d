#include "library/TrackCommands.h"

#include "base/FileKinds.h"
#include "base/IPrompts.h"
#include "base/Language.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/MediaLists.h"
#include "library/TrackEdit.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/GenreMenu.h"

#include <QSet>

namespace {

/// Whether the tracks of a list can be deleted, or taken out of it.
bool IsDeletable(const CMediaList& list) {
    return list.m_iType == MEDIA_TYPE_PLAYLIST || list.TypeOfSource() == MEDIA_TYPE_COLLECTION;
}

} // namespace

CTrackCommands::CTrackCommands(const CommandContext& context, CCommandMap& commands)
    : m_context(context) {
    for (const int command : {Command::kDelete, Command::kBodyDelete})
        commands.On(command, [this](int) { Delete(); });
    commands.On(GenreMenu::kFirstId, GenreMenu::kLastId,
                [this](int command) { SelectGenre(command); });
}

void CTrackCommands::Delete() {
    CMediaList* list = m_context.lists.GetActiveList();
    if (!list || !IsDeletable(*list) || list->CountChecked(0) == 0)
        return;
    const bool isPlaylist = list->m_iType == MEDIA_TYPE_PLAYLIST;
    if (!m_context.prompts.Confirm(
            LoadString(isPlaylist ? IDS_CONFIRM_REMOVE : IDS_CONFIRM_DELETE)))
        return;
    QStringList kept;
    if (isPlaylist)
        TakeOut(*list);
    else
        kept = DeleteFiles(*list);
    m_context.view.FillGrid();
    m_context.state.UpdateCommands();
    m_context.state.ClearBit(UiState::kDelete);
    m_context.state.ApplyUiState(0);
    if (!kept.isEmpty())
        m_context.prompts.Warn(FormatText(LoadString(IDS_PROMPT_UNDEL), {kept.join(u'\n')}));
}

/// The files stay.
void CTrackCommands::TakeOut(CMediaList& playlist) {
    for (int index = 0; index < playlist.GetCount(); ++index)
        if (playlist[index]->m_bChecked)
            LetGo(playlist, index);
    playlist.RemoveIf([](const CTrackRecord& track) { return track.m_bChecked; });
    playlist.m_bModified = 1;
}

/// Deletes the files of the checked tracks, which go from all lists. Returns the paths of those
/// that could not be deleted and stay.
QStringList CTrackCommands::DeleteFiles(CMediaList& list) {
    QSet<QString> deleted;
    QStringList kept;
    for (int index = 0; index < list.GetCount(); ++index) {
        CTrackRecord& track = *list[index];
        if (!track.m_bChecked)
            continue;
        const QString status = track.m_strStatus;
        LetGo(list, index);
        if (DeleteFile(track.m_strPath)) {
            deleted += track.m_strPath;
        } else {
            kept += Path::ForDisplay(track.m_strPath);
            track.m_strStatus = status;
        }
    }
    for (const auto& other : m_context.lists.All())
        other->RemoveIf(
            [&](const CTrackRecord& track) { return deleted.contains(track.m_strPath); });
    return kept;
}

/// Before a track goes, the player has to end with it.
void CTrackCommands::LetGo(const CMediaList& list, int index) {
    CTrackRecord& track = *list[index];
    if (track.m_bPlaying) {
        track.m_strStatus = LoadString(IDS_PROGRESS_DELETING);
        m_context.view.RefreshRows(1, &list, index);
    }
    m_context.player.ReleaseFile(track.m_strPath);
}

void CTrackCommands::SelectGenre(int command) {
    const TrackPlace current = m_context.view.GetCurrentTrack();
    const CMediaList* list = m_context.lists.FindListById(current.listId);
    if (!list || list->TypeOfSource() != MEDIA_TYPE_COLLECTION)
        return;
    const QString path = (*list)[current.index]->m_strPath;
    const TrackText genre = &CTrackRecord::m_strGenre;
    if (const auto stored =
            StoreTrackText(m_context.player, path, genre, GenreMenu::Entry(command)))
        m_context.view.ShowText(path, genre, *stored);
}
