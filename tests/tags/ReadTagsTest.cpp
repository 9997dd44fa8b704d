#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace {

constexpr auto kTitle = &CTrackInfo::m_strTitle;
constexpr auto kArtist = &CTrackInfo::m_strArtist;
constexpr auto kAlbum = &CTrackInfo::m_strAlbum;
constexpr auto kBpm = &CTrackInfo::m_strBPM;
constexpr auto kComposer = &CTrackInfo::m_strComposer;
constexpr auto kLength = &CTrackInfo::m_strLength;
constexpr auto kSize = &CTrackInfo::m_strSize;
constexpr auto kGenre = &CTrackInfo::m_strGenre;
constexpr auto kTrack = &CTrackInfo::m_strTrackNumber;
constexpr auto kYear = &CTrackInfo::m_strYear;

CTrackInfo ReadBytes(const QByteArray& bytes) {
    const ScratchFolder scratch;
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(scratch.Write(QStringLiteral("name.mp3"), bytes), info), 0);
    return info;
}

/// Data of a text frame in UTF-16, the lower byte first.
QByteArray Wide(const QString& text) {
    return QByteArray("\1\xFF\xFE") +
           QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
}

} // namespace

TEST(ReadTagsTest, FramesBecomeFields) {
    const QString note = QString(29, u'x') + QStringLiteral(u"\U0001F3B5");
    struct {
        int version;
        const char* id;
        QByteArray data;
        QString CTrackInfo::*field;
        QStringView text;
    } const rows[] = {
        {3, "TIT2", EightBit("A title longer than thirty characters"), kTitle,
         u"A title longer than thirty cha"},
        {3, "TIT2", EightBit("caf\xE9 \x80"), kTitle, u"caf\u00E9 \u20AC"},
        {3, "TIT2", EightBit(QByteArray("one\0two", 7)), kTitle, u"one"},
        {3, "TIT2", Wide(QString::fromUtf16(u"Gr\u00FC\u041F\0z", 6)), kTitle, u"Gr\u00FC\u041F"},
        {3, "TIT2", Wide(note), kTitle, QStringView(note).first(29)}, // no half of a character
        {3, "TIT2", QByteArray("\1\xFE\xFF\0G\0r\x04\x1F", 9), kTitle, u"Gr\u041F"},
        {3, "TIT2", "\3caf\xC3\xA9", kTitle, u"caf\u00E9"},
        {3, "TIT2", EightBit(""), kTitle, u"name"},
        {3, "TIT2", "", kTitle, u"name"},
        {3, "TLEN", EightBit("185000"), kLength, u"03:00"},
        {3, "TLEN", EightBit("59999"), kLength, u"00:00"},
        {3, "TLEN", EightBit("-1"), kLength, u"3385579553:71582"},
        {3, "TSIZ", EightBit("1024"), kSize, u"1.00 KB"},
        {3, "TSIZ", EightBit("99999999999999999999"), kSize, u"2048.00 MB"},
        {3, "TSIZ", EightBit("many"), kSize, u"0 B"},
        {3, "TCON", EightBit("(17)"), kGenre, u"Rock"},
        {3, "TCON", EightBit("(57)xyz"), kGenre, u"Comedy"},
        {3, "TCON", EightBit("Rock (17)"), kGenre, u"Rock (17)"},
        {3, "TCON", EightBit("(148)"), kGenre, u"(148)"},
        {3, "TCON", EightBit("(17"), kGenre, u"(17"},
        {3, "TCON", EightBit("17"), kGenre, u"17"},
        {3, "TRCK", EightBit("3/12"), kTrack, u"3/12"},
        {2, "TT2", EightBit("Title"), kTitle, u"Title"},
        {2, "TYE", EightBit("1999"), kYear, u"1999"},
        {2, "TCO", EightBit("(8)"), kGenre, u"Jazz"},
        {4, "TIT2", QByteArray("\3caf\xC3\xA9\0next", 11), kTitle, u"caf\u00E9"},
        {4, "TPE1", QByteArray("\2\x04\x1F\0!", 5), kArtist, u"\u041F!"}, // without a mark
        {4, "TALB", "\7nonsense", kAlbum, u""},
        {4, "TCON", EightBit("8"), kGenre, u"Jazz"},
        {4, "TDRC", EightBit("1999-05-03T12:00"), kYear, u"1999"},
        {4, "TYER", EightBit("1987"), kYear, u"1987"}, // as ID3v2.3 tells it
    };
    for (const auto& row : rows) {
        const CTrackInfo info = ReadBytes(TagBytes(row.version, {{row.id, row.data}}) + Mp3Sound());
        EXPECT_EQ(info.*row.field, row.text)
            << row.id << ' ' << row.data.toPercentEncoding().data();
    }
    const FrameList both = {{"TYER", EightBit("1987")}, {"TDRC", EightBit("2001-02")}};
    EXPECT_EQ(ReadBytes(TagBytes(4, both)).m_strYear, u"2001");

    // Plain sizes in ID3v2.4, where the format wants seven bits a byte.
    QByteArray plain =
        TagBytes(3, {{"TXXX", EightBit(QByteArray(200, 'x'))}, {"TIT2", EightBit("Behind")}});
    plain[3] = 4;
    EXPECT_EQ(ReadBytes(plain).m_strTitle, u"Behind");
}

TEST(ReadTagsTest, ExtensionDecidesWhatIsRead) {
    const QByteArray tagged = TagBytes(3, {{"TIT2", EightBit("Title")}}) + Mp3Sound();
    struct {
        const char* name;
        int result;
        const char* title;
    } const rows[] = {{"song.MP3", 0, "Title"}, {"song.aac", 0, "Title"}, {"song.m4a", 0, "song"},
                      {"song.mp4", 0, "song"},  {"a.b.wma", 0, "a.b"},    {"song.m3u", 1, ""},
                      {"song", 1, ""},          {"song.mp3.txt", 1, ""},  {".m4a", 0, ".m4a"}};
    const ScratchFolder scratch;
    for (const auto& row : rows) {
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(scratch.Write(QString::fromLatin1(row.name), tagged), info),
                  row.result);
        EXPECT_EQ(info.m_strTitle, QLatin1StringView(row.title)) << row.name;
    }
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(scratch.File(QStringLiteral("missing.mp3")), info), 0);
    CTrackInfo expected;
    expected.m_strTitle = QStringLiteral("missing");
    EXPECT_EQ(info, expected);
}

TEST(ReadTagsTest, TextsAreThoseThatOtherProgramsWrote) {
    const QString lame = QStringLiteral("Lame Title|Lame Artist|Lame Album||");
    const QString ffmpeg = QStringLiteral(u"Ffmpeg Gr\u00FC\u00DFe|Ffmpeg Artist|"
                                          "\u0410\u043B\u044C\u0431\u043E\u043C|||7|1999|Blues||0");
    const QString title = QStringLiteral("A title that is quite a bit lo");
    const QString hello =
        QStringLiteral(u"\u041F\u0440\u0438\u0432\u0435\u0442, \u043C\u0438\u0440 \u266B");
    const QString others = QStringLiteral(u"|K\u00FCnstler|Un \u00E9t\u00E9 \u00E0 Paris|128|"
                                          "A. Composer|3/14|1987|Rock|1.00 MB|185000");
    const std::pair<const char*, QString> rows[] = {
        {"lame-v1.mp3", lame + QStringLiteral("|5|2004|Rock||0")},
        {"lame-v23.mp3", lame + QStringLiteral("|5/12|2004|Rock||2000")},
        {"lame-v23-utf16.mp3", lame + QStringLiteral("|5/12|2004|Rock||2000")},
        {"ffmpeg-v23-v1.mp3", ffmpeg},
        {"ffmpeg-v24.mp3", ffmpeg},
        {"ffmpeg-v24-v1.mp3", ffmpeg},
        {"id3lib-v23-utf16-unsync.mp3",
         QStringLiteral(u"\u00DCnsynchronisiert \u266B und mehr al|"
                        "\u0418\u0441\u043F\u043E\u043B\u043D\u0438\u0442\u0435\u043B\u044C|"
                        "\u00FF\u00FE album|||||||61000")},
        {"mutagen-v23.mp3", title + others},
        {"mutagen-v23-utf16.mp3", hello + others},
        {"mutagen-v23-utf16-v1.mp3", hello + others},
        {"mutagen-v24.mp3", title + others},
        {"mutagen-v24-utf16.mp3", hello + others},
        {"mutagen-v23.aac", QStringLiteral("An ADTS title") + others},
        {"untagged.mp3", QStringLiteral("untagged|||||||||0")},
    };
    for (const auto& [file, expected] : rows) {
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(MediaFile(QString::fromLatin1(file)), info), 0);
        QString fields;
        for (const auto field :
             {kTitle, kArtist, kAlbum, kBpm, kComposer, kTrack, kYear, kGenre, kSize})
            fields += info.*field + u'|';
        EXPECT_EQ(fields + QString::number(info.m_nLengthMs), expected) << file;
    }
}

TEST(ReadTagsTest, Id3v1FillsWhatId3v2LeavesOpen) {
    const QByteArray id3v1 = ReadFile(MediaFile(QStringLiteral("lame-v1.mp3"))).last(128);
    struct {
        int version;
        FrameList frames;
        const char* title;
        const char* artist;
    } const rows[] = {
        {3, {{"TALB", EightBit("x")}}, "Lame Title", "Lame Artist"},
        {3, {{"TIT2", EightBit("Own")}}, "Own", "Lame Artist"},
        {3, {{"TPE2", EightBit("Band")}}, "Lame Title", ""}, // id3lib takes the band for an artist
        {4, {{"TIT2", "\3Own"}}, "Own", "Lame Artist"},
        {2, {{"TT2", EightBit("Own")}}, "Own", "Lame Artist"},
    };
    for (const auto& row : rows) {
        const CTrackInfo info = ReadBytes(TagBytes(row.version, row.frames) + Mp3Sound() + id3v1);
        EXPECT_EQ(info.m_strTitle, QLatin1StringView(row.title));
        EXPECT_EQ(info.m_strArtist, QLatin1StringView(row.artist));
        EXPECT_EQ(info.m_strGenre, u"Rock");
        EXPECT_EQ(info.m_strTrackNumber, u"5");
    }
}

TEST(ReadTagsTest, ArtworkIsTheFirstPicture) {
    const ScratchFolder scratch;
    const QString out = scratch.File(QStringLiteral("out.jpg"));
    const std::pair<const char*, const char*> rows[] = {
        {"lame-v23-v1-picture.mp3", "small.jpg"},
        {"id3lib-v23-utf16-unsync.mp3", "large.jpg"},
        {"mutagen-v24.mp3", "small.jpg"},
        {"mutagen-v23.aac", "small.jpg"}};
    for (const auto& [name, picture] : rows) {
        const QString path = MediaFile(QString::fromLatin1(name));
        EXPECT_EQ(SaveTrackArtwork(path, out), 0);
        EXPECT_EQ(ReadFile(out), ReadFile(MediaFile(QString::fromLatin1(picture)))) << name;
    }
    EXPECT_EQ(SaveTrackArtwork(MediaFile(QStringLiteral("untagged.mp3")), out), 1);
}

TEST(ReadTagsTest, SavedArtworkNeverTakesThePlaceOfTheTrackOrWaits) {
    const ScratchFolder scratch;
    const QByteArray content = TagBytes(2, {{"PIC", QByteArray("\0JPG\3\0picture", 13)}});
    const QString track = scratch.Write(QStringLiteral("track.mp3"), content);
    EXPECT_EQ(ReadTrackArtwork(track), "picture");
    const QString link = scratch.File(QStringLiteral("link.jpg"));
    const QString name = scratch.File(QStringLiteral("name.jpg"));
    const QString pipe = scratch.File(QStringLiteral("pipe.jpg"));
    ASSERT_EQ(::mkfifo(Path::ToBytes(pipe), 0600), 0);
    ASSERT_EQ(::symlink("track.mp3", Path::ToBytes(link)), 0);
    for (const QString& out :
         {track, link, pipe, scratch.Path(), scratch.File(QStringLiteral("no/folder.jpg"))})
        EXPECT_EQ(SaveTrackArtwork(track, out), 1) << out.toStdString();
    ASSERT_EQ(::link(Path::ToBytes(track), Path::ToBytes(name)), 0);
    EXPECT_EQ(SaveTrackArtwork(track, name), 1);
    EXPECT_EQ(ReadFile(track), content);
    EXPECT_EQ(ListFolder(scratch.Path())->size(), 4U) << "nothing is left beside them";
}
