#pragma once

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPointF>
#include <QRgb>

// What all pictures are drawn with. Sizes are given in pixels of 100 %; drawing is done in pixels
// of the rendering, `scale` times as many (1, 1.5 or 2), so that edges and lines can be put on
// them.

/// The colour at `part` of the way from one to the other.
[[nodiscard]] QColor Mix(QRgb from, QRgb to, qreal part);

[[nodiscard]] QColor Translucent(QRgb colour, qreal alpha);

/// A length in pixels of the rendering.
[[nodiscard]] inline int Px(qreal length, qreal scale) {
    return qRound(length * scale);
}

/// The place next to `exact` (both in pixels of the rendering) where a stroke of two pixels has its
/// middle when both its edges lie on pixels.
[[nodiscard]] qreal StrokeMiddle(qreal exact, qreal scale);

[[nodiscard]] QLinearGradient Vertical(qreal top, qreal bottom, const QColor& from,
                                       const QColor& to);

/// A picture that nothing is drawn on yet, in pixels of 100 %.
[[nodiscard]] QImage Blank(qreal width, qreal height, qreal scale);

/// The size of a round button.
inline constexpr int kButtonWidth = 45;
inline constexpr int kButtonHeight = 44;

/// The middle of disc and glyph, in pixels of the rendering: where round shapes begin and end with
/// a pixel, half a pixel left of the picture's middle at most.
[[nodiscard]] QPointF ButtonMiddle(qreal scale);

/// A painter with smooth edges and no outline.
class SmoothPainter : public QPainter {
public:
    explicit SmoothPainter(QImage& image);
};

/// Pixels of this colour stand for what the picture does not cover, where it has no alpha.
inline constexpr QRgb kKey = 0xFFFF00FF;
