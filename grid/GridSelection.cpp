#include "grid/GridSelection.h"

#include "grid/GridCtrl.h"

#include <algorithm>

namespace {

quint64 Pack(CCellID cell) {
    return (static_cast<quint64>(cell.row) << 32) | static_cast<quint32>(cell.col);
}

QRect Range(CCellID cell) {
    return {cell.col, cell.row, 1, 1};
}

void Mark(CGridCellBase& cell, bool selected) {
    const quint32 others = cell.GetState() & ~GridState::Selected;
    cell.SetState(selected ? others | GridState::Selected : others);
}

} // namespace

bool GridSelection::SelectCell(CCellID id, bool selected) {
    CGridCellBase& cell = *m_grid.GetCell(id.row, id.col);
    if (cell.IsSelected() == selected)
        return false;
    Mark(cell, selected);
    if (selected)
        m_SelectedCellMap.insert(Pack(id), id);
    else
        m_SelectedCellMap.remove(Pack(id));
    m_grid.OnSelectionChanged();
    return true;
}

QRect GridSelection::SelectRange(const QRect& range) {
    QRect changed;
    for (int row = range.top(); row <= range.bottom(); ++row) {
        for (int col = range.left(); col <= range.right(); ++col) {
            if (SelectCell({row, col}, true))
                changed |= Range({row, col});
        }
    }
    return changed;
}

QRect GridSelection::DeselectBeside(const QRect& range) {
    QRect changed;
    const qsizetype removed = m_SelectedCellMap.removeIf([&](const auto& entry) {
        const auto [row, col] = entry.value();
        if (range.contains(col, row))
            return false;
        Mark(*m_grid.GetCell(row, col), false);
        changed |= Range({row, col});
        return true;
    });
    if (removed > 0)
        m_grid.OnSelectionChanged();
    // Left as large as the longest selection was, it would be walked over by every click.
    if (m_SelectedCellMap.capacity() > 4 * m_SelectedCellMap.size() + 64)
        m_SelectedCellMap.squeeze();
    return changed;
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
