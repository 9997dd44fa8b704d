#include "tests/grid/GridInputFixture.h"

struct GridRows : GridInput {
    /// Rows before row `first`, or for a `count` below 0 those from there on.
    bool Shift(int first, int count) {
        return count > 0 ? m_grid->InsertRows(first, count) : m_grid->DeleteRows(first, -count);
    }
};

TEST_F(GridRows, WhatIsInSightStaysWhereItIs) {
    // The shift, and the row at the head of the view before and after it.
    const int cases[][4] = {{20, 10, 50, 60},  {50, 10, 50, 60},  {51, 10, 50, 50},
                            {200, 10, 50, 50}, {20, -10, 50, 40}, {45, -10, 50, 45},
                            {51, -10, 50, 50}, {1, 10, 1, 11}};
    for (const auto& [first, count, top, topAfter] : cases) {
        SCOPED_TRACE(std::to_string(first) + " " + std::to_string(count));
        Renew();
        m_grid->SetColumnWidth(0, 33);
        m_grid->SetRowHeight(top, 44);
        m_grid->verticalScrollBar()->setValue((top - 1) * m_grid->GetRowHeight(2));
        ASSERT_TRUE(Shift(first, count));
        EXPECT_EQ(m_grid->GetRowCount(), 200 + count);
        EXPECT_EQ(m_grid->verticalScrollBar()->value(), (topAfter - 1) * m_grid->GetRowHeight(2));
        const bool gone = first == 45;
        EXPECT_EQ(TextAt(*m_grid, topAfter, 0), QStringLiteral("%1/0").arg(gone ? 55 : top));
        EXPECT_EQ(m_grid->GetRowHeight(topAfter) == 44, !gone);
        EXPECT_EQ(m_grid->GetColumnWidth(0), 33);
        EXPECT_TRUE(count < 0 || TextAt(*m_grid, first, 0).isEmpty());
    }
    m_grid = MakeGrid(1, 4);
    Show(*m_grid, 400, 300);
    EXPECT_TRUE(m_grid->InsertRows(1, 500));
    EXPECT_EQ(m_grid->verticalScrollBar()->value(), 0);
    EXPECT_FALSE(m_grid->InsertRows(0, 1) || m_grid->InsertRows(502, 1) ||
                 m_grid->InsertRows(5, -1) || m_grid->DeleteRows(0, 1) ||
                 m_grid->DeleteRows(500, 2) || m_grid->DeleteRows(5, -1) ||
                 m_grid->RenewRows(500, 2) || m_grid->RenewRows(-1, 1));
}

TEST_F(GridRows, SelectionFocusAndTheStartOfASelectionGoWithTheirRows) {
    const struct {
        int first;
        int count;
        std::vector<int> selected;
        CCellID focus;
        std::vector<int> extended; ///< by Shift+Down afterwards
    } cases[] = {
        {2, 3, {7, 8, 9}, {9, 1}, {7, 8, 9, 10}}, {5, 3, {4, 8, 9}, {9, 1}, {4, 5, 6, 7, 8, 9, 10}},
        {7, 3, {4, 5, 6}, {6, 1}, {4, 5, 6, 7}},  {1, -2, {2, 3, 4}, {4, 1}, {2, 3, 4, 5}},
        {4, -1, {4, 5}, {5, 1}, {5, 6}},          {6, -4, {4, 5}, {}, {}}};
    for (const auto& [first, count, selected, focus, extended] : cases) {
        SCOPED_TRACE(std::to_string(first) + " " + std::to_string(count));
        Renew();
        Click({4, 1});
        Click({6, 1}, Qt::ShiftModifier);
        Take();
        ASSERT_TRUE(Shift(first, count));
        EXPECT_EQ(Take(), "");
        EXPECT_EQ(SelectedRows(), selected);
        EXPECT_EQ(m_grid->GetSelectedCount(), int(selected.size()) * 4);
        EXPECT_EQ(m_grid->GetSelectedRows(), selected);
        EXPECT_EQ(m_grid->GetFocusCell(), focus);
        if (!focus.IsValid())
            continue;
        EXPECT_TRUE(m_grid->GetCell(focus.row, focus.col)->IsFocused());
        Press(Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(SelectedRows(), extended);
    }
}

TEST_F(GridRows, AnEditGoesWithItsRowAndEndsWithItWithoutItsText) {
    // The shift, and the row that is edited afterwards.
    const int cases[][3] = {{20, 10, 65}, {60, 1, 55}, {1, -40, 15}, {40, -16, -1}};
    for (const auto& [first, count, row] : cases) {
        SCOPED_TRACE(std::to_string(first) + " " + std::to_string(count));
        Renew();
        m_grid->SetEditable(true);
        m_grid->verticalScrollBar()->setValue(50 * m_grid->GetRowHeight(1));
        m_grid->SetFocusCell({55, 1});
        Press(Qt::Key_N);
        const QRect place = Editor()->geometry();
        Take();
        ASSERT_TRUE(Shift(first, count));
        EXPECT_EQ(m_grid->IsEditing(), row >= 0);
        if (m_grid->IsEditing()) {
            EXPECT_EQ(Editor()->geometry(), place);
            Press(Qt::Key_Return);
            EXPECT_EQ(TextAt(*m_grid, row, 1), "n");
        }
        EXPECT_EQ(Take(), "edited " + std::to_string(row < 0 ? 55 : row) + "/1");
        EXPECT_EQ(m_changed, row >= 0);
        EXPECT_TRUE(m_grid->hasFocus());
    }
}

TEST_F(GridRows, TheMouseHoldsWhatItHeld) {
    Down(Center({5, 1}));
    m_grid->InsertRows(2, 3);
    Move(Center({10, 1}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{8, 9, 10}));
    Take();
    Up(Center({8, 1}));
    EXPECT_EQ(Take(), "selected 8/1, click 8/1, command 8/1");
    Down(Center({5, 1}));
    m_grid->DeleteRows(5, 1); // what was pressed is gone: no click
    EXPECT_EQ(m_grid->GetMouseMode(), GridMouseMode::Nothing);
}

TEST_F(GridRows, TheCellsOfARowAreFilledWhenTheyAreNeeded) {
    std::vector<int> filled;
    int wide = 90'000; ///< the row with the longest text
    m_grid->DeleteAllItems();
    m_grid->SetRowFiller([&](int row) {
        filled.push_back(row);
        m_grid->SetCellType(row, 1, RuntimeClass<CGridCell>);
        m_grid->SetItemState(row, 1, GridState::ReadOnly);
        m_grid->GetCell(row, 0)->SetText(QString(row == wide ? 50 : 1, u'm'));
    });
    m_grid->SetRowCount(100'001);
    m_grid->SetColumnCount(4);
    m_grid->SetFixedRowCount(1);
    m_grid->SetSelectedRange(1, 0, 100'000, 3);
    m_grid->SetFocusCell({70'000, 1});
    QApplication::processEvents();
    EXPECT_LE(int(filled.size()), 300 / m_grid->GetRowHeight(1) + 1);
    EXPECT_TRUE(m_grid->HasCells(3) && !m_grid->HasCells(70'000) && !m_grid->HasCells(100'001));
    EXPECT_EQ(m_grid->GetItemState(70'000, 1),
              GridState::ReadOnly | GridState::Selected | GridState::Focused);
    m_grid->SetSelectedRange(1, 0, 5, 3);
    EXPECT_FALSE(m_grid->GetCell(70'000, 1)->IsSelected());

    filled.clear();
    m_grid->RenewRows(2, 2);
    QApplication::processEvents();
    EXPECT_EQ(filled, (std::vector<int>{2, 3}));
    EXPECT_EQ(m_grid->GetItemState(2, 1), GridState::ReadOnly | GridState::Selected);

    m_grid->AutoSizeColumn(0); // looks at all rows, and keeps none of them
    const int fit = m_grid->GetCell(90'000, 0)->GetCellExtent().width();
    EXPECT_EQ(m_grid->GetColumnWidth(0), fit);
    EXPECT_TRUE(m_grid->HasCells(3) && !m_grid->HasCells(50'000));
    m_grid->SetColumnWidth(1, 7); // by hand
    m_grid->DeleteRows(90'000, 1);
    wide = 80'000;
    const int narrow = m_grid->GetCell(1, 0)->GetCellExtent().width();
    m_grid->AutoSizeColumn(0, GridFit::Header);
    EXPECT_EQ(m_grid->GetColumnWidth(0), m_grid->GetCell(0, 0)->GetCellExtent().width());
    m_grid->RefitColumns();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_grid->GetColumnWidth(0) == fit; }));
    wide = -1;
    m_grid->RenewRows(80'000, 1);
    m_grid->RefitColumns();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_grid->GetColumnWidth(0) < fit; }));
    EXPECT_GE(m_grid->GetColumnWidth(0), narrow);
    wide = 80'000;
    m_grid->FitToRows(80'000, 1);
    EXPECT_EQ(m_grid->GetColumnWidth(0), fit);
    EXPECT_EQ(m_grid->GetColumnWidth(1), 7);
}
