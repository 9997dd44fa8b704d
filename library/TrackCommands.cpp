#include "library/TrackCommands.h"

#include "base/FileKinds.h"
#include "base/IPrompts.h"
#include "base/IStatusDisplay.h"
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
#include "platform/Worker.h"
#include "tags/GenreMenu.h"

#include <QSet>

#include <algorithm>
#include <utility>

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
    const CMediaList* asked = m_context.lists.GetActiveList();
    if (!asked || !IsDeletable(*asked) || asked->CountChecked(0) == 0)
        return;
    const int listId = asked->m_iId;
    const bool isPlaylist = asked->m_iType == MEDIA_TYPE_PLAYLIST;
    if (!m_context.prompts.Confirm(
            LoadString(isPlaylist ? IDS_CONFIRM_REMOVE : IDS_CONFIRM_DELETE)))
        return;
    CMediaList* list = m_context.lists.FindListById(listId);
    if (!list) // it went while the question was open
        return;
    QStringList kept;
    if (isPlaylist)
        TakeOut(*list);
    else
        kept = DeleteFiles(*list);
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
    const auto removed =
        playlist.RemoveIf([](const CTrackRecord& track) { return track.m_bChecked; });
    m_context.view.OnTracksRemoved(playlist, removed);
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
            m_context.view.RefreshRows(1, &list, index);
        }
    }
    for (const auto& other : m_context.lists.All()) {
        const auto removed = other->RemoveIf(
            [&](const CTrackRecord& track) { return deleted.contains(track.m_strPath); });
        m_context.view.OnTracksRemoved(*other, removed);
    }
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
    StoreText(*list, current.index, &CTrackRecord::m_strGenre, GenreMenu::Entry(command));
}

void CTrackCommands::StoreText(const CMediaList& list, int index, TrackText text,
                               const QString& value) {
    const CTrackRecord& track = *list[index];
    const QString path = track.m_strPath;
    if (IsPlaylistFile(path))
        return RenameList(path, value, track.m_strTitle);
    const auto writing = FindWriting(path, text);
    if (writing == m_writings.end())
        m_writings.push_back({path, text, track.*text, 1});
    else
        ++writing->pending;
    m_context.view.ShowText(path, text, value);
    m_context.writer.Run([this, path, text, value] {
        return [this, path, text, result = StoreTrackText(path, text, value)] {
            OnStored(path, text, result);
        };
    });
}

std::vector<CTrackCommands::Writing>::iterator CTrackCommands::FindWriting(const QString& path,
                                                                           TrackText text) {
    return std::find_if(m_writings.begin(), m_writings.end(), [&](const Writing& writing) {
        return writing.path == path && writing.text == text;
    });
}

/// The rows show what was typed last until that has been written, too.
void CTrackCommands::OnStored(const QString& path, TrackText text, const StoreResult& result) {
    const auto writing = FindWriting(path, text);
    if (result.stored)
        writing->stored = *result.stored;
    else
        TellUnstored(path, result.reason);
    if (--writing->pending > 0)
        return;
    m_context.view.ShowText(path, text, writing->stored);
    m_writings.erase(writing);
}

void CTrackCommands::RenameList(const QString& path, const QString& title, QString before) {
    m_context.view.ShowText(path, &CTrackRecord::m_strTitle, title);
    m_context.writer.Run([this, path, title, before = std::move(before)] {
        return [this, path, before, result = RenamePlaylist(path, title)] {
            OnRenamed(path, before, result);
        };
    });
}

void CTrackCommands::OnRenamed(const QString& path, const QString& before,
                               const StoreResult& result) {
    if (!result.stored) {
        m_context.view.ShowText(path, &CTrackRecord::m_strTitle, before);
        TellUnstored(path, result.reason);
        return;
    }
    m_context.view.ShowPath(path, *result.stored);
}

void CTrackCommands::TellUnstored(const QString& path, const QString& reason) {
    m_context.status.ShowNews(FormatText(LoadString(IDS_EDIT_UNSTORED),
                                         {Path::ForDisplay(Path::FileName(path)), reason}));
}
