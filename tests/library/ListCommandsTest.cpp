#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/library/LibraryFixture.h"

#include <QDir>
#include <QFile>

using ListCommandsTest = LibraryFixture;
using namespace Command;

static constexpr int kOperaGenre = 32908;

TEST_F(ListCommandsTest, DeleteTakesTheFilesAfterTheQuestion) {
    const QString playing = AddFile("a.mp3");
    AddFile("b.mp3");
    const QString stuck = AddFile("c.mp3");
    const QString list = AddFile("list.m3u", "#EXTM3U\r\n");
    const QString gone = AddFile("gone.mp3");
    Append(m_selection, playing);
    ASSERT_TRUE(QFile::remove(stuck) && QDir().mkpath(stuck + "/in the way"));
    ASSERT_TRUE(QFile::remove(gone));
    m_commands.Run(kDelete);
    EXPECT_EQ(m_prompts.Take(), "") << "nothing is checked";

    m_collection[0]->m_bPlaying = 1;
    m_collection[2]->m_strStatus = "told before";
    Check(m_collection, {0, 2, 3, 4});
    m_prompts.answer = false;
    m_commands.Run(kDelete);
    EXPECT_EQ(m_prompts.Take(), "IDS_CONFIRM_DELETE");
    EXPECT_TRUE(QFile::exists(playing) && m_player.released.isEmpty());

    m_prompts.answer = true;
    m_grid.SetFocusCell({2, 1});
    m_commands.Run(kDelete);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 1})) << "on the track that follows";
    EXPECT_EQ(m_prompts.Take(), "IDS_CONFIRM_DELETE IDS_PROMPT_UNDEL");
    EXPECT_EQ(Rows(), "Mine (1/2) b c* All (0/0)");
    EXPECT_EQ(Names(m_selection), "") << "gone from every list";
    EXPECT_FALSE(QFile::exists(playing) || QFile::exists(list));
    EXPECT_TRUE(QFile::exists(stuck + "/in the way"));
    EXPECT_EQ(m_collection[1]->m_strStatus, u"told before");
    EXPECT_EQ(m_player.released.value(0), playing);
    EXPECT_FALSE(m_enabled.at(kDelete));
}

TEST_F(ListCommandsTest, OnlySomeListsCanLoseTracks) {
    const QString path = m_scratch.Write("Elsewhere/a.mp3", "music");
    const struct {
        CMediaList& list;
        int type;
        int sourceType;
        bool deletes;
        bool keepsFile;
    } rows[] = {{m_all, MEDIA_TYPE_ALL, -1, false, true},
                {m_all, MEDIA_TYPE_CD, -1, false, true},
                {m_selection, MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, false, true},
                {m_playlist, MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_ALL, true, true},
                {m_selection, MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, true, false}};
    m_collection.m_bActive = 0;
    m_all.m_bActive = 1;
    for (const auto& row : rows) {
        row.list.ClearAll();
        g_bSelectionOnly = row.type == MEDIA_TYPE_SELECTION;
        g_bPlaylistOnly = row.type == MEDIA_TYPE_PLAYLIST;
        Append(row.list, path, 1);
        row.list.m_iType = row.type;
        row.list.m_iSourceType = row.sourceType;
        m_commands.Run(kBodyDelete);
        EXPECT_EQ(row.list.GetCount() == 0, row.deletes) << row.type << ' ' << row.sourceType;
        EXPECT_EQ(QFile::exists(path), row.keepsFile) << row.type << ' ' << row.sourceType;
    }
}

TEST_F(ListCommandsTest, GenreGoesIntoTheTags) {
    const QString path = AddFile("a.mp3", ReadFile(MediaFile("mutagen-v23.mp3")));
    Click(m_collection, 0);
    m_commands.Run(kOperaGenre);
    EXPECT_EQ(m_collection[0]->m_strGenre, u"Opera") << "at once";
    AwaitWriter();
    CTrackInfo info;
    ASSERT_EQ(ReadTrackTags(path, info), 0);
    EXPECT_EQ(info.m_strGenre, u"Opera");
    EXPECT_EQ(Text(2, 4), u"Opera");

    const QByteArray music = ReadFile(path);
    const QString namesake = AddFile("A.mp3", music);
    Click(m_collection, 0);
    m_collection.RemoveIf([&path](const CTrackRecord& track) { return track.m_strPath == path; });
    m_commands.Run(kOperaGenre + 1);
    AwaitWriter();
    EXPECT_EQ(ReadFile(namesake), music) << "case tells files apart";

    Append(m_all, m_scratch.Write("x.mp3", "x"));
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
    m_commands.Run(kSelectAll);
    m_commands.Run(kDelete);
    EXPECT_EQ(m_prompts.Take(), "") << "a closed section is no target";
    EXPECT_EQ(Rows(), "Mine (3/3) All (0/0)");
    m_collection.m_bExpanded = 1;
    m_view.FillGrid();
    m_commands.Run(kBodyDeselectAll);
    m_collection.m_bActive = 0;
    m_commands.Run(kSelectAll); // no list is under the cursor
    EXPECT_EQ(Rows(), "Mine (0/3) a b c All (0/0)");
}

TEST_F(ListCommandsTest, SelectionHoldsCopiesOfTheCheckedTracks) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"})
        AddFile(name);
    Check(m_collection, {0, 2});
    m_commands.Run(kViewSelection);
    EXPECT_EQ(Rows(), "a* c*");
    EXPECT_EQ(m_selection.m_iSourceType, MEDIA_TYPE_COLLECTION);
    EXPECT_EQ(m_marked, kViewSelection);
    m_commands.Run(kDeselectAll);
    m_commands.Run(kViewSelection); // it is on already
    EXPECT_EQ(Rows(), "a c");
    EXPECT_EQ(Names(m_collection), "a.mp3* b.mp3 c.mp3*");

    for (const auto& [command, list] :
         {std::pair<int, CMediaList*>{kViewAllMusic, &m_all}, {kViewCollection, &m_collection}}) {
        m_commands.Run(command);
        EXPECT_FALSE(g_bSelectionOnly);
        EXPECT_EQ(m_lists.GetActiveList(), list);
        EXPECT_EQ(m_marked, command);
    }
    m_all.m_bExpanded = 0;
    m_commands.Run(kViewAllMusic);
    EXPECT_EQ(m_marked, kViewAllMusic) << "folded, it is viewed all the same";
    EXPECT_EQ(m_grid.GetFocusCell().row, m_all.m_iTitleRow) << "keys go on from there";
}

TEST_F(ListCommandsTest, RefreshReadsTheFolderAnew) {
    ASSERT_TRUE(QFile::remove(AddFile("a.mp3")));
    m_scratch.Write("Mine/new.mp3", "music");
    m_commands.Run(kTitleRefresh);
    EXPECT_EQ(m_grid.GetRowCount(), 3) << "no rows of what is no longer there";
    m_commands.Run(kTitleRefresh); // the first one is still at it
    EXPECT_EQ(m_player.released, QStringList{"Mine"});
    AwaitLists();
    m_commands.Run(kTitleRefresh);
    m_status.CancelOperations();
    EXPECT_EQ(m_status.running, 0) << "a cancel ends it at once";
    m_commands.Run(kTitleRefresh);
    AwaitLists();
    EXPECT_EQ(Names(m_collection), "new.mp3");
}

TEST_F(ListCommandsTest, AListMayGoWhileItIsScannedEditedAndAskedAbout) {
    AddFile("a.mp3");
    for (int i = 0; i < 100; ++i)
        m_scratch.Write(QStringLiteral("Going/%1.mp3").arg(i), "x");
    m_grid.show();
    for (unsigned what = 0; what < 8; ++what) { // bits: 1 scanned, 2 edited, 4 asked about
        CMediaList& list = m_lists.Add("Going", MEDIA_TYPE_COLLECTION, 1);
        m_lists.SetLocation(list, m_scratch.File("Going"));
        m_filling.Fill(list);
        EXPECT_TRUE(
            RunUntil([&] { return list.GetCount() > 0 && (what & 1 || !m_status.running); }));
        m_view.FillGrid();
        Click(list, 0);
        Check(list, {0});
        if (what & 2)
            Type({list[0]->m_iRow, 1}, "typed");
        m_prompts.whileAsked = [this, id = list.m_iId] { m_lists.Remove(id); };
        what & 4 ? m_commands.Run(kDelete) : m_prompts.whileAsked();
        AwaitLists();
        AwaitWriter();
        EXPECT_FALSE(m_grid.IsEditing()) << what;
        EXPECT_EQ(Rows(), "Mine (0/1) a All (0/0)") << what;
    }
}
