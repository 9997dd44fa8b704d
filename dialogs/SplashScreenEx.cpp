#include "dialogs/SplashScreenEx.h"

#include "skin/Colours.h"
#include "skin/Frame.h"

#include <QBitmap>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QTimerEvent>

namespace {

/// Until the window system lets a window be painted; it takes some milliseconds as a rule.
constexpr std::chrono::milliseconds kLongestWait(50);

} // namespace

CSplashScreenEx::CSplashScreenEx(QWidget* parent, const QString& text,
                                 std::chrono::milliseconds timeout)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
                          Qt::WindowTransparentForInput)
    , m_strText(text)
    , m_timeout(timeout) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
}

bool CSplashScreenEx::SetBitmap(PictureId picture, const std::optional<QColor>& key) {
    m_bitmap = LoadPicture(picture, devicePixelRatioF());
    if (m_bitmap.isNull())
        return false;
    setFixedSize(m_bitmap.deviceIndependentSize().toSize());
    clearMask();
    if (key) {
        // A window's shape is given in pixels of 100 %. What is left of the key colour at the
        // edge of a larger rendering must not be seen either.
        setMask(BitmapToRegion(LoadPicture(picture, 1).toImage(), *key));
        m_bitmap.setMask(m_bitmap.createMaskFromColor(*key));
    }
    return true;
}

void CSplashScreenEx::Show() {
    if (m_bitmap.isNull())
        return;
    QRect place = geometry();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) // none while all are unplugged
        place.moveCenter(screen->geometry().center());
    move(place.topLeft());
    show();
    // Who shows a splash has no time for events afterwards.
    QTimer::singleShot(kLongestWait, &m_untilPainted, &QEventLoop::quit);
    if (!m_bPainted)
        m_untilPainted.exec(QEventLoop::ExcludeUserInputEvents);
    if (m_timeout.count() > 0)
        m_timer.start(static_cast<int>(m_timeout.count()), this);
}

void CSplashScreenEx::Hide() {
    m_timer.stop();
    hide();
}

void CSplashScreenEx::paintEvent(QPaintEvent*) {
    m_bPainted = true;
    m_untilPainted.quit();
    QPainter painter(this);
    painter.fillRect(rect(), QColor(Colours::kInk1));
    DrawPicture(painter, {}, m_bitmap);
    painter.setPen(QColor(Colours::kText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_strText);
}

void CSplashScreenEx::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_timer.timerId())
        Hide();
}
