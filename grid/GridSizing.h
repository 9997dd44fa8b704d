#pragma once

#include "grid/GridGeometry.h"

#include <optional>

/// The end of a column (Qt::Horizontal) or row (Qt::Vertical), where the mouse takes hold of it.
struct GridDivide {
    Qt::Orientation axis;
    int index;
};

/// Sizes columns by their ends in the header, and rows by theirs in the fixed columns, with the
/// mouse. A line shows where the end would be; the size is to be set when the button goes up.
///
/// Points are those of the viewport. Its owner hands in where cells are now, and paints the line.
class CGridSizing {
public:
    bool m_bResizeColumns = true;
    bool m_bResizeRows = true;
    /// A column may be drawn down to width 0, and a hidden one back to sight.
    bool m_bAllowColHide = false;
    /// How far from an end the mouse still takes hold of it, in pixels.
    int m_nResizeCaptureRange = 3;

    [[nodiscard]] std::optional<GridDivide> DivideAt(const GridGeometry& geometry,
                                                     QPoint point) const;

    void Begin(GridDivide divide, QPoint point);
    void MoveTo(QPoint point) { m_ptLine = point; }
    /// Leaves everything as it was.
    void Cancel() { m_sized.reset(); }
    /// The divide moves with its row; where that goes, nothing is sized any more.
    void Shift(GridRowShift shift);

    struct Sized {
        GridDivide divide;
        int size; ///< in pixels
    };
    /// Ends it, with the new size; none if the mouse is where it began.
    std::optional<Sized> End(const GridGeometry& geometry, QPoint point);

    /// The line to be drawn by inverting what is there; empty while nothing is sized.
    [[nodiscard]] QRect Line(const GridGeometry& geometry) const;

    /// The nearest divide, from this one on to the left or upwards, that ends what is not hidden;
    /// its index is -1 if there is none.
    [[nodiscard]] static GridDivide VisibleBefore(const GridGeometry& geometry, GridDivide divide);

private:
    [[nodiscard]] bool MayHide(Qt::Orientation axis) const;
    [[nodiscard]] int IndexAt(const GridGeometry& geometry, Qt::Orientation axis, int index,
                              int position) const;

    std::optional<GridDivide> m_sized;
    QPoint m_ptBegin;
    QPoint m_ptLine;
};
