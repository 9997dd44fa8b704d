#pragma once

#include "tags/TrackInfo.h"

#include <QByteArray>
#include <QString>

/// The tag operations on a file. The extension alone says which tag format is meant; MP3 and AAC
/// files have ID3 tags; those of MP4 and Windows Media files are neither read nor written.
///
/// Thread: any. Errors: non-zero results; none throws.

/// Fills `info` from the tags of a file: 0 on success. A music file without a title, or one that
/// can't be read, gets its name without the extension as title, and that is a success; a file that
/// is no music by its extension has no tags, and the answer is non-zero.
[[nodiscard]] int ReadTrackTags(const QString& path, CTrackInfo& info);

/// Whether the tags of files with this name can be written.
[[nodiscard]] bool HasWritableTags(const QString& path);

/// Writes `info` into the tags of a file: 0 on success. With `forceEmpty` non-zero the tag is built
/// from nothing. A failed write leaves the file as it was. The file must not be playing.
[[nodiscard]] int WriteTrackTags(const QString& path, const CTrackInfo& info, int forceEmpty);

/// The first picture in the tags; empty if there is none.
[[nodiscard]] QByteArray ReadTrackArtwork(const QString& path);

/// Writes the first picture in the tags to the file `outPath`, new or in the place of another:
/// 0 when it is there, 1 otherwise, the other then being as it was. `outPath` may not be the track.
[[nodiscard]] int SaveTrackArtwork(const QString& path, const QString& outPath);

/// Puts the bytes of a JPEG file into the tags as the picture: 0 when it is there. With either
/// argument empty nothing is done.
[[nodiscard]] int WriteTrackArtwork(const QString& path, const QByteArray& jpeg);

/// The same with the file `jpegPath`.
[[nodiscard]] int WriteTrackArtwork(const QString& path, const QString& jpegPath);
