#include "library/Playlists.h"

#include "base/FileKinds.h"
#include "base/IPrompts.h"
#include "base/IStatusDisplay.h"
#include "base/Language.h"
#include "base/SizeText.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/ListMessages.h"
#include "library/MediaLists.h"
#include "library/PlaylistFile.h"
#include "platform/Files.h"
#include "platform/Path.h"

#include <QDebug>

#include <memory>
#include <utility>

namespace {

QStringList CheckedTracks(const CMediaList& list) {
    QStringList paths;
    for (int index = 0; index < list.GetCount(); ++index)
        if (list[index]->m_bChecked && !IsPlaylistFile(list[index]->m_strPath))
            paths += list[index]->m_strPath;
    return paths;
}

/// A record for a playlist that isn't there yet, under the first free one of the numbered names.
std::unique_ptr<CTrackRecord> NewPlaylistIn(const QString& folder) {
    auto record = std::make_unique<CTrackRecord>();
    int number = 1;
    do {
        record->m_strTitle = QStringLiteral("Playlist%1").arg(number++);
        record->m_strPath = Path::Join(folder, record->m_strTitle + QStringLiteral(".m3u"));
    } while (GetFileStatus(record->m_strPath));
    record->m_strFormat = Path::Extension(record->m_strPath).toUpper();
    return record;
}

/// The playlist at a place among the playlists of a list; empty if there are fewer.
QString PlaylistPath(const CMediaList& list, int number) {
    for (int index = 0; index < list.GetCount(); ++index)
        if (IsPlaylistFile(list[index]->m_strPath) && number-- == 0)
            return list[index]->m_strPath;
    return {};
}

} // namespace

CPlaylists::CPlaylists(const CommandContext& context, CCommandMap& commands)
    : m_context(context)
    , m_commands(commands) {
    commands.On(Command::kCreatePlaylist, [this](int) { CreatePlaylist(); });
    commands.On(Command::kClosePlaylist, [this](int) { ClosePlaylist(); });
    commands.On(Command::kSavePlaylist, [this](int) { SaveOpenPlaylist(); });
    commands.On(Command::kMoveUp, [this](int) { MoveChecked(&CMediaList::MoveCheckedUp); });
    commands.On(Command::kMoveDown, [this](int) { MoveChecked(&CMediaList::MoveCheckedDown); });
    commands.On(Command::kBodyEdit, [this](int) { OpenCurrent(); });
    commands.On(Command::kFirstPlaylist, Command::kLastPlaylist,
                [this](int command) { AddToPlaylist(command - Command::kFirstPlaylist); });
}

CMediaList& CPlaylists::OpenList() const {
    return *m_context.lists.FindListByType(MEDIA_TYPE_PLAYLIST);
}

void CPlaylists::CreatePlaylist() {
    CMediaList* list = m_context.lists.GetActiveList();
    if (!list || list->m_iType != MEDIA_TYPE_COLLECTION)
        return;
    auto record = NewPlaylistIn(m_context.lists.GetLocation(list->m_iId));
    if (!WritePlaylist(record->m_strPath, CheckedTracks(*list))) {
        m_context.prompts.Warn(
            FormatText(LoadString(IDS_PLAYLIST_UNWRITABLE), {Path::ForDisplay(record->m_strPath)}));
        return;
    }
    if (const auto status = GetFileStatus(record->m_strPath))
        record->m_nFileSize = status->size;
    record->m_strSize = SizeText(record->m_nFileSize);
    list->Append(std::move(record));
    m_context.view.FillGrid();
    m_commands.Run(Command::kDeselectAll); // the checks are used up
}

void CPlaylists::OpenCurrent() {
    const TrackPlace current = m_context.view.GetCurrentTrack();
    const CMediaList* list = m_context.lists.FindListById(current.listId);
    if (list && IsPlaylistFile((*list)[current.index]->m_strPath))
        OpenPlaylist((*list)[current.index]->m_strPath);
}

void CPlaylists::OpenPlaylist(const QString& path) {
    if (g_bPlaylistOnly)
        return;
    const CMediaList* source = m_context.lists.GetActiveList();
    CMediaList& playlist = OpenList();
    playlist.ClearAll();
    playlist.m_strPath = path;
    playlist.m_iSourceType = source ? source->m_iType : -1;
    QStringList entries;
    if (!ReadPlaylist(path, entries, 1)) {
        m_context.prompts.Warn(
            FormatText(LoadString(IDS_PLAYLIST_UNREADABLE), {Path::ForDisplay(path)}));
        return;
    }
    for (const QString& entry : entries)
        AddEntry(playlist, entry);
    g_bPlaylistOnly = 1;
    g_bSelectionOnly = 0;
    SendListDone(m_context.messages, MEDIA_TYPE_PLAYLIST);
    m_context.status.ShowStatus(Path::ForDisplay(Path::BaseName(path)));
    m_pfnViewChanged();
}

void CPlaylists::AddEntry(CMediaList& playlist, const QString& entry) {
    const QString path = ResolveEntry(playlist.m_strPath, entry);
    SendAddTrack(m_context.messages, playlist, path);
    // A file of another system, whose name stands behind another separator.
    const qsizetype separator = path.lastIndexOf(u'\\');
    if (separator < 0 || GetFileStatus(path))
        return;
    if (CTrackRecord* record = playlist[playlist.GetCount() - 1])
        record->m_strTitle = Path::ForDisplay(path.sliced(separator + 1));
}

void CPlaylists::ClosePlaylist() {
    if (OpenList().m_bModified && m_context.prompts.Confirm(LoadString(IDS_PLAYLIST_MODPROMPT)))
        SaveOpenPlaylist();
    else
        Leave();
}

void CPlaylists::SaveOpenPlaylist() {
    const CMediaList& playlist = OpenList();
    if (playlist.m_bModified && !playlist.SavePlaylist())
        qWarning() << "Playlist could not be written:" << playlist.m_strPath;
    else
        Leave();
}

void CPlaylists::Leave() {
    CMediaList& playlist = OpenList();
    m_context.player.ReleaseList(playlist);
    g_bPlaylistOnly = 0;
    playlist.ClearAll();
    m_context.view.FillGrid();
    m_context.status.ShowStatus(QString());
    m_pfnViewChanged();
    m_context.state.UpdateCommands();
}

void CPlaylists::MoveChecked(Move move) {
    CMediaList& playlist = OpenList();
    std::vector<int> changedFlags;
    if (!(playlist.*move)(changedFlags))
        return;
    playlist.m_bModified = 1;
    for (int index = 0; index < playlist.GetCount(); ++index)
        if (changedFlags[index])
            m_context.view.RefreshRows(0, &playlist, index);
}

void CPlaylists::AddToPlaylist(int number) {
    const CMediaList* list = m_context.lists.FindListById(m_context.view.GetCurrentTrack().listId);
    if (!list || list->m_iType != MEDIA_TYPE_COLLECTION)
        return;
    if (const QString path = PlaylistPath(*list, number); !path.isEmpty())
        AppendToPlaylist(path, CheckedTracks(*list));
}
