#pragma once

#include "skin/PictureButton.h"

/// A button whose states lie side by side in one picture: normal, hot, pressed, disabled.
///
/// Thread: interface thread.
class CPicButton : public CPictureButton {
public:
    CPicButton(PictureId strip, const QString& tooltip, QWidget* parent);

    /// A quarter of the strip.
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void DrawButton(QPainter& painter) const override;

private:
    enum class State : int { Normal = 0, Hot = 1, Pressed = 2, Disabled = 3 };

    [[nodiscard]] QPixmap StatePicture(State state) const;

    PictureId m_strip;
};
