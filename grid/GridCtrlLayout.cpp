// Sizes of rows and columns, and where cells lie in the viewport.

#include "drawing/MeasuredFont.h"
#include "grid/GridCtrl.h"
#include "grid/GridPainting.h"

#include <QElapsedTimer>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int kRefitStepMs = 5;
constexpr int kRefitRows = 200; ///< between two looks at the clock

} // namespace

void CGridCtrl::OnDefaultsChanged() {
    const int line = std::max(m_cellDefault.GetFontObject().Height(),
                              m_look.m_ImageList.isEmpty() ? 0 : m_look.m_sizeImage.height());
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

GridSpan CGridCtrl::RowsToFit(GridFit fit) const {
    return {fit == GridFit::Data ? m_nFixedRows : 0,
            fit == GridFit::Header ? m_nFixedRows - 1 : m_nRows - 1};
}

std::vector<int> CGridCtrl::WidthsNeeded(GridSpan rows, GridSpan cols) {
    std::vector<int> widths(m_nCols, 0);
    // Row by row, as the cells lie in memory.
    for (int row = rows.first; row <= rows.last; ++row) {
        const bool kept = HasCells(row);
        const Row& cells = CellsOf(row);
        for (int col = cols.first; col <= cols.last; ++col) {
            int width = cells[col]->GetCellExtent().width();
            if (row == 0 && col == m_look.m_nSortColumn)
                width += GridPainting::SortArrowRoom(cells[col]->GetFontObject().Height());
            widths[col] = std::max(widths[col], width);
        }
        if (!kept)
            m_rows[row] = Row();
    }
    return widths;
}

void CGridCtrl::FitColumns(GridSpan cols, GridFit fit) {
    const std::vector<int> widths = WidthsNeeded(RowsToFit(fit), cols);
    m_arFittedWidths.resize(m_nCols);
    for (int col = cols.first; col <= cols.last; ++col) {
        m_arColWidths.SetSize(col, widths[col]);
        m_arFittedWidths[col] = widths[col];
    }
    RelayOut();
}

void CGridCtrl::FitToRows(int first, int count) {
    if (first < 0 || count < 0 || first > m_nRows - count)
        return;
    const std::vector<int> widths = WidthsNeeded({first, first + count - 1}, {0, m_nCols - 1});
    m_arFittedWidths.resize(m_nCols);
    for (int col = 0; col < m_nCols; ++col) {
        if (GetColumnWidth(col) == m_arFittedWidths[col] && widths[col] > m_arFittedWidths[col]) {
            m_arColWidths.SetSize(col, widths[col]);
            m_arFittedWidths[col] = widths[col];
        }
    }
    RelayOut();
}

void CGridCtrl::RefitColumns() {
    m_iRefitRow = 0;
    m_arRefitWidths.assign(m_nCols, 0);
    RefitStep();
}

void CGridCtrl::RefitStep() {
    QElapsedTimer elapsed;
    elapsed.start();
    while (m_iRefitRow < m_nRows && elapsed.elapsed() < kRefitStepMs) {
        const int last = std::min(m_iRefitRow + kRefitRows, m_nRows) - 1;
        const std::vector<int> widths = WidthsNeeded({m_iRefitRow, last}, {0, m_nCols - 1});
        for (int col = 0; col < m_nCols; ++col)
            m_arRefitWidths[col] = std::max(m_arRefitWidths[col], widths[col]);
        m_iRefitRow = last + 1;
    }
    if (m_iRefitRow < m_nRows) {
        m_refitTimer.start(0, this);
        return;
    }
    m_refitTimer.stop();
    m_arFittedWidths.resize(m_nCols);
    for (int col = 0; col < m_nCols; ++col) {
        if (GetColumnWidth(col) != m_arFittedWidths[col])
            continue;
        m_arColWidths.SetSize(col, m_arRefitWidths[col]);
        m_arFittedWidths[col] = m_arRefitWidths[col];
    }
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
    for (const Cell& cell : CellsOf(row))
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
    const GridGeometry geometry = GetGeometry();
    const int width = std::max(0, geometry.Body().width());
    const int height = std::max(0, geometry.Body().height());
    horizontalScrollBar()->setRange(
        0, std::max(0, m_arColWidths.Total() - geometry.FixedWidth() - width));
    horizontalScrollBar()->setPageStep(width);
    horizontalScrollBar()->setSingleStep(m_cellDefault.GetFontObject().Height());
    verticalScrollBar()->setRange(
        0, std::max(0, m_arRowHeights.Total() - geometry.FixedHeight() - height));
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
    if (const CCellID cell = GetCellFromPt(m_mouse.m_ptPointer, false);
        m_mouse.IsSelecting() && IsValid(cell))
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
        scroll(verticalScrollBar(), m_arRowHeights.Start(row) - m_arRowHeights.Start(m_nFixedRows),
               GetRowHeight(row));
    if (col >= m_nFixedCols)
        scroll(horizontalScrollBar(), m_arColWidths.Start(col) - m_arColWidths.Start(m_nFixedCols),
               GetColumnWidth(col));
}

GridGeometry CGridCtrl::GetGeometry() const {
    return {m_arRowHeights,     m_arColWidths,
            m_nFixedRows,       m_nFixedCols,
            viewport()->size(), {horizontalScrollBar()->value(), verticalScrollBar()->value()}};
}
