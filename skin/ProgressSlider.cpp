#include "skin/ProgressSlider.h"

#include "drawing/MeasuredFont.h"
#include "skin/Colours.h"
#include "skin/ControlDrawing.h"

#include <QEvent>
#include <QFontMetrics>
#include <QTextDocument>

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr int kCaptionMargin = 10;
constexpr int kCaptionGap = 40; ///< from a moving caption's end to where it begins again
constexpr auto kCaptionStep = 30ms;

/// Dark enough for white text: 4.5 to 1 and more.
constexpr int kFillDarker = 165;

} // namespace

CProgressSlider::CProgressSlider(const QString& label, QWidget* parent)
    : CBitmapSlider(label, parent) {
    QFont arial = font();
    arial.setFamily(QStringLiteral("Arial"));
    arial.setWeight(QFont::Normal);
    setFont(arial);
    m_scrolling.setInterval(kCaptionStep);
    m_scrolling.callOnTimeout(this, [this] { StepCaption(); });
}

void CProgressSlider::SetCaption(const QString& caption) {
    const QString line = CMeasuredFont::OneLine(caption);
    if (m_strCaption == line)
        return;
    m_strCaption = line;
    m_nTextOffset = 0;
    setAccessibleDescription(line);
    ArrangeCaption();
}

int CProgressSlider::RoomForCaption() const {
    return width() - 2 * kCaptionMargin;
}

void CProgressSlider::ArrangeCaption() {
    m_nCaptionWidth = fontMetrics().horizontalAdvance(m_strCaption);
    const bool fits = m_nCaptionWidth <= RoomForCaption();
    const bool moves = !fits && IsAnimated(*this);
    if (!moves)
        m_nTextOffset = 0;
    // Names of files may look like markup.
    setToolTip(fits || moves ? accessibleName()
                             : Qt::convertFromPlainText(m_strCaption, Qt::WhiteSpaceNormal));
    if (moves && isVisible())
        m_scrolling.start();
    else
        m_scrolling.stop();
    update();
}

void CProgressSlider::StepCaption() {
    m_nTextOffset = (m_nTextOffset + 1) % (m_nCaptionWidth + kCaptionGap);
    update();
}

bool CProgressSlider::event(QEvent* event) {
    const bool result = CBitmapSlider::event(event);
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::FontChange:
    case QEvent::StyleChange:
        ArrangeCaption();
        break;
    default:
        break;
    }
    return result;
}

void CProgressSlider::DrawSlider(QPainter& painter) const {
    painter.fillRect(rect(), QColor(Colours::kInk0));
    painter.fillRect(QRect(0, 0, ThumbStart(), height()),
                     isEnabled() ? QColor(Colours::kAccent).darker(kFillDarker)
                                 : QColor(Colours::kInk2));
    DrawCaption(painter);
    DrawEdge(painter, rect(), QColor(Colours::kLine));
}

void CProgressSlider::DrawCaption(QPainter& painter) const {
    const QRect room = rect().adjusted(kCaptionMargin, 0, -kCaptionMargin, 0);
    constexpr int kFlags =
        Qt::AlignLeft | Qt::AlignVCenter | Qt::AlignAbsolute | Qt::TextSingleLine;
    painter.setPen(QColor(isEnabled() ? Colours::kText : Colours::kDisabledText));
    if (!m_scrolling.isActive()) {
        painter.drawText(room, kFlags,
                         fontMetrics().elidedText(m_strCaption, Qt::ElideRight, room.width()));
        return;
    }
    painter.setClipRect(room);
    const int again = m_nCaptionWidth + kCaptionGap;
    for (int left = room.left() - m_nTextOffset; left <= room.right(); left += again)
        painter.drawText(QRect(left, 0, m_nCaptionWidth, height()), kFlags, m_strCaption);
    painter.setClipping(false);
}
