#include "player/Transport.h"

#include "base/Language.h"
#include "library/MediaLists.h"
#include "player/MediaPlayer.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"
#include "tests/player/RecordingDisplay.h"
#include "tests/player/ScriptedGraph.h"

#include <QEventLoop>
#include <QFile>

#include <set>
#include <sstream>
#include <string>

namespace {

using Code = GraphEvent::Code;
using enum TransportState;

/// A transport over a collection of the tracks a, b, c, which is the active list, and All Music
/// with x and y. It is told what to do in words, such as "play:b next".
struct Deck {
    Deck() {
        SetLanguageFile(QString()); // texts are their own keys
        Fill(collection, "abc");
        Fill(all, "xy");
        collection.m_bActive = 1;
        transport.Listen(messages);
    }

    /// A track for each letter; '.' is a playlist file.
    static void Fill(CMediaList& list, const std::string& letters) {
        for (const char letter : letters)
            AddTrack(list, letter == '.' ? "/list.m3u" : PathOf(letter),
                     QString(QLatin1Char(letter)))
                .m_nFileSize = 1'000'000;
    }
    static QString PathOf(char letter) {
        return QStringLiteral("/%1.mp3").arg(QLatin1Char(letter));
    }
    /// Index of a letter in the collection; -1 if it is not there.
    [[nodiscard]] int Find(char letter) const { return collection.FindPath(PathOf(letter)); }
    CTrackRecord& Track(char letter) { return *collection[Find(letter)]; }
    void Answer(const std::string& letters, const GraphEvent& event) {
        for (const char letter : letters)
            script.answers[PathOf(letter)] = event;
    }

    void Do(const std::string& words) {
        std::istringstream stream(words);
        for (std::string word, argument; stream >> word;) {
            std::istringstream parts(word);
            std::getline(std::getline(parts, word, ':'), argument);
            steps.at(word)(argument);
            while (word != "press" && word != "playlist" && QEventLoop().processEvents()) {
            }
        }
    }

    /// The tracks that are marked, of both lists.
    [[nodiscard]] std::string Marked() const {
        QString marked;
        for (const auto& list : lists.All())
            for (int i = 0; i < list->GetCount(); ++i)
                if ((*list)[i]->m_bPlaying)
                    marked += (*list)[i]->m_strTitle;
        return marked.toStdString();
    }
    /// The tracks that graphs were made for since the last question.
    std::string Loaded() {
        QString loaded;
        for (const QString& call : script.TakeLog())
            if (call.startsWith("Render"))
                loaded += call.at(call.size() - 5);
        return loaded.toStdString();
    }
    /// The state, and the buttons that do anything: "playing <|>".
    [[nodiscard]] std::string Shown() const {
        const char* const states[] = {"stopped", "playing", "paused"};
        return std::string(states[static_cast<int>(display.state)]) + ' ' +
               (told.canPrevious ? "<" : "") + (told.canPlay ? "|" : "") +
               (told.canNext ? ">" : "");
    }

    CMediaLists lists;
    CMediaList& collection = lists.Add({}, MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add({}, MEDIA_TYPE_ALL, 1);
    ScriptedGraph::Script script;
    RecordingDisplay display;
    RecordingView view;
    CMessageTarget messages;
    CMediaPlayer player{script.Factory(), messages.Address(), display};
    CTransport transport{lists, player, view, display};
    PlayerCommands told;
    const CListening listening = transport.OnChange([this] { told = transport.GetCommands(); });

    using Argument = const std::string&;
    const std::map<std::string, std::function<void(Argument)>> steps{
        {"play", [this](Argument a) { transport.PlayTrack(collection, Find(a[0])); }},
        {"playlist", [this](Argument) { transport.PlayPlaylist(collection, 3); }},
        {"press", [this](Argument a) { transport.PlayTrack(collection, Find(a[0])); }},
        {"button", [this](Argument) { transport.OnPlayPause(); }},
        {"next", [this](Argument) { transport.OnNext(); }},
        {"previous", [this](Argument) { transport.OnPrevious(); }},
        {"go", [this](Argument) { transport.Play(); }},
        {"pause", [this](Argument) { transport.Pause(); }},
        {"stop", [this](Argument) { transport.Stop(); }},
        {"mode", [this](Argument a) { transport.SetPlayMode(a[0] - '0'); }},
        {"renew", [this](Argument) { transport.RenewQueue(); }},
        {"release", [this](Argument a) { transport.ReleaseFile(PathOf(a[0])); }},
        {"finish", [this](Argument) { script.current->Tell({Code::Complete}); }},
        {"fail", [this](Argument) { script.current->Tell({Code::Failed}); }},
        {"leave", // a track whose end is on its way
         [this](Argument) {
             script.current->Tell({Code::Complete});
             player.OnGraphNotify();
             transport.OnNext();
         }},
        {"remove", [this](Argument) { lists.Remove(collection.m_iId); }},
        {"await", [](Argument) { WaitForThreads(); }}, // until all is read
        {"fill", [this](Argument a) { Fill(collection, a); }},
        {"clear", [this](Argument) { collection.ClearAll(); }},
        {"check", [this](Argument a) { Track(a[0]).m_bChecked = 1; }},
        {"activate",
         [this](Argument a) {
             collection.m_bActive = a == "collection";
             all.m_bActive = a == "all";
             transport.UpdateTransport();
         }},
    };
};

class TransportTest : public ::testing::Test, protected Deck {};

} // namespace

TEST(TransportStepsTest, LeadFromTrackToTrack) {
    const struct {
        const char* missing;
        const char* steps;
        const char* loaded;
        const char* shown;
        const char* marked;
    } cases[] = {
        {"", "mode:1 activate:none", "", "stopped ", ""},
        {"", "mode:0 play:b finish finish", "bc", "stopped |", ""},
        {"", "mode:1 play:b finish finish finish", "bcab", "playing <|>", "b"},
        {"", "play:a leave", "ab", "playing <|>", "b"},
        {"", "play:a previous", "aa", "playing |>", "a"},
        // The button plays what is active, from the first checked track on.
        {"", "check:b button button", "b", "paused |>", "b"},
        {"", "check:b button button button", "b", "playing |>", "b"},
        {"", "play:b activate:all button", "b", "stopped <|>", "b"},
        {"", "play:b activate:all button button", "bx", "playing |>", "x"},
        {"", "play:a stop clear fill:. button", "a", "stopped |", ""},
        {"", "clear mode:1 button", "", "stopped ", ""},
        // A desktop asks whatever list is active.
        {"", "mode:1 pause stop", "", "stopped |", ""},
        {"", "go activate:none pause", "a", "paused |>", "a"},
        {"", "go activate:none pause go", "a", "playing |>", "a"},
        {"", "go activate:none stop", "a", "stopped >", "a"},
        // A step plays, but not from a stop.
        {"", "play:a pause next", "ab", "playing <|>", "b"},
        {"", "play:c stop previous", "cb", "stopped <|>", "b"},
        // What is missing is passed over, once round at most.
        {"b", "mode:0 play:a next", "abc", "playing <|", "c"},
        {"bc", "mode:0 play:a next", "abc", "stopped |", ""},
        {"bc", "mode:1 play:a next", "abca", "playing <|>", "a"},
        {"b", "mode:0 play:c previous", "cba", "playing |>", "a"},
        {"ab", "mode:0 play:c previous", "cba", "stopped |>", ""},
        {"ab", "mode:1 play:c previous", "cbac", "playing <|>", "c"},
        {"abc", "mode:0 button", "abc", "stopped <|", ""},
        {"abc", "mode:1 button", "abc", "stopped <|>", ""},
        {"ab", "mode:1 play:a finish", "abcabc", "playing <|>", "c"},
        {"ab", "mode:1 play:a previous play:a", "abcbacabc", "playing <|>", "c"},
        {"ab", "mode:1 play:a next", "abcabc", "playing <|>", "c"},
        {"a", "press:a pause", "ab", "paused <|>", "b"},
        // The list may change under the track that plays.
        {"", "play:a clear fill:bc finish", "ab", "playing <|>", "b"},
        {"", "play:c fill:d renew finish", "cd", "playing <|", "d"},
        {"", "play:b remove next previous button", "b", "stopped ", ""},
        // A file that is to be written is let go of.
        {"", "play:b release:a", "b", "playing <|>", "b"},
        {"", "play:b release:b next previous", "b", "stopped |", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.steps);
        Deck deck;
        deck.Answer(c.missing, {Code::Missing});
        deck.Do(c.steps);
        EXPECT_EQ(deck.Loaded(), c.loaded);
        EXPECT_EQ(deck.Shown(), c.shown);
        EXPECT_EQ(deck.Marked(), c.marked);
        const bool isStopped = deck.transport.GetState() == Stopped;
        EXPECT_EQ(deck.display.caption, isStopped ? "" : c.marked);
        EXPECT_EQ(deck.view.playingList == -1, isStopped);
        EXPECT_EQ(deck.display.canSeek, deck.player.HasGraph());
        const auto* graph = deck.script.current;
        EXPECT_EQ(!graph || graph->GetState() == GraphState::Stopped, isStopped);
        EXPECT_EQ(deck.display.beeps, 0);
    }
}

TEST_F(TransportTest, StopGoesBackToTheBeginning) {
    Do("play:b stop");
    EXPECT_TRUE(script.log.join(u' ').endsWith(u"Stop Seek 0"));
}

TEST_F(TransportTest, PlaylistPlaysItsFilesInItsOwnOrder) {
    const ScratchFolder scratch;
    const QString path = scratch.File("list.m3u");
    WriteFile(path, "/c.mp3\n/z.mp3\n/y.mp3\n/a.mp3\n/nested.m3u\n/c.mp3\n");
    AddTrack(collection, path);
    Do("playlist await");
    EXPECT_EQ(Marked(), "c");
    EXPECT_EQ(view.playingList, collection.m_iId);
    Do("finish await");
    EXPECT_EQ(Marked(), "") << "a file that is in no list";
    EXPECT_EQ(display.caption, "z");
    EXPECT_TRUE(transport.GetNowPlaying() && transport.GetNowPlaying()->m_strPath == u"/z.mp3");
    Do("finish");
    const CTrackRecord* now = transport.GetNowPlaying(); // none until it is read
    EXPECT_TRUE(!now || now->m_strPath == u"/y.mp3");
    Do("mode:1 finish finish finish"); // another mode is no reason to leave the playlist
    EXPECT_EQ(Loaded(), "czyacc");
    Do("play:b finish");
    EXPECT_EQ(Loaded(), "bc") << "the list again";

    Do("mode:2 playlist await");
    EXPECT_EQ(Marked(), "c") << "it begins with the first";
    transport.ReleaseList(all);
    EXPECT_EQ(transport.GetState(), Playing);
    transport.ReleaseList(collection);
    EXPECT_EQ(transport.GetPlayList(), nullptr);
    EXPECT_EQ(Loaded(), "c");

    for (const std::string later : {"pause", "stop", "button", "next", "previous", "play:b"}) {
        Do("play:a playlist " + later);
        Loaded();
        Do("await");
        EXPECT_EQ(Loaded(), "") << later << " came after the playlist was asked for";
    }
    QFile::remove(path);
    Do("play:a playlist await");
    EXPECT_EQ(Shown(), "stopped |");
    EXPECT_EQ(Loaded(), "a");
    WriteFile(path, "/c.mp3\n");
    Do("playlist remove await");
    EXPECT_EQ(Loaded(), "");
}

TEST_F(TransportTest, AnotherModeKeepsTheTrackThatPlays) {
    Do("play:b");
    Track('b').m_strTitle = "Z"; // sorted, it moves to the end
    collection.SortBy(0x1, 1);
    Do("mode:2");
    EXPECT_EQ(told.playMode, PLAY_RANDOM);
    Do("finish finish");
    EXPECT_EQ(Shown(), "playing <|");
    Do("finish");
    EXPECT_EQ(Shown(), "stopped |");
    std::string loaded = Loaded();
    EXPECT_EQ(loaded.front(), 'b');
    std::sort(loaded.begin(), loaded.end());
    EXPECT_EQ(loaded, "abc");
}

TEST_F(TransportTest, ShowsWhatIsFoundOutOfATrack) {
    const struct {
        std::int64_t tenths; ///< length in tenths of a second
        const char *length, *bitrate, *artist, *album, *title, *caption;
    } cases[] = {
        {0, "tag", "tag", "Artist", "Album", "Title", "Artist - Album - Title"},
        {9, "00:00", "tag", "", "Album", "Title", "Album - Title"},
        {599, "00:59", "135 kbps", "Artist", "", "", "Artist"},
        {60'000, "100:00", "1 kbps", "", "", "", ""},
    };
    CTrackRecord& track = Track('a');
    for (const auto& c : cases) {
        track.m_strLength = track.m_strBitrate = "tag";
        track.m_strStatus = "old";
        track.m_strArtist = QString::fromLatin1(c.artist);
        track.m_strAlbum = QString::fromLatin1(c.album);
        track.m_strTitle = QString::fromLatin1(c.title);
        script.duration = c.tenths * kMediaSecond / 10;
        view.refreshed.clear();
        Do("play:a");
        EXPECT_EQ(track.m_strLength.toStdString(), c.length);
        EXPECT_EQ(track.m_strBitrate.toStdString(), c.bitrate);
        EXPECT_EQ(track.m_nDuration, static_cast<std::uint64_t>(c.tenths * 100));
        EXPECT_TRUE(track.m_strStatus.isEmpty());
        EXPECT_TRUE(view.refreshed.contains({&collection, 0}));
        EXPECT_EQ(display.caption, c.caption);
    }
}

TEST_F(TransportTest, AFileThatCantBePlayedEndsThePlaying) {
    const std::pair<GraphEvent, const char*> cases[] = {
        {{Code::Failed}, "IDS_FEILD_CORRUPT"},
        {{Code::DecoderMissing, "package"}, "IDS_FEILD_NODECODER"},
        {{Code::DeviceFailed}, "IDS_FEILD_NODEVICE"},
    };
    Do("mode:1");
    for (const auto& [event, status] : cases) {
        Answer("b", event);
        display.beeps = 0;
        Do("play:a finish");
        EXPECT_EQ(Loaded(), "ab");
        EXPECT_EQ(Track('b').m_strStatus.toStdString(), status);
        EXPECT_EQ(display.beeps, 1);
        EXPECT_EQ(Shown(), "stopped <>");
        EXPECT_FALSE(display.canSeek);
        EXPECT_FALSE(player.HasGraph());
        transport.UpdateTransport();
        EXPECT_EQ(Shown(), "stopped <|>");
        Do("play:b play:a");
        EXPECT_EQ(Shown(), "playing <|>");
        Do("fail"); // in its midst
        EXPECT_EQ(Shown(), "stopped <>");
        Loaded();
    }
}

TEST_F(TransportTest, WhatPlaysAtRandomIsNotShuffledAgain) {
    const ScratchFolder scratch;
    AddTrack(collection,
             scratch.Write("list.m3u", "/a.mp3\n/b.mp3\n/c.mp3\n/d.mp3\n/e.mp3\n/f.mp3\n"));
    Fill(collection, "defghijklm");
    for (const auto& [start, count] : {std::pair("mode:2 play:a", 13U), {"playlist await", 6U}}) {
        Do(start);
        std::string played;
        while (transport.GetState() == Playing) {
            Do("renew finish"); // nothing has come to the list
            ASSERT_LT((played += Loaded()).size(), 14U);
        }
        EXPECT_EQ(std::set<char>(played.begin(), played.end()).size(), count) << played;
    }
}

TEST_F(TransportTest, TheMarkFollowsAmongTracksOfOneFile) {
    Fill(collection, "a");
    Do("mode:1");
    transport.PlayTrack(collection, 3);
    EXPECT_TRUE(collection[3]->m_bPlaying);
    collection[3]->m_bChecked = 1;
    std::vector<int> changed;
    collection.MoveCheckedUp(changed);
    Do("next previous");
    EXPECT_EQ(Marked().size(), 1U) << Marked();
}
