#include "tests/library/LibraryFixture.h"

#include <QDir>
#include <QFile>

using namespace Command;

struct PlaylistsTest : LibraryFixture {
    void Open(const QString& path) {
        m_playlists.OpenPlaylist(path);
        AwaitLists();
    }
    [[nodiscard]] QByteArray Content(const char* name) const {
        return ReadFile(m_folder + u'/' + QLatin1String(name));
    }

    const QString m_file = m_folder + "/list.m3u";
};

TEST_F(PlaylistsTest, NewOneHoldsTheCheckedTracksUnderTheFirstFreeName) {
    AddFile("b.mp3");
    AddFile("list.m3u", "#EXTM3U\r\n");
    AddFile("ä.mp3");
    m_scratch.Write("Mine/Playlist1.m3u", "mine");
    m_scratch.Write("Mine/Playlist3.m3u", "mine");
    Check(m_collection, {0, 1, 2});
    m_commands.Run(kCreatePlaylist);
    EXPECT_EQ(Rows(), "Mine (0/4) b list.m3u ä Playlist2 All (0/0)") << "the checks are used up";
    EXPECT_EQ(Content("Playlist2.m3u"), "#EXTM3U\r\n#EXTINF:0, \r\n" + m_folder.toUtf8() +
                                            "/b.mp3\r\n#EXTINF:0, \r\n" + m_folder.toUtf8() +
                                            "/ä.mp3\r\n");
    EXPECT_FALSE(m_enabled.at(kCreatePlaylist));
    m_commands.Run(kCreatePlaylist);
    EXPECT_EQ(Content("Playlist4.m3u"), "#EXTM3U\r\n");
    EXPECT_EQ(Content("Playlist1.m3u"), "mine");

    m_lists.SetLocation(m_collection, m_scratch.File("gone"));
    m_commands.Run(kCreatePlaylist);
    EXPECT_EQ(m_prompts.Take(), "IDS_PLAYLIST_UNWRITABLE");
    EXPECT_EQ(m_collection.GetCount(), 5) << "no row for what is not there";
    m_view.ShowList(m_all.m_iId);
    m_commands.Run(kCreatePlaylist);
    EXPECT_EQ(m_prompts.Take(), "") << "only in the collection";
}

TEST_F(PlaylistsTest, OpenOneIsAllThatIsShown) {
    AddFile("a.mp3");
    m_grid.SetFocusCell({2, 3});
    m_scratch.Write("Mine/sub/two.mp3", "12");
    const QByteArray content =
        "a.mp3\na.mp3\ngone.mp3\nC:\\Music\\one.mp3\r\nsub\\two.mp3\n\n\xFF.mp3";
    WriteFile(m_file, content);
    Open(m_file);
    EXPECT_EQ(Rows(), "a a gone one.mp3 two  ");
    EXPECT_EQ(m_playlist[0]->m_nFileSize, 5u);
    EXPECT_EQ(m_playlist[2]->m_nFileSize, 0u);
    EXPECT_EQ(m_playlist[3]->m_strPath, u"C:\\Music\\one.mp3") << "kept for when it is saved";
    EXPECT_EQ(m_playlist[4]->m_nFileSize, 2u) << "found";
    EXPECT_EQ(m_playlist[6]->m_strPath, QString());
    EXPECT_EQ(m_playlist.m_iSourceType, MEDIA_TYPE_COLLECTION);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{1, 1}));
    Open(m_folder + "/other.m3u");
    m_commands.Run(kViewSelection);
    m_view.ShowList(m_all.m_iId);
    EXPECT_EQ(m_lists.GetActiveList(), &m_playlist) << "there is one at a time, and no other list";

    m_commands.Run(kSavePlaylist); // unchanged: only closes
    EXPECT_EQ(ReadFile(m_file), content);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 3})) << "the keyboard is where it was";
    EXPECT_EQ(m_playlist.GetCount(), 0);
    EXPECT_EQ(m_player.released, QStringList{"Playlist"});
    EXPECT_EQ(m_prompts.Take(), "");
    Open(m_folder); // no file at all
    EXPECT_FALSE(g_bPlaylistOnly);
    EXPECT_EQ(m_prompts.Take(), "IDS_PLAYLIST_UNREADABLE");
}

TEST_F(PlaylistsTest, ChangesAreSavedOrNot) {
    const QByteArray folder = m_folder.toUtf8();
    const auto open = [&] {
        WriteFile(m_file, folder + "/c\n" + folder + "/a\n" + folder + "/b\n");
        Open(m_file);
    };
    const auto run = [this](std::initializer_list<int> checked, int command) {
        return [this, checked = std::vector<int>(checked), command] {
            for (const int index : checked)
                m_playlist[index]->m_bChecked = 1;
            m_commands.Run(command);
        };
    };
    const auto sort = [this] { m_view.SortColumn(1); };
    const struct {
        const char* what;
        std::function<void()> change;
        int command;
        bool answer;
        const char* asked;
        const char* saved;
    } rows[] = {
        {"nothing", [] {}, kClosePlaylist, true, "", "cab"},
        {"a sort saved", sort, kSavePlaylist, false, "", "abc"},
        {"a sort closed", sort, kClosePlaylist, false, "IDS_PLAYLIST_MODPROMPT", "cab"},
        {"a move", run({1, 2}, kMoveUp), kClosePlaylist, true, "IDS_PLAYLIST_MODPROMPT", "abc"},
        {"a move of nothing", run({1, 2}, kMoveDown), kClosePlaylist, true, "", "cab"},
        {"a removal", run({0, 2}, kDelete), kSavePlaylist, true, "IDS_CONFIRM_REMOVE", "a"}};
    for (const auto& row : rows) {
        m_playlist.m_bSortAscending = 0;
        open();
        m_prompts.answer = true;
        row.change();
        m_prompts.answer = row.answer;
        m_commands.Run(row.command);
        EXPECT_FALSE(g_bPlaylistOnly) << row.what;
        EXPECT_EQ(m_prompts.Take(), row.asked) << row.what;
        std::string saved;
        for (const QByteArray& line : ReadFile(m_file).simplified().split(' '))
            if (line.startsWith('/'))
                saved += line.back();
        EXPECT_EQ(saved, row.saved) << row.what;
    }

    open();
    Click(m_playlist, 1);
    run({1}, kMoveUp)();
    EXPECT_EQ(Rows(), "[a*] c b");
    ASSERT_TRUE(QFile::remove(m_file) && QDir().mkpath(m_file + "/in the way"));
    for (const int command : {kSavePlaylist, kClosePlaylist}) {
        m_commands.Run(command);
        EXPECT_TRUE(g_bPlaylistOnly && m_playlist.m_bModified) << "nothing is lost";
        EXPECT_EQ(m_playlist.GetCount(), 3);
    }
}

TEST_F(PlaylistsTest, TracksAreAddedToOne) {
    AddFile("a.mp3");
    AddFile("one.m3u", "#EXTM3U\r\n");
    AddFile("b.mp3");
    AddFile("two.M3U", "x.mp3"); // no end of line
    Check(m_collection, {0, 2});
    Click(m_collection, 0);
    m_commands.Run(kFirstPlaylist + 1);
    m_commands.Run(kFirstPlaylist + 2); // there is none
    EXPECT_EQ(Content("two.M3U"),
              "x.mp3\r\n" + m_folder.toUtf8() + "/a.mp3\r\n" + m_folder.toUtf8() + "/b.mp3\r\n");
    EXPECT_EQ(Names(m_collection), "a.mp3* one.m3u b.mp3* two.M3U") << "the checks stay";
    EXPECT_EQ(Content("one.m3u"), "#EXTM3U\r\n");

    Click(m_collection, 1);
    m_commands.Run(kBodyEdit);
    AwaitLists();
    EXPECT_EQ(m_playlist.m_strPath, m_folder + "/one.m3u");
    m_commands.Run(kClosePlaylist);
    Click(m_collection, 0);
    m_commands.Run(kBodyEdit);
    AwaitLists();
    EXPECT_FALSE(g_bPlaylistOnly) << "a track is no playlist";
}
