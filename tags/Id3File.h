#pragma once

#include "tags/Id3v2Tag.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

/// An MPEG or ADTS file as its three parts: the ID3v2 tag at the head, the sound, and the ID3v1 tag
/// in the last 128 bytes. Other tags (APE, Lyrics3) count as sound.
struct Id3File {
    std::uint64_t size = 0;
    Id3v2Tag tag;
    QByteArray id3v1; ///< 128 bytes, or empty

    [[nodiscard]] std::uint64_t SoundBegin() const { return tag.size; }
    [[nodiscard]] std::uint64_t SoundSize() const;

    /// Whether in `file`, which this was read from, a frame of MPEG sound (layer I to III) or of
    /// ADTS begins within the first 64 KB of the sound: what a tag may be written to.
    [[nodiscard]] bool HoldsSound(int file) const;
};

/// Reads the tags of an open file. Nothing if it can't be read: for Rewriting, to its end.
[[nodiscard]] std::optional<Id3File> ReadId3File(int file, Id3Purpose purpose);

/// The same for a path. Nothing, too, where no regular file can be opened.
[[nodiscard]] std::optional<Id3File> ReadId3File(const QString& path, Id3Purpose purpose);
