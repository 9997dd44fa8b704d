// The mouse: clicks, selection, scrolling at the edges, title tips.

#include "grid/GridCtrl.h"
#include "grid/GridFont.h"
#include "grid/TitleTip.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

GridNotification CGridCtrl::Notify(int code, CCellID cell) const {
    return Notify({.code = code, .row = cell.row, .col = cell.col});
}

GridNotification CGridCtrl::Notify(GridNotification notification) const {
    if (m_pfnNotify)
        m_pfnNotify(notification);
    return notification;
}

void CGridCtrl::SetListMode(bool on) {
    m_bListMode = on;
    m_selection.Clear();
    Refresh();
}

bool CGridCtrl::IsSelecting() const {
    return m_MouseMode == GridMouseMode::SelectRows || m_MouseMode == GridMouseMode::SelectCells;
}

bool CGridCtrl::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip:
        ShowTitleTip(static_cast<QHelpEvent*>(event)->pos());
        return true;
    case QEvent::Leave:
        HideTitleTip();
        if (!m_bLMouseButtonDown)
            LetGo();
        break;
    default:
        break;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CGridCtrl::hideEvent(QHideEvent* event) {
    QAbstractScrollArea::hideEvent(event);
    EndEdit();
    HideTitleTip();
    Interrupt();
}

/// The release will not be seen: what the mouse was selecting ends here.
void CGridCtrl::Interrupt() {
    const bool selecting = IsSelecting();
    LetGo();
    if (selecting)
        Notify(GVN_SELCHANGED, m_LeftClickDownCell);
}

/// Nothing that the mouse was doing goes on.
void CGridCtrl::LetGo() {
    m_scrollTimer.stop();
    m_sizing.Cancel();
    m_bLMouseButtonDown = false;
    m_MouseMode = GridMouseMode::Nothing;
    viewport()->setCursor(Qt::ArrowCursor);
}

void CGridCtrl::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    HideTitleTip();
    EndEdit();
    if (event->button() == Qt::RightButton) {
        const CCellID cell = GetCellFromPt(point, true);
        if (IsValid(cell))
            GetCell(cell.row, cell.col)->OnRClick(point - GetCellRect(cell).topLeft());
        Notify(NM_RCLICK, cell);
    } else if (event->button() == Qt::LeftButton) {
        m_bCtrlDown = event->modifiers().testFlag(Qt::ControlModifier);
        PressAt(point, event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void CGridCtrl::PressAt(QPoint point, bool extend) {
    const CCellID cell = GetCellFromPt(point, true);
    m_MouseMode = GridMouseMode::Nothing;
    m_bLMouseButtonDown = true;
    m_LeftClickDownPoint = m_ptPointer = point;
    m_LeftClickDownCell = cell;
    if (!IsValid(cell))
        return;
    if (!extend)
        m_SelectionStartCell = cell;
    else if (!IsValid(m_SelectionStartCell))
        m_SelectionStartCell = m_idCurrentCell;

    CGridCellBase* clicked = GetCell(cell.row, cell.col);
    clicked->OnClickDown(point - GetCellRect(cell).topLeft());
    if (cell == m_idCurrentCell && IsEditable(cell) && IsInText(cell, point)) {
        m_MouseMode = GridMouseMode::PrepareEdit;
        return;
    }
    const std::optional<GridDivide> divide = m_sizing.DivideAt(point);
    if (!divide)
        SetFocusCell(clicked->IsFixed() ? CCellID{} : cell);
    if (clicked->IsSelected() && m_bAllowDragAndDrop) {
        m_MouseMode = GridMouseMode::PrepareToDrag;
        return;
    }
    if (divide) {
        m_MouseMode =
            divide->axis == Qt::Horizontal ? GridMouseMode::SizingColumn : GridMouseMode::SizingRow;
        m_sizing.Begin(*divide, point);
        return;
    }
    RedrawCell(cell.row, cell.col); // held down, a fixed cell looks sunken
    Notify(GVN_SELCHANGING, cell);
    if (m_bLMouseButtonDown) // not rebuilt in the notification
        StartSelection(cell);
}

void CGridCtrl::StartSelection(CCellID cell) {
    const bool inHeader = cell.row < m_nFixedRows;
    const bool inFixedCol = cell.col < m_nFixedCols;
    if (inHeader && inFixedCol) {
        m_MouseMode = GridMouseMode::SelectAll;
        SelectByInput(BodyCells()); // all there is: moving the mouse adds nothing
    } else if (inHeader)
        OnFixedRowClick(cell);
    else if (inFixedCol)
        OnFixedColumnClick(cell);
    else
        m_MouseMode = m_bListMode ? GridMouseMode::SelectRows : GridMouseMode::SelectCells;
    if (!IsSelecting())
        return;
    SelectTo(cell);
    m_scrollTimer.start(m_nTimerInterval, this);
}

void CGridCtrl::OnFixedRowClick(CCellID cell) {
    SelectByInput(m_bFixedColumnSelection ? QRect(cell.col, m_nFixedRows, 1, m_nRows - m_nFixedRows)
                                          : QRect());
}

void CGridCtrl::OnFixedColumnClick(CCellID cell) {
    SelectByInput(m_bFixedRowSelection ? QRect(m_nFixedCols, cell.row, m_nCols - m_nFixedCols, 1)
                                       : QRect());
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
    Select(range & BodyCells(), m_bCtrlDown);
}

void CGridCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_bLMouseButtonDown && !event->buttons().testFlag(Qt::LeftButton))
        Interrupt(); // the release went to another window
    if (!m_bLMouseButtonDown) {
        Hover(point);
        return;
    }
    const CCellID before = GetCellFromPt(std::exchange(m_ptPointer, point), false);
    const CCellID cell = GetCellFromPt(point, false);
    const bool moved =
        (point - m_LeftClickDownPoint).manhattanLength() >= QApplication::startDragDistance();
    switch (m_MouseMode) {
    case GridMouseMode::SelectRows:
    case GridMouseMode::SelectCells:
        if (IsValid(cell) && cell != before)
            SelectTo(cell);
        break;
    case GridMouseMode::SizingColumn:
    case GridMouseMode::SizingRow:
        m_sizing.MoveTo(point);
        break;
    case GridMouseMode::PrepareEdit:
    case GridMouseMode::PrepareToDrag:
        if (moved && m_bAllowDragAndDrop)
            StartDrag();
        break;
    default:
        break;
    }
}

/// The mouse moves with no button down.
void CGridCtrl::Hover(QPoint point) {
    const std::optional<GridDivide> divide = m_sizing.DivideAt(point);
    if (!divide) {
        m_MouseMode = GridMouseMode::Nothing;
        viewport()->setCursor(Qt::ArrowCursor);
    } else if (divide->axis == Qt::Horizontal) {
        m_MouseMode = GridMouseMode::OverColDivide;
        viewport()->setCursor(Qt::SizeHorCursor);
    } else {
        m_MouseMode = GridMouseMode::OverRowDivide;
        viewport()->setCursor(Qt::SizeVerCursor);
    }
    if (GetCellFromPt(point, true) != m_idTip)
        HideTitleTip();
}

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_bLMouseButtonDown)
        return;
    const QPoint point = event->position().toPoint();
    const CCellID cell = m_LeftClickDownCell;
    const bool onCell = IsValid(cell) && GetCellFromPt(point, true) == cell;
    const GridMouseMode mode = m_MouseMode;
    m_bLMouseButtonDown = false;
    m_scrollTimer.stop();
    m_MouseMode = GridMouseMode::Nothing;
    viewport()->setCursor(Qt::ArrowCursor);
    if (!IsValid(cell))
        return;
    RedrawCell(cell.row, cell.col);
    switch (mode) {
    case GridMouseMode::PrepareEdit:
        if (onCell && IsInText(cell, point))
            EditAt(cell, point);
        break;
    case GridMouseMode::PrepareToDrag:
        if (onCell)
            ReleaseDrag(cell, point);
        break;
    case GridMouseMode::SizingColumn:
    case GridMouseMode::SizingRow:
        m_sizing.End(point);
        break;
    default:
        Notify(GVN_SELCHANGED, cell);
        if (onCell)
            Click(cell, point);
    }
    const auto tell = [this] {
        if (IsValid(m_idCurrentCell))
            Notify(WM_COMMAND, m_idCurrentCell);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void CGridCtrl::Click(CCellID cell, QPoint point) {
    if (!IsValid(cell)) // gone in a notification
        return;
    GetCell(cell.row, cell.col)->OnClick(point - GetCellRect(cell).topLeft());
    Notify(NM_CLICK, cell);
}

/// What might have become a drag was a click into the selection.
void CGridCtrl::ReleaseDrag(CCellID cell, QPoint point) {
    Click(cell, point);
    Notify(GVN_SELCHANGING, cell);
    if (IsValid(cell))
        SelectTo(cell);
    Notify(GVN_SELCHANGED, cell);
}

void CGridCtrl::StartDrag() {
    m_MouseMode = GridMouseMode::Dragging;
    auto* texts = new QMimeData; // the drag's
    texts->setText(m_selection.GetText());
    auto* drag = new QDrag(this); // deletes itself
    drag->setMimeData(texts);
    drag->exec(Qt::CopyAction);
    LetGo(); // no release comes after a drag
}

void CGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        DoubleClickAt(event->position().toPoint());
    else
        mousePressEvent(event);
}

void CGridCtrl::DoubleClickAt(QPoint point) {
    HideTitleTip();
    EndEdit();
    if (const std::optional<GridDivide> divide = m_sizing.DivideAt(point)) {
        m_sizing.AutoSize(*divide);
        return;
    }
    const CCellID cell = GetCellFromPt(point, true);
    if (!IsValid(cell))
        return;
    GetCell(cell.row, cell.col)->OnDblClick(point - GetCellRect(cell).topLeft());
    Notify(NM_DBLCLK, cell);
}

/// The menu key. Under the mouse the press has already told of the right button.
void CGridCtrl::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    if (IsValid(m_idCurrentCell))
        Notify(NM_RCLICK, m_idCurrentCell);
    else
        event->ignore();
}

void CGridCtrl::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_scrollTimer.timerId())
        QAbstractScrollArea::timerEvent(event);
    else if (IsSelecting() && IsValid(m_idCurrentCell))
        ScrollSelection();
}

/// The button is held beyond an edge: one step that way, as with a key, and the selection goes on
/// to the last cell in sight.
void CGridCtrl::ScrollSelection() {
    const QRect cells = viewport()->rect().adjusted(FixedWidth(), FixedHeight(), 0, 0);
    if (cells.isEmpty() || cells.contains(m_ptPointer))
        return;
    const QPoint pointer = m_ptPointer;
    if (pointer.y() > cells.bottom())
        MoveByKey(Qt::Key_Down, {});
    else if (pointer.y() < cells.top())
        MoveByKey(Qt::Key_Up, {});
    if (pointer.x() > cells.right())
        MoveByKey(Qt::Key_Right, {});
    else if (pointer.x() < cells.left())
        MoveByKey(Qt::Key_Left, {});
    const CCellID last = GetCellFromPt({std::clamp(pointer.x(), cells.left(), cells.right()),
                                        std::clamp(pointer.y(), cells.top(), cells.bottom())},
                                       false);
    SetFocusCell(IsValid(last) ? last : m_idCurrentCell);
    SelectTo(m_idCurrentCell);
}

void CGridCtrl::ShowTitleTip(QPoint point) {
    const CCellID id = GetCellFromPt(point, true);
    if (!m_bTitleTips || m_bLMouseButtonDown || IsEditing() || !IsValid(id))
        return;
    const CGridCellBase& cell = *GetCell(id.row, id.col);
    const QRect drawn = GetCellRect(id);
    const QRect text = cell.GetTextRect(drawn);
    const GridFont& font = cell.GetFontObject();
    const GridFont::TextSize size = font.Measure(cell.GetTipText());
    if (text.isEmpty() || size.width <= text.intersected(viewport()->rect()).width())
        return;
    if (!m_pTitleTip)
        m_pTitleTip = new ZTitleTip(viewport()); // the viewport's
    m_idTip = id;
    QPalette colours;
    const bool selected = cell.IsSelected();
    colours.setColor(QPalette::Base, ToQColor(selected ? cell.GetSelBackClr() : cell.GetBackClr()));
    colours.setColor(QPalette::Text, ToQColor(selected ? cell.GetSelTextClr() : cell.GetTextClr()));
    m_pTitleTip->setPalette(colours);
    m_pTitleTip->setFont(font.FontFor(size));
    const QRect place(text.left(), drawn.top(), text.width(), drawn.height());
    m_pTitleTip->Show(place, cell.GetSize().width() / 2, GridFont::OneLine(cell.GetTipText()));
}

void CGridCtrl::HideTitleTip() {
    if (m_pTitleTip)
        m_pTitleTip->hide();
}
