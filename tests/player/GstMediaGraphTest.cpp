#include "player/GstMediaGraph.h"

#include "library/MediaLists.h"
#include "player/FilePipeline.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/player/RecordingDisplay.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QtEndian>

#include <sys/stat.h>

#include <atomic>
#include <cstdlib>
#include <latch>
#include <utility>

namespace {

using Code = GraphEvent::Code;
using Route = IMediaGraph::Route;

constexpr int kLongestGap = 100; // ms
constexpr int kLongestEnd = 2000;

double Seconds(std::optional<std::int64_t> position) {
    return static_cast<double>(position.value_or(0)) / kMediaSecond;
}

constexpr std::int64_t Position(double seconds) {
    return static_cast<std::int64_t>(seconds * kMediaSecond);
}

/// An event loop that knows how long it stood still.
class Heart {
public:
    Heart() {
        QObject::connect(&m_beat, &QTimer::timeout, &m_beat,
                         [this] { m_longestGap = std::max(m_longestGap, m_sinceBeat.restart()); });
        m_sinceBeat.start();
        m_beat.start(5);
    }
    ~Heart() { EXPECT_LT(m_longestGap, kLongestGap) << "the interface stood still"; }

    /// What the test itself has just done does not count.
    void Forgive() { m_sinceBeat.restart(); }

private:
    QTimer m_beat;
    QElapsedTimer m_sinceBeat;
    qint64 m_longestGap = 0;
};

/// A sink of which it is known how many devices are open at a time and how loud it has been. If
/// told so, devices don't answer before `unstick`.
std::latch unstick(1);
std::atomic<bool> stickSinks = false;
std::atomic<int> stuckSinks = 0;
std::atomic<int> openSinks = 0;
std::atomic<int> mostOpenSinks = 0;
std::atomic<int> loudest = 0; ///< 16-bit sample
std::atomic<GstElement*> lastSink = nullptr;

using TestSink = GstBin;
using TestSinkClass = GstBinClass;
G_DEFINE_TYPE(TestSink, test_sink, GST_TYPE_BIN)

GstStateChangeReturn ChangeState(GstElement* element, GstStateChange change) {
    if (change == GST_STATE_CHANGE_READY_TO_PAUSED && stickSinks) {
        ++stuckSinks;
        unstick.wait();
    }
    if (change == GST_STATE_CHANGE_NULL_TO_READY)
        mostOpenSinks = std::max<int>(mostOpenSinks, ++openSinks);
    const auto result = GST_ELEMENT_CLASS(test_sink_parent_class)->change_state(element, change);
    if (change == GST_STATE_CHANGE_READY_TO_NULL)
        --openSinks;
    return result;
}

void test_sink_class_init(TestSinkClass* type) {
    GST_ELEMENT_CLASS(type)->change_state = &ChangeState;
}

void Listen(GstElement*, GstBuffer* buffer, GstPad*, gpointer) {
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_READ);
    for (gsize i = 0; i + 1 < map.size; i += 2)
        loudest = std::max<int>(loudest, std::abs(qFromLittleEndian<qint16>(map.data + i)));
    gst_buffer_unmap(buffer, &map);
}

void test_sink_init(TestSink* self) {
    GstElement* filter = gst_element_factory_make("capsfilter", nullptr);
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    gst_util_set_object_arg(G_OBJECT(filter), "caps", "audio/x-raw,format=S16LE");
    g_object_set(sink, "sync", TRUE, "signal-handoffs", TRUE, nullptr);
    g_signal_connect(sink, "handoff", G_CALLBACK(&Listen), nullptr);
    gst_bin_add_many(GST_BIN(self), filter, sink, nullptr);
    gst_element_link(filter, sink);
    lastSink = sink;
    const GstObjectPtr<GstPad> pad(gst_element_get_static_pad(filter, "sink"));
    gst_element_add_pad(GST_ELEMENT(self), gst_ghost_pad_new("sink", pad.get()));
}

/// One graph, and the events that it has told.
class GstMediaGraphTest : public ::testing::TestWithParam<const char*> {
protected:
    GstMediaGraphTest() {
        m_messages.On(1, [this](Message&) {
            while (const auto event = m_pGraph ? m_pGraph->GetEvent() : std::nullopt)
                m_events.push_back(event->code), m_strDetail = event->detail;
            return 0;
        });
    }

    /// In the place of all devices to come.
    void UseTestSink() {
        CFilePipeline::Initialize();
        gst_element_register(nullptr, "autoaudiosink", GST_RANK_NONE, test_sink_get_type());
        m_heart.Forgive();
    }
    void Render(const QString& path, Route route = Route::ByContent) {
        m_events.clear();
        m_pGraph.reset();
        m_pGraph = m_graphs.Make();
        m_pGraph->SetNotify(m_messages.Address(), 1);
        m_pGraph->Render(path, route);
    }
    void Play(const char* name) {
        Render(MediaFile(name));
        m_pGraph->Run();
    }
    [[nodiscard]] bool WaitFor(Code code, int longest = kLongestEnd) {
        return RunUntil([&] { return Count(code) > 0; }, longest);
    }
    [[nodiscard]] std::ptrdiff_t Count(Code code) const {
        return std::count(m_events.begin(), m_events.end(), code);
    }
    [[nodiscard]] bool WaitForPosition(double seconds) {
        return RunUntil([&] { return Seconds(m_pGraph->GetCurrentPosition()) >= seconds; },
                        kLongestEnd);
    }

    Heart m_heart;
    CGstMediaGraphs m_graphs;
    std::unique_ptr<IMediaGraph> m_pGraph;
    std::vector<Code> m_events;
    QString m_strDetail; ///< of the last one
    CMessageTarget m_messages;
};

} // namespace

TEST_P(GstMediaGraphTest, PlaysPausesSeeksAndEnds) {
    UseTestSink();
    const QString path = MediaFile(GetParam());
    Render(path, path.endsWith("wma") ? Route::WindowsMedia : Route::ByContent);
    m_pGraph->PutVolume(-1339);
    m_pGraph->Run();
    ASSERT_TRUE(WaitForPosition(0.1));

    m_pGraph->Pause();
    m_pGraph->PutVolume(-10000);
    m_pGraph->SetPositions(Position(0.3));
    m_pGraph->SetPositions(Position(1.6));
    EXPECT_EQ(Seconds(m_pGraph->GetCurrentPosition()), 1.6); // at once
    EXPECT_EQ(m_pGraph->GetState(), GraphState::Paused);
    // Paused it stays where it is, for longer than it would need to the end.
    EXPECT_FALSE(WaitFor(Code::Complete, 600));
    EXPECT_NEAR(Seconds(m_pGraph->GetCurrentPosition()), 1.6, 0.1);

    m_pGraph->Run();
    m_pGraph->PutVolume(0);
    ASSERT_TRUE(WaitForPosition(1.65));
    m_pGraph->SetPositions(Position(0.5));
    ASSERT_TRUE(WaitForPosition(0.55));
    EXPECT_LT(Seconds(m_pGraph->GetCurrentPosition()), 1.0);

    // Stopped it gives back the device, and runs on from where it is told.
    m_pGraph->Stop();
    ASSERT_TRUE(RunUntil([] { return openSinks == 0; }));
    m_pGraph->SetPositions(Position(1.8));
    m_pGraph->Run();
    ASSERT_TRUE(WaitForPosition(1.85));
    ASSERT_TRUE(WaitFor(Code::Complete));
    EXPECT_EQ(m_events.front(), Code::Rendered);
    EXPECT_EQ(Count(Code::Rendered), 1);
    EXPECT_EQ(Count(Code::Failed), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, GstMediaGraphTest,
                         ::testing::Values("vbr.mp3", "untagged.aac", "tagged.m4a", "tagged.wma"));

TEST_F(GstMediaGraphTest, EitherRouteTakesEachKindAndTellsItsLength) {
    for (const char* name : {"untagged.mp3", "unmeasured-vbr.mp3", "unmeasured-cbr.mp3",
                             "untagged.aac", "mutagen-v23.aac", "tagged.m4a", "two-sounds.wmv"})
        for (const auto route : {Route::ByContent, Route::WindowsMedia}) {
            Render(MediaFile(name), route);
            EXPECT_TRUE(WaitFor(Code::Rendered, 20'000)) << name; // the first one loads the library
            EXPECT_TRUE(RunUntil([&] { return m_pGraph->GetDuration().has_value(); })) << name;
            EXPECT_NEAR(Seconds(m_pGraph->GetDuration()), 2.0, 0.1) << name;
        }
}

TEST_F(GstMediaGraphTest, ALengthThatWasCountedStays) {
    const ScratchFolder scratch;
    const QByteArray sound = ReadFile(MediaFile("untagged.aac"));
    // Silence in frames of 12 bytes. The rate of the sound before it tells a shorter one.
    Render(scratch.Write("a.aac", sound + sound.right(12).repeated(2000)));
    m_pGraph->Run();
    ASSERT_TRUE(RunUntil([&] { return Seconds(m_pGraph->GetCurrentPosition()) > 1.7; }, 20'000));
    EXPECT_NEAR(Seconds(m_pGraph->GetDuration()), 2088 * 1024.0 / 44100, 0.1);
}

TEST_F(GstMediaGraphTest, WhatIsNoSoundHasADefinedEnd) {
    const ScratchFolder scratch;
    const std::pair<const char*, QByteArray> files[] = {
        {"empty.mp3", {}},
        {"zeros.mp3", QByteArray(8'000'000, '\0')},
        {"text.mp3", QByteArray(5000, 'a')},
        {"picture.mp3", ReadFile(MediaFile("small.jpg"))},
        {"picture.wma", ReadFile(MediaFile("small.jpg"))},
        {"cut.m4a", ReadFile(MediaFile("tagged.m4a")).left(9000)},
        {"cut.wma", ReadFile(MediaFile("tagged.wma")).left(3000)},
    };
    QStringList paths{scratch.MakeFolder("folder.mp3"), scratch.File("pipe.mp3"), "/missing.mp3"};
    ASSERT_EQ(::mkfifo(paths[1].toLocal8Bit().constData(), 0600), 0);
    for (const auto& [name, bytes] : files)
        paths += scratch.Write(QString::fromLatin1(name), bytes);
    m_heart.Forgive();
    Render(MediaFile("untagged.mp3"));
    ASSERT_TRUE(WaitFor(Code::Rendered, 20'000));
    for (const QString& path : paths)
        for (const auto route : {Route::ByContent, Route::WindowsMedia}) {
            Render(path, route);
            m_pGraph->Run();
            EXPECT_TRUE(WaitFor(path.startsWith(u"/missing") ? Code::Missing : Code::Failed))
                << path.toStdString();
            EXPECT_EQ(m_events.size(), 1U);
        }
}

TEST_F(GstMediaGraphTest, AFileThatGoesWhileItPlaysHasADefinedEnd) {
    const ScratchFolder scratch;
    const QByteArray sound = ReadFile(MediaFile("untagged.mp3"));
    const QString path = scratch.File("a.mp3");
    const std::function<void()> changes[] = {
        [&] { QFile::remove(path); },
        [&] { QFile::resize(path, 5000); },
        [&] { WriteFile(path, QByteArray(sound.size(), '\0')); },
    };
    for (const auto& change : changes) {
        WriteFile(path, sound);
        Render(path);
        m_pGraph->Run();
        ASSERT_TRUE(WaitForPosition(0.1));
        change();
        m_pGraph->SetPositions(Position(1.8));
        EXPECT_TRUE(
            RunUntil([&] { return Count(Code::Complete) + Count(Code::Failed) == 1; }, kLongestEnd))
            << &change - changes;
    }
}

TEST_F(GstMediaGraphTest, NamesThePackageOfADecoderThatIsMissing) {
    const struct {
        const char* file;
        std::vector<const char*> elements; ///< that are not installed
        const char* package;
    } cases[] = {
        {"tagged.m4a", {"avdec_aac", "avdec_aac_fixed"}, "gstreamer1.0-libav"},
        {"tagged.wma", {"avdec_wmav2"}, "gstreamer1.0-libav"},
        {"tagged.wma", {"asfdemux"}, "gstreamer1.0-plugins-ugly"},
        {"tagged.m4a", {"qtdemux"}, "gstreamer1.0-plugins-good"},
        {"untagged.mp3",
         {"mpg123audiodec", "avdec_mp3", "avdec_mp3float"},
         "gstreamer1.0-plugins-good"},
    };
    CFilePipeline::Initialize();
    for (const auto& c : cases) {
        std::vector<std::pair<GstObjectPtr<GstPluginFeature>, guint>> ranks;
        for (const char* element : c.elements)
            if (auto* feature = gst_registry_lookup_feature(gst_registry_get(), element)) {
                ranks.emplace_back(feature, gst_plugin_feature_get_rank(feature));
                gst_plugin_feature_set_rank(feature, GST_RANK_NONE);
            }
        m_heart.Forgive();
        Render(MediaFile(c.file));
        EXPECT_TRUE(WaitFor(Code::DecoderMissing, 20'000)) << c.file;
        EXPECT_EQ(m_strDetail.toStdString(), c.package) << c.elements.front();
        for (const auto& [feature, rank] : ranks)
            gst_plugin_feature_set_rank(feature.get(), rank);
    }
}

TEST_F(GstMediaGraphTest, IsAsLoudAsItIsTold) {
    UseTestSink();
    Play("tagged.m4a");
    m_pGraph->PutVolume(0);
    ASSERT_TRUE(WaitForPosition(0.1));
    const int full = loudest;
    EXPECT_GT(full, 8000);
    for (const auto& [volume, factor] : {std::pair(-2000, 0.1), {-10000, 0.0}}) {
        m_pGraph->PutVolume(volume);
        ASSERT_TRUE(WaitForPosition(0.2 + Seconds(m_pGraph->GetCurrentPosition())));
        loudest = 0; // what was on its way with the old volume has been heard
        ASSERT_TRUE(WaitForPosition(0.2 + Seconds(m_pGraph->GetCurrentPosition())));
        EXPECT_NEAR(loudest, full * factor, full * 0.03);
    }
}

TEST_F(GstMediaGraphTest, ADeviceThatFailsIsNoFaultOfTheFile) {
    UseTestSink();
    Play("untagged.mp3");
    ASSERT_TRUE(WaitForPosition(0.1));
    GST_ELEMENT_ERROR(lastSink.load(), RESOURCE, WRITE, ("unplugged"), (nullptr));
    EXPECT_TRUE(WaitFor(Code::DeviceFailed));
    EXPECT_EQ(Count(Code::Failed), 0);
}

TEST_F(GstMediaGraphTest, OneGraphAtATimeHasTheDevice) {
    UseTestSink();
    mostOpenSinks = 0;
    Play("untagged.mp3");
    ASSERT_TRUE(WaitFor(Code::Rendered, 20'000));
    for (int i = 0; i < 20; ++i)
        Play(i % 2 ? "untagged.mp3" : "missing.mp3");
    ASSERT_TRUE(WaitFor(Code::Rendered));
    EXPECT_EQ(mostOpenSinks, 1);
}

TEST_F(GstMediaGraphTest, AStuckDeviceHoldsUpNobody) {
    UseTestSink();
    stickSinks = true;
    Play("untagged.mp3");
    ASSERT_TRUE(RunUntil([] { return stuckSinks == 1; }));
    m_pGraph->Pause();
    m_pGraph->SetPositions(Position(1.0));
    m_pGraph->Stop();
    m_pGraph->Run();
    stickSinks = false;
    Play("tagged.m4a"); // leaves the other one behind
    EXPECT_TRUE(WaitFor(Code::Rendered));
    EXPECT_EQ(stuckSinks, 1);
    m_pGraph.reset();
    unstick.count_down(); // the thread ends with the fixture
}

TEST_F(GstMediaGraphTest, OneTrackOfATransportFollowsTheOther) {
    CMediaLists lists;
    CMediaList& list = lists.Add({}, MEDIA_TYPE_COLLECTION, 1);
    AddTrack(list, MediaFile("untagged.mp3"));
    AddTrack(list, MediaFile("tagged.wma"));
    RecordingDisplay display;
    NoView view;
    CMediaPlayer player([this] { return m_graphs.Make(); }, m_messages.Address(), display);
    CTransport transport(lists, player, view, display);
    transport.Listen(m_messages);
    transport.PlayTrack(list, 0);
    for (const int index : {0, 1}) {
        ASSERT_TRUE(RunUntil([&] {
            return transport.GetNowPlaying() == list[index] && player.GetDuration() > 0 &&
                   player.GetPosition() > 0;
        })) << index;
        EXPECT_EQ(list[index]->m_strLength, u"00:02");
        player.SeekTo(player.GetDuration() - Position(0.1));
    }
    EXPECT_TRUE(RunUntil([&] { return transport.GetState() == TransportState::Stopped; }));
}
