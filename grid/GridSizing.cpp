#include "grid/GridSizing.h"

#include <algorithm>

namespace {

constexpr int kLineWidth = 2;

int Along(Qt::Orientation axis, QPoint point) {
    return axis == Qt::Horizontal ? point.x() : point.y();
}

CCellID CellOf(GridDivide divide) {
    return divide.axis == Qt::Horizontal ? CCellID{0, divide.index} : CCellID{divide.index, 0};
}

int SizeOf(const GridGeometry& geometry, GridDivide divide) {
    const bool column = divide.axis == Qt::Horizontal;
    if ((column ? geometry.colWidths : geometry.rowHeights).Size(divide.index) == 0)
        return 0;
    // The last column is drawn up to the window's edge.
    const QRect drawn = geometry.CellRect(CellOf(divide));
    return column ? drawn.width() : drawn.height();
}

int StartOf(const GridGeometry& geometry, GridDivide divide) {
    if (SizeOf(geometry, divide) == 0) {
        const GridDivide before{divide.axis, divide.index - 1};
        return divide.index > 0 ? StartOf(geometry, before) + SizeOf(geometry, before) : 0;
    }
    return Along(divide.axis, geometry.CellRect(CellOf(divide)).topLeft());
}

/// The mouse may not leave the window while it sizes.
QPoint Inside(const GridGeometry& geometry, QPoint point) {
    return {std::clamp(point.x(), 0, geometry.viewport.width() - 1),
            std::clamp(point.y(), 0, geometry.viewport.height() - 1)};
}

} // namespace

std::optional<GridDivide> CGridSizing::DivideAt(const GridGeometry& geometry, QPoint point) const {
    const CCellID cell = geometry.CellAt(point, true);
    if (!cell.IsValid())
        return {};
    if (m_bResizeColumns && cell.row < geometry.fixedRows) {
        const int col = IndexAt(geometry, Qt::Horizontal, cell.col, point.x());
        if (col >= 0)
            return GridDivide{Qt::Horizontal, col};
    }
    if (m_bResizeRows && cell.col < geometry.fixedCols) {
        const int row = IndexAt(geometry, Qt::Vertical, cell.row, point.y());
        if (row >= 0)
            return GridDivide{Qt::Vertical, row};
    }
    return {};
}

/// The column whose end is near a position in column `index`; -1 if none is.
int CGridSizing::IndexAt(const GridGeometry& geometry, Qt::Orientation axis, int index,
                         int position) const {
    const GridDivide here{axis, index};
    const int start = StartOf(geometry, here);
    const int size = SizeOf(geometry, here);
    int near = -1;
    // What lies behind a hidden last column counts as that column.
    if (position - start <= m_nResizeCaptureRange)
        near = size > 0 ? index - 1 : index;
    else if (size > 0 && start + size - position <= m_nResizeCaptureRange)
        near = index;
    return MayHide(axis) ? near : VisibleBefore(geometry, {axis, near}).index;
}

GridDivide CGridSizing::VisibleBefore(const GridGeometry& geometry, GridDivide divide) {
    while (divide.index >= 0 && SizeOf(geometry, divide) == 0)
        --divide.index;
    return divide;
}

bool CGridSizing::MayHide(Qt::Orientation axis) const {
    return axis == Qt::Horizontal && m_bAllowColHide;
}

void CGridSizing::Begin(GridDivide divide, QPoint point) {
    m_sized = divide;
    m_ptBegin = m_ptLine = point;
}

void CGridSizing::Shift(GridRowShift shift) {
    if (!m_sized || m_sized->axis == Qt::Horizontal)
        return;
    m_sized->index = shift.Moved(CellOf(*m_sized)).row;
    if (m_sized->index < 0)
        Cancel();
}

std::optional<CGridSizing::Sized> CGridSizing::End(const GridGeometry& geometry, QPoint point) {
    const std::optional<GridDivide> divide = m_sized;
    Cancel();
    point = Inside(geometry, point);
    if (!divide || point == QPoint(0, 0) ||
        Along(divide->axis, point) == Along(divide->axis, m_ptBegin))
        return {};
    return Sized{*divide, std::max(Along(divide->axis, point) - StartOf(geometry, *divide),
                                   MayHide(divide->axis) ? 0 : 1)};
}

QRect CGridSizing::Line(const GridGeometry& geometry) const {
    if (!m_sized)
        return {};
    const QPoint at = Inside(geometry, m_ptLine);
    return m_sized->axis == Qt::Horizontal
               ? QRect(at.x(), 0, kLineWidth, geometry.viewport.height())
               : QRect(0, at.y(), geometry.viewport.width(), kLineWidth);
}
