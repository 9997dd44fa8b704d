#pragma once

#include "grid/GridCell.h"
#include "grid/GridLook.h"

#include <functional>

/// What cells fall back on. A grid has four of them: for data cells, for header rows, for header
/// columns and for the corner of both.
///
/// Colours that it leaves unset itself are the grid's: window text and window colour (3D face
/// behind fixed cells), the desktop's selection colour, and selected text as text. Its setters
/// repaint the grid.
class CGridDefaultCell final : public CGridCell {
public:
    /// `state` tells which cells of the grid fall back on it, `look` keeps its values, and
    /// `changed` is called when one of them is another.
    CGridDefaultCell(GridLook& look, quint32 state, std::function<void()> changed);

    void SetFormat(quint32 format) override;
    void SetTextClr(COLORREF colour) override;
    void SetBackClr(COLORREF colour) override;
    void SetSelTextClr(COLORREF colour) override;
    void SetSelBackClr(COLORREF colour) override;
    /// Null takes the desktop's own font.
    void SetFont(const QFont* font) override;
    void SetCoords(int width, int height) override;

private:
    template <class Value>
    void Set(Value GridStyle::*field, const Value& value);

    GridLook& m_look;
    std::function<void()> m_pfnChanged;
};
