#include "skin/PicButton.h"

#include <QPainter>

namespace {

constexpr int kStates = 4;

} // namespace

CPicButton::CPicButton(PictureId strip, const QString& tooltip, QWidget* parent)
    : PictureButton(tooltip, parent)
    , m_strip(strip) {}

QSize CPicButton::sizeHint() const {
    const QSize strip = LoadPicture(m_strip, 1).size();
    return {strip.width() / kStates, strip.height()};
}

void CPicButton::DrawButton(QPainter& painter) const {
    if (!isEnabled())
        return DrawState(painter, State::Disabled);
    if (isDown())
        return DrawState(painter, State::Pressed);
    const qreal hover = HoverStrength();
    if (hover < 1)
        DrawState(painter, State::Normal);
    if (hover > 0) {
        painter.setOpacity(hover);
        DrawState(painter, State::Hot);
    }
}

void CPicButton::DrawState(QPainter& painter, State state) const {
    const QPixmap strip = Picture(m_strip);
    const int width = strip.width() / kStates; // in pixels of the screen
    const int left = strip.width() * static_cast<int>(state) / kStates;
    DrawPicture(painter, {}, strip.copy(left, 0, width, strip.height()));
}
