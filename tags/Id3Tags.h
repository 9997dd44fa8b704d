#pragma once

#include "tags/TrackInfo.h"

#include <QByteArray>
#include <QString>

/// The tags of MP3 and AAC files: ID3v2.2 to 2.4, and ID3v1 for what those leave open.
///
/// Thread: any; nothing lasts between calls.
/// Errors: non-zero, or an empty picture; never throws. A damaged tag is read up to the damage.
/// Cost:   a read is one or two system reads and some 20 us, whatever pictures lie in the tag.
namespace Id3Tags {

/// Takes what the tags tell into `info`. Non-zero if there is no title.
[[nodiscard]] int Read(const QString& path, CTrackInfo& info);

/// The first picture; empty if there is none.
[[nodiscard]] QByteArray ReadArtwork(const QString& path);

} // namespace Id3Tags
