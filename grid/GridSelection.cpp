#include "grid/GridSelection.h"

#include "grid/GridCtrl.h"

#include <algorithm>

namespace {

quint64 Pack(CCellID cell) {
    return (static_cast<quint64>(cell.row) << 32) | static_cast<quint32>(cell.col);
}

void Mark(CGridCellBase& cell, bool selected) {
    const quint32 others = cell.GetState() & ~GridState::Selected;
    cell.SetState(selected ? others | GridState::Selected : others);
}

} // namespace

void GridSelection::SelectCell(CCellID id, bool selected) {
    CGridCellBase& cell = *m_grid.GetCell(id.row, id.col);
    if (cell.IsSelected() == selected)
        return;
    Mark(cell, selected);
    if (selected)
        m_SelectedCellMap.insert(Pack(id), id);
    else
        m_SelectedCellMap.remove(Pack(id));
    m_grid.OnSelectionChanged();
}

void GridSelection::SelectRange(const QRect& range) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
        for (int col = range.left(); col <= range.right(); ++col)
            SelectCell({row, col}, true);
    }
}

void GridSelection::DeselectBeside(const QRect& range) {
    const qsizetype removed = m_SelectedCellMap.removeIf([&](const auto& entry) {
        const auto [row, col] = entry.value();
        if (range.contains(col, row))
            return false;
        Mark(*m_grid.GetCell(row, col), false);
        return true;
    });
    if (removed > 0)
        m_grid.OnSelectionChanged();
}

std::vector<CCellID> GridSelection::GetCells() const {
    std::vector<CCellID> cells(m_SelectedCellMap.begin(), m_SelectedCellMap.end());
    std::sort(cells.begin(), cells.end(),
              [](CCellID one, CCellID other) { return Pack(one) < Pack(other); });
    return cells;
}

QString GridSelection::GetText() const {
    QString text;
    int lastRow = -1;
    for (const auto [row, col] : GetCells()) {
        if (lastRow >= 0)
            text += row == lastRow ? u'\t' : u'\n';
        text += m_grid.GetCell(row, col)->GetText();
        lastRow = row;
    }
    return text;
}
