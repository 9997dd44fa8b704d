#pragma once

#include "base/Messages.h"
#include "skin/Pictures.h"

#include <QAbstractSlider>

#include <functional>
#include <optional>
#include <utility>

/// A slider drawn from a picture of its channel and one of its thumb. Range, position and page step
/// are those of QAbstractSlider, 0 to 100, 0 and 20 at first. The minimum is at the left or at the
/// top, whatever the language.
///
/// Its owner is told what the user does, never what the owner sets. While the mouse holds the
/// thumb, isSliderDown() is true; sliderReleased() tells the end.
///
/// Thread: interface thread.
class CBitmapSlider : public QAbstractSlider {
public:
    enum class Notice : int {
        Moved = WM_TD_SLIDER_MOVED, ///< each press and move of the mouse, and its wheel
        Key = WM_TD_SLIDER_KEY,     ///< each key, though the position may be as before
    };
    using NoticeHandler = std::function<void(Notice notice, int position)>;

    /// As a horizontal slider shows them; a vertical one turns them clockwise.
    struct Pictures {
        PictureId channel; ///< stretched between ends that are half as long as it is thick
        PictureId thumb;
    };

    /// The label is the tool tip and the accessible name.
    CBitmapSlider(Pictures pictures, Qt::Orientation orientation, const QString& label,
                  QWidget* parent);

    void SetNoticeHandler(NoticeHandler handler) { m_pfnNotice = std::move(handler); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// Without pictures: for a slider that is drawn in another way, and has no thumb.
    CBitmapSlider(Qt::Orientation orientation, const QString& label, QWidget* parent);

    /// Draws the slider but for the frame that shows focus.
    virtual void DrawSlider(QPainter& painter) const;

    /// From the left or top edge to the thumb.
    [[nodiscard]] int ThumbStart() const;

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] bool IsVertical() const { return orientation() == Qt::Vertical; }
    [[nodiscard]] int Length() const;
    [[nodiscard]] int Along(QPointF place) const;
    [[nodiscard]] QSize SizeFor(int length) const;
    [[nodiscard]] QSize ThumbSize() const;
    void DrawPart(QPainter& painter, int along, const QPixmap& picture) const;
    void DragThumb(QPointF mouse);
    void Tell(Notice notice);

    std::optional<Pictures> m_pictures;
    int m_nGrab = 0; ///< from the thumb's centre to where the mouse holds it
    NoticeHandler m_pfnNotice;
};
