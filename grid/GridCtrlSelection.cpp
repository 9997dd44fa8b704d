// The selection and the focus.

#include "grid/GridCtrl.h"
#include "grid/IGridWatcher.h"

#include <algorithm>
#include <utility>

void CGridCtrl::SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRedraw,
                                 bool selectCells) {
    if (!m_bEnableSelection)
        return;
    const bool none = !selectCells || minRow < 0 || minCol < 0;
    const QRect range =
        none ? QRect() : QRect(QPoint(minCol, minRow), QPoint(maxCol, maxRow)) & BodyCells();
    Select(range, false);
    if (forceRedraw)
        viewport()->repaint();
}

void CGridCtrl::Select(const QRect& range, bool keepOthers) {
    if (!keepOthers)
        UpdateRows(Mark(m_selection.RemoveBeside(range), false));
    UpdateRows(Mark(m_selection.Add(range), true));
}

void CGridCtrl::SelectCell(CCellID cell, bool selected) {
    const QRect range(cell.col, cell.row, 1, 1);
    Mark(selected ? m_selection.Add(range) : m_selection.Remove(range), selected);
}

/// Writes a change of the selection into the cells that are made, and returns what lies around it.
QRect CGridCtrl::Mark(const QRegion& changed, bool selected) const {
    for (const QRect& range : changed) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            for (int col = range.left(); col <= range.right() && HasCells(row); ++col)
                SetStateBit({row, col}, GridState::Selected, selected);
        }
    }
    if (m_pWatcher && !changed.isEmpty())
        m_pWatcher->OnSelectionChanged();
    return changed.boundingRect();
}

/// Of a cell that is made; others get their bits when they are.
void CGridCtrl::SetStateBit(CCellID id, quint32 bit, bool on) const {
    if (!IsValid(id) || !HasCells(id.row))
        return;
    CGridCellBase& cell = *m_rows[id.row][id.col];
    cell.SetState(on ? cell.GetState() | bit : cell.GetState() & ~bit);
}

void CGridCtrl::SelectRow(int row, bool selected) {
    const QRect range = QRect(m_nFixedCols, row, m_nCols, 1) & BodyCells();
    UpdateRows(Mark(selected ? m_selection.Add(range) : m_selection.Remove(range), selected));
}

bool CGridCtrl::SelectBesides(CCellID first, CCellID last, bool selected) {
    if (!m_bEnableSelection || !IsValid(first) || !IsValid(last))
        return false;
    Notify(GVN_SELCHANGING, first);
    if (!IsValid(last)) // gone in the notification
        return false;
    const QRect range(QPoint(first.col, first.row), QPoint(last.col, last.row));
    UpdateRows(Mark(selected ? m_selection.Add(range) : m_selection.Remove(range), selected));
    Notify(GVN_SELCHANGED, first);
    return true;
}

/// All cells but the fixed ones, columns as x and rows as y.
QRect CGridCtrl::BodyCells() const {
    return {QPoint(m_nFixedCols, m_nFixedRows), QPoint(m_nCols - 1, m_nRows - 1)};
}

void CGridCtrl::SetListMode(bool on) {
    m_bListMode = on;
    Select(QRect(), false);
}

void CGridCtrl::SelectTo(CCellID cell) {
    const CCellID from = IsValid(m_SelectionStartCell) ? m_SelectionStartCell : cell;
    const auto [minRow, maxRow] = std::minmax(from.row, cell.row);
    const auto [minCol, maxCol] = std::minmax(from.col, cell.col);
    QRect range(QPoint(minCol, minRow), QPoint(maxCol, maxRow));
    if (m_bListMode)
        range = QRect(QPoint(m_nFixedCols, minRow), QPoint(m_nCols - 1, maxRow));
    SelectByInput(range);
}

/// As mouse and keyboard select: in place of the old selection, or besides it where Ctrl is held.
void CGridCtrl::SelectByInput(const QRect& range) {
    if (!m_bEnableSelection)
        return;
    Select(range & BodyCells(), m_mouse.m_bCtrlDown);
}

void CGridCtrl::SetFocusCell(CCellID id) {
    if (!IsValid(id))
        id = {};
    if (id == m_idCurrentCell)
        return;
    const CCellID old = std::exchange(m_idCurrentCell, id);
    SetStateBit(old, GridState::Focused, false);
    SetStateBit(id, GridState::Focused, true);
    RedrawCell(old.row, old.col);
    RedrawCell(id.row, id.col);
    if (m_pWatcher)
        m_pWatcher->OnFocusMoved();
}
