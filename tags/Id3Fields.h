#pragma once

#include "tags/TrackInfo.h"

#include <QByteArrayView>

#include <array>
#include <cstddef>
#include <optional>

/// The ten text frames that make up a CTrackInfo, in the order in which they are written.
enum class Id3Field { Album, Artist, Bpm, Composer, Length, Size, Title, Track, Year, Genre };
constexpr std::size_t kId3FieldCount = 10;

/// Reading cuts every text here, in UTF-16 units. A pair of surrogates is not cut in two.
constexpr qsizetype kMaxId3Text = 30;

/// The text of each field as its frame has it; nothing where there is no frame or no text.
using Id3Texts = std::array<std::optional<QString>, kId3FieldCount>;

/// Frames of ID3v2.2 and of the later versions that are no fields of ours, but id3lib takes no
/// artist from ID3v1 where one of them stands.
constexpr std::array<std::array<const char*, 2>, 2> kId3OtherArtists = {
    {{"TP2", "TPE2"}, {"TP3", "TPE3"}}};

/// Frame identifier of a field in ID3v2.`version`, 2 to 4.
[[nodiscard]] QByteArrayView Id3FrameId(Id3Field field, int version);

/// Keeps what the texts are read from: the beginning of the frames of all fields, and of the two
/// other artist frames that decide whether the artist is that of ID3v1.
[[nodiscard]] std::size_t KeepId3Texts(QByteArrayView id);

/// `text` up to its first NUL and to kMaxId3Text.
[[nodiscard]] QString CutId3Text(QString text);

/// Puts the texts of an ID3v2.`version` tag into the fields of `info`; fields without a text stay
/// as they are. ID3v2.4 has its own forms of two fields: of a time ("1999-05-03") the year is
/// taken, and a genre that is a bare number ("17") is read as "(17)" is.
void TakeId3Texts(const Id3Texts& texts, int version, CTrackInfo& info);

/// The text that a save writes into the frame of a field: valid UTF-16 without NUL.
[[nodiscard]] QString Id3FieldText(const CTrackInfo& info, Id3Field field);
