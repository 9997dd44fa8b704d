#include "tools/make-theme/Emblem.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"

#include <QPainterPath>

#include <functional>

namespace {

using namespace Colours;

void DrawNote(QPainter& painter, qreal stroke, const std::function<QPointF(qreal, qreal)>& at,
              qreal unit) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kAccent));
    painter.drawEllipse(at(4.6, 3.4), 2.1 * unit, 1.8 * unit);
    painter.setPen(QPen(QColor(kAccent), stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath stem(at(6.7, 3.4));
    stem.lineTo(at(6.7, -5));
    stem.cubicTo(at(6.9, -3.4), at(8.6, -3), at(8.6, -1));
    painter.drawPath(stem);
}

} // namespace

void DrawEmblem(QPainter& painter, QPointF middle, qreal unit, qreal stroke) {
    const auto at = [&](qreal x, qreal y) { return middle + QPointF(x, y) * unit; };
    const auto pen = [&](QRgb colour) {
        painter.setPen(QPen(QColor(colour), stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
    };
    pen(kDisabledText);
    painter.drawLine(at(-11, -6), at(-3, -6));
    painter.drawLine(at(-11, 6), at(-3, 6));
    pen(kAccent);
    painter.drawLine(at(-11, 0), at(-3, 0));
    pen(kQuietText);
    painter.drawRoundedRect(QRectF(at(1, -11), at(11, 11)), 2.2 * unit, 2.2 * unit);
    painter.drawLine(at(5, 8), at(7, 8));
    DrawNote(painter, stroke, at, unit);
}
