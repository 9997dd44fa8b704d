#pragma once

#include "grid/GridCell.h"
#include "grid/GridLook.h"

/// A cell that draws nothing: what lies under a CGridCellBar.
class CGridCellNull final : public CGridCell {
public:
    bool Draw(QPainter&, int, int, QRect, bool) override { return true; }
    [[nodiscard]] QRect GetTextRect(QRect) const override { return {}; }
    [[nodiscard]] std::optional<COLORREF> GetFlatColour() const override {
        return m_pLook->m_crGridBkColour;
    }
};
