// Editing a cell in place.

#include "drawing/MeasuredFont.h"
#include "grid/GridCtrl.h"
#include "grid/InPlaceEdit.h"

#include <algorithm>
#include <utility>

namespace {

/// How far the text in a frameless field stands from the field's left edge.
constexpr int kFieldMargin = 2;

} // namespace

bool CGridCtrl::IsEditable(CCellID id) const {
    const CGridCellBase* cell = GetCell(id.row, id.col);
    QRect place = GetCellRect(id);
    // Out of sight, the last column ends before it starts; the edit scrolls to it.
    place.setWidth(std::max(place.width(), GetColumnWidth(id.col)));
    return m_bEditable && cell && !cell->IsReadOnly() && !cell->IsFixed() &&
           !cell->GetTextRect(place).isEmpty();
}

bool CGridCtrl::IsInText(CCellID id, QPoint point) const {
    const CGridCellBase* cell = GetCell(id.row, id.col);
    return cell && cell->GetTextRect(GetCellRect(id)).contains(point);
}

/// Where the text field stands: over the text, as far as it is in sight; empty if nothing of it is.
QRect CGridCtrl::EditPlace(CCellID id) const {
    const CGridCellBase* cell = GetCell(id.row, id.col);
    if (!cell || GetRowHeight(id.row) == 0 || GetColumnWidth(id.col) == 0)
        return {};
    QRect place = GetCellRect(id);
    place.setLeft(cell->GetTextRect(place).left() - kFieldMargin);
    const QRect cells = GetGeometry().Body();
    return cells.contains(place.topLeft()) ? place.intersected(cells) : QRect();
}

bool CGridCtrl::OnEditCell(CCellID cell) {
    return OpenEdit(cell) != nullptr;
}

void CGridCtrl::EditAt(CCellID cell, QPoint point) {
    if (CInPlaceEdit* edit = OpenEdit(cell))
        edit->BeginAt(point - edit->pos());
}

void CGridCtrl::EditWith(CCellID cell, const QString& character) {
    if (CInPlaceEdit* edit = OpenEdit(cell))
        edit->BeginWith(character);
}

CInPlaceEdit* CGridCtrl::OpenEdit(CCellID id) {
    EndEdit();
    if (!IsEditable(id))
        return nullptr;
    EnsureVisible(id.row, id.col);
    if (!Notify(GVN_BEGINLABELEDIT, id).allowed)
        return nullptr;
    EndEdit();                         // one that the owner has opened
    const QRect place = EditPlace(id); // empty, too, if the owner has taken the cell away
    if (!IsEditable(id) || place.isEmpty())
        return nullptr;

    const CGridCellBase& cell = *GetCell(id.row, id.col);
    m_pEditWnd = new CInPlaceEdit(viewport(), id, cell.GetText()); // the viewport's
    QPalette colours = m_pEditWnd->palette();
    colours.setColor(QPalette::Base, ToQColor(cell.GetBackClr()));
    colours.setColor(QPalette::Text, ToQColor(cell.GetTextClr()));
    m_pEditWnd->setPalette(colours);
    m_pEditWnd->setFont(cell.GetFont());
    if (m_nFixedRows > 0)
        m_pEditWnd->setAccessibleName(GetCell(0, id.col)->GetText());
    connect(m_pEditWnd, &CInPlaceEdit::Ended, this, &CGridCtrl::OnEditEnded);
    connect(m_pEditWnd, &CInPlaceEdit::DoubleClicked, this, &CGridCtrl::DoubleClickAt);
    m_pEditWnd->SetPlace(place);
    m_pEditWnd->show();
    m_pEditWnd->setFocus();
    return m_pEditWnd;
}

void CGridCtrl::OnEditEnded(int key, Qt::KeyboardModifiers modifiers) {
    EndEdit();
    // The key that ended the edit does what it does without one, but for Enter and Escape.
    const bool moved = IsValid(m_idCurrentCell) && MoveByKey(key, modifiers);
    if (!moved && (key == Qt::Key_Tab || key == Qt::Key_Backtab))
        focusNextPrevChild(key == Qt::Key_Tab);
}

void CGridCtrl::EndEdit() {
    FinishEdit(true);
}

void CGridCtrl::FinishEdit(bool store) {
    CInPlaceEdit* edit = std::exchange(m_pEditWnd, nullptr);
    if (!edit)
        return;
    const CCellID id = edit->Cell();
    const bool changed = store && edit->IsChanged();
    const QString text = edit->text();
    if (edit->window()->focusWidget() == edit) // also where the window is not the active one
        setFocus();
    edit->hide();
    edit->deleteLater(); // it may be what has called

    CGridCellBase* cell = GetCell(id.row, id.col);
    if (!cell)
        return;
    if (changed) {
        cell->SetText(text);
        cell->SetState(cell->GetState() | GridState::Modified);
    }
    RedrawCell(id.row, id.col);
    Notify({.code = GVN_ENDLABELEDIT, .row = id.row, .col = id.col, .changed = changed});
}

/// The cell may have moved: its field goes with it, or ends where the cell goes out of sight.
void CGridCtrl::PlaceEdit() {
    if (!m_pEditWnd)
        return;
    const QRect place = EditPlace(m_pEditWnd->Cell());
    if (place.isEmpty())
        EndEdit();
    else
        m_pEditWnd->SetPlace(place);
}
