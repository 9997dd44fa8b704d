#include "grid/GridSelection.h"

#include <algorithm>
#include <limits>

namespace {

QRect RowsFrom(int first) {
    return {QPoint(0, first),
            QPoint(std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max() - 1)};
}

} // namespace

int CGridSelection::GetCount() const {
    int count = 0;
    for (const QRect& range : m_cells)
        count += range.width() * range.height();
    return count;
}

std::vector<CCellID> CGridSelection::GetCells() const {
    std::vector<CCellID> cells;
    // Ranges of the same rows follow each other, and are equally high.
    for (auto range = m_cells.begin(); range != m_cells.end();) {
        auto end = range;
        while (end != m_cells.end() && end->top() == range->top())
            ++end;
        for (int row = range->top(); row <= range->bottom(); ++row) {
            for (auto part = range; part != end; ++part) {
                for (int col = part->left(); col <= part->right(); ++col)
                    cells.push_back({row, col});
            }
        }
        range = end;
    }
    return cells;
}

std::vector<int> CGridSelection::GetRows() const {
    std::vector<int> rows;
    for (const QRect& range : m_cells) {
        // Several ranges of the same rows stand beside each other.
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (rows.empty() || rows.back() < row)
                rows.push_back(row);
        }
    }
    return rows;
}

QRegion CGridSelection::GetRow(int row, int columns) const {
    return m_cells & QRect(0, row, columns, 1);
}

QRegion CGridSelection::Add(const QRegion& range) {
    const QRegion changed = range - m_cells;
    m_cells += range;
    return changed;
}

QRegion CGridSelection::Remove(const QRegion& range) {
    const QRegion changed = m_cells & range;
    m_cells -= changed;
    return changed;
}

void CGridSelection::Shift(GridRowShift shift) {
    const QRegion below = m_cells & RowsFrom(shift.first + std::max(0, -shift.count));
    m_cells -= RowsFrom(shift.first);
    m_cells += below.translated(0, shift.count);
}
