#include "tools/make-theme/RoundButtons.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"
#include "tools/make-theme/Glyphs.h"

#include <cmath>

namespace {

using namespace Colours;

struct DiscLook {
    QColor top, bottom;       ///< of the face
    QColor rimTop, rimBottom; ///< of the line around it
    QColor shade;             ///< half a pixel outside of it
};

/// The radius that puts a circle about the button's middle on pixels, not above `exact`.
qreal Radius(qreal exact, qreal scale) {
    const qreal middle = ButtonMiddle(scale).x();
    const qreal part = middle - std::floor(middle);
    return std::floor(exact * scale - part) + part;
}

void Ring(QPainter& painter, qreal scale, qreal outer, const QBrush& brush, qreal width) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(brush, width));
    painter.drawEllipse(ButtonMiddle(scale), outer - width / 2, outer - width / 2);
    painter.setPen(Qt::NoPen);
}

QImage Disc(const DiscLook& look, qreal scale) {
    QImage image = Blank(kButtonWidth, kButtonHeight, scale);
    SmoothPainter painter(image);
    const QPointF middle = ButtonMiddle(scale);
    const qreal radius = Radius(18, scale);
    const qreal top = middle.y() - radius;
    const qreal bottom = middle.y() + radius;

    painter.setBrush(look.shade);
    painter.drawEllipse(middle, radius + 0.5 * scale, radius + 0.5 * scale);
    painter.setBrush(Vertical(top, bottom, look.top, look.bottom));
    painter.drawEllipse(middle, radius, radius);
    Ring(painter, scale, radius, Vertical(top, bottom, look.rimTop, look.rimBottom), scale);
    return image;
}

} // namespace

QImage DrawRaisedDisc(qreal scale) {
    return Disc({Mix(kInk2, kLine, 0.5), Mix(kInk2, kInk1, 0.4), Mix(kLine, kDisabledText, 0.35),
                 Mix(kInk2, kLine, 0.3), kInk0},
                scale);
}

QImage DrawSunkenDisc(qreal scale) {
    return Disc({Mix(kInk0, kInk1, 0.1), kInk1, kInk0, kLine, Qt::transparent}, scale);
}

QImage DrawHoverDisc(qreal scale) {
    QImage image = Disc({Mix(kInk2, kLine, 0.9), kInk2, kLine, kInk2, kInk0}, scale);
    SmoothPainter painter(image);
    Ring(painter, scale, Radius(18, scale), QColor(kAccent), Px(2, scale));
    return image;
}

QImage DrawFocusRing(qreal scale) {
    QImage image = Blank(kButtonWidth, kButtonHeight, scale);
    SmoothPainter painter(image);
    Ring(painter, scale, Radius(22, scale), QColor(kAccent), Px(2, scale));
    return image;
}

QImage DrawButtonStates(PictureId glyph, qreal scale) {
    const QImage sign = DrawGlyph(glyph, scale);
    const QImage raised = DrawRaisedDisc(scale);
    const int width = sign.width();
    QImage states(4 * width, sign.height(), sign.format());
    states.fill(Qt::transparent);

    QPainter painter(&states);
    const auto draw = [&](int state, const QImage& disc, int down, qreal opacity) {
        painter.drawImage(state * width, 0, disc);
        painter.setOpacity(opacity);
        painter.drawImage(state * width, down, sign);
        painter.setOpacity(1);
    };
    draw(0, raised, 0, 1);
    draw(1, DrawHoverDisc(scale), 0, 1);
    draw(2, DrawSunkenDisc(scale), Px(1, scale), 1);
    draw(3, raised, 0, 1 / 3.0);
    return states;
}
