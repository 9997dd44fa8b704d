#pragma once

#include "tags/TrackInfo.h"

#include <QByteArray>

/// The ID3v1.1 tag for `info`: 128 bytes. Texts are cut to its fields, and what ISO 8859-1 lacks
/// becomes '?'. Of an `old` tag (128 bytes, or empty) remain the comment and the fields in which
/// `info` does not differ from `current`, which was read from the file. A comment of full length
/// leaves no place for the track number.
[[nodiscard]] QByteArray MakeId3v1Tag(const CTrackInfo& info, const CTrackInfo& current,
                                      const QByteArray& old);
