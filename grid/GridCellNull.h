#pragma once

#include "grid/GridCell.h"

/// A cell that draws nothing: what lies under a CGridCellBar.
class CGridCellNull final : public CGridCell {
public:
    bool Draw(QPainter&, int, int, QRect, bool) override { return true; }
    [[nodiscard]] bool IsOpaque() const override { return false; }
    [[nodiscard]] QRect GetTextRect(QRect) const override { return {}; }
};
