// Mouse and keyboard.

#include "grid/GridCtrl.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

void CGridCtrl::Notify(int code, CCellID cell) const {
    GridNotification notification{.code = code, .row = cell.row, .col = cell.col};
    if (m_pfnNotify)
        m_pfnNotify(notification);
}

void CGridCtrl::SetListMode(bool on) {
    m_bListMode = on;
    ClearSelection();
    Refresh();
}

void CGridCtrl::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    RedrawCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

void CGridCtrl::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    RedrawCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

void CGridCtrl::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const CCellID cell = GetCellFromPt(point, true);
    if (event->button() == Qt::RightButton) {
        if (IsValid(cell))
            GetCell(cell.row, cell.col)->OnRClick(point - GetCellRect(cell).topLeft());
        Notify(NM_RCLICK, cell);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    m_LeftClickDownCell = cell;
    m_bLMouseButtonDown = IsValid(cell);
    if (!m_bLMouseButtonDown)
        return;

    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (!extend)
        m_SelectionStartCell = cell;
    else if (!IsValid(m_SelectionStartCell))
        m_SelectionStartCell = m_idCurrentCell;

    CGridCellBase* clicked = GetCell(cell.row, cell.col);
    clicked->OnClickDown(point - GetCellRect(cell).topLeft());
    SetFocusCell(clicked->IsFixed() ? CCellID{} : cell);
    RedrawCell(cell.row, cell.col); // held down, a fixed cell looks sunken
    Notify(GVN_SELCHANGING, cell);
    StartSelection(cell);
}

void CGridCtrl::StartSelection(CCellID cell) {
    const bool inHeader = cell.row < m_nFixedRows;
    const bool inFixedCol = cell.col < m_nFixedCols;
    if (!IsValid(cell) || (inHeader && inFixedCol)) // not valid: gone in the notification
        SetSelectedRange(-1, -1, -1, -1);
    else if (inHeader && m_bFixedColumnSelection)
        SetSelectedRange(m_nFixedRows, cell.col, m_nRows - 1, cell.col);
    else if (inFixedCol && m_bFixedRowSelection)
        SetSelectedRange(cell.row, m_nFixedCols, cell.row, m_nCols - 1);
    else if (inHeader || inFixedCol)
        SetSelectedRange(-1, -1, -1, -1);
    else {
        m_MouseMode = m_bListMode ? MouseMode::SelectRows : MouseMode::SelectCells;
        SelectTo(cell);
    }
}

void CGridCtrl::SelectTo(CCellID cell) {
    const CCellID from = IsValid(m_SelectionStartCell) ? m_SelectionStartCell : cell;
    const auto [minRow, maxRow] = std::minmax(from.row, cell.row);
    const auto [minCol, maxCol] = std::minmax(from.col, cell.col);
    if (m_bListMode)
        SetSelectedRange(minRow, m_nFixedCols, maxRow, m_nCols - 1);
    else
        SetSelectedRange(minRow, minCol, maxRow, maxCol);
}

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_bLMouseButtonDown)
        return;
    m_bLMouseButtonDown = false;
    m_MouseMode = MouseMode::Nothing;
    const CCellID cell = m_LeftClickDownCell;
    if (!IsValid(cell))
        return;
    RedrawCell(cell.row, cell.col);
    Notify(GVN_SELCHANGED, cell);

    const QPoint point = event->position().toPoint();
    if (!IsValid(cell) || GetCellFromPt(point, true) != cell)
        return;
    GetCell(cell.row, cell.col)->OnClick(point - GetCellRect(cell).topLeft());
    Notify(NM_CLICK, cell);
}

void CGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    const QPoint point = event->position().toPoint();
    const CCellID cell = GetCellFromPt(point, true);
    if (!IsValid(cell))
        return;
    GetCell(cell.row, cell.col)->OnDblClick(point - GetCellRect(cell).topLeft());
    Notify(NM_DBLCLK, cell);
}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
    if (!IsValid(m_idCurrentCell)) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    const CCellID cell = NextCell(*event);
    if (!IsValid(cell)) {
        event->ignore(); // the parent's
        return;
    }
    if (cell != m_idCurrentCell)
        MoveTo(cell, event->modifiers() & Qt::ShiftModifier);
}

CCellID CGridCtrl::NextCell(const QKeyEvent& event) const {
    const auto [row, col] = m_idCurrentCell;
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    // Where there is no further cell, the present one.
    const auto atRow = [&](int from, int step) {
        const int next = m_arRowHeights.NextVisible(from, step, m_nFixedRows);
        return CCellID{next < 0 ? row : next, col};
    };
    const auto atCol = [&](int from, int step) {
        const int next = m_arColWidths.NextVisible(from, step, m_nFixedCols);
        return CCellID{row, next < 0 ? col : next};
    };
    switch (event.key()) {
    case Qt::Key_Down:
        return atRow(row + 1, 1);
    case Qt::Key_Up:
        return atRow(row - 1, -1);
    case Qt::Key_Right:
        return atCol(col + 1, 1);
    case Qt::Key_Left:
        return atCol(col - 1, -1);
    case Qt::Key_PageDown:
        return atRow(PageAway(row, 1), 1);
    case Qt::Key_PageUp:
        return atRow(PageAway(row, -1), -1);
    case Qt::Key_Home:
        return ctrl ? atRow(m_nFixedRows, 1) : atCol(m_nFixedCols, 1);
    case Qt::Key_End:
        return ctrl ? atRow(m_nRows - 1, -1) : atCol(m_nCols - 1, -1);
    default:
        return {};
    }
}

int CGridCtrl::PageAway(int row, int step) const {
    const int page = std::max(0, viewport()->height() - FixedHeight());
    const int start = m_arRowHeights.Start(row);
    // The furthest row that starts within a page from here, so that the ways there and back agree.
    const int away = step > 0 ? std::max(m_arRowHeights.IndexAt(start + page), row + 1)
                              : std::min(m_arRowHeights.IndexAt(start - page - 1) + 1, row - 1);
    return std::clamp(away, m_nFixedRows, m_nRows - 1);
}

void CGridCtrl::MoveTo(CCellID cell, bool extend) {
    if (m_MouseMode == MouseMode::Nothing) {
        Notify(GVN_SELCHANGING, cell);
        if (!extend || !IsValid(m_SelectionStartCell))
            m_SelectionStartCell = cell;
        if (IsValid(cell)) // not gone in the notification
            SelectTo(cell);
        Notify(GVN_SELCHANGED, cell);
    }
    SetFocusCell(cell);
    EnsureVisible(cell.row, cell.col);
}
