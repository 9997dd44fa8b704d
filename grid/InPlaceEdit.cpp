#include "grid/InPlaceEdit.h"

#include "grid/GridPainting.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

/// What the field's own frameless margins and the caret take beside the text.
constexpr int kRoomBesideText = 8;

} // namespace

CInPlaceEdit::CInPlaceEdit(QWidget* viewport, CCellID cell, const QString& text)
    : QLineEdit(text, viewport)
    , m_idCell(cell)
    , m_strBegin(QLineEdit::text()) {
    setFrame(false);
    setAlignment(Qt::AlignLeft | Qt::AlignAbsolute); // as cells are, in every language
    selectAll();
    connect(this, &QLineEdit::textChanged, this, &CInPlaceEdit::Fit);
}

void CInPlaceEdit::BeginWith(const QString& character) {
    m_bByCharacter = true;
    setText(character);
}

void CInPlaceEdit::BeginAt(QPoint point) {
    setCursorPosition(cursorPositionAt(point));
    m_sinceClick.start();
}

void CInPlaceEdit::SetPlace(const QRect& place) {
    m_rcPlace = place;
    Fit();
}

void CInPlaceEdit::Fit() {
    const int wanted = fontMetrics().horizontalAdvance(text()) + kRoomBesideText;
    const int most = parentWidget()->width() - m_rcPlace.left();
    QRect place = m_rcPlace;
    place.setWidth(std::min(std::max(wanted, place.width()), most));
    setGeometry(place);
}

bool CInPlaceEdit::EndsEdit(const QKeyEvent& event) const {
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return m_bByCharacter || event.modifiers().testFlag(Qt::ControlModifier);
    default:
        return false;
    }
}

/// Select All is the window's, if it has that key: it means all rows.
bool CInPlaceEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::SelectAll)) {
        event->ignore();
        return true;
    }
    return QLineEdit::event(event);
}

void CInPlaceEdit::keyPressEvent(QKeyEvent* event) {
    if (!EndsEdit(*event)) {
        QLineEdit::keyPressEvent(event);
        event->accept(); // what the field has no use for may not move the grid below it
        return;
    }
    event->accept();
    if (event->key() == Qt::Key_Escape)
        setText(m_strBegin);
    Q_EMIT Ended(event->key(), event->modifiers());
}

void CInPlaceEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // its own context menu
        Q_EMIT Ended(0, Qt::NoModifier);
}

bool CInPlaceEdit::IsSecondClick() const {
    return m_sinceClick.isValid() && m_sinceClick.elapsed() < QApplication::doubleClickInterval();
}

void CInPlaceEdit::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && IsSecondClick())
        Q_EMIT DoubleClicked(mapToParent(event->position().toPoint()));
    else
        QLineEdit::mousePressEvent(event);
}

void CInPlaceEdit::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && IsSecondClick())
        Q_EMIT DoubleClicked(mapToParent(event->position().toPoint()));
    else
        QLineEdit::mouseDoubleClickEvent(event);
}

void CInPlaceEdit::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QColor line = palette().color(QPalette::Text);
    GridPainting::DrawEdge(painter, rect(), line, line);
}
