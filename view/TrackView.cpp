#include "view/TrackView.h"

#include "accessible/GridAccessible.h"
#include "base/FileKinds.h"
#include "base/Guard.h"
#include "base/Language.h"
#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCellNull.h"
#include "grid/GridCompare.h"
#include "grid/GridCtrl.h"
#include "library/MediaLists.h"
#include "library/TrackColumns.h"
#include "platform/Path.h"

#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {

constexpr COLORREF kPage = 0xF6F6F6;
constexpr COLORREF kCellBackground = 0xE0FFFF;
constexpr COLORREF kSelectedBackground = 0xDFBE7A;
constexpr COLORREF kHeaderText = 0;

constexpr int kFirstWidth = 100; ///< until the columns are fitted

COLORREF RowColour(const CMediaList& list, int index) {
    if (list[index]->m_bPlaying)
        return list.m_crRowPlaying;
    return index % 2 == 0 ? list.m_crRowEven : list.m_crRowOdd;
}

} // namespace

CTrackView::CTrackView(CMediaLists& lists, CGridCtrl& grid)
    : m_lists(lists)
    , m_grid(grid) {
    SetColumns(kDefaultColumns);
    ConfigureGrid();
    m_removing = m_lists.OnRemoving([this](const CMediaList& list) { OnRemoving(list); });
}

CTrackView::~CTrackView() {
    m_grid.SetRowFiller(nullptr);
}

void CTrackView::ConfigureGrid() {
    CGridAccessible::Install();
    m_grid.EnableDragAndDrop(false);
    m_grid.SetGridBkColor(kPage);
    CGridDefaultCell& body = *m_grid.GetDefaultCell(false, false);
    body.SetBackClr(kCellBackground);
    body.SetSelBackClr(kSelectedBackground);
    for (const bool fixedRow : {false, true})
        for (const bool fixedCol : {false, true})
            m_grid.GetDefaultCell(fixedRow, fixedCol)->SetCoords(8, 2);
    m_grid.SetFixedColumnSelection(false);
    m_grid.SetAllowColHide(true);
    m_grid.SetEditable(true);
    m_grid.SetGridLines(GridLines::HeaderMarks);
    m_grid.SetListMode(true);
    m_grid.SetCompareFunction(&CompareNumbers);
    m_grid.SetRowFiller([this](int row) { FillRow(row); });
}

void CTrackView::SetColumns(unsigned columns) {
    m_dwColumns = columns | kTitleColumn;
    m_columns.clear();
    for (const TrackColumn& column : AllTrackColumns())
        if (m_dwColumns & column.bit)
            m_columns.push_back(&column);
}

void CTrackView::ToggleColumn(int command) {
    const TrackColumn* column = FindTrackColumnOfCommand(command);
    if (!column)
        return;
    SetColumns(m_dwColumns ^ column->bit);
    FillGrid();
}

/// Gives each list on screen its rows, and returns the number of all rows.
int CTrackView::MakeSections() {
    m_sections.clear();
    int row = IsExclusiveView() ? 0 : 1;
    for (const auto& list : m_lists.All()) {
        if (!list->IsOnScreen())
            continue;
        if (IsExclusiveView())
            list->m_bExpanded = 1;
        const int tracks = list->ShowsTracks() ? list->GetCount() : 0;
        m_sections.push_back({list->m_iId, row, tracks, tracks});
        row += 1 + tracks;
    }
    return std::max(row, 1);
}

void CTrackView::FillGrid() {
    Guarded("FillGrid()", [this] {
        const CCellID focus = m_grid.GetFocusCell().IsValid() ? m_grid.GetFocusCell() : m_idFocus;
        const Row focused = FindRow(focus.row);
        BuildRows();
        m_idFocus = FocusAfter(focus, focused);
        m_bExclusive = IsExclusiveView();
        m_grid.SetFocusCell(m_idFocus);
        m_grid.Refresh();
    });
}

/// The cell for the keyboard once the rows are built, which was at `before` on what `focused` is:
/// on the same again, or on the neighbour of a track that has gone. An exclusive view begins at its
/// first track, and leads back to where the keyboard was before it.
CCellID CTrackView::FocusAfter(CCellID before, const Row& focused) {
    const bool exclusive = IsExclusiveView();
    CCellID after = before;
    if (exclusive && !m_bExclusive) {
        m_idBeforeExclusive = before;
        after = {1, kTitleGridColumn};
    } else if (!exclusive && m_bExclusive) {
        after = m_idBeforeExclusive;
    } else if (focused.list) {
        after.row = RowOf(*focused.list, focused.index);
    }
    const int rows = m_grid.GetRowCount();
    return after.row < 1 || rows < 2 ? CCellID{}
                                     : CCellID{std::min(after.row, rows - 1), after.col};
}

void CTrackView::BuildRows() {
    m_grid.DeleteAllItems();
    ForgetRows();
    m_grid.SetRowCount(MakeSections());
    m_grid.SetColumnCount(static_cast<int>(m_columns.size()) + 1);
    m_grid.SetFixedRowCount(1);
    m_grid.SetFixedColumnCount(0);
    m_grid.SetColumnWidth(kCheckColumn, 1);
    for (int column = 1; column < m_grid.GetColumnCount(); ++column)
        m_grid.SetColumnWidth(column, kFirstWidth);
    NumberRows();
    for (const Section& section : m_sections)
        SelectMarked(section, *m_lists.FindListById(section.listId), 0);
    MarkSortColumn();
    m_grid.AutoSizeColumns();
}

/// A row whose list or track has gone meanwhile stays empty until somebody tells of that.
void CTrackView::FillRow(int row) {
    if (row == 0) {
        FillHeader();
        return;
    }
    const auto [list, index] = FindRow(row);
    if (list && index == -1)
        FillTitleRow(*list, row);
    else if (list)
        FillTrackRow(*list, index, row);
}

/// The header marks the column that the active list is sorted by.
void CTrackView::MarkSortColumn() {
    const CMediaList* list = m_lists.GetActiveList();
    const auto order = list ? list->GetSortOrder() : std::nullopt;
    int marked = -1;
    for (int column = 0; order && column < m_grid.GetColumnCount(); ++column) {
        const TrackColumn* shown = ColumnAt(column);
        if ((shown ? shown->bit : 0) == order->columnBit)
            marked = column;
    }
    m_grid.SetSortColumn(marked, order && order->ascending);
}

/// So that what is not shown can't be taken for what has its row now.
void CTrackView::ForgetRows() {
    for (const auto& list : m_lists.All()) {
        list->m_iTitleRow = -1;
        for (int index = 0; index < list->GetCount(); ++index)
            (*list)[index]->m_iRow = 0;
    }
}

CTrackView::Row CTrackView::FindRow(int row) const {
    for (const Section& section : m_sections) {
        CMediaList* list = m_lists.FindListById(section.listId);
        if (!list || row < 1 || row < section.titleRow || row >= section.RowOf(section.tracks))
            continue;
        const int index = row - section.RowOf(0);
        if (index == -1)
            return {list, -1};
        // Of tracks that have changed places nobody may have told yet.
        const CTrackRecord* track = (*list)[index];
        const int found = track && track->m_iRow == row ? index : list->BodyHit(row);
        return found == -1 ? Row{} : Row{list, found};
    }
    return {};
}

/// None for the check boxes, and beside all columns.
const TrackColumn* CTrackView::ColumnAt(int gridColumn) const {
    return gridColumn > kCheckColumn && gridColumn < m_grid.GetColumnCount()
               ? m_columns[gridColumn - 1]
               : nullptr;
}

/// Below 1 for what has no row.
int CTrackView::RowOf(const CMediaList& list, int index) {
    return index == -1 ? list.m_iTitleRow : list[index]->m_iRow;
}

void CTrackView::FillHeader() {
    GridItem item;
    item.row = 0;
    item.mask = GridMask::Text | GridMask::BackClr | GridMask::TextClr;
    item.backClr = kPage;
    item.textClr = kHeaderText;
    for (item.col = 0; item.col < m_grid.GetColumnCount(); ++item.col) {
        item.text = item.col == kCheckColumn
                        ? QString()
                        : GetLanguageText(QString::fromLatin1(m_columns[item.col - 1]->header));
        m_grid.SetItem(item);
    }
}

void CTrackView::FillTitleRow(const CMediaList& list, int row) {
    const int last = m_grid.GetColumnCount() - 1;
    for (int column = 0; column < last; ++column)
        m_grid.SetCellType(row, column, RuntimeClass<CGridCellNull>);
    m_grid.SetCellType(row, last, RuntimeClass<CGridCellBar>);
    for (int column = 0; column <= last; ++column)
        m_grid.SetItemState(row, column, GridState::ReadOnly);
    WriteTitle(list, row);
}

void CTrackView::WriteTitle(const CMediaList& list, int row) {
    GridItem item;
    item.row = row;
    item.mask = GridMask::BackClr | GridMask::TextClr | GridMask::SelBackClr;
    item.backClr = list.m_bActive ? list.m_crTitleActive : list.m_crTitle;
    item.textClr = list.m_crTitleText;
    item.selBackClr = list.m_crTitleActive;
    const int last = m_grid.GetColumnCount() - 1;
    for (item.col = 0; item.col < last; ++item.col)
        m_grid.SetItem(item);
    item.mask |= GridMask::Text | GridMask::Image;
    item.text = list.GetTitleText();
    item.image = list.m_iId == m_iPlayingListId ? kPlayingListImage : list.m_iType;
    m_grid.SetItem(item);
}

void CTrackView::FillTrackRow(const CMediaList& list, int index, int row) {
    m_grid.SetCellType(row, kCheckColumn, RuntimeClass<CGridCellCheck>);
    WriteTrack(list, index, row);
}

void CTrackView::WriteTrack(const CMediaList& list, int index, int row) {
    const CTrackRecord& track = *list[index];
    GridItem item;
    item.row = row;
    item.mask = GridMask::BackClr | GridMask::TextClr;
    item.backClr = RowColour(list, index);
    item.textClr = list.m_crRowText;
    item.col = kCheckColumn;
    m_grid.SetItem(item);
    WriteCheck(track, row);
    item.mask |= GridMask::Text | GridMask::Image;
    for (item.col = 1; item.col < m_grid.GetColumnCount(); ++item.col) {
        item.text = Path::ForDisplay(track.*m_columns[item.col - 1]->text);
        item.image = -1;
        if (item.col == kTitleGridColumn)
            item.image = IsPlaylistFile(track.m_strPath) ? kPlaylistImage : kTrackImage;
        m_grid.SetItem(item);
    }
}

void CTrackView::WriteCheck(const CTrackRecord& track, int row) {
    if (auto* check = dynamic_cast<CGridCellCheck*>(m_grid.GetCell(row, kCheckColumn)))
        check->SetCheck(track.m_bChecked != 0);
}

void CTrackView::RefreshRows(int keepSelection, const CMediaList* list, int index) {
    if (!list || index < -1 || index >= list->GetCount() || !list->IsOnScreen())
        return;
    const int row = RowOf(*list, index);
    if (row < 1)
        return;
    if (!keepSelection)
        m_grid.SelectRow(row, index >= 0 && (*list)[index]->m_bRowSelected);
    if (index >= 0 && m_iLastListId != m_current.listId && (*list)[index]->m_bRowSelected)
        m_grid.SelectRow(row, true);
    if (!m_grid.HasCells(row)) // it will be written when it is needed
        return;
    if (index == -1)
        WriteTitle(*list, row);
    else
        WriteTrack(*list, index, row);
    m_grid.RedrawRow(row);
}

void CTrackView::ShowPlayingList(int listId) {
    if (m_iPlayingListId == listId)
        return;
    const int before = std::exchange(m_iPlayingListId, listId);
    RefreshRows(1, m_lists.FindListById(before), -1);
    RefreshRows(1, m_lists.FindListById(listId), -1);
}

void CTrackView::RefreshChecks(const CMediaList& list) {
    for (int index = 0; index < list.GetCount(); ++index)
        if (const int row = RowOf(list, index); row > 0 && m_grid.HasCells(row))
            WriteCheck(*list[index], row);
    m_grid.Refresh();
    RefreshRows(1, &list, -1);
}

void CTrackView::SortColumn(int gridColumn) {
    CMediaList* list = m_lists.GetActiveList();
    const TrackColumn* column = ColumnAt(gridColumn);
    if (!list || (!column && gridColumn != kCheckColumn))
        return;
    if (list->SortBy(column ? column->bit : 0, CMediaList::kToggleDirection)) {
        list->m_bModified = 1;
        if (Section* section = FindSection(*list))
            RemapTracks(*section, *list);
    }
    MarkSortColumn();
}

void CTrackView::SetTrackStatus(const QString& path, const QString& text) {
    for (const auto& list : m_lists.All()) {
        const int index = list->FindPath(path);
        if (index < 0)
            continue;
        (*list)[index]->m_strStatus = text;
        RefreshRows(1, list.get(), index);
        return;
    }
}

TrackPlace CTrackView::GetCurrentTrack() const {
    const CMediaList* list = m_lists.FindListById(m_current.listId);
    if (!list || m_strCurrentPath.isEmpty())
        return {};
    const CTrackRecord* track = (*list)[m_current.index];
    if (track && track->m_strPath == m_strCurrentPath)
        return m_current;
    const int index = list->FindPath(m_strCurrentPath);
    return index < 0 ? TrackPlace{} : TrackPlace{m_current.listId, index};
}

void CTrackView::ShowList(int listId) {
    const CMediaList* list = m_lists.FindListById(listId);
    if (g_bPlaylistOnly || !list)
        return;
    ActivateList(listId);
    ScrollToList(listId);
    m_grid.SetFocusCell({list->m_iTitleRow, std::max(m_grid.GetFocusCell().col, kTitleGridColumn)});
}

void CTrackView::ActivateList(int listId) {
    const CMediaList* target = m_lists.FindListById(listId);
    if (g_bPlaylistOnly || !target)
        return;
    if (g_bSelectionOnly) {
        g_bSelectionOnly = 0;
        FillGrid();
    }
    for (const auto& list : m_lists.All()) {
        if (list.get() == target) {
            list->m_bActive = 1;
            m_grid.SetSelectedRange(list->m_iTitleRow, 0, list->m_iTitleRow,
                                    m_grid.GetColumnCount() - 1);
            RefreshRows(1, target, -1);
        } else if (list->m_bActive) {
            list->m_bActive = 0;
            RefreshRows(0, list.get(), -1);
        }
    }
    MarkSortColumn();
}

void CTrackView::FitColumns() {
    m_grid.RefitColumns();
}

void CTrackView::ScrollToList(int listId) {
    const CMediaList* list = m_lists.FindListById(listId);
    if (!list || !list->IsOnScreen() || IsExclusiveView())
        return;
    const int header = m_grid.GetCellRect({0, 0}).bottom();
    const int title = m_grid.GetCellRect({list->m_iTitleRow, 0}).top();
    QScrollBar* bar = m_grid.verticalScrollBar();
    bar->setValue(bar->value() + title - header - 1);
}
