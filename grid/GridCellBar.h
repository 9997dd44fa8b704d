#pragma once

#include "grid/GridCell.h"

/// The title of a section. In the last column it draws over its whole row, shaded from top to
/// bottom, with image and text at the left edge of the window.
class CGridCellBar final : public CGridCell {
public:
    bool Draw(QPainter& painter, int row, int col, QRect rect, bool eraseBackground) override;

    /// 10 pixels wide whatever the title: a long title must not drive the width of its column.
    [[nodiscard]] QSize GetCellExtent() const override;

    [[nodiscard]] QRect GetTextRect(QRect cell) const override;
    [[nodiscard]] std::optional<COLORREF> GetFlatColour() const override { return std::nullopt; }

protected:
    void FillBackground(QPainter& painter, const QRect& rect, const QColor& colour) const override;
};
