// The keyboard and the wheel.

#include "grid/GridCtrl.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

void CGridCtrl::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    const bool byKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && !IsValid(m_idCurrentCell))
        FocusFirstSeenCell();
    RedrawCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

/// Keys need a cell to start from.
void CGridCtrl::FocusFirstSeenCell() {
    SetFocusCell(GetCellFromPt(GetGeometry().Body().topLeft(), false));
}

void CGridCtrl::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    HideTitleTip();
    Interrupt(); // another window, or a menu, has the mouse now
    RedrawCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

bool CGridCtrl::focusNextPrevChild(bool next) {
    return !m_bHandleTabKey && QAbstractScrollArea::focusNextPrevChild(next);
}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
    HideTitleTip();
    if (event->key() == Qt::Key_Escape && !m_sizing.Line(GetGeometry()).isEmpty()) {
        LetGo();
        return;
    }
    const int key = event->key();
    const bool moves = key >= Qt::Key_Home && key <= Qt::Key_PageDown; // the arrows among them
    if (!IsValid(m_idCurrentCell)) {
        if (moves && !(event->modifiers() & (Qt::AltModifier | Qt::MetaModifier)))
            FocusFirstSeenCell();
        else
            QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    const QString text = event->text();
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    if (event->modifiers() & (Qt::AltModifier | Qt::MetaModifier)) {
        event->ignore(); // the menu's, or the desktop's
    } else if (event->matches(QKeySequence::Copy)) {
        OnEditCopy();
    } else if (key == Qt::Key_Space || key == Qt::Key_Delete) {
        event->ignore(); // the parent's
    } else if (key == Qt::Key_F2) {
        OnEditCell(m_idCurrentCell);
    } else if (MoveByKey(key, event->modifiers())) {
        // done
    } else if (!ctrl && !m_mouse.m_bLMouseButtonDown && !text.isEmpty() &&
               !event->isAutoRepeat() && // held since it was meant for another window
               (text[0].isPrint() || text[0].isSurrogate())) {
        EditWith(m_idCurrentCell, text);
    } else {
        event->ignore();
    }
}

/// Moves the focus as a key tells; false if it is no key for that.
bool CGridCtrl::MoveByKey(int key, Qt::KeyboardModifiers modifiers) {
    const CCellID cell = NextCell(key, modifiers);
    if (!IsValid(cell))
        return false;
    if (!m_mouse.m_bLMouseButtonDown)
        m_mouse.m_bCtrlDown = modifiers.testFlag(Qt::ControlModifier);
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (cell != m_idCurrentCell)
        MoveTo(cell, modifiers.testFlag(Qt::ShiftModifier) && !tab);
    return true;
}

/// Where a key leads from the focused cell: to that cell itself where there is no further one,
/// nowhere if it is no key for that.
CCellID CGridCtrl::NextCell(int key, Qt::KeyboardModifiers modifiers) const {
    const int row = m_idCurrentCell.row;
    const int col = m_idCurrentCell.col;
    const bool ctrl = modifiers & Qt::ControlModifier;
    const auto atRow = [&](int from, int step) {
        const int next = m_arRowHeights.NextVisible(from, step, m_nFixedRows);
        return CCellID{next < 0 ? row : next, col};
    };
    // The row at the end of a page, or where that is hidden the next one, or the nearest before.
    const auto atPage = [&](int step) {
        const int away = PageAway(row, step);
        const CCellID cell = atRow(away, step);
        return cell.row == row ? atRow(away, -step) : cell;
    };
    const auto atCol = [&](int from, int step) {
        const int next = m_arColWidths.NextVisible(from, step, m_nFixedCols);
        return CCellID{row, next < 0 ? col : next};
    };
    switch (key) {
    case Qt::Key_Down:
        return atRow(row + 1, 1);
    case Qt::Key_Up:
        return atRow(row - 1, -1);
    case Qt::Key_Tab:
        return m_bHandleTabKey ? atCol(col + 1, 1) : CCellID{};
    case Qt::Key_Backtab:
        return m_bHandleTabKey ? atCol(col - 1, -1) : CCellID{};
    case Qt::Key_Right:
        return atCol(col + 1, 1);
    case Qt::Key_Left:
        return atCol(col - 1, -1);
    case Qt::Key_PageDown:
        return atPage(1);
    case Qt::Key_PageUp:
        return atPage(-1);
    case Qt::Key_Home:
        return ctrl ? atRow(m_nFixedRows, 1) : atCol(m_nFixedCols, 1);
    case Qt::Key_End:
        return ctrl ? atRow(m_nRows - 1, -1) : atCol(m_nCols - 1, -1);
    default:
        return {};
    }
}

int CGridCtrl::PageAway(int row, int step) const {
    const int page = std::max(0, GetGeometry().Body().height());
    const int start = m_arRowHeights.Start(row);
    // The furthest row that starts within a page from here, so that the ways there and back agree.
    const int away = step > 0 ? std::max(m_arRowHeights.IndexAt(start + page), row + 1)
                              : std::min(m_arRowHeights.IndexAt(start - page - 1) + 1, row - 1);
    return std::clamp(away, m_nFixedRows, m_nRows - 1);
}

void CGridCtrl::MoveTo(CCellID cell, bool extend) {
    if (!m_mouse.m_bLMouseButtonDown) {
        GridNotification notification{
            .code = GVN_SELCHANGING, .row = cell.row, .col = cell.col, .byKey = true};
        Notify(notification);
        if (!extend)
            m_SelectionStartCell = cell;
        else if (!IsValid(m_SelectionStartCell))
            m_SelectionStartCell = m_idCurrentCell;
        if (IsValid(cell)) // not gone in the notification
            SelectTo(cell);
        notification.code = GVN_SELCHANGED;
        Notify(notification);
    }
    SetFocusCell(cell);
    EnsureVisible(cell.row, cell.col);
}

/// The texts of the selected cells, a line for each row, with tabs between the columns.
QString CGridCtrl::SelectedText() const {
    QString text;
    int lastRow = -1;
    for (const auto [row, col] : m_selection.GetCells()) {
        if (lastRow >= 0)
            text += row == lastRow ? u'\t' : u'\n';
        text += GetCell(row, col)->GetText();
        lastRow = row;
    }
    return text;
}

void CGridCtrl::OnEditCopy() {
    if (GetSelectedCount() > 0)
        QApplication::clipboard()->setText(SelectedText());
}

void CGridCtrl::wheelEvent(QWheelEvent* event) {
    HideTitleTip();
    QPoint pixels = event->pixelDelta(); // of touchpads, where the platform tells them
    QPoint angle = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ShiftModifier) && angle.x() == 0) {
        pixels = pixels.transposed();
        angle = angle.transposed();
    }
    Scroll(*horizontalScrollBar(), pixels.x(), angle.x(), m_nWheelRestX);
    Scroll(*verticalScrollBar(), pixels.y(), angle.y(), m_nWheelRestY);
    event->accept();
}

/// Scrolls by pixels, where there are any, else by the angle a wheel was turned, in eighths of a
/// degree: by the desktop's number of lines for each notch of 120, by a page where that is -1. What
/// does not make a pixel stays in `rest` for the next turn.
void CGridCtrl::Scroll(QScrollBar& bar, int pixels, int angle, int& rest) {
    constexpr int kNotch = 120;
    if (pixels == 0 && angle != 0) {
        const int lines = QApplication::wheelScrollLines();
        const int perNotch = lines == -1 ? bar.pageStep() : lines * bar.singleStep();
        if ((rest < 0) != (angle < 0))
            rest = 0; // the wheel was turned back
        rest += angle * perNotch;
        pixels = rest / kNotch;
        rest -= pixels * kNotch;
    }
    bar.setValue(bar.value() - pixels);
}
