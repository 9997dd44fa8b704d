#pragma once

#include <QByteArrayView>

/// Pictures in tags: what stands beside the bytes in a frame of ours, and how large one may be.
namespace Id3Picture {

/// Bytes, with what stands beside the picture in its frame; a larger one counts as no picture.
constexpr qsizetype kMaxSize = 64 * 1024 * 1024;

constexpr const char* kMimeType = "image/jpeg";
constexpr int kType = 11;
constexpr const char* kDescription = "Cover Inserted by Veltria Track Deck";

} // namespace Id3Picture

[[nodiscard]] inline QByteArrayView Id3PictureId(int version) {
    return version == 2 ? "PIC" : "APIC";
}

[[nodiscard]] inline bool IsId3Picture(QByteArrayView id) {
    return id == Id3PictureId(2) || id == Id3PictureId(3);
}
