#include "tools/make-theme/Scenes.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"
#include "tools/make-theme/Emblem.h"
#include "tools/make-theme/GlyphPen.h"

#include <QPainterPath>
#include <QRadialGradient>

namespace {

using namespace Colours;

constexpr int kSceneWidth = 400;
constexpr int kSceneHeight = 240;

constexpr int kLowerRow = 46; ///< where the band's lower row begins: the mini player shows it alone
constexpr int kBandHeight = 103;

/// A dark ground with the grooves of a record, hardly seen.
void DrawGround(QPainter& painter, const QRectF& place, QPointF middle, qreal scale) {
    painter.fillRect(place, Vertical(place.top(), place.bottom(), kInk2, kInk0));
    painter.setBrush(Qt::NoBrush);
    for (int radius = 60; radius <= 300; radius += 12) {
        painter.setPen(QPen(Translucent(kLine, 0.35 - radius * 0.0009), scale));
        painter.drawEllipse(middle, radius * scale, radius * scale);
    }
    painter.setPen(Qt::NoPen);
}

QPainterPath Rounded(const QRectF& place, qreal radius) {
    QPainterPath path;
    path.addRoundedRect(place, radius, radius);
    return path;
}

} // namespace

QImage DrawBand(qreal scale) {
    QImage image = Blank(16, kBandHeight, scale);
    QPainter painter(&image);
    const int line = Px(1, scale);
    const int seam = Px(kLowerRow, scale);
    const int height = image.height();
    painter.fillRect(image.rect(), Vertical(0, height, Mix(kInk1, kInk2, 0.75), kInk1));
    painter.fillRect(0, 0, image.width(), line, QColor(kLine));
    painter.fillRect(0, seam - line, image.width(), line, Mix(kInk1, kInk0, 0.6));
    painter.fillRect(0, seam, image.width(), line, kInk2);
    return image;
}

QImage DrawWarningSign(qreal scale) {
    QImage image = Blank(40, 40, scale);
    SmoothPainter painter(image);
    const QPointF corners[] = {QPointF(20, 6) * scale, QPointF(36, 34) * scale,
                               QPointF(4, 34) * scale};
    painter.setBrush(QColor(kWarning));
    painter.setPen(QPen(QColor(kWarning), 6 * scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(corners, 3);
    painter.setPen(QPen(QColor(kInk0), 4 * scale, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(20, 14) * scale, QPointF(20, 23) * scale);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kInk0));
    painter.drawEllipse(QPointF(20, 30) * scale, 2.5 * scale, 2.5 * scale);
    return image;
}

QImage DrawQuestionSign(qreal scale) {
    QImage image = Blank(40, 40, scale);
    SmoothPainter painter(image);
    painter.setBrush(QColor(kAccent));
    painter.drawEllipse(QPointF(20, 20) * scale, 18 * scale, 18 * scale);
    QPainterPath mark;
    mark.arcMoveTo(QRectF(14 * scale, 9 * scale, 12 * scale, 12 * scale), 180);
    mark.arcTo(QRectF(14 * scale, 9 * scale, 12 * scale, 12 * scale), 180, -225);
    mark.quadTo(QPointF(20, 21) * scale, QPointF(20, 24) * scale);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(kInk0), 4 * scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(mark);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kInk0));
    painter.drawEllipse(QPointF(20, 30.5) * scale, 2.5 * scale, 2.5 * scale);
    return image;
}

QImage DrawVolumeChannel(qreal scale) {
    QImage image = Blank(100, 8, scale);
    SmoothPainter painter(image);
    const QRectF place(image.rect());
    const qreal line = Px(1, scale);
    painter.setBrush(Vertical(0, place.height(), Mix(kInk0, kInk1, 0.5), kLine));
    painter.drawRoundedRect(place, 4 * scale, 4 * scale);
    const QRectF groove = place.adjusted(line, line, -line, -line);
    painter.setBrush(Vertical(0, place.height(), kInk0, kInk1));
    painter.drawRoundedRect(groove, groove.height() / 2, groove.height() / 2);
    return image;
}

QImage DrawVolumeThumb(qreal scale) {
    QImage image = Blank(12, 20, scale);
    SmoothPainter painter(image);
    const QRectF place(image.rect());
    const qreal line = Px(1, scale);
    painter.setBrush(QColor(kInk0));
    painter.drawRoundedRect(place, 4 * scale, 4 * scale);
    painter.setBrush(Vertical(0, place.height(), kQuietText, Mix(kQuietText, kDisabledText, 0.5)));
    painter.drawRoundedRect(place.adjusted(line, line, -line, -line), 3 * scale, 3 * scale);
    return image;
}

QImage DrawSplash(qreal scale) {
    QImage image = Blank(kSceneWidth, kSceneHeight, scale);
    const QRectF place(image.rect());
    const qreal radius = 10 * scale;
    const qreal line = Px(1, scale);
    SmoothPainter painter(image);
    DrawGround(painter, place, place.center(), scale);
    DrawEmblem(painter, place.center(), 5 * scale, Px(8, scale));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(kInk0), line));
    painter.drawPath(Rounded(place.adjusted(line / 2, line / 2, -line / 2, -line / 2), radius));
    painter.end();

    QImage result = image.convertToFormat(QImage::Format_RGB32);
    const QPainterPath inside = Rounded(place, radius);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            if (!inside.contains(QPointF(x + 0.5, y + 0.5)))
                result.setPixel(x, y, kKey);
        }
    }
    return result;
}

QImage DrawAbout(qreal scale) {
    QImage image = Blank(kSceneWidth, kSceneHeight, scale);
    SmoothPainter painter(image);
    const QPointF middle = QPointF(kSceneWidth - 76, kSceneHeight / 2.0) * scale;
    DrawGround(painter, QRectF(image.rect()), middle, scale);
    DrawEmblem(painter, middle, 4 * scale, Px(6, scale));
    return image;
}

QImage DrawProgramIcon(int side) {
    QImage image = Blank(side, side, 1);
    SmoothPainter painter(image);
    const QRectF place(image.rect());
    const qreal radius = side * 0.22;
    const qreal line = side < 64 ? 1 : side / 64.0;
    painter.setBrush(Vertical(0, side, kLine, kInk0));
    painter.drawRoundedRect(place, radius, radius);
    painter.setBrush(Vertical(0, side, kInk2, kInk0));
    painter.drawRoundedRect(place.adjusted(line, line, -line, -line), radius - line, radius - line);
    DrawEmblem(painter, place.center(), side / 32.0, side / 16.0);
    return image;
}
