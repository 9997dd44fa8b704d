#include "app/MprisPlayer.h"

#include "app/MprisAdaptors.h"
#include "app/MprisMetadata.h"
#include "base/Guard.h"
#include "library/TrackRecord.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"

#include <QMetaProperty>

#include <utility>

namespace {

constexpr QLatin1String kService("org.mpris.MediaPlayer2.trackdeck");
constexpr QLatin1String kPath("/org/mpris/MediaPlayer2");

/// The property whose changes are not told: others count on from where it was.
constexpr QLatin1String kUntold("Position");

} // namespace

CMprisPlayer::CMprisPlayer(CTransport& transport, CMediaPlayer& player, MprisWindow window,
                           const QString& coverFolder)
    : m_transport(transport)
    , m_player(player)
    , m_window(std::move(window))
    , m_cover(coverFolder, [this] { Update(); })
    , m_pAdaptor(new CMprisPlayerAdaptor(this, transport, player, m_window, m_cover))
    , m_service(kService, kPath, *this) {
    new CMprisRootAdaptor(this, m_window);
    m_changeTimer.setSingleShot(true);
    connect(&m_changeTimer, &QTimer::timeout, this, [this] { TellChanges(); });
    m_changes = transport.OnChange([this] { Update(); });
    m_seeks = player.OnSeek([this](std::int64_t position) { OnSeek(position); });
    m_service.SetConnectedHandler([this] {
        m_told = ReadProperties(); // before others can ask for them
        UpdateCover();
    });
}

void CMprisPlayer::Start(const QString& busAddress) {
    m_service.Start(busAddress);
}

void CMprisPlayer::Update() {
    if (!m_service.IsConnected())
        return;
    UpdateCover();
    m_changeTimer.start();
}

/// The jump may lie in a track that others were not told of yet.
void CMprisPlayer::OnSeek(std::int64_t position) {
    if (m_changeTimer.isActive())
        TellChanges();
    Q_EMIT m_pAdaptor->Seeked(position / kMicrosecond);
}

/// What others ask for comes as an event. No exception may go on from here into Qt.
bool CMprisPlayer::event(QEvent* event) {
    bool handled = true;
    Guarded("OnDesktopRequest()", [&] { handled = QObject::event(event); });
    return handled;
}

/// Reads the cover of each track that is begun, once.
void CMprisPlayer::UpdateCover() {
    const CTrackRecord* track = m_transport.GetNowPlaying();
    const int number = track ? m_player.GetFileNumber() : 0;
    if (number == m_nCoverOf)
        return;
    m_nCoverOf = number;
    m_cover.ShowTrack(track ? track->m_strPath : QString());
}

void CMprisPlayer::TellChanges() {
    m_changeTimer.stop();
    const QVariantMap old = std::exchange(m_told, ReadProperties());
    QVariantMap changed = m_told;
    changed.removeIf(
        [&](const QVariantMap::iterator& now) { return old.value(now.key()) == now.value(); });
    if (!changed.isEmpty())
        m_service.TellChanged(*m_pAdaptor, changed);
}

QVariantMap CMprisPlayer::ReadProperties() const {
    QVariantMap values;
    const QMetaObject* type = m_pAdaptor->metaObject();
    for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        if (const QLatin1String name(property.name()); name != kUntold)
            values.insert(name, property.read(m_pAdaptor));
    }
    return values;
}
