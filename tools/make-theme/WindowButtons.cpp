#include "tools/make-theme/WindowButtons.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"
#include "tools/make-theme/GlyphPen.h"

#include <functional>

namespace {

using namespace Colours;

constexpr int kPlateWidth = 22;
constexpr int kPlateHeight = 18;
constexpr int kPlateTop = 6; ///< YCoord of theme.ini
constexpr int kViewWidth = 42;
constexpr int kViewHeight = 28;
constexpr int kViewTop = 1; ///< where the main window puts the button

struct PlateLook {
    QColor top, bottom, rim, glyph;
};

/// Normal, pressed and hot.
std::vector<PlateLook> Looks(bool closes) {
    const PlateLook normal{Mix(kInk2, kLine, 0.3), Mix(kInk2, kInk1, 0.3), Mix(kInk2, kLine, 0.9),
                           kQuietText};
    if (closes) {
        return {
            normal,
            {Mix(kClose, kInk0, 0.45), Mix(kClose, kInk0, 0.35), Mix(kClose, kInk0, 0.6), kText},
            {kClose, Mix(kClose, kInk0, 0.12), Mix(kClose, kText, 0.25), kText}};
    }
    return {
        normal, {kInk0, kInk1, kLine, kQuietText}, {Mix(kInk2, kLine, 0.9), kInk2, kAccent, kText}};
}

void DrawPlate(QPainter& painter, const QRect& place, const PlateLook& look, qreal scale) {
    const int line = Px(1, scale);
    const qreal radius = 3 * scale;
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.rim);
    painter.drawRoundedRect(place, radius, radius);
    painter.setBrush(Vertical(place.top(), place.bottom() + 1, look.top, look.bottom));
    painter.drawRoundedRect(place.adjusted(line, line, -line, -line), radius - line, radius - line);
}

using Glyph = std::function<void(GlyphPen&)>;

/// The three states of a button of this size, with its plate at `top`.
QImage DrawStates(QSize size, int top, bool closes, const Glyph& glyph, qreal scale) {
    const QSize state(Px(size.width(), scale), Px(size.height(), scale));
    QImage image = Blank(3 * size.width(), size.height(), scale);
    SmoothPainter painter(image);
    QRect place(0, top, state.width(), Px(kPlateHeight, scale));
    for (const PlateLook& look : Looks(closes)) {
        DrawPlate(painter, place, look, scale);
        const QPointF middle = QRectF(place).center();
        GlyphPen pen(painter, {StrokeMiddle(middle.x(), scale), StrokeMiddle(middle.y(), scale)},
                     scale, look.glyph);
        glyph(pen);
        place.translate(state.width(), 0);
    }
    return image;
}

Glyph StandardGlyph(WindowButton button) {
    switch (button) {
    case WindowButton::Close:
        return [](GlyphPen& pen) { pen.Cross({0, 0}, 4); };
    case WindowButton::Maximize:
        return [](GlyphPen& pen) { pen.Box({-5, -4}, {5, 4}, 1); };
    case WindowButton::Restore:
        return [](GlyphPen& pen) {
            pen.Box({-5, -1}, {2, 5}, 1);
            pen.Line({{-2, -4}, {5, -4}, {5, 2}});
        };
    case WindowButton::Minimize:
        return [](GlyphPen& pen) { pen.Line({{-5, 4}, {5, 4}}); };
    }
    return {};
}

/// Puts the key colour where nothing is drawn; smooth edges are laid over the colour of the strip.
QImage OverKey(const QImage& image) {
    QImage result(image.size(), QImage::Format_RGB32);
    result.fill(Mix(kInk2, kInk1, 0.7));
    QPainter(&result).drawImage(0, 0, image);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) < 24)
                result.setPixel(x, y, kKey);
        }
    }
    return result;
}

} // namespace

QImage DrawWindowButton(WindowButton button, qreal scale) {
    return OverKey(DrawStates({kPlateWidth, kPlateHeight}, 0, button == WindowButton::Close,
                              StandardGlyph(button), scale));
}

QImage DrawViewButton(bool toMiniPlayer, qreal scale) {
    const int from = toMiniPlayer ? -1 : 1;
    const Glyph glyph = [from](GlyphPen& pen) {
        const qreal window = from * 11;
        const qreal bar = -from * 11;
        pen.Box({window - 5, -4}, {window + 5, 4}, 1);
        pen.Box({bar - 5, -1}, {bar + 5, 2}, 1);
        pen.Line({{-1, -3}, {2, 0}, {-1, 3}});
    };
    const int top = Px(kPlateTop, scale) - Px(kViewTop, scale);
    return DrawStates({kViewWidth, kViewHeight}, top, false, glyph, scale);
}
