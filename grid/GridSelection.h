#pragma once

#include "grid/GridTypes.h"

#include <QRect>
#include <QRegion>

#include <vector>

/// The selected cells of a grid. Ranges are rectangles with columns as x and rows as y.
///
/// A value; what it costs grows with the number of ranges, not with that of cells.
class CGridSelection {
public:
    [[nodiscard]] bool Contains(CCellID cell) const { return m_cells.contains(Point(cell)); }

    [[nodiscard]] int GetCount() const;

    /// The selected cells, row by row.
    [[nodiscard]] std::vector<CCellID> GetCells() const;

    /// The rows with selected cells, in order.
    [[nodiscard]] std::vector<int> GetRows() const;

    /// The selected ones of a row, as columns and a height of 1.
    [[nodiscard]] QRegion GetRow(int row, int columns) const;

    /// These return what has changed.
    QRegion Add(const QRegion& range);
    QRegion Remove(const QRegion& range);
    QRegion RemoveBeside(const QRect& range) { return Remove(m_cells - range); }

    /// The selection moves with its rows. New rows are not selected.
    void Shift(GridRowShift shift);

private:
    static QPoint Point(CCellID cell) { return {cell.col, cell.row}; }

    QRegion m_cells;
};
