#pragma once

#include "grid/GridTypes.h"

#include <QHash>
#include <QRect>

#include <vector>

class CGridCtrl;

/// The selected cells of a grid, of which each bears the state bit, too.
///
/// Ranges are rectangles with columns as x and rows as y; all cells named must be there.
/// Interface thread only; a member of its grid.
class GridSelection {
public:
    explicit GridSelection(CGridCtrl& grid)
        : m_grid(grid) {}

    /// Returns whether it was not so before.
    bool SelectCell(CCellID cell, bool selected);

    /// Returns the range that all changes lie in, as DeselectBeside() does.
    QRect SelectRange(const QRect& range);

    /// Deselects all cells outside a range. What stays selected is left alone, so that a long
    /// selection that grows by a row costs little.
    QRect DeselectBeside(const QRect& range);

    void Clear() { DeselectBeside(QRect()); }

    [[nodiscard]] int GetCount() const { return static_cast<int>(m_SelectedCellMap.size()); }

    /// The selected cells, row by row.
    [[nodiscard]] std::vector<CCellID> GetCells() const;

    /// Their texts, a line for each row, with tabs between the columns.
    [[nodiscard]] QString GetText() const;

private:
    CGridCtrl& m_grid;
    QHash<quint64, CCellID> m_SelectedCellMap; ///< by packed row and column
};
