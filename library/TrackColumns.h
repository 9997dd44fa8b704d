#pragma once

#include "base/Language.h"
#include "library/TrackRecord.h"

#include <span>

/// What the records of a list are compared by when a column sorts them.
enum class SortKey { Text, Number, Duration, FileSize };

/// A column of the track view. Columns are named by single bits of a mask; the column of the check
/// boxes, bit 0, always stands first and is none of these.
struct TrackColumn {
    unsigned bit;     ///< one bit, its name in masks
    TrackText text;   ///< what its cells show
    const char* name; ///< English name; with a prefix the key of its texts
    StringId header;  ///< what its header shows
    SortKey key;      ///< what it sorts by
};

inline constexpr unsigned kTitleColumn = 0x1;
inline constexpr unsigned kDefaultColumns = 0xFF;

/// All columns in the order of their bits, which is their order on screen.
[[nodiscard]] std::span<const TrackColumn> AllTrackColumns();

/// The column of a bit; none for a number that is no column's bit.
[[nodiscard]] const TrackColumn* FindTrackColumn(unsigned bit);
