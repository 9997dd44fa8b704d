#pragma once

#include <QString>

#include <array>
#include <vector>

inline constexpr int kTracks = 100'000;
inline constexpr int kColumns = 9;

// Columns of a track; the first one is that of the check boxes.
inline constexpr int kTitle = 1;
inline constexpr int kArtist = 2;
inline constexpr int kAlbum = 3;
inline constexpr int kSize = 6;

/// The texts of a row.
using Track = std::array<QString, kColumns>;

/// As many tracks as a large collection holds, the same ones in each run.
[[nodiscard]] std::vector<Track> MakeCollection();
