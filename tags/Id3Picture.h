#pragma once

#include <QByteArrayView>

/// What stands beside the bytes in a picture frame of ours.
namespace Id3Picture {

constexpr const char* kMimeType = "image/jpeg";
constexpr int kType = 11;
constexpr const char* kDescription = "Cover Inserted by Veltria Track Deck";

} // namespace Id3Picture

[[nodiscard]] inline QByteArrayView Id3PictureId(int version) {
    return version == 2 ? "PIC" : "APIC";
}
