#include "player/Transport.h"

#include "base/Language.h"
#include "library/MediaLists.h"
#include "player/MediaPlayer.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/player/RecordingDisplay.h"
#include "tests/player/ScriptedGraph.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

using Code = GraphEvent::Code;
using enum TransportState;

/// A collection of the tracks a, b, c, which is the active list, and All Music with x and y.
class TransportTest : public ::testing::Test {
protected:
    TransportTest() {
        SetLanguageFile(QString()); // texts are their own keys
        Fill(m_collection, "abc");
        Fill(m_all, "xy");
        m_collection.m_bActive = 1;
        m_transport.Listen(m_messages);
    }

    static void Fill(CMediaList& list, const std::string& letters) {
        for (const char letter : letters) {
            auto track = std::make_unique<CTrackRecord>();
            track->m_strTitle = QLatin1Char(letter);
            track->m_strPath = PathOf(letter);
            track->m_nFileSize = 1'000'000;
            list.Append(std::move(track));
        }
    }
    static QString PathOf(char letter) {
        return QStringLiteral("/%1.mp3").arg(QLatin1Char(letter));
    }
    void Answer(char letter, GraphEvent event) { m_script.answers[PathOf(letter)] = event; }
    static void Deliver() { QCoreApplication::processEvents(); }
    void Play(int index) {
        m_transport.PlayTrack(m_collection, index);
        Deliver();
    }
    void Finish() {
        m_script.current->Tell({Code::Complete});
        Deliver();
    }

    /// The tracks that are marked, of both lists.
    [[nodiscard]] std::string Marked() const {
        QString marked;
        for (const CMediaList* list : {&m_collection, &m_all})
            for (int i = 0; i < list->GetCount(); ++i)
                if ((*list)[i]->m_bPlaying)
                    marked += (*list)[i]->m_strTitle;
        return marked.toStdString();
    }
    /// The tracks that graphs were made for since the last question.
    std::string Loaded() {
        QString loaded;
        for (const QString& call : m_script.TakeLog())
            if (call.startsWith(QStringLiteral("Render")))
                loaded += call.at(call.size() - 5);
        return loaded.toStdString();
    }
    CTrackRecord& Track(int index) { return *m_collection[index]; }

    CMediaLists m_lists;
    CMediaList& m_collection = m_lists.Add({}, MEDIA_TYPE_COLLECTION, 1);
    CMediaList& m_all = m_lists.Add({}, MEDIA_TYPE_ALL, 1);
    ScriptedGraph::Script m_script;
    RecordingDisplay m_display;
    RecordingView m_view;
    MessageTarget m_messages;
    CMediaPlayer m_player{m_script.Factory(), m_messages.Address(), m_display};
    CTransport m_transport{m_lists, m_player, m_view, m_display};
};

} // namespace

TEST_F(TransportTest, PlaysTheListToItsEndByMode) {
    const struct {
        int mode;
        int finished; ///< tracks
        std::string loaded;
        TransportState state;
        std::string marked;
    } cases[] = {
        {PLAY_SINGLE, 2, "bc", Stopped, ""},
        {PLAY_CONTINUOUS, 3, "bcab", Playing, "b"},
    };
    for (const auto& c : cases) {
        m_transport.SetPlayMode(c.mode);
        Play(1);
        for (int i = 0; i < c.finished; ++i)
            Finish();
        EXPECT_EQ(Loaded(), c.loaded);
        EXPECT_EQ(m_transport.GetState(), c.state);
        EXPECT_EQ(Marked(), c.marked);
        EXPECT_EQ(m_display.buttons.state, c.state);
        EXPECT_EQ(m_view.playingList, c.state == Stopped ? -1 : m_collection.m_iId);
    }
}

TEST_F(TransportTest, PlaylistPlaysItsFilesInItsOwnOrder) {
    const ScratchFolder scratch;
    auto record = std::make_unique<CTrackRecord>();
    record->m_strPath =
        scratch.Write(QStringLiteral("list.m3u"), "#EXTM3U\r\n/c.mp3\r\n/z.mp3\r\n/a.mp3\r\n"
                                                  "/nested.m3u\r\n/c.mp3\r\n");
    m_collection.Append(std::move(record));
    m_transport.PlayPlaylist(m_collection, 3);
    Deliver();
    EXPECT_EQ(Marked(), "c");
    EXPECT_EQ(m_view.playingList, m_collection.m_iId);
    Finish();
    EXPECT_EQ(Marked(), "") << "a file that is in no list";
    EXPECT_EQ(m_display.caption, "z");
    ASSERT_TRUE(m_transport.GetNowPlaying());
    EXPECT_EQ(m_transport.GetNowPlaying()->m_strPath, u"/z.mp3");
    m_transport.SetPlayMode(PLAY_CONTINUOUS); // which is no reason to leave the playlist
    for (int i = 0; i < 3; ++i)
        Finish();
    EXPECT_EQ(Loaded(), "czacc");
    m_transport.PlayTrack(m_collection, 1);
    Deliver();
    Finish();
    EXPECT_EQ(Loaded(), "bc") << "the list again";

    m_transport.SetPlayMode(PLAY_RANDOM);
    m_transport.PlayPlaylist(m_collection, 3);
    Deliver();
    EXPECT_EQ(Marked(), "c") << "it begins with the first";
    m_transport.ReleaseList(m_all);
    EXPECT_EQ(m_transport.GetState(), Playing);
    m_transport.ReleaseList(m_collection);
    EXPECT_EQ(m_transport.GetPlayList(), nullptr);
    Loaded();

    m_collection[3]->m_strPath = scratch.File(QStringLiteral("gone.m3u"));
    m_transport.PlayPlaylist(m_collection, 3);
    Deliver();
    EXPECT_EQ(m_transport.GetState(), Stopped);
    EXPECT_EQ(Loaded(), "");
}

TEST_F(TransportTest, TheEndOfATrackThatWasLeftIsNone) {
    Play(0);
    m_script.current->Tell({Code::Complete});
    m_player.OnGraphNotify(); // posts the end
    m_transport.OnNext();
    Deliver();
    EXPECT_EQ(Marked(), "b");
}

TEST_F(TransportTest, PlayButtonStartsPausesAndGoesOn) {
    Track(1).m_bChecked = 1;
    m_transport.OnPlayPause();
    EXPECT_EQ(m_display.buttons.state, Playing);
    EXPECT_EQ(Marked(), "b");
    m_transport.OnPlayPause();
    EXPECT_EQ(m_display.buttons.state, Paused);
    m_transport.OnPlayPause();
    EXPECT_EQ(m_display.buttons.state, Playing);
    EXPECT_EQ(Loaded(), "b");

    // Elsewhere it stops first, and then plays what is active there.
    m_collection.m_bActive = 0;
    m_all.m_bActive = 1;
    m_transport.OnPlayPause();
    EXPECT_EQ(m_display.buttons.state, Stopped);
    EXPECT_EQ(m_display.caption, "");
    m_transport.OnPlayPause();
    EXPECT_EQ(Loaded(), "x");
    EXPECT_EQ(Marked(), "x");
}

TEST_F(TransportTest, ADesktopPausesAndStopsWhateverListIsActive) {
    m_transport.Pause();
    m_transport.Stop();
    EXPECT_EQ(m_transport.GetState(), Stopped);
    m_transport.Play();
    EXPECT_EQ(m_transport.GetState(), Playing);
    m_collection.m_bActive = 0;
    m_transport.Pause();
    EXPECT_EQ(m_transport.GetState(), Paused);
    m_transport.Play();
    EXPECT_EQ(m_transport.GetState(), Playing);
    m_transport.Stop();
    EXPECT_EQ(m_transport.GetState(), Stopped);
    EXPECT_TRUE(m_script.TakeLog().join(u' ').endsWith(QStringLiteral("Stop Seek 0")));
}

TEST_F(TransportTest, StepsGoOnAsTheTransportStands) {
    Play(0);
    m_transport.OnNext();
    EXPECT_EQ(m_display.buttons.state, Playing);
    m_transport.OnPlayPause();
    m_transport.OnNext(); // plays, though it was paused
    EXPECT_EQ(m_display.buttons.state, Playing);
    m_transport.Stop();
    m_script.log.clear();
    m_transport.OnPrevious();
    Deliver();
    EXPECT_EQ(m_display.buttons.state, Stopped);
    EXPECT_EQ(Marked(), "b");
    EXPECT_EQ(m_display.caption, "");
    EXPECT_FALSE(m_script.log.contains(QStringLiteral("Run")));
}

TEST_F(TransportTest, PreviousOnTheFirstTrackPlaysItAgain) {
    Play(0);
    m_transport.OnPrevious();
    EXPECT_EQ(Loaded(), "aa");
    EXPECT_EQ(m_display.buttons.state, Playing);
}

TEST_F(TransportTest, ButtonsDoWhatCanBeDone) {
    const auto buttons = [this] {
        const TransportButtons shown = m_transport.GetButtons();
        return std::string(shown.canPrevious ? "<" : "") + (shown.canPlay ? "|" : "") +
               (shown.canNext ? ">" : "");
    };
    EXPECT_EQ(buttons(), "|");
    m_collection.m_bActive = 0;
    EXPECT_EQ(buttons(), "");
    for (const auto& [index, shown] : {std::pair(0, "|>"), {1, "<|>"}, {2, "<|"}}) {
        Play(index);
        EXPECT_EQ(buttons(), shown);
    }
    Finish();
    EXPECT_EQ(buttons(), "");
    m_transport.SetPlayMode(PLAY_CONTINUOUS);
    EXPECT_EQ(m_display.mode, PLAY_CONTINUOUS);
    EXPECT_TRUE(m_display.buttons.canPrevious && m_display.buttons.canNext);
}

TEST_F(TransportTest, AnotherModeKeepsTheTrackThatPlays) {
    Play(1);
    Track(1).m_strTitle = QStringLiteral("Z"); // sorted, it moves to the end
    m_collection.SortBy(0x1, 1);
    m_transport.SetPlayMode(PLAY_RANDOM);
    EXPECT_FALSE(m_transport.GetButtons().canPrevious);
    Finish();
    Finish();
    EXPECT_EQ(m_transport.GetState(), Playing);
    Finish();
    EXPECT_EQ(m_transport.GetState(), Stopped);
    std::string loaded = Loaded();
    EXPECT_EQ(loaded.front(), 'b');
    std::sort(loaded.begin(), loaded.end());
    EXPECT_EQ(loaded, "abc");
}

TEST_F(TransportTest, ShowsWhatIsFoundOutOfATrack) {
    const struct {
        std::int64_t tenths; ///< length in tenths of a second
        const char* length;
        const char* bitrate;
    } cases[] = {
        {0, "tag", "tag"},          {9, "00:00", "tag"},          {599, "00:59", "135 kbps"},
        {600, "01:00", "133 kbps"}, {60'000, "100:00", "1 kbps"},
    };
    for (const auto& c : cases) {
        Track(0).m_strLength = Track(0).m_strBitrate = QStringLiteral("tag");
        Track(0).m_strStatus = QStringLiteral("old");
        m_script.duration = c.tenths * kMediaSecond / 10;
        m_view.refreshed.clear();
        Play(0);
        EXPECT_EQ(Track(0).m_strLength.toStdString(), c.length);
        EXPECT_EQ(Track(0).m_strBitrate.toStdString(), c.bitrate);
        EXPECT_EQ(Track(0).m_nDuration, static_cast<std::uint64_t>(c.tenths * 100));
        EXPECT_TRUE(Track(0).m_strStatus.isEmpty());
        EXPECT_TRUE(m_view.refreshed.contains({&m_collection, 0}));
        EXPECT_TRUE(m_display.canSeek);
    }
}

TEST_F(TransportTest, CaptionNamesArtistAlbumAndTitle) {
    const struct {
        const char *artist, *album, *title, *caption;
    } cases[] = {
        {"Artist", "Album", "Title", "Artist - Album - Title"},
        {"", "Album", "Title", "Album - Title"},
        {"Artist", "", "", "Artist"},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        Track(0).m_strArtist = QString::fromLatin1(c.artist);
        Track(0).m_strAlbum = QString::fromLatin1(c.album);
        Track(0).m_strTitle = QString::fromLatin1(c.title);
        Play(0);
        EXPECT_EQ(m_display.caption, c.caption);
    }
}

TEST_F(TransportTest, AFileThatCantBePlayedEndsThePlaying) {
    const struct {
        GraphEvent event;
        const char* status;
    } cases[] = {
        {{Code::Failed}, "IDS_FEILD_CORRUPT"},
        {{Code::DecoderMissing, QStringLiteral("package")}, "IDS_FEILD_NODECODER"},
        {{Code::DeviceFailed}, "IDS_FEILD_NODEVICE"},
    };
    m_transport.SetPlayMode(PLAY_CONTINUOUS);
    for (const auto& c : cases) {
        Answer('b', c.event);
        m_display.beeps = 0;
        Play(0);
        Finish();
        EXPECT_EQ(Loaded(), "ab");
        EXPECT_EQ(Track(1).m_strStatus.toStdString(), c.status);
        EXPECT_EQ(m_display.beeps, 1);
        EXPECT_EQ(m_display.caption, "");
        EXPECT_EQ(m_display.buttons, (TransportButtons{Stopped, true, false, true}));
        EXPECT_FALSE(m_display.canSeek);
        EXPECT_FALSE(m_player.HasGraph());
        m_transport.UpdateTransport();
        EXPECT_TRUE(m_display.buttons.canPlay);
        Play(1);
        Play(0);
        EXPECT_TRUE(m_display.buttons.canPlay);
        m_script.log.clear();
    }
}

TEST_F(TransportTest, BreaksOffInTheMiddleOfAFile) {
    Play(0);
    m_script.current->Tell({Code::Failed});
    Deliver();
    EXPECT_EQ(Loaded(), "a");
    EXPECT_EQ(m_transport.GetState(), Stopped);
    EXPECT_EQ(m_display.beeps, 1);
}

TEST_F(TransportTest, MissingFilesArePassedOver) {
    const struct {
        const char* missing;
        int mode;
        int start;
        bool back;
        const char* loaded;
        TransportState state;
        const char* marked;
    } cases[] = {
        {"b", PLAY_SINGLE, 0, false, "abc", Playing, "c"},
        {"bc", PLAY_SINGLE, 0, false, "abc", Stopped, ""},
        {"bc", PLAY_CONTINUOUS, 0, false, "abca", Playing, "a"},
        {"b", PLAY_SINGLE, 2, true, "cba", Playing, "a"},
        {"ab", PLAY_SINGLE, 2, true, "cba", Stopped, ""},
        {"ab", PLAY_CONTINUOUS, 2, true, "cbac", Playing, "c"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.loaded);
        m_script.answers.clear();
        for (const char* letter = c.missing; *letter; ++letter)
            Answer(*letter, {Code::Missing});
        m_transport.SetPlayMode(c.mode);
        Play(c.start);
        c.back ? m_transport.OnPrevious() : m_transport.OnNext();
        Deliver();
        EXPECT_EQ(Loaded(), c.loaded);
        EXPECT_EQ(m_transport.GetState(), c.state);
        EXPECT_EQ(Marked(), c.marked);
        EXPECT_EQ(m_display.canSeek, c.state == Playing);
        EXPECT_EQ(m_display.beeps, 0);
    }
}

TEST_F(TransportTest, PausedBeforeAFileIsMissedItStaysPaused) {
    Answer('a', {Code::Missing});
    m_transport.PlayTrack(m_collection, 0);
    m_transport.OnPlayPause();
    Deliver();
    EXPECT_EQ(Marked(), "b");
    EXPECT_EQ(m_transport.GetState(), Paused);
    EXPECT_EQ(m_script.current->GetState(), GraphState::Paused);
}

TEST_F(TransportTest, ThoseThatWerePassedOverBeforeDontCount) {
    m_transport.SetPlayMode(PLAY_CONTINUOUS);
    for (const char letter : {'a', 'b'})
        Answer(letter, {Code::Missing});
    Play(0);
    Finish();
    EXPECT_EQ(Marked(), "c");
    m_transport.OnPrevious();
    Deliver();
    Play(0); // forward again
    EXPECT_EQ(Loaded(), "abcabcbacabc");
}

TEST_F(TransportTest, AQueueOfMissingFilesIsTriedOnce) {
    for (const char letter : {'a', 'b', 'c'})
        Answer(letter, {Code::Missing});
    for (int mode = PLAY_SINGLE; mode <= PLAY_RANDOM_CONTINUOUS; ++mode) {
        m_transport.SetPlayMode(mode);
        m_transport.OnPlayPause();
        Deliver();
        EXPECT_EQ(Loaded().size(), 3U);
        EXPECT_EQ(m_transport.GetState(), Stopped);
        EXPECT_EQ(Marked(), "");
    }
}

TEST_F(TransportTest, LetsGoOfAFileThatIsToBeWritten) {
    Play(1);
    m_transport.ReleaseFile(PathOf('a'));
    EXPECT_EQ(m_transport.GetState(), Playing);
    m_transport.ReleaseFile(PathOf('b'));
    EXPECT_EQ(m_transport.GetState(), Stopped);
    EXPECT_FALSE(m_player.HasGraph());
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(m_transport.GetPlayList(), nullptr);
    EXPECT_FALSE(m_display.canSeek);
    m_transport.ReleaseFile(QString());
    m_transport.OnNext();
    m_transport.OnPrevious();
    EXPECT_EQ(m_transport.GetState(), Stopped);
}

TEST_F(TransportTest, TheTrackMayLeaveItsList) {
    Play(0);
    m_collection.ClearAll();
    Fill(m_collection, "bc");
    m_script.current->Tell({Code::LengthChanged});
    Finish();
    EXPECT_EQ(Marked(), "b");
    EXPECT_EQ(m_transport.GetState(), Playing);
}

TEST_F(TransportTest, TakesInWhatHasComeToTheList) {
    Play(2);
    EXPECT_FALSE(m_transport.GetButtons().canNext);
    Fill(m_collection, "d");
    m_transport.RenewQueue();
    Finish();
    EXPECT_EQ(Marked(), "d");
}

TEST_F(TransportTest, WhatPlaysAtRandomIsNotShuffledAgain) {
    const ScratchFolder scratch;
    Fill(m_collection, "defghijklm");
    auto record = std::make_unique<CTrackRecord>();
    record->m_strPath =
        scratch.Write(QStringLiteral("list.m3u"),
                      "/a.mp3\n/b.mp3\n/c.mp3\n/d.mp3\n/e.mp3\n/f.mp3\n/g.mp3\n/h.mp3\n");
    m_collection.Append(std::move(record));
    m_transport.SetPlayMode(PLAY_RANDOM);
    for (const bool isPlaylist : {false, true}) {
        isPlaylist ? m_transport.PlayPlaylist(m_collection, 13) : Play(0);
        std::string all;
        while (m_transport.GetState() == Playing) {
            m_transport.RenewQueue(); // nothing has come to the list
            Finish();
            ASSERT_LT((all += Loaded()).size(), 14U);
        }
        EXPECT_EQ(std::set<char>(all.begin(), all.end()).size(), isPlaylist ? 8U : 13U) << all;
    }
}

TEST_F(TransportTest, TheMarkFollowsAmongTracksOfOneFile) {
    Fill(m_collection, "aA");
    m_transport.SetPlayMode(PLAY_CONTINUOUS);
    std::vector<int> changed;
    for (const int row : {3, 4}) { // the second of a file, and one whose name differs in case
        Play(row);
        Track(row).m_bChecked = 1;
        m_collection.MoveCheckedUp(changed);
        Track(row - 1).m_bChecked = 0;
        m_transport.OnNext();
        m_transport.OnPrevious();
        Deliver();
        EXPECT_EQ(Marked().size(), 1U) << Marked();
    }
}

TEST_F(TransportTest, AListOfPlaylistsPlaysNothing) {
    Play(0);
    EXPECT_EQ(Loaded(), "a");
    m_transport.Stop();
    m_collection.ClearAll();
    auto playlist = std::make_unique<CTrackRecord>();
    playlist->m_strPath = QStringLiteral("/list.m3u");
    m_collection.Append(std::move(playlist));
    m_transport.OnPlayPause();
    EXPECT_EQ(m_transport.GetState(), Stopped);
    EXPECT_EQ(Loaded(), "");
}
