// Painting of the grid: the visible cells, in passes, and the lines between them.

#include "grid/GridCtrl.h"
#include "grid/GridPainting.h"
#include "grid/IGridWatcher.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

void CGridCtrl::paintEvent(QPaintEvent* event) {
    m_look.m_bHasFocus = hasFocus();
    const GridGeometry geometry = GetGeometry();
    QPainter painter(viewport());
    // Apart: a title and a track far below it are not all that lies between them.
    for (const QRect& area : event->region())
        DrawArea(painter, geometry, area);

    painter.setCompositionMode(QPainter::CompositionMode_Difference); // with white: inverts
    painter.fillRect(m_sizing.Line(geometry), Qt::white);
}

/// Draws the cells that reach into an area of the viewport.
void CGridCtrl::DrawArea(QPainter& painter, const GridGeometry& geometry, const QRect& area) const {
    for (const QRect& beside : QRegion(area) - geometry.CellArea())
        painter.fillRect(beside, ToQColor(m_look.m_crGridBkColour));
    if (m_nRows == 0 || m_nCols == 0)
        return;

    const GridSpan fixedRows{0, area.top() < geometry.FixedHeight() ? m_nFixedRows - 1 : -1};
    const GridSpan fixedCols{0, m_nFixedCols - 1};
    const GridSpan rows = geometry.VisibleRows(area);
    const GridSpan cols = geometry.VisibleColumns(area);
    // One more, for at 125 % the rounding of a clip may cut its last pixel off.
    const QRect whole = viewport()->rect().adjusted(0, 0, 1, 1);

    if (m_nFixedCols > 0) {
        DrawCells(painter, geometry, fixedRows, fixedCols);
        painter.setClipRect(whole.adjusted(0, geometry.FixedHeight(), 0, 0));
        DrawCells(painter, geometry, rows, fixedCols);
    }
    painter.setClipRect(whole.adjusted(geometry.FixedWidth(), 0, 0, 0));
    DrawCells(painter, geometry, fixedRows, cols);
    painter.setClipRect(whole.adjusted(geometry.FixedWidth(), geometry.FixedHeight(), 0, 0));
    DrawCells(painter, geometry, rows, cols);
    painter.setClipping(false);
    DrawLines(painter, geometry, fixedRows, fixedCols);
    DrawLines(painter, geometry, rows, cols);
}

void CGridCtrl::DrawCells(QPainter& painter, const GridGeometry& geometry, GridSpan rows,
                          GridSpan cols) const {
    const int lastCol = m_nCols - 1;
    std::vector<int> columns;
    for (int col = cols.first; col <= std::min(cols.last, lastCol - 1); ++col) {
        if (m_arColWidths.Size(col) > 0)
            columns.push_back(col);
    }
    // Even where the last column is scrolled out of sight or hidden, the title of a section in it
    // covers the row; any other cell of it has no width there and draws nothing.
    if ((cols.first < m_nFixedCols) == (lastCol < m_nFixedCols))
        columns.push_back(lastCol);

    for (int row = rows.first; row <= rows.last; ++row) {
        if (m_arRowHeights.Size(row) == 0)
            continue;
        const Row& cells = CellsOf(row);
        FillCells(painter, geometry, row, columns);
        for (int col : columns) {
            CGridCellBase& cell = *cells[col];
            cell.Draw(painter, row, col, geometry.CellRect({row, col}), !cell.GetFlatColour());
        }
    }
}

void CGridCtrl::FillCells(QPainter& painter, const GridGeometry& geometry, int row,
                          const std::vector<int>& columns) const {
    // Long runs, because memory is written several times as fast along a row as cell by cell.
    const Row& cells = CellsOf(row);
    QRect run;
    std::optional<COLORREF> colour;
    const auto fill = [&] {
        if (colour && !run.isEmpty())
            painter.fillRect(run, ToQColor(*colour));
    };
    for (int col : columns) {
        const QRect rect = geometry.CellRect({row, col});
        const std::optional<COLORREF> next = cells[col]->GetFlatColour();
        if (next == colour && rect.left() == run.right() + 1) {
            run.setRight(rect.right());
            continue;
        }
        fill();
        run = rect;
        colour = next;
    }
    fill();
}

void CGridCtrl::DrawLines(QPainter& painter, const GridGeometry& geometry, GridSpan rows,
                          GridSpan cols) const {
    const QColor colour = ToQColor(m_look.m_crGridLineColour);
    const QRect all = geometry.CellArea();
    if (m_look.m_nGridLines == GridLines::Horizontal || m_look.m_nGridLines == GridLines::Both) {
        for (int row = rows.first; row <= rows.last; ++row) {
            const QRect rect = geometry.RowRect(row);
            if (!rect.isEmpty())
                GridPainting::DrawLine(painter, rect, Qt::BottomEdge, colour);
        }
    }
    if (m_look.m_nGridLines == GridLines::Vertical || m_look.m_nGridLines == GridLines::Both) {
        for (int col = cols.first; col <= std::min(cols.last, m_nCols - 2); ++col) {
            QRect rect = geometry.CellRect({0, col});
            rect.setTop(0);
            rect.setBottom(all.bottom());
            if (!rect.isEmpty())
                GridPainting::DrawLine(painter, rect, Qt::RightEdge, colour);
        }
    }
}

void CGridCtrl::SetGridBkColor(COLORREF colour) {
    m_look.m_crGridBkColour = colour;
    Refresh();
}

void CGridCtrl::SetGridLineColor(COLORREF colour) {
    m_look.m_crGridLineColour = colour;
    Refresh();
}

void CGridCtrl::SetImageList(const QList<QIcon>& images, QSize size) {
    m_look.m_ImageList = images;
    m_look.m_sizeImage = size;
    OnDefaultsChanged();
}

void CGridCtrl::SetGridLines(int mode) {
    m_look.m_nGridLines = mode;
    Refresh();
}

void CGridCtrl::Refresh() {
    viewport()->update();
}

void CGridCtrl::RedrawCell(int row, int col) {
    if (m_pWatcher)
        m_pWatcher->OnCellsRedrawn();
    if (col == m_nCols - 1)
        RedrawRow(row); // it may be drawn over the whole row
    else
        viewport()->update(GetCellRect({row, col}));
}

void CGridCtrl::RedrawRow(int row) {
    if (m_pWatcher)
        m_pWatcher->OnCellsRedrawn();
    if (IsValid({row, 0}))
        UpdateRows({0, row, 1, 1});
}

/// Repaints the rows of a range, in which columns are x and rows y.
void CGridCtrl::UpdateRows(const QRect& range) {
    if (!range.isEmpty())
        viewport()->update(GetGeometry().RowRect(range.top()) |
                           GetGeometry().RowRect(range.bottom()));
}
