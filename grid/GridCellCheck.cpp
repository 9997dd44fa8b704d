#include "grid/GridCellCheck.h"

#include "drawing/MeasuredFont.h"
#include "grid/GridPainting.h"

#include <algorithm>

void CGridCellCheck::DrawContent(QPainter& painter, QRect rect, const QColor& textColour) const {
    const int side = std::min({ContentWidth(), rect.width(), rect.height()});
    if (side < 4)
        return;
    const QPoint corner(rect.left() + (rect.width() - side) / 2,
                        rect.top() + (rect.height() - side) / 2);
    GridPainting::DrawCheckBox(painter, QRect(corner, QSize(side, side)), m_bChecked, textColour);
}

int CGridCellCheck::ContentWidth() const {
    return GetFontObject().Height();
}
