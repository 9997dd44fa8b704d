#pragma once

#include "accessible/GridAccessible.h"
#include "grid/GridCellBar.h"
#include "grid/GridCellNull.h"
#include "grid/GridCtrl.h"
#include "tests/fixtures/Printers.h"

/// A grid as the program configures it: one header row, list mode, ticks between header cells.
/// Cells carry their place as text: "3/1" is row 3, column 1.
inline std::unique_ptr<CGridCtrl> MakeGrid(int rows, int cols) {
    CGridAccessible::Install();
    auto grid = std::make_unique<CGridCtrl>(nullptr, rows, cols, rows > 0 ? 1 : 0, 0);
    for (const bool row : {false, true}) {
        for (const bool col : {false, true})
            grid->GetDefaultCell(row, col)->SetCoords(8, 2);
    }
    grid->GetDefaultCell(false, false)->SetBackClr(0xE0FFFF);
    grid->GetDefaultCell(false, false)->SetSelBackClr(0xDFBE7A);
    grid->SetGridBkColor(0xF6F6F6);
    grid->SetFixedColumnSelection(false);
    grid->SetGridLines(GridLines::HeaderMarks);
    grid->SetListMode(true);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            grid->GetCell(row, col)->SetText(QStringLiteral("%1/%2").arg(row).arg(col));
    }
    return grid;
}

inline void Show(CGridCtrl& grid, int width, int height) {
    grid.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid.resize(width, height);
    grid.show();
    QApplication::processEvents();
}

/// All that gives the rows and columns of a grid of 6 by 3 another meaning.
inline std::vector<std::function<void(CGridCtrl&)>> Rebuilds() {
    return {
        [](CGridCtrl& grid) { grid.SetRowCount(3); },
        [](CGridCtrl& grid) { grid.SetColumnCount(7); },
        [](CGridCtrl& grid) { grid.SetFixedRowCount(3); },
        [](CGridCtrl& grid) { grid.SortItems(nullptr, 0, true); },
        [](CGridCtrl& grid) { grid.DeleteAllItems(); },
    };
}

/// Makes a row one title over its whole width.
inline void MakeTitle(CGridCtrl& grid, int row) {
    const int last = grid.GetColumnCount() - 1;
    for (int col = 0; col < last; ++col)
        grid.SetCellType(row, col, RuntimeClass<CGridCellNull>);
    grid.SetCellType(row, last, RuntimeClass<CGridCellBar>);
    grid.GetCell(row, last)->SetText("Title");
}

inline QString TextAt(const CGridCtrl& grid, int row, int col) {
    return grid.GetCell(row, col)->GetText();
}
