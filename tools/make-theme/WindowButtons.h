#pragma once

#include <QImage>

enum class WindowButton { Close, Maximize, Restore, Minimize };

/// A standard button of the frame: normal, pressed and hot, each 22 by 18. Around its plate is the
/// key colour.
[[nodiscard]] QImage DrawWindowButton(WindowButton button, qreal scale);

/// The frame's button that leads to the mini player, or back: normal, pressed and hot, each 42 by
/// 28. Its plate stands in line with the standard buttons.
[[nodiscard]] QImage DrawViewButton(bool toMiniPlayer, qreal scale);
