#include "tools/make-theme/Drawing.h"

#include <cmath>

QColor Mix(QRgb from, QRgb to, qreal part) {
    const auto channel = [part](int a, int b) { return qRound(a + (b - a) * part); };
    return QColor(channel(qRed(from), qRed(to)), channel(qGreen(from), qGreen(to)),
                  channel(qBlue(from), qBlue(to)));
}

QColor Translucent(QRgb colour, qreal alpha) {
    QColor result(colour);
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}

qreal StrokeMiddle(qreal exact, qreal scale) {
    const qreal half = Px(2, scale) / 2.0;
    return std::floor(exact - half) + half;
}

QPointF ButtonMiddle(qreal scale) {
    return {StrokeMiddle(kButtonWidth * scale / 2, scale),
            StrokeMiddle(kButtonHeight * scale / 2, scale)};
}

QLinearGradient Vertical(qreal top, qreal bottom, const QColor& from, const QColor& to) {
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    return gradient;
}

QImage Blank(qreal width, qreal height, qreal scale) {
    QImage image(Px(width, scale), Px(height, scale), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

SmoothPainter::SmoothPainter(QImage& image)
    : QPainter(&image) {
    setRenderHint(QPainter::Antialiasing);
    setPen(Qt::NoPen);
}
