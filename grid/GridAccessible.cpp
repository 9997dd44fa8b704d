#include "grid/GridAccessible.h"

#include "grid/GridAccessibleCell.h"
#include "grid/GridCellBar.h"
#include "grid/GridCtrl.h"

#include <QApplication>

#include <algorithm>
#include <limits>
#include <utility>

void GridAccessible::Install() {
    QAccessible::installFactory(&GridAccessible::Make); // which leaves out one it has
}

QAccessibleInterface* GridAccessible::Make(const QString& className, QObject* object) {
    auto* grid = qobject_cast<CGridCtrl*>(object);
    return grid && className == QLatin1String(CGridCtrl::staticMetaObject.className())
               ? new GridAccessible(*grid)
               : nullptr;
}

GridAccessible::GridAccessible(CGridCtrl& grid)
    : QAccessibleWidget(&grid, QAccessible::Table) {
    grid.m_pAccessible = this;
    m_announcing.setSingleShot(true);
    QObject::connect(&m_announcing, &QTimer::timeout, &m_announcing, [this] { Tell(); });
    // A reader is told that the grid has the focus; which cell of it has it comes after that.
    QObject::connect(qApp, &QApplication::focusChanged, &m_announcing,
                     [this](QWidget*, QWidget* now) {
                         if (now == object())
                             OnFocusMoved();
                     });
}

GridAccessible::~GridAccessible() {
    DropAll();
    Grid().m_pAccessible = nullptr;
}

void GridAccessible::OnGridGoes() {
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(this));
}

CGridCtrl& GridAccessible::Grid() const {
    return *static_cast<CGridCtrl*>(object());
}

bool GridAccessible::IsTitleRow(int row) const {
    const CGridCtrl& grid = Grid();
    return row >= grid.GetFixedRowCount() &&
           dynamic_cast<const CGridCellBar*>(grid.GetCell(row, grid.GetColumnCount() - 1));
}

bool GridAccessible::IsSelectable() const {
    return Grid().m_bEnableSelection;
}

QRect GridAccessible::AreaOf(CCellID cell) const {
    const CGridCtrl& grid = Grid();
    QRect area = grid.viewport()->rect();
    if (cell.row >= grid.m_nFixedRows)
        area.setTop(grid.FixedHeight());
    if (cell.col >= grid.m_nFixedCols)
        area.setLeft(grid.FixedWidth());
    return area;
}

// --- cells

qint64 GridAccessible::NumberOf(CCellID cell) const {
    return qint64{cell.row} * columnCount() + cell.col;
}

GridAccessibleCell* GridAccessible::CellFor(CCellID cell) const {
    if (!Grid().IsValid(cell))
        return nullptr;
    if (IsTitleRow(cell.row))
        cell.col = columnCount() - 1;
    QAccessible::Id& id = m_cells[NumberOf(cell)];
    if (auto* known = QAccessible::accessibleInterface(id))
        return static_cast<GridAccessibleCell*>(known);
    // Reading a table leaves it as it is; a cell leads back to it, though, and from there to all.
    auto* made = new GridAccessibleCell(const_cast<GridAccessible&>(*this), cell);
    id = QAccessible::registerAccessibleInterface(made);
    return made;
}

void GridAccessible::Drop(CCellID cell) {
    if (const auto id = m_cells.take(NumberOf(cell)))
        QAccessible::deleteAccessibleInterface(id);
}

void GridAccessible::DropAll() {
    for (const QAccessible::Id id : std::exchange(m_cells, {}))
        QAccessible::deleteAccessibleInterface(id);
}

int GridAccessible::childCount() const {
    const CCellID behind{Grid().GetRowCount(), 0};
    return static_cast<int>(std::min<qint64>(NumberOf(behind), std::numeric_limits<int>::max()));
}

QAccessibleInterface* GridAccessible::child(int index) const {
    const int columns = columnCount();
    if (index < 0 || columns == 0)
        return nullptr;
    return CellFor({index / columns, index % columns});
}

int GridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const GridAccessibleCell*>(child);
    if (!cell || &cell->Table() != this)
        return -1;
    return static_cast<int>(NumberOf({cell->Place().row, cell->columnIndex()}));
}

QAccessibleInterface* GridAccessible::childAt(int x, int y) const {
    const CGridCtrl& grid = Grid();
    const QPoint point = grid.viewport()->mapFromGlobal(QPoint(x, y));
    auto* cell = CellFor(grid.GetCellFromPt(point, true));
    // Beside all cells the last column answers, even a hidden one.
    return cell && cell->rect().contains(x, y) ? cell : nullptr;
}

QAccessibleInterface* GridAccessible::focusChild() const {
    auto* cell = Grid().hasFocus() ? CellFor(Grid().GetFocusCell()) : nullptr;
    return cell ? cell : QAccessibleWidget::focusChild();
}

QAccessible::State GridAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = IsSelectable();
    state.extSelectable = IsSelectable();
    return state;
}

void* GridAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

// --- table

int GridAccessible::rowCount() const {
    return Grid().GetRowCount() - Grid().GetFixedRowCount();
}

int GridAccessible::columnCount() const {
    return Grid().GetColumnCount();
}

int GridAccessible::GridRow(int row) const {
    return row >= 0 && row < rowCount() ? row + Grid().GetFixedRowCount() : -1;
}

QAccessibleInterface* GridAccessible::cellAt(int row, int column) const {
    return CellFor({GridRow(row), column});
}

QString GridAccessible::columnDescription(int column) const {
    const CGridCellBase* header =
        Grid().GetFixedRowCount() > 0 ? Grid().GetCell(0, column) : nullptr;
    return header ? header->GetText() : QString();
}

// --- selection

const GridAccessible::Selection& GridAccessible::GetSelection() const {
    if (m_selection)
        return *m_selection;
    const CGridCtrl& grid = Grid();
    Selection& selection = m_selection.emplace();
    int row = -1;
    bool title = false;
    for (const CCellID cell : grid.m_selection.GetCells()) {
        if (cell.row != row) {
            row = cell.row;
            title = IsTitleRow(row);
            if (isRowSelected(row - grid.m_nFixedRows))
                selection.rows.append(row - grid.m_nFixedRows);
        }
        if (!title || cell.col == columnCount() - 1)
            selection.cells.append(cell);
    }
    return selection;
}

int GridAccessible::selectedCellCount() const {
    return static_cast<int>(GetSelection().cells.size());
}

QList<QAccessibleInterface*> GridAccessible::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    for (const CCellID cell : GetSelection().cells)
        cells.append(CellFor(cell));
    return cells;
}

int GridAccessible::selectedRowCount() const {
    return static_cast<int>(GetSelection().rows.size());
}

QList<int> GridAccessible::selectedRows() const {
    return GetSelection().rows;
}

bool GridAccessible::isRowSelected(int row) const {
    const CGridCtrl& grid = Grid();
    const int gridRow = GridRow(row);
    const int cols = columnCount();
    int col = IsTitleRow(gridRow) ? cols - 1 : grid.m_nFixedCols;
    if (gridRow < 0 || col >= cols)
        return false;
    while (col < cols && grid.GetCell(gridRow, col)->IsSelected())
        ++col;
    return col == cols;
}

int GridAccessible::selectedColumnCount() const {
    return static_cast<int>(selectedColumns().size());
}

QList<int> GridAccessible::selectedColumns() const {
    QList<int> columns;
    for (int column = 0; column < columnCount(); ++column) {
        if (isColumnSelected(column))
            columns.append(column);
    }
    return columns;
}

bool GridAccessible::isColumnSelected(int column) const {
    const CGridCtrl& grid = Grid();
    if (grid.m_bListMode || column < 0 || column >= columnCount() || rowCount() == 0 ||
        grid.GetSelectedCount() < rowCount())
        return false;
    int row = grid.m_nFixedRows;
    while (row < grid.m_nRows && grid.GetCell(row, column)->IsSelected())
        ++row;
    return row == grid.m_nRows;
}

bool GridAccessible::selectRow(int row) {
    return SelectRow(row, true);
}

bool GridAccessible::unselectRow(int row) {
    return SelectRow(row, false);
}

bool GridAccessible::selectColumn(int column) {
    return SelectColumn(column, true);
}

bool GridAccessible::unselectColumn(int column) {
    return SelectColumn(column, false);
}

bool GridAccessible::SelectRow(int row, bool selected) {
    const int gridRow = GridRow(row);
    return Select({gridRow, Grid().m_nFixedCols}, {gridRow, columnCount() - 1}, selected);
}

bool GridAccessible::SelectColumn(int column, bool selected) {
    const CGridCtrl& grid = Grid();
    return !grid.m_bListMode &&
           Select({grid.m_nFixedRows, column}, {grid.m_nRows - 1, column}, selected);
}

bool GridAccessible::Select(CCellID first, CCellID last, bool selected) {
    CGridCtrl& grid = Grid();
    if (!IsSelectable() || !grid.IsValid(first) || !grid.IsValid(last))
        return false;
    grid.Notify(GVN_SELCHANGING, first);
    if (!grid.IsValid(last)) // gone in the notification
        return false;
    for (int row = first.row; row <= last.row; ++row) {
        for (int col = first.col; col <= last.col; ++col)
            grid.m_selection.SelectCell({row, col}, selected);
    }
    grid.Refresh();
    grid.Notify(GVN_SELCHANGED, first);
    return true;
}

// --- changes

void GridAccessible::OnTableChanges() {
    DropAll();
    m_selection.reset();
    Announce(TableChange);
}

void GridAccessible::OnCellReplaced(CCellID cell) {
    m_selection.reset();
    if (m_cells.isEmpty())
        return;
    Drop(cell);
    if (cell.col < columnCount() - 1)
        return;
    for (int col = 0; col < cell.col; ++col) // it makes the row a title, or did
        Drop({cell.row, col});
}

void GridAccessible::OnSelectionChanged() {
    m_selection.reset();
    Announce(SelectionChange);
}

void GridAccessible::OnFocusMoved() {
    Announce(FocusChange);
}

void GridAccessible::OnCellsRedrawn() {
    if (!m_cells.isEmpty())
        Announce(CellChange);
}

void GridAccessible::Announce(Change change) {
    if (!QAccessible::isActive())
        return;
    m_changes |= change;
    if (!m_announcing.isActive())
        m_announcing.start();
}

void GridAccessible::Tell() {
    const unsigned changes = std::exchange(m_changes, 0);
    if (changes & TableChange) {
        QAccessibleTableModelChangeEvent event(&Grid(),
                                               QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&event);
    }
    if (changes & SelectionChange) {
        QAccessibleEvent event(&Grid(), QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&event);
    }
    if (changes & (SelectionChange | CellChange))
        TellCells();
    if ((changes & FocusChange) && Grid().hasFocus()) {
        QAccessibleEvent event(focusChild(), QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void GridAccessible::TellCells() {
    const CGridCtrl::Span rows = Grid().VisibleRows(Grid().viewport()->rect());
    for (int row = rows.first; row <= rows.last; ++row) {
        for (int col = 0; col < columnCount(); ++col) {
            const auto id = m_cells.value(NumberOf({row, col}));
            if (auto* cell = QAccessible::accessibleInterface(id))
                static_cast<GridAccessibleCell*>(cell)->TellChanges();
        }
    }
}
