#pragma once

#include "library/TrackRecord.h"

#include <memory>

struct CMediaFileRequest;

/// Records of files.
///
/// Thread: any. Errors: none; what can't be read stays a track with its file name as title.

/// Where the files of a list of this type are (see CMediaList::TypeOfSource).
[[nodiscard]] TrackOrigin OriginOf(int listType);

/// The record of a file, with what its path and the request tell. The disk is not asked.
[[nodiscard]] std::unique_ptr<CTrackRecord> NewTrack(const CMediaFileRequest& request,
                                                     TrackOrigin origin);

/// Puts what the file system and the tags tell into the record of a file of this computer; leaves
/// others as they are.
void ReadTrack(CTrackRecord& track);

/// Both of it.
[[nodiscard]] std::unique_ptr<CTrackRecord> MakeTrack(const CMediaFileRequest& request,
                                                      TrackOrigin origin = TrackOrigin::Computer);

/// Puts what was read into a record of the same file that is in a list. Its marks and its status
/// stay, and what the reading doesn't tell.
void TakeReading(const CTrackRecord& read, CTrackRecord& track);
