// Sizes of rows and columns, and where cells lie in the viewport.

#include "grid/GridCtrl.h"
#include "grid/GridFont.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

void CGridCtrl::OnDefaultsChanged() {
    const int line = std::max(m_cellDefault.GetFontObject().Height(),
                              m_ImageList.isEmpty() ? 0 : m_sizeImage.height());
    const int height = line + line / 4 + m_cellDefault.GetSize().height();
    m_arRowHeights.ReplaceSize(m_nDefaultRowHeight, height);
    m_nDefaultRowHeight = height;
    RelayOut();
}

int CGridCtrl::SetColumnWidth(int col, int width) {
    if (col < 0 || col >= m_nCols || width < 0)
        return 0;
    m_arColWidths.SetSize(col, width);
    RelayOut();
    return 1;
}

int CGridCtrl::SetRowHeight(int row, int height) {
    if (row < 0 || row >= m_nRows || height < 0)
        return 0;
    m_arRowHeights.SetSize(row, height);
    RelayOut();
    return 1;
}

int CGridCtrl::GetColumnWidth(int col) const {
    return col >= 0 && col < m_nCols ? static_cast<int>(m_arColWidths.Size(col)) : 0;
}

int CGridCtrl::GetRowHeight(int row) const {
    return row >= 0 && row < m_nRows ? static_cast<int>(m_arRowHeights.Size(row)) : 0;
}

int CGridCtrl::AutoSizeColumn(int col, GridFit fit) {
    if (col < 0 || col >= m_nCols)
        return 0;
    FitColumns({col, col}, fit);
    return 1;
}

void CGridCtrl::AutoSizeColumns(GridFit fit) {
    FitColumns({0, m_nCols - 1}, fit);
}

CGridCtrl::Span CGridCtrl::RowsToFit(GridFit fit) const {
    return {fit == GridFit::Data ? m_nFixedRows : 0,
            fit == GridFit::Header ? m_nFixedRows - 1 : m_nRows - 1};
}

void CGridCtrl::FitColumns(Span cols, GridFit fit) {
    std::vector<int> widths(m_nCols, 0);
    const Span rows = RowsToFit(fit);
    // Row by row, as the cells lie in memory.
    for (int row = rows.first; row <= rows.last; ++row) {
        for (int col = cols.first; col <= cols.last; ++col) {
            int width = m_rows[row][col]->GetCellExtent().width();
            if (row == 0 && col == m_nSortColumn)
                width += GridPainting::SortArrowRoom(m_rows[row][col]->GetFontObject().Height());
            widths[col] = std::max(widths[col], width);
        }
    }
    for (int col = cols.first; col <= cols.last; ++col)
        m_arColWidths.SetSize(col, widths[col]);
    RelayOut();
}

int CGridCtrl::AutoSizeRow(int row) {
    if (row < 0 || row >= m_nRows)
        return 0;
    FitRow(row);
    RelayOut();
    return 1;
}

void CGridCtrl::FitRow(int row) {
    int height = 0;
    for (const Cell& cell : m_rows[row])
        height = std::max(height, cell->GetCellExtent().height());
    m_arRowHeights.SetSize(row, height);
}

void CGridCtrl::AutoSize() {
    AutoSizeColumns();
    for (int row = 0; row < m_nRows; ++row)
        FitRow(row);
    RelayOut();
}

void CGridCtrl::RelayOut() {
    ResetScrollBars();
    PlaceEdit();
    Refresh();
}

void CGridCtrl::ResetScrollBars() {
    const int width = std::max(0, viewport()->width() - FixedWidth());
    const int height = std::max(0, viewport()->height() - FixedHeight());
    horizontalScrollBar()->setRange(0, std::max(0, m_arColWidths.Total() - FixedWidth() - width));
    horizontalScrollBar()->setPageStep(width);
    horizontalScrollBar()->setSingleStep(m_cellDefault.GetFontObject().Height());
    verticalScrollBar()->setRange(0, std::max(0, m_arRowHeights.Total() - FixedHeight() - height));
    verticalScrollBar()->setPageStep(height);
    verticalScrollBar()->setSingleStep(m_nDefaultRowHeight);
}

void CGridCtrl::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    ResetScrollBars();
    PlaceEdit();
}

void CGridCtrl::scrollContentsBy(int dx, int dy) {
    QAbstractScrollArea::scrollContentsBy(dx, dy);
    HideTitleTip();
    PlaceEdit();
    if (const CCellID cell = GetCellFromPt(m_ptPointer, false); IsSelecting() && IsValid(cell))
        SelectTo(cell);
}

void CGridCtrl::EnsureVisible(int row, int col) {
    if (!IsValid({row, col}))
        return;
    const auto scroll = [](QScrollBar* bar, int start, int size) {
        // Of a cell larger than the page, the start.
        const int value = std::max(bar->value(), start + size - bar->pageStep());
        bar->setValue(std::min(value, start));
    };
    if (row >= m_nFixedRows)
        scroll(verticalScrollBar(), m_arRowHeights.Start(row) - FixedHeight(), GetRowHeight(row));
    if (col >= m_nFixedCols)
        scroll(horizontalScrollBar(), m_arColWidths.Start(col) - FixedWidth(), GetColumnWidth(col));
}

QRect CGridCtrl::GetCellRect(CCellID cell) const {
    if (!IsValid(cell))
        return {};
    const int scrollX = cell.col < m_nFixedCols ? 0 : horizontalScrollBar()->value();
    const int scrollY = cell.row < m_nFixedRows ? 0 : verticalScrollBar()->value();
    QRect rect(m_arColWidths.Start(cell.col) - scrollX, m_arRowHeights.Start(cell.row) - scrollY,
               GetColumnWidth(cell.col), GetRowHeight(cell.row));
    if (cell.col == m_nCols - 1) {
        rect.setRight(viewport()->width() - 1);
        if (GetColumnWidth(cell.col) == 0)
            rect.setLeft(viewport()->width()); // nothing, but where a bar's right edge lies
    }
    return rect;
}

CCellID CGridCtrl::GetCellFromPt(QPoint point, bool fixedToo) const {
    if (!viewport()->rect().contains(point))
        return {};
    const bool inFixedCol = point.x() < FixedWidth();
    const bool inFixedRow = point.y() < FixedHeight();
    if ((inFixedCol || inFixedRow) && !fixedToo)
        return {};
    const int row =
        m_arRowHeights.IndexAt(point.y() + (inFixedRow ? 0 : verticalScrollBar()->value()));
    const int col =
        m_arColWidths.IndexAt(point.x() + (inFixedCol ? 0 : horizontalScrollBar()->value()));
    const CCellID cell{row, std::min(col, m_nCols - 1)}; // the last column reaches to the edge
    return IsValid(cell) ? cell : CCellID{};
}

bool CGridCtrl::IsHeldDown(CCellID cell) const {
    return m_bLMouseButtonDown && m_LeftClickDownCell == cell;
}
