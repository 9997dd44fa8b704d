#pragma once

#include <QStyle>
#include <QStyleOption>
#include <QWidget>

// What controls that draw themselves ask of the desktop.

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
