#include "skin/SkinStyle.h"

#include "skin/Colours.h"

#include <QPainter>

namespace {

/// As the style below rounds the fields.
constexpr qreal kFieldRounding = 2;

void DrawOutline(QPainter& painter, const QStyleOption& option, qreal rounding, QRgb colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(colour));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), rounding, rounding);
    painter.restore();
}

void DrawOutline(QPainter& painter, const QStyleOption& option, qreal rounding) {
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    DrawOutline(painter, option, rounding, isEnabled ? Colours::kDisabledText : Colours::kLine);
}

bool HasFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus);
}

} // namespace

void CSkinStyle::polish(QWidget* widget) {
    CMenuStyle::polish(widget);
    if (widget->inherits("QTipLabel"))
        widget->setPalette(m_tipPalette);
}

void CSkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    if (element == PE_IndicatorBranch && option->state.testFlag(State_Selected)) {
        QStyleOption onAccent = *option;
        onAccent.palette.setColor(QPalette::WindowText, onAccent.palette.highlightedText().color());
        CMenuStyle::drawPrimitive(element, &onAccent, painter, widget);
        return;
    }
    if (element == PE_FrameFocusRect) {
        if (option->state.testFlag(State_KeyboardFocusChange))
            DrawOutline(*painter, *option, kFieldRounding, Colours::kAccent);
        return;
    }
    CMenuStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_Frame && HasFocus(*option))
        DrawOutline(*painter, *option, 0, Colours::kAccent);
    else if (element == PE_IndicatorCheckBox)
        DrawOutline(*painter, *option, 0);
    else if (element == PE_IndicatorRadioButton)
        DrawOutline(*painter, *option, option->rect.height() / 2.0);
    else if (element == PE_FrameLineEdit && !HasFocus(*option))
        DrawOutline(*painter, *option, kFieldRounding);
    else if (element == PE_PanelTipLabel)
        DrawOutline(*painter, *option, 0);
}

void CSkinStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    CMenuStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_SpinBox && !HasFocus(*option))
        DrawOutline(*painter, *option, kFieldRounding);
}
