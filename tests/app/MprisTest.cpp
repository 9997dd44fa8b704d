#include "app/MprisPlayer.h"
#include "base/Language.h"
#include "library/MediaLists.h"
#include "platform/Path.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Pictures.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/PrivateBus.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"
#include "tests/player/RecordingDisplay.h"
#include "tests/player/ScriptedGraph.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QUrl>

#include <unistd.h>

#include <cmath>
#include <limits>

namespace {

constexpr const char* kService = "org.mpris.MediaPlayer2.trackdeck";
constexpr const char* kPath = "/org/mpris/MediaPlayer2";
constexpr const char* kRoot = "org.mpris.MediaPlayer2";
constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

constexpr qlonglong kSecond = 1'000'000; // of the bus

/// A panel of the desktop: it asks, commands, and hears what it is told.
class Panel : public QObject {
    Q_OBJECT

public:
    explicit Panel(const QString& address)
        : m_bus(QDBusConnection::connectToBus(address, "panel")) {
        m_bus.connect(kService, kPath, kProperties, "PropertiesChanged", this,
                      SLOT(OnChanged(QString, QVariantMap, QStringList)));
        m_bus.connect(kService, kPath, kPlayer, "Seeked", this, SLOT(OnSeeked(qlonglong)));
    }
    ~Panel() override { QDBusConnection::disconnectFromBus("panel"); }

    [[nodiscard]] bool SeesService() const {
        return m_bus.interface()->isServiceRegistered(kService);
    }
    /// The events of the player run in the meantime: it lives on the same thread.
    QDBusMessage Call(const char* method, const QVariantList& arguments = {},
                      const char* interface = kPlayer) {
        QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, interface, method);
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::BlockWithGui);
    }
    void Set(const char* property, const QVariant& value) {
        Call("Set", {kPlayer, property, QVariant::fromValue(QDBusVariant(value))}, kProperties);
    }
    QVariantMap GetAll(const char* interface = kPlayer) {
        const QDBusMessage answer = Call("GetAll", {interface}, kProperties);
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }
    QVariant Get(const char* property) { return GetAll().value(property); }
    QVariantMap Metadata() { return qdbus_cast<QVariantMap>(Get("Metadata")); }
    QVariant Told(const char* key) { return Metadata().value(key); }
    QVariant TrackId() { return Told("mpris:trackid"); }
    QString Cover() { return Told("mpris:artUrl").toUrl().toLocalFile(); }

    /// Names of the properties in the next message of changes.
    QString NextChange() {
        EXPECT_TRUE(RunUntil([this] { return !m_changes.isEmpty(); }));
        return m_changes.takeFirst();
    }

    QDBusConnection m_bus;
    QStringList m_changes;
    QList<qlonglong> m_seeks;

private Q_SLOTS:
    void OnChanged(const QString& interface, const QVariantMap& changed, const QStringList& lost) {
        EXPECT_EQ(interface, kPlayer);
        EXPECT_TRUE(lost.isEmpty());
        m_changes += changed.keys().join(u' ');
    }
    void OnSeeked(qlonglong position) { m_seeks += position; }
};

/// A player with three tracks of 100 seconds, put together as the main dialog does it.
class MprisTest : public ::testing::Test {
protected:
    MprisTest() {
        SetLanguageFile(QString()); // texts are their own keys
        m_transport.Listen(m_messages);
        for (const char* name : {"one", "two", "three"})
            AddTrack(m_list, m_scratch.File(QString(name) + ".mp3"), name);
        m_list.m_bActive = 1;
        m_mpris.emplace(m_transport, m_player,
                        MprisWindow{[this] { m_done += "raise "; }, [this] { m_done += "quit "; },
                                    [this] { return m_nVolume; },
                                    [this](int volume) {
                                        m_nVolume = volume;
                                        m_mpris->Update();
                                    }},
                        m_covers);
    }

    void Start() {
        m_mpris->Start(m_bus.Address());
        ASSERT_TRUE(RunUntil([this] { return m_panel.SeesService(); }));
    }
    void StartPlaying(int index = 0) {
        Start();
        m_transport.PlayTrack(m_list, index);
        m_panel.NextChange();
        ASSERT_TRUE(RunUntil([this] { return m_panel.Get("CanSeek").toBool(); }));
        m_panel.m_changes.clear();
    }
    static void WaitForCover() {
        WaitForThreads();
        QCoreApplication::processEvents();
    }

    PrivateBus m_bus;
    Panel m_panel{m_bus.Address()};
    ScratchFolder m_scratch;
    const QString m_covers = m_scratch.MakeFolder("covers");
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add("Mine", MEDIA_TYPE_COLLECTION, 1);
    CMessageTarget m_messages;
    RecordingDisplay m_display;
    RecordingView m_view;
    ScriptedGraph::Script m_graphs;
    CMediaPlayer m_player{m_graphs.Factory(), m_messages.Address(), m_display};
    CTransport m_transport{m_lists, m_player, m_view, m_display};
    int m_nVolume = 70;
    QString m_done;
    std::optional<CMprisPlayer> m_mpris;
};

} // namespace

TEST_F(MprisTest, DesktopFindsThePlayer) {
    Start();
    EXPECT_EQ(m_panel.GetAll(kRoot).keys().join(u' '),
              u"CanQuit CanRaise DesktopEntry HasTrackList Identity SupportedMimeTypes "
              "SupportedUriSchemes");
    EXPECT_EQ(m_panel.GetAll().keys().join(u' '),
              u"CanControl CanGoNext CanGoPrevious CanPause CanPlay CanSeek LoopStatus MaximumRate "
              "Metadata MinimumRate PlaybackStatus Position Rate Shuffle Volume");
    m_panel.Call("Raise", {}, kRoot);
    m_panel.Call("Quit", {}, kRoot);
    EXPECT_EQ(m_done, u"raise quit ");
}

TEST_F(MprisTest, CommandsDriveTheTransport) {
    Start();
    const char* const steps[][2] = {
        {"Next", "Stopped "},        {"Pause", "Stopped "},        {"Play", "Playing one"},
        {"Previous", "Playing one"}, {"Next", "Playing two"},      {"Pause", "Paused two"},
        {"Pause", "Paused two"},     {"PlayPause", "Playing two"}, {"PlayPause", "Paused two"},
        {"Play", "Playing two"},     {"Next", "Playing three"},    {"Next", "Playing three"},
        {"Previous", "Playing two"}, {"Stop", "Stopped two"},      {"PlayPause", "Playing one"}};
    for (const auto& [command, result] : steps) {
        m_panel.Call(command);
        const QString title = m_panel.Told("xesam:title").toString();
        EXPECT_EQ(m_panel.Get("PlaybackStatus").toString() + u' ' + title, result);
    }
}

TEST_F(MprisTest, PropertiesAreSetAsFarAsTheyCanBe) {
    Start();
    // The result is the play mode, and for the volume the position of the slider.
    const std::tuple<const char*, QVariant, int> steps[] = {
        {"Shuffle", true, PLAY_RANDOM},
        {"LoopStatus", "Playlist", PLAY_RANDOM_CONTINUOUS},
        {"LoopStatus", "Track", PLAY_RANDOM_CONTINUOUS},
        {"Shuffle", false, PLAY_CONTINUOUS},
        {"LoopStatus", "None", PLAY_SINGLE},
        {"Volume", 0.555, 56},
        {"Volume", std::nan(""), 56},
        {"Volume", QStringList("loud"), 56},
        {"Volume", -3.0, 0},
        {"Volume", std::numeric_limits<double>::infinity(), 100}};
    for (const auto& [property, value, result] : steps) {
        m_panel.Set(property, value);
        EXPECT_EQ(m_nVolume != 70 ? m_nVolume : m_transport.GetPlayMode(), result) << property;
    }
}

TEST_F(MprisTest, ChangesAloneAreTold) {
    StartPlaying();
    m_transport.Pause();
    m_transport.Play();
    m_transport.Pause();
    EXPECT_EQ(m_panel.NextChange(), u"PlaybackStatus");
    m_transport.SetPlayMode(PLAY_RANDOM_CONTINUOUS);
    EXPECT_EQ(m_panel.NextChange(), u"CanGoPrevious LoopStatus Shuffle");
    m_panel.Set("Volume", 0.3);
    EXPECT_EQ(m_panel.NextChange(), u"Volume");
    m_graphs.duration = 90 * kMediaSecond;
    m_graphs.current->position = 5 * kMediaSecond;
    m_graphs.current->Tell({GraphEvent::Code::LengthChanged});
    EXPECT_EQ(m_panel.NextChange(), u"Metadata");

    m_mpris->Update(); // nothing has changed
    m_player.SeekTo(7 * kMediaSecond);
    EXPECT_TRUE(RunUntil([this] { return !m_panel.m_seeks.isEmpty(); }));
    EXPECT_EQ(m_panel.m_seeks, QList<qlonglong>{7 * kSecond});
    EXPECT_TRUE(m_panel.m_changes.isEmpty());
    EXPECT_EQ(m_panel.Get("Position"), QVariant(7 * kSecond));
}

TEST_F(MprisTest, SeeksStayInsideTheTrack) {
    StartPlaying(1);
    constexpr qlonglong kMost = std::numeric_limits<qlonglong>::max();
    constexpr qlonglong kSeeks[][2] = {{10 * kSecond, 60 * kSecond},
                                       {-20 * kSecond, 30 * kSecond},
                                       {50 * kSecond, 100 * kSecond},
                                       {-kMost - 1, 0}};
    for (const auto& [offset, position] : kSeeks) {
        m_graphs.current->position = 50 * kMediaSecond;
        m_panel.Call("Seek", {offset});
        EXPECT_EQ(m_panel.Get("Position").toLongLong(), position) << offset;
    }

    const QVariant id = m_panel.TrackId();
    const QVariant other = QVariant::fromValue(QDBusObjectPath("/org/another"));
    m_panel.Call("SetPosition", {id, 40 * kSecond});
    for (const auto& [track, position] :
         {std::pair(id, -1LL), {id, 100 * kSecond + 1}, {id, kMost}, {other, 5 * kSecond}})
        m_panel.Call("SetPosition", {track, position});
    EXPECT_EQ(m_graphs.current->position, 40 * kMediaSecond);
    EXPECT_EQ(m_transport.GetNowPlaying(), m_list[1]);

    m_panel.Call("Seek", {kMost});
    EXPECT_EQ(m_transport.GetNowPlaying(), m_list[2]) << "the next track lies beyond the end";
    m_panel.Call("SetPosition", {id, 40 * kSecond});
    EXPECT_EQ(m_graphs.current->position, 0) << "the track before was meant";
}

TEST_F(MprisTest, TracksAreToldInValidText) {
    CTrackRecord& track = AddTrack(m_list, m_scratch.File(Path::FromBytes("odd \xE9 #1.mp3")));
    track.m_strTitle = QString("Half") + QChar(0xD83D) + " way";
    track.m_strArtist = Path::FromBytes("B\xE9la");
    track.m_strAlbum = QString("Тихие ") + QChar(0xDC41);
    track.m_strGenre = "Folk";
    track.m_strTrackNumber = "3/12";
    StartPlaying(3);
    QVariantMap metadata = m_panel.Metadata();
    metadata.remove("mpris:trackid");
    const QString folder = QUrl::fromLocalFile(m_scratch.Path()).toString(QUrl::FullyEncoded);
    const QVariantMap kExpected{{"mpris:length", 100 * kSecond},
                                {"xesam:title", "Half? way"},
                                {"xesam:artist", QStringList("B\uFFFDla")},
                                {"xesam:album", "Тихие ?"},
                                {"xesam:genre", QStringList("Folk")},
                                {"xesam:trackNumber", 3},
                                {"xesam:url", folder + "/odd%20%E9%20%231.mp3"}};
    EXPECT_EQ(metadata, kExpected);

    const QVariant id = m_panel.TrackId();
    m_transport.PlayTrack(m_list, 3);
    EXPECT_NE(m_panel.TrackId(), id) << "the same track, begun again";
}

TEST_F(MprisTest, CoverIsAFileWhileItsTrackPlays) {
    const QString path = m_list[0]->m_strPath;
    WriteFile(path, ReadFile(MediaFile("untagged.mp3")));
    ASSERT_EQ(WriteTrackArtwork(path, MakePicture("jpeg", {20, 12})), 0);
    const auto files = [this] { return QDir(m_covers).entryList(QDir::Files).size(); };
    StartPlaying();
    ASSERT_TRUE(RunUntil([this] { return !m_panel.Cover().isEmpty(); }));
    EXPECT_EQ(QImage(m_panel.Cover()).size(), QSize(20, 12));
    EXPECT_EQ(files(), 1);

    m_transport.OnNext(); // a file that isn't there, so without a picture
    WaitForCover();
    EXPECT_EQ(m_panel.Cover(), "");
    EXPECT_EQ(files(), 0);

    m_transport.PlayTrack(m_list, 0);
    m_mpris.reset(); // while the cover is read
    WaitForCover();
    EXPECT_EQ(files(), 0);
}

TEST_F(MprisTest, DoesWithoutABus) {
    const std::function<void()> kStarts[] = {
        [this] { m_mpris->Start("unix:path=/nowhere"); },
        [this] { m_mpris->Start("\u00E9=,;"); },
        [this] { // the name is taken
            m_panel.m_bus.registerService(kService);
            m_mpris->Start(m_bus.Address());
        },
        [this] { // the bus goes away
            m_panel.m_bus.unregisterService(kService);
            Start();
            m_bus.Stop();
        },
    };
    for (const auto& start : kStarts) {
        start();
        EXPECT_TRUE(RunUntil([] { return !HasThread(::getpid(), "bus"); }));
        m_transport.PlayTrack(m_list, 0);
        m_player.SeekTo(kMediaSecond);
        m_transport.Pause();
        QCoreApplication::processEvents();
        EXPECT_EQ(m_transport.GetState(), TransportState::Paused);
    }
}

TEST_F(MprisTest, DoesNotWaitForABusThatStandsStill) {
    StartPlaying();
    m_bus.Freeze();
    QElapsedTimer elapsed;
    elapsed.start();
    m_player.SeekTo(kMediaSecond);
    m_transport.Pause();
    QCoreApplication::processEvents();
    m_mpris.reset();
    EXPECT_LT(elapsed.elapsed(), 5000);
}

#include "MprisTest.moc"
