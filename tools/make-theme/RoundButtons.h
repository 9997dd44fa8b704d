#pragma once

#include "skin/Pictures.h"

#include <QImage>

// The round buttons: discs of 36 pixels on 45 by 44, with room around for the ring of the focus.

[[nodiscard]] QImage DrawRaisedDisc(qreal scale);
[[nodiscard]] QImage DrawSunkenDisc(qreal scale);
[[nodiscard]] QImage DrawHoverDisc(qreal scale);
[[nodiscard]] QImage DrawFocusRing(qreal scale);

/// The four states of a button side by side, made of a disc and a glyph as CImageButton makes its
/// own: normal, hot, pressed, disabled.
[[nodiscard]] QImage DrawButtonStates(PictureId glyph, qreal scale);
