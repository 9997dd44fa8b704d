#pragma once

#include "tags/Id3Fields.h"
#include "tags/Id3v2Tag.h"

#include <QByteArray>

/// The frames of ID3v2.4, which id3lib does not know, through TagLib: the same fields under the
/// same rules.
namespace Id3v24Frames {

/// The text of a field's first frame in a tag of any version, in any of the four encodings; nothing
/// if there is no frame or no text. An ID3v2.4 tag without a time has its year in the frame of
/// ID3v2.3.
[[nodiscard]] std::optional<QString> ReadText(const Id3v2Tag& tag, Id3Field field);

/// Data of a text frame: 8-bit where FitsEightBit, else UTF-8. It has no 0xFF, and so reads the
/// same from a tag that is stored unsynchronised.
[[nodiscard]] QByteArray TextData(Id3Field field, const QString& text);

/// The bytes of the first picture; empty if there is none that can be read.
[[nodiscard]] QByteArray Picture(const Id3v2Tag& tag);

/// Data of the picture frame that holds `jpeg`.
[[nodiscard]] QByteArray PictureData(const QByteArray& jpeg);

} // namespace Id3v24Frames
