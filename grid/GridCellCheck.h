#pragma once

#include "grid/GridCell.h"

/// A check box in the middle of the cell, as high as a text line. A click changes nothing by
/// itself: the grid's owner sets the check when it is told of the click.
class CGridCellCheck final : public CGridCell {
public:
    void SetCheck(bool checked) { m_bChecked = checked; }
    [[nodiscard]] bool GetCheck() const { return m_bChecked; }

    [[nodiscard]] QRect GetTextRect(QRect) const override { return {}; }

protected:
    void DrawContent(QPainter& painter, QRect rect, const QColor& textColour) const override;
    [[nodiscard]] int ContentWidth() const override;

private:
    bool m_bChecked = false;
};
