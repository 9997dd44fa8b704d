#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// Where grid cells live in memory: slots of one size, handed out side by side.
///
/// A large grid has a million cells, made row by row and read row by row. Slots that follow each
/// other keep that fast, and once the last cell is gone all slots are handed out in order again.
/// Interface thread only.
class CGridCellPool {
public:
    /// Room for every cell class of this folder; a larger one is allocated by itself. A cache line.
    static constexpr size_t kSlotSize = 64;

    /// Throws std::bad_alloc.
    [[nodiscard]] void* Take();
    void Give(void* slot) noexcept;

private:
    struct FreeSlot {
        FreeSlot* next;
    };
    struct alignas(std::max_align_t) Slot {
        std::byte bytes[kSlotSize];
    };
    static_assert(sizeof(Slot) == kSlotSize);
    static constexpr size_t kSlotsPerBlock = 1 << 14;

    std::vector<std::unique_ptr<Slot[]>> m_blocks;
    size_t m_nUntouched = 0; ///< at the end of the last block
    size_t m_nTaken = 0;
    FreeSlot* m_pFree = nullptr; ///< slots that were given back
};
