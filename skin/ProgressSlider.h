#pragma once

#include "skin/BitmapSlider.h"

#include <QTimer>

/// A slider that is a bar, filled up to its position, with a caption inside. A caption that doesn't
/// fit moves along; where the desktop asks for reduced motion it is cut, and its tool tip is whole.
///
/// Thread: interface thread.
class CProgressSlider : public CBitmapSlider {
public:
    CProgressSlider(const QString& label, QWidget* parent);

    /// One line. It is the accessible description, too.
    void SetCaption(const QString& caption);

    [[nodiscard]] QSize sizeHint() const override { return {200, 22}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {60, 22}; }

protected:
    void DrawSlider(QPainter& painter) const override;
    bool event(QEvent* event) override;

private:
    void DrawCaption(QPainter& painter) const;
    [[nodiscard]] int RoomForCaption() const;
    void ArrangeCaption();
    void StepCaption();

    QString m_strCaption;
    int m_nCaptionWidth = 0;
    int m_nTextOffset = 0; ///< how far the caption has moved to the left
    QTimer m_scrolling{this};
};
