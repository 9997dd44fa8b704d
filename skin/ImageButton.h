#pragma once

#include "skin/PictureButton.h"

/// The round button of dialogs and of the main window's rows: a glyph on a disc, 45 by 44, with its
/// label as tool tip and accessible name.
///
/// Thread: interface thread.
class CImageButton : public CPictureButton {
public:
    CImageButton(PictureId glyph, const QString& tooltip, QWidget* parent);

    /// Another glyph. All states are made from it and the shared frames.
    void SetBitmaps(PictureId glyph);

protected:
    void DrawButton(QPainter& painter) const override;

private:
    PictureId m_glyph;
};
