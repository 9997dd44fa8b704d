#include "library/TrackColumns.h"
#include "platform/Path.h"
#include "tests/fixtures/PaintedRows.h"
#include "tests/library/LibraryFixture.h"

/// Rows: 0 header, 1 title of the collection, 2-4 its tracks, 5 title of All Music, 6-7 its tracks.
struct TrackViewTest : LibraryFixture {
    TrackViewTest() {
        m_collection.m_bActive = 0;
        for (const char* title : {"beta", "gamma", "alpha"})
            Add(m_collection, title);
        for (const char* title : {"two", "one"})
            Add(m_all, title);
        m_view.FillGrid();
    }

    static void Add(CMediaList& list, const char* title) {
        Append(list, QStringLiteral("/%1/%2.mp3").arg(list.m_strName, QLatin1String(title)));
    }
    void DoubleClick(int row) {
        Click(row, 1);
        QTest::mouseDClick(m_grid.viewport(), Qt::LeftButton, {},
                           m_grid.GetCellRect({row, 1}).center());
    }
    [[nodiscard]] COLORREF Back(int row, int col = 1) const {
        return m_grid.GetCell(row, col)->GetBackClr();
    }
    [[nodiscard]] int TopRow() const {
        return m_grid.GetCellFromPt(m_grid.GetGeometry().Body().topLeft(), false).row;
    }

    QString m_played; ///< titles of the tracks that were to be played
    const CListening m_playing = m_view.OnPlay(
        [this](const CMediaList& list, int index) { m_played += list[index]->m_strTitle + u' '; });
    std::string m_menu; ///< what the last menu was for
    const CListening m_menus = m_view.OnMenu([this](CCellID, const CMediaList* list, int index) {
        m_menu = list ? list->m_strName.toStdString() + ' ' + std::to_string(index) : "header";
    });
};

TEST_F(TrackViewTest, ListsBecomeSections) {
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha All (0/2) two one");
    EXPECT_EQ(m_grid.GetColumnCount(), 9);
    EXPECT_EQ(Text(0, 1), u"IDS_FEILD_TITLE");
    EXPECT_EQ(m_all[1]->m_iRow, 7);
    EXPECT_TRUE(m_grid.GetCell(1, 0)->IsReadOnly());

    m_collection[0]->m_strPath = "/c/list.M3U";
    m_collection[0]->m_strTitle = Path::FromBytes("odd \xE9");
    m_collection[1]->m_bPlaying = 1;
    m_view.SetColumns(0x10000);
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetColumnCount(), 3) << "the title can't go";
    EXPECT_EQ(m_grid.GetCell(2, 1)->GetImage(), 5);
    EXPECT_EQ(Text(2, 1), u"odd \uFFFD");
    EXPECT_EQ(Back(3, 2), m_collection.m_crRowPlaying);
    EXPECT_EQ(m_view.GetColumns(), 0x10001u);
}

TEST_F(TrackViewTest, ClicksCheckSelectAndActivate) {
    Click(3, 0);
    EXPECT_EQ(Rows(), "Mine (1/3) beta [gamma*] alpha All (0/2) two one");
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(Back(1, 0), m_collection.m_crTitleActive);
    EXPECT_EQ(m_view.GetCurrentTrack(), (TrackPlace{m_collection.m_iId, 1}));
    Click(6, 2); // only the first column checks
    EXPECT_EQ(Rows(), "Mine (1/3) beta gamma* alpha All (0/2) [two] one");
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(m_view.GetCurrentTrack(), (TrackPlace{m_all.m_iId, 0}));
    EXPECT_EQ(Back(1, 0), m_collection.m_crTitle);
    Click(1, 2);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_all[0]->m_bRowSelected, 0);

    m_grid.show();
    Click(3, 0);
    PaintedRows painted(m_grid);
    Click(3, 0);
    EXPECT_EQ(painted.Take(), (std::vector<int>{1, 3}));
    m_view.OnKey(Qt::Key_Space, {});
    EXPECT_EQ(painted.Take(), (std::vector<int>{1, 3}));
    EXPECT_FALSE(m_collection[1]->m_bChecked);
}

TEST_F(TrackViewTest, SeveralRowsStaySelected) {
    Click(3, 1);
    Click(7, 1, Qt::ShiftModifier); // leaves the title between the lists out
    EXPECT_EQ(Rows(), "Mine (0/3) beta [gamma] [alpha] All (0/2) [two] [one]");
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    Click(2, 1, Qt::ShiftModifier);
    EXPECT_EQ(Rows(), "Mine (0/3) [beta] [gamma] alpha All (0/2) two one");
    Click(4, 1);
    Click(6, 1, Qt::ControlModifier);
    Click(2, 1, Qt::ControlModifier);
    EXPECT_EQ(Rows(), "Mine (0/3) [beta] gamma [alpha] All (0/2) [two] one");
    Click(5, 1);
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha [All (0/2)] two one");
}

TEST_F(TrackViewTest, RightClickChecksAndSelects) {
    Click(2, 1);
    Click(3, 1, Qt::ShiftModifier);
    Click(2, 3, {}, Qt::RightButton); // into the selection, which stays
    EXPECT_EQ(Rows(), "Mine (1/3) [beta*] [gamma] alpha All (0/2) two one");
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{3, 1}));
    Click(7, 0, {}, Qt::RightButton);
    Click(7, 0, {}, Qt::RightButton); // marked, not turned
    EXPECT_EQ(Rows(), "Mine (1/3) beta* gamma alpha All (1/2) two [one*]");
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{7, 0}));
    EXPECT_EQ(m_menu, "All 1");
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    Click(1, 2, {}, Qt::RightButton);
    EXPECT_EQ(m_menu, "Mine -1");
    Add(m_all, "without a row yet");
    Click(0, 1, {}, Qt::RightButton);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection) << "the header is no track";
    EXPECT_EQ(m_menu, "header");
}

TEST_F(TrackViewTest, HeaderSortsTheActiveListAlone) {
    Click(0, 1); // while no list is active
    Click(5, 1);
    Click(0, 1);
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha All (0/2) one two");
    EXPECT_EQ(m_all.m_bModified, 1);
    EXPECT_EQ(m_grid.GetSortColumn(), 1);
    EXPECT_TRUE(m_grid.IsSortAscending());
    Click(0, 1);
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha All (0/2) two one");
    EXPECT_FALSE(m_grid.IsSortAscending());
    Click(2, 1); // in the other list, which no click has sorted
    EXPECT_EQ(m_grid.GetSortColumn(), -1);
    Click(6, 1);
    EXPECT_EQ(m_grid.GetSortColumn(), 1);
    Add(m_all, "three");
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetSortColumn(), -1) << "sorted no more";

    Click(6, 0);
    Click(0, 0); // ascending: unchecked first
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha All (1/3) one three [two*]");
    Click(0, 0);
    EXPECT_EQ(Rows(), "Mine (0/3) beta gamma alpha All (1/3) [two*] one three");
}

TEST_F(TrackViewTest, KeysChooseTheCurrentTrackAndFocusGoesWithItsRow) {
    Click(2, 3);
    Press(Qt::Key_Down);
    EXPECT_EQ(Rows(), "Mine (0/3) beta [gamma] alpha All (0/2) two one");
    EXPECT_EQ(m_view.GetCurrentTrack(), (TrackPlace{m_collection.m_iId, 1}));
    EXPECT_TRUE(m_collection[1]->m_bRowSelected && !m_collection[0]->m_bRowSelected);
    Click(0, 1);
    EXPECT_EQ(m_view.GetCurrentTrack(), (TrackPlace{m_collection.m_iId, 2}));
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{4, 3}));
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    Click(0, 1);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{4, 3})) << "where the keyboard left it";
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_view.GetCurrentTrack(), (TrackPlace{m_all.m_iId, 0}));
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);

    const auto refilled = [this] {
        m_view.FillGrid();
        return m_grid.GetFocusCell();
    };
    m_collection.m_bExpanded = 0;
    EXPECT_EQ(refilled(), (CCellID{3, 3}));
    m_collection.m_bExpanded = 1;
    EXPECT_EQ(refilled(), (CCellID{6, 3})) << "not the hidden track that had row 3";
    m_grid.SetFocusCell({5, 2});
    m_collection.ClearAll();
    EXPECT_EQ(refilled(), (CCellID{2, 2})) << "a title";
    m_grid.SetFocusCell({3, 2});
    m_all.m_bExpanded = 0;
    EXPECT_FALSE(refilled().IsValid());
}

TEST_F(TrackViewTest, DoubleClickFoldsASectionInPlace) {
    m_grid.resize(300, 100);
    m_grid.show();
    m_grid.verticalScrollBar()->setValue(25);
    Click(5, 1); // which brings all of it into sight
    const int scrolled = m_grid.verticalScrollBar()->value();
    EXPECT_GE(scrolled, 25);
    DoubleClick(5);
    EXPECT_EQ(m_grid.verticalScrollBar()->value(), scrolled);
    m_grid.verticalScrollBar()->setValue(0);
    DoubleClick(1);
    EXPECT_EQ(Rows(), "[Mine (0/3)] All (0/2)");
    DoubleClick(2);
    EXPECT_EQ(Rows(), "Mine (0/3) [All (0/2)] two one");
    m_all.ClearAll();
    m_view.FillGrid();
    DoubleClick(2);
    EXPECT_EQ(m_all.m_bExpanded, 1) << "an empty section stays as it is";
}

TEST_F(TrackViewTest, DoubleClickPlaysATrack) {
    const CGridCellBase* cell = m_grid.GetCell(7, 2);
    for (const int row : {2, 7, 3})
        DoubleClick(row);
    m_collection.m_iType = MEDIA_TYPE_PHONE;
    DoubleClick(4);
    EXPECT_EQ(m_played, u"beta one gamma ") << "nothing on a phone";
    EXPECT_EQ(m_grid.GetCell(7, 2), cell) << "no row is built anew";
}

TEST_F(TrackViewTest, SpaceChecksTheSelectionAndEnterDoesWhatADoubleClickDoes) {
    EXPECT_FALSE(m_view.OnKey(Qt::Key_X, {}));
    EXPECT_TRUE(m_view.OnKey(Qt::Key_Enter, {})); // no row has the focus
    Click(3, 0);
    Click(2, 1);
    Click(3, 1, Qt::ShiftModifier);
    EXPECT_TRUE(m_view.OnKey(Qt::Key_Space, {}));
    EXPECT_EQ(Rows(), "Mine (2/3) [beta*] [gamma*] alpha All (0/2) two one");
    m_view.OnKey(Qt::Key_Space, {});
    EXPECT_EQ(Rows(), "Mine (0/3) [beta] [gamma] alpha All (0/2) two one");
    m_view.OnKey(Qt::Key_Return, {});
    EXPECT_EQ(m_played, u"gamma ");
    m_view.OnKey(Qt::Key_Return, Qt::ShiftModifier); // sorts: the focus is in a title
    EXPECT_EQ(Rows(), "Mine (0/3) alpha [beta] [gamma] All (0/2) two one");
    Click(2, 0);
    Click(1, 1);
    m_view.OnKey(Qt::Key_Return, {});
    m_view.OnKey(Qt::Key_Space, {}); // of a folded list there is nothing to check
    EXPECT_EQ(Rows(), "[Mine (1/3)] All (0/2) two one");
}

TEST_F(TrackViewTest, OneRowIsWrittenAnew) {
    m_all[1]->m_strArtist = "New";
    m_view.RefreshRows(1, &m_all, 1);
    EXPECT_EQ(Text(7, 2), u"New");
    m_view.SetTrackStatus("/Mine/gamma.mp3", "Copying");
    EXPECT_EQ(Text(3, 8) + Text(6, 8), u"Copying");
    const auto images = [&] {
        return std::pair(m_grid.GetCell(1, 8)->GetImage(), m_grid.GetCell(5, 8)->GetImage());
    };
    m_view.ShowPlayingList(m_all.m_iId);
    m_view.ShowPlayingList(m_collection.m_iId);
    EXPECT_EQ(images(), std::pair(7, 2));
    m_view.ShowPlayingList(-1);
    EXPECT_EQ(images(), std::pair(1, 2));

    // What is not on screen is passed over.
    Add(m_collection, "without a row yet");
    m_view.RefreshRows(1, &m_collection, 3);
    Click(5, 2);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    m_all.m_bExpanded = 0;
    m_view.FillGrid();
    for (const int index : {0, 2, -2})
        m_view.RefreshRows(1, &m_all, index);
    m_view.RefreshRows(1, &m_playlist, -1);
    m_view.RefreshRows(1, nullptr, 0);
    EXPECT_EQ(Text(6, 8), u"All (0/2)");
}

TEST_F(TrackViewTest, RowsChangeByRange) {
    const auto remove = [this](const char* part) {
        m_view.OnTracksRemoved(m_collection, m_collection.RemoveIf([&](const CTrackRecord& track) {
            return track.m_strTitle.contains(QLatin1String(part));
        }));
    };
    m_grid.show();
    m_grid.SetColumnWidth(2, 77);
    Click(7, 1);
    const int wide = m_grid.GetColumnWidth(1);
    const std::string text(60, 'm');
    Add(m_collection, text.c_str());
    Add(m_collection, "last");
    m_view.OnTracksAppended(m_collection, 3);
    EXPECT_EQ(Rows(), "Mine (0/5) beta gamma alpha " + text + " last All (0/2) two [one]");
    EXPECT_GT(m_grid.GetColumnWidth(1), wide);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{9, 1}));
    remove("mmm");
    m_view.FitColumns();
    EXPECT_EQ(m_grid.GetColumnWidth(1), wide);
    EXPECT_EQ(m_grid.GetColumnWidth(2), 77);

    Click(3, 2);
    remove("gamma");
    EXPECT_EQ(Rows(), "Mine (0/3) beta alpha last All (0/2) two one");
    for (int row = 2; row < 5; ++row)
        EXPECT_EQ(Back(row), row % 2 ? m_collection.m_crRowOdd : m_collection.m_crRowEven);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{3, 2})) << "on the next track";
    EXPECT_EQ(m_all[1]->m_iRow, 7);
    m_view.OnTracksAppended(m_playlist, 0); // not on screen

    for (int i = 0; i < 200; ++i)
        Add(m_collection, i % 2 ? "odd" : "even");
    m_view.OnTracksAppended(m_collection, 3);
    m_grid.EnsureVisible(190, 0);
    const int top = TopRow();
    m_grid.SetFocusCell({m_all.m_iTitleRow - 1, 1}); // an odd one
    m_grid.SelectRow(m_all.m_iTitleRow - 2, true);
    remove("even"); // many runs
    EXPECT_EQ(m_grid.GetRowCount(), 108);
    EXPECT_EQ(m_grid.GetFocusCell().row, 104);
    EXPECT_NEAR(TopRow(), 5 + (top - 5) / 2, 1);
    remove("odd");
    EXPECT_EQ(Rows(), "Mine (0/3) beta alpha last All (0/2) two one");
}

TEST_F(TrackViewTest, SectionsComeGoAndAreRefilled) {
    Click(7, 1);
    m_collection.ClearAll();
    Add(m_collection, "new");
    m_view.RefillSection(m_collection);
    CMediaList& phone = m_lists.Add("Phone", MEDIA_TYPE_PHONE, 1);
    Add(phone, "x");
    m_view.RefillSection(phone);
    Add(m_playlist, "song");
    m_playlist.m_bVisible = 1;
    m_view.RefillSection(m_playlist); // the first list
    EXPECT_EQ(Rows(), "Playlist (0/1) song Mine (0/1) new All (0/2) two [one] Phone (0/1) x");
    EXPECT_EQ(phone[0]->m_iRow, 9);
    m_playlist.m_bVisible = 0;
    m_view.RefillSection(m_playlist);
    EXPECT_EQ(m_playlist.m_iTitleRow, -1);
    EXPECT_EQ(phone.m_iTitleRow, 6);
    Click(7, 1);
    m_lists.Remove(phone.m_iId);
    EXPECT_EQ(Rows(), "Mine (0/1) new All (0/2) two one");
    EXPECT_EQ(m_view.GetCurrentTrack(), TrackPlace{});

    m_playlist.m_bExpanded = 0;
    g_bPlaylistOnly = 1;
    m_view.FillGrid();
    EXPECT_EQ(Rows(), "song");
    Click(1, 0);
    m_view.RefreshRows(1, &m_playlist, -1); // there is no title to write
    EXPECT_EQ(Rows(), "[song*]");
    m_playlist.ClearAll();
    Add(m_playlist, "only");
    m_view.RefillSection(m_playlist);
    EXPECT_EQ(Rows(), "only");
}

TEST_F(TrackViewTest, ActivatedListComesIntoSight) {
    for (int i = 0; i < 50; ++i) {
        Add(m_collection, "more");
        Add(m_all, "more");
    }
    m_grid.show();
    m_view.FillGrid();
    m_view.ActivateList(m_all.m_iId);
    m_view.ScrollToList(m_all.m_iId);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(TopRow(), m_all.m_iTitleRow);

    g_bSelectionOnly = 1;
    m_view.ActivateList(m_collection.m_iId);
    EXPECT_EQ(g_bSelectionOnly, 0);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
}
