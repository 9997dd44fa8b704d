#pragma once

#include <QColor>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>
#include <cmath>

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

/// Draws a line along the edges of a control. Its width, 1 at 100 %, is a whole number of the
/// screen's pixels, so that all four sides are alike.
inline void DrawEdge(QPainter& painter, const QWidget& control, QRgb colour) {
    const qreal ratio = control.devicePixelRatioF();
    const qreal line = std::max(1.0, std::floor(ratio)) / ratio;
    const QRectF area = control.rect();
    const QColor fill(colour);
    painter.fillRect(QRectF(0, 0, area.width(), line), fill);
    painter.fillRect(QRectF(0, area.height() - line, area.width(), line), fill);
    painter.fillRect(QRectF(0, 0, line, area.height()), fill);
    painter.fillRect(QRectF(area.width() - line, 0, line, area.height()), fill);
}
