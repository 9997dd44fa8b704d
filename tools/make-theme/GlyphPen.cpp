#include "tools/make-theme/GlyphPen.h"

#include "tools/make-theme/Drawing.h"

#include <QPainterPath>

#include <cmath>

GlyphPen::GlyphPen(QPainter& painter, QPointF middle, qreal scale, const QColor& colour)
    : m_painter(painter)
    , m_middle(middle)
    , m_scale(scale)
    , m_colour(colour) {
    SetStroke(Px(2, scale));
}

void GlyphPen::SetStroke(qreal width) {
    m_painter.setPen(QPen(m_colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.setBrush(Qt::NoBrush);
}

qreal GlyphPen::Length(qreal length) const {
    return std::copysign(std::floor(std::abs(length) * m_scale + 0.5), length);
}

QPointF GlyphPen::At(QPointF place) const {
    return m_middle + QPointF(Length(place.x()), Length(place.y()));
}

QPolygonF GlyphPen::All(Points points) const {
    QPolygonF result;
    for (const QPointF& point : points)
        result += At(point);
    return result;
}

void GlyphPen::Line(Points points) {
    m_painter.drawPolyline(All(points));
}

void GlyphPen::RoundedLine(Points points, qreal radius) {
    const QPolygonF corners = All(points);
    const auto onTheWay = [&](qsizetype from, qsizetype to) {
        QLineF way(corners[from], corners[to]);
        way.setLength(radius * m_scale);
        return way.p2();
    };
    QPainterPath path(corners.front());
    for (qsizetype i = 1; i + 1 < corners.size(); ++i) {
        path.lineTo(onTheWay(i, i - 1));
        path.quadTo(corners[i], onTheWay(i, i + 1));
    }
    path.lineTo(corners.back());
    m_painter.drawPath(path);
}

void GlyphPen::Outline(Points points) {
    m_painter.drawPolygon(All(points));
}

void GlyphPen::Solid(Points points) {
    m_painter.setBrush(m_colour);
    Outline(points);
    m_painter.setBrush(Qt::NoBrush);
}

void GlyphPen::Dot(QPointF place) {
    const qreal radius = 1.3 * m_scale;
    QPainterPath path;
    path.addEllipse(At(place), radius, radius);
    m_painter.fillPath(path, m_colour);
}

void GlyphPen::Circle(QPointF middle, qreal radius) {
    m_painter.drawEllipse(At(middle), Length(radius), Length(radius));
}

void GlyphPen::Arc(QPointF middle, qreal radius, qreal from, qreal span) {
    const qreal r = Length(radius);
    const QRectF box(At(middle) - QPointF(r, r), QSizeF(2 * r, 2 * r));
    m_painter.drawArc(box, qRound(from * 16), qRound(span * 16));
}

void GlyphPen::Box(QPointF topLeft, QPointF bottomRight, qreal radius) {
    const qreal r = radius * m_scale;
    m_painter.drawRoundedRect(QRectF(At(topLeft), At(bottomRight)), r, r);
}

void GlyphPen::Bend(QPointF from, QPointF towards, QPointF to) {
    QPainterPath path(At(from));
    path.quadTo(At(towards), At(to));
    m_painter.drawPath(path);
}

void GlyphPen::Plus(QPointF middle, qreal arm) {
    Line({middle - QPointF(arm, 0), middle + QPointF(arm, 0)});
    Line({middle - QPointF(0, arm), middle + QPointF(0, arm)});
}

void GlyphPen::Cross(QPointF middle, qreal arm) {
    Line({middle - QPointF(arm, arm), middle + QPointF(arm, arm)});
    Line({middle - QPointF(arm, -arm), middle + QPointF(arm, -arm)});
}

void GlyphPen::InFront(const std::function<void()>& draw) {
    const int stroke = Px(2, m_scale);
    m_painter.setCompositionMode(QPainter::CompositionMode_Clear);
    SetStroke(stroke + 2 * Px(2, m_scale));
    m_painter.setBrush(m_colour); // closed shapes hide what lies behind them
    draw();
    m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    SetStroke(stroke);
    draw();
}
