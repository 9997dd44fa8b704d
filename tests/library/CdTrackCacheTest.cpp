#include "library/CdTrackCache.h"

#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

static CTrackInfo Info(const char* title, const char* artist = "", const char* year = "") {
    CTrackInfo info;
    info.m_strTrackNumber = "263";
    info.m_strTitle = QString::fromUtf8(title);
    info.m_strArtist = QString::fromUtf8(artist);
    info.m_strYear = QString::fromUtf8(year);
    return info;
}

TEST(CdTrackCacheTest, KnowsTracksByTheNumberInTheirFile) {
    const ScratchFolder scratch;
    const QByteArray content = QByteArray(44, '\0').replace(22, 2, "\x07\x01"); // 263
    const QString file = scratch.Write("Track.cda", content);
    CCdTrackCache cache;
    const auto look = [&](int numbered) {
        CTrackInfo info;
        EXPECT_EQ(cache.LookupTrack(file, info, numbered), 0);
        return QStringList{info.m_strTrackNumber, info.m_strTitle, info.m_strArtist, info.m_strYear}
            .join(u'|');
    };
    EXPECT_EQ(look(1), u"263|263-Track||");
    cache.StoreTrack(Info("Title", "Artist", "1999"), 0);
    cache.StoreTrack(Info("Better"), 0);
    EXPECT_EQ(look(0), u"263|Better|Artist|1999") << "an empty text leaves what is known";
    cache.StoreTrack(Info("Only"), 1);
    EXPECT_EQ(look(1), u"263|263-Only||0");

    CTrackInfo kept = Info("kept");
    for (const QString& bad :
         {scratch.Write("short.cda", QByteArray(23, 'x')), scratch.File("missing.cda")})
        EXPECT_EQ(cache.LookupTrack(bad, kept, 0), 1);
    EXPECT_EQ(kept, Info("kept"));

    const QString second =
        scratch.Write("A.cda", QByteArray(content).replace(22, 2, QByteArray("\2\0", 2)));
    EXPECT_EQ(cache.LookupTrack(second, kept, 1), 0);
    EXPECT_EQ(kept.m_strTitle, u"02-A");
}
