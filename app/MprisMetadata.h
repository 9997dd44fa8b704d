#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

class CTrackRecord;

/// How others on the desktop are told of a track, by the names of MPRIS.
///
/// Thread: interface thread.

/// In units of 100 ns. The bus counts in microseconds.
inline constexpr std::int64_t kMicrosecond = 10;

/// The URL of a file by the very bytes of its name.
[[nodiscard]] QString FileUrl(const QString& path);

/// What is known of a track; what isn't is left out. `id`: its object path; `duration` in units of
/// 100 ns, 0 if it isn't known; `coverPath`: its picture, or empty.
[[nodiscard]] QVariantMap MakeMetadata(const CTrackRecord& track, const QString& id,
                                       std::int64_t duration, const QString& coverPath);
