#include "grid/GridDefaultCell.h"

#include "drawing/MeasuredFont.h"

#include <QApplication>

#include <utility>

CGridDefaultCell::CGridDefaultCell(GridLook& look, quint32 state, std::function<void()> changed)
    : m_look(look) {
    SetLook(&look);
    SetState(state);
    GridStyle& style = m_look.DefaultsOf(state);
    style.format = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
    style.size = QSize(30, 10);
    style.font = std::make_shared<CMeasuredFont>(QApplication::font());
    m_pfnChanged = std::move(changed);
}

template <class Value>
void CGridDefaultCell::Set(Value GridStyle::*field, const Value& value) {
    m_look.DefaultsOf(GetState()).*field = value;
    m_pfnChanged();
}

void CGridDefaultCell::SetFormat(quint32 format) {
    Set(&GridStyle::format, format);
}

void CGridDefaultCell::SetTextClr(COLORREF colour) {
    Set(&GridStyle::textClr, colour);
}

void CGridDefaultCell::SetBackClr(COLORREF colour) {
    Set(&GridStyle::backClr, colour);
}

void CGridDefaultCell::SetSelTextClr(COLORREF colour) {
    Set(&GridStyle::selTextClr, colour);
}

void CGridDefaultCell::SetSelBackClr(COLORREF colour) {
    Set(&GridStyle::selBackClr, colour);
}

void CGridDefaultCell::SetFont(const QFont* font) {
    Set<std::shared_ptr<const CMeasuredFont>>(
        &GridStyle::font, std::make_shared<CMeasuredFont>(font ? *font : QApplication::font()));
}

void CGridDefaultCell::SetCoords(int width, int height) {
    Set(&GridStyle::size, QSize(width, height));
}
