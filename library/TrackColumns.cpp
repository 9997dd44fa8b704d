#include "library/TrackColumns.h"

#include <algorithm>

namespace {

using R = CTrackRecord;

constexpr TrackColumn kColumns[] = {
    {kTitleColumn, &R::m_strTitle, "Title", IDS_FEILD_TITLE, SortKey::Text},
    {0x2, &R::m_strArtist, "Artist", IDS_FEILD_ARTIST, SortKey::Text},
    {0x4, &R::m_strAlbum, "Album", IDS_FEILD_ALBUM, SortKey::Text},
    {0x8, &R::m_strGenre, "Genre", IDS_FEILD_GENRE, SortKey::Text},
    {0x10, &R::m_strLength, "Length", IDS_FEILD_LENGTH, SortKey::Duration},
    {0x20, &R::m_strSize, "Size", IDS_FEILD_SIZE, SortKey::FileSize},
    {0x40, &R::m_strBPM, "BPM", IDS_FEILD_BPM, SortKey::Number},
    {0x80, &R::m_strStatus, "Status", IDS_FEILD_STATUS, SortKey::Text},
    {0x100, &R::m_strBitrate, "Bit Rate", IDS_FEILD_BITRATE, SortKey::Number},
    {0x200, &R::m_strComposer, "Composer", IDS_FEILD_COMPOSER, SortKey::Text},
    {0x400, &R::m_strDiskNumber, "Disk Number", IDS_FEILD_DISKNUM, SortKey::Number},
    {0x800, &R::m_strFormat, "Format", IDS_FEILD_FORMAT, SortKey::Text},
    {0x1000, &R::m_strPath, "Path", IDS_FEILD_PATH, SortKey::Text},
    {0x2000, &R::m_strSampleRate, "Sample Rate", IDS_FEILD_SAMPLERATE, SortKey::Number},
    {0x4000, &R::m_strTempo, "Tempo", IDS_FEILD_TEMPO, SortKey::Text},
    {0x8000, &R::m_strTrackNumber, "Track Number", IDS_FEILD_TRACKNUM, SortKey::Number},
    {0x10000, &R::m_strYear, "Year", IDS_FEILD_YEAR, SortKey::Number},
};

} // namespace

std::span<const TrackColumn> AllTrackColumns() {
    return kColumns;
}

const TrackColumn* FindTrackColumn(unsigned bit) {
    const auto* found =
        std::find_if(std::begin(kColumns), std::end(kColumns),
                     [bit](const TrackColumn& column) { return column.bit == bit; });
    return found == std::end(kColumns) ? nullptr : found;
}
