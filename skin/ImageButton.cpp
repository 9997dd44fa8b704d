#include "skin/ImageButton.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr qreal kDisabledGlyph = 1.0 / 3;
constexpr qreal kDefaultRing = 0.4; ///< of the hover ring: where Enter goes
constexpr QPointF kPressedShift{0, 1};

} // namespace

CImageButton::CImageButton(PictureId glyph, const QString& tooltip, QWidget* parent)
    : CPictureButton(tooltip, parent)
    , m_glyph(glyph) {}

void CImageButton::SetBitmaps(PictureId glyph) {
    m_glyph = glyph;
    update();
}

void CImageButton::DrawButton(QPainter& painter) const {
    if (isDown()) {
        DrawPicture(painter, {}, Picture(PictureId::PressedFrame));
        DrawPicture(painter, kPressedShift, Picture(m_glyph));
        return;
    }
    const qreal ring = isEnabled() && isDefault() ? kDefaultRing : 0;
    DrawFaded(painter, Picture(PictureId::RaisedDisc), Picture(PictureId::HoverFrame),
              std::max(HoverStrength(), ring));
    painter.setOpacity(isEnabled() ? 1 : kDisabledGlyph);
    DrawPicture(painter, {}, Picture(m_glyph));
}
