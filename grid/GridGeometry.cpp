#include "grid/GridGeometry.h"

#include <algorithm>

bool GridGeometry::IsValid(CCellID cell) const {
    return cell.row >= 0 && cell.row < Rows() && cell.col >= 0 && cell.col < Columns();
}

QRect GridGeometry::Body() const {
    return QRect(QPoint(0, 0), viewport).adjusted(FixedWidth(), FixedHeight(), 0, 0);
}

QRect GridGeometry::CellRect(CCellID cell) const {
    if (!IsValid(cell))
        return {};
    const int width = static_cast<int>(colWidths.Size(cell.col));
    QRect rect(colWidths.Start(cell.col) - (cell.col < fixedCols ? 0 : scroll.x()),
               rowHeights.Start(cell.row) - (cell.row < fixedRows ? 0 : scroll.y()), width,
               static_cast<int>(rowHeights.Size(cell.row)));
    if (cell.col == Columns() - 1) {
        rect.setRight(viewport.width() - 1);
        if (width == 0)
            rect.setLeft(viewport.width()); // nothing, but where a bar's right edge lies
    }
    return rect;
}

QRect GridGeometry::RowRect(int row) const {
    const QRect cell = CellRect({row, 0});
    return {0, cell.top(), viewport.width(), cell.height()};
}

QRect GridGeometry::CellArea() const {
    if (Rows() == 0 || Columns() == 0)
        return {};
    const int last = Columns() - 1;
    const int right = colWidths.Size(last) > 0 ? viewport.width() : colWidths.Total() - scroll.x();
    return QRect(0, 0, right, CellRect({Rows() - 1, last}).bottom() + 1);
}

CCellID GridGeometry::CellAt(QPoint point, bool fixedToo) const {
    if (!QRect(QPoint(0, 0), viewport).contains(point))
        return {};
    const bool inFixedCol = point.x() < FixedWidth();
    const bool inFixedRow = point.y() < FixedHeight();
    if ((inFixedCol || inFixedRow) && !fixedToo)
        return {};
    const int row = rowHeights.IndexAt(point.y() + (inFixedRow ? 0 : scroll.y()));
    const int col = colWidths.IndexAt(point.x() + (inFixedCol ? 0 : scroll.x()));
    const CCellID cell{row, std::min(col, Columns() - 1)}; // the last column reaches to the edge
    return IsValid(cell) ? cell : CCellID{};
}

GridSpan GridGeometry::VisibleRows(const QRect& area) const {
    return {rowHeights.IndexAt(std::max(area.top(), FixedHeight()) + scroll.y()),
            std::min(rowHeights.IndexAt(area.bottom() + scroll.y()), Rows() - 1)};
}

GridSpan GridGeometry::VisibleColumns(const QRect& area) const {
    const int first = colWidths.IndexAt(std::max(area.left(), FixedWidth()) + scroll.x());
    const int last = colWidths.IndexAt(area.right() + scroll.x());
    // The last column reaches to the window's edge, so it is there behind the end of all columns.
    return {std::min(first, Columns() - 1), std::min(last, Columns() - 1)};
}
