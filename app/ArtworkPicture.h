#pragma once

#include <QByteArray>
#include <QImage>

/// Looking at artwork, which comes from files of strangers.
///
/// Thread: any. None throws but for lack of memory.

/// Longest side, in pixels, that a picture keeps.
inline constexpr int kArtworkSide = 512;

/// The picture that a JPEG or PNG file holds, upright and scaled down to kArtworkSide. Null for
/// what is neither, for what is damaged, and for what would cost too much.
///
/// Cost: 20 ms for a usual JPEG of 1 MB; 0.6 s and 150 MB for a progressive one of the most pixels
///       that are let through; 3 s for the worst that could be made on purpose.
[[nodiscard]] QImage DecodeArtwork(const QByteArray& file);

/// Whether these are the bytes of a JPEG file, whatever its name says.
[[nodiscard]] bool IsJpeg(const QByteArray& file);
