#pragma once

#include "skin/Pictures.h"

#include <QImage>
#include <QPointF>

// The round buttons: discs of 36 pixels on 45 by 44, with room around for the ring of the focus.

inline constexpr int kButtonWidth = 45;
inline constexpr int kButtonHeight = 44;

/// The middle of disc and glyph, in pixels of the rendering: where round shapes begin and end with
/// a pixel, half a pixel left of the picture's middle at most.
[[nodiscard]] QPointF ButtonMiddle(qreal scale);

[[nodiscard]] QImage DrawRaisedDisc(qreal scale);
[[nodiscard]] QImage DrawSunkenDisc(qreal scale);
[[nodiscard]] QImage DrawHoverDisc(qreal scale);
[[nodiscard]] QImage DrawFocusRing(qreal scale);

/// The four states of a button side by side, made of a disc and a glyph as CImageButton makes its
/// own: normal, hot, pressed, disabled.
[[nodiscard]] QImage DrawButtonStates(PictureId glyph, qreal scale);
