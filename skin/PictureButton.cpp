#include "skin/PictureButton.h"

#include "skin/ControlDrawing.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int kFadeMilliseconds = 120;

} // namespace

CPictureButton::CPictureButton(const QString& tooltip, QWidget* parent)
    : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    SetTooltipText(tooltip);
    m_fade.setStartValue(0.0);
    m_fade.setEndValue(1.0);
    m_fade.setDuration(kFadeMilliseconds);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void CPictureButton::SetTooltipText(const QString& text, const QKeySequence& key) {
    const QString label = QString(text).remove(u'&').remove(QStringLiteral("..."));
    setAccessibleName(label);
    setToolTip(key.isEmpty()
                   ? label
                   : QStringLiteral("%1 (%2)").arg(label, key.toString(QKeySequence::NativeText)));
}

void CPictureButton::SetLabel(const QString& text) {
    setShortcut(QKeySequence::mnemonic(text));
    SetTooltipText(text, shortcut());
}

qreal CPictureButton::HoverStrength() const {
    if (!isEnabled())
        return 0;
    if (m_fade.state() == QAbstractAnimation::Running)
        return m_fade.currentValue().toReal();
    return m_bMouseOver ? 1 : 0;
}

void CPictureButton::DrawFaded(QPainter& painter, const QPixmap& under, const QPixmap& over,
                               qreal strength) {
    if (strength < 1)
        DrawPicture(painter, {}, under);
    if (strength > 0) {
        painter.setOpacity(strength);
        DrawPicture(painter, {}, over);
    }
    painter.setOpacity(1);
}

bool CPictureButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        // One that is held takes the mouse with it, out of its rectangle, too.
        SetMouseOver(isEnabled() &&
                     hitButton(static_cast<QSinglePointEvent*>(event)->position().toPoint()));
        break;
    case QEvent::Leave:
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
    case QEvent::EnabledChange:
    case QEvent::Hide:
        SetMouseOver(false);
        break;
    default:
        break;
    }
    return QPushButton::event(event); // a click may delete this
}

void CPictureButton::SetMouseOver(bool over) {
    if (m_bMouseOver == over)
        return;
    m_bMouseOver = over;
    m_fade.setDirection(over ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    if (IsAnimated(*this))
        m_fade.start();
    update();
}

void CPictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawButton(painter);
    painter.setOpacity(1);
    if (ShowsFocus(*this))
        DrawPicture(painter, {}, Picture(PictureId::FocusRing));
}
