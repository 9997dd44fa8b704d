#include "tags/Id3v1Tag.h"

#include "tags/GenreTable.h"

#include <array>

namespace {

constexpr qsizetype kTagLength = 128;
constexpr qsizetype kCommentEnd = 125; // a zero here makes the next byte the track number
constexpr qsizetype kTrack = 126;
constexpr qsizetype kGenre = 127;

struct TextRow {
    QString CTrackInfo::*text;
    qsizetype begin;
    qsizetype length;
};
constexpr std::array<TextRow, 4> kTexts = {{{&CTrackInfo::m_strTitle, 3, 30},
                                            {&CTrackInfo::m_strArtist, 33, 30},
                                            {&CTrackInfo::m_strAlbum, 63, 30},
                                            {&CTrackInfo::m_strYear, 93, 4}}};

/// The number in front of the '/' in "3/12", where it fits a byte; else 0.
char TrackByte(const QString& text) {
    const uint number = text.section(u'/', 0, 0).trimmed().toUInt();
    return static_cast<char>(number <= 0xFF ? number : 0);
}

} // namespace

QByteArray MakeId3v1Tag(const CTrackInfo& info, const CTrackInfo& current, const QByteArray& old) {
    QByteArray tag = old;
    if (old.isEmpty()) {
        tag = QByteArray("TAG").leftJustified(kTagLength, '\0');
        tag[kGenre] = static_cast<char>(kNoId3Genre);
    }
    const auto differs = [&](QString CTrackInfo::*text) {
        return old.isEmpty() || info.*text != current.*text;
    };
    for (const TextRow& row : kTexts) {
        if (differs(row.text))
            tag.replace(row.begin, row.length,
                        (info.*row.text).toLatin1().leftJustified(row.length, '\0', true));
    }
    if (differs(&CTrackInfo::m_strTrackNumber) && tag[kCommentEnd] == '\0')
        tag[kTrack] = TrackByte(info.m_strTrackNumber);
    if (differs(&CTrackInfo::m_strGenre))
        tag[kGenre] = static_cast<char>(GenreToId3Number(info.m_strGenre));
    return tag;
}
