#include "skin/BitmapSlider.h"

#include "skin/Colours.h"
#include "skin/ControlDrawing.h"

#include <QMouseEvent>

#include <qdrawutil.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int kMaximum = 100;
constexpr int kPageStep = 20;
constexpr int kMargin = 2; ///< above and below: room for the frame that shows focus
constexpr qreal kDisabledOpacity = 1.0 / 3;

struct KeyAction {
    int key;
    QAbstractSlider::SliderAction action;
};
constexpr std::array kKeys{
    KeyAction{Qt::Key_Left, QAbstractSlider::SliderSingleStepSub},
    KeyAction{Qt::Key_Up, QAbstractSlider::SliderSingleStepSub},
    KeyAction{Qt::Key_Right, QAbstractSlider::SliderSingleStepAdd},
    KeyAction{Qt::Key_Down, QAbstractSlider::SliderSingleStepAdd},
    KeyAction{Qt::Key_PageUp, QAbstractSlider::SliderPageStepSub},
    KeyAction{Qt::Key_PageDown, QAbstractSlider::SliderPageStepAdd},
    KeyAction{Qt::Key_Home, QAbstractSlider::SliderToMinimum},
    KeyAction{Qt::Key_End, QAbstractSlider::SliderToMaximum},
};

/// The picture made longer or shorter between its ends, to a length in pixels of the screen.
QPixmap Stretch(QPixmap picture, int length) {
    const qreal ratio = picture.devicePixelRatio();
    picture.setDevicePixelRatio(1);
    const int end = picture.height() / 2;
    QPixmap stretched(length, picture.height());
    stretched.fill(Qt::transparent);
    QPainter painter(&stretched);
    qDrawBorderPixmap(&painter, stretched.rect(), QMargins(end, 0, end, 0), picture);
    painter.end();
    stretched.setDevicePixelRatio(ratio);
    return stretched;
}

int LeftOf(QPointF place) {
    return static_cast<int>(std::floor(place.x()));
}

} // namespace

CBitmapSlider::CBitmapSlider(const QString& label, QWidget* parent)
    : QAbstractSlider(parent) {
    setOrientation(Qt::Horizontal);
    setRange(0, kMaximum);
    setPageStep(kPageStep);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(label);
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

CBitmapSlider::CBitmapSlider(Pictures pictures, const QString& label, QWidget* parent)
    : CBitmapSlider(label, parent) {
    m_pictures = pictures;
}

QSize CBitmapSlider::sizeHint() const {
    return SizeFor(m_pictures ? LoadPicture(m_pictures->channel, 1).width() : 0);
}

QSize CBitmapSlider::minimumSizeHint() const {
    return SizeFor(2 * ThumbSize().width());
}

QSize CBitmapSlider::SizeFor(int length) const {
    return {length, ThumbSize().height() + 2 * kMargin};
}

QSize CBitmapSlider::ThumbSize() const {
    return m_pictures ? LoadPicture(m_pictures->thumb, 1).size() : QSize(0, 0);
}

int CBitmapSlider::ThumbStart() const {
    return QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(),
                                           width() - ThumbSize().width());
}

void CBitmapSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawSlider(painter);
    if (ShowsFocus(*this))
        DrawEdge(painter, rect(), QColor(Colours::kAccent));
}

void CBitmapSlider::DrawSlider(QPainter& painter) const {
    const qreal ratio = devicePixelRatioF();
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    DrawPart(painter, 0, Stretch(LoadPicture(m_pictures->channel, ratio), qRound(width() * ratio)));
    DrawPart(painter, ThumbStart(), LoadPicture(m_pictures->thumb, ratio));
    painter.setOpacity(1);
}

/// Draws a picture halfway between top and bottom.
void CBitmapSlider::DrawPart(QPainter& painter, int left, const QPixmap& picture) const {
    const qreal top = (height() - picture.deviceIndependentSize().height()) / 2;
    DrawPicture(painter, {qreal(left), top}, picture);
}

void CBitmapSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const int half = ThumbSize().width() / 2;
    const int fromCentre = LeftOf(event->position()) - (ThumbStart() + half);
    const bool onThumb = std::abs(fromCentre) <= half && half > 0;
    setSliderDown(true);
    m_nGrab = onThumb ? fromCentre : 0;
    if (!onThumb)
        DragThumb(event->position());
}

void CBitmapSlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown())
        DragThumb(event->position());
    else
        event->ignore();
}

void CBitmapSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
    else
        event->ignore();
}

void CBitmapSlider::DragThumb(QPointF mouse) {
    const int thumb = ThumbSize().width();
    const int start = LeftOf(mouse) - m_nGrab - thumb / 2;
    setSliderPosition(
        QStyle::sliderValueFromPosition(minimum(), maximum(), start, width() - thumb));
}

void CBitmapSlider::keyPressEvent(QKeyEvent* event) {
    const auto* key = std::find_if(kKeys.begin(), kKeys.end(), [event](const KeyAction& known) {
        return known.key == event->key();
    });
    if (key == kKeys.end()) {
        event->ignore();
        return;
    }
    triggerAction(key->action);
}
