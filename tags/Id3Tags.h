#pragma once

#include "tags/TrackInfo.h"

#include <QByteArray>
#include <QString>

/// The tags of MP3 and AAC files: ID3v2.2 to 2.4, and ID3v1 for what those leave open.
///
/// A write keeps the version of the tag (a file without ID3v2 gets 2.3), every frame that is not
/// written bit for bit, and the sound; padding, extended header and footer go. A frame whose text
/// reads as the text to be written stays as it is, so that cutting a long text on reading does not
/// shorten it in the file. The libraries make the new frames; the file is put together here,
/// because both rewrite or lose frames that they were not asked to touch (id3lib: flags, 16-bit
/// texts, unknown frames of ID3v2.2; TagLib: flags).
///
/// What is not understood whole is not written: a tag with damage, above 64 MB or of an unknown
/// version, a compressed or encrypted frame of ours, a file without MPEG or ADTS sound at its head.
/// Nor is a file that CFileReplacement refuses.
///
/// Thread: any; nothing lasts between calls.
/// Errors: non-zero, the file then being as it was, or an empty picture. A damaged tag is read up
///         to the damage.
/// Cost:   a read of texts is one or two system reads and some 30 us, whatever pictures lie in the
///         tag; an unsynchronised ID3v2.2 or 2.3 tag is read to its end. It ends at 8 MB or 1,000
///         frames, with the texts found so far. No picture or tag above 64 MB is held in memory.
namespace Id3Tags {

/// Takes what the tags hold into `info`. Non-zero if there is no title.
[[nodiscard]] int Read(const QString& path, CTrackInfo& info);

/// Writes the ten text frames of `info`, empty ones too, and ID3v1. With `forceEmpty` non-zero
/// nothing else stays in the tags, and a damaged ID3v2 tag is replaced if its size is sure.
[[nodiscard]] int Write(const QString& path, const CTrackInfo& info, int forceEmpty);

/// The first picture; empty if there is none.
[[nodiscard]] QByteArray ReadArtwork(const QString& path);

/// Puts a JPEG picture in the place of the first one, or behind all frames. A file without ID3v2
/// also gets the text frames for what ID3v1 holds.
[[nodiscard]] int WriteArtwork(const QString& path, const QByteArray& jpeg);

} // namespace Id3Tags
