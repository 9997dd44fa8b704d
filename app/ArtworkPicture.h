#pragma once

#include <QByteArray>
#include <QImage>

/// Looking at artwork, which comes from files of strangers.
///
/// Thread: any. None throws but for lack of memory.

/// Longest side, in pixels, that a picture keeps.
inline constexpr int kArtworkSide = 512;

/// The picture that a JPEG or PNG file holds, upright and scaled down to kArtworkSide. Null for
/// what is neither, for what is damaged, and for what would take more than some 100 MB or a second.
[[nodiscard]] QImage DecodeArtwork(const QByteArray& file);

/// Whether these are the bytes of a JPEG file, whatever its name says.
[[nodiscard]] bool IsJpeg(const QByteArray& file);
