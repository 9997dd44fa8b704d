#include "grid/GridCellBase.h"

#include "grid/GridCellPool.h"

#include <new>

namespace {

CGridCellPool& Pool() {
    static CGridCellPool pool;
    return pool;
}

} // namespace

void* CGridCellBase::operator new(size_t size) {
    return size <= CGridCellPool::kSlotSize ? Pool().Take() : ::operator new(size);
}

void CGridCellBase::operator delete(void* cell, size_t size) noexcept {
    if (size <= CGridCellPool::kSlotSize)
        Pool().Give(cell);
    else
        ::operator delete(cell);
}
