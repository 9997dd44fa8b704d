// Rows and columns that come and go.

#include "grid/GridCtrl.h"
#include "grid/IGridWatcher.h"
#include "grid/InPlaceEdit.h"

#include <QScrollBar>

#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

namespace {

constexpr int kDefaultColumnWidth = 100;

} // namespace

int CGridCtrl::DeleteAllItems() {
    EndEdit(); // while its cell is there
    m_nFixedRows = 0;
    m_nFixedCols = 0;
    m_look.m_nSortColumn = -1;
    return Rebuild(0, 0);
}

int CGridCtrl::SetRowCount(int rows) {
    return rows < 0 ? 0 : Rebuild(rows, m_nCols);
}

int CGridCtrl::SetColumnCount(int cols) {
    return cols < 0 ? 0 : Rebuild(m_nRows, cols);
}

int CGridCtrl::SetFixedRowCount(int fixedRows) {
    if (fixedRows < 0 || fixedRows > m_nRows)
        return 0;
    DropMarks();
    const int changed = std::max(fixedRows, m_nFixedRows);
    m_nFixedRows = fixedRows;
    MarkFixedCells(changed, m_nCols);
    RelayOut();
    return 1;
}

int CGridCtrl::SetFixedColumnCount(int fixedCols) {
    if (fixedCols < 0 || fixedCols > m_nCols)
        return 0;
    DropMarks();
    const int changed = std::max(fixedCols, m_nFixedCols);
    m_nFixedCols = fixedCols;
    MarkFixedCells(m_nRows, changed);
    RelayOut();
    return 1;
}

int CGridCtrl::Rebuild(int rows, int cols) {
    EndEdit(); // while its cell is there
    LetGo();
    m_refitTimer.stop();
    DropMarks();
    m_mouse.m_LeftClickDownCell = {};
    m_nFixedRows = std::min(m_nFixedRows, rows);
    m_nFixedCols = std::min(m_nFixedCols, cols);
    try {
        m_rows.resize(rows);
        for (int row = 0; row < rows; ++row) {
            Row& cells = m_rows[row];
            if (cells.empty())
                continue;
            const int kept = static_cast<int>(cells.size());
            cells.resize(cols);
            for (int col = kept; col < cols; ++col)
                cells[col] = MakeCell(RuntimeClass<CGridCell>, row, col);
        }
        m_arRowHeights.SetCount(rows, m_nDefaultRowHeight);
        m_arColWidths.SetCount(cols, kDefaultColumnWidth);
    } catch (const std::exception&) { // bad_alloc, or length_error of an absurd count
        DeleteAllItems();
        return 0;
    }
    m_nRows = rows;
    m_nCols = cols;
    if (m_look.m_nSortColumn >= cols)
        m_look.m_nSortColumn = -1;
    RelayOut();
    return 1;
}

/// No row or column means what it did.
void CGridCtrl::DropMarks() {
    if (m_pWatcher)
        m_pWatcher->OnTableChanges();
    Select(QRect(), false);
    SetFocusCell({});
    m_SelectionStartCell = {};
}

bool CGridCtrl::InsertRows(int first, int count) {
    if (first < m_nFixedRows || first > m_nRows || count < 0 ||
        count > std::numeric_limits<int>::max() - m_nRows)
        return false;
    const int start = m_arRowHeights.Start(first) - m_arRowHeights.Start(m_nFixedRows);
    int scroll = verticalScrollBar()->value();
    if (start <= scroll && first < m_nRows)
        scroll += count * m_nDefaultRowHeight;
    try {
        m_rows.resize(m_nRows + count);
        std::move_backward(m_rows.begin() + first, m_rows.begin() + m_nRows, m_rows.end());
        m_arRowHeights.Insert(first, count, m_nDefaultRowHeight);
    } catch (const std::exception&) {
        DeleteAllItems();
        return false;
    }
    ShiftRows({first, count}, scroll);
    return true;
}

bool CGridCtrl::DeleteRows(int first, int count) {
    const auto holds = [&] {
        return first >= m_nFixedRows && count >= 0 && first <= m_nRows - count;
    };
    if (!holds())
        return false;
    const GridRowShift shift{first, -count};
    if (m_pEditWnd && !shift.Moved(m_pEditWnd->Cell()).IsValid()) {
        FinishEdit(false);
        if (!holds()) // the owner has taken rows away when it was told
            return false;
    }
    const int start = m_arRowHeights.Start(first) - m_arRowHeights.Start(m_nFixedRows);
    const int height = m_arRowHeights.Start(first + count) - m_arRowHeights.Start(first);
    const int scroll = verticalScrollBar()->value();
    if (!shift.Moved(m_mouse.m_LeftClickDownCell).IsValid() && m_mouse.m_bLMouseButtonDown)
        LetGo();
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + first + count);
    m_arRowHeights.Remove(first, count);
    ShiftRows(shift, scroll - std::clamp(scroll - start, 0, height));
    return true;
}

/// All that is kept by row follows; the view is scrolled to `scroll`.
void CGridCtrl::ShiftRows(GridRowShift shift, int scroll) {
    m_nRows += shift.count;
    const int selected = m_selection.GetCount();
    m_selection.Shift(shift);
    const CCellID focus = std::exchange(m_idCurrentCell, shift.Moved(m_idCurrentCell));
    m_SelectionStartCell = shift.Moved(m_SelectionStartCell);
    m_mouse.m_LeftClickDownCell = shift.Moved(m_mouse.m_LeftClickDownCell);
    m_look.m_idHeldDown = shift.Moved(m_look.m_idHeldDown);
    m_sizing.Shift(shift);
    if (m_pEditWnd)
        m_pEditWnd->SetCell(shift.Moved(m_pEditWnd->Cell()));
    HideTitleTip();
    if (m_refitTimer.isActive())
        m_iRefitRow = std::min(m_iRefitRow, shift.first); // the new ones are looked at, too
    if (m_pWatcher) {
        m_pWatcher->OnRowsShifted(shift);
        if (m_selection.GetCount() != selected)
            m_pWatcher->OnSelectionChanged();
        if (focus.IsValid() && !m_idCurrentCell.IsValid())
            m_pWatcher->OnFocusMoved();
    }
    // Only then the range: a value that it cuts off would take an edit out of sight.
    QScrollBar& bar = *verticalScrollBar();
    bar.setMaximum(std::max(bar.maximum(), scroll));
    bar.setValue(scroll);
    RelayOut();
}

bool CGridCtrl::RenewRows(int first, int count) {
    if (first < 0 || count < 0 || first > m_nRows - count)
        return false;
    if (m_pWatcher)
        m_pWatcher->OnRowsReplaced(first, count);
    for (int row = first; row < first + count; ++row)
        m_rows[row] = Row();
    Refresh();
    return true;
}
