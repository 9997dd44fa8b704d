#include "grid/GridPainting.h"

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>
#include <cmath>

namespace {

QPixmap CheckBox(int side, qreal ratio, bool checked, const QColor& ink) {
    QPixmap box((QSizeF(side, side) * ratio).toSize());
    box.setDevicePixelRatio(ratio);
    box.fill(Qt::transparent);
    QPainter painter(&box);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor outline = ink;
    outline.setAlphaF(checked ? 0.75 : 0.5);
    painter.setPen(QPen(outline, 1));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(0.5, 0.5, side - 1, side - 1), 2, 2);
    if (checked) {
        const QPointF tick[] = {QPointF(0.25, 0.52) * side, QPointF(0.43, 0.70) * side,
                                QPointF(0.76, 0.30) * side};
        painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(tick, 3);
    }
    return box;
}

} // namespace

namespace GridPainting {

void FillShaded(QPainter& painter, const QRect& rect, const QColor& colour) {
    const int height = rect.height();
    for (int y = 0; y < height; ++y) {
        const double factor =
            std::sin(static_cast<double>(y) / height * 3.1415926 - 0.3) * 0.2 + 0.8;
        const QColor line(static_cast<int>(colour.red() * factor),
                          static_cast<int>(colour.green() * factor),
                          static_cast<int>(colour.blue() * factor));
        painter.fillRect(rect.left(), rect.top() + y, rect.width(), 1, line);
    }
}

void DrawEdge(QPainter& painter, const QRect& rect, COLORREF top, COLORREF bottom) {
    const QColor first = ToQColor(top);
    const QColor second = ToQColor(bottom);
    painter.fillRect(rect.left(), rect.top(), rect.width(), 1, first);
    painter.fillRect(rect.left(), rect.top(), 1, rect.height(), first);
    painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, second);
    painter.fillRect(rect.right(), rect.top(), 1, rect.height(), second);
}

void DrawHeaderMarks(QPainter& painter, const QRect& rect, const QColor& background) {
    const int height = rect.height() - 8;
    if (height < 1 || rect.width() < 3)
        return;
    const QColor shade = QColor::fromRgbF(background.redF() * 0.8, background.greenF() * 0.8,
                                          background.blueF() * 0.8);
    painter.fillRect(rect.right(), rect.top() + 4, 1, height, shade);
    painter.fillRect(rect.right() - 2, rect.top() + 4, 1, height, shade);
}

int SortArrowRoom(int height) {
    return height + 4;
}

QRect DrawSortArrow(QPainter& painter, const QRect& rect, int lineHeight, bool ascending,
                    const GridSystemColours& colours) {
    const int size = std::min(rect.height() - 4, lineHeight);
    if (size < 4 || rect.width() < size + 4)
        return rect;
    const QRectF box(rect.right() - 2 - size, rect.center().y() - size / 2, size, size);
    const QPointF tip(box.center().x(), ascending ? box.top() : box.bottom());
    const qreal base = ascending ? box.bottom() : box.top();
    const QPointF corners[] = {QPointF(box.left(), base), tip, QPointF(box.right(), base)};

    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ToQColor(colours.light));
    painter.translate(1, 1);
    painter.drawPolygon(corners, 3);
    painter.translate(-1, -1);
    painter.setPen(ToQColor(colours.shadow));
    painter.drawPolygon(corners, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
    return rect.adjusted(0, 0, -SortArrowRoom(size), 0);
}

void DrawCheckBox(QPainter& painter, const QRect& rect, bool checked, const QColor& ink) {
    // Curves are dear, and a window shows one box per row.
    const qreal ratio = painter.device()->devicePixelRatio();
    const QString key = QStringLiteral("grid check box %1 %2 %3 %4")
                            .arg(rect.width())
                            .arg(ratio)
                            .arg(checked)
                            .arg(ink.rgb());
    QPixmap box;
    if (!QPixmapCache::find(key, &box)) {
        box = CheckBox(rect.width(), ratio, checked, ink);
        QPixmapCache::insert(key, box);
    }
    painter.drawPixmap(rect.topLeft(), box);
}

} // namespace GridPainting
