// Claims: a double click on a track is heard at once, hardly later than any pipeline could play the
// file, and playing leaves nothing behind.
//
// Clicks on a track of the program's window, and takes the time until its first sample has been
// taken by the sink. In turn with that, a bare pipeline of the same elements is built, prerolled
// and run on the same file. Then 1,000 short tracks are played in a row.

#include "app/TrackDeckDlg.h"
#include "base/Language.h"
#include "bench/Clock.h"
#include "grid/GridCtrl.h"
#include "library/MediaLists.h"
#include "player/FilePipeline.h"
#include "player/GstMediaGraph.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "tests/player/RecordingDisplay.h"

#include <QApplication>
#include <QEventLoop>
#include <QTest>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 25;
constexpr int kQuiet = 100;  // ms
constexpr int kTrackRow = 2; // of the grid: behind the header and the title
constexpr int kTracks = 1000;
constexpr int kTracksBefore = 100; // until all that is kept has been made

const std::filesystem::path kMedia = MEDIA_FOLDER;

/// When a sink has taken the first sample since Expect().
class FirstSample {
public:
    static void Watch() {
        CFilePipeline::Initialize();
        gst_tracing_register_hook(nullptr, "pad-push-post", G_CALLBACK(&OnPushed));
    }
    static void Expect() { s_at = Clock::time_point(); }
    static bool IsThere() { return s_at.load() != Clock::time_point(); }
    static double MsSince(Clock::time_point start) {
        return std::chrono::duration<double, std::milli>(s_at.load() - start).count();
    }

private:
    static void OnPushed(GObject*, GstClockTime, GstPad* pad, GstFlowReturn) {
        const GstObjectPtr<GstPad> peer(gst_pad_get_peer(pad));
        const GstObjectPtr<GstObject> taker(peer ? gst_object_get_parent(GST_OBJECT(peer.get()))
                                                 : nullptr);
        if (!IsThere() && GST_IS_ELEMENT(taker.get()) && !GST_IS_BIN(taker.get()) &&
            GST_OBJECT_FLAG_IS_SET(taker.get(), GST_ELEMENT_FLAG_SINK))
            s_at = Clock::now();
    }
    static std::atomic<Clock::time_point> s_at;
};
std::atomic<Clock::time_point> FirstSample::s_at;

template <typename Test>
void RunUntil(Test done) {
    while (!done())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
}

/// Nothing plays afterwards.
void Silence(CGridCtrl& grid) {
    QTest::keyClick(&grid, Qt::Key_MediaStop);
    QTest::qWait(kQuiet);
}

double MeasureClick(CGridCtrl& grid) {
    Silence(grid);
    const QPoint place = grid.GetCellRect({kTrackRow, 1}).center();
    FirstSample::Expect();
    const auto start = Clock::now();
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, place);
    RunUntil(&FirstSample::IsThere);
    return FirstSample::MsSince(start);
}

void LinkSound(GstElement*, GstPad* pad, gpointer convert) {
    const GstObjectPtr<GstPad> sink(gst_element_get_static_pad(GST_ELEMENT(convert), "sink"));
    gst_pad_link(pad, sink.get());
}

double MeasureBarePipeline(const std::string& file) {
    FirstSample::Expect();
    const auto start = Clock::now();
    const GstObjectPtr<GstElement> pipeline(GST_ELEMENT(gst_object_ref_sink(
        gst_parse_launch(("filesrc location=\"" + file +
                          "\" ! decodebin name=decoder caps=audio/x-raw expose-all-streams=false "
                          "audioconvert name=convert ! audioresample ! volume ! autoaudiosink")
                             .c_str(),
                         nullptr))));
    const auto part = [&](const char* name) {
        return GstObjectPtr<GstElement>(gst_bin_get_by_name(GST_BIN(pipeline.get()), name));
    };
    g_signal_connect(part("decoder").get(), "pad-added", G_CALLBACK(&LinkSound),
                     part("convert").get());
    gst_element_set_state(pipeline.get(), GST_STATE_PAUSED);
    gst_element_get_state(pipeline.get(), nullptr, nullptr, GST_CLOCK_TIME_NONE);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    while (!FirstSample::IsThere()) {
    }
    const double ms = FirstSample::MsSince(start);
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return ms;
}

/// A home of its own for the program, with one track.
std::string MakeHome() {
    const std::filesystem::path home = BENCH_FOLDER "/player-home";
    std::filesystem::remove_all(home);
    const auto collection = home / "Music/Veltria Track Deck";
    std::filesystem::create_directories(collection);
    std::filesystem::create_directories(home / "tmp");
    std::filesystem::copy(kMedia / "untagged.mp3", collection);
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("TMPDIR", (home / "tmp").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
    return collection / "untagged.mp3";
}

void BenchClick(const std::string& file) {
    CTrackDeckDlg dialog{QString()};
    dialog.show();
    auto& grid = *dialog.findChild<CGridCtrl*>();
    RunUntil([&] { return grid.GetRowCount() == kTrackRow + 2; });
    FirstSample::Watch();
    MeasureClick(grid); // warms the caches
    Silence(grid);
    MeasureBarePipeline(file);
    std::vector<double> clicks;
    std::vector<double> bare;
    for (int round = 0; round < kRounds; ++round) {
        clicks.push_back(MeasureClick(grid));
        Silence(grid);
        bare.push_back(MeasureBarePipeline(file));
    }
    std::printf("player click_to_sound_ms=%.1f ratio_to_preroll=%.2f\n", Median(clicks),
                Median(clicks) / Median(bare));
}

struct Footprint {
    static long Count(const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }
    static long ResidentKb() {
        long pages = 0;
        long resident = 0;
        std::ifstream("/proc/self/statm") >> pages >> resident;
        return resident * 4;
    }
    long files = Count("/proc/self/fd");
    long threads = Count("/proc/self/task");
    long kb = ResidentKb();
};

void BenchManyTracks() {
    CMediaLists lists;
    CMediaList& list = lists.Add({}, MEDIA_TYPE_COLLECTION, 1);
    for (int i = 0; i < 10; ++i) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strPath = QString::fromStdString(kMedia / "short.mp3");
        list.Append(std::move(track));
    }
    CGstMediaGraphs graphs;
    RecordingDisplay display;
    RecordingView view;
    CMessageTarget messages;
    CMediaPlayer player([&] { return graphs.Make(); }, messages.Address(), display);
    CTransport transport(lists, player, view, display);
    transport.Listen(messages);
    transport.SetPlayMode(PLAY_CONTINUOUS);
    transport.PlayTrack(list, 0);
    RunUntil([&] { return player.GetFileNumber() > kTracksBefore; });
    const Footprint before;
    RunUntil([&] { return player.GetFileNumber() > kTracksBefore + kTracks; });
    const Footprint after;
    std::printf("player tracks=%d files=%+ld threads=%+ld rss_kb=%+ld of %ld\n", kTracks,
                after.files - before.files, after.threads - before.threads, after.kb - before.kb,
                before.kb);
}

} // namespace

int main(int argc, char** argv) {
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const std::string file = MakeHome();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trackdeck"));
    SetLanguageFile(QCoreApplication::applicationDirPath() +
                    QStringLiteral("/languages/language.lgg"));
    BenchClick(file);
    BenchManyTracks();
    return 0;
}
