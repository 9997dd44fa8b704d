#include "grid/GridCtrl.h"

#include "grid/GridAccessible.h"
#include "grid/GridCompare.h"
#include "grid/GridSort.h"
#include "grid/InPlaceEdit.h"

#include <QPalette>

#include <algorithm>
#include <exception>
#include <utility>

namespace {

constexpr int kDefaultColumnWidth = 100;

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
    , m_crSystem(SystemColours(palette()))
    , m_crGridBkColour(m_crSystem.shadow)
    , m_cellDefault(this, 0)
    , m_cellFixedRowDef(this, GridState::Fixed | GridState::FixedRow)
    , m_cellFixedColDef(this, GridState::Fixed | GridState::FixedCol)
    , m_cellFixedRowColDef(this, kFixedBits) {
    GridAccessible::Install();
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
    if (m_pAccessible)
        m_pAccessible->OnGridGoes();
}

void CGridCtrl::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_crSystem = SystemColours(palette());
        viewport()->update();
    }
    if (event->type() != QEvent::FontChange)
        return;
    const QFont own = font();
    for (CGridDefaultCell* cell :
         {&m_cellDefault, &m_cellFixedRowDef, &m_cellFixedColDef, &m_cellFixedRowColDef})
        cell->SetFont(&own);
}

int CGridCtrl::DeleteAllItems() {
    EndEdit(); // while its cell is there
    m_nFixedRows = 0;
    m_nFixedCols = 0;
    m_nSortColumn = -1;
    return Rebuild(0, 0);
}

int CGridCtrl::SetRowCount(int rows) {
    return rows < 0 ? 0 : Rebuild(rows, m_nCols);
}

int CGridCtrl::SetColumnCount(int cols) {
    return cols < 0 ? 0 : Rebuild(m_nRows, cols);
}

int CGridCtrl::SetFixedRowCount(int fixedRows) {
    if (fixedRows < 0 || fixedRows > m_nRows)
        return 0;
    if (m_pAccessible)
        m_pAccessible->OnTableChanges();
    m_selection.Clear();
    SetFocusCell({});
    const int changed = std::max(fixedRows, m_nFixedRows);
    m_nFixedRows = fixedRows;
    MarkFixedCells(changed, m_nCols);
    RelayOut();
    return 1;
}

int CGridCtrl::SetFixedColumnCount(int fixedCols) {
    if (fixedCols < 0 || fixedCols > m_nCols)
        return 0;
    if (m_pAccessible)
        m_pAccessible->OnTableChanges();
    m_selection.Clear();
    SetFocusCell({});
    const int changed = std::max(fixedCols, m_nFixedCols);
    m_nFixedCols = fixedCols;
    MarkFixedCells(m_nRows, changed);
    RelayOut();
    return 1;
}

int CGridCtrl::Rebuild(int rows, int cols) {
    EndEdit(); // while its cell is there
    LetGo();
    if (m_pAccessible)
        m_pAccessible->OnTableChanges();
    m_selection.Clear();
    SetFocusCell({});
    m_SelectionStartCell = {};
    m_LeftClickDownCell = {};
    m_nFixedRows = std::min(m_nFixedRows, rows);
    m_nFixedCols = std::min(m_nFixedCols, cols);
    try {
        m_rows.resize(rows);
        for (int row = 0; row < rows; ++row) {
            Row& cells = m_rows[row];
            const int kept = static_cast<int>(cells.size());
            cells.resize(cols);
            for (int col = kept; col < cols; ++col)
                cells[col] = MakeCell(RuntimeClass<CGridCell>, row, col);
        }
        m_arRowHeights.SetCount(rows, m_nDefaultRowHeight);
        m_arColWidths.SetCount(cols, kDefaultColumnWidth);
    } catch (const std::exception&) { // bad_alloc, or length_error of an absurd count
        DeleteAllItems();
        return 0;
    }
    m_nRows = rows;
    m_nCols = cols;
    if (m_nSortColumn >= cols)
        m_nSortColumn = -1;
    RelayOut();
    return 1;
}

void CGridCtrl::MarkFixedCells(int rows, int cols) {
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
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

CGridCtrl::Cell CGridCtrl::MakeCell(GridCellClass cellClass, int row, int col) {
    Cell cell = cellClass();
    cell->SetGrid(this);
    cell->SetState(FixedBits(row, col));
    return cell;
}

bool CGridCtrl::IsValid(CCellID cell) const {
    return cell.row >= 0 && cell.row < m_nRows && cell.col >= 0 && cell.col < m_nCols;
}

int CGridCtrl::SetCellType(int row, int col, GridCellClass cellClass) {
    if (!IsValid({row, col}))
        return 0;
    if (m_pAccessible)
        m_pAccessible->OnCellReplaced({row, col});
    m_selection.SelectCell({row, col}, false);
    Cell cell = MakeCell(cellClass, row, col);
    if (m_idCurrentCell == CCellID{row, col})
        cell->SetState(cell->GetState() | GridState::Focused);
    m_rows[row][col] = std::move(cell);
    return 1;
}

CGridCellBase* CGridCtrl::GetCell(int row, int col) const {
    return IsValid({row, col}) ? m_rows[row][col].get() : nullptr;
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
    m_selection.SelectCell({row, col}, state & GridState::Selected);
    cell->SetState((cell->GetState() & kOwnBits) | (state & ~kOwnBits));
    return 1;
}

quint32 CGridCtrl::GetItemState(int row, int col) const {
    const CGridCellBase* cell = GetCell(row, col);
    return cell ? cell->GetState() : 0;
}

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
        UpdateRows(m_selection.DeselectBeside(range));
    UpdateRows(m_selection.SelectRange(range));
}

/// All cells but the fixed ones, columns as x and rows as y.
QRect CGridCtrl::BodyCells() const {
    return {QPoint(m_nFixedCols, m_nFixedRows), QPoint(m_nCols - 1, m_nRows - 1)};
}

void CGridCtrl::OnSelectionChanged() {
    if (m_pAccessible)
        m_pAccessible->OnSelectionChanged();
}

void CGridCtrl::SetFocusCell(CCellID id) {
    if (!IsValid(id))
        id = {};
    if (id == m_idCurrentCell)
        return;
    if (CGridCellBase* old = GetCell(m_idCurrentCell.row, m_idCurrentCell.col)) {
        old->SetState(old->GetState() & ~GridState::Focused);
        RedrawCell(m_idCurrentCell.row, m_idCurrentCell.col);
    }
    m_idCurrentCell = id;
    if (CGridCellBase* cell = GetCell(id.row, id.col)) {
        cell->SetState(cell->GetState() | GridState::Focused);
        RedrawCell(id.row, id.col);
    }
    if (m_pAccessible)
        m_pAccessible->OnFocusMoved();
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
    m_nSortColumn = col;
    m_bAscending = ascending;
    if (m_pAccessible)
        m_pAccessible->OnTableChanges();
    m_selection.Clear();
    SetFocusCell({});
    m_SelectionStartCell = {};

    if (!compare)
        compare = m_pfnCompare ? m_pfnCompare : CompareTexts;
    std::vector<GridSortKey> keys;
    keys.reserve(m_nRows);
    for (int row = low; row <= high; ++row)
        keys.push_back({m_rows[row][col].get(), row});
    keys = SortKeys(std::move(keys), compare, ascending, data);

    std::vector<Row> sorted;
    sorted.reserve(keys.size());
    std::vector<int> order;
    order.reserve(keys.size());
    for (const GridSortKey& key : keys) {
        sorted.push_back(std::move(m_rows[key.row]));
        order.push_back(key.row);
    }
    std::move(sorted.begin(), sorted.end(), m_rows.begin() + low);
    m_arRowHeights.Reorder(low, order);
    Refresh();
    return 1;
}

void CGridCtrl::SetSortColumn(int col, bool ascending) {
    if (col < 0 || col >= m_nCols)
        col = -1;
    if (col == m_nSortColumn && ascending == m_bAscending)
        return;
    m_nSortColumn = col;
    m_bAscending = ascending;
    RedrawRow(0);
}
