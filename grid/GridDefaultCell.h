#pragma once

#include "grid/GridCell.h"

/// What cells fall back on. A grid has four of them: for data cells, for header rows, for header
/// columns and for the corner of both.
///
/// Colours that it leaves unset itself are the grid's: window text and window colour (3D face
/// behind fixed cells), the desktop's selection colour, and selected text as text. Its setters
/// repaint the grid.
class CGridDefaultCell final : public CGridCell {
public:
    /// `state` tells which cells of the grid fall back on it.
    CGridDefaultCell(CGridCtrl* grid, quint32 state);

    void SetFormat(quint32 format) override;
    void SetTextClr(COLORREF colour) override;
    void SetBackClr(COLORREF colour) override;
    void SetSelTextClr(COLORREF colour) override;
    void SetSelBackClr(COLORREF colour) override;
    /// Null takes the desktop's own font.
    void SetFont(const QFont* font) override;
    void SetCoords(int width, int height) override;

    [[nodiscard]] quint32 GetFormat() const override { return m_nFormat; }
    [[nodiscard]] COLORREF GetTextClr() const override;
    [[nodiscard]] COLORREF GetBackClr() const override;
    [[nodiscard]] COLORREF GetSelTextClr() const override;
    [[nodiscard]] COLORREF GetSelBackClr() const override;
    [[nodiscard]] const GridFont& GetFontObject() const override { return *m_plfFont; }
    [[nodiscard]] QSize GetSize() const override { return m_Size; }
    [[nodiscard]] const CGridDefaultCell* GetDefaultCell() const override { return this; }
};
