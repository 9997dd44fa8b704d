#include "player/MediaPlayer.h"

#include "tests/fixtures/Printers.h"
#include "tests/player/RecordingDisplay.h"
#include "tests/player/ScriptedGraph.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <gtest/gtest.h>

#include <cmath>

namespace {

class MediaPlayerTest : public ::testing::Test {
protected:
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

    void Load(const char* path) {
        m_player.LoadFile(QString::fromLatin1(path));
        Deliver();
        m_script.log.clear();
    }
    /// What was asked of the graphs since the last question.
    std::string Log() { return m_script.TakeLog().join(QStringLiteral(", ")).toStdString(); }
    static void Deliver() { QCoreApplication::processEvents(); }

    ScriptedGraph::Script m_script;
    RecordingDisplay m_display;
    MessageTarget m_messages;
    CMediaPlayer m_player{m_script.Factory(), m_messages.Address(), m_display};
    int m_finished = 0;
};

} // namespace

TEST(VolumeTest, IsAQuarterCircle) {
    EXPECT_EQ(VolumeFromSlider(0), -10000);
    EXPECT_EQ(VolumeFromSlider(50), -1339);
    EXPECT_EQ(VolumeFromSlider(100), 0);
    // The circle through (0, -10000) and (100, 0) round (100, -10000), cut towards zero.
    for (int slider = 0; slider <= 100; ++slider) {
        const double right = (100 - slider) * 100.0;
        const double exact = std::sqrt(1e8 - right * right) - 10000;
        const int volume = VolumeFromSlider(slider);
        EXPECT_GE(volume, exact - 1e-6) << slider;
        EXPECT_LT(volume, exact + 1 + 1e-6) << slider;
    }
}

TEST_F(MediaPlayerTest, ThePathAloneTellsTheRoute) {
    const struct {
        QString path;
        const char* route;
    } cases[] = {
        {QStringLiteral("/a.mp3"), "Render"},
        {QStringLiteral("/a.WMA"), "RenderWM"},
        {QStringLiteral("/music.wma/song.mp3"), "RenderWM"},
        {QStringLiteral("/a.asf.mp3"), "RenderWM"},
        {QStringLiteral("/b.wmv"), "RenderWM"},
        {QStringLiteral("/wma.mp3"), "Render"},
        {QLatin1Char('/') + QString(255, QLatin1Char('x')) + QStringLiteral(".wma"), "RenderWM"},
        {QLatin1Char('/') + QString(256, QLatin1Char('x')) + QStringLiteral(".wma"), "Render"},
    };
    for (const auto& c : cases) {
        m_script.log.clear();
        m_player.LoadFile(c.path);
        EXPECT_EQ(m_script.log.first(), QString::fromLatin1(c.route) + u' ' + c.path);
    }
}

TEST_F(MediaPlayerTest, WithoutAFileNothingHappens) {
    EXPECT_FALSE(m_player.PlayMedia());
    m_player.PauseMedia();
    m_player.StopMedia();
    m_player.Rewind();
    m_player.OnSeekScroll(CMediaPlayer::Scroll::End, 50);
    m_player.SeekTo(5);
    m_player.SetVolumeFromSlider(20);
    m_player.OnGraphNotify();
    EXPECT_EQ(m_player.GetPosition(), 0);
    EXPECT_TRUE(m_script.log.isEmpty());
}

TEST_F(MediaPlayerTest, TheVolumeStaysForTheFilesToCome) {
    m_player.SetVolumeFromSlider(50);
    Load("/a.mp3");
    m_player.PlayMedia();
    EXPECT_EQ(Log(), "Volume -1339, Run");
    m_player.SetVolumeFromSlider(100);
    EXPECT_EQ(Log(), "Volume 0");
}

TEST_F(MediaPlayerTest, PauseAndStopOnlyFromWhereTheyLead) {
    Load("/a.mp3");
    m_player.PauseMedia();
    m_player.StopMedia();
    EXPECT_TRUE(m_script.log.isEmpty());
    m_player.PlayMedia();
    m_player.PauseMedia();
    m_player.PauseMedia();
    m_player.StopMedia();
    m_player.StopMedia();
    EXPECT_EQ(Log(), "Volume 0, Run, Pause, Stop");
}

TEST_F(MediaPlayerTest, SeekingKeepsTheState) {
    using Scroll = CMediaPlayer::Scroll;
    const std::string seeks = "Seek 200000000, Seek 300000000";
    const struct {
        const char* name;
        std::function<void()> enter;
        std::string log;
    } cases[] = {
        {"stopped", [] {}, seeks + ", Stop"},
        {"running", [this] { m_player.PlayMedia(); }, seeks + ", Run"},
        {"paused", [this] { m_player.PlayMedia(), m_player.PauseMedia(); }, seeks},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Load("/a.mp3");
        c.enter();
        m_script.log.clear();
        m_player.OnSeekScroll(Scroll::Track, 20);
        m_player.OnSeekScroll(Scroll::End, 30);
        EXPECT_EQ(Log(), c.log);
    }
}

TEST_F(MediaPlayerTest, WhatIsAskedForWhileTheBarIsHeldStays) {
    using Scroll = CMediaPlayer::Scroll;
    Load("/a.mp3");
    const struct {
        std::function<void()> enter;
        std::string log;
    } cases[] = {
        {[this] { m_player.PauseMedia(); }, "Pause, Seek 300000000"},
        {[this] { m_player.PlayMedia(); }, "Volume 0, Run, Seek 300000000, Run"},
        {[this] { m_player.StopMedia(); }, "Stop, Seek 300000000, Stop"},
    };
    m_player.PlayMedia();
    for (const auto& c : cases) {
        m_player.OnSeekScroll(Scroll::Track, 20);
        m_script.log.clear();
        c.enter();
        m_player.OnSeekScroll(Scroll::End, 30);
        EXPECT_EQ(Log(), c.log);
    }
}

TEST_F(MediaPlayerTest, ABarThatIsHeldAtTheEndMayGoBack) {
    using Scroll = CMediaPlayer::Scroll;
    const auto complete = [this] {
        m_script.current->Tell({GraphEvent::Code::Complete});
        Deliver();
    };
    Load("/a.mp3");
    m_player.PlayMedia();
    m_player.OnSeekScroll(Scroll::Track, 100);
    complete();
    EXPECT_EQ(m_finished, 0);
    m_player.OnSeekScroll(Scroll::End, 100);
    EXPECT_EQ(m_finished, 0);
    complete();
    EXPECT_EQ(m_finished, 1);
}

TEST_F(MediaPlayerTest, ShowsThePositionInPercent) {
    const struct {
        std::int64_t duration, position;
        int percent;
    } cases[] = {
        {0, 5 * kMediaSecond, 0},
        {3 * kMediaSecond, kMediaSecond, 33},
        {36'000 * kMediaSecond, 35'999 * kMediaSecond, 99},
    };
    for (const auto& c : cases) {
        m_script.duration = c.duration;
        Load("/a.mp3");
        m_script.current->position = c.position;
        m_player.UpdatePosition();
        EXPECT_EQ(m_display.position, c.percent);
    }
    m_player.PlayMedia(); // from now on by itself
    m_script.current->position = 18'000 * kMediaSecond;
    const QDeadlineTimer longest(2000);
    while (m_display.position != 50 && !longest.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(m_display.position, 50);
}

TEST_F(MediaPlayerTest, GoesToAPositionInsideTheFileAndTells) {
    std::vector<std::int64_t> seeks;
    m_player.SetSeekHandler([&](std::int64_t position) { seeks.push_back(position); });
    Load("/a.mp3");
    m_player.SeekTo(50 * kMediaSecond);
    EXPECT_EQ(m_display.position, 50);
    m_player.SeekTo(-1);
    m_player.SeekTo(101 * kMediaSecond);
    EXPECT_EQ(seeks, (std::vector{50 * kMediaSecond, std::int64_t(0), 100 * kMediaSecond}));
}

TEST_F(MediaPlayerTest, NothingIsLeftOfAFileThatIsClosed) {
    Load("/a.mp3");
    m_player.PlayMedia();
    m_player.OnSeekScroll(CMediaPlayer::Scroll::Track, 20);
    m_player.UpdatePosition();
    m_player.CloseFilterGraph();
    EXPECT_EQ(m_display.position, 0);
    EXPECT_EQ(m_player.GetDuration(), 0);
    Load("/b.mp3");
    m_script.current->Tell({GraphEvent::Code::Complete});
    Deliver();
    EXPECT_EQ(m_finished, 1); // the bar is not held any more
}

TEST_F(MediaPlayerTest, TheEndOfAFileIsNotThatOfTheNext) {
    Load("/a.mp3");
    m_player.PlayMedia();
    m_script.current->Tell({GraphEvent::Code::Complete});
    Deliver();
    EXPECT_EQ(m_finished, 1);

    m_script.current->Tell({GraphEvent::Code::Complete});
    m_player.OnGraphNotify(); // posts the end
    m_player.LoadFile(QStringLiteral("/b.mp3"));
    Deliver();
    EXPECT_EQ(m_finished, 1);
}
