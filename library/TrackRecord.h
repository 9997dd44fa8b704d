#pragma once

#include <QString>

#include <cstdint>

/// Where the file of a track is. Only those of this computer may be asked of its disk: a phone's
/// "/Music/a.mp3" can be the name of another file here.
enum class TrackOrigin { Computer, Phone, Disc };

/// One track of a list: what is known of a file, and what the view shows of it. All texts are empty
/// and all numbers zero until somebody fills them.
///
/// Thread: interface thread only. Owned by its CMediaList.
class CTrackRecord {
public:
    virtual ~CTrackRecord() = default;

    // Beside each other in memory, for a click looks at them in all tracks of a list.
    int m_bChecked = 0;     ///< the check box; what every count of selected tracks counts
    int m_bPlaying = 0;     ///< the track being played or prepared
    int m_bRowSelected = 0; ///< selected in the grid; a rebuild selects it again
    int m_iRow = 0;         ///< grid row at the last rebuild
    int m_iIndex = -1;      ///< in its list, which keeps it

    QString m_strAlbum;
    QString m_strArtist;
    QString m_strBPM;
    QString m_strBitrate;
    QString m_strComposer;
    QString m_strDiskNumber;
    QString m_strFormat; ///< extension in upper case without the point
    QString m_strGenre;
    QString m_strLength; ///< "mm:ss" once known
    QString m_strPath;   ///< full path, the key of all lookups; of a listed track the list sets it
    QString m_strSampleRate;
    QString m_strSize;   ///< text of m_nFileSize
    QString m_strStatus; ///< what is being done with the track
    QString m_strTempo;
    QString m_strTitle; ///< the file name until tags are read
    QString m_strTrackNumber;
    QString m_strYear;

    std::uint64_t m_nDuration = 0; ///< milliseconds; 0 until playback has opened the track
    std::uint64_t m_nFileSize = 0; ///< bytes

    TrackOrigin m_origin = TrackOrigin::Computer;
};

/// Names one of the texts of a track.
using TrackText = QString CTrackRecord::*;
