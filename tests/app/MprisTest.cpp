#include "app/MprisPlayer.h"
#include "base/Language.h"
#include "base/Messages.h"
#include "library/ITrackView.h"
#include "library/MediaLists.h"
#include "platform/Path.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Pictures.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/PrivateBus.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"
#include "tests/player/ScriptedGraph.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QImage>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace {

constexpr QLatin1String kService("org.mpris.MediaPlayer2.trackdeck");
constexpr QLatin1String kPath("/org/mpris/MediaPlayer2");
constexpr QLatin1String kRoot("org.mpris.MediaPlayer2");
constexpr QLatin1String kPlayer("org.mpris.MediaPlayer2.Player");
constexpr QLatin1String kProperties("org.freedesktop.DBus.Properties");

constexpr qlonglong kSecond = 1'000'000; // of the bus

class SilentDisplay : public ITransportDisplay {
public:
    void ShowButtons(const TransportButtons& /*buttons*/) override {}
    void ShowPosition(int /*percent*/) override {}
    void ShowCaption(const QString& /*caption*/) override {}
    void EnableSeek(bool /*enable*/) override {}
    void ShowPlayMode(int /*mode*/) override {}
    void Beep() override {}
};

class SilentView : public ITrackView {
public:
    void RefreshRows(int /*keep*/, const CMediaList* /*list*/, int /*index*/) override {}
    void ShowPlayingList(const CMediaList* /*list*/) override {}
};

/// A panel of the desktop: it asks, commands, and hears what it is told.
class Panel : public QObject {
    Q_OBJECT

public:
    explicit Panel(const QString& address)
        : m_bus(QDBusConnection::connectToBus(address, QStringLiteral("panel"))) {
        m_bus.connect(kService, kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                      SLOT(OnChanged(QString, QVariantMap, QStringList)));
        m_bus.connect(kService, kPath, kPlayer, QStringLiteral("Seeked"), this,
                      SLOT(OnSeeked(qlonglong)));
    }
    ~Panel() override { QDBusConnection::disconnectFromBus(QStringLiteral("panel")); }

    [[nodiscard]] bool SeesService() const {
        return m_bus.interface()->isServiceRegistered(kService);
    }
    /// The events of the player run in the meantime: it lives on the same thread.
    QDBusMessage Call(QLatin1String interface, const char* method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(kService, kPath, interface, QString::fromLatin1(method));
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::BlockWithGui);
    }
    /// The name of the error; empty for none.
    QString Do(const char* method, const QVariantList& arguments = {}) {
        return Call(kPlayer, method, arguments).errorName();
    }
    QString Set(const char* property, const QVariant& value) {
        return Call(kProperties, "Set",
                    {QString(kPlayer), QString::fromLatin1(property),
                     QVariant::fromValue(QDBusVariant(value))})
            .errorName();
    }
    QVariantMap GetAll(QLatin1String interface) {
        const QDBusMessage answer = Call(kProperties, "GetAll", {QString(interface)});
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }
    QVariant Get(const char* property) {
        const QDBusMessage answer =
            Call(kProperties, "Get", {QString(kPlayer), QString::fromLatin1(property)});
        return answer.arguments().value(0).value<QDBusVariant>().variant();
    }
    QVariantMap Metadata() { return qdbus_cast<QVariantMap>(Get("Metadata")); }
    QString TrackId() {
        return Metadata().value(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>().path();
    }

    /// Names of the properties in the next message of changes.
    QStringList NextChange() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_changes.isEmpty(); }));
        return m_changes.isEmpty() ? QStringList() : m_changes.takeFirst().keys();
    }

    QDBusConnection m_bus;
    QList<QVariantMap> m_changes;
    QList<qlonglong> m_seeks;

private Q_SLOTS:
    void OnChanged(const QString& interface, const QVariantMap& changed, const QStringList& lost) {
        EXPECT_EQ(interface, QString(kPlayer));
        EXPECT_TRUE(lost.isEmpty());
        m_changes += changed;
    }
    void OnSeeked(qlonglong position) { m_seeks += position; }
};

/// A player with three tracks of 100 seconds, put together as the main dialog does it.
class MprisTest : public ::testing::Test {
protected:
    MprisTest() {
        SetLanguageFile(QString()); // texts are their own keys
        m_messages.On(WM_TD_GRAPH_NOTIFY, [this](Message&) {
            m_player.OnGraphNotify();
            return 0;
        });
        for (const char* name : {"one.mp3", "two.mp3", "three.mp3"})
            AddTrack(QString::fromLatin1(name));
        m_list.m_bActive = 1;
        m_transport.SetChangeHandler([this] { m_mpris->Update(); });
        m_player.SetSeekHandler([this](std::int64_t position) { m_mpris->OnSeek(position); });
        m_mpris.emplace(m_transport, m_player,
                        MprisWindow{[this] { m_done += QStringLiteral("raise"); },
                                    [this] { m_done += QStringLiteral("quit"); },
                                    [this] { return m_nVolume; },
                                    [this](int volume) {
                                        m_nVolume = volume;
                                        m_mpris->Update();
                                    }},
                        m_covers);
    }
    ~MprisTest() override {
        m_transport.SetChangeHandler({});
        m_player.SetSeekHandler({});
        m_mpris.reset();
        WaitForThread("cover");
    }

    CTrackRecord& AddTrack(const QString& name) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strTitle = name;
        track->m_strPath = m_scratch.File(name);
        m_list.Append(std::move(track));
        return *m_list[m_list.GetCount() - 1];
    }
    /// Goes to the bus, where a panel waits.
    void Start() {
        m_panel.emplace(m_bus.Address());
        m_mpris->Start(m_bus.Address());
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_panel->SeesService(); }));
    }
    void StartPlaying(int index = 0) {
        Start();
        m_transport.PlayTrack(m_list, index);
        m_panel->NextChange();
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_panel->Get("CanSeek").toBool(); }));
        m_panel->m_changes.clear();
    }
    static void WaitForThread(const char* name) {
        EXPECT_TRUE(QTest::qWaitFor([name] { return !HasThread(::getpid(), name); }, 60'000));
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QStringList CoverFiles() const { return QDir(m_covers).entryList(QDir::Files); }

    PrivateBus m_bus;
    ScratchFolder m_scratch;
    const QString m_covers = m_scratch.MakeFolder(QStringLiteral("covers"));
    CMediaLists m_lists;
    CMediaList& m_list = m_lists.Add(QStringLiteral("Mine"), MEDIA_TYPE_COLLECTION, 1);
    MessageTarget m_messages;
    SilentDisplay m_display;
    SilentView m_view;
    ScriptedGraph::Script m_graphs;
    CMediaPlayer m_player{m_graphs.Factory(), m_messages.Address(), m_display};
    CTransport m_transport{m_lists, m_player, m_view, m_display};
    int m_nVolume = 70;
    QStringList m_done;
    std::optional<MprisPlayer> m_mpris;
    std::optional<Panel> m_panel;
};

} // namespace

TEST_F(MprisTest, DesktopFindsThePlayer) {
    Start();
    EXPECT_EQ(m_panel->GetAll(kRoot),
              (QVariantMap{{QStringLiteral("CanQuit"), true},
                           {QStringLiteral("CanRaise"), true},
                           {QStringLiteral("HasTrackList"), false},
                           {QStringLiteral("Identity"), QStringLiteral("IDS_MAIN_TITLE")},
                           {QStringLiteral("DesktopEntry"), QStringLiteral("trackdeck")},
                           {QStringLiteral("SupportedUriSchemes"), QStringList()},
                           {QStringLiteral("SupportedMimeTypes"), QStringList()}}));
    QVariantMap properties = m_panel->GetAll(kPlayer);
    EXPECT_TRUE(qdbus_cast<QVariantMap>(properties.take(QStringLiteral("Metadata"))).isEmpty());
    EXPECT_EQ(properties,
              (QVariantMap{{QStringLiteral("PlaybackStatus"), QStringLiteral("Stopped")},
                           {QStringLiteral("LoopStatus"), QStringLiteral("None")},
                           {QStringLiteral("Rate"), 1.0},
                           {QStringLiteral("MinimumRate"), 1.0},
                           {QStringLiteral("MaximumRate"), 1.0},
                           {QStringLiteral("Shuffle"), false},
                           {QStringLiteral("Volume"), 0.7},
                           {QStringLiteral("Position"), qlonglong(0)},
                           {QStringLiteral("CanGoNext"), false},
                           {QStringLiteral("CanGoPrevious"), false},
                           {QStringLiteral("CanPlay"), true},
                           {QStringLiteral("CanPause"), true},
                           {QStringLiteral("CanSeek"), false},
                           {QStringLiteral("CanControl"), true}}));
    m_panel->Call(kRoot, "Raise", {});
    m_panel->Call(kRoot, "Quit", {});
    EXPECT_EQ(m_done, (QStringList{QStringLiteral("raise"), QStringLiteral("quit")}));
}

TEST_F(MprisTest, CommandsDriveTheTransport) {
    Start();
    const struct {
        const char* command;
        TransportState state;
        int row; ///< of the track, -1: none
    } kSteps[] = {
        {"Next", TransportState::Stopped, -1},     {"Previous", TransportState::Stopped, -1},
        {"Pause", TransportState::Stopped, -1},    {"Stop", TransportState::Stopped, -1},
        {"Play", TransportState::Playing, 0},      {"Play", TransportState::Playing, 0},
        {"Previous", TransportState::Playing, 0},  {"Next", TransportState::Playing, 1},
        {"Pause", TransportState::Paused, 1},      {"Pause", TransportState::Paused, 1},
        {"PlayPause", TransportState::Playing, 1}, {"PlayPause", TransportState::Paused, 1},
        {"Play", TransportState::Playing, 1},      {"Next", TransportState::Playing, 2},
        {"Next", TransportState::Playing, 2},      {"Previous", TransportState::Playing, 1},
        {"Stop", TransportState::Stopped, 1},      {"PlayPause", TransportState::Playing, 0},
    };
    for (const auto& step : kSteps) {
        EXPECT_EQ(m_panel->Do(step.command), QString());
        EXPECT_EQ(m_transport.GetState(), step.state) << step.command;
        EXPECT_EQ(m_transport.GetNowPlaying(), m_list[step.row]) << step.command;
    }
}

TEST_F(MprisTest, ChangesAloneAreTold) {
    StartPlaying();
    const auto names = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
    m_transport.Pause();
    m_transport.Play();
    m_transport.Pause();
    EXPECT_EQ(m_panel->NextChange(), names("PlaybackStatus"));
    m_transport.SetPlayMode(PLAY_RANDOM_CONTINUOUS);
    EXPECT_EQ(m_panel->NextChange(), names("CanGoPrevious LoopStatus Shuffle"));
    m_panel->Set("Volume", 0.3);
    EXPECT_EQ(m_panel->NextChange(), names("Volume"));
    m_graphs.duration = 90 * kMediaSecond;
    m_graphs.current->position = 5 * kMediaSecond;
    m_graphs.current->Tell({GraphEvent::Code::LengthChanged});
    EXPECT_EQ(m_panel->NextChange(), names("Metadata"));

    m_mpris->Update(); // nothing has changed
    m_player.SeekTo(7 * kMediaSecond);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_panel->m_seeks.isEmpty(); }));
    EXPECT_EQ(m_panel->m_seeks, QList<qlonglong>{7 * kSecond});
    EXPECT_TRUE(m_panel->m_changes.isEmpty());
    EXPECT_EQ(m_panel->Get("Position"), QVariant(7 * kSecond));
}

TEST_F(MprisTest, LoopAndShuffleMakeThePlayMode) {
    Start();
    for (const int mode : {3, 0, 1, 2, 1, 3, 2, 0}) {
        const QString loop = QString::fromLatin1(mode & 1 ? "Playlist" : "None");
        EXPECT_EQ(m_panel->Set("LoopStatus", loop), QString());
        EXPECT_EQ(m_panel->Set("Shuffle", mode >= 2), QString());
        EXPECT_EQ(m_transport.GetPlayMode(), mode);
        EXPECT_EQ(m_panel->Get("LoopStatus").toString(), loop);
        EXPECT_EQ(m_panel->Get("Shuffle").toBool(), mode >= 2);
    }
}

TEST_F(MprisTest, SeeksStayInsideTheTrack) {
    StartPlaying(1);
    constexpr qlonglong kMost = std::numeric_limits<qlonglong>::max();
    const struct {
        qlonglong offset;
        qlonglong position;
    } kSeeks[] = {{10 * kSecond, 60 * kSecond},
                  {-20 * kSecond, 30 * kSecond},
                  {50 * kSecond, 100 * kSecond},
                  {-51 * kSecond, 0},
                  {-kMost - 1, 0}};
    for (const auto& seek : kSeeks) {
        m_graphs.current->position = 50 * kMediaSecond;
        m_panel->Do("Seek", {seek.offset});
        EXPECT_EQ(m_panel->Get("Position").toLongLong(), seek.position) << seek.offset;
    }

    const QVariant id = QVariant::fromValue(QDBusObjectPath(m_panel->TrackId()));
    const QVariant other = QVariant::fromValue(QDBusObjectPath("/org/another"));
    m_panel->Do("SetPosition", {id, 40 * kSecond});
    for (const auto& [track, position] :
         {std::pair(id, -1LL), {id, 100 * kSecond + 1}, {id, kMost}, {other, 5 * kSecond}})
        m_panel->Do("SetPosition", {track, position});
    EXPECT_EQ(m_graphs.current->position, 40 * kMediaSecond);
    EXPECT_EQ(m_transport.GetNowPlaying(), m_list[1]);

    m_panel->Do("Seek", {kMost});
    EXPECT_EQ(m_transport.GetNowPlaying(), m_list[2]) << "the next track lies beyond the end";
    m_panel->Do("SetPosition", {id, 40 * kSecond});
    EXPECT_EQ(m_graphs.current->position, 0) << "the track before was meant";
}

TEST_F(MprisTest, VolumeIsThatOfTheSlider) {
    Start();
    for (const auto& [volume, slider] : {std::pair(0.0, 0),
                                         {1.0, 100},
                                         {0.555, 56},
                                         {-3.0, 0},
                                         {std::numeric_limits<double>::infinity(), 100}}) {
        EXPECT_EQ(m_panel->Set("Volume", volume), QString());
        EXPECT_EQ(m_nVolume, slider) << volume;
        EXPECT_EQ(m_panel->Get("Volume").toDouble(), slider / 100.0);
    }
}

TEST_F(MprisTest, WhatCanNotBeDoneIsRefused) {
    StartPlaying();
    const auto error = [](const char* name) {
        return QStringLiteral("org.freedesktop.DBus.Error.") + QString::fromLatin1(name);
    };
    EXPECT_EQ(m_panel->Do("OpenUri", {QStringLiteral("file:///a.mp3")}), error("NotSupported"));
    EXPECT_EQ(m_panel->Do("Seek", {QStringLiteral("far")}), error("InvalidArgs"));
    EXPECT_EQ(m_panel->Do("Explode"), error("UnknownMethod"));
    EXPECT_EQ(m_panel->Set("LoopStatus", QStringLiteral("Track")), error("NotSupported"));
    EXPECT_EQ(m_panel->Set("Rate", 2.0), error("NotSupported"));
    EXPECT_EQ(m_panel->Set("Shuffle", 1), error("InvalidArgs"));
    EXPECT_EQ(m_panel->Set("Volume", std::nan("")), error("InvalidArgs"));
    EXPECT_EQ(m_panel->Set("Position", 5 * kSecond), error("PropertyReadOnly"));
    EXPECT_EQ(m_panel->Set("Colour", 5), error("UnknownProperty"));
    EXPECT_EQ(m_panel->Call(kProperties, "GetAll", {QStringLiteral("org.other")}).errorName(),
              error("UnknownInterface"));
    EXPECT_EQ(m_panel->Call(kProperties, "Get", {QString(kPlayer)}).errorName(),
              error("UnknownMethod"));
    EXPECT_EQ(m_transport.GetState(), TransportState::Playing);
    EXPECT_EQ(m_transport.GetPlayMode(), PLAY_SINGLE);
    EXPECT_EQ(m_nVolume, 70);
}

TEST_F(MprisTest, TracksAreToldInValidText) {
    CTrackRecord& track = AddTrack(Path::FromBytes("odd \xE9 #1.mp3"));
    track.m_strTitle = QStringLiteral("Half") + QChar(0xD83D) + QStringLiteral(" way");
    track.m_strArtist = Path::FromBytes("B\xE9la");
    track.m_strAlbum = QStringLiteral("Тихие ") + QChar(0xDC41);
    track.m_strGenre = QStringLiteral("Folk");
    track.m_strTrackNumber = QStringLiteral("3/12");
    StartPlaying(3);
    QVariantMap metadata = m_panel->Metadata();
    EXPECT_TRUE(metadata.take(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>().path() !=
                QString());
    const QString folder = QUrl::fromLocalFile(m_scratch.Path()).toString(QUrl::FullyEncoded);
    EXPECT_EQ(
        metadata,
        (QVariantMap{
            {QStringLiteral("mpris:length"), 100 * kSecond},
            {QStringLiteral("xesam:title"), QStringLiteral("Half? way")},
            {QStringLiteral("xesam:artist"), QStringList(QStringLiteral("B\uFFFDla"))},
            {QStringLiteral("xesam:album"), QStringLiteral("Тихие ?")},
            {QStringLiteral("xesam:genre"), QStringList(QStringLiteral("Folk"))},
            {QStringLiteral("xesam:trackNumber"), 3},
            {QStringLiteral("xesam:url"), folder + QStringLiteral("/odd%20%E9%20%231.mp3")}}));

    const QString id = m_panel->TrackId();
    m_transport.PlayTrack(m_list, 3);
    EXPECT_NE(m_panel->TrackId(), id) << "the same track, begun again";
}

TEST_F(MprisTest, CoverIsAFileWhileItsTrackPlays) {
    for (const int index : {0, 1}) {
        const QString path = m_list[index]->m_strPath;
        WriteFile(path, ReadFile(MediaFile(QStringLiteral("untagged.mp3"))));
        ASSERT_EQ(WriteTrackArtwork(path, MakePicture("jpeg", {20 + index, 12})), 0);
    }
    StartPlaying();
    const auto cover = [this] {
        return QUrl(m_panel->Metadata().value(QStringLiteral("mpris:artUrl")).toString())
            .toLocalFile();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !cover().isEmpty(); }));
    const QString first = cover();
    EXPECT_EQ(QImage(first).size(), QSize(20, 12));

    m_transport.OnNext();
    ASSERT_TRUE(QTest::qWaitFor([&] { return cover() != first && !cover().isEmpty(); }));
    EXPECT_EQ(QImage(cover()).size(), QSize(21, 12));
    EXPECT_EQ(CoverFiles().size(), 1);

    m_transport.OnNext(); // a file that isn't there, so without a picture
    WaitForThread("cover");
    EXPECT_EQ(cover(), QString());
    EXPECT_TRUE(CoverFiles().isEmpty());

    m_transport.PlayTrack(m_list, 0);
    m_panel->NextChange();
    m_mpris.reset(); // while the cover is read
    m_transport.SetChangeHandler({});
    WaitForThread("cover");
    EXPECT_TRUE(CoverFiles().isEmpty());
}

TEST_F(MprisTest, DoesWithoutABus) {
    const struct {
        const char* bus;
        std::function<void()> start;
    } kBuses[] = {
        {"none", [this] { m_mpris->Start(QStringLiteral("unix:path=/nowhere")); }},
        {"nonsense", [this] { m_mpris->Start(QStringLiteral("\u00E9=,;")); }},
        {"one where the name is taken",
         [this] {
             m_panel.emplace(m_bus.Address());
             m_panel->m_bus.registerService(kService);
             m_mpris->Start(m_bus.Address());
         }},
        {"one that goes away",
         [this] {
             Start();
             m_bus.Stop();
         }},
    };
    for (const auto& bus : kBuses) {
        SCOPED_TRACE(bus.bus);
        bus.start();
        WaitForThread("bus");
        m_transport.PlayTrack(m_list, 0);
        m_player.SeekTo(kMediaSecond);
        m_transport.Pause();
        QCoreApplication::processEvents();
        EXPECT_EQ(m_transport.GetState(), TransportState::Paused);
        if (m_panel && m_panel->m_bus.isConnected())
            m_panel->m_bus.unregisterService(kService);
    }
}

TEST_F(MprisTest, MayGoWhileItConnects) {
    m_panel.emplace(m_bus.Address());
    m_mpris->Start(m_bus.Address());
    m_transport.SetChangeHandler({});
    m_mpris.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_panel->SeesService());
}

#include "MprisTest.moc"
