#include "app/MprisPlayer.h"

#include "app/MprisMetadata.h"
#include "base/Language.h"
#include "library/TrackRecord.h"
#include "platform/Path.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"

#include <QDBusObjectPath>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QLatin1String kService("org.mpris.MediaPlayer2.trackdeck");
constexpr QLatin1String kPath("/org/mpris/MediaPlayer2");
constexpr const char* kRoot = "org.mpris.MediaPlayer2";
constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
constexpr const char* kSeeked = "Seeked";

constexpr QLatin1String kTrackPath("/com/veltria/trackdeck/track/");

/// In units of 100 ns. The bus counts in microseconds.
constexpr std::int64_t kMicrosecond = kMediaSecond / 1'000'000;

/// By the transport's state.
constexpr const char* kStatuses[] = {"Stopped", "Playing", "Paused"};

/// By whether the play mode goes on and on.
constexpr QLatin1String kLoops[] = {QLatin1String("None"), QLatin1String("Playlist")};

// What the play modes are made of.
static_assert(PLAY_RANDOM_CONTINUOUS == (PLAY_RANDOM | PLAY_CONTINUOUS));

DBusMethod Method(const char* name, std::function<void()> call) {
    return {name, {}, [call = std::move(call)](const QVariantList&) {
                call();
                return QDBusError::NoError;
            }};
}

template <typename T>
DBusProperty Constant(const char* name, const char* type, T value) {
    return {{name, type}, [value] { return QVariant(value); }};
}

} // namespace

MprisPlayer::MprisPlayer(CTransport& transport, CMediaPlayer& player, MprisWindow window,
                         const QString& coverFolder)
    : m_transport(transport)
    , m_player(player)
    , m_window(std::move(window))
    , m_cover(coverFolder, [this] { m_service.TellChanges(); })
    , m_service(kService, kPath, {MakeRoot(), MakePlayer()}) {
    m_service.SetConnectedHandler([this] { Update(); });
}

void MprisPlayer::Start(const QString& busAddress) {
    m_service.Start(busAddress);
}

void MprisPlayer::Update() {
    if (!m_service.IsConnected())
        return;
    UpdateCover();
    m_service.TellChanges();
}

void MprisPlayer::OnSeek(std::int64_t position) {
    m_service.SendSignal(kPlayer, kSeeked, {qlonglong(position / kMicrosecond)});
}

DBusInterface MprisPlayer::MakeRoot() {
    return {
        kRoot,
        {Method("Raise", [this] { m_window.raise(); }),
         Method("Quit", [this] { m_window.quit(); })},
        {},
        {Constant("CanQuit", "b", true), Constant("CanRaise", "b", true),
         Constant("HasTrackList", "b", false),
         Constant("Identity", "s", Path::ForDisplay(LoadString(IDS_MAIN_TITLE))),
         Constant("DesktopEntry", "s", QStringLiteral("trackdeck")),
         Constant("SupportedUriSchemes", "as", QStringList()),
         Constant("SupportedMimeTypes", "as", QStringList())},
    };
}

DBusInterface MprisPlayer::MakePlayer() {
    return {kPlayer, MakePlayerMethods(), {{kSeeked, {{"Position", "x"}}}}, MakePlayerProperties()};
}

std::vector<DBusMethod> MprisPlayer::MakePlayerMethods() {
    return {
        Method("Next",
               [this] {
                   if (m_transport.GetButtons().canNext)
                       m_transport.OnNext();
               }),
        Method("Previous",
               [this] {
                   if (m_transport.GetButtons().canPrevious)
                       m_transport.OnPrevious();
               }),
        Method("Pause", [this] { m_transport.Pause(); }),
        Method("PlayPause", [this] { PlayPause(); }),
        Method("Stop", [this] { m_transport.Stop(); }),
        Method("Play", [this] { m_transport.Play(); }),
        {"Seek",
         {{"Offset", "x"}},
         [this](const QVariantList& arguments) {
             Seek(arguments[0].toLongLong());
             return QDBusError::NoError;
         }},
        {"SetPosition",
         {{"TrackId", "o"}, {"Position", "x"}},
         [this](const QVariantList& arguments) {
             SetPosition(arguments[0].value<QDBusObjectPath>().path(), arguments[1].toLongLong());
             return QDBusError::NoError;
         }},
        {"OpenUri", {{"Uri", "s"}}, [](const QVariantList&) { return QDBusError::NotSupported; }},
    };
}

std::vector<DBusProperty> MprisPlayer::MakePlayerProperties() {
    const auto canPlay = [this] { return QVariant(m_transport.GetButtons().canPlay); };
    return {
        {{"PlaybackStatus", "s"},
         [this] {
             return QVariant(QLatin1String(kStatuses[static_cast<int>(m_transport.GetState())]));
         }},
        {{"LoopStatus", "s"},
         [this] { return QVariant(kLoops[m_transport.GetPlayMode() & PLAY_CONTINUOUS]); },
         [this](const QVariant& value) { return SetLoopStatus(value.toString()); }},
        {{"Rate", "d"},
         [] { return QVariant(1.0); },
         [](const QVariant& value) {
             return value.toDouble() == 1.0 ? QDBusError::NoError : QDBusError::NotSupported;
         }},
        Constant("MinimumRate", "d", 1.0),
        Constant("MaximumRate", "d", 1.0),
        {{"Shuffle", "b"},
         [this] { return QVariant((m_transport.GetPlayMode() & PLAY_RANDOM) != 0); },
         [this](const QVariant& value) {
             SetShuffle(value.toBool());
             return QDBusError::NoError;
         }},
        {{"Metadata", "a{sv}"}, [this] { return QVariant(GetMetadata()); }},
        {{"Volume", "d"},
         [this] { return QVariant(m_window.getVolume() / 100.0); },
         [this](const QVariant& value) { return SetVolume(value.toDouble()); }},
        {{"Position", "x"},
         [this] { return QVariant(qlonglong(m_player.GetPosition() / kMicrosecond)); },
         {},
         DBusProperty::Changes::NotTold},
        {{"CanGoNext", "b"}, [this] { return QVariant(m_transport.GetButtons().canNext); }},
        {{"CanGoPrevious", "b"}, [this] { return QVariant(m_transport.GetButtons().canPrevious); }},
        {{"CanPlay", "b"}, canPlay},
        {{"CanPause", "b"}, canPlay},
        {{"CanSeek", "b"}, [this] { return QVariant(CanSeek()); }},
        Constant("CanControl", "b", true),
    };
}

void MprisPlayer::PlayPause() {
    if (m_transport.GetState() == TransportState::Playing)
        m_transport.Pause();
    else
        m_transport.Play();
}

/// Beyond the end lies the next track.
void MprisPlayer::Seek(std::int64_t offset) {
    if (!CanSeek())
        return;
    const std::int64_t length = GetLength();
    const std::int64_t position = m_player.GetPosition() / kMicrosecond +
                                  std::clamp<std::int64_t>(offset, -length - 1, length + 1);
    if (position > length)
        m_transport.OnNext();
    else
        m_player.SeekTo(std::max<std::int64_t>(position, 0) * kMicrosecond);
}

/// A request that is meant for a track before this one comes too late.
void MprisPlayer::SetPosition(const QString& trackId, std::int64_t position) {
    if (CanSeek() && trackId == GetTrackId() && position >= 0 && position <= GetLength())
        m_player.SeekTo(position * kMicrosecond);
}

QDBusError::ErrorType MprisPlayer::SetLoopStatus(const QString& status) {
    const auto found = std::find(std::begin(kLoops), std::end(kLoops), status);
    if (found == std::end(kLoops))
        return QDBusError::NotSupported; // one track again and again is no play mode
    const int others = m_transport.GetPlayMode() & ~PLAY_CONTINUOUS;
    m_transport.SetPlayMode(others | static_cast<int>(found - std::begin(kLoops)));
    return QDBusError::NoError;
}

void MprisPlayer::SetShuffle(bool shuffle) {
    const int others = m_transport.GetPlayMode() & ~PLAY_RANDOM;
    m_transport.SetPlayMode(others | (shuffle ? PLAY_RANDOM : 0));
}

QDBusError::ErrorType MprisPlayer::SetVolume(double volume) {
    if (std::isnan(volume))
        return QDBusError::InvalidArgs;
    m_window.setVolume(static_cast<int>(std::lround(std::clamp(volume, 0.0, 1.0) * 100)));
    return QDBusError::NoError;
}

/// Reads the cover of each track that is begun, once.
void MprisPlayer::UpdateCover() {
    const CTrackRecord* track = m_transport.GetNowPlaying();
    const int number = track ? m_player.GetFileNumber() : 0;
    if (number == m_nCoverOf)
        return;
    m_nCoverOf = number;
    m_cover.ShowTrack(track ? track->m_strPath : QString());
}

bool MprisPlayer::CanSeek() const {
    return m_player.HasGraph() && GetLength() > 0;
}

std::int64_t MprisPlayer::GetLength() const {
    return m_player.GetDuration() / kMicrosecond;
}

QString MprisPlayer::GetTrackId() const {
    return kTrackPath + QString::number(m_player.GetFileNumber());
}

QVariantMap MprisPlayer::GetMetadata() const {
    const CTrackRecord* track = m_transport.GetNowPlaying();
    if (!track)
        return {};
    return MakeMetadata(*track, GetTrackId(), m_player.GetDuration(), m_cover.GetPath());
}
