#pragma once

#include "grid/GridTypes.h"

/// Takes what changes in a grid, as it changes. Interface thread only.
class IGridWatcher {
public:
    /// Rows, columns or their order are about to change: no cell keeps its place.
    virtual void OnTableChanges() = 0;

    /// Rows have come or gone, those below have moved.
    virtual void OnRowsShifted(GridRowShift shift) = 0;

    /// A cell is about to be replaced, or all cells of as many rows are.
    virtual void OnCellReplaced(CCellID cell) = 0;
    virtual void OnRowsReplaced(int first, int count) = 0;

    virtual void OnSelectionChanged() = 0;
    virtual void OnFocusMoved() = 0;

    /// What cells show may have changed.
    virtual void OnCellsRedrawn() = 0;

    /// The grid is at its end, and knows this no longer.
    virtual void OnGridGoes() = 0;

protected:
    ~IGridWatcher() = default;
};
