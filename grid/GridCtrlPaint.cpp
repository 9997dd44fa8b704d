// Painting of the grid: the visible cells, in passes, and the lines between them.

#include "grid/GridAccessible.h"
#include "grid/GridCtrl.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

void CGridCtrl::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    // Apart: a title and a track far below it are not all that lies between them.
    for (const QRect& area : event->region())
        DrawArea(painter, area);

    painter.setCompositionMode(QPainter::CompositionMode_Difference); // with white: inverts
    painter.fillRect(m_sizing.Line(), Qt::white);
}

/// Draws the cells that reach into an area of the viewport.
void CGridCtrl::DrawArea(QPainter& painter, const QRect& area) const {
    for (const QRect& beside : QRegion(area) - CellArea())
        painter.fillRect(beside, ToQColor(m_crGridBkColour));
    if (m_nRows == 0 || m_nCols == 0)
        return;

    const Span fixedRows{0, area.top() < FixedHeight() ? m_nFixedRows - 1 : -1};
    const Span fixedCols{0, m_nFixedCols - 1};
    const Span rows = VisibleRows(area);
    const Span cols = VisibleColumns(area);
    // One more, for at 125 % the rounding of a clip may cut its last pixel off.
    const QRect whole = viewport()->rect().adjusted(0, 0, 1, 1);

    if (m_nFixedCols > 0) {
        DrawCells(painter, fixedRows, fixedCols);
        painter.setClipRect(whole.adjusted(0, FixedHeight(), 0, 0));
        DrawCells(painter, rows, fixedCols);
    }
    painter.setClipRect(whole.adjusted(FixedWidth(), 0, 0, 0));
    DrawCells(painter, fixedRows, cols);
    painter.setClipRect(whole.adjusted(FixedWidth(), FixedHeight(), 0, 0));
    DrawCells(painter, rows, cols);
    painter.setClipping(false);
    DrawLines(painter, fixedRows, fixedCols);
    DrawLines(painter, rows, cols);
}

QRect CGridCtrl::CellArea() const {
    if (m_nRows == 0 || m_nCols == 0)
        return {};
    const QRect last = GetCellRect({m_nRows - 1, m_nCols - 1});
    const int right = GetColumnWidth(m_nCols - 1) > 0
                          ? viewport()->width()
                          : m_arColWidths.Total() - horizontalScrollBar()->value();
    return QRect(0, 0, right, last.bottom() + 1);
}

CGridCtrl::Span CGridCtrl::VisibleRows(const QRect& area) const {
    const int scroll = verticalScrollBar()->value();
    return {m_arRowHeights.IndexAt(std::max(area.top(), FixedHeight()) + scroll),
            std::min(m_arRowHeights.IndexAt(area.bottom() + scroll), m_nRows - 1)};
}

CGridCtrl::Span CGridCtrl::VisibleColumns(const QRect& area) const {
    const int scroll = horizontalScrollBar()->value();
    const int first = m_arColWidths.IndexAt(std::max(area.left(), FixedWidth()) + scroll);
    const int last = m_arColWidths.IndexAt(area.right() + scroll);
    // The last column reaches to the window's edge, so it is there behind the end of all columns.
    return {std::min(first, m_nCols - 1), std::min(last, m_nCols - 1)};
}

void CGridCtrl::DrawCells(QPainter& painter, Span rows, Span cols) const {
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
        FillCells(painter, row, columns);
        for (int col : columns) {
            CGridCellBase& cell = *m_rows[row][col];
            cell.Draw(painter, row, col, GetCellRect({row, col}), !cell.GetFlatColour());
        }
    }
}

void CGridCtrl::FillCells(QPainter& painter, int row, const std::vector<int>& columns) const {
    // Long runs, because memory is written several times as fast along a row as cell by cell.
    QRect run;
    std::optional<COLORREF> colour;
    const auto fill = [&] {
        if (colour && !run.isEmpty())
            painter.fillRect(run, ToQColor(*colour));
    };
    for (int col : columns) {
        const QRect rect = GetCellRect({row, col});
        const std::optional<COLORREF> next = m_rows[row][col]->GetFlatColour();
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

void CGridCtrl::DrawLines(QPainter& painter, Span rows, Span cols) const {
    const QColor colour = ToQColor(m_crGridLineColour);
    const QRect all = CellArea();
    if (m_nGridLines == GridLines::Horizontal || m_nGridLines == GridLines::Both) {
        for (int row = rows.first; row <= rows.last; ++row) {
            const QRect rect = RowRect(row);
            if (!rect.isEmpty())
                GridPainting::DrawLine(painter, rect, Qt::BottomEdge, colour);
        }
    }
    if (m_nGridLines == GridLines::Vertical || m_nGridLines == GridLines::Both) {
        for (int col = cols.first; col <= std::min(cols.last, m_nCols - 2); ++col) {
            QRect rect = GetCellRect({0, col});
            rect.setTop(0);
            rect.setBottom(all.bottom());
            if (!rect.isEmpty())
                GridPainting::DrawLine(painter, rect, Qt::RightEdge, colour);
        }
    }
}

bool CGridCtrl::HasLines() const {
    return m_nGridLines != GridLines::None && m_nGridLines != GridLines::HeaderMarks;
}

void CGridCtrl::SetGridBkColor(COLORREF colour) {
    m_crGridBkColour = colour;
    Refresh();
}

void CGridCtrl::SetGridLineColor(COLORREF colour) {
    m_crGridLineColour = colour;
    Refresh();
}

void CGridCtrl::SetImageList(const QList<QIcon>& images, QSize size) {
    m_ImageList = images;
    m_sizeImage = size;
    OnDefaultsChanged();
}

void CGridCtrl::SetGridLines(int mode) {
    m_nGridLines = mode;
    Refresh();
}

void CGridCtrl::Refresh() {
    viewport()->update();
}

void CGridCtrl::RedrawCell(int row, int col) {
    if (m_pAccessible)
        m_pAccessible->OnCellsRedrawn();
    if (col == m_nCols - 1)
        RedrawRow(row); // it may be drawn over the whole row
    else
        viewport()->update(GetCellRect({row, col}));
}

void CGridCtrl::RedrawRow(int row) {
    if (m_pAccessible)
        m_pAccessible->OnCellsRedrawn();
    if (IsValid({row, 0}))
        UpdateRows({0, row, 1, 1});
}

/// Repaints the rows of a range, in which columns are x and rows y.
void CGridCtrl::UpdateRows(const QRect& range) {
    if (!range.isEmpty())
        viewport()->update(RowRect(range.top()) | RowRect(range.bottom()));
}

/// The row from edge to edge of the viewport.
QRect CGridCtrl::RowRect(int row) const {
    const QRect cell = GetCellRect({row, 0});
    return {0, cell.top(), viewport()->width(), cell.height()};
}
