#pragma once

#include "tags/Id3Fields.h"
#include "tags/Id3v2Tag.h"

#include <QByteArray>

/// The frames of ID3v2.2 and 2.3, and the ID3v1 tag, through id3lib.
///
/// id3lib never sees a file: it is handed a small tag in memory, of frames that the container's
/// reader has found sound, and none that is compressed or encrypted (a hostile one crashes it).
/// So a scan's cost does not depend on pictures, and no search for a sync word goes through a file.
namespace Id3v23Frames {

/// The texts as ID3_Tag::Link gives them for a file with this tag and this ID3v1 tag (128 bytes, or
/// empty): fields that have no ID3v2 text come from ID3v1. Link turns 16-bit texts into 7-bit ones
/// where an ID3v1 tag follows; here they are read without it, and stay whole.
[[nodiscard]] Id3Texts ReadTexts(const Id3v2Tag& tag, const QByteArray& id3v1);

/// Data of a text frame: 8-bit where FitsEightBit, else UTF-16 with a byte-order mark.
[[nodiscard]] QByteArray TextData(Id3Field field, const QString& text);

/// The bytes of the first picture; empty if there is none that can be read.
[[nodiscard]] QByteArray Picture(const Id3v2Tag& tag);

/// Data of the picture frame that holds `jpeg`.
[[nodiscard]] QByteArray PictureData(int version, const QByteArray& jpeg);

} // namespace Id3v23Frames
