#include "grid/GridSizing.h"

#include "grid/GridCtrl.h"

#include <algorithm>

namespace {

constexpr int kLineWidth = 2;

int Along(Qt::Orientation axis, QPoint point) {
    return axis == Qt::Horizontal ? point.x() : point.y();
}

CCellID CellOf(GridDivide divide) {
    return divide.axis == Qt::Horizontal ? CCellID{0, divide.index} : CCellID{divide.index, 0};
}

} // namespace

std::optional<GridDivide> GridSizing::DivideAt(QPoint point) const {
    const CCellID cell = m_grid.GetCellFromPt(point, true);
    if (!m_grid.IsValid(cell))
        return {};
    if (m_bResizeColumns && cell.row < m_grid.GetFixedRowCount()) {
        const int col = IndexAt(Qt::Horizontal, cell.col, point.x());
        if (col >= 0)
            return GridDivide{Qt::Horizontal, col};
    }
    if (m_bResizeRows && cell.col < m_grid.GetFixedColumnCount()) {
        const int row = IndexAt(Qt::Vertical, cell.row, point.y());
        if (row >= 0)
            return GridDivide{Qt::Vertical, row};
    }
    return {};
}

/// The column whose end is near a position in column `index`; -1 if none is.
int GridSizing::IndexAt(Qt::Orientation axis, int index, int position) const {
    const GridDivide here{axis, index};
    const int start = StartOf(here);
    const int size = SizeOf(here);
    int near = -1;
    // What lies behind a hidden last column counts as that column.
    if (position - start <= m_nResizeCaptureRange)
        near = size > 0 ? index - 1 : index;
    else if (size > 0 && start + size - position <= m_nResizeCaptureRange)
        near = index;
    while (near >= 0 && SizeOf({axis, near}) == 0 && !MayHide(axis))
        --near;
    return near;
}

int GridSizing::SizeOf(GridDivide divide) const {
    const CCellID cell = CellOf(divide);
    const int size = divide.axis == Qt::Horizontal ? m_grid.GetColumnWidth(cell.col)
                                                   : m_grid.GetRowHeight(cell.row);
    const QRect drawn = m_grid.GetCellRect(cell);
    // The last column is drawn up to the window's edge.
    return size == 0 ? 0 : divide.axis == Qt::Horizontal ? drawn.width() : drawn.height();
}

int GridSizing::StartOf(GridDivide divide) const {
    if (SizeOf(divide) == 0) {
        const GridDivide before{divide.axis, divide.index - 1};
        return divide.index > 0 ? StartOf(before) + SizeOf(before) : 0;
    }
    return Along(divide.axis, m_grid.GetCellRect(CellOf(divide)).topLeft());
}

bool GridSizing::MayHide(Qt::Orientation axis) const {
    return axis == Qt::Horizontal && m_bAllowColHide;
}

/// The mouse may not leave the window while it sizes.
QPoint GridSizing::Inside(QPoint point) const {
    const QRect window = m_grid.viewport()->rect();
    return {std::clamp(point.x(), window.left(), window.right()),
            std::clamp(point.y(), window.top(), window.bottom())};
}

void GridSizing::Begin(GridDivide divide, QPoint point) {
    m_sized = divide;
    m_ptBegin = point;
    MoveTo(point);
}

void GridSizing::MoveTo(QPoint point) {
    m_grid.viewport()->update(Line());
    m_ptLine = Inside(point);
    m_grid.viewport()->update(Line());
}

void GridSizing::End(QPoint point) {
    const std::optional<GridDivide> divide = m_sized;
    Cancel();
    point = Inside(point);
    if (!divide || point == QPoint(0, 0) ||
        Along(divide->axis, point) == Along(divide->axis, m_ptBegin))
        return;
    const int size =
        std::max(Along(divide->axis, point) - StartOf(*divide), MayHide(divide->axis) ? 0 : 1);
    if (divide->axis == Qt::Horizontal)
        m_grid.SetColumnWidth(divide->index, size);
    else
        m_grid.SetRowHeight(divide->index, size);
}

void GridSizing::Cancel() {
    m_grid.viewport()->update(Line());
    m_sized.reset();
}

void GridSizing::AutoSize(GridDivide divide) {
    while (divide.index >= 0 && SizeOf(divide) == 0)
        --divide.index;
    if (divide.axis == Qt::Horizontal)
        m_grid.AutoSizeColumn(divide.index);
    else
        m_grid.AutoSizeRow(divide.index);
}

QRect GridSizing::Line() const {
    const QRect window = m_grid.viewport()->rect();
    if (!m_sized)
        return {};
    return m_sized->axis == Qt::Horizontal ? QRect(m_ptLine.x(), 0, kLineWidth, window.height())
                                           : QRect(0, m_ptLine.y(), window.width(), kLineWidth);
}
