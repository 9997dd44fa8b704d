#include "skin/MenuStyle.h"

#include "skin/Colours.h"
#include "skin/ControlDrawing.h"

#include <QPainter>

#include <algorithm>

namespace {

using namespace Colours;

constexpr int kSideSpace = 8; ///< beside icons, marks and titles
constexpr int kItemSpace = 4; ///< above and below text and icons
constexpr int kShortcutSpace = 24;
constexpr int kArrowColumn = 20;
constexpr int kSeparatorHeight = 9;
constexpr int kPanelMargin = 3; ///< above the first item and below the last
constexpr int kHotEdge = 2;

/// The ground of the hot item: a fifth of accent in that of the menu.
constexpr QRgb kHotGround =
    qRgb((qRed(kInk1) * 4 + qRed(kAccent)) / 5, (qGreen(kInk1) * 4 + qGreen(kAccent)) / 5,
         (qBlue(kInk1) * 4 + qBlue(kAccent)) / 5);

/// Fills whole device pixels, whatever the scale.
void Fill(QPainter& painter, const QRect& place, QRgb colour) {
    const CDevicePixels pixels(painter);
    pixels.Fill(pixels.Of(place), QColor(colour));
}

void DrawStroke(QPainter& painter, QPointF origin, std::initializer_list<QPointF> points,
                const QColor& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(origin);
    painter.drawPolyline(points.begin(), int(points.size()));
    painter.restore();
}

void DrawTick(QPainter& painter, const QPointF& centre, const QColor& ink) {
    DrawStroke(painter, centre, {{-4.5, 0.5}, {-1.5, 3.5}, {4.5, -3.5}}, ink);
}

void DrawDot(QPainter& painter, const QPointF& centre, const QColor& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(centre, 3, 3);
    painter.restore();
}

void DrawSubMenuArrow(QPainter& painter, const QPointF& centre, bool toTheLeft, const QColor& ink) {
    const qreal tip = toTheLeft ? -2 : 2;
    DrawStroke(painter, centre, {{-tip, -3.5}, {tip, 0}, {-tip, 3.5}}, ink);
}

/// What can't be used: grey, and half as strong.
QPixmap GreyForm(const QPixmap& icon) {
    QImage image = icon.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) {
            const int grey = qGray(pixel);
            return qRgba(grey, grey, grey, qAlpha(pixel) / 2);
        });
    }
    return QPixmap::fromImage(image);
}

bool IsEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool IsHot(const QStyleOption& option) {
    return IsEnabled(option) && option.state.testFlag(QStyle::State_Selected);
}

QRgb InkOf(const QStyleOption& option) {
    return !IsEnabled(option) ? kDisabledText : IsHot(option) ? kText : kQuietText;
}

/// The bar behind the item under the mouse or at the keyboard's place.
void DrawHotGround(QPainter& painter, const QStyleOptionMenuItem& item) {
    Fill(painter, item.rect, kHotGround);
    const QRect edge(item.rect.topLeft(), QSize(kHotEdge, item.rect.height()));
    Fill(painter, QStyle::visualRect(item.direction, item.rect, edge), kAccent);
}

/// What says that an item is checked whose icon takes the mark's place.
void DrawCheckedIconGround(QPainter& painter, const QRect& place) {
    const QRect around = place.adjusted(-3, -3, 3, 3);
    Fill(painter, around, kHotGround);
    DrawEdge(painter, around, QColor(kAccent));
}

} // namespace

CMenuStyle::CMenuStyle()
    : QProxyStyle(QStringLiteral("Fusion")) {}

void CMenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (item && element == CE_MenuItem)
        DrawItem(*painter, *item, widget);
    else if (item && element == CE_MenuBarItem)
        DrawBarItem(*painter, *item, widget);
    else if (element == CE_MenuEmptyArea || element == CE_MenuBarEmptyArea)
        painter->fillRect(option->rect, QColor(kInk1));
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void CMenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    if (element == PE_PanelMenu)
        painter->fillRect(option->rect, QColor(kInk1));
    else if (element == PE_FrameMenu)
        DrawEdge(*painter, option->rect, QColor(kLine));
    else if (element != PE_PanelMenuBar)
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

QSize CMenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                   const QSize& contents, const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (!item || (type != CT_MenuItem && type != CT_MenuBarItem))
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    const int icon = pixelMetric(PM_SmallIconSize, option, widget);
    const int height = std::max(contents.height(), icon) + 2 * kItemSpace;
    if (type == CT_MenuBarItem)
        return {contents.width() + 2 * kSideSpace, height};
    const int columns = kSideSpace + icon + kSideSpace + kShortcutSpace + kArrowColumn;
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {columns, kSeparatorHeight};
    return {columns + contents.width(), height};
}

int CMenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    switch (metric) {
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return kPanelMargin;
    case PM_MenuHMargin:
    case PM_MenuBarPanelWidth:
    case PM_MenuBarItemSpacing:
    case PM_MenuBarVMargin:
        return 0;
    case PM_MenuBarHMargin:
        return kSideSpace / 2;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

void CMenuStyle::DrawBarItem(QPainter& painter, const QStyleOptionMenuItem& item,
                             const QWidget* widget) const {
    painter.fillRect(item.rect, QColor(kInk1));
    const bool isHot = IsHot(item);
    if (isHot) {
        Fill(painter, item.rect, kHotGround);
        Fill(painter, item.rect.adjusted(0, item.rect.height() - kHotEdge, 0, 0), kAccent);
    }
    painter.setPen(QColor(InkOf(item)));
    painter.drawText(item.rect, TextFlags(item, widget) | Qt::AlignCenter, item.text);
}

void CMenuStyle::DrawItem(QPainter& painter, const QStyleOptionMenuItem& item,
                          const QWidget* widget) const {
    const auto place = [&item](int left, int width) {
        return visualRect(item.direction, item.rect,
                          {item.rect.left() + left, item.rect.top(), width, item.rect.height()});
    };
    const int width = item.rect.width();
    const int icon = pixelMetric(PM_SmallIconSize, &item, widget);
    const int textLeft = kSideSpace + icon + kSideSpace;
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        const CDevicePixels pixels(painter);
        QRect middle = pixels.Of(place(kSideSpace, width - 2 * kSideSpace));
        middle.setTop(middle.center().y());
        middle.setHeight(pixels.Length(1));
        pixels.Fill(middle, QColor(kLine));
        return;
    }

    painter.save();
    if (IsHot(item))
        DrawHotGround(painter, item);
    const QColor ink(InkOf(item));
    QRect iconPlace = place(kSideSpace, icon);
    iconPlace.setTop(item.rect.top() + (item.rect.height() - icon) / 2);
    iconPlace.setHeight(icon);
    DrawIconOrMark(painter, item, iconPlace, ink);

    QFont font = item.font;
    font.setBold(font.bold() || item.menuItemType == QStyleOptionMenuItem::DefaultItem);
    painter.setFont(font);
    painter.setPen(ink);
    const int flags = TextFlags(item, widget) | int(visualAlignment(item.direction, Qt::AlignLeft));
    const qsizetype tab = item.text.indexOf(u'\t');
    const int shortcutLeft = width - kArrowColumn - item.reservedShortcutWidth;
    painter.drawText(place(textLeft, shortcutLeft - textLeft), flags, item.text.left(tab));
    if (tab >= 0)
        painter.drawText(place(shortcutLeft, item.reservedShortcutWidth), flags,
                         item.text.mid(tab + 1));
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QPointF centre = QRectF(place(width - kArrowColumn, kArrowColumn)).center();
        DrawSubMenuArrow(painter, centre, item.direction == Qt::RightToLeft, ink);
    }
    painter.restore();
}

void CMenuStyle::DrawIconOrMark(QPainter& painter, const QStyleOptionMenuItem& item,
                                const QRect& place, const QColor& ink) const {
    const bool isExclusive = item.checkType == QStyleOptionMenuItem::Exclusive;
    const bool isChecked = item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked;
    if (!item.icon.isNull()) {
        if (isChecked)
            DrawCheckedIconGround(painter, place);
        const qreal scale = painter.device()->devicePixelRatioF();
        const QPixmap icon = item.icon.pixmap(place.size(), scale, QIcon::Normal,
                                              isChecked ? QIcon::On : QIcon::Off);
        drawItemPixmap(&painter, place, Qt::AlignCenter, IsEnabled(item) ? icon : GreyForm(icon));
    } else if (isChecked && isExclusive) {
        DrawDot(painter, QRectF(place).center(), ink);
    } else if (isChecked) {
        DrawTick(painter, QRectF(place).center(), ink);
    }
}

/// Access keys are underlined when the desktop's habit is to show them.
int CMenuStyle::TextFlags(const QStyleOption& option, const QWidget* widget) const {
    const bool isShown = proxy()->styleHint(SH_UnderlineShortcut, &option, widget) != 0;
    return Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip |
           (isShown ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
}
