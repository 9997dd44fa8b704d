#include "grid/GridCellPool.h"

#include <new>

void* CGridCellPool::Take() {
    if (m_pFree) {
        FreeSlot* slot = m_pFree;
        m_pFree = slot->next;
        ++m_nTaken;
        return slot;
    }
    if (m_nUntouched == 0) {
        m_blocks.push_back(std::make_unique_for_overwrite<Slot[]>(kSlotsPerBlock));
        m_nUntouched = kSlotsPerBlock;
    }
    ++m_nTaken;
    return &m_blocks.back()[kSlotsPerBlock - m_nUntouched--];
}

void CGridCellPool::Give(void* slot) noexcept {
    m_pFree = new (slot) FreeSlot{m_pFree};
    if (--m_nTaken == 0) {
        m_pFree = nullptr;
        m_blocks.clear();
        m_nUntouched = 0;
    }
}
