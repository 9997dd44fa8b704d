#include "app/MprisAdaptors.h"

#include "base/Language.h"
#include "platform/Path.h"

#include <QDBusObjectPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr QLatin1String kTrackPath("/com/veltria/trackdeck/track/");

/// By the transport's state.
constexpr QLatin1String kStatuses[] = {QLatin1String("Stopped"), QLatin1String("Playing"),
                                       QLatin1String("Paused")};

constexpr QLatin1String kNoLoop("None");
constexpr QLatin1String kLoop("Playlist");

// What the play modes are made of.
static_assert(PLAY_RANDOM_CONTINUOUS == (PLAY_RANDOM | PLAY_CONTINUOUS));

} // namespace

CMprisRootAdaptor::CMprisRootAdaptor(QObject* object, const MprisWindow& window)
    : QDBusAbstractAdaptor(object)
    , m_window(window) {}

QString CMprisRootAdaptor::GetIdentity() {
    return Path::ForDisplay(LoadString(IDS_MAIN_TITLE));
}

CMprisPlayerAdaptor::CMprisPlayerAdaptor(QObject* object, CTransport& transport,
                                         CMediaPlayer& player, const MprisWindow& window,
                                         const CCoverFile& cover)
    : QDBusAbstractAdaptor(object)
    , m_transport(transport)
    , m_player(player)
    , m_window(window)
    , m_cover(cover) {}

QString CMprisPlayerAdaptor::GetPlaybackStatus() const {
    return kStatuses[static_cast<int>(m_transport.GetState())];
}

QString CMprisPlayerAdaptor::GetLoopStatus() const {
    return m_transport.GetPlayMode() & PLAY_CONTINUOUS ? kLoop : kNoLoop;
}

/// One track again and again is no play mode.
void CMprisPlayerAdaptor::SetLoopStatus(const QString& status) {
    if (status == kLoop || status == kNoLoop)
        SetPlayModeFlag(PLAY_CONTINUOUS, status == kLoop);
}

void CMprisPlayerAdaptor::SetPlayModeFlag(int flag, bool on) {
    const int others = m_transport.GetPlayMode() & ~flag;
    m_transport.SetPlayMode(others | (on ? flag : 0));
}

QVariantMap CMprisPlayerAdaptor::GetMetadata() const {
    const CTrackRecord* track = m_transport.GetNowPlaying();
    if (!track)
        return {};
    return MakeMetadata(*track, GetTrackId(), m_player.GetDuration(), m_cover.GetPath());
}

void CMprisPlayerAdaptor::SetVolume(double volume) {
    if (!std::isnan(volume))
        m_window.setVolume(static_cast<int>(std::lround(std::clamp(volume, 0.0, 1.0) * 100)));
}

void CMprisPlayerAdaptor::Next() {
    if (CanGoNext())
        m_transport.OnNext();
}

void CMprisPlayerAdaptor::Previous() {
    if (CanGoPrevious())
        m_transport.OnPrevious();
}

void CMprisPlayerAdaptor::PlayPause() {
    if (m_transport.GetState() == TransportState::Playing)
        m_transport.Pause();
    else
        m_transport.Play();
}

/// Beyond the end lies the next track.
void CMprisPlayerAdaptor::Seek(qlonglong Offset) {
    if (!CanSeek())
        return;
    const qlonglong length = GetLength();
    const qlonglong position = GetPosition() + std::clamp(Offset, -length - 1, length + 1);
    if (position > length)
        m_transport.OnNext();
    else
        m_player.SeekTo(std::max(position, 0LL) * kMicrosecond);
}

/// A request that is meant for a track before this one comes too late.
void CMprisPlayerAdaptor::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position) {
    if (CanSeek() && TrackId.path() == GetTrackId() && Position >= 0 && Position <= GetLength())
        m_player.SeekTo(Position * kMicrosecond);
}

QString CMprisPlayerAdaptor::GetTrackId() const {
    return kTrackPath + QString::number(m_player.GetFileNumber());
}
