#pragma once

#include <QString>

// What kind of file a name stands for, by the text behind its last point, without regard to case.
// A name without a point is of no kind.

[[nodiscard]] bool IsPlaylistFile(const QString& path); ///< m3u
[[nodiscard]] bool IsWmaFile(const QString& path);      ///< wma
[[nodiscard]] bool IsMp3OrAacFile(const QString& path); ///< mp3, aac
[[nodiscard]] bool IsMp4File(const QString& path);      ///< mp4, m4a
[[nodiscard]] bool IsCdTrackFile(const QString& path);  ///< cda, cdx

/// True for the files that a scan takes into a list: mp3, m4a, aac, wma and m3u.
[[nodiscard]] bool IsMusicFile(const QString& path);
