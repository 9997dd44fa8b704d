#pragma once

#include <QImage>

/// The ground of the bottom band.
[[nodiscard]] QImage DrawBand(qreal scale);

[[nodiscard]] QImage DrawWarningSign(qreal scale);
[[nodiscard]] QImage DrawQuestionSign(qreal scale);

[[nodiscard]] QImage DrawVolumeChannel(qreal scale);
[[nodiscard]] QImage DrawVolumeThumb(qreal scale);

/// Around its rounded shape is the key colour.
[[nodiscard]] QImage DrawSplash(qreal scale);
[[nodiscard]] QImage DrawAbout(qreal scale);

/// `side` in pixels.
[[nodiscard]] QImage DrawProgramIcon(int side);
