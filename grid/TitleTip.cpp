#include "grid/TitleTip.h"

#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>

ZTitleTip::ZTitleTip(QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::WindowTransparentForInput) {
    setAttribute(Qt::WA_ShowWithoutActivating);
}

void ZTitleTip::Show(const QRect& place, int margin, const QString& text) {
    m_nMargin = margin;
    const QRect screen = parentWidget()->screen()->availableGeometry();
    const QFontMetricsF metrics(font());
    const int wanted = static_cast<int>(std::ceil(metrics.horizontalAdvance(text))) + 2 * margin;
    QRect tip(place.left(), place.top(), std::min(wanted, screen.width()), place.height());
    tip.moveLeft(std::max(screen.left(), std::min(tip.left(), screen.right() + 1 - tip.width())));
    m_strText = metrics.elidedText(text, Qt::ElideRight, tip.width() - 2 * margin);
    setGeometry(tip);
    show();
    update();
}

void ZTitleTip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.drawText(rect().adjusted(m_nMargin, 0, -m_nMargin, 0),
                     Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                     m_strText);
}
