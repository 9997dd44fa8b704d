#pragma once

#include "skin/Pictures.h"

#include <QAbstractSlider>

#include <optional>

/// A slider drawn from a picture of its channel and one of its thumb. Range, position and page step
/// are those of QAbstractSlider, 0 to 100, 0 and 20 at first. It lies flat, its minimum at the
/// left, whatever the language.
///
/// valueChanged() reports each change; while the mouse holds the thumb, isSliderDown() is true, and
/// sliderReleased() reports the end.
///
/// Thread: interface thread.
class CBitmapSlider : public QAbstractSlider {
public:
    struct Pictures {
        PictureId channel; ///< stretched between ends that are half as long as it is thick
        PictureId thumb;
    };

    /// The label is the tool tip and the accessible name.
    CBitmapSlider(Pictures pictures, const QString& label, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// Without pictures: for a slider that is drawn in another way, and has no thumb.
    CBitmapSlider(const QString& label, QWidget* parent);

    /// Draws the slider but for the frame that shows focus.
    virtual void DrawSlider(QPainter& painter) const;

    /// From the left edge to the thumb.
    [[nodiscard]] int ThumbStart() const;

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QSize SizeFor(int length) const;
    [[nodiscard]] QSize ThumbSize() const;
    void DrawPart(QPainter& painter, int left, const QPixmap& picture) const;
    void DragThumb(QPointF mouse);

    std::optional<Pictures> m_pictures;
    int m_nGrab = 0; ///< from the thumb's centre to where the mouse holds it
};
