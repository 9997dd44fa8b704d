#include "player/Transport.h"

#include "base/Language.h"
#include "base/Messages.h"
#include "library/FolderScan.h"
#include "library/ITrackView.h"
#include "library/MediaLists.h"
#include "library/PlaylistFile.h"
#include "library/TrackFile.h"
#include "platform/MessageTarget.h"
#include "platform/Path.h"
#include "platform/Worker.h"
#include "player/MediaPlayer.h"

#include <QDebug>
#include <QStringList>

#include <cstdint>
#include <stop_token>

namespace {

constexpr std::int64_t kMediaMillisecond = kMediaSecond / 1000;

QString LengthText(std::int64_t seconds) {
    return QStringLiteral("%1:%2")
        .arg(seconds / 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString CaptionOf(const CTrackRecord& track) {
    QStringList parts{track.m_strArtist, track.m_strAlbum, track.m_strTitle};
    parts.removeAll(QString());
    return Path::ForDisplay(parts.join(QStringLiteral(" - ")));
}

/// The marked one of the tracks of a file. While none is marked it is the one at `row`, else the
/// first; -1 if there is none.
int FindTrack(const CMediaList& list, const QString& path, int row) {
    const int first = list.FindPath(path);
    if (first < 0)
        return -1;
    const auto isOne = [&](int i) { return list[i] && list[i]->m_strPath == path; };
    for (int i = first; i < list.GetCount(); ++i)
        if (list[i]->m_bPlaying && isOne(i))
            return i;
    return isOne(row) ? row : first;
}

} // namespace

/// Of one playlist. It ends with this.
struct CTransport::Reading {
    explicit Reading(int list)
        : listId(list) {}
    ~Reading() { stop.request_stop(); }

    const int listId;
    std::stop_source stop;
    CWorker worker{"playlist"};
};

CTransport::CTransport(CMediaLists& lists, CMediaPlayer& player, ITrackView& view,
                       ITransportDisplay& display)
    : m_lists(lists)
    , m_player(player)
    , m_view(view)
    , m_display(display)
    , m_removals(lists.OnRemoving([this](const CMediaList& list) { ReleaseList(list); }))
    , m_events(player.OnEvent([this](const GraphEvent& event) { OnGraphEvent(event); })) {}

CTransport::~CTransport() = default;

void CTransport::Listen(CMessageTarget& messages) {
    messages.On(WM_TD_GRAPH_NOTIFY, [this](const Message&) {
        m_player.OnGraphNotify();
        return 0;
    });
    messages.On(WM_TD_TRACK_FINISHED, [this](const Message&) {
        OnTrackFinished();
        return 0;
    });
}

void CTransport::OnPlayPause() {
    const CMediaList* active = m_lists.GetActiveList();
    m_pPlaylistReading.reset();
    if (m_iTransport == TransportState::Stopped) {
        if (active && active->GetCount() > 0)
            PlayTrack(*active, -1);
    } else if (active != GetPlayList()) {
        StopTransport();
    } else if (m_iTransport == TransportState::Playing) {
        PauseTransport();
    } else {
        PlayTransport();
    }
}

void CTransport::OnPrevious() {
    m_pPlaylistReading.reset();
    m_nMissing = 0;
    Step(Direction::Back);
}

void CTransport::OnNext() {
    m_pPlaylistReading.reset();
    m_nMissing = 0;
    Step(Direction::Forward);
}

void CTransport::OnTrackFinished() {
    if (!m_player.IsFinished())
        return;
    m_nMissing = 0;
    Step(Direction::Forward);
}

void CTransport::Play() {
    if (m_iTransport == TransportState::Stopped) {
        OnPlayPause();
    } else if (m_iTransport == TransportState::Paused) {
        m_pPlaylistReading.reset();
        PlayTransport();
    }
}

void CTransport::Pause() {
    m_pPlaylistReading.reset();
    if (m_iTransport == TransportState::Playing)
        PauseTransport();
}

void CTransport::Stop() {
    m_pPlaylistReading.reset();
    if (m_iTransport != TransportState::Stopped)
        StopTransport();
}

void CTransport::PlayTrack(const CMediaList& list, int index) {
    m_pPlaylistReading.reset();
    MarkRow(false);
    BuildPlayQueue(list, index);
    StartQueue();
}

/// A new worker for each, as the one before may be stuck.
void CTransport::PlayPlaylist(const CMediaList& list, int index) {
    m_pPlaylistReading = std::make_unique<Reading>(list.m_iId);
    m_pPlaylistReading->worker.Run([this, listId = list.m_iId, path = list[index]->m_strPath,
                                    stop = m_pPlaylistReading->stop.get_token()] {
        return [this, listId, files = ReadPlaylistFiles(path, stop).value_or(QStringList())] {
            PlayFiles(listId, files);
        };
    });
}

void CTransport::PlayFiles(int listId, const QStringList& files) {
    MarkRow(false);
    m_iPlayListId = listId;
    m_playlist = files;
    m_queue.Build(m_playlist, 0, m_iPlayMode);
    StartQueue();
}

void CTransport::SetPlayMode(int mode) {
    if (mode != m_iPlayMode) {
        m_iPlayMode = mode;
        RebuildQueue();
    }
    ShowTransport();
}

void CTransport::RenewQueue() {
    const CMediaList* list = GetPlayList();
    if (list && m_playlist.isEmpty() &&
        list->GetCount() - list->CountPlaylists() > m_queue.GetCount())
        RebuildQueue();
}

void CTransport::RebuildQueue() {
    const auto current = m_queue.Current();
    if (!m_playlist.isEmpty() && current)
        m_queue.Build(m_playlist, current->iRow, m_iPlayMode);
    else if (m_playlist.isEmpty() && FindNowPlaying()) // which may have moved since
        BuildPlayQueue(*GetPlayList(), m_iNowPlayingRow);
}

void CTransport::BuildPlayQueue(const CMediaList& list, int startRow) {
    m_iPlayListId = list.m_iId;
    m_playlist.clear();
    m_queue.Build(list, startRow, m_iPlayMode);
}

void CTransport::StartQueue() {
    m_nMissing = 0;
    m_lastStep = Direction::Forward;
    StartEntry(true);
}

void CTransport::Step(Direction direction) {
    MarkRow(false);
    m_lastStep = direction;
    const bool isThere =
        direction == Direction::Forward ? m_queue.Next(m_iPlayMode) : m_queue.Previous(m_iPlayMode);
    if (isThere)
        StartEntry(m_iTransport != TransportState::Stopped);
    else
        StopTransport();
}

/// Takes up the current entry of the queue. Without one there is nothing to play.
void CTransport::StartEntry(bool play) {
    const auto entry = m_queue.Current();
    if (!entry)
        return StopTransport();
    m_iNowPlayingRow = entry->iRow;
    m_strNowPlayingPath = entry->strPath;
    m_pStray.reset();
    m_pStrayReading.reset();
    MarkRow(true);
    LoadAndPlayFile(entry->strPath, play);
    if (!m_playlist.isEmpty() && !FindNowPlaying())
        ReadStray();
}

/// Makes a record of the file that plays and is in no list. It is heard meanwhile.
void CTransport::ReadStray() {
    m_pStrayReading = std::make_unique<CWorker>("track");
    m_pStrayReading->Run([this, path = m_strNowPlayingPath] {
        CMediaFileRequest request;
        request.m_strPath = path;
        return [this, track = std::shared_ptr(MakeTrack(request))] { OnStrayRead(track); };
    });
}

void CTransport::OnStrayRead(std::shared_ptr<CTrackRecord> track) {
    m_pStray = std::move(track);
    ShowCaption();
    ShowLength();
}

void CTransport::LoadAndPlayFile(const QString& path, bool play) {
    m_player.LoadFile(path);
    if (play)
        PlayTransport();
    else
        StopTransport();
}

void CTransport::PlayTransport() {
    if (m_player.PlayMedia())
        m_iTransport = TransportState::Playing;
    ShowTransport();
}

void CTransport::PauseTransport() {
    m_player.PauseMedia();
    m_iTransport = TransportState::Paused;
    ShowTransport();
}

void CTransport::StopTransport() {
    m_display.ShowCaption(QString());
    m_iTransport = TransportState::Stopped;
    m_player.Rewind();
    ShowTransport();
}

void CTransport::StopPlayback() {
    MarkRow(false);
    m_player.CloseFilterGraph();
    m_queue.Clear();
    m_iPlayListId = -1;
    m_playlist.clear();
    m_pPlaylistReading.reset();
    m_pStrayReading.reset();
    m_iNowPlayingRow = -1;
    m_strNowPlayingPath.clear();
    m_display.EnableSeek(false);
    StopTransport();
}

void CTransport::ReleaseFile(const QString& path) {
    if (!path.isEmpty() && path == m_strNowPlayingPath)
        StopPlayback();
}

void CTransport::ReleaseList(const CMediaList& list) {
    if (list.m_iId == m_iPlayListId)
        StopPlayback();
    else if (m_pPlaylistReading && m_pPlaylistReading->listId == list.m_iId)
        m_pPlaylistReading.reset();
}

void CTransport::UpdateTransport() {
    m_bCanPlay = true;
    ShowTransport();
}

void CTransport::ShowTransport() {
    m_display.ShowState(m_iTransport);
    m_view.ShowPlayingList(m_iTransport == TransportState::Stopped ? -1 : m_iPlayListId);
    m_changeListeners.Tell();
}

PlayerCommands CTransport::GetCommands() const {
    const CMediaList* active = m_lists.GetActiveList();
    const bool hasWork = m_iTransport != TransportState::Stopped || (active && active->GetCount());
    return {m_queue.CanPrevious(m_iPlayMode), m_bCanPlay && hasWork, m_queue.CanNext(m_iPlayMode),
            m_iPlayMode};
}

CMediaList* CTransport::GetPlayList() const {
    return m_lists.FindListById(m_iPlayListId);
}

void CTransport::OnGraphEvent(const GraphEvent& event) {
    switch (event.code) {
    case GraphEvent::Code::Rendered:
        OnRendered();
        break;
    case GraphEvent::Code::LengthChanged:
        ShowLength();
        break;
    case GraphEvent::Code::Missing:
        OnMissing();
        break;
    case GraphEvent::Code::Failed:
        OnFailed(LoadString(IDS_FEILD_CORRUPT));
        break;
    case GraphEvent::Code::DeviceFailed:
        OnFailed(LoadString(IDS_FEILD_NODEVICE));
        break;
    case GraphEvent::Code::DecoderMissing:
        OnFailed(FormatText(LoadString(IDS_FEILD_NODECODER), {event.detail}));
        break;
    case GraphEvent::Code::Complete:
        break; // comes as OnTrackFinished()
    }
}

void CTransport::OnRendered() {
    m_bCanPlay = true;
    m_display.EnableSeek(true);
    if (CTrackRecord* track = FindNowPlaying())
        track->m_strStatus.clear();
    ShowCaption();
    ShowLength();
    ShowTransport();
}

void CTransport::ShowCaption() {
    const CTrackRecord* track = FindNowPlaying();
    if (track && m_iTransport != TransportState::Stopped)
        m_display.ShowCaption(CaptionOf(*track));
}

/// What the row tells of a length is measured now, whatever the tags said.
void CTransport::ShowLength() {
    CTrackRecord* track = FindNowPlaying();
    const std::int64_t duration = m_player.GetDuration();
    if (!track)
        return;
    if (duration > 0) {
        const std::int64_t seconds = duration / kMediaSecond;
        track->m_nDuration = duration / kMediaMillisecond;
        track->m_strLength = LengthText(seconds);
        if (track->m_nFileSize > 0 && seconds > 0)
            track->m_strBitrate =
                QStringLiteral("%1 kbps").arg(track->m_nFileSize * 8 / seconds / 1000);
    }
    RefreshRow();
    m_changeListeners.Tell();
}

/// Goes on to the next file. When all have been tried there is nothing to play.
void CTransport::OnMissing() {
    m_player.CloseFilterGraph();
    m_display.EnableSeek(false);
    ++m_nMissing;
    const bool isStuck = m_lastStep == Direction::Back && !m_queue.CanPrevious(m_iPlayMode);
    if (!isStuck && m_nMissing < m_queue.GetCount()) {
        const bool isPaused = m_iTransport == TransportState::Paused;
        Step(m_lastStep);
        if (isPaused && m_iTransport == TransportState::Playing)
            PauseTransport();
        return;
    }
    MarkRow(false);
    StopTransport();
}

/// The end of playing: the next track is not tried.
void CTransport::OnFailed(const QString& status) {
    qWarning("File failed to render!");
    m_bCanPlay = false;
    m_player.CloseFilterGraph();
    m_display.EnableSeek(false);
    m_display.Beep();
    if (CTrackRecord* track = FindNowPlaying()) {
        track->m_strStatus = status;
        RefreshRow();
    }
    StopTransport();
}

const CTrackRecord* CTransport::GetNowPlaying() {
    return FindNowPlaying();
}

/// Tracks may have been sorted, moved or taken out since the queue was built.
CTrackRecord* CTransport::FindNowPlaying() {
    const CMediaList* list = GetPlayList();
    if (!list || m_strNowPlayingPath.isEmpty())
        return nullptr;
    const CTrackRecord* track = (*list)[m_iNowPlayingRow];
    if (!track || !track->m_bPlaying || track->m_strPath != m_strNowPlayingPath)
        m_iNowPlayingRow = FindTrack(*list, m_strNowPlayingPath, m_iNowPlayingRow);
    CTrackRecord* found = (*list)[m_iNowPlayingRow];
    return found ? found : m_pStray.get();
}

void CTransport::MarkRow(bool playing) {
    if (CTrackRecord* track = FindNowPlaying()) {
        track->m_bPlaying = playing;
        RefreshRow();
    }
}

void CTransport::RefreshRow() {
    m_view.RefreshRows(1, GetPlayList(), m_iNowPlayingRow);
}
