#pragma once

#include "drawing/DevicePixels.h"

#include <QRegion>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

// What controls that draw themselves share.

/// False where the desktop asks for reduced motion.
[[nodiscard]] inline bool IsAnimated(const QWidget& control) {
    return control.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &control) > 0;
}

/// Whether the control has the focus and its window is being used by keyboard, as other programs
/// show it.
[[nodiscard]] inline bool ShowsFocus(const QWidget& control) {
    QStyleOption option;
    option.initFrom(&control);
    return option.state.testFlag(QStyle::State_HasFocus) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

/// Draws a line along the inner edges of a place: 1 pixel at 100 %, alike on all sides.
inline void DrawEdge(QPainter& painter, const QRect& place, const QColor& colour) {
    const CDevicePixels pixels(painter);
    const QRect edge = pixels.Of(place);
    const int line = pixels.Length(1);
    const QRect inner = edge.adjusted(line, line, -line, -line);
    for (const QRect& side : QRegion(edge) - inner)
        pixels.Fill(side, colour);
}
