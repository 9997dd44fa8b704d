#pragma once

#include "skin/Theme.h"

#include <QImage>
#include <QRegion>
#include <QString>

#include <vector>

class QPainter;

/// What lies at a point of a window. The numbers are a contract.
namespace FrameHit {
enum Code : int {
    Nowhere = 0,
    Client = 1,
    Caption = 2,
    SystemMenu = 3,
    Minimize = 8,
    Maximize = 9,
    Left = 10,
    Right = 11,
    Top = 12,
    TopLeft = 13,
    TopRight = 14,
    Bottom = 15,
    BottomLeft = 16,
    BottomRight = 17,
    Close = 20,
    FirstCustom = 900, ///< and the button's index in the list
};
} // namespace FrameHit

/// A button that a window adds to its frame.
struct SkinButtonRecord {
    int commandId = 0;
    int x = 0; ///< from the window's right edge to the button's left edge, at 100 %
    int y = 0; ///< from the window's top edge, at 100 %
    int bitmapId = 0;
    QImage image; ///< three states side by side, in pixels of the theme's scale
    QString tip;
};

enum class WindowState { Normal = 0, Maximized = 1, Minimized = 2 };

/// What a frame is drawn from and asked about, beside its theme.
struct FrameState {
    QSize size; ///< of the window, in pixels of the theme's scale
    bool m_bActive = true;
    bool m_bSizable = false;
    bool m_bHasMinimize = false;
    bool m_bHasMaximize = false;
    WindowState m_nWindowState = WindowState::Normal;
    int m_nHoverHit = FrameHit::Nowhere;
    int m_nPressedHit = FrameHit::Nowhere;
    QImage icon; ///< a square of 16 pixels at 100 %; may be null
    QString m_strTitle;
    std::vector<SkinButtonRecord> m_customButtons;
};

// The frame of one window, to the pixel. All places are pixels of the theme's scale, from the
// window's top left corner. Painters draw with such pixels, without a transform that scales.
//
// Thread: interface thread.

/// The left, right and bottom strips, and with `withTop` the top strip before them.
void DrawFrameSides(QPainter& painter, const Theme& theme, const QRect& window, bool inactive,
                    bool withTop);

/// Draws the whole frame; what lies inside is left alone.
void DrawFrame(QPainter& painter, const Theme& theme, const FrameState& state);

/// The runs of pixels of other than the key colour.
[[nodiscard]] QRegion BitmapToRegion(const QImage& image, const QColor& key);

/// The shape of a window of this size: all of it but for the key colour in its top band.
[[nodiscard]] QRegion BuildWindowRegion(const Theme& theme, QSize size);

struct PlacedButton {
    int hit;
    QRect place;
};

/// The buttons that the frame has now, in the order in which a point is looked for among them.
[[nodiscard]] std::vector<PlacedButton> PlaceButtons(const Theme& theme, const FrameState& state);

/// A FrameHit code: what lies at a point.
[[nodiscard]] int HitTest(const Theme& theme, const FrameState& state, QPoint point);

/// The smallest size that a window with this theme may be given.
[[nodiscard]] QSize MinimumTrackSize(const Theme& theme);
