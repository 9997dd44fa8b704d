#pragma once

#include "tags/TrackInfo.h"

#include <QString>

#include <vector>

/// What is known of one track of a CD.
struct CCdTrackEntry {
    QString m_strAlbum;
    QString m_strArtist;
    QString m_strComposer;
    QString m_strGenre;
    QString m_strTitle;
    int m_nDiskNumber = 0;
    int m_nTrackNumber = 0;
    int m_nYear = 0;
};

/// What is known of the tracks of the CD in one drive. A CD's files carry no tags; they are known
/// by their track number.
///
/// Thread: interface thread only. Owned by the CD's list.
class CCdTrackCache {
public:
    /// Fills `outInfo` for a track file of the CD. A track that is not known gets its file name
    /// without extension as title. With `numberTrackTitles` the title starts with the track number
    /// as "%02d-". Returns 0, or 1 with `outInfo` unchanged if the file gives no track number.
    int LookupTrack(const QString& fileName, CTrackInfo& outInfo, int numberTrackTitles) const;

    /// Keeps `info` for the track whose number it names. With `overwriteAll` 0, empty texts leave
    /// what is known of a known track. Returns 0.
    int StoreTrack(const CTrackInfo& info, int overwriteAll);

private:
    [[nodiscard]] const CCdTrackEntry* Find(int trackNumber) const;

    std::vector<CCdTrackEntry> m_entries;
};
