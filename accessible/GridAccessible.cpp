#include "accessible/GridAccessible.h"

#include "accessible/GridAccessibleCell.h"
#include "grid/GridCtrl.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

void CGridAccessible::Install() {
    QAccessible::installFactory(&CGridAccessible::Make); // which leaves out one it has
}

QAccessibleInterface* CGridAccessible::Make(const QString& className, QObject* object) {
    auto* grid = qobject_cast<CGridCtrl*>(object);
    return grid && className == QLatin1String(CGridCtrl::staticMetaObject.className())
               ? new CGridAccessible(*grid)
               : nullptr;
}

CGridAccessible::CGridAccessible(CGridCtrl& grid)
    : QAccessibleWidget(&grid, QAccessible::Table) {
    grid.SetWatcher(this);
    m_announcing.setSingleShot(true);
    QObject::connect(&m_announcing, &QTimer::timeout, &m_announcing, [this] { Tell(); });
    // A reader is told that the grid has the focus; which cell of it has it comes after that.
    QObject::connect(qApp, &QApplication::focusChanged, &m_announcing,
                     [this](QWidget*, QWidget* now) {
                         if (now == object())
                             OnFocusMoved();
                     });
}

CGridAccessible::~CGridAccessible() {
    DropAll();
    Grid().SetWatcher(nullptr);
}

void CGridAccessible::OnGridGoes() {
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(this));
}

CGridCtrl& CGridAccessible::Grid() const {
    return *static_cast<CGridCtrl*>(object());
}

// --- cells

qint64 CGridAccessible::NumberOf(CCellID cell) const {
    return qint64{cell.row} * columnCount() + cell.col;
}

CGridAccessibleCell* CGridAccessible::CellFor(CCellID cell) const {
    if (!Grid().IsValid(cell))
        return nullptr;
    if (CGridAccessibleCell::IsTitleRow(Grid(), cell.row))
        cell.col = columnCount() - 1;
    QAccessible::Id& id = m_cells[NumberOf(cell)];
    if (auto* known = QAccessible::accessibleInterface(id))
        return static_cast<CGridAccessibleCell*>(known);
    // Reading a table leaves it as it is; a cell leads back to it, though, and from there to all.
    auto* made = new CGridAccessibleCell(const_cast<CGridAccessible&>(*this), Grid(), cell);
    id = QAccessible::registerAccessibleInterface(made);
    return made;
}

void CGridAccessible::Drop(CCellID cell) {
    if (const auto id = m_cells.take(NumberOf(cell)))
        QAccessible::deleteAccessibleInterface(id);
}

void CGridAccessible::DropAll() {
    for (const QAccessible::Id id : std::exchange(m_cells, {}))
        QAccessible::deleteAccessibleInterface(id);
}

void CGridAccessible::DropRows(int first, int count) {
    const qint64 from = NumberOf({first, 0});
    const qint64 behind = NumberOf({first + count, 0});
    m_cells.removeIf([&](const auto& entry) {
        if (entry.key() < from || entry.key() >= behind)
            return false;
        QAccessible::deleteAccessibleInterface(entry.value());
        return true;
    });
}

int CGridAccessible::childCount() const {
    const CCellID behind{Grid().GetRowCount(), 0};
    return static_cast<int>(std::min<qint64>(NumberOf(behind), std::numeric_limits<int>::max()));
}

QAccessibleInterface* CGridAccessible::child(int index) const {
    const int columns = columnCount();
    if (index < 0 || columns == 0)
        return nullptr;
    return CellFor({index / columns, index % columns});
}

int CGridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const CGridAccessibleCell*>(child);
    if (!cell || cell->parent() != this)
        return -1;
    return static_cast<int>(NumberOf({cell->Place().row, cell->columnIndex()}));
}

QAccessibleInterface* CGridAccessible::childAt(int x, int y) const {
    const CGridCtrl& grid = Grid();
    const QPoint point = grid.viewport()->mapFromGlobal(QPoint(x, y));
    auto* cell = CellFor(grid.GetCellFromPt(point, true));
    // Beside all cells the last column answers, even a hidden one.
    return cell && cell->rect().contains(x, y) ? cell : nullptr;
}

QAccessibleInterface* CGridAccessible::focusChild() const {
    auto* cell = Grid().hasFocus() ? CellFor(Grid().GetFocusCell()) : nullptr;
    return cell ? cell : QAccessibleWidget::focusChild();
}

QAccessible::State CGridAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = Grid().IsSelectionEnabled();
    state.extSelectable = Grid().IsSelectionEnabled();
    return state;
}

void* CGridAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

// --- table

int CGridAccessible::rowCount() const {
    return Grid().GetRowCount() - Grid().GetFixedRowCount();
}

int CGridAccessible::columnCount() const {
    return Grid().GetColumnCount();
}

int CGridAccessible::GridRow(int row) const {
    return row >= 0 && row < rowCount() ? row + Grid().GetFixedRowCount() : -1;
}

QAccessibleInterface* CGridAccessible::cellAt(int row, int column) const {
    return CellFor({GridRow(row), column});
}

QString CGridAccessible::columnDescription(int column) const {
    const CGridCellBase* header =
        Grid().GetFixedRowCount() > 0 ? Grid().GetCell(0, column) : nullptr;
    return header ? header->GetText() : QString();
}

// --- selection

const CGridAccessible::Selection& CGridAccessible::GetSelection() const {
    if (m_selection)
        return *m_selection;
    const CGridCtrl& grid = Grid();
    Selection& selection = m_selection.emplace();
    int row = -1;
    bool title = false;
    for (const CCellID cell : grid.GetSelectedCells()) {
        if (cell.row != row) {
            row = cell.row;
            title = CGridAccessibleCell::IsTitleRow(Grid(), row);
            if (isRowSelected(row - grid.GetFixedRowCount()))
                selection.rows.append(row - grid.GetFixedRowCount());
        }
        if (!title || cell.col == columnCount() - 1)
            selection.cells.append(cell);
    }
    return selection;
}

int CGridAccessible::selectedCellCount() const {
    return static_cast<int>(GetSelection().cells.size());
}

QList<QAccessibleInterface*> CGridAccessible::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    for (const CCellID cell : GetSelection().cells)
        cells.append(CellFor(cell));
    return cells;
}

int CGridAccessible::selectedRowCount() const {
    return static_cast<int>(GetSelection().rows.size());
}

QList<int> CGridAccessible::selectedRows() const {
    return GetSelection().rows;
}

bool CGridAccessible::isRowSelected(int row) const {
    const CGridCtrl& grid = Grid();
    const int gridRow = GridRow(row);
    const int cols = columnCount();
    int col =
        CGridAccessibleCell::IsTitleRow(Grid(), gridRow) ? cols - 1 : grid.GetFixedColumnCount();
    if (gridRow < 0 || col >= cols)
        return false;
    while (col < cols && grid.IsSelected({gridRow, col}))
        ++col;
    return col == cols;
}

int CGridAccessible::selectedColumnCount() const {
    return static_cast<int>(selectedColumns().size());
}

QList<int> CGridAccessible::selectedColumns() const {
    QList<int> columns;
    for (int column = 0; column < columnCount(); ++column) {
        if (isColumnSelected(column))
            columns.append(column);
    }
    return columns;
}

bool CGridAccessible::isColumnSelected(int column) const {
    const CGridCtrl& grid = Grid();
    if (grid.IsListMode() || column < 0 || column >= columnCount() || rowCount() == 0 ||
        grid.GetSelectedCount() < rowCount())
        return false;
    int row = grid.GetFixedRowCount();
    while (row < grid.GetRowCount() && grid.IsSelected({row, column}))
        ++row;
    return row == grid.GetRowCount();
}

bool CGridAccessible::selectRow(int row) {
    return SelectRow(row, true);
}

bool CGridAccessible::unselectRow(int row) {
    return SelectRow(row, false);
}

bool CGridAccessible::selectColumn(int column) {
    return SelectColumn(column, true);
}

bool CGridAccessible::unselectColumn(int column) {
    return SelectColumn(column, false);
}

bool CGridAccessible::SelectRow(int row, bool selected) {
    const int gridRow = GridRow(row);
    return Grid().SelectBesides({gridRow, Grid().GetFixedColumnCount()},
                                {gridRow, columnCount() - 1}, selected);
}

bool CGridAccessible::SelectColumn(int column, bool selected) {
    CGridCtrl& grid = Grid();
    return !grid.IsListMode() && grid.SelectBesides({grid.GetFixedRowCount(), column},
                                                    {grid.GetRowCount() - 1, column}, selected);
}

// --- changes

void CGridAccessible::OnTableChanges() {
    DropAll();
    m_selection.reset();
    m_shifts.clear();
    Announce(TableChange);
}

void CGridAccessible::OnRowsShifted(GridRowShift shift) {
    m_selection.reset();
    DropRows(shift.first, -shift.count);
    QHash<qint64, QAccessible::Id> moved;
    for (const QAccessible::Id id : std::exchange(m_cells, {})) {
        // Qt may have dropped it.
        if (auto* cell = static_cast<CGridAccessibleCell*>(QAccessible::accessibleInterface(id))) {
            cell->SetPlace(shift.Moved(cell->Place()));
            moved[NumberOf(cell->Place())] = id;
        }
    }
    m_cells = moved;
    if (QAccessible::isActive() && !(m_changes & TableChange))
        m_shifts.append(shift);
    Announce(RowChange);
}

void CGridAccessible::OnRowsReplaced(int first, int count) {
    DropRows(first, count);
    Announce(CellChange);
}

void CGridAccessible::OnCellReplaced(CCellID cell) {
    m_selection.reset();
    if (m_cells.isEmpty())
        return;
    Drop(cell);
    if (cell.col < columnCount() - 1)
        return;
    for (int col = 0; col < cell.col; ++col) // it makes the row a title, or did
        Drop({cell.row, col});
}

void CGridAccessible::OnSelectionChanged() {
    m_selection.reset();
    Announce(SelectionChange);
}

void CGridAccessible::OnFocusMoved() {
    Announce(FocusChange);
}

void CGridAccessible::OnCellsRedrawn() {
    if (!m_cells.isEmpty())
        Announce(CellChange);
}

void CGridAccessible::Announce(Change change) {
    if (!QAccessible::isActive())
        return;
    m_changes |= change;
    if (!m_announcing.isActive())
        m_announcing.start();
}

void CGridAccessible::Tell() {
    const unsigned changes = std::exchange(m_changes, 0);
    if (changes & TableChange) {
        QAccessibleTableModelChangeEvent event(&Grid(),
                                               QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&event);
    }
    for (const auto [first, count] : std::exchange(m_shifts, {})) {
        QAccessibleTableModelChangeEvent event(
            &Grid(), count > 0 ? QAccessibleTableModelChangeEvent::RowsInserted
                               : QAccessibleTableModelChangeEvent::RowsRemoved);
        const int row = first - Grid().GetFixedRowCount();
        event.setFirstRow(row);
        event.setLastRow(row + std::abs(count) - 1);
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

void CGridAccessible::TellCells() {
    const GridSpan rows = Grid().GetGeometry().VisibleRows(Grid().viewport()->rect());
    for (int row = rows.first; row <= rows.last; ++row) {
        for (int col = 0; col < columnCount(); ++col) {
            const auto id = m_cells.value(NumberOf({row, col}));
            if (auto* cell = QAccessible::accessibleInterface(id))
                static_cast<CGridAccessibleCell*>(cell)->TellChanges();
        }
    }
}
