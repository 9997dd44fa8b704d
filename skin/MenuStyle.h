#pragma once

#include <QProxyStyle>
#include <QStyleOption>

/// Draws and measures menus and menu bars; all else is left to the style below.
///
/// An item's height comes from the menu font and the size of icons. From left to right it has a
/// column for its icon or mark, its text, its shortcut, and the arrow of a submenu.
///
/// Thread: interface thread.
class CMenuStyle : public QProxyStyle {
public:
    CMenuStyle();

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;

private:
    void DrawBarItem(QPainter& painter, const QStyleOptionMenuItem& item,
                     const QWidget* widget) const;
    void DrawItem(QPainter& painter, const QStyleOptionMenuItem& item, const QWidget* widget) const;
    void DrawIconOrMark(QPainter& painter, const QStyleOptionMenuItem& item, const QRect& place,
                        const QColor& ink) const;
    [[nodiscard]] int TextFlags(const QStyleOption& option, const QWidget* widget) const;
};
