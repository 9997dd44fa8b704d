#pragma once

#include <QString>

#include <cstdint>

/// What all tag readers fill and all tag writers take: a flat value, owned by its caller.
struct CTrackInfo {
    QString m_strAlbum;
    QString m_strArtist;
    QString m_strBPM; ///< beats per minute, decimal
    QString m_strComposer;
    QString m_strDiskNumber; ///< decimal; not kept in ID3
    QString m_strFormat;     ///< not filled by the tag readers
    QString m_strGenre;      ///< name
    QString m_strLength;     ///< "%02u:%02u"
    QString m_strSize;       ///< as SizeText
    QString m_strTempo;      ///< decimal; kept in M4A only
    QString m_strTitle;      ///< never empty after a successful read
    QString m_strTrackNumber;
    QString m_strYear;
    std::uint64_t m_nLengthMs = 0;  ///< milliseconds, 0 when the tag does not tell
    std::uint64_t m_nSizeBytes = 0; ///< bytes, 0 when the tag does not tell

    bool operator==(const CTrackInfo&) const = default;
};
