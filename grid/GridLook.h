#pragma once

#include "grid/GridTypes.h"

#include <QIcon>
#include <QList>
#include <QSize>

#include <array>
#include <memory>

class CMeasuredFont;

/// Colours of the desktop that the grid draws with where the owner has set none, taken once from
/// the widget's palette.
struct GridSystemColours {
    COLORREF windowText; ///< COLOR_WINDOWTEXT
    COLORREF window;     ///< COLOR_WINDOW
    COLORREF face;       ///< COLOR_3DFACE
    COLORREF shadow;     ///< COLOR_3DSHADOW
    COLORREF darkShadow; ///< COLOR_3DDKSHADOW
    COLORREF light;      ///< COLOR_3DHILIGHT
    COLORREF highlight;  ///< COLOR_HIGHLIGHT
};

/// How a cell looks, as far as it is set.
struct GridStyle {
    COLORREF textClr = CLR_DEFAULT;
    COLORREF backClr = CLR_DEFAULT;
    COLORREF selTextClr = CLR_DEFAULT;
    COLORREF selBackClr = CLR_DEFAULT;
    quint32 format = FORMAT_DEFAULT;
    QSize size{-1, -1};
    std::shared_ptr<const CMeasuredFont> font; ///< null: not set
};

/// All that cells know of their grid: what they draw and measure themselves with.
struct GridLook {
    GridSystemColours m_crSystem;
    COLORREF m_crGridBkColour = 0; ///< beside all cells
    COLORREF m_crGridLineColour = 0xC0C0C0;
    int m_nGridLines = GridLines::Both;
    QList<QIcon> m_ImageList;
    QSize m_sizeImage{16, 16};
    int m_nSortColumn = -1; ///< -1: none
    bool m_bAscending = true;
    bool m_bHasFocus = false;            ///< the keyboard is the grid's
    CCellID m_idHeldDown;                ///< the cell that the mouse holds down
    std::array<GridStyle, 4> m_defaults; ///< what cells fall back on; format, size and font are set

    /// Whether lines divide the cells.
    [[nodiscard]] bool HasLines() const {
        return m_nGridLines != GridLines::None && m_nGridLines != GridLines::HeaderMarks;
    }

    /// The defaults of cells with the fixed bits of `state`.
    [[nodiscard]] GridStyle& DefaultsOf(quint32 state) { return m_defaults[IndexOf(state)]; }
    [[nodiscard]] const GridStyle& DefaultsOf(quint32 state) const {
        return m_defaults[IndexOf(state)];
    }

private:
    static size_t IndexOf(quint32 state) {
        return (state & GridState::FixedRow ? 1 : 0) + (state & GridState::FixedCol ? 2 : 0);
    }
};
