#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCompare.h"
#include "tests/grid/GridFixture.h"

TEST(GridCells, IndexesOutOfRangeHaveNoEffect) {
    const auto grid = MakeGrid(3, 2);
    for (const CCellID id : {CCellID{-1, 0}, {0, -1}, {3, 0}, {0, 2}, {0x7FFFFFFF, 0}}) {
        GridItem item{.row = id.row, .col = id.col, .mask = 0x1FF, .text = {}};
        EXPECT_EQ(grid->GetCell(id.row, id.col), nullptr);
        EXPECT_EQ(grid->SetItem(item) + grid->GetItem(item), 0);
        EXPECT_EQ(grid->SetItemState(id.row, id.col, GridState::Selected), 0);
        EXPECT_EQ(grid->GetItemState(id.row, id.col), 0u);
        EXPECT_EQ(grid->SetCellType(id.row, id.col, RuntimeClass<CGridCellBar>), 0);
        EXPECT_TRUE(grid->GetCellRect(id).isNull());
        grid->RedrawCell(id.row, id.col);
        grid->EnsureVisible(id.row, id.col);
        grid->SetFocusCell(id);
        EXPECT_FALSE(grid->GetFocusCell().IsValid());
    }
    for (const int col : {-1, 2}) {
        EXPECT_EQ(grid->SetColumnWidth(col, 10) + grid->GetColumnWidth(col), 0);
        EXPECT_EQ(grid->AutoSizeColumn(col) + grid->SortItems(nullptr, col, true), 0);
    }
    EXPECT_EQ(grid->SetColumnWidth(0, -1) + grid->AutoSizeRow(3) + grid->GetRowHeight(3), 0);
}

TEST(GridCells, NumbersGoByTheirValueAndOtherTextsAreZero) {
    CGridCell twelve, nine, text;
    twelve.SetText("12");
    nine.SetText(" 9 of 10");
    text.SetText("abc");
    EXPECT_EQ(CompareNumbers(&twelve, &nine, 0), 1);
    EXPECT_EQ(CompareNumbers(&text, &nine, 0), -1);
    EXPECT_EQ(CompareNumbers(&twelve, nullptr, 0), 0);
}

TEST(GridCells, SetCellTypeKeepsNothingOfTheOldCell) {
    const auto grid = MakeGrid(3, 2);
    grid->SetFocusCell({1, 0});
    grid->SetItemState(1, 0, GridState::ReadOnly | GridState::Selected);
    EXPECT_EQ(grid->SetCellType(1, 0, RuntimeClass<CGridCellCheck>), 1);
    EXPECT_NE(dynamic_cast<CGridCellCheck*>(grid->GetCell(1, 0)), nullptr);
    EXPECT_EQ(TextAt(*grid, 1, 0), QString());
    EXPECT_EQ(grid->GetItemState(1, 0), GridState::Focused); // the focus is the grid's
    EXPECT_EQ(grid->GetSelectedCount(), 0);
    grid->SetItemState(1, 0, GridState::Modified | GridState::Fixed); // as is what is fixed
    EXPECT_EQ(grid->GetItemState(1, 0), GridState::Modified | GridState::Focused);
}

TEST(GridCells, AnItemWritesAndReadsWhatItsMaskNamesAndDefaultsFillTheRest) {
    const auto grid = MakeGrid(2, 2);
    const auto read = [&] {
        GridItem item{.row = 1, .col = 1, .mask = 0x1FF, .text = {}};
        EXPECT_EQ(grid->GetItem(item), 1);
        return std::tuple(item.text, item.image, item.data, item.state, item.backClr, item.textClr,
                          item.selBackClr, item.selTextClr, item.format);
    };
    const QString old = "1/1";
    grid->GetDefaultCell(false, false)->SetTextClr(0x112233); // selected text, too
    const auto defaults =
        std::tuple(old, -1, 0, 0u, 0xE0FFFFu, 0x112233u, 0xDFBE7Au, 0x112233u, 0x8824u);
    EXPECT_EQ(read(), defaults);
    GridItem item{.row = 1,
                  .col = 1,
                  .state = GridState::ReadOnly,
                  .format = DT_RIGHT,
                  .image = 3,
                  .backClr = 1,
                  .textClr = 2,
                  .selBackClr = 3,
                  .selTextClr = 4,
                  .data = 77,
                  .text = "new"};
    grid->SetItem(item);
    EXPECT_EQ(read(), defaults);
    item.mask = 0x1FF;
    grid->SetItem(item);
    EXPECT_EQ(read(), std::tuple(item.text, 3, 77, item.state, 1u, 2u, 3u, 4u, DT_RIGHT));
    item = GridItem{.row = 1, .col = 1, .mask = 0x1FF, .text = old};
    grid->SetItem(item);
    EXPECT_EQ(read(), defaults);
}

TEST(CGridSelection, ARangeTakesThePlaceOfTheOldOneAndSparesTheHeader) {
    const auto grid = MakeGrid(6, 3);
    grid->SetItemState(5, 2, GridState::Selected);
    grid->SetSelectedRange(0, 0, 2, 1);
    EXPECT_EQ(grid->GetSelectedCells(), (std::vector<CCellID>{{1, 0}, {1, 1}, {2, 0}, {2, 1}}));
    EXPECT_TRUE(grid->GetCell(2, 1)->IsSelected() && !grid->GetCell(5, 2)->IsSelected());
    grid->SetSelectedRange(4, 1, 99, 99, true);
    grid->SetItemState(5, 2, 0);
    EXPECT_EQ(grid->GetSelectedCount(), 3);
    grid->SetSelectedRange(4, 1, 5, 2, false, false);
    EXPECT_EQ(grid->GetSelectedCount(), 0);
}

TEST(CGridSelection, RebuildingDropsSelectionAndFocus) {
    for (const auto& rebuild : Rebuilds()) {
        const auto grid = MakeGrid(6, 3);
        grid->SetSelectedRange(2, 0, 5, 2);
        grid->SetFocusCell({2, 2});
        rebuild(*grid);
        EXPECT_EQ(grid->GetSelectedCount(), 0);
        EXPECT_FALSE(grid->GetFocusCell().IsValid());
        for (int row = 0; row < grid->GetRowCount(); ++row) {
            for (int col = 0; col < grid->GetColumnCount(); ++col)
                EXPECT_FALSE(grid->GetItemState(row, col) &
                             (GridState::Selected | GridState::Focused));
        }
    }
}
