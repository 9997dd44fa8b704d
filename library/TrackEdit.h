#pragma once

#include "library/TrackRecord.h"

#include <QString>

#include <optional>

class CMediaList;

/// Editing the texts of tracks.

/// What became of a file that was to be changed.
struct StoreResult {
    std::optional<QString> stored; ///< none: the file is as it was
    QString reason;                ///< why, for the user
};

/// Whether the user may type another text for a track in the place of this one. Tracks of My
/// Collection have such texts if their tags can be written, in the open playlist and the selection
/// too. Of a playlist it is the title, though not where it is an entry of the open one.
/// Thread: interface thread.
[[nodiscard]] bool IsEditable(const CMediaList& list, int index, TrackText text);

/// Writes `value` as this text into the tags of a file, whose other texts stay. What is stored is
/// what the tags tell now, which may be less than `value`, or something else in the place of
/// nothing. A file that plays goes on playing as it was. Thread: any.
[[nodiscard]] StoreResult StoreTrackText(const QString& path, TrackText text, const QString& value);

/// Gives the file of a playlist the name that its title tells, in its folder. What is stored is its
/// new path. Thread: any.
[[nodiscard]] StoreResult RenamePlaylist(const QString& path, const QString& title);

/// Why a file could not be written, as far as one can tell from outside. Thread: any.
[[nodiscard]] QString WhyUnwritable(const QString& path);
