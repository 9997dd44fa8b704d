#include "skin/PicButton.h"

namespace {

constexpr int kStates = 4;

} // namespace

CPicButton::CPicButton(PictureId strip, const QString& tooltip, QWidget* parent)
    : CPictureButton(tooltip, parent)
    , m_strip(strip) {}

QSize CPicButton::sizeHint() const {
    const QSize strip = LoadPicture(m_strip, 1).size();
    return {strip.width() / kStates, strip.height()};
}

void CPicButton::DrawButton(QPainter& painter) const {
    if (!isEnabled())
        DrawPicture(painter, {}, StatePicture(State::Disabled));
    else if (isDown())
        DrawPicture(painter, {}, StatePicture(State::Pressed));
    else
        DrawFaded(painter, StatePicture(State::Normal), StatePicture(State::Hot), HoverStrength());
}

QPixmap CPicButton::StatePicture(State state) const {
    const QPixmap strip = Picture(m_strip);
    const int width = strip.width() / kStates; // in pixels of the screen
    return strip.copy(static_cast<int>(state) * width, 0, width, strip.height());
}
