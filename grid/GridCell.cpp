#include "grid/GridCell.h"

#include "drawing/MeasuredFont.h"
#include "grid/GridLook.h"
#include "grid/GridPainting.h"

#include <QStyle>

namespace {

constexpr int kImageGap = 4; // between image and text

Qt::Alignment AlignmentOf(quint32 format) {
    Qt::Alignment alignment = Qt::AlignLeft;
    if (format & DT_CENTER)
        alignment = Qt::AlignHCenter;
    else if (format & DT_RIGHT)
        alignment = Qt::AlignRight;
    if (format & DT_VCENTER)
        return alignment | Qt::AlignVCenter;
    return alignment | (format & DT_BOTTOM ? Qt::AlignBottom : Qt::AlignTop);
}

} // namespace

/// What a cell rarely sets of its own; text and background colour are the cell's.
struct CGridCell::Own : GridStyle {
    qint32 m_lParam = 0;
};

CGridCell::CGridCell() = default;
CGridCell::~CGridCell() = default;

CGridCell::Own& CGridCell::MakeOwn() {
    if (!m_pOwn)
        m_pOwn = std::make_unique<Own>();
    return *m_pOwn;
}

void CGridCell::SetData(qint32 data) {
    MakeOwn().m_lParam = data;
}

void CGridCell::SetFormat(quint32 format) {
    MakeOwn().format = format;
}

void CGridCell::SetSelTextClr(COLORREF colour) {
    MakeOwn().selTextClr = colour;
}

void CGridCell::SetSelBackClr(COLORREF colour) {
    MakeOwn().selBackClr = colour;
}

void CGridCell::SetFont(const QFont* font) {
    MakeOwn().font = font ? std::make_shared<CMeasuredFont>(*font) : nullptr;
}

void CGridCell::SetCoords(int width, int height) {
    MakeOwn().size = QSize(width, height);
}

qint32 CGridCell::GetData() const {
    return m_pOwn ? m_pOwn->m_lParam : 0;
}

quint32 CGridCell::GetFormat() const {
    return m_pOwn && m_pOwn->format != FORMAT_DEFAULT ? m_pOwn->format
                                                      : m_pLook->DefaultsOf(m_nState).format;
}

COLORREF CGridCell::GetTextClr() const {
    if (m_crTextClr != CLR_DEFAULT)
        return m_crTextClr;
    const COLORREF colour = m_pLook->DefaultsOf(m_nState).textClr;
    return colour != CLR_DEFAULT ? colour : m_pLook->m_crSystem.windowText;
}

COLORREF CGridCell::GetBackClr() const {
    if (m_crBackClr != CLR_DEFAULT)
        return m_crBackClr;
    const COLORREF colour = m_pLook->DefaultsOf(m_nState).backClr;
    if (colour != CLR_DEFAULT)
        return colour;
    return IsFixed() ? m_pLook->m_crSystem.face : m_pLook->m_crSystem.window;
}

COLORREF CGridCell::GetSelTextClr() const {
    if (m_pOwn && m_pOwn->selTextClr != CLR_DEFAULT)
        return m_pOwn->selTextClr;
    const COLORREF colour = m_pLook->DefaultsOf(m_nState).selTextClr;
    return colour != CLR_DEFAULT ? colour : GetTextClr();
}

COLORREF CGridCell::GetSelBackClr() const {
    if (m_pOwn && m_pOwn->selBackClr != CLR_DEFAULT)
        return m_pOwn->selBackClr;
    const COLORREF colour = m_pLook->DefaultsOf(m_nState).selBackClr;
    return colour != CLR_DEFAULT ? colour : m_pLook->m_crSystem.highlight;
}

const QFont& CGridCell::GetFont() const {
    return GetFontObject().Font();
}

const CMeasuredFont& CGridCell::GetFontObject() const {
    return m_pOwn && m_pOwn->font ? *m_pOwn->font : *m_pLook->DefaultsOf(m_nState).font;
}

QSize CGridCell::GetSize() const {
    return m_pOwn && m_pOwn->size != QSize(-1, -1) ? m_pOwn->size
                                                   : m_pLook->DefaultsOf(m_nState).size;
}

bool CGridCell::HasImage() const {
    return m_nImage >= 0 && m_nImage < m_pLook->m_ImageList.size();
}

bool CGridCell::HasHeaderMarks() const {
    return IsFixed() && m_pLook->m_nGridLines == GridLines::HeaderMarks;
}

QSize CGridCell::GetTextExtent(const QString& text) const {
    const CMeasuredFont& font = GetFontObject();
    return QSize(font.Measure(text).width, font.Height());
}

int CGridCell::ContentWidth() const {
    int width = GetTextExtent(m_strText).width();
    if (HasImage())
        width += m_pLook->m_sizeImage.width() + kImageGap;
    return width;
}

QSize CGridCell::GetCellExtent() const {
    if (!m_pLook)
        return QSize(0, 0);
    int line = GetFontObject().Height();
    if (HasImage())
        line = std::max(line, m_pLook->m_sizeImage.height());
    const int marks = HasHeaderMarks() ? GridPainting::kHeaderMarksRoom : 0;
    return GetSize() + QSize(ContentWidth() + marks, line + line / 4);
}

QRect CGridCell::WithoutMargins(const QRect& rect) const {
    const QSize room = GetSize();
    const int left = room.width() / 2;
    const int top = room.height() / 2;
    const int marks = HasHeaderMarks() ? GridPainting::kHeaderMarksRoom : 0;
    return rect.adjusted(left, top, left - room.width() - marks, top - room.height());
}

std::optional<COLORREF> CGridCell::GetFlatColour() const {
    if (IsSelected() || IsFocused() || IsDropHighlighted())
        return std::nullopt;
    return GetBackClr();
}

bool CGridCell::Draw(QPainter& painter, int row, int col, QRect rect, bool eraseBackground) {
    if (!m_pLook || rect.width() < 1 || rect.height() < 1)
        return false;

    const QColor background = ToQColor(IsSelected() ? GetSelBackClr() : GetBackClr());
    const QColor textColour = ToQColor(IsSelected() ? GetSelTextClr() : GetTextClr());
    const bool outlined = IsFocused() || IsDropHighlighted();
    const int line = m_pLook->HasLines() ? 1 : 0;
    if (outlined) {
        FillBackground(painter, rect.adjusted(-line, -line, line, line), background);
    } else if (IsSelected() || eraseBackground) {
        FillBackground(painter, rect, background);
    }
    if (outlined && m_pLook->m_bHasFocus)
        GridPainting::DrawEdge(painter, rect.adjusted(0, 0, -line, -line), textColour, textColour);
    if (IsFixed())
        DrawFixedEdges(painter, {row, col}, rect, background);

    QRect content = WithoutMargins(rect);
    if (row == 0 && col == m_pLook->m_nSortColumn)
        content = GridPainting::DrawSortArrow(
            painter, content, GetFontObject().Height(), m_pLook->m_bAscending,
            ToQColor(m_pLook->m_crSystem.light), ToQColor(m_pLook->m_crSystem.shadow));
    painter.setPen(textColour);
    DrawContent(painter, content, textColour);
    return true;
}

void CGridCell::FillBackground(QPainter& painter, const QRect& rect, const QColor& colour) const {
    painter.fillRect(rect, colour);
}

void CGridCell::DrawFixedEdges(QPainter& painter, CCellID cell, const QRect& rect,
                               const QColor& background) const {
    const QColor light = ToQColor(m_pLook->m_crSystem.light);
    const QColor dark = ToQColor(m_pLook->m_crSystem.darkShadow);
    if (HasHeaderMarks())
        GridPainting::DrawHeaderMarks(painter, rect, background);
    else if (cell == m_pLook->m_idHeldDown && m_pLook->HasLines())
        GridPainting::DrawEdge(painter, rect, dark, light);
    else if (m_pLook->HasLines())
        GridPainting::DrawEdge(painter, rect, light, dark);
}

void CGridCell::DrawContent(QPainter& painter, QRect rect, const QColor&) const {
    if (ShowsImage(rect)) {
        const QSize size = m_pLook->m_sizeImage;
        const int top = rect.top() + (rect.height() - size.height()) / 2;
        GridPainting::DrawImage(painter, QRect(QPoint(rect.left(), top), size),
                                m_pLook->m_ImageList[m_nImage]);
    }
    DrawText(painter, BesideImage(rect));
}

bool CGridCell::ShowsImage(const QRect& content) const {
    if (!HasImage())
        return false;
    const QSize size = m_pLook->m_sizeImage;
    return size.width() <= content.width() && size.height() <= content.height();
}

QRect CGridCell::BesideImage(QRect content) const {
    if (ShowsImage(content))
        content.setLeft(content.left() + m_pLook->m_sizeImage.width() + kImageGap);
    return content;
}

QRect CGridCell::GetTextRect(QRect cell) const {
    return BesideImage(WithoutMargins(cell));
}

void CGridCell::DrawText(QPainter& painter, const QRect& rect) const {
    if (m_strText.isEmpty() || rect.width() < 1)
        return;
    const quint32 format = GetFormat();
    const CMeasuredFont& font = GetFontObject();
    const CMeasuredFont::TextSize size = font.Measure(m_strText);
    const int room = format & DT_END_ELLIPSIS ? rect.width() : size.width;
    const QRect line = QStyle::alignedRect(Qt::LeftToRight, AlignmentOf(format),
                                           QSize(std::min(size.width, room), font.Height()), rect);
    const bool clipped = line.width() > rect.width() || line.height() > rect.height();
    if (clipped) {
        painter.save();
        painter.setClipRect(rect, Qt::IntersectClip);
    }
    font.Draw(painter, line.topLeft() + QPoint(0, font.Ascent()), m_strText, size, room);
    if (clipped)
        painter.restore();
}
