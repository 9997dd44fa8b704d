#include "grid/GridCell.h"

#include "grid/GridCtrl.h"
#include "grid/GridFont.h"
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

CGridCell::CGridCell() = default;
CGridCell::~CGridCell() = default;

void CGridCell::SetFont(const QFont* font) {
    m_plfFont = font ? std::make_unique<GridFont>(*font) : nullptr;
}

const CGridDefaultCell* CGridCell::GetDefaultCell() const {
    return m_pGrid ? m_pGrid->GetDefaultCell(IsFixedRow(), IsFixedCol()) : nullptr;
}

quint32 CGridCell::GetFormat() const {
    return m_nFormat != FORMAT_DEFAULT ? m_nFormat : GetDefaultCell()->GetFormat();
}

COLORREF CGridCell::GetTextClr() const {
    return m_crTextClr != CLR_DEFAULT ? m_crTextClr : GetDefaultCell()->GetTextClr();
}

COLORREF CGridCell::GetBackClr() const {
    return m_crBackClr != CLR_DEFAULT ? m_crBackClr : GetDefaultCell()->GetBackClr();
}

COLORREF CGridCell::GetSelTextClr() const {
    if (m_crSelTextClr != CLR_DEFAULT)
        return m_crSelTextClr;
    const COLORREF colour = GetDefaultCell()->m_crSelTextClr;
    return colour != CLR_DEFAULT ? colour : GetTextClr();
}

COLORREF CGridCell::GetSelBackClr() const {
    return m_crSelBackClr != CLR_DEFAULT ? m_crSelBackClr : GetDefaultCell()->GetSelBackClr();
}

const QFont& CGridCell::GetFont() const {
    return GetFontObject().Font();
}

const GridFont& CGridCell::GetFontObject() const {
    return m_plfFont ? *m_plfFont : GetDefaultCell()->GetFontObject();
}

QSize CGridCell::GetSize() const {
    return m_Size != QSize(-1, -1) ? m_Size : GetDefaultCell()->GetSize();
}

bool CGridCell::HasImage() const {
    return m_nImage >= 0 && m_nImage < m_pGrid->GetImageList().size();
}

bool CGridCell::HasHeaderMarks() const {
    return IsFixed() && m_pGrid->GetGridLines() == GridLines::HeaderMarks;
}

QSize CGridCell::GetTextExtent(const QString& text) const {
    const GridFont& font = GetFontObject();
    return QSize(font.Measure(text).width, font.Height());
}

int CGridCell::ContentWidth() const {
    int width = GetTextExtent(m_strText).width();
    if (HasImage())
        width += m_pGrid->GetImageSize().width() + kImageGap;
    return width;
}

QSize CGridCell::GetCellExtent() const {
    if (!m_pGrid)
        return QSize(0, 0);
    int line = GetFontObject().Height();
    if (HasImage())
        line = std::max(line, m_pGrid->GetImageSize().height());
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
    if (!m_pGrid || rect.width() < 1 || rect.height() < 1)
        return false;

    const QColor background = ToQColor(IsSelected() ? GetSelBackClr() : GetBackClr());
    const QColor textColour = ToQColor(IsSelected() ? GetSelTextClr() : GetTextClr());
    const bool outlined = IsFocused() || IsDropHighlighted();
    const int line = m_pGrid->HasLines() ? 1 : 0;
    if (outlined) {
        FillBackground(painter, rect.adjusted(-line, -line, line, line), background);
    } else if (IsSelected() || eraseBackground) {
        FillBackground(painter, rect, background);
    }
    if (outlined && m_pGrid->hasFocus())
        GridPainting::DrawEdge(painter, rect.adjusted(0, 0, -line, -line), textColour, textColour);
    if (IsFixed())
        DrawFixedEdges(painter, {row, col}, rect, background);

    QRect content = WithoutMargins(rect);
    if (row == 0 && col == m_pGrid->GetSortColumn())
        content =
            GridPainting::DrawSortArrow(painter, content, GetFontObject().Height(),
                                        m_pGrid->IsSortAscending(), m_pGrid->GetSystemColours());
    painter.setPen(textColour);
    DrawContent(painter, content, textColour);
    return true;
}

void CGridCell::FillBackground(QPainter& painter, const QRect& rect, const QColor& colour) const {
    painter.fillRect(rect, colour);
}

void CGridCell::DrawFixedEdges(QPainter& painter, CCellID cell, const QRect& rect,
                               const QColor& background) const {
    const QColor light = ToQColor(m_pGrid->GetSystemColours().light);
    const QColor dark = ToQColor(m_pGrid->GetSystemColours().darkShadow);
    if (HasHeaderMarks())
        GridPainting::DrawHeaderMarks(painter, rect, background);
    else if (m_pGrid->IsHeldDown(cell) && m_pGrid->HasLines())
        GridPainting::DrawEdge(painter, rect, dark, light);
    else if (m_pGrid->HasLines())
        GridPainting::DrawEdge(painter, rect, light, dark);
}

void CGridCell::DrawContent(QPainter& painter, QRect rect, const QColor&) const {
    if (ShowsImage(rect)) {
        const QSize size = m_pGrid->GetImageSize();
        const int top = rect.top() + (rect.height() - size.height()) / 2;
        GridPainting::DrawImage(painter, QRect(QPoint(rect.left(), top), size),
                                m_pGrid->GetImageList()[m_nImage]);
    }
    DrawText(painter, BesideImage(rect));
}

bool CGridCell::ShowsImage(const QRect& content) const {
    if (!HasImage())
        return false;
    const QSize size = m_pGrid->GetImageSize();
    return size.width() <= content.width() && size.height() <= content.height();
}

QRect CGridCell::BesideImage(QRect content) const {
    if (ShowsImage(content))
        content.setLeft(content.left() + m_pGrid->GetImageSize().width() + kImageGap);
    return content;
}

QRect CGridCell::GetTextRect(QRect cell) const {
    return BesideImage(WithoutMargins(cell));
}

void CGridCell::DrawText(QPainter& painter, const QRect& rect) const {
    if (m_strText.isEmpty() || rect.width() < 1)
        return;
    const quint32 format = GetFormat();
    const GridFont& font = GetFontObject();
    const GridFont::TextSize size = font.Measure(m_strText);
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
