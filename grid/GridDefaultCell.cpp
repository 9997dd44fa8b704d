#include "grid/GridDefaultCell.h"

#include "grid/GridCtrl.h"
#include "grid/GridFont.h"

#include <QApplication>

CGridDefaultCell::CGridDefaultCell(CGridCtrl* grid, quint32 state) {
    m_pGrid = grid;
    m_nState = state;
    m_nFormat = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
    m_Size = QSize(30, 10);
    m_plfFont = std::make_unique<GridFont>(QApplication::font());
}

void CGridDefaultCell::SetFormat(quint32 format) {
    CGridCell::SetFormat(format);
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetTextClr(COLORREF colour) {
    CGridCell::SetTextClr(colour);
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetBackClr(COLORREF colour) {
    CGridCell::SetBackClr(colour);
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetSelTextClr(COLORREF colour) {
    CGridCell::SetSelTextClr(colour);
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetSelBackClr(COLORREF colour) {
    CGridCell::SetSelBackClr(colour);
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetFont(const QFont* font) {
    m_plfFont = std::make_unique<GridFont>(font ? *font : QApplication::font());
    m_pGrid->OnDefaultsChanged();
}

void CGridDefaultCell::SetCoords(int width, int height) {
    CGridCell::SetCoords(width, height);
    m_pGrid->OnDefaultsChanged();
}

COLORREF CGridDefaultCell::GetTextClr() const {
    return m_crTextClr != CLR_DEFAULT ? m_crTextClr : m_pGrid->GetSystemColours().windowText;
}

COLORREF CGridDefaultCell::GetBackClr() const {
    if (m_crBackClr != CLR_DEFAULT)
        return m_crBackClr;
    return IsFixed() ? m_pGrid->GetSystemColours().face : m_pGrid->GetSystemColours().window;
}

COLORREF CGridDefaultCell::GetSelTextClr() const {
    return m_crSelTextClr != CLR_DEFAULT ? m_crSelTextClr : GetTextClr();
}

COLORREF CGridDefaultCell::GetSelBackClr() const {
    return m_crSelBackClr != CLR_DEFAULT ? m_crSelBackClr : m_pGrid->GetSystemColours().highlight;
}
