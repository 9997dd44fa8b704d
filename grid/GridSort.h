#pragma once

#include "grid/GridTypes.h"

#include <vector>

/// One row that is being sorted, by its cell in the sort column.
struct GridSortKey {
    const CGridCellBase* cell;
    int row;                     ///< where the row stood before
    const QChar* text = nullptr; ///< the cell's, so that it can be fetched ahead; the sort sets it
};

/// Sorts by `compare`, equal keys in the order they had.
///
/// What costs time is not comparing but waiting for cells and texts, which lie scattered in
/// memory. So runs that fit the processor's cache are sorted first, and all runs are merged at
/// once: each cell is fetched from memory twice, however many rows there are, and ahead of its use.
///
/// Takes O(n log n) compares, and ends with all keys in some order even where `compare` is no true
/// order.
[[nodiscard]] std::vector<GridSortKey> SortKeys(std::vector<GridSortKey> keys, GridCompare compare,
                                                bool ascending, qintptr data);
