#pragma once

#include "grid/GridTypes.h"

#include <QPoint>

/// What the mouse does in a grid, from a press of the left button to its release. Points are those
/// of the viewport.
struct GridMouse {
    GridMouseMode m_MouseMode = GridMouseMode::Nothing;
    bool m_bLMouseButtonDown = false;
    bool m_bCtrlDown = false; ///< at the last press or key: the old selection stays
    CCellID m_LeftClickDownCell;
    QPoint m_LeftClickDownPoint;
    QPoint m_ptPointer; ///< where the mouse was last, with the button down

    [[nodiscard]] bool IsSelecting() const {
        return m_MouseMode == GridMouseMode::SelectRows ||
               m_MouseMode == GridMouseMode::SelectCells;
    }

    void Press(CCellID cell, QPoint point) {
        m_MouseMode = GridMouseMode::Nothing;
        m_bLMouseButtonDown = true;
        m_LeftClickDownCell = cell;
        m_LeftClickDownPoint = m_ptPointer = point;
    }

    void Release() {
        m_MouseMode = GridMouseMode::Nothing;
        m_bLMouseButtonDown = false;
    }
};
