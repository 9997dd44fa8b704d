#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "tests/grid/GridFixture.h"

#include <limits>
#include <tuple>

namespace {

TEST(GridCounts, CellsThatStayKeepTheirContentAndFixedCellsFollowTheFixedCounts) {
    using namespace GridState;
    const auto grid = MakeGrid(3, 2);
    for (const int refused :
         {grid->SetRowCount(-1), grid->SetColumnCount(-1), grid->SetFixedRowCount(-1),
          grid->SetFixedRowCount(4), grid->SetFixedColumnCount(3)})
        EXPECT_EQ(refused, 0);
    EXPECT_EQ(grid->SetRowCount(5), 1);
    EXPECT_EQ(grid->SetColumnCount(4), 1);
    EXPECT_EQ(TextAt(*grid, 2, 1), QStringLiteral("2/1"));
    EXPECT_EQ(TextAt(*grid, 4, 3), QString());
    EXPECT_EQ(grid->SetFixedRowCount(2), 1);
    EXPECT_EQ(grid->SetFixedColumnCount(1), 1);
    EXPECT_EQ(grid->GetItemState(1, 0), Fixed | FixedRow | FixedCol);
    EXPECT_EQ(grid->GetItemState(1, 2), Fixed | FixedRow);
    EXPECT_EQ(grid->GetItemState(3, 0), Fixed | FixedCol);
    EXPECT_EQ(grid->GetItemState(3, 2), 0u);
    EXPECT_EQ(grid->SetFixedRowCount(0), 1);
    EXPECT_EQ(grid->GetItemState(1, 2), 0u);
    EXPECT_EQ(grid->SetFixedRowCount(4), 1);
    EXPECT_EQ(grid->SetRowCount(2), 1);
    EXPECT_EQ(grid->GetFixedRowCount(), 2);
    EXPECT_EQ(grid->GetCell(2, 0), nullptr);
    EXPECT_EQ(grid->DeleteAllItems(), 1);
    EXPECT_EQ(grid->GetFixedRowCount() + grid->GetFixedColumnCount() + grid->GetRowCount(), 0);
}

TEST(GridCells, IndexesOutOfRangeHaveNoEffect) {
    const auto grid = MakeGrid(3, 2);
    for (const CCellID id : {CCellID{-1, 0}, CCellID{0, -1}, CCellID{3, 0}, CCellID{0, 2},
                             CCellID{std::numeric_limits<int>::max(), 0}}) {
        GridItem item;
        item.row = id.row;
        item.col = id.col;
        item.mask = 0x1FF;
        EXPECT_EQ(grid->GetCell(id.row, id.col), nullptr);
        EXPECT_EQ(grid->SetItem(item), 0);
        EXPECT_EQ(grid->GetItem(item), 0);
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
        EXPECT_EQ(grid->SetColumnWidth(col, 10), 0);
        EXPECT_EQ(grid->GetColumnWidth(col), 0);
        EXPECT_EQ(grid->AutoSizeColumn(col), 0);
        EXPECT_EQ(grid->SortItems(nullptr, col, true), 0);
    }
    EXPECT_EQ(grid->SetColumnWidth(0, -1), 0);
    EXPECT_EQ(grid->AutoSizeRow(3), 0);
    EXPECT_EQ(grid->GetRowHeight(3), 0);
}

class HugeCell : public CGridCell {
public:
    char m_room[1000] = {};
};

TEST(GridCells, SetCellTypeKeepsNothingOfTheOldCell) {
    const auto grid = MakeGrid(3, 2);
    grid->SetFocusCell({1, 0});
    grid->SetItemState(1, 0, GridState::ReadOnly | GridState::Selected);
    EXPECT_EQ(grid->SetCellType(1, 0, RuntimeClass<CGridCellCheck>), 1);
    EXPECT_NE(dynamic_cast<CGridCellCheck*>(grid->GetCell(1, 0)), nullptr);
    EXPECT_EQ(TextAt(*grid, 1, 0), QString());
    EXPECT_EQ(grid->GetItemState(1, 0), GridState::Focused); // the focus is the grid's
    EXPECT_EQ(grid->GetSelectedCount(), 0);
    EXPECT_EQ(grid->SetCellType(0, 1, RuntimeClass<HugeCell>), 1);
    EXPECT_TRUE(grid->GetCell(0, 1)->IsFixedRow());
}

TEST(GridCells, AnItemWritesAndReadsWhatItsMaskNames) {
    const auto fields = [](const GridItem& item) {
        return std::tuple(item.text, item.image, item.data, item.state, item.backClr, item.textClr,
                          item.selBackClr, item.selTextClr, item.format);
    };
    const auto grid = MakeGrid(2, 2);
    GridItem before;
    before.row = before.col = 1;
    before.mask = 0x1FF;
    GridItem read = before;
    EXPECT_EQ(grid->GetItem(before), 1);
    GridItem written{.row = 1,
                     .col = 1,
                     .state = GridState::ReadOnly,
                     .format = DT_RIGHT,
                     .image = 3,
                     .backClr = 1,
                     .textClr = 2,
                     .selBackClr = 3,
                     .selTextClr = 4,
                     .data = 77,
                     .text = QStringLiteral("new")};
    EXPECT_EQ(grid->SetItem(written), 1);
    EXPECT_EQ(grid->GetItem(read), 1);
    EXPECT_EQ(fields(read), fields(before));
    written.mask = 0x1FF;
    EXPECT_EQ(grid->SetItem(written), 1);
    EXPECT_EQ(grid->GetItem(read), 1);
    EXPECT_EQ(fields(read), fields(written));
}

TEST(GridDefaults, CellsTakeWhatTheyLeaveUnset) {
    const auto grid = MakeGrid(3, 2);
    CGridCellBase& cell = *grid->GetCell(1, 1);
    const CGridCellBase& header = *grid->GetCell(0, 1);
    CGridDefaultCell& body = *grid->GetDefaultCell(false, false);
    EXPECT_EQ(cell.GetTextClr(), grid->GetLook().m_crSystem.windowText);
    EXPECT_EQ(header.GetBackClr(), grid->GetLook().m_crSystem.face);
    EXPECT_EQ(CGridCtrl().GetDefaultCell(false, false)->GetSize(), QSize(30, 10));

    body.SetTextClr(0x112233);
    QFont large = body.GetFont();
    large.setPixelSize(31);
    body.SetFont(&large);
    const auto shown = [](const CGridCellBase& one) {
        return std::tuple(one.GetBackClr(), one.GetTextClr(), one.GetSelBackClr(),
                          one.GetSelTextClr(), one.GetFormat(), one.GetSize().width(),
                          one.GetFont().pixelSize());
    };
    // Selected text stays as it is.
    const auto defaults = std::tuple(0xE0FFFFu, 0x112233u, 0xDFBE7Au, 0x112233u, 0x8824u, 8, 31);
    EXPECT_EQ(shown(cell), defaults);
    EXPECT_NE(header.GetFont().pixelSize(), 31);

    QFont own = large;
    own.setPixelSize(20);
    cell.SetBackClr(1);
    cell.SetTextClr(2);
    cell.SetSelBackClr(3);
    cell.SetSelTextClr(4);
    cell.SetFormat(DT_RIGHT);
    cell.SetCoords(1, 1);
    cell.SetFont(&own);
    EXPECT_EQ(shown(cell), std::tuple(1u, 2u, 3u, 4u, DT_RIGHT, 1, 20));
    cell.SetBackClr(CLR_DEFAULT);
    cell.SetTextClr(CLR_DEFAULT);
    cell.SetSelBackClr(CLR_DEFAULT);
    cell.SetSelTextClr(CLR_DEFAULT);
    cell.SetFormat(FORMAT_DEFAULT);
    cell.SetCoords(-1, -1);
    cell.SetFont(nullptr);
    EXPECT_EQ(shown(cell), defaults);
}

TEST(GridDefaults, RowsFollowTheFontAndTheImages) {
    const auto grid = MakeGrid(5, 2);
    const int before = grid->GetRowHeight(2);
    grid->SetRowHeight(3, 50);
    QFont large = grid->font();
    large.setPixelSize(40);
    grid->setFont(large);
    EXPECT_EQ(grid->GetCell(2, 1)->GetFont().pixelSize(), 40);
    EXPECT_GT(grid->GetRowHeight(2), before + 20);
    EXPECT_EQ(grid->GetRowHeight(3), 50);
    grid->SetImageList({}, QSize(100, 100));
    EXPECT_LT(grid->GetRowHeight(2), 100);
    grid->SetImageList({QIcon()}, QSize(100, 100));
    EXPECT_GT(grid->GetRowHeight(2), 100);
    EXPECT_EQ(grid->GetRowHeight(3), 50);
}

TEST(GridSelection, StateBitsOfTheGridItselfCannotBeWritten) {
    const auto grid = MakeGrid(3, 2);
    grid->SetFocusCell({1, 1});
    EXPECT_EQ(grid->SetItemState(0, 0, GridState::ReadOnly), 1);
    EXPECT_EQ(grid->GetItemState(0, 0),
              GridState::ReadOnly | GridState::Fixed | GridState::FixedRow);
    grid->SetItemState(1, 1, GridState::Modified | GridState::Fixed);
    EXPECT_EQ(grid->GetItemState(1, 1), GridState::Modified | GridState::Focused);
}

TEST(GridSelection, ARangeTakesThePlaceOfTheOldOneAndSparesTheHeader) {
    const auto grid = MakeGrid(6, 3);
    grid->SetItemState(5, 2, GridState::Selected);
    grid->SetSelectedRange(0, 0, 2, 1);
    EXPECT_EQ(grid->GetSelectedCount(), 4);
    EXPECT_FALSE(grid->GetCell(0, 0)->IsSelected());
    EXPECT_TRUE(grid->GetCell(2, 1)->IsSelected());
    EXPECT_FALSE(grid->GetCell(5, 2)->IsSelected());
    grid->SetSelectedRange(4, 1, 99, 99, true);
    EXPECT_EQ(grid->GetSelectedCount(), 4);
    EXPECT_TRUE(grid->GetCell(5, 2)->IsSelected());
    grid->SetItemState(5, 2, 0);
    EXPECT_EQ(grid->GetSelectedCount(), 3);
    grid->SetSelectedRange(4, 1, 5, 2, false, false);
    EXPECT_EQ(grid->GetSelectedCount(), 0);
    grid->EnableSelection(false);
    grid->SetSelectedRange(1, 0, 2, 1);
    EXPECT_EQ(grid->GetSelectedCount(), 0);
}

TEST(GridSelection, RebuildingDropsSelectionAndFocus) {
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

} // namespace
