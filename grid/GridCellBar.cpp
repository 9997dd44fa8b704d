#include "grid/GridCellBar.h"

#include "grid/GridPainting.h"

bool CGridCellBar::Draw(QPainter& painter, int row, int col, QRect rect, bool eraseBackground) {
    rect.setLeft(0);
    return CGridCell::Draw(painter, row, col, rect, eraseBackground);
}

void CGridCellBar::FillBackground(QPainter& painter, const QRect& rect,
                                  const QColor& colour) const {
    GridPainting::FillShaded(painter, rect, colour);
}

QSize CGridCellBar::GetCellExtent() const {
    return QSize(10, CGridCell::GetCellExtent().height());
}

QRect CGridCellBar::GetTextRect(QRect cell) const {
    cell.setLeft(0);
    return CGridCell::GetTextRect(cell);
}
