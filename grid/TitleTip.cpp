#include "grid/TitleTip.h"

#include "grid/GridPainting.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int kFormat = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextWrapAnywhere;

} // namespace

ZTitleTip::ZTitleTip(QWidget* viewport)
    : QWidget(viewport) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ZTitleTip::Show(CCellID cell, const QRect& place, int margin, const QString& text) {
    m_idCell = cell;
    m_strText = text;
    m_nMargin = margin;
    const QRect window = parentWidget()->rect();
    const QRect widest(0, 0, window.width() - 2 * margin, QWIDGETSIZE_MAX);
    const QSize needed = fontMetrics().boundingRect(widest, kFormat, text).size();
    QRect tip(place.left() - margin, place.top(), needed.width() + 2 * margin,
              std::max(needed.height(), place.height()));
    tip.moveRight(std::min(tip.right(), window.right()));
    tip.moveLeft(std::max(tip.left(), window.left()));
    tip.moveBottom(std::min(tip.bottom(), window.bottom()));
    setGeometry(tip);
    raise();
    show();
    update();
}

void ZTitleTip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const QColor ink = palette().color(QPalette::Text);
    GridPainting::DrawEdge(painter, rect(), ink, ink);
    painter.setPen(ink);
    painter.drawText(rect().adjusted(m_nMargin, 0, -m_nMargin, 0), kFormat, m_strText);
}
