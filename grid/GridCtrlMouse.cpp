// The mouse: clicks, selection, scrolling at the edges, title tips.

#include "drawing/MeasuredFont.h"
#include "grid/GridCtrl.h"
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

bool CGridCtrl::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip:
        ShowTitleTip(static_cast<QHelpEvent*>(event)->pos());
        return true;
    case QEvent::Leave:
        HideTitleTip();
        if (!m_mouse.m_bLMouseButtonDown)
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
    const bool selecting = m_mouse.IsSelecting();
    LetGo();
    if (selecting)
        Notify(GVN_SELCHANGED, m_mouse.m_LeftClickDownCell);
}

/// Nothing that the mouse was doing goes on.
void CGridCtrl::LetGo() {
    m_scrollTimer.stop();
    viewport()->update(m_sizing.Line(GetGeometry()));
    m_sizing.Cancel();
    m_mouse.Release();
    m_look.m_idHeldDown = {};
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
        m_mouse.m_bCtrlDown = event->modifiers().testFlag(Qt::ControlModifier);
        PressAt(point, event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void CGridCtrl::PressAt(QPoint point, bool extend) {
    const CCellID cell = GetCellFromPt(point, true);
    m_mouse.Press(cell, point);
    m_look.m_idHeldDown = cell;
    if (!IsValid(cell))
        return;
    if (!extend)
        m_SelectionStartCell = cell;
    else if (!IsValid(m_SelectionStartCell))
        m_SelectionStartCell = m_idCurrentCell;

    CGridCellBase* clicked = GetCell(cell.row, cell.col);
    clicked->OnClickDown(point - GetCellRect(cell).topLeft());
    if (cell == m_idCurrentCell && IsEditable(cell) && IsInText(cell, point)) {
        m_mouse.m_MouseMode = GridMouseMode::PrepareEdit;
        return;
    }
    const std::optional<GridDivide> divide = m_sizing.DivideAt(GetGeometry(), point);
    if (!divide)
        SetFocusCell(clicked->IsFixed() ? CCellID{} : cell);
    if (clicked->IsSelected() && m_bAllowDragAndDrop) {
        m_mouse.m_MouseMode = GridMouseMode::PrepareToDrag;
        return;
    }
    if (divide) {
        m_mouse.m_MouseMode =
            divide->axis == Qt::Horizontal ? GridMouseMode::SizingColumn : GridMouseMode::SizingRow;
        m_sizing.Begin(*divide, point);
        MoveSizing(point);
        return;
    }
    RedrawCell(cell.row, cell.col); // held down, a fixed cell looks sunken
    Notify(GVN_SELCHANGING, cell);
    if (m_mouse.m_bLMouseButtonDown) // not rebuilt in the notification
        StartSelection(cell);
}

void CGridCtrl::StartSelection(CCellID cell) {
    const bool inHeader = cell.row < m_nFixedRows;
    const bool inFixedCol = cell.col < m_nFixedCols;
    if (inHeader && inFixedCol) {
        m_mouse.m_MouseMode = GridMouseMode::SelectAll;
        SelectByInput(BodyCells()); // all there is: moving the mouse adds nothing
    } else if (inHeader)
        OnFixedRowClick(cell);
    else if (inFixedCol)
        OnFixedColumnClick(cell);
    else
        m_mouse.m_MouseMode = m_bListMode ? GridMouseMode::SelectRows : GridMouseMode::SelectCells;
    if (!m_mouse.IsSelecting())
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

void CGridCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_mouse.m_bLMouseButtonDown && !event->buttons().testFlag(Qt::LeftButton))
        Interrupt(); // the release went to another window
    if (!m_mouse.m_bLMouseButtonDown) {
        Hover(point);
        return;
    }
    const CCellID before = GetCellFromPt(std::exchange(m_mouse.m_ptPointer, point), false);
    const CCellID cell = GetCellFromPt(point, false);
    const bool moved = (point - m_mouse.m_LeftClickDownPoint).manhattanLength() >=
                       QApplication::startDragDistance();
    switch (m_mouse.m_MouseMode) {
    case GridMouseMode::SelectRows:
    case GridMouseMode::SelectCells:
        if (IsValid(cell) && cell != before)
            SelectTo(cell);
        break;
    case GridMouseMode::SizingColumn:
    case GridMouseMode::SizingRow:
        MoveSizing(point);
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
    const std::optional<GridDivide> divide = m_sizing.DivideAt(GetGeometry(), point);
    if (!divide) {
        m_mouse.m_MouseMode = GridMouseMode::Nothing;
        viewport()->setCursor(Qt::ArrowCursor);
    } else if (divide->axis == Qt::Horizontal) {
        m_mouse.m_MouseMode = GridMouseMode::OverColDivide;
        viewport()->setCursor(Qt::SizeHorCursor);
    } else {
        m_mouse.m_MouseMode = GridMouseMode::OverRowDivide;
        viewport()->setCursor(Qt::SizeVerCursor);
    }
    if (m_pTitleTip && GetCellFromPt(point, true) != m_pTitleTip->Cell())
        HideTitleTip();
}

void CGridCtrl::MoveSizing(QPoint point) {
    viewport()->update(m_sizing.Line(GetGeometry()));
    m_sizing.MoveTo(point);
    viewport()->update(m_sizing.Line(GetGeometry()));
}

void CGridCtrl::EndSizing(QPoint point) {
    viewport()->update(m_sizing.Line(GetGeometry()));
    const auto sized = m_sizing.End(GetGeometry(), point);
    if (!sized)
        return;
    if (sized->divide.axis == Qt::Horizontal)
        SetColumnWidth(sized->divide.index, sized->size);
    else
        SetRowHeight(sized->divide.index, sized->size);
}

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_mouse.m_bLMouseButtonDown)
        return;
    const QPoint point = event->position().toPoint();
    const CCellID cell = m_mouse.m_LeftClickDownCell;
    const bool onCell = IsValid(cell) && GetCellFromPt(point, true) == cell;
    const GridMouseMode mode = m_mouse.m_MouseMode;
    m_mouse.Release();
    m_look.m_idHeldDown = {};
    m_scrollTimer.stop();
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
        EndSizing(point);
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
    m_mouse.m_MouseMode = GridMouseMode::Dragging;
    auto* texts = new QMimeData; // the drag's
    texts->setText(SelectedText());
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
    if (const std::optional<GridDivide> divide = m_sizing.DivideAt(GetGeometry(), point)) {
        const auto [axis, index] = CGridSizing::VisibleBefore(GetGeometry(), *divide);
        if (axis == Qt::Horizontal)
            AutoSizeColumn(index);
        else
            AutoSizeRow(index);
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
    if (event->timerId() == m_refitTimer.timerId())
        RefitStep();
    else if (event->timerId() != m_scrollTimer.timerId())
        QAbstractScrollArea::timerEvent(event);
    else if (m_mouse.IsSelecting() && IsValid(m_idCurrentCell))
        ScrollSelection();
}

/// The button is held beyond an edge: one step that way, as with a key, and the selection goes on
/// to the last cell in sight.
void CGridCtrl::ScrollSelection() {
    const QRect cells = GetGeometry().Body();
    if (cells.isEmpty() || cells.contains(m_mouse.m_ptPointer))
        return;
    const QPoint pointer = m_mouse.m_ptPointer;
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
    if (!m_bTitleTips || m_mouse.m_bLMouseButtonDown || IsEditing() || !IsValid(id))
        return;
    const CGridCellBase& cell = *GetCell(id.row, id.col);
    const QRect drawn = GetCellRect(id);
    const QRect text = cell.GetTextRect(drawn);
    const CMeasuredFont& font = cell.GetFontObject();
    const CMeasuredFont::TextSize size = font.Measure(cell.GetTipText());
    if (text.isEmpty() || size.width <= text.intersected(viewport()->rect()).width())
        return;
    if (!m_pTitleTip)
        m_pTitleTip = new ZTitleTip(viewport()); // the viewport's
    QPalette colours;
    const bool selected = cell.IsSelected();
    colours.setColor(QPalette::Base, ToQColor(selected ? cell.GetSelBackClr() : cell.GetBackClr()));
    colours.setColor(QPalette::Text, ToQColor(selected ? cell.GetSelTextClr() : cell.GetTextClr()));
    m_pTitleTip->setPalette(colours);
    m_pTitleTip->setFont(font.FontFor(size));
    const QRect place(text.left(), drawn.top(), text.width(), drawn.height());
    m_pTitleTip->Show(id, place, cell.GetSize().width() / 2,
                      CMeasuredFont::OneLine(cell.GetTipText()));
}

void CGridCtrl::HideTitleTip() {
    if (m_pTitleTip)
        m_pTitleTip->hide();
}
