// Clicks and edits.

#include "grid/GridCellBase.h"
#include "grid/GridCtrl.h"
#include "library/MediaLists.h"
#include "library/TrackColumns.h"
#include "library/TrackEdit.h"
#include "view/TrackView.h"

#include <QGuiApplication>
#include <QScrollBar>

#include <algorithm>
#include <vector>

void CTrackView::OnNotify(GridNotification& notification) {
    const auto [row, column] = CCellID{notification.row, notification.col};
    if (row < 0)
        return;
    switch (notification.code) {
    case NM_CLICK:
        if (row == 0)
            SortColumn(column);
        else
            OnClick(row, column == kCheckColumn ? CheckMark::Toggle : CheckMark::Keep);
        break;
    case NM_RCLICK:
        OnRightClick({row, column});
        break;
    case NM_DBLCLK:
        OnDoubleClick(row);
        break;
    case GVN_SELCHANGED:
        if (row > 0)
            m_idFocus = {row, column};
        if (notification.byKey) // the mouse clicks besides
            OnClick(row, CheckMark::Keep);
        break;
    case GVN_BEGINLABELEDIT:
        notification.allowed = AllowsEdit({row, column});
        break;
    case GVN_ENDLABELEDIT:
        if (notification.changed)
            OnEdited({row, column});
        break;
    default:
        break;
    }
}

void CTrackView::OnClick(int row, CheckMark mark) {
    for (const auto& list : m_lists.All())
        if (list->IsOnScreen())
            ClickList(*list, row, mark);
    MarkSortColumn();
}

/// What rows are selected is the grid's business, which knows of the keys that were held.
void CTrackView::ClickList(CMediaList& list, int row, CheckMark mark) {
    const int wasActive = list.m_bActive;
    const Row hit = FindRow(row);
    const bool titleHit = hit.list == &list && hit.index == -1;
    list.m_bActive = titleHit;
    const int clicked = hit.list == &list ? hit.index : -1;
    if (clicked >= 0)
        ClickTrack(list, clicked, mark);
    ForgetOtherSelections(list, clicked);
    if (list.m_bActive != wasActive || titleHit)
        RefreshRows(titleHit, &list, -1);
}

void CTrackView::ClickTrack(CMediaList& list, int index, CheckMark mark) {
    CTrackRecord& track = *list[index];
    if (mark != CheckMark::Keep)
        track.m_bChecked = mark == CheckMark::Set || !track.m_bChecked;
    track.m_bRowSelected = 1;
    list.m_bActive = 1;
    m_current = {list.m_iId, index};
    m_strCurrentPath = track.m_strPath;
    if (!QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier))
        m_iLastListId = list.m_iId;
    RefreshRows(0, &list, -1);
    RefreshRows(1, &list, index);
    m_currentTrack.Tell(list, index);
}

void CTrackView::ForgetOtherSelections(CMediaList& list, int clicked) {
    for (int index = 0; index < list.GetCount(); ++index) {
        if (index == clicked || !list[index]->m_bRowSelected)
            continue;
        list[index]->m_bRowSelected = 0;
        RefreshRows(1, &list, index);
    }
}

void CTrackView::OnRightClick(CCellID cell) {
    m_iClickColumn = cell.col;
    if (cell.row > 0)
        SelectClicked(cell);
    const Row hit = FindRow(cell.row);
    if (cell.row == 0 || hit.list)
        m_menu.Tell(cell, hit.list, hit.index);
}

void CTrackView::SelectClicked(CCellID cell) {
    if (!(m_grid.GetItemState(cell.row, cell.col) & GridState::Selected)) {
        m_grid.SetSelectedRange(cell.row, 0, cell.row, m_grid.GetColumnCount() - 1);
        m_grid.SetFocusCell(cell);
    }
    OnClick(cell.row, CheckMark::Set);
}

void CTrackView::OnDoubleClick(int row) {
    const Row hit = FindRow(row);
    if (!hit.list)
        return;
    if (hit.index == -1)
        FoldSection(*hit.list);
    else if (hit.list->m_iType != MEDIA_TYPE_PHONE)
        PlayTrack(*hit.list, hit.index);
}

bool CTrackView::OnKey(int key, Qt::KeyboardModifiers modifiers) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key == Qt::Key_Space)
        ToggleChecks();
    else if (enter && modifiers.testFlag(Qt::ShiftModifier))
        SortColumn(m_grid.GetFocusCell().col);
    else if (enter)
        OnDoubleClick(m_grid.GetFocusCell().row);
    else
        return false;
    return true;
}

/// Of the active list's selected rows all are checked, unless all of them were.
void CTrackView::ToggleChecks() {
    CMediaList* list = m_lists.GetActiveList();
    if (!list || !list->IsOnScreen() || !list->ShowsTracks())
        return;
    std::vector<int> selected;
    for (const int row : m_grid.GetSelectedRows())
        if (const Row hit = FindRow(row); hit.list == list && hit.index >= 0)
            selected.push_back(hit.index);
    const bool check = std::any_of(selected.begin(), selected.end(),
                                   [&](int index) { return !(*list)[index]->m_bChecked; });
    for (const int index : selected) {
        (*list)[index]->m_bChecked = check;
        if (const int row = RowOf(*list, index); m_grid.HasCells(row)) {
            WriteCheck(*(*list)[index], row);
            m_grid.RedrawRow(row);
        }
    }
    RefreshRows(1, list, -1);
}

void CTrackView::PlayTrack(CMediaList& list, int index) {
    list[index]->m_bRowSelected = 1;
    list.m_bActive = 1;
    RefreshRows(1, &list, index);
    m_play.Tell(list, index);
}

void CTrackView::PlayCurrent() {
    const TrackPlace current = GetCurrentTrack();
    if (CMediaList* list = m_lists.FindListById(current.listId))
        PlayTrack(*list, current.index);
}

void CTrackView::EditClickedCell() {
    // Since the click it may have got another row.
    const TrackPlace current = GetCurrentTrack();
    const CMediaList* list = m_lists.FindListById(current.listId);
    if (!list)
        return;
    const int row = RowOf(*list, current.index);
    const CCellID clicked{row, m_iClickColumn};
    m_grid.OnEditCell(AllowsEdit(clicked) ? clicked : CCellID{row, kTitleGridColumn});
}

bool CTrackView::AllowsEdit(CCellID cell) const {
    const Row edited = FindRow(cell.row);
    const TrackColumn* column = ColumnAt(cell.col);
    return edited.list && column && IsEditable(*edited.list, edited.index, column->text);
}

/// The cell holds the new text, the track still the old one.
void CTrackView::OnEdited(CCellID cell) {
    const Row edited = FindRow(cell.row);
    const TrackColumn* column = ColumnAt(cell.col);
    const CGridCellBase* typed = m_grid.GetCell(cell.row, cell.col);
    if (!edited.list || edited.index == -1 || !column || !typed)
        return;
    m_typed.Tell(*edited.list, edited.index, column->text, typed->GetText());
}

/// Case matters here: on disk it is part of the name.
void CTrackView::ShowText(const QString& path, TrackText text, const QString& value) {
    for (const auto& list : m_lists.All()) {
        for (const int index : list->FindPaths(path)) {
            (*list)[index]->*text = value;
            RefreshRows(1, list.get(), index);
        }
    }
}

void CTrackView::ShowPath(const QString& path, const QString& renamed) {
    for (const auto& list : m_lists.All()) {
        for (const int index : list->FindPaths(path)) {
            list->SetPath(index, renamed);
            RefreshRows(1, list.get(), index);
        }
    }
    if (m_strCurrentPath == path)
        m_strCurrentPath = renamed;
}
