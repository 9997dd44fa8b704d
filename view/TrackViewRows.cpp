// Rows that come and go, section by section.

#include "grid/GridCtrl.h"
#include "library/MediaLists.h"
#include "view/TrackView.h"

#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {

/// Above as many separate runs of rows, one pass over the whole section is cheaper.
constexpr int kMostRuns = 32;

/// Runs of indices without a gap between them, the last one first, each as first and count.
std::vector<std::pair<int, int>> RunsFromTheEnd(const std::vector<int>& indices) {
    std::vector<std::pair<int, int>> runs;
    for (auto index = indices.rbegin(); index != indices.rend(); ++index) {
        if (!runs.empty() && runs.back().first == *index + 1)
            runs.back() = {*index, runs.back().second + 1};
        else
            runs.emplace_back(*index, 1);
    }
    return runs;
}

} // namespace

CTrackView::Section* CTrackView::FindSection(const CMediaList& list) {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section& one) { return one.listId == list.m_iId; });
    return found == m_sections.end() ? nullptr : &*found;
}

void CTrackView::InsertRows(int first, int count) {
    for (Section& section : m_sections)
        if (section.titleRow >= first)
            section.titleRow += count;
    m_idFocus = GridRowShift{first, count}.Moved(m_idFocus);
    m_grid.InsertRows(first, count);
}

void CTrackView::DeleteRows(int first, int count) {
    for (Section& section : m_sections)
        if (section.titleRow >= first + count)
            section.titleRow -= count;
    m_idFocus = GridRowShift{first, -count}.Moved(m_idFocus);
    m_grid.DeleteRows(first, count);
}

/// Lists and records remember their rows, from `firstRow` on. What is not shown has none.
void CTrackView::NumberRows(int firstRow) {
    for (const Section& section : m_sections) {
        CMediaList* list = m_lists.FindListById(section.listId);
        if (!list)
            continue;
        list->m_iTitleRow = IsExclusiveView() ? -1 : section.titleRow;
        for (int index = std::max(0, firstRow - section.RowOf(0)); index < list->GetCount();
             ++index)
            (*list)[index]->m_iRow = index < section.tracks ? section.RowOf(index) : 0;
    }
}

/// Selects the rows of the records from `first` on that say so.
void CTrackView::SelectMarked(const Section& section, const CMediaList& list, int first) {
    for (int index = first; index < section.tracks; ++index)
        if (list[index]->m_bRowSelected)
            m_grid.SelectRow(section.RowOf(index), true);
}

/// Of an open section, those that have no row yet.
void CTrackView::ShowNewTracks(Section& section, const CMediaList& list) {
    const int first = section.tracks;
    const int count = list.GetCount() - first;
    if (!list.ShowsTracks() || count <= 0)
        return;
    section.tracks += count;
    InsertRows(section.RowOf(first), count);
    NumberRows(section.RowOf(first));
    SelectMarked(section, list, first);
    const int known = std::max(first, section.fitted);
    m_grid.FitToRows(section.RowOf(known), section.tracks - known);
    section.fitted = section.tracks;
}

void CTrackView::HideTracks(Section& section) {
    const int count = std::exchange(section.tracks, 0);
    DeleteRows(section.RowOf(0), count);
    NumberRows(section.RowOf(0));
}

void CTrackView::OnTracksAppended(const CMediaList& list, int) {
    Section* section = FindSection(list);
    if (!section)
        return;
    ShowNewTracks(*section, list);
    RefreshRows(1, &list, -1);
    MarkSortColumn();
}

void CTrackView::OnTracksRemoved(const CMediaList& list, const std::vector<int>& indices) {
    Section* section = FindSection(list);
    if (!section || indices.empty())
        return;
    const auto runs = RunsFromTheEnd(indices);
    const CCellID before = m_grid.GetFocusCell().IsValid() ? m_grid.GetFocusCell() : m_idFocus;
    const auto goes = [&](int row) {
        return std::binary_search(indices.begin(), indices.end(), row - section->RowOf(0));
    };
    const auto after = [&](int row) {
        const auto above =
            std::lower_bound(indices.begin(), indices.end(), row - section->RowOf(0));
        return row - static_cast<int>(above - indices.begin());
    };
    const bool focusGoes = before.IsValid() && section->tracks > 0 && goes(before.row);
    const CCellID next{before.IsValid() ? after(before.row) : -1, before.col};

    section->fitted = std::min(section->fitted, list.GetCount());
    if (section->tracks > 0 && runs.size() > kMostRuns) {
        RemapTracks(*section, list);
    } else if (section->tracks > 0) {
        for (const auto& [first, count] : runs) {
            if (first + count > section->tracks) // it had no row yet
                continue;
            section->tracks -= count;
            DeleteRows(section->RowOf(first), count);
        }
        // Colours go by the index.
        const int first = std::min(indices.front(), section->tracks);
        m_grid.RenewRows(section->RowOf(first), section->tracks - first);
        NumberRows(section->RowOf(first));
    }
    if (focusGoes) {
        m_idFocus = {std::min(next.row, m_grid.GetRowCount() - 1), next.col};
        m_grid.SetFocusCell(m_idFocus.row > 0 ? m_idFocus : CCellID{});
    }
    RefreshRows(1, &list, -1);
}

/// The tracks have other places than their rows tell, some may have gone or come: selection, focus
/// and, where tracks have gone, the scroll position follow them.
void CTrackView::RemapTracks(Section& section, const CMediaList& list) {
    if (section.tracks == 0 && list.GetCount() == 0)
        return;
    m_grid.EndEdit();
    QScrollBar& bar = *m_grid.verticalScrollBar();
    const int top = m_grid.GetCellFromPt(m_grid.GetGeometry().Body().topLeft(), false).row;
    const int shown = list.ShowsTracks() ? list.GetCount() : 0;
    const int firstRow = section.RowOf(0);
    const bool fewer = shown < section.tracks;
    const CCellID focus = m_grid.GetFocusCell().IsValid() ? m_grid.GetFocusCell() : m_idFocus;

    std::vector<bool> selected(m_grid.GetRowCount());
    for (const int row : m_grid.GetSelectedRows())
        selected[row] = true;
    CCellID newFocus = focus;
    if (focus.row >= firstRow && focus.row < firstRow + section.tracks)
        newFocus = {};
    std::vector<int> toSelect;
    int gone = fewer && top >= firstRow ? std::min(top - firstRow, section.tracks) : 0;
    for (int index = 0; index < shown; ++index) {
        const CTrackRecord& track = *list[index];
        if (track.m_bRowSelected || (track.m_iRow > 0 && selected[track.m_iRow]))
            toSelect.push_back(section.RowOf(index));
        if (track.m_iRow == focus.row)
            newFocus = {section.RowOf(index), focus.col};
        if (gone > 0 && track.m_iRow < top)
            --gone;
    }
    const int scroll = bar.value() - gone * m_grid.GetRowHeight(firstRow);
    for (int row = firstRow; row < firstRow + section.tracks; ++row)
        if (selected[row])
            m_grid.SelectRow(row, false);
    const int change = shown - std::exchange(section.tracks, shown);
    if (change > 0)
        InsertRows(firstRow + shown - change, change);
    else if (change < 0)
        DeleteRows(firstRow + shown, -change);
    m_grid.RenewRows(firstRow, shown);
    for (const int row : toSelect)
        m_grid.SelectRow(row, true);
    NumberRows();
    if (fewer)
        bar.setValue(scroll);
    m_idFocus = newFocus;
    m_grid.SetFocusCell(newFocus);
}

void CTrackView::RefillSection(const CMediaList& list) {
    Section* section = FindSection(list);
    if (IsExclusiveView() != m_bExclusive) {
        FillGrid();
    } else if (!list.IsOnScreen()) {
        DeleteSection(list);
    } else if (!section) {
        InsertSection(list);
    } else {
        section->fitted = 0;
        RemapTracks(*section, list);
        m_grid.FitToRows(section->RowOf(0), section->tracks);
        section->fitted = section->tracks;
        RefreshRows(1, &list, -1);
    }
    MarkSortColumn();
}

void CTrackView::InsertSection(const CMediaList& list) {
    auto place = m_sections.begin();
    for (const auto& other : m_lists.All()) {
        if (other->m_iId == list.m_iId)
            break;
        if (place != m_sections.end() && place->listId == other->m_iId)
            ++place;
    }
    const bool last = place == m_sections.end();
    const int row = last ? m_grid.GetRowCount() : place->titleRow;
    const auto index = place - m_sections.begin();
    if (!IsExclusiveView())
        InsertRows(row, 1);
    m_sections.insert(m_sections.begin() + index, {list.m_iId, IsExclusiveView() ? 0 : row, 0, 0});
    NumberRows();
    ShowNewTracks(m_sections[index], list);
}

void CTrackView::DeleteSection(const CMediaList& list) {
    Section* section = FindSection(list);
    if (!section)
        return;
    HideTracks(*section);
    if (CMediaList* gone = m_lists.FindListById(list.m_iId))
        gone->m_iTitleRow = -1;
    const int title = section->titleRow;
    m_sections.erase(m_sections.begin() + (section - m_sections.data()));
    if (title > 0)
        DeleteRows(title, 1);
    NumberRows();
}

void CTrackView::FoldSection(CMediaList& list) {
    Section* section = FindSection(list);
    if (!section || list.GetCount() == 0)
        return;
    list.m_bExpanded = !list.m_bExpanded;
    if (list.m_bExpanded)
        ShowNewTracks(*section, list);
    else
        HideTracks(*section);
    MarkSortColumn();
}

void CTrackView::OnRemoving(const CMediaList& list) {
    DeleteSection(list);
    if (m_current.listId == list.m_iId)
        m_current = {};
}
