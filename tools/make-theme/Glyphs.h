#pragma once

#include "skin/Pictures.h"

#include <QImage>

#include <vector>

/// The round buttons' glyphs: each one alone on 45 by 44 pixels, seen through elsewhere.
[[nodiscard]] const std::vector<PictureId>& GlyphIds();

[[nodiscard]] QImage DrawGlyph(PictureId id, qreal scale);

/// The speaker beside the volume.
[[nodiscard]] QImage DrawVolume(qreal scale);
