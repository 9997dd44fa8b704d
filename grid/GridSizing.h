#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class CGridCtrl;

/// The end of a column (Qt::Horizontal) or row (Qt::Vertical), where the mouse takes hold of it.
struct GridDivide {
    Qt::Orientation axis;
    int index;
};

/// Sizes columns by their ends in the header, and rows by theirs in the fixed columns, with the
/// mouse. A line shows where the end would be; the size is set when the button goes up.
///
/// Points are those of the grid's viewport. Interface thread only; a member of its grid.
class GridSizing {
public:
    explicit GridSizing(CGridCtrl& grid)
        : m_grid(grid) {}

    bool m_bResizeColumns = true;
    bool m_bResizeRows = true;
    /// A column may be drawn down to width 0, and a hidden one back to sight.
    bool m_bAllowColHide = false;
    /// How far from an end the mouse still takes hold of it, in pixels.
    int m_nResizeCaptureRange = 3;

    [[nodiscard]] std::optional<GridDivide> DivideAt(QPoint point) const;

    void Begin(GridDivide divide, QPoint point);
    void MoveTo(QPoint point);
    /// Sets the size, unless the mouse is where it began.
    void End(QPoint point);
    /// Leaves everything as it was.
    void Cancel();

    /// Fits the column or row that ends at a divide, or the nearest before it that is not hidden,
    /// to its content.
    void AutoSize(GridDivide divide);

    /// The line to be drawn by inverting what is there; empty while nothing is sized.
    [[nodiscard]] QRect Line() const;

private:
    [[nodiscard]] int SizeOf(GridDivide divide) const;
    [[nodiscard]] int StartOf(GridDivide divide) const;
    [[nodiscard]] bool MayHide(Qt::Orientation axis) const;
    [[nodiscard]] int IndexAt(Qt::Orientation axis, int index, int position) const;
    [[nodiscard]] QPoint Inside(QPoint point) const;

    CGridCtrl& m_grid;
    std::optional<GridDivide> m_sized;
    QPoint m_ptBegin;
    QPoint m_ptLine;
};
