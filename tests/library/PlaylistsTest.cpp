#include "library/Playlists.h"

#include "library/PlaylistFile.h"
#include "tests/library/LibraryFixture.h"

#include <QDir>
#include <QFile>

namespace {

class PlaylistsTest : public LibraryFixture {
protected:
    /// A playlist of files in the collection, whose names are told; it is opened.
    void Open(const char* name, const QStringList& names) {
        m_file = m_scratch.File(QStringLiteral("Mine/") + QString::fromUtf8(name));
        QStringList tracks;
        for (const QString& track : names)
            tracks += m_folder + u'/' + track;
        ASSERT_TRUE(WritePlaylist(m_file, tracks));
        OpenFile(m_file);
    }
    void OpenFile(const QString& path) {
        m_playlists.OpenPlaylist(path);
        AwaitLists();
    }
    [[nodiscard]] std::string Saved() const {
        QStringList entries;
        ReadPlaylist(m_file, entries, 1);
        for (QString& entry : entries)
            entry = entry.section(u'/', -1);
        return entries.join(u' ').toStdString();
    }

    QString m_file;
};

} // namespace

TEST_F(PlaylistsTest, NewOneHoldsTheCheckedTracksUnderTheFirstFreeName) {
    AddFile("b.mp3");
    AddFile("list.m3u", "#EXTM3U\r\n");
    AddFile("ä.mp3");
    AddFile("c.mp3");
    m_scratch.Write(QStringLiteral("Mine/Playlist1.m3u"), "mine");
    m_scratch.Write(QStringLiteral("Mine/Playlist3.m3u"), "mine");
    Check(m_collection, {0, 1, 2});
    m_commands.Run(Command::kCreatePlaylist);
    EXPECT_EQ(Names(m_collection), "b.mp3 list.m3u ä.mp3 c.mp3 Playlist2.m3u");
    EXPECT_EQ(m_collection[4]->m_strTitle, u"Playlist2");
    EXPECT_GT(m_collection[4]->m_iRow, 0) << "it is shown";
    EXPECT_EQ(ReadFile(m_folder + QStringLiteral("/Playlist2.m3u")),
              "#EXTM3U\r\n#EXTINF:0, \r\n" + m_folder.toUtf8() + "/b.mp3\r\n#EXTINF:0, \r\n" +
                  m_folder.toUtf8() + "/ä.mp3\r\n");
    EXPECT_FALSE(m_enabled.at(Command::kCreatePlaylist)) << "the checks are used up";

    m_commands.Run(Command::kCreatePlaylist);
    EXPECT_EQ(ReadFile(m_folder + QStringLiteral("/Playlist4.m3u")), "#EXTM3U\r\n");
    EXPECT_EQ(ReadFile(m_folder + QStringLiteral("/Playlist1.m3u")), "mine");

    m_lists.SetLocation(m_collection, m_scratch.File(QStringLiteral("gone")));
    m_commands.Run(Command::kCreatePlaylist);
    EXPECT_EQ(m_prompts.Take(), "IDS_PLAYLIST_UNWRITABLE");
    EXPECT_EQ(m_collection.GetCount(), 6) << "no row for what is not there";
    m_view.ShowList(m_all.m_iId);
    m_commands.Run(Command::kCreatePlaylist);
    EXPECT_EQ(m_prompts.Take(), "") << "only in the collection";
}

TEST_F(PlaylistsTest, OpenOneIsAllThatIsShown) {
    AddFile("a.mp3");
    m_grid.SetFocusCell({2, 3});
    Open("list.m3u",
         {QStringLiteral("a.mp3"), QStringLiteral("a.mp3"), QStringLiteral("gone.mp3")});
    EXPECT_EQ(Names(m_playlist), "a.mp3 a.mp3 gone.mp3");
    EXPECT_EQ(m_lists.GetActiveList(), &m_playlist);
    EXPECT_EQ(m_grid.GetRowCount(), 4);
    EXPECT_EQ(m_playlist[0]->m_nFileSize, 5u);
    EXPECT_EQ(m_playlist[2]->m_nFileSize, 0u);
    EXPECT_EQ(m_playlist[2]->m_strTitle, u"gone");
    EXPECT_EQ(m_playlist.m_iSourceType, MEDIA_TYPE_COLLECTION);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{1, 1}));
    OpenFile(m_folder + QStringLiteral("/other.m3u"));
    m_commands.Run(Command::kViewSelection);
    m_view.ShowList(m_all.m_iId);
    EXPECT_EQ(m_lists.GetActiveList(), &m_playlist) << "there is one at a time, and no other list";

    const QByteArray before = ReadFile(m_file);
    ASSERT_TRUE(QFile::setPermissions(m_file, QFile::ReadOwner));
    m_commands.Run(Command::kSavePlaylist); // unchanged: only closes
    EXPECT_EQ(ReadFile(m_file), before);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 3})) << "the keyboard is where it was";
    EXPECT_EQ(m_playlist.GetCount(), 0);
    EXPECT_EQ(m_player.released, QStringList{QStringLiteral("Playlist")})
        << "before its tracks went";
    EXPECT_EQ(m_prompts.Take(), "");

    OpenFile(m_folder); // no file at all
    EXPECT_FALSE(g_bPlaylistOnly);
    EXPECT_EQ(m_prompts.Take(), "IDS_PLAYLIST_UNREADABLE");
}

TEST_F(PlaylistsTest, FilesOfOtherSystemsShowTheirNames) {
    m_file = m_scratch.Write(QStringLiteral("Mine/list.m3u"),
                             "C:\\Music\\one.mp3\r\nsub\\two.mp3\n\n\xFF.mp3");
    m_scratch.Write(QStringLiteral("Mine/sub/two.mp3"), "12");
    OpenFile(m_file);
    ASSERT_EQ(m_playlist.GetCount(), 4);
    EXPECT_EQ(m_playlist[0]->m_strTitle, u"one.mp3");
    EXPECT_EQ(m_playlist[0]->m_strPath, u"C:\\Music\\one.mp3") << "kept for when it is saved";
    EXPECT_EQ(m_playlist[1]->m_strPath, m_folder + QStringLiteral("/sub/two.mp3"));
    EXPECT_EQ(m_playlist[1]->m_nFileSize, 2u);
    EXPECT_EQ(m_playlist[3]->m_strPath, QString());
}

TEST_F(PlaylistsTest, ChangesAreSavedOrNot) {
    const auto open = [this] {
        Open("list.m3u", {QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")});
    };
    const struct {
        const char* what;
        std::function<void()> change;
        int command;
        bool answer;
        const char* asked;
        const char* saved;
    } rows[] = {
        {"nothing", [] {}, Command::kClosePlaylist, true, "", "c a b"},
        {"a sort", [this] { m_view.SortColumn(1); }, Command::kSavePlaylist, false, "", "a b c"},
        {"a sort", [this] { m_view.SortColumn(1); }, Command::kClosePlaylist, false,
         "IDS_PLAYLIST_MODPROMPT", "c a b"},
        {"a move up",
         [this] {
             Check(m_playlist, {1, 2});
             m_commands.Run(Command::kMoveUp);
         },
         Command::kClosePlaylist, true, "IDS_PLAYLIST_MODPROMPT", "a b c"},
        {"a move that moves nothing",
         [this] {
             Check(m_playlist, {1, 2});
             m_commands.Run(Command::kMoveDown);
         },
         Command::kClosePlaylist, true, "", "c a b"},
        {"a removal",
         [this] {
             Check(m_playlist, {0, 2});
             m_commands.Run(Command::kDelete);
         },
         Command::kSavePlaylist, true, "IDS_CONFIRM_REMOVE", "a"},
    };
    for (const auto& row : rows) {
        m_playlist.m_bSortAscending = 0;
        open();
        m_prompts.answer = true;
        row.change();
        m_prompts.answer = row.answer;
        m_commands.Run(row.command);
        EXPECT_FALSE(g_bPlaylistOnly) << row.what;
        EXPECT_EQ(m_prompts.Take(), row.asked) << row.what;
        EXPECT_EQ(Saved(), row.saved) << row.what;
    }

    open();
    Check(m_playlist, {1});
    Click(m_playlist, 1);
    m_view.FillGrid();
    m_commands.Run(Command::kMoveUp);
    EXPECT_EQ(m_grid.GetCell(1, 1)->GetText(), u"a") << "the rows show it";
    EXPECT_TRUE(m_grid.GetCell(1, 1)->IsSelected() && !m_grid.GetCell(2, 1)->IsSelected());
    ASSERT_TRUE(QFile::remove(m_file) && QDir().mkpath(m_file + QStringLiteral("/in the way")));
    for (const int command : {Command::kSavePlaylist, Command::kClosePlaylist}) {
        m_commands.Run(command);
        EXPECT_TRUE(g_bPlaylistOnly && m_playlist.m_bModified) << "nothing is lost";
        EXPECT_EQ(m_playlist.GetCount(), 3);
    }
}

TEST_F(PlaylistsTest, TracksAreAddedToOne) {
    AddFile("a.mp3");
    AddFile("one.m3u", "#EXTM3U\r\n");
    AddFile("b.mp3");
    const QString two = AddFile("two.M3U", "x.mp3"); // no end of line
    Check(m_collection, {0, 2});
    Click(m_collection, 0);
    m_commands.Run(Command::kFirstPlaylist + 1);
    m_commands.Run(Command::kFirstPlaylist + 2); // there is none
    EXPECT_EQ(ReadFile(two),
              "x.mp3\r\n" + m_folder.toUtf8() + "/a.mp3\r\n" + m_folder.toUtf8() + "/b.mp3\r\n");
    EXPECT_EQ(Names(m_collection), "a.mp3* one.m3u b.mp3* two.M3U") << "the checks stay";
    EXPECT_EQ(ReadFile(m_folder + QStringLiteral("/one.m3u")), "#EXTM3U\r\n");

    Click(m_collection, 1);
    m_commands.Run(Command::kBodyEdit);
    AwaitLists();
    EXPECT_EQ(m_playlist.m_strPath, m_folder + QStringLiteral("/one.m3u"));
    m_commands.Run(Command::kClosePlaylist);
    Click(m_collection, 0);
    m_commands.Run(Command::kBodyEdit);
    AwaitLists();
    EXPECT_FALSE(g_bPlaylistOnly) << "a track is no playlist";
}
