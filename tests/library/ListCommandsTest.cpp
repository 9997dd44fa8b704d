// The commands on the tracks of lists: delete, genre, checks, views.

#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/library/LibraryFixture.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace {

using ListCommandsTest = LibraryFixture;

constexpr int kOperaGenre = 32908;

} // namespace

TEST_F(ListCommandsTest, DeleteTakesTheFilesAfterTheQuestion) {
    const QString playing = AddFile("a.mp3");
    AddFile("b.mp3");
    const QString stuck = AddFile("c.mp3");
    const QString list = AddFile("list.m3u", "#EXTM3U\r\n");
    const QString gone = AddFile("gone.mp3");
    Append(m_selection, playing);
    ASSERT_TRUE(QFile::remove(stuck) && QDir().mkpath(stuck + QStringLiteral("/in the way")));
    ASSERT_TRUE(QFile::remove(gone));
    m_commands.Run(Command::kDelete);
    EXPECT_EQ(m_prompts.Take(), "") << "nothing is checked";

    m_collection[0]->m_bPlaying = 1;
    m_collection[2]->m_strStatus = QStringLiteral("told before");
    Check(m_collection, {0, 2, 3, 4});
    m_prompts.answer = false;
    m_commands.Run(Command::kDelete);
    EXPECT_EQ(m_prompts.Take(), "IDS_CONFIRM_DELETE");
    EXPECT_TRUE(QFile::exists(playing));
    EXPECT_EQ(m_player.released, QStringList());

    m_prompts.answer = true;
    m_grid.SetFocusCell({2, 1});
    m_commands.Run(Command::kDelete);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 1})) << "on the track that follows";
    EXPECT_EQ(m_prompts.Take(), "IDS_CONFIRM_DELETE IDS_PROMPT_UNDEL");
    EXPECT_EQ(Names(m_collection), "b.mp3 c.mp3*");
    EXPECT_EQ(m_grid.GetRowCount(), 5) << "header, two titles, two tracks";
    EXPECT_EQ(Names(m_selection), "") << "gone from every list";
    EXPECT_FALSE(QFile::exists(playing) || QFile::exists(list));
    EXPECT_TRUE(QFile::exists(stuck + QStringLiteral("/in the way")));
    EXPECT_EQ(m_collection[1]->m_strStatus, u"told before");
    EXPECT_EQ(m_player.released.value(0), playing);
    EXPECT_FALSE(m_enabled.at(Command::kDelete));
}

TEST_F(ListCommandsTest, OnlySomeListsCanLoseTracks) {
    const QString path = m_scratch.Write(QStringLiteral("Elsewhere/a.mp3"), "music");
    const struct {
        int type;
        int sourceType;
        bool deletes;
    } rows[] = {{MEDIA_TYPE_ALL, -1, false},
                {MEDIA_TYPE_CD, -1, false},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, false},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_ALL, true}, // but keeps the file
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, true}};
    m_collection.m_bActive = 0;
    m_all.m_bActive = 1;
    for (const auto& row : rows) {
        CMediaList& list = row.type == MEDIA_TYPE_SELECTION  ? m_selection
                           : row.type == MEDIA_TYPE_PLAYLIST ? m_playlist
                                                             : m_all;
        list.ClearAll();
        g_bSelectionOnly = row.type == MEDIA_TYPE_SELECTION;
        g_bPlaylistOnly = row.type == MEDIA_TYPE_PLAYLIST;
        Append(list, path, 1);
        list.m_iType = row.type;
        list.m_iSourceType = row.sourceType;
        m_commands.Run(Command::kBodyDelete);
        EXPECT_EQ(list.GetCount(), row.deletes ? 0 : 1) << row.type << ' ' << row.sourceType;
        EXPECT_EQ(QFile::exists(path), row.type != MEDIA_TYPE_SELECTION || !row.deletes);
    }
}

TEST_F(ListCommandsTest, GenreGoesIntoTheTags) {
    const QString path = AddFile("a.mp3", ReadFile(MediaFile(QStringLiteral("mutagen-v23.mp3"))));
    const QString other = AddFile("b.aac", "no sound");
    Click(m_collection, 0);
    m_commands.Run(kOperaGenre);
    EXPECT_EQ(m_collection[0]->m_strGenre, u"Opera") << "at once";
    AwaitWriter();
    CTrackInfo info;
    ASSERT_EQ(ReadTrackTags(path, info), 0);
    EXPECT_EQ(info.m_strGenre, u"Opera");
    EXPECT_EQ(m_collection[0]->m_strGenre, u"Opera");
    EXPECT_EQ(m_grid.GetCell(2, 4)->GetText(), u"Opera");

    m_collection[1]->m_strGenre = QStringLiteral("Old");
    Click(m_collection, 1);
    ASSERT_TRUE(QFile::remove(other));
    m_commands.Run(kOperaGenre);
    AwaitWriter();
    EXPECT_EQ(m_collection[1]->m_strGenre, u"Old") << "it could not be written";
    EXPECT_EQ(m_status.news.size(), 1);

    const QByteArray music = ReadFile(path);
    const QString namesake = AddFile("A.mp3", music);
    Click(m_collection, 0);
    m_collection.RemoveIf([&path](const CTrackRecord& track) { return track.m_strPath == path; });
    m_commands.Run(kOperaGenre + 1);
    AwaitWriter();
    EXPECT_EQ(ReadFile(namesake), music) << "case tells files apart";

    Append(m_all, m_scratch.Write(QStringLiteral("x.mp3"), "x"));
    m_view.FillGrid();
    Click(m_all, 0);
    m_commands.Run(kOperaGenre);
    EXPECT_EQ(m_all[0]->m_strGenre, QString());
}

TEST_F(ListCommandsTest, AllAreCheckedOrNone) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"})
        AddFile(name);
    Check(m_collection, {1});
    m_collection.m_bExpanded = 0; // the cursor is still there
    m_view.FillGrid();
    m_commands.Run(Command::kSelectAll);
    EXPECT_EQ(Names(m_collection), "a.mp3* b.mp3* c.mp3*");
    EXPECT_EQ(m_grid.GetCell(1, m_grid.GetColumnCount() - 1)->GetText(), u"Mine (3/3)");
    m_collection.m_bExpanded = 1;
    m_view.FillGrid();
    m_commands.Run(Command::kBodyDeselectAll);
    EXPECT_EQ(Names(m_collection), "a.mp3 b.mp3 c.mp3");
    m_collection.m_bActive = 0;
    m_commands.Run(Command::kSelectAll);
    EXPECT_EQ(Names(m_collection), "a.mp3 b.mp3 c.mp3") << "no list is under the cursor";
}

TEST_F(ListCommandsTest, SelectionHoldsCopiesOfTheCheckedTracks) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"})
        AddFile(name);
    Check(m_collection, {0, 2});
    m_commands.Run(Command::kViewSelection);
    EXPECT_EQ(Names(m_selection), "a.mp3* c.mp3*");
    EXPECT_EQ(m_selection.m_iSourceType, MEDIA_TYPE_COLLECTION);
    EXPECT_EQ(m_grid.GetRowCount(), 3);
    EXPECT_EQ(m_marked, Command::kViewSelection);
    m_commands.Run(Command::kDeselectAll);
    EXPECT_EQ(Names(m_collection), "a.mp3* b.mp3 c.mp3*");
    m_commands.Run(Command::kViewSelection);
    EXPECT_EQ(Names(m_selection), "a.mp3 c.mp3") << "it is on already";

    m_commands.Run(Command::kViewAllMusic);
    EXPECT_FALSE(g_bSelectionOnly);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(m_marked, Command::kViewAllMusic);
    m_commands.Run(Command::kViewCollection);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_marked, Command::kViewCollection);
    m_all.m_bExpanded = 0;
    m_commands.Run(Command::kViewAllMusic);
    EXPECT_EQ(m_marked, Command::kViewAllMusic) << "folded, it is viewed all the same";
    EXPECT_EQ(m_grid.GetFocusCell().row, m_all.m_iTitleRow) << "keys go on from there";
}

TEST_F(ListCommandsTest, RefreshReadsTheFolderAnew) {
    AddFile("a.mp3");
    m_scratch.Write(QStringLiteral("Mine/new.mp3"), "music");
    ASSERT_TRUE(QFile::remove(m_folder + QStringLiteral("/a.mp3")));
    m_commands.Run(Command::kTitleRefresh);
    EXPECT_EQ(m_grid.GetRowCount(), 3) << "no rows of what is no longer there";
    m_commands.Run(Command::kTitleRefresh); // the first one is still at it
    EXPECT_EQ(m_player.released, QStringList{QStringLiteral("Mine")});
    AwaitLists();
    EXPECT_EQ(Names(m_collection), "new.mp3");
    m_commands.Run(Command::kTitleRefresh);
    m_status.CancelOperations();
    EXPECT_EQ(m_status.running, 0) << "a cancel ends it at once";
    m_commands.Run(Command::kTitleRefresh);
    AwaitLists();
    EXPECT_EQ(Names(m_collection), "new.mp3");
}
