#include "app/RowImages.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <functional>

namespace {

constexpr int kSize = 16;
const QColor kInk(0x2A, 0x2D, 0x33);

using Drawing = std::function<void(QPainter&)>;

void DrawPhone(QPainter& painter) {
    painter.drawRoundedRect(QRectF(4.5, 1.5, 7, 13), 1.5, 1.5);
    painter.drawLine(QPointF(7, 12.5), QPointF(9, 12.5));
}

void DrawFolder(QPainter& painter) {
    QPainterPath folder(QPointF(1.5, 3.5));
    for (const QPointF& corner : {QPointF(6, 3.5), QPointF(7.5, 5.5), QPointF(14.5, 5.5),
                                  QPointF(14.5, 13.5), QPointF(1.5, 13.5)})
        folder.lineTo(corner);
    folder.closeSubpath();
    painter.drawPath(folder);
}

void DrawDisc(QPainter& painter) {
    painter.drawEllipse(QPointF(8, 8), 6.5, 6.5);
    painter.drawEllipse(QPointF(8, 8), 1.5, 1.5);
}

void DrawNote(QPainter& painter) {
    painter.drawLine(QPointF(8.5, 3), QPointF(8.5, 11.5));
    painter.drawLine(QPointF(8.5, 3), QPointF(12, 5.5));
    painter.setBrush(kInk);
    painter.drawEllipse(QPointF(6.5, 12), 2, 1.6);
}

void DrawList(QPainter& painter) {
    for (const double y : {4.0, 8.0, 12.0}) {
        painter.drawPoint(QPointF(2.5, y));
        painter.drawLine(QPointF(5.5, y), QPointF(13.5, y));
    }
}

void DrawTick(QPainter& painter) {
    painter.drawRoundedRect(QRectF(2.5, 2.5, 11, 11), 1.5, 1.5);
    painter.drawPolyline(QPolygonF({QPointF(5, 8), QPointF(7.2, 10.2), QPointF(11, 5.5)}));
}

void DrawSpeaker(QPainter& painter) {
    QPainterPath cone(QPointF(1.5, 6));
    for (const QPointF& corner :
         {QPointF(4, 6), QPointF(7.5, 3), QPointF(7.5, 13), QPointF(4, 10), QPointF(1.5, 10)})
        cone.lineTo(corner);
    cone.closeSubpath();
    painter.fillPath(cone, kInk);
    painter.drawPath(cone);
    for (const double radius : {3.0, 6.0}) { // a sixteenth of a degree is Qt's unit
        const QRectF circle(QPointF(8 - radius, 8 - radius), QSizeF(2 * radius, 2 * radius));
        painter.drawArc(circle.translated(1, 0), -45 * 16, 90 * 16);
    }
}

QIcon MakeIcon(const Drawing& draw) {
    QIcon icon;
    for (const int ratio : {1, 2, 3}) {
        QPixmap pixmap(kSize * ratio, kSize * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(kInk, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QList<QIcon> MakeRowImages() {
    return {MakeIcon(DrawPhone), MakeIcon(DrawFolder), MakeIcon(DrawFolder), MakeIcon(DrawDisc),
            MakeIcon(DrawNote),  MakeIcon(DrawList),   MakeIcon(DrawTick),   MakeIcon(DrawSpeaker)};
}
