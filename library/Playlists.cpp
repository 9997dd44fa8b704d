#include "library/Playlists.h"

#include "base/FileKinds.h"
#include "base/IPrompts.h"
#include "base/Language.h"
#include "base/SizeText.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "library/PlaylistFile.h"
#include "library/TrackFile.h"
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
    m_context.view.OnTracksAppended(*list, list->GetCount() - 1);
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
    const int sourceType = source ? source->m_iType : -1;
    const QString name = Path::ForDisplay(Path::BaseName(path));
    m_pOpening = m_context.status.BeginOperation(
        FormatText(LoadString(IDS_PLAYLIST_OPENING), {name}), [this] {
            m_reader.reset();
            m_pOpening.reset();
        });
    m_reader.emplace("playlist"); // what another one still reads never comes
    m_reader->Run([this, path, sourceType] {
        const auto files = ReadPlaylistFiles(path);
        const auto tracks = std::make_shared<CTrackReader::Tracks>();
        for (const QString& file : files.value_or(QStringList())) {
            CMediaFileRequest request;
            request.m_strPath = file;
            tracks->push_back(NewTrack(request, OriginOf(sourceType)));
        }
        return [this, path, sourceType, tracks, isRead = files.has_value()] {
            m_pOpening.reset();
            if (isRead)
                Show(path, sourceType, std::move(*tracks));
            else
                m_context.prompts.Warn(
                    FormatText(LoadString(IDS_PLAYLIST_UNREADABLE), {Path::ForDisplay(path)}));
        };
    });
}

void CPlaylists::Show(const QString& path, int sourceType, CTrackReader::Tracks tracks) {
    CMediaList& playlist = OpenList();
    playlist.ClearAll();
    playlist.m_strPath = path;
    playlist.m_iSourceType = sourceType;
    for (auto& track : tracks)
        playlist.Append(std::move(track));
    g_bPlaylistOnly = 1;
    g_bSelectionOnly = 0;
    m_context.view.FillGrid();
    m_context.status.ShowLasting(IStatusDisplay::Lasting::Open,
                                 Path::ForDisplay(Path::BaseName(path)));
    m_viewChanged.Tell();
    m_context.state.UpdateCommands();
    m_context.scanner.ReadTracks(playlist);
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
    m_context.scanner.Leave(playlist.m_iId);
    m_context.player.ReleaseList(playlist);
    g_bPlaylistOnly = 0;
    playlist.ClearAll();
    m_context.view.FillGrid();
    m_context.status.ShowLasting(IStatusDisplay::Lasting::Open, QString());
    m_viewChanged.Tell();
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
