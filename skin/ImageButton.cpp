#include "skin/ImageButton.h"

CImageButton::CImageButton(PictureId glyph, const QString& tooltip, QWidget* parent)
    : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    SetBitmaps(glyph);
    SetTooltipText(tooltip);
}

void CImageButton::SetBitmaps(PictureId glyph) {
    m_glyph = glyph;
    update();
}

void CImageButton::SetTooltipText(const QString& text) {
    const QString label = QString(text).remove(u'&').remove(QStringLiteral("..."));
    setToolTip(label);
    setAccessibleName(label);
}

QSize CImageButton::sizeHint() const {
    return {45, 44};
}
