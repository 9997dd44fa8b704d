#include "player/MediaPlayer.h"

#include "tests/fixtures/RunUntil.h"
#include "tests/player/RecordingDisplay.h"
#include "tests/player/ScriptedGraph.h"

#include <QCoreApplication>

#include <cmath>
#include <cstdlib>
#include <sstream>

namespace {

/// A player, and what it is told in words: "load play seek:30".
class MediaPlayerTest : public ::testing::Test {
protected:
    using Scroll = CMediaPlayer::Scroll;

    MediaPlayerTest() {
        m_messages.On(WM_TD_GRAPH_NOTIFY, [this](Message&) {
            m_player.OnGraphNotify();
            return 0;
        });
        m_messages.On(WM_TD_TRACK_FINISHED, [this](Message&) {
            m_finished += m_player.IsFinished();
            return 0;
        });
    }

    void Do(const std::string& words) {
        std::istringstream stream(words);
        for (std::string word, at; stream >> word;) {
            std::istringstream parts(word);
            std::getline(std::getline(parts, word, ':'), at);
            m_steps.at(word)(std::atoi(at.c_str()));
        }
    }
    /// What was asked of the graphs since the last question.
    std::string Log() { return m_script.TakeLog().join(u' ').toStdString(); }
    static void Deliver() { QCoreApplication::processEvents(); }

    ScriptedGraph::Script m_script;
    RecordingDisplay m_display;
    CMessageTarget m_messages;
    CMediaPlayer m_player{m_script.Factory(), m_messages.Address(), m_display};
    int m_finished = 0;
    const std::map<std::string, std::function<void(int)>> m_steps{
        {"load", [this](int) { m_player.LoadFile("/a"), Deliver(); }},
        {"close", [this](int) { m_player.CloseFilterGraph(); }},
        {"play", [this](int) { m_player.PlayMedia(); }},
        {"pause", [this](int) { m_player.PauseMedia(); }},
        {"stop", [this](int) { m_player.StopMedia(); }},
        {"rewind", [this](int) { m_player.Rewind(); }},
        {"volume", [this](int at) { m_player.SetVolumeFromSlider(at); }},
        {"hold", [this](int at) { m_player.OnSeekScroll(Scroll::Track, at); }},
        {"drop", [this](int at) { m_player.OnSeekScroll(Scroll::End, at); }},
        {"seek", [this](int at) { m_player.SeekTo(at * kMediaSecond); }},
        {"complete", [this](int) { m_script.current->Tell({GraphEvent::Code::Complete}); }},
        {"notify", [this](int) { m_player.OnGraphNotify(); }},
        {"deliver", [](int) { Deliver(); }},
    };
};

} // namespace

TEST(VolumeTest, IsAQuarterCircle) {
    // The circle through (0, -10000) and (100, 0) round (100, -10000), cut towards zero.
    for (int slider = 0; slider <= 100; ++slider) {
        const double right = (100 - slider) * 100.0;
        const double exact = std::sqrt(1e8 - right * right) - 10000;
        EXPECT_NEAR(VolumeFromSlider(slider), exact + 0.5, 0.5 + 1e-6) << slider;
    }
}

TEST_F(MediaPlayerTest, ThePathAloneTellsTheRoute) {
    EXPECT_FALSE(m_player.PlayMedia()) << "there is no file";
    const QString longPath = QLatin1Char('/') + QString(255, QLatin1Char('x'));
    const std::pair<QString, std::string> cases[] = {
        {"/wma.mp3", "Render "},
        {"/a.WMA", "RenderWM "},
        {"/music.wma/song.mp3", "RenderWM "},
        {"/a.asf.mp3", "RenderWM "},
        {"/b.wmv", "RenderWM "},
        {longPath + ".wma", "RenderWM "},
        {longPath + "x.wma", "Render "},
    };
    for (const auto& [path, route] : cases) {
        m_player.LoadFile(path);
        EXPECT_EQ(Log(), route + path.toStdString());
    }
}

TEST_F(MediaPlayerTest, GraphDoesWhatItIsToldWhereItLeadsAnywhere) {
    const struct {
        const char* steps;
        std::string log;
        int finished = 0; ///< tracks
    } cases[] = {
        {"play pause stop rewind drop:50 seek:5 volume:20 notify", ""}, // without a file
        {"volume:50 load play volume:100", "Render /a Volume -1339 Run Volume 0"},
        {"load pause stop play pause pause stop stop", "Render /a Volume 0 Run Pause Stop"},
        {"load play rewind", "Render /a Volume 0 Run Stop Seek 0"},
        // The seek bar keeps the state that it finds, and the one that is entered meanwhile.
        {"load hold:20 drop:30", "Render /a Seek 200000000 Seek 300000000 Stop"},
        {"load play hold:20 drop:30", "Render /a Volume 0 Run Seek 200000000 Seek 300000000 Run"},
        {"load play pause drop:30", "Render /a Volume 0 Run Pause Seek 300000000"},
        {"load play hold:20 pause drop:30",
         "Render /a Volume 0 Run Seek 200000000 Pause Seek 300000000"},
        {"load hold:20 play drop:30", "Render /a Seek 200000000 Volume 0 Run Seek 300000000 Run"},
        {"load play hold:20 stop drop:30",
         "Render /a Volume 0 Run Seek 200000000 Stop Seek 300000000 Stop"},
        {"load play hold:20 drop:30 pause drop:40",
         "Render /a Volume 0 Run Seek 200000000 Seek 300000000 Run Pause Seek 400000000"},
        // Held at the end it may go back; a file that is closed is not held any more.
        {"load play hold:100 complete deliver drop:100",
         "Render /a Volume 0 Run Seek 1000000000 Seek 1000000000 Run"},
        {"load play complete notify drop:50 deliver",
         "Render /a Volume 0 Run Seek 500000000 Run"}, // away from the end before it is heard of
        {"load play drop:100 complete deliver", "Render /a Volume 0 Run Seek 1000000000 Run", 1},
        {"load hold:20 close load complete deliver", "Render /a Seek 200000000 Render /a", 1},
        {"load play complete notify load deliver", "Render /a Volume 0 Run Stop Render /a"},
    };
    for (const auto& c : cases) {
        m_finished = 0;
        Do(c.steps);
        EXPECT_EQ(Log(), c.log) << c.steps;
        EXPECT_EQ(m_finished, c.finished) << c.steps;
        Do("close volume:100");
        EXPECT_EQ(m_display.position, 0) << c.steps;
        EXPECT_EQ(m_player.GetDuration() + m_player.GetPosition(), 0) << c.steps;
        Log();
    }
}

TEST_F(MediaPlayerTest, ShowsThePositionInPercent) {
    constexpr int kCases[][3] = {{0, 5, 0}, {3, 1, 33}, {36'000, 35'999, 99}};
    for (const auto& [duration, position, percent] : kCases) {
        m_script.duration = duration * kMediaSecond;
        Do("load");
        m_script.current->position = position * kMediaSecond;
        m_player.UpdatePosition();
        EXPECT_EQ(m_display.position, percent);
    }
    Do("play"); // from now on by itself
    m_script.current->position = 18'000 * kMediaSecond;
    EXPECT_TRUE(RunUntil([this] { return m_display.position == 50; }, 2000));
}

TEST_F(MediaPlayerTest, GoesToAPositionInsideTheFileAndTells) {
    std::vector<std::int64_t> seeks;
    const auto listening = m_player.OnSeek([&](auto position) { seeks.push_back(position); });
    Do("load seek:50");
    EXPECT_EQ(m_display.position, 50);
    Do("seek:-1 seek:101");
    EXPECT_EQ(seeks, (std::vector{50 * kMediaSecond, std::int64_t(0), 100 * kMediaSecond}));
}
