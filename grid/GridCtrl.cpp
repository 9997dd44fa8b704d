#include "grid/GridCtrl.h"

#include "drawing/MeasuredFont.h"
#include "grid/GridCompare.h"
#include "grid/IGridWatcher.h"
#include "grid/InPlaceEdit.h"

#include <QEvent>
#include <QPalette>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr quint32 kFixedBits = GridState::Fixed | GridState::FixedRow | GridState::FixedCol;

/// The bits of a cell's state that only the grid sets.
constexpr quint32 kOwnBits = kFixedBits | GridState::Focused;

GridSystemColours SystemColours(const QPalette& palette) {
    return {
        .windowText = ToColorRef(palette.color(QPalette::Text)),
        .window = ToColorRef(palette.color(QPalette::Base)),
        .face = ToColorRef(palette.color(QPalette::Button)),
        .shadow = ToColorRef(palette.color(QPalette::Dark)),
        .darkShadow = ToColorRef(palette.color(QPalette::Shadow)),
        .light = ToColorRef(palette.color(QPalette::Light)),
        .highlight = ToColorRef(palette.color(QPalette::Highlight)),
    };
}

} // namespace

CGridCtrl::CGridCtrl(QWidget* parent, int rows, int cols, int fixedRows, int fixedCols)
    : QAbstractScrollArea(parent)
    , m_cellDefault(m_look, 0, [this] { OnDefaultsChanged(); })
    , m_cellFixedRowDef(m_look, GridState::Fixed | GridState::FixedRow,
                        [this] { OnDefaultsChanged(); })
    , m_cellFixedColDef(m_look, GridState::Fixed | GridState::FixedCol,
                        [this] { OnDefaultsChanged(); })
    , m_cellFixedRowColDef(m_look, kFixedBits, [this] { OnDefaultsChanged(); }) {
    m_look.m_crSystem = SystemColours(palette());
    m_look.m_crGridBkColour = m_look.m_crSystem.shadow;
    setFrameShape(QFrame::NoFrame);
    setLayoutDirection(Qt::LeftToRight); // columns and scroll bars, in every language
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    OnDefaultsChanged();
    SetRowCount(rows);
    SetColumnCount(cols);
    SetFixedRowCount(fixedRows);
    SetFixedColumnCount(fixedCols);
}

CGridCtrl::~CGridCtrl() {
    if (m_pEditWnd)
        m_pEditWnd->disconnect(this); // it goes last, and loses the focus by that
    if (IGridWatcher* watcher = std::exchange(m_pWatcher, nullptr))
        watcher->OnGridGoes();
}

void CGridCtrl::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_look.m_crSystem = SystemColours(palette());
        viewport()->update();
    }
    if (event->type() != QEvent::FontChange)
        return;
    const QFont own = font();
    for (CGridDefaultCell* cell :
         {&m_cellDefault, &m_cellFixedRowDef, &m_cellFixedColDef, &m_cellFixedRowColDef})
        cell->SetFont(&own);
}

void CGridCtrl::MarkFixedCells(int rows, int cols) {
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols && HasCells(row); ++col) {
            CGridCellBase& cell = *m_rows[row][col];
            cell.SetState((cell.GetState() & ~kFixedBits) | FixedBits(row, col));
        }
    }
}

quint32 CGridCtrl::FixedBits(int row, int col) const {
    quint32 bits = 0;
    if (row < m_nFixedRows)
        bits |= GridState::Fixed | GridState::FixedRow;
    if (col < m_nFixedCols)
        bits |= GridState::Fixed | GridState::FixedCol;
    return bits;
}

CGridCtrl::Cell CGridCtrl::MakeCell(GridCellClass cellClass, int row, int col) const {
    Cell cell = cellClass();
    cell->SetLook(&m_look);
    cell->SetState(FixedBits(row, col));
    return cell;
}

bool CGridCtrl::IsValid(CCellID cell) const {
    return cell.row >= 0 && cell.row < m_nRows && cell.col >= 0 && cell.col < m_nCols;
}

bool CGridCtrl::HasCells(int row) const {
    return row >= 0 && row < m_nRows && !m_rows[row].empty();
}

const CGridCtrl::Row& CGridCtrl::CellsOf(int row) const {
    if (m_rows[row].empty() && m_nCols > 0)
        FillRow(row);
    return m_rows[row];
}

void CGridCtrl::FillRow(int row) const {
    Row& cells = m_rows[row];
    cells.resize(m_nCols);
    for (int col = 0; col < m_nCols; ++col)
        cells[col] = MakeCell(RuntimeClass<CGridCell>, row, col);
    if (m_pfnFill) {
        m_iFilledRow = row;
        m_pfnFill(row);
        m_iFilledRow = -1;
    }
    for (const QRect& range : m_selection.GetRow(row, m_nCols)) {
        for (int col = range.left(); col <= range.right(); ++col)
            SetStateBit({row, col}, GridState::Selected, true);
    }
    if (m_idCurrentCell.row == row)
        SetStateBit(m_idCurrentCell, GridState::Focused, true);
}

int CGridCtrl::SetCellType(int row, int col, GridCellClass cellClass) {
    const CCellID id{row, col};
    if (!IsValid(id))
        return 0;
    if (row == m_iFilledRow) {
        m_rows[row][col] = MakeCell(cellClass, row, col);
        return 1;
    }
    if (!HasCells(row))
        FillRow(row);
    if (m_pWatcher)
        m_pWatcher->OnCellReplaced(id);
    SelectCell(id, false);
    m_rows[row][col] = MakeCell(cellClass, row, col);
    SetStateBit(id, GridState::Focused, id == m_idCurrentCell);
    return 1;
}

CGridCellBase* CGridCtrl::GetCell(int row, int col) const {
    return IsValid({row, col}) ? CellsOf(row)[col].get() : nullptr;
}

CGridDefaultCell* CGridCtrl::GetDefaultCell(bool fixedRow, bool fixedCol) {
    if (fixedRow)
        return fixedCol ? &m_cellFixedRowColDef : &m_cellFixedRowDef;
    return fixedCol ? &m_cellFixedColDef : &m_cellDefault;
}

int CGridCtrl::SetItem(const GridItem& item) {
    CGridCellBase* cell = GetCell(item.row, item.col);
    if (!cell)
        return 0;
    if (item.mask & GridMask::Text)
        cell->SetText(item.text);
    if (item.mask & GridMask::Image)
        cell->SetImage(item.image);
    if (item.mask & GridMask::Data)
        cell->SetData(item.data);
    if (item.mask & GridMask::State)
        SetItemState(item.row, item.col, item.state);
    if (item.mask & GridMask::BackClr)
        cell->SetBackClr(item.backClr);
    if (item.mask & GridMask::TextClr)
        cell->SetTextClr(item.textClr);
    if (item.mask & GridMask::SelBackClr)
        cell->SetSelBackClr(item.selBackClr);
    if (item.mask & GridMask::SelTextClr)
        cell->SetSelTextClr(item.selTextClr);
    if (item.mask & GridMask::Format)
        cell->SetFormat(item.format);
    return 1;
}

int CGridCtrl::GetItem(GridItem& item) const {
    const CGridCellBase* cell = GetCell(item.row, item.col);
    if (!cell)
        return 0;
    if (item.mask & GridMask::Text)
        item.text = cell->GetText();
    if (item.mask & GridMask::Image)
        item.image = cell->GetImage();
    if (item.mask & GridMask::Data)
        item.data = cell->GetData();
    if (item.mask & GridMask::State)
        item.state = cell->GetState();
    if (item.mask & GridMask::BackClr)
        item.backClr = cell->GetBackClr();
    if (item.mask & GridMask::TextClr)
        item.textClr = cell->GetTextClr();
    if (item.mask & GridMask::SelBackClr)
        item.selBackClr = cell->GetSelBackClr();
    if (item.mask & GridMask::SelTextClr)
        item.selTextClr = cell->GetSelTextClr();
    if (item.mask & GridMask::Format)
        item.format = cell->GetFormat();
    return 1;
}

int CGridCtrl::SetItemState(int row, int col, quint32 state) {
    CGridCellBase* cell = GetCell(row, col);
    if (!cell)
        return 0;
    if (row != m_iFilledRow)
        SelectCell({row, col}, state & GridState::Selected);
    cell->SetState((cell->GetState() & kOwnBits) | (state & ~kOwnBits));
    return 1;
}

quint32 CGridCtrl::GetItemState(int row, int col) const {
    const CGridCellBase* cell = GetCell(row, col);
    return cell ? cell->GetState() : 0;
}

int CGridCtrl::SortItems(GridCompare compare, int col, bool ascending, qintptr data, int low,
                         int high) {
    if (low < 0)
        low = m_nFixedRows;
    if (high < 0)
        high = m_nRows - 1;
    if (col < 0 || col >= m_nCols || low < m_nFixedRows || high >= m_nRows)
        return 0;
    EndEdit();
    m_look.m_nSortColumn = col;
    m_look.m_bAscending = ascending;
    DropMarks();
    if (!compare)
        compare = m_pfnCompare ? m_pfnCompare : CompareTexts;
    SortRows(compare, col, data, low, high);
    Refresh();
    return 1;
}

void CGridCtrl::SortRows(GridCompare compare, int col, qintptr data, int low, int high) {
    std::vector<std::pair<const CGridCellBase*, int>> order;
    order.reserve(m_nRows);
    for (int row = low; row <= high; ++row)
        order.emplace_back(GetCell(row, col), row);
    std::stable_sort(order.begin(), order.end(), [&](const auto& first, const auto& second) {
        const int result = compare(first.first, second.first, data);
        return m_look.m_bAscending ? result < 0 : result > 0;
    });
    std::vector<Row> sorted;
    sorted.reserve(order.size());
    std::vector<int> from;
    from.reserve(order.size());
    for (const auto& [cell, row] : order) {
        sorted.push_back(std::move(m_rows[row]));
        from.push_back(row);
    }
    std::move(sorted.begin(), sorted.end(), m_rows.begin() + low);
    m_arRowHeights.Reorder(low, from);
}

void CGridCtrl::SetSortColumn(int col, bool ascending) {
    if (col < 0 || col >= m_nCols)
        col = -1;
    if (col == m_look.m_nSortColumn && ascending == m_look.m_bAscending)
        return;
    m_look.m_nSortColumn = col;
    m_look.m_bAscending = ascending;
    RedrawRow(0);
}
