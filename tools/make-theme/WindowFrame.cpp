#include "tools/make-theme/WindowFrame.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"

#include <QPainterPath>

namespace {

using namespace Colours;

constexpr int kTop = 30;        ///< height of the top strip
constexpr int kBorder = 4;      ///< width of the other strips
constexpr int kTopLength = 96;  ///< of the picture of the top strip
constexpr int kSideLength = 64; ///< of those of the left and right strips
constexpr int kBottomLength = 32;
constexpr int kCorner = 6;

/// Of the top strip's picture the last column is not shown, and the one before it lies under the
/// right strip.
constexpr int kUnseen = 2;

/// Outlines are hard: pixels are of the window or of the key colour, and nothing between.
void CutCorners(QImage& window, qreal scale) {
    QPainterPath inside;
    const qreal radius = kCorner * scale;
    inside.addRoundedRect(window.rect().adjusted(0, 0, 0, Px(kTop, scale)), radius, radius);
    for (int y = 0; y < Px(kCorner, scale); ++y) {
        for (int x = 0; x < window.width(); ++x) {
            if (!inside.contains(QPointF(x + 0.5, y + 0.5)))
                window.setPixel(x, y, kKey);
        }
    }
}

/// A small window, whose frame is cut into the strips. Width in pixels of the rendering.
QImage DrawWindow(int width, bool active, qreal scale) {
    QImage window(width, Px(kSideLength, scale), QImage::Format_RGB32);
    window.fill(kInk0);
    const qreal line = Px(1, scale);
    const qreal top = Px(kTop, scale);
    const qreal radius = kCorner * scale - line;
    const QRectF inside = QRectF(window.rect()).adjusted(line, line, -line, -line);
    const QRectF face = inside.adjusted(line, line, -line, -line);

    // Along the sides the highlight fades with the light, and goes round the bottom quietly.
    const QColor side = Mix(kInk1, kInk2, active ? 0.7 : 0.5);
    SmoothPainter painter(window);
    painter.setBrush(active ? Vertical(0, top, kLine, side) : Vertical(0, top, kInk2, side));
    painter.drawRoundedRect(inside.adjusted(0, 0, 0, radius), radius, radius);
    painter.fillRect(QRectF(0, window.height() - line, width, line), QColor(kInk0));
    painter.setBrush(active ? Vertical(face.top(), top, kInk2, kInk1) : QBrush(QColor(kInk1)));
    painter.drawRoundedRect(face, radius - line, radius - line);
    painter.fillRect(face.adjusted(0, radius, 0, 0),
                     active ? Vertical(face.top(), top, kInk2, kInk1) : QBrush(QColor(kInk1)));
    painter.end();
    CutCorners(window, scale);
    return window;
}

} // namespace

QImage DrawFrameStrip(FrameStrip strip, qreal scale) {
    const int border = Px(kBorder, scale);
    const bool isTop = strip == FrameStrip::Top;
    const int length = Px(isTop ? kTopLength : kBottomLength, scale);
    const int width = 2 * border + length - (isTop ? kUnseen : 0);
    const int height = Px(kSideLength, scale);

    QRect cut; // of the window: what the picture shows
    switch (strip) {
    case FrameStrip::Top:
        cut = QRect(border, 0, length - kUnseen, Px(kTop, scale));
        break;
    case FrameStrip::Left:
        cut = QRect(0, 0, border, height);
        break;
    case FrameStrip::Right:
        cut = QRect(width - border, 0, border, height);
        break;
    case FrameStrip::Bottom:
        cut = QRect(border, height - border, length, border);
        break;
    }
    const bool stacked = isTop || strip == FrameStrip::Bottom;
    const QPoint second = stacked ? QPoint(0, cut.height()) : QPoint(cut.width(), 0);
    QImage image(stacked ? length : 2 * cut.width(), stacked ? 2 * cut.height() : height,
                 QImage::Format_RGB32);
    image.fill(kInk1);
    QPainter painter(&image);
    painter.drawImage(0, 0, DrawWindow(width, true, scale), cut.x(), cut.y(), cut.width(),
                      cut.height());
    painter.drawImage(second, DrawWindow(width, false, scale), cut);
    return image;
}
