#pragma once

#include "skin/Pictures.h"

#include <QPushButton>

/// The round button of dialogs and of the main window's rows: a glyph on a disc, 45 by 44, with its
/// label as tool tip and accessible name.
///
/// Thread: interface thread.
class CImageButton : public QPushButton {
public:
    CImageButton(PictureId glyph, const QString& tooltip, QWidget* parent);

    /// Another glyph. All states are made from it and the shared frames.
    void SetBitmaps(PictureId glyph);

    /// The label: tool tip and accessible name. It may be a menu's text: mnemonic and ellipsis are
    /// left out.
    void SetTooltipText(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

private:
    PictureId m_glyph;
};
