#include "tools/make-theme/Emblem.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"

#include <QPainterPath>

#include <cmath>

namespace {

using namespace Colours;

class EmblemPen {
public:
    EmblemPen(QPainter& painter, QPointF middle, qreal unit, qreal stroke)
        : m_painter(painter)
        , m_middle(middle)
        , m_unit(unit)
        , m_stroke(stroke) {}

    void SetColour(QRgb colour) {
        m_painter.setPen(
            QPen(QColor(colour), m_stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        m_painter.setBrush(Qt::NoBrush);
    }

    void Line(QPointF from, QPointF to) { m_painter.drawLine(At(from), At(to)); }

    void Box(QPointF topLeft, QPointF bottomRight, qreal radius) {
        const qreal r = radius * m_unit;
        m_painter.drawRoundedRect(QRectF(At(topLeft), At(bottomRight)), r, r);
    }

    /// A quaver with its head at the left of the foot of the stem.
    void Note(QPointF foot, qreal height, QRgb colour) {
        const QPointF at = At(foot);
        const qreal head = std::max(2.1 * m_unit, m_stroke);
        SetColour(colour);
        QPainterPath stem(at);
        stem.lineTo(at - QPointF(0, height * m_unit));
        const auto place = [&](qreal x, qreal y) { return at + QPointF(x, y - height) * m_unit; };
        stem.cubicTo(place(0.2, 1.8), place(2.6, 2.2), place(2.2, 4.8));
        m_painter.drawPath(stem);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(QColor(colour));
        m_painter.translate(at + QPointF(m_stroke / 2 - head, 0));
        m_painter.rotate(-18);
        m_painter.drawEllipse(QPointF(0, 0), head, head * 0.8);
        m_painter.resetTransform();
    }

private:
    [[nodiscard]] QPointF At(QPointF place) const {
        const auto whole = [this](qreal exact) {
            return std::round(exact - m_stroke / 2) + m_stroke / 2;
        };
        const QPointF exact = m_middle + place * m_unit;
        return {whole(exact.x()), whole(exact.y())};
    }

    QPainter& m_painter;
    QPointF m_middle;
    qreal m_unit;
    qreal m_stroke;
};

} // namespace

void DrawEmblem(QPainter& painter, QPointF middle, qreal unit, qreal stroke) {
    EmblemPen pen(painter, middle, unit, stroke);
    pen.SetColour(kDisabledText);
    pen.Line({-11, -6}, {-5, -6});
    pen.Line({-11, 6}, {-5, 6});
    pen.SetColour(kAccent);
    pen.Line({-11, 0}, {-3, 0});
    pen.SetColour(kQuietText);
    pen.Box({0, -11}, {11, 11}, 2.4);
    pen.Note({6, 4}, 9, kAccent);
}
