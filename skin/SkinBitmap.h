#pragma once

#include <QColor>
#include <QImage>
#include <QString>

/// The colour of a theme's picture where the window, or what lies below a button, shows.
inline constexpr QRgb kKeyColour = 0xFFFF00FF;

/// A picture of a theme, which may come from strangers.
///
/// Beside "name.png" may lie larger renderings of the same picture, "name@1.5x.png" and
/// "name@2x.png"; what they hold is what counts at that scale.
///
/// Thread: interface thread.
class CSkinBitmap {
public:
    /// Reads a BMP or PNG file for a scale (1.5 for 150 %), over black where it can be seen
    /// through. Where there is no rendering for the scale, the next larger one is made smaller, or
    /// the largest one larger; pixels of the key colour RGB(255,0,255) are never mixed with others.
    /// The size in pixels is that of the picture at 100 % times the scale, rounded.
    ///
    /// False for what is no such picture, is damaged, is a link, is a file of more than 8 MB, or
    /// has more than 1,000,000 pixels at 100 % or 4,000,000 at the scale; also if a picture is
    /// already held. At most 40 MB are in use while it reads, and 16 MB when it has read.
    bool LoadFromFile(const QString& path, qreal scale);

    /// An opaque picture; null before LoadFromFile() has succeeded.
    [[nodiscard]] const QImage& Image() const { return m_image; }

    [[nodiscard]] bool IsLoaded() const { return !m_image.isNull(); }
    [[nodiscard]] int Width() const { return m_image.width(); }
    [[nodiscard]] int Height() const { return m_image.height(); }

private:
    QImage m_image;
};
