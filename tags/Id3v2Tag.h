#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

/// The container of ID3v2.2, 2.3 and 2.4 tags: headers, sizes, flags and unsynchronisation. What is
/// in the frames is not looked at here. (id3.org: id3v2-00, id3v2.3.0, id3v2.4.0-structure.)
///
/// The reader is the guard in front of the tag libraries. It takes any bytes, reads only what is
/// asked for, and hands out no frame that reaches past the tag or the file.

/// One frame as it is stored, with the tag's own unsynchronisation undone.
struct Id3Frame {
    QByteArray id;           ///< four characters, three in ID3v2.2
    std::uint16_t flags = 0; ///< as stored; ID3v2.2 has none
    QByteArray data;         ///< what follows the frame header, or its beginning

    bool operator==(const Id3Frame&) const = default;
};

struct Id3v2Tag {
    int version = 0; ///< 2, 3 or 4; 0 where there is no tag

    /// ID3v2.4: the data of every frame is stored unsynchronised. Else: write the tag so.
    bool unsynchronised = false;

    std::uint64_t size = 0; ///< bytes in the file, with header and footer

    std::vector<Id3Frame> frames; ///< in the file's order

    /// Every byte of the tag was understood: frames up to the end or up to clear padding.
    bool whole = true;

    [[nodiscard]] const Id3Frame* Find(QByteArrayView id) const;
};

/// What a reading of a tag is for. It says which frames are kept and what may be spent on them.
enum class Id3Purpose {
    Texts,        ///< what the texts are read from: at most 8 MB read and 1,000 frames
    FirstPicture, ///< the first picture, if not too large: at most 72 MB read and 1,000 frames
    Rewriting,    ///< everything, of a tag of at most 64 MB and 10,000 frames
};

/// Reads the tag at the head of an open file of `fileSize` bytes. Frames from the first one that
/// makes no sense on are left out, and so are those for which the purpose allows no more; `whole`
/// is then false.
/// Cost: one read of 16 KB, and one more for each picture that is passed over; unsynchronised
/// ID3v2.2 and 2.3 tags have to be read up to the end or to what the purpose allows.
[[nodiscard]] Id3v2Tag ReadId3v2Tag(int file, std::uint64_t fileSize, Id3Purpose purpose);

/// The data of a frame of `tag` without group, length and unsynchronisation. Nothing if the frame
/// is compressed or encrypted: those are not read.
[[nodiscard]] std::optional<QByteArray> PlainFrameData(const Id3v2Tag& tag, const Id3Frame& frame);

/// Sets the data of the first frame with this id, stored as `tag` says, or adds a frame.
void SetId3Frame(Id3v2Tag& tag, QByteArrayView id, const QByteArray& data);

/// Stores the frames' bytes as one tag without padding, extended header or footer. Empty when a
/// frame is larger than the version can tell, or the tag than can be read for Rewriting.
[[nodiscard]] QByteArray AssembleId3v2Tag(const Id3v2Tag& tag);

/// Header and data of one frame, as AssembleId3v2Tag stores them; empty when it is too large.
[[nodiscard]] QByteArray AssembleId3Frame(int version, const Id3Frame& frame);

/// Puts a zero behind every 0xFF that could be taken for a sync word.
[[nodiscard]] QByteArray Unsynchronise(const QByteArray& bytes);
