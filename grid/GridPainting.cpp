#include "grid/GridPainting.h"

#include "drawing/DevicePixels.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>
#include <cmath>

namespace {

/// A box of `side` device pixels with an outline of `line`.
QPixmap CheckBox(int side, int line, qreal ratio, bool checked, const QColor& ink) {
    QPixmap box(side, side);
    box.fill(Qt::transparent);
    QPainter painter(&box);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor outline = ink;
    outline.setAlphaF(checked ? 0.75 : 0.5);
    painter.setPen(QPen(outline, line));
    painter.setBrush(Qt::white);
    const QRectF middle(line / 2.0, line / 2.0, side - line, side - line);
    painter.drawRoundedRect(middle, 2 * ratio, 2 * ratio);
    if (checked) {
        const QPointF tick[] = {QPointF(0.25, 0.52) * side, QPointF(0.43, 0.70) * side,
                                QPointF(0.76, 0.30) * side};
        painter.setPen(QPen(ink, 2 * ratio, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(tick, 3);
    }
    return box;
}

/// Draws a picture, made once per size in device pixels: curves and scaling are dear, and a window
/// shows one picture per row.
template <class Make>
void DrawCached(QPainter& painter, const QRect& rect, const QString& name, Make make) {
    const CDevicePixels pixels(painter);
    const QSize size(pixels.Length(rect.width()), pixels.Length(rect.height()));
    const qreal ratio = static_cast<qreal>(size.width()) / rect.width();
    // Joined, for QString::arg alone would cost as much as the drawing.
    const QString key = QStringLiteral("grid ") + name + u' ' + QString::number(size.width()) +
                        u' ' + QString::number(size.height()) + u' ' +
                        QString::number(rect.width());
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = make(pixels, size, ratio);
        picture.setDevicePixelRatio(painter.deviceTransform().m11()); // pixel by pixel
        QPixmapCache::insert(key, picture);
    }
    painter.drawPixmap(pixels.ToLogical(pixels.Of(rect).topLeft()), picture);
}

} // namespace

namespace GridPainting {

void FillShaded(QPainter& painter, const QRect& rect, const QColor& colour) {
    const CDevicePixels pixels(painter);
    const QRect bar = pixels.Of(rect);
    const int height = bar.height();
    for (int y = 0; y < height; ++y) {
        const double factor =
            std::sin(static_cast<double>(y) / height * 3.1415926 - 0.3) * 0.2 + 0.8;
        const QColor line(static_cast<int>(colour.red() * factor),
                          static_cast<int>(colour.green() * factor),
                          static_cast<int>(colour.blue() * factor));
        pixels.Fill(QRect(bar.left(), bar.top() + y, bar.width(), 1), line);
    }
}

void DrawLine(QPainter& painter, const QRect& rect, Qt::Edge edge, const QColor& colour) {
    const CDevicePixels pixels(painter);
    const int width = pixels.Length(1);
    QRect line = pixels.Of(rect);
    if (edge == Qt::TopEdge)
        line.setHeight(width);
    else if (edge == Qt::LeftEdge)
        line.setWidth(width);
    else if (edge == Qt::BottomEdge)
        line.setTop(line.bottom() + 1 - width);
    else
        line.setLeft(line.right() + 1 - width);
    pixels.Fill(line, colour);
}

void DrawEdge(QPainter& painter, const QRect& rect, const QColor& top, const QColor& bottom) {
    DrawLine(painter, rect, Qt::TopEdge, top);
    DrawLine(painter, rect, Qt::LeftEdge, top);
    DrawLine(painter, rect, Qt::BottomEdge, bottom);
    DrawLine(painter, rect, Qt::RightEdge, bottom);
}

void DrawHeaderMarks(QPainter& painter, const QRect& rect, const QColor& background) {
    if (rect.height() < 9 || rect.width() < 3)
        return;
    const QColor shade = QColor::fromRgbF(background.redF() * 0.8, background.greenF() * 0.8,
                                          background.blueF() * 0.8);
    const CDevicePixels pixels(painter);
    const int air = pixels.Length(4);
    const int width = pixels.Length(1);
    QRect mark = pixels.Of(rect).adjusted(0, air, 0, -air);
    mark.setLeft(mark.right() + 1 - width);
    pixels.Fill(mark, shade);
    pixels.Fill(mark.translated(-2 * width, 0), shade);
}

int SortArrowRoom(int height) {
    return height + 4;
}

QRect DrawSortArrow(QPainter& painter, const QRect& rect, int lineHeight, bool ascending,
                    const QColor& light, const QColor& shadow) {
    const int size = std::min(rect.height() - 4, lineHeight);
    if (size < 4 || rect.width() < size + 4)
        return rect;
    const QRectF box(rect.right() - 2 - size, rect.center().y() - size / 2, size, size);
    const QPointF tip(box.center().x(), ascending ? box.top() : box.bottom());
    const qreal base = ascending ? box.bottom() : box.top();
    const QPointF corners[] = {QPointF(box.left(), base), tip, QPointF(box.right(), base)};

    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(light);
    painter.translate(1, 1);
    painter.drawPolygon(corners, 3);
    painter.translate(-1, -1);
    painter.setPen(shadow);
    painter.drawPolygon(corners, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
    return rect.adjusted(0, 0, -SortArrowRoom(size), 0);
}

void DrawCheckBox(QPainter& painter, const QRect& rect, bool checked, const QColor& ink) {
    const QString name =
        (checked ? QStringLiteral("tick ") : QStringLiteral("box ")) + QString::number(ink.rgb());
    DrawCached(painter, rect, name, [&](const CDevicePixels& pixels, QSize size, qreal ratio) {
        return CheckBox(size.width(), pixels.Length(1), ratio, checked, ink);
    });
}

void DrawImage(QPainter& painter, const QRect& rect, const QIcon& image) {
    const QString name = QString::number(image.cacheKey());
    DrawCached(painter, rect, name, [&](const CDevicePixels&, QSize size, qreal ratio) {
        // An icon would enlarge the picture for 100 % at 125 %, pixel by pixel.
        const QPixmap picture = image.pixmap(rect.size(), std::ceil(ratio));
        return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    });
}

} // namespace GridPainting
