#include "library/TrackView.h"

#include "base/Language.h"
#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCtrl.h"
#include "library/MediaLists.h"
#include "library/TrackColumns.h"
#include "platform/Path.h"
#include "tests/fixtures/PaintedRows.h"
#include "tests/fixtures/Printers.h"

#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

namespace {

/// Rows: 0 header, 1 title of the collection, 2-4 its tracks, 5 title of All Music, 6-7 its tracks.
class TrackViewTest : public ::testing::Test {
protected:
    TrackViewTest() {
        SetLanguageFile(QString()); // texts are their own keys
        m_grid.SetNotifyHandler(
            [this](GridNotification& notification) { m_view.OnNotify(notification); });
        m_playlist.m_bVisible = 0;
        for (const char* title : {"beta", "gamma", "alpha"})
            AddTrack(m_collection, title, "/c/");
        for (const char* title : {"two", "one"})
            AddTrack(m_all, title, "/a/");
        m_view.SetPlayHandler([this](const CMediaList& list, int index) {
            m_played += list[index]->m_strTitle.toStdString() + ' ';
        });
        m_view.SetMenuHandler([this](CCellID, const CMediaList* list, int index) {
            m_menu = list ? list->m_strName.toStdString() + ' ' + std::to_string(index) : "header";
        });
        m_view.FillGrid();
        m_grid.resize(800, 400);
    }
    ~TrackViewTest() override { g_bPlaylistOnly = g_bSelectionOnly = 0; }

    static void AddTrack(CMediaList& list, const char* title, const char* folder) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strTitle = QString::fromLatin1(title);
        track->m_strPath = QString::fromLatin1(folder) + track->m_strTitle + QStringLiteral(".mp3");
        list.Append(std::move(track));
    }

    [[nodiscard]] QString Text(int row, int col) const {
        return m_grid.GetCell(row, col)->GetText();
    }
    [[nodiscard]] QString TitleText(int row) const {
        return Text(row, m_grid.GetColumnCount() - 1);
    }
    [[nodiscard]] bool IsChecked(int row) const {
        return dynamic_cast<const CGridCellCheck&>(*m_grid.GetCell(row, 0)).GetCheck();
    }
    [[nodiscard]] bool IsSelected(int row) const { return m_grid.GetCell(row, 1)->IsSelected(); }
    [[nodiscard]] QString Titles(int first, int count) const {
        QStringList titles;
        for (int row = first; row < first + count; ++row)
            titles += Text(row, 1);
        return titles.join(u' ');
    }
    void Click(int row, int col, Qt::KeyboardModifiers keys = {},
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(m_grid.viewport(), button, keys, m_grid.GetCellRect({row, col}).center());
    }
    void RightClick(int row, int col) { Click(row, col, {}, Qt::RightButton); }
    void DoubleClick(int row) {
        Click(row, 1);
        QTest::mouseDClick(m_grid.viewport(), Qt::LeftButton, {},
                           m_grid.GetCellRect({row, 1}).center());
    }
    /// The selected rows, such as "2 3 6".
    [[nodiscard]] std::string SelectedRows() const {
        QStringList rows;
        for (int row = 0; row < m_grid.GetRowCount(); ++row)
            if (IsSelected(row))
                rows += QString::number(row);
        return rows.join(u' ').toStdString();
    }

    CMediaLists m_lists;
    CMediaList& m_playlist = m_lists.Add(QStringLiteral("Playlist"), MEDIA_TYPE_PLAYLIST, 1);
    CMediaList& m_collection = m_lists.Add(QStringLiteral("Mine"), MEDIA_TYPE_COLLECTION, 1);
    CMediaList& m_all = m_lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CGridCtrl m_grid;
    CTrackView m_view{m_lists, m_grid};
    std::string m_played; ///< titles of the tracks that were to be played
    std::string m_menu;   ///< what the last menu was for
};

} // namespace

TEST_F(TrackViewTest, ListsBecomeSections) {
    EXPECT_EQ(m_grid.GetRowCount(), 8);
    EXPECT_EQ(m_grid.GetColumnCount(), 9);
    EXPECT_EQ(Text(0, 1), QStringLiteral("IDS_FEILD_TITLE"));
    EXPECT_EQ(TitleText(1), QStringLiteral("Mine (0/3)"));
    EXPECT_EQ(Titles(2, 3), QStringLiteral("beta gamma alpha"));
    EXPECT_EQ(m_all[1]->m_iRow, 7);
    EXPECT_TRUE(m_grid.GetCell(1, 0)->IsReadOnly());
    EXPECT_EQ(m_grid.GetCell(2, 1)->GetBackClr(), m_collection.m_crRowEven);
    EXPECT_EQ(m_grid.GetCell(3, 1)->GetBackClr(), m_collection.m_crRowOdd);

    m_collection[0]->m_strPath = QStringLiteral("/c/list.M3U");
    m_collection[0]->m_strTitle = Path::FromBytes("odd \xE9");
    m_collection[1]->m_bPlaying = 1;
    m_view.SetColumns(0x10000);
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetColumnCount(), 3) << "the title can't go";
    EXPECT_EQ(m_grid.GetCell(2, 1)->GetImage(), 5);
    EXPECT_EQ(Text(2, 1), QStringLiteral(u"odd \uFFFD"));
    EXPECT_EQ(m_grid.GetCell(3, 2)->GetBackClr(), m_collection.m_crRowPlaying);
    EXPECT_EQ(m_view.GetColumns(), 0x10001u);
}

TEST_F(TrackViewTest, ClicksCheckSelectAndActivate) {
    Click(3, 0);
    EXPECT_EQ(m_collection[1]->m_bChecked, 1);
    EXPECT_TRUE(IsChecked(3));
    EXPECT_EQ(TitleText(1), QStringLiteral("Mine (1/3)"));
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_grid.GetCell(1, 0)->GetBackClr(), m_collection.m_crTitleActive);
    EXPECT_EQ(m_view.GetCurrentTrack().index, 1);

    Click(6, 2);
    EXPECT_EQ(m_all[0]->m_bChecked, 0) << "only the first column checks";
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(m_view.GetCurrentTrack().listId, m_all.m_iId);
    EXPECT_EQ(SelectedRows(), "6");
    EXPECT_EQ(m_grid.GetCell(1, 0)->GetBackClr(), m_collection.m_crTitle);

    Click(1, 2);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    EXPECT_EQ(m_all[0]->m_bRowSelected, 0);
    Click(3, 0);
    EXPECT_FALSE(IsChecked(3));
}

TEST_F(TrackViewTest, ACheckPaintsItsRowAndItsTitle) {
    m_grid.show();
    Click(3, 0);
    PaintedRows painted(m_grid);
    Click(3, 0);
    EXPECT_EQ(painted.Take(), (std::vector<int>{1, 3}));
    m_view.OnKey(Qt::Key_Space, {});
    EXPECT_EQ(painted.Take(), (std::vector<int>{1, 3}));
    EXPECT_TRUE(IsChecked(3));
}

TEST_F(TrackViewTest, SeveralRowsStaySelected) {
    Click(3, 1);
    Click(7, 1, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), "3 4 6 7") << "the title between the lists left out";
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    Click(2, 1, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), "2 3");
    Click(4, 1);
    Click(6, 1, Qt::ControlModifier);
    Click(2, 1, Qt::ControlModifier);
    EXPECT_EQ(SelectedRows(), "2 4 6");
    Click(5, 1);
    EXPECT_EQ(SelectedRows(), "5");
}

TEST_F(TrackViewTest, RightClickChecksAndSelects) {
    Click(2, 1);
    Click(3, 1, Qt::ShiftModifier);
    RightClick(2, 3);
    EXPECT_EQ(SelectedRows(), "2 3") << "a click into the selection leaves it";
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{3, 1}));
    EXPECT_TRUE(IsChecked(2));
    EXPECT_FALSE(IsChecked(3));

    RightClick(7, 0);
    EXPECT_EQ(SelectedRows(), "7");
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{7, 0}));
    EXPECT_EQ(m_menu, "All 1");
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    RightClick(7, 0);
    EXPECT_TRUE(IsChecked(7)) << "marked, not turned";

    RightClick(1, 2);
    EXPECT_EQ(m_menu, "Mine -1");
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
    AddTrack(m_all, "without a row yet", "/a/");
    RightClick(0, 1);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection) << "the header is no track";
    EXPECT_EQ(m_menu, "header");
}

TEST_F(TrackViewTest, HeaderSortsTheActiveListAlone) {
    Click(0, 1);
    EXPECT_EQ(Titles(2, 3), QStringLiteral("beta gamma alpha")) << "no list is active";
    Click(5, 1);
    Click(0, 1);
    EXPECT_EQ(Titles(6, 2), QStringLiteral("one two"));
    EXPECT_EQ(Titles(2, 3), QStringLiteral("beta gamma alpha"));
    EXPECT_EQ(m_all.m_bModified, 1);
    EXPECT_EQ(m_grid.GetSortColumn(), 1);
    EXPECT_TRUE(m_grid.IsSortAscending());
    Click(0, 1);
    EXPECT_EQ(Titles(6, 2), QStringLiteral("two one"));
    EXPECT_FALSE(m_grid.IsSortAscending());
    Click(2, 1); // in the other list, which no click has sorted
    EXPECT_EQ(m_grid.GetSortColumn(), -1);
    Click(6, 1);
    EXPECT_EQ(m_grid.GetSortColumn(), 1);
    AddTrack(m_all, "three", "/a/");
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetSortColumn(), -1) << "sorted no more";

    Click(6, 0);
    Click(0, 0);
    EXPECT_EQ(Titles(6, 3), QStringLiteral("one three two")) << "ascending: unchecked first";
    Click(0, 0);
    EXPECT_EQ(Titles(6, 3), QStringLiteral("two one three"));
    EXPECT_EQ(SelectedRows(), "6") << "a rebuild selects the row again";
}

TEST_F(TrackViewTest, KeysChooseTheCurrentTrackAndASortKeepsIt) {
    Click(2, 1);
    QTest::keyClick(&m_grid, Qt::Key_Down);
    EXPECT_EQ(m_view.GetCurrentTrack().index, 1);
    EXPECT_TRUE(m_collection[1]->m_bRowSelected && !m_collection[0]->m_bRowSelected);
    EXPECT_FALSE(m_collection[1]->m_bChecked);
    Click(0, 1);
    EXPECT_EQ(m_collection[m_view.GetCurrentTrack().index]->m_strTitle, QStringLiteral("gamma"));
    m_grid.SetFocusCell({4, 1});
    QTest::keyClick(&m_grid, Qt::Key_Down);
    QTest::keyClick(&m_grid, Qt::Key_Down);
    EXPECT_EQ(m_view.GetCurrentTrack().listId, m_all.m_iId);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
}

TEST_F(TrackViewTest, FocusGoesWithItsRow) {
    Click(2, 3);
    Click(0, 1);
    EXPECT_EQ(Titles(2, 3), QStringLiteral("alpha beta gamma"));
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{3, 3}));
    QTest::keyClick(&m_grid, Qt::Key_Down);
    Click(0, 1);
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 3})) << "where the keyboard left it";

    m_grid.SetFocusCell({6, 2});
    m_collection.m_bExpanded = 0;
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{3, 2}));
    m_collection.m_bExpanded = 1;
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{6, 2})) << "not the hidden track that had row 3";
    m_grid.SetFocusCell({5, 2});
    m_collection.ClearAll();
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetFocusCell(), (CCellID{2, 2})) << "a title";
    m_grid.SetFocusCell({3, 2});
    m_all.m_bExpanded = 0;
    m_view.FillGrid();
    EXPECT_FALSE(m_grid.GetFocusCell().IsValid());
}

TEST_F(TrackViewTest, DoubleClickFoldsASectionInPlace) {
    m_grid.resize(300, 100);
    m_grid.show();
    m_grid.verticalScrollBar()->setValue(25);
    Click(5, 1); // which brings all of it into sight
    const int scrolled = m_grid.verticalScrollBar()->value();
    EXPECT_GE(scrolled, 25);
    DoubleClick(5);
    EXPECT_EQ(m_grid.GetRowCount(), 6);
    EXPECT_EQ(m_grid.verticalScrollBar()->value(), scrolled);
    m_grid.verticalScrollBar()->setValue(0);
    DoubleClick(1);
    EXPECT_EQ(m_grid.GetRowCount(), 3);
    DoubleClick(2);
    EXPECT_EQ(m_grid.GetRowCount(), 5);
    m_all.ClearAll();
    m_view.FillGrid();
    DoubleClick(2);
    EXPECT_EQ(m_all.m_bExpanded, 1) << "an empty section stays as it is";
}

TEST_F(TrackViewTest, DoubleClickPlaysATrack) {
    const CGridCellBase* cell = m_grid.GetCell(7, 2);
    DoubleClick(2);
    DoubleClick(7);
    EXPECT_EQ(m_played, "beta one ");
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(m_grid.GetCell(7, 2), cell) << "no row is built anew";

    m_collection[1]->m_strPath = QStringLiteral("/c/list.m3u");
    DoubleClick(3);
    m_collection.m_iType = MEDIA_TYPE_PHONE;
    DoubleClick(4);
    EXPECT_EQ(m_played, "beta one gamma ") << "a playlist too, but nothing on a phone";
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
}

TEST_F(TrackViewTest, TitleOfTheListThatPlaysHasItsOwnPicture) {
    const auto images = [&] {
        const int last = m_grid.GetColumnCount() - 1;
        return std::pair(m_grid.GetCell(1, last)->GetImage(), m_grid.GetCell(5, last)->GetImage());
    };
    m_view.ShowPlayingList(m_all.m_iId);
    EXPECT_EQ(images(), std::pair(1, 7));
    m_view.ShowPlayingList(m_collection.m_iId);
    EXPECT_EQ(images(), std::pair(7, 2));
    m_view.FillGrid();
    EXPECT_EQ(images(), std::pair(7, 2));
    m_view.ShowPlayingList(-1);
    EXPECT_EQ(images(), std::pair(1, 2));
}

TEST_F(TrackViewTest, SpaceChecksTheSelectionAndEnterDoesWhatADoubleClickDoes) {
    const auto checks = [&] {
        return QStringLiteral("%1%2%3").arg(IsChecked(2)).arg(IsChecked(3)).arg(IsChecked(4));
    };
    EXPECT_FALSE(m_view.OnKey(Qt::Key_X, {}));
    EXPECT_TRUE(m_view.OnKey(Qt::Key_Enter, {})); // no row has the focus
    Click(3, 0);
    Click(2, 1);
    Click(3, 1, Qt::ShiftModifier);
    for (const auto* after : {u"110", u"000", u"110"}) { // the first finds one of them checked
        EXPECT_TRUE(m_view.OnKey(Qt::Key_Space, {}));
        EXPECT_EQ(checks(), after);
    }
    EXPECT_EQ(TitleText(1), QStringLiteral("Mine (2/3)"));
    m_view.OnKey(Qt::Key_Return, {});
    EXPECT_EQ(m_played, "gamma ");
    for (const auto* sorted : {u"alpha beta gamma", u"gamma beta alpha"}) {
        m_view.OnKey(Qt::Key_Return, Qt::ShiftModifier); // the focus is in a title
        EXPECT_EQ(Titles(2, 3), sorted);
    }
    Click(1, 1);
    m_view.OnKey(Qt::Key_Return, {});
    EXPECT_EQ(m_grid.GetRowCount(), 5);
    m_view.OnKey(Qt::Key_Space, {}); // of a folded list there is nothing to check
    EXPECT_EQ(TitleText(1), QStringLiteral("Mine (2/3)"));
}

TEST_F(TrackViewTest, OneRowIsWrittenAnew) {
    m_all[1]->m_strArtist = QStringLiteral("New");
    m_view.RefreshRows(1, &m_all, 1);
    EXPECT_EQ(Text(7, 2), QStringLiteral("New"));
    m_view.SetTrackStatus(QStringLiteral("/c/gamma.mp3"), QStringLiteral("Copying"));
    EXPECT_EQ(Text(3, 8), QStringLiteral("Copying"));
    EXPECT_TRUE(Text(6, 8).isEmpty());

    // What is not on screen is passed over.
    m_all.m_bExpanded = 0;
    m_view.FillGrid();
    for (const int index : {0, 2, -2})
        m_view.RefreshRows(1, &m_all, index);
    m_view.RefreshRows(1, &m_playlist, -1);
    m_view.RefreshRows(1, nullptr, 0);
    EXPECT_EQ(TitleText(5), QStringLiteral("All (0/2)"));
}

TEST_F(TrackViewTest, RowsStayRightWhileAScanAppends) {
    AddTrack(m_collection, "new", "/c/");
    Click(5, 2);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    m_view.RefreshRows(1, &m_collection, 3);
    EXPECT_EQ(TitleText(5), QStringLiteral("All (0/2)")) << "the new track has no row yet";
    EXPECT_EQ(Titles(6, 2), QStringLiteral("two one"));
}

TEST_F(TrackViewTest, ExclusiveViewHasNoTitles) {
    AddTrack(m_playlist, "song", "/p/");
    m_playlist.m_bExpanded = 0;
    g_bPlaylistOnly = 1;
    m_view.FillGrid();
    EXPECT_EQ(m_grid.GetRowCount(), 2);
    Click(1, 0);
    EXPECT_TRUE(IsChecked(1));
    m_view.RefreshRows(1, &m_playlist, -1);
    EXPECT_EQ(Titles(1, 1), QStringLiteral("song")) << "there is no title to write";
}

TEST_F(TrackViewTest, ActivatedListComesIntoSight) {
    for (int i = 0; i < 50; ++i) {
        AddTrack(m_collection, "more", "/c/");
        AddTrack(m_all, "more", "/a/");
    }
    m_grid.show();
    m_view.FillGrid();
    m_view.ActivateList(m_all.m_iId);
    m_view.ScrollToList(m_all.m_iId);
    EXPECT_EQ(m_lists.GetActiveList(), &m_all);
    EXPECT_EQ(m_grid.GetCellRect({m_all.m_iTitleRow, 0}).top(),
              m_grid.GetCellRect({0, 0}).bottom() + 1);

    g_bSelectionOnly = 1;
    m_view.ActivateList(m_collection.m_iId);
    EXPECT_EQ(g_bSelectionOnly, 0);
    EXPECT_EQ(m_lists.GetActiveList(), &m_collection);
}
