#include "grid/GridAxis.h"

#include <algorithm>

void CGridAxis::SetCount(int count, quint32 size) {
    m_arSizes.resize(count, size);
    m_bStale = true;
}

void CGridAxis::Insert(int first, int count, quint32 size) {
    m_arSizes.insert(m_arSizes.begin() + first, count, size);
    m_bStale = true;
}

void CGridAxis::Remove(int first, int count) {
    m_arSizes.erase(m_arSizes.begin() + first, m_arSizes.begin() + first + count);
    m_bStale = true;
}

void CGridAxis::SetSize(int index, quint32 size) {
    m_arSizes[index] = size;
    m_bStale = true;
}

void CGridAxis::ReplaceSize(quint32 from, quint32 to) {
    std::replace(m_arSizes.begin(), m_arSizes.end(), from, to);
    m_bStale = true;
}

void CGridAxis::Reorder(int first, const std::vector<int>& order) {
    std::vector<quint32> moved;
    moved.reserve(order.size());
    for (int from : order)
        moved.push_back(m_arSizes[from]);
    std::copy(moved.begin(), moved.end(), m_arSizes.begin() + first);
    m_bStale = true;
}

int CGridAxis::IndexAt(int position) const {
    // The last start at or before the position; of several equal ones that is the visible one.
    const std::vector<int>& starts = Starts();
    return static_cast<int>(std::upper_bound(starts.begin(), starts.end(), position) -
                            starts.begin()) -
           1;
}

int CGridAxis::NextVisible(int index, int step, int first) const {
    while (index >= first && index < Count()) {
        if (m_arSizes[index] > 0)
            return index;
        index += step;
    }
    return -1;
}

const std::vector<int>& CGridAxis::Starts() const {
    if (m_bStale) {
        m_arStarts.resize(m_arSizes.size() + 1);
        int sum = 0;
        for (size_t i = 0; i < m_arSizes.size(); ++i) {
            m_arStarts[i] = sum;
            sum += static_cast<int>(m_arSizes[i]);
        }
        m_arStarts.back() = sum;
        m_bStale = false;
    }
    return m_arStarts;
}
