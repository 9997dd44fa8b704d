#pragma once

#include "library/TrackRecord.h"

#include <span>

/// What the records of a list are compared by when a column sorts them.
enum class SortKey { Text, Number, Duration, FileSize };

/// A column of the track view. Columns are named by single bits of a mask; the column of the check
/// boxes, bit 0, always stands first and is none of these.
struct TrackColumn {
    unsigned bit;       ///< one bit, its name in masks
    TrackText text;     ///< what its cells show
    const char* name;   ///< English name; with a prefix the key of its texts
    const char* header; ///< key of what its header shows
    SortKey key;        ///< what it sorts by
    int command;        ///< shows it or not; from 32804 to 32820
};

inline constexpr unsigned kTitleColumn = 0x1;
inline constexpr unsigned kDefaultColumns = 0xFF;

/// All columns in the order of their bits, which is their order on screen.
[[nodiscard]] std::span<const TrackColumn> AllTrackColumns();

/// The column of a bit; none for a number that is no column's bit.
[[nodiscard]] const TrackColumn* FindTrackColumn(unsigned bit);

/// The column that a command shows or not; none for any other command.
[[nodiscard]] const TrackColumn* FindTrackColumnOfCommand(int command);
