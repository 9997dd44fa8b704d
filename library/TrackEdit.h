#pragma once

#include "library/TrackRecord.h"

#include <QString>

#include <optional>

class CMediaList;
class IPlaybackGuard;

/// Editing the texts of tracks where they stand, in the cells of the view.
///
/// Thread: interface thread. Errors: told by the result; none throws.

/// Whether the user may type another text for a track in the place of this one. Tracks of My
/// Collection have such texts if their tags can be written, in the open playlist and the selection
/// too. Of a playlist it is the title, though not where it is an entry of the open one.
[[nodiscard]] bool IsEditable(const CMediaList& list, int index, TrackText text);

/// Writes `value` as this text into the tags of a file, whose other texts stay; `guard` is asked
/// first. Returns what the tags tell now, which may be less than `value`, or something else in the
/// place of nothing. No answer if it could not be written; then the file is as it was.
[[nodiscard]] std::optional<QString> StoreTrackText(IPlaybackGuard& guard, const QString& path,
                                                    TrackText text, const QString& value);

/// Gives the file of a playlist the name that its title tells, in its folder. Returns its new path;
/// none if that is taken or no name: then all is as it was.
[[nodiscard]] std::optional<QString> RenamePlaylist(const QString& path, const QString& title);
