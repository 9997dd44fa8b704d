#include "library/CdTrackCache.h"

#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

QByteArray TrackFile(int number) {
    QByteArray content(44, '\0');
    content[22] = static_cast<char>(number & 0xFF);
    content[23] = static_cast<char>(number >> 8);
    return content;
}

CTrackInfo Info(const char* number, const char* title, const char* artist, const char* year) {
    CTrackInfo info;
    info.m_strTrackNumber = QString::fromUtf8(number);
    info.m_strTitle = QString::fromUtf8(title);
    info.m_strArtist = QString::fromUtf8(artist);
    info.m_strYear = QString::fromUtf8(year);
    return info;
}

} // namespace

TEST(CdTrackCacheTest, KnowsTracksByTheNumberInTheirFile) {
    const ScratchFolder scratch;
    const QString file = scratch.Write(QStringLiteral("Track07.cda"), TrackFile(7));
    CCdTrackCache cache;
    CTrackInfo info;
    EXPECT_EQ(cache.LookupTrack(file, info, 1), 0);
    EXPECT_EQ(info.m_strTitle, QStringLiteral("07-Track07"));
    EXPECT_EQ(info.m_strTrackNumber, QStringLiteral("7"));

    cache.StoreTrack(Info("7", "Title", "Artist", "1999"), 0);
    cache.StoreTrack(Info("7", "Better", "", ""), 0);
    EXPECT_EQ(cache.LookupTrack(file, info, 0), 0);
    EXPECT_EQ(info.m_strTitle, QStringLiteral("Better"));
    EXPECT_EQ(info.m_strArtist, QStringLiteral("Artist")) << "an empty text leaves what is known";
    EXPECT_EQ(info.m_strYear, QStringLiteral("1999"));

    cache.StoreTrack(Info("7", "Only", "", ""), 1);
    EXPECT_EQ(cache.LookupTrack(file, info, 1), 0);
    EXPECT_EQ(info.m_strTitle, QStringLiteral("07-Only"));
    EXPECT_TRUE(info.m_strArtist.isEmpty());
}

TEST(CdTrackCacheTest, FileWithoutANumberLeavesTheInfoAlone) {
    const ScratchFolder scratch;
    const CCdTrackCache cache;
    CTrackInfo info = Info("1", "kept", "", "");
    for (const QString& file : {scratch.Write(QStringLiteral("short.cda"), QByteArray(23, 'x')),
                                scratch.File(QStringLiteral("missing.cda"))}) {
        EXPECT_EQ(cache.LookupTrack(file, info, 0), 1);
        EXPECT_EQ(info.m_strTitle, QStringLiteral("kept"));
    }
}
