#include "grid/GridCellBase.h"

#include "grid/GridCellPool.h"

#include <new>

namespace {

GridCellPool& Pool() {
    static GridCellPool pool;
    return pool;
}

} // namespace

void* CGridCellBase::operator new(size_t size) {
    return size <= GridCellPool::kSlotSize ? Pool().Take() : ::operator new(size);
}

void CGridCellBase::operator delete(void* cell, size_t size) noexcept {
    if (size <= GridCellPool::kSlotSize)
        Pool().Give(cell);
    else
        ::operator delete(cell);
}
