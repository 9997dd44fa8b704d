#pragma once

#include <QPainter>
#include <QPointF>

#include <functional>
#include <initializer_list>

/// Draws glyphs of one family: strokes of two pixels with round ends and corners.
///
/// Places are whole pixels of 100 % from the glyph's middle, x to the right and y downwards; in
/// each rendering they are moved to where upright and level strokes are crisp, alike on both sides
/// of the middle.
class GlyphPen {
public:
    using Points = std::initializer_list<QPointF>;

    /// `middle` is in pixels of the rendering, and a StrokeMiddle() in both directions.
    GlyphPen(QPainter& painter, QPointF middle, qreal scale, const QColor& colour);

    void Line(Points points);
    /// A line whose corners are bent, from `radius` before them to as far behind.
    void RoundedLine(Points points, qreal radius);
    void Outline(Points points);
    void Solid(Points points);
    void Dot(QPointF place);
    void Circle(QPointF middle, qreal radius);
    /// Degrees run against the clock, 0 is to the right.
    void Arc(QPointF middle, qreal radius, qreal from, qreal span);
    void Box(QPointF topLeft, QPointF bottomRight, qreal radius);
    /// A curve between two places, bent towards a third.
    void Bend(QPointF from, QPointF towards, QPointF to);

    void Plus(QPointF middle, qreal arm);
    void Cross(QPointF middle, qreal arm);

    /// Draws something in front of what is there, with air around it.
    void InFront(const std::function<void()>& draw);

private:
    [[nodiscard]] QPointF At(QPointF place) const;
    [[nodiscard]] qreal Length(qreal length) const;
    [[nodiscard]] QPolygonF All(Points points) const;
    void SetStroke(qreal width);

    QPainter& m_painter;
    QPointF m_middle;
    qreal m_scale;
    QColor m_colour;
};
