#include "platform/Files.h"
#include "platform/Path.h"
#include "tests/tags/TagBytes.h"

#include <unistd.h>

static CTrackInfo ReadBytes(const QByteArray& bytes) {
    const ScratchFolder scratch;
    return ReadInfo(scratch.Write("name.mp3", bytes));
}

TEST(ReadTagsTest, FramesBecomeFieldsInEveryVersion) {
    const QByteArray forty(40, 'x');
    const QByteArray utf16("\1\xFF\xFEG\0r\0\xFC\0\x1F\x04\0\0z\0", 15);
    const QByteArray utf16Big("\1\xFE\xFF\0G\0r\x04\x1F", 9);
    const QString thirty(30, u'x');
    constexpr auto title = &CTrackInfo::m_strTitle;
    constexpr auto length = &CTrackInfo::m_strLength;
    constexpr auto size = &CTrackInfo::m_strSize;
    constexpr auto genre = &CTrackInfo::m_strGenre;
    constexpr auto year = &CTrackInfo::m_strYear;
    const std::tuple<int, const char*, QByteArray, QString CTrackInfo::*, QStringView> rows[] = {
        {3, "TIT2", EightBit(forty), title, thirty},
        {3, "TIT2", EightBit("caf\xE9 \x80"), title, u"caf\u00E9 \u20AC"},
        {3, "TIT2", EightBit(QByteArray("one\0two", 7)), title, u"one"},
        {3, "TIT2", utf16, title, u"Gr\u00FC\u041F"},
        {3, "TIT2", utf16Big, title, u"Gr\u041F"},
        {3, "TIT2", "\3caf\xC3\xA9", title, u"caf\u00E9"},
        {3, "TIT2", EightBit(""), title, u"name"},
        {3, "TIT2", "", title, u"name"},
        {3, "TLEN", EightBit("185000"), length, u"03:00"},
        {3, "TLEN", EightBit("59999"), length, u"00:00"},
        {3, "TLEN", EightBit("-1"), length, u"3385579553:71582"},
        {3, "TSIZ", EightBit("1024"), size, u"1.00 KB"},
        {3, "TSIZ", EightBit("99999999999999999999"), size, u"2048.00 MB"},
        {3, "TSIZ", EightBit("many"), size, u"0 B"},
        {3, "TCON", EightBit("(17)Rock"), genre, u"Rock"},
        {3, "TCON", EightBit("(57)xyz"), genre, u"Comedy"},
        {3, "TCON", EightBit("Rock (17)"), genre, u"Rock (17)"},
        {3, "TCON", EightBit("(148)"), genre, u"(148)"},
        {3, "TCON", EightBit("(17"), genre, u"(17"},
        {3, "TCON", EightBit("17"), genre, u"17"},
        {3, "TRCK", EightBit("3/12"), &CTrackInfo::m_strTrackNumber, u"3/12"},
        {2, "TT2", EightBit("Title"), title, u"Title"},
        {2, "TYE", EightBit("1999"), year, u"1999"},
        {2, "TCO", EightBit("(8)"), genre, u"Jazz"},
        {4, "TIT2", QByteArray("\3caf\xC3\xA9\0next", 11), title, u"caf\u00E9"},
        {4, "TPE1", QByteArray("\2\x04\x1F\0!", 5), &CTrackInfo::m_strArtist, u"\u041F!"},
        {4, "TALB", "\7nonsense", &CTrackInfo::m_strAlbum, u""},
        {4, "TCON", EightBit("8"), genre, u"Jazz"},
        {4, "TDRC", EightBit("1999-05-03T12:00"), year, u"1999"},
        {4, "TYER", EightBit("1987"), year, u"1987"}};
    for (const auto& [version, id, data, field, text] : rows) {
        const CTrackInfo info = ReadBytes(TagBytes(version, {{id, data}}) + Mp3Sound());
        EXPECT_EQ(info.*field, text) << id << ' ' << data.toPercentEncoding().data();
    }
    const FrameList both = {{"TYER", EightBit("1987")}, {"TDRC", EightBit("2001-02")}};
    EXPECT_EQ(ReadBytes(TagBytes(4, both)).m_strYear, u"2001");
    EXPECT_EQ(ReadBytes(TagBytes(3, {{"TLEN", EightBit("185000")}})).m_nLengthMs, 185000U);

    // A cut never leaves half a character.
    const QByteArray note = "\3" + QByteArray(29, 'x') + "\xF0\x9F\x8E\xB5";
    EXPECT_EQ(ReadBytes(TagBytes(3, {{"TIT2", note}})).m_strTitle, QString(29, u'x'));

    // Plain sizes in ID3v2.4, where the format wants seven bits a byte.
    QByteArray plain =
        TagBytes(3, {{"TXXX", EightBit(QByteArray(200, 'x'))}, {"TIT2", EightBit("Behind")}});
    plain[3] = 4;
    EXPECT_EQ(ReadBytes(plain).m_strTitle, u"Behind");
}

TEST(ReadTagsTest, ExtensionDecidesWhatIsRead) {
    const QByteArray tagged = TagBytes(3, {{"TIT2", EightBit("Title")}}) + Mp3Sound();
    const std::tuple<const char*, int, const char*> rows[] = {
        {"song.MP3", 0, "Title"}, {"song.aac", 0, "Title"}, {"song.m4a", 0, "song"},
        {"song.mp4", 0, "song"},  {"a.b.wma", 0, "a.b"},    {"song.m3u", 1, ""},
        {"song", 1, ""},          {"song.mp3.txt", 1, ""},  {".m4a", 0, ".m4a"}};
    const ScratchFolder scratch;
    for (const auto& [name, result, title] : rows) {
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(scratch.Write(QString::fromLatin1(name), tagged), info), result);
        EXPECT_EQ(info.m_strTitle, QLatin1StringView(title)) << name;
    }
    CTrackInfo expected;
    expected.m_strTitle = "missing";
    EXPECT_EQ(ReadInfo(scratch.File("missing.mp3")), expected);
}

TEST(ReadTagsTest, Id3v1FillsWhatId3v2LeavesOpen) {
    const QByteArray id3v1 = ReadFile(MediaFile("lame-v1.mp3")).last(128);
    const std::tuple<int, FrameList, const char*, const char*> rows[] = {
        {3, {{"TALB", EightBit("x")}}, "Lame Title", "Lame Artist"},
        {3, {{"TIT2", EightBit("Own")}}, "Own", "Lame Artist"},
        {3, {{"TPE2", EightBit("Band")}}, "Lame Title", ""}, // id3lib takes the band for an artist
        {4, {{"TIT2", "\3Own"}}, "Own", "Lame Artist"},
        {2, {{"TT2", EightBit("Own")}}, "Own", "Lame Artist"}};
    for (const auto& [version, frames, title, artist] : rows) {
        const CTrackInfo info = ReadBytes(TagBytes(version, frames) + Mp3Sound() + id3v1);
        EXPECT_EQ(info.m_strTitle, QLatin1StringView(title));
        EXPECT_EQ(info.m_strArtist, QLatin1StringView(artist));
        EXPECT_EQ(info.m_strGenre + info.m_strTrackNumber, u"Rock5");
    }
}

TEST(ReadTagsTest, ArtworkIsTheFirstPicture) {
    const ScratchFolder scratch;
    const QString out = scratch.File("out.jpg");
    const std::pair<const char*, const char*> rows[] = {
        {"lame-v23-v1-picture.mp3", "small.jpg"},
        {"id3lib-v23-utf16-unsync.mp3", "large.jpg"},
        {"mutagen-v24.mp3", "small.jpg"},
        {"mutagen-v23.aac", "small.jpg"}};
    for (const auto& [name, file] : rows) {
        const QByteArray picture = ReadFile(MediaFile(QString::fromLatin1(file)));
        const QString path = MediaFile(QString::fromLatin1(name));
        EXPECT_EQ(ReadTrackArtwork(path), picture) << name;
        EXPECT_EQ(SaveTrackArtwork(path, out), 0);
        EXPECT_EQ(ReadFile(out), picture);
    }
    const QString old =
        scratch.Write("old.mp3", TagBytes(2, {{"PIC", QByteArray("\0JPG\3\0picture", 13)}}));
    EXPECT_EQ(ReadTrackArtwork(old), "picture");
    EXPECT_EQ(SaveTrackArtwork(MediaFile("untagged.mp3"), out), 1);
    EXPECT_EQ(SaveTrackArtwork(old, scratch.File("no/folder.jpg")), 1);
}

TEST(ReadTagsTest, SavedArtworkNeverTakesThePlaceOfTheTrackOrWaits) {
    const ScratchFolder scratch;
    const QByteArray content = TagBytes(2, {{"PIC", QByteArray("\0JPG\3\0picture", 13)}});
    const QString track = scratch.Write("track.mp3", content);
    const QString link = scratch.MakeLink("link.jpg", "track.mp3");
    const QString name = scratch.File("name.jpg");
    const QString pipe = scratch.MakePipe("pipe.jpg");
    for (const QString& out : {track, link, pipe, scratch.Path()})
        EXPECT_EQ(SaveTrackArtwork(track, out), 1) << out.toStdString();
    ASSERT_EQ(::link(Path::ToBytes(track), Path::ToBytes(name)), 0);
    EXPECT_EQ(SaveTrackArtwork(track, name), 1);
    EXPECT_EQ(ReadFile(track), content);
    EXPECT_EQ(ListFolder(scratch.Path())->size(), 4U) << "nothing is left beside them";
}
