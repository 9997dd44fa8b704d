#pragma once

#include "grid/GridAxis.h"
#include "grid/GridTypes.h"

#include <QPoint>
#include <QRect>
#include <QSize>

/// Rows or columns in a line: `first` to `last`, none where that is less.
struct GridSpan {
    int first;
    int last;
};

/// Where cells lie in the viewport, in its pixels. A view of a moment: it is made anew for each
/// question, and the sizes that it refers to outlive it.
struct GridGeometry {
    const CGridAxis& rowHeights;
    const CGridAxis& colWidths;
    int fixedRows;
    int fixedCols;
    QSize viewport;
    QPoint scroll; ///< how far what is not fixed has moved out of sight

    [[nodiscard]] int Rows() const { return rowHeights.Count(); }
    [[nodiscard]] int Columns() const { return colWidths.Count(); }
    [[nodiscard]] bool IsValid(CCellID cell) const;

    [[nodiscard]] int FixedWidth() const { return colWidths.Start(fixedCols); }
    [[nodiscard]] int FixedHeight() const { return rowHeights.Start(fixedRows); }

    /// The viewport without the fixed rows and columns.
    [[nodiscard]] QRect Body() const;

    /// Where a cell is drawn, also where that is out of sight. The last column reaches to the
    /// viewport's right edge.
    [[nodiscard]] QRect CellRect(CCellID cell) const;

    /// The row from edge to edge of the viewport.
    [[nodiscard]] QRect RowRect(int row) const;

    /// All that is covered by cells, from the viewport's corner on.
    [[nodiscard]] QRect CellArea() const;

    /// The cell at a point; none beside all cells, or in a header unless `fixedToo`.
    [[nodiscard]] CCellID CellAt(QPoint point, bool fixedToo) const;

    /// The rows and columns that are not fixed and reach into an area of the viewport.
    [[nodiscard]] GridSpan VisibleRows(const QRect& area) const;
    [[nodiscard]] GridSpan VisibleColumns(const QRect& area) const;
};
