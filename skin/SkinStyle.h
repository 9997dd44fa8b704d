#pragma once

#include "skin/MenuStyle.h"

#include <QPalette>

/// The style of the program: menus as CMenuStyle has them, and an outline around what is typed into
/// or ticked, which on dark ground would else be hard to see. What has the focus has an outline in
/// accent; that of fields is the style's below.
///
/// Thread: interface thread.
class CSkinStyle final : public CMenuStyle {
public:
    explicit CSkinStyle(const QPalette& tipPalette)
        : m_tipPalette(tipPalette) {}

    using CMenuStyle::polish;

    /// Tool tips keep their colours, though a desktop that changes its own sends them new ones.
    void polish(QWidget* widget) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

private:
    const QPalette m_tipPalette;
};
