#pragma once

#include "skin/SkinBitmap.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <optional>

/// A border strip: an active and an inactive look in one picture, and along its length a head, a
/// middle that is tiled, and a tail.
struct ThemeStrip {
    CSkinBitmap bitmap;
    int headEnd = 0;
    int tailStart = 1; ///< always above headEnd
};

/// A standard button of the frame. Without a picture there is none.
struct ThemeButton {
    CSkinBitmap bitmap;
    /// Left and right run from the window's right edge to the left: `left` is the distance of the
    /// button's right edge, `right` that of its left edge. Top and bottom are as usual.
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    /// The place in a window of this width.
    [[nodiscard]] QRect PlaceIn(int windowWidth) const {
        return {windowWidth - right, top, right - left, bottom - top};
    }
};

/// What a theme file says, ready for one scale: all lengths are device pixels of that scale, the
/// file's numbers being those of 100 %.
///
/// Thread: interface thread.
struct Theme {
    /// Reads "theme.ini" and its pictures; see docs/theme.md for the format. Nothing if a required
    /// part is missing, can't be read, or has a number that can't be (ButtonImgCount 0, lengths
    /// below 0 or above 16,384, more than 64 buttons), and for pictures that are too large: a strip
    /// with a side above 1,024 at 100 %, or 4,000,000 pixels in all at the scale.
    ///
    /// Cost: each file is read once. At most 64 MB are held, whatever the files are.
    [[nodiscard]] static std::optional<Theme> Load(const QString& path, qreal scale);

    qreal scale = 1;

    /// The pixels for a length of 100 %.
    [[nodiscard]] int Scaled(int length) const { return qRound(length * scale); }

    ThemeStrip top;
    ThemeStrip left;
    ThemeStrip right;
    ThemeStrip bottom;
    CSkinBitmap dialog; ///< the background tile; may be missing

    int m_nTopHeight = 0;
    int m_nLeftWidth = 0;
    int m_nRightWidth = 0;
    int m_nBottomHeight = 0;

    ThemeButton minimize;
    ThemeButton maximize;
    ThemeButton restore;
    ThemeButton close;

    int m_nTextShift = 0;
    int m_nTextShiftVert = 0;
    QColor m_clrActiveText = Qt::white;
    QColor m_clrInactiveText = Qt::white;
    QColor m_clrTransparent{255, 0, 255};
    bool m_bUsesTran = false;
};
