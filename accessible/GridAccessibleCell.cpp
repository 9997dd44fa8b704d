#include "accessible/GridAccessibleCell.h"

#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCtrl.h"

#include <utility>

CGridAccessibleCell::CGridAccessibleCell(QAccessibleInterface& table, const CGridCtrl& grid,
                                         CCellID place)
    : m_table(table)
    , m_grid(grid)
    , m_place(place)
    , m_told(ToTell()) {}

const CGridCellBase& CGridAccessibleCell::Cell() const {
    return *m_grid.GetCell(m_place.row, m_place.col);
}

bool CGridAccessibleCell::IsTitleRow(const CGridCtrl& grid, int row) {
    return row >= grid.GetFixedRowCount() &&
           dynamic_cast<const CGridCellBar*>(grid.GetCell(row, grid.GetColumnCount() - 1));
}

bool CGridAccessibleCell::IsTitle() const {
    return IsTitleRow(m_grid, m_place.row);
}

bool CGridAccessibleCell::IsHidden() const {
    const CGridCtrl& grid = m_grid;
    return !grid.isVisible() || grid.GetRowHeight(m_place.row) == 0 ||
           (!IsTitle() && grid.GetColumnWidth(m_place.col) == 0);
}

/// What scrolls passes behind the header.
bool CGridAccessibleCell::IsInSight() const {
    const GridGeometry geometry = m_grid.GetGeometry();
    QRect area = m_grid.viewport()->rect();
    if (m_place.row >= geometry.fixedRows)
        area.setTop(geometry.FixedHeight());
    if (m_place.col >= geometry.fixedCols)
        area.setLeft(geometry.FixedWidth());
    return ViewportRect().intersects(area);
}

bool CGridAccessibleCell::IsCurrent() const {
    const CCellID current = m_grid.GetFocusCell();
    return IsTitle() ? current.row == m_place.row : current == m_place;
}

CGridAccessibleCell::Told CGridAccessibleCell::ToTell() const {
    const auto* check = dynamic_cast<const CGridCellCheck*>(&Cell());
    return {Cell().GetText(), check && check->GetCheck(), isSelected()};
}

void CGridAccessibleCell::TellChanges() {
    const Told now = ToTell();
    const Told before = std::exchange(m_told, now);
    if (now.name != before.name) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (now.checked != before.checked) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
    if (now.selected != before.selected) {
        QAccessibleEvent event(this, now.selected ? QAccessible::SelectionAdd
                                                  : QAccessible::SelectionRemove);
        QAccessible::updateAccessibility(&event);
    }
}

bool CGridAccessibleCell::isValid() const {
    return m_table.isValid();
}

QWindow* CGridAccessibleCell::window() const {
    return m_table.window();
}

QAccessibleInterface* CGridAccessibleCell::parent() const {
    return &m_table;
}

QString CGridAccessibleCell::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? Cell().GetText() : QString();
}

QRect CGridAccessibleCell::ViewportRect() const {
    const CGridCtrl& grid = m_grid;
    QRect rect = grid.GetCellRect(m_place);
    if (IsTitle())
        rect.setLeft(0);
    else if (rect.width() < 1) // the last column, scrolled out: it ends before it starts
        rect.setWidth(grid.GetColumnWidth(m_place.col));
    return rect;
}

QRect CGridAccessibleCell::rect() const {
    const QRect rect = ViewportRect();
    return QRect(m_grid.viewport()->mapToGlobal(rect.topLeft()), rect.size());
}

QAccessible::Role CGridAccessibleCell::role() const {
    if (Cell().IsFixedRow())
        return QAccessible::ColumnHeader;
    return Cell().IsFixedCol() && !IsTitle() ? QAccessible::RowHeader : QAccessible::Cell;
}

QAccessible::State CGridAccessibleCell::state() const {
    QAccessible::State state;
    state.invisible = IsHidden();
    state.offscreen = !IsHidden() && !IsInSight();
    if (role() != QAccessible::Cell)
        return state;
    const auto* check = dynamic_cast<const CGridCellCheck*>(&Cell());
    state.checkable = check != nullptr;
    state.checked = check && check->GetCheck();
    state.readOnly = Cell().IsReadOnly();
    state.editable = m_grid.IsEditable(m_place);
    state.selectable = m_grid.IsSelectionEnabled();
    state.selected = isSelected();
    state.focusable = true;
    state.active = IsCurrent();
    state.focused = IsCurrent() && m_grid.hasFocus();
    return state;
}

void* CGridAccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
}

bool CGridAccessibleCell::isSelected() const {
    return Cell().IsSelected();
}

QAccessibleInterface* CGridAccessibleCell::Sibling(CCellID place) const {
    return m_table.child(place.row * m_grid.GetColumnCount() + place.col);
}

QList<QAccessibleInterface*> CGridAccessibleCell::columnHeaderCells() const {
    QList<QAccessibleInterface*> headers;
    if (Cell().IsFixedRow() || IsTitle()) // a title stands under all of them
        return headers;
    for (int row = 0; row < m_grid.GetFixedRowCount(); ++row)
        headers.append(Sibling({row, m_place.col}));
    return headers;
}

QList<QAccessibleInterface*> CGridAccessibleCell::rowHeaderCells() const {
    QList<QAccessibleInterface*> headers;
    if (Cell().IsFixedCol() || IsTitle())
        return headers;
    for (int col = 0; col < m_grid.GetFixedColumnCount(); ++col)
        headers.append(Sibling({m_place.row, col}));
    return headers;
}

int CGridAccessibleCell::columnIndex() const {
    return IsTitle() ? 0 : m_place.col;
}

int CGridAccessibleCell::rowIndex() const {
    return m_place.row - m_grid.GetFixedRowCount();
}

int CGridAccessibleCell::columnExtent() const {
    return IsTitle() ? m_grid.GetColumnCount() : 1;
}
