#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/EightBitText.h"
#include "tags/GenreTable.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <QtEndian>
#include <gtest/gtest.h>
#include <id3/tag.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace {

CTrackInfo ReadBytes(const QByteArray& bytes, const QString& name = QStringLiteral("name.mp3")) {
    const ScratchFolder scratch;
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(scratch.Write(name, bytes), info), 0);
    return info;
}

/// The text of a frame, read as a plain user of id3lib does.
std::optional<QString> LinkedText(const ID3_Tag& tag, ID3_FrameID id) {
    const ID3_Frame* frame = tag.Find(id);
    const ID3_Field* field = frame ? frame->GetField(ID3FN_TEXT) : nullptr;
    std::array<char, 30> bytes{};
    if (!field)
        return std::nullopt;
    if (const size_t count = field->Get(bytes.data(), bytes.size()))
        return FromEightBit(
            QByteArray(bytes.data(), static_cast<qsizetype>(count)).split('\0').front());
    const unicode_t* units = field->GetRawUnicodeText();
    if (!units || field->Size() < 2)
        return std::nullopt;
    QString text(static_cast<qsizetype>(field->Size() / 2), u'\0');
    qbswap<2>(units, text.size(), text.data());
    return text.section(QChar(u'\0'), 0, 0).left(30);
}

bool HasWideText(const QString& path) {
    ID3_Tag tag;
    tag.Link(path.toLocal8Bit().constData(), ID3TT_ID3V2);
    const ID3_Frame* title = tag.Find(ID3FID_TITLE);
    return title && title->GetField(ID3FN_TEXT)->GetEncoding() == ID3TE_UNICODE;
}

} // namespace

TEST(ReadTagsTest, FramesBecomeFields) {
    const QByteArray forty(40, 'x');
    const QByteArray utf16("\1\xFF\xFEG\0r\0\xFC\0\x1F\x04\0\0z\0", 15);
    const QByteArray utf16Big("\1\xFE\xFF\0G\0r\x04\x1F", 9);
    struct {
        const char* id;
        QByteArray data;
        QString CTrackInfo::*field;
        QString text;
    } const rows[] = {
        {"TIT2", EightBit(forty), &CTrackInfo::m_strTitle, QString(30, u'x')},
        {"TIT2", EightBit("caf\xE9 \x80"), &CTrackInfo::m_strTitle,
         QStringLiteral(u"caf\u00E9 \u20AC")},
        {"TIT2", EightBit(QByteArray("one\0two", 7)), &CTrackInfo::m_strTitle,
         QStringLiteral("one")},
        {"TIT2", utf16, &CTrackInfo::m_strTitle, QStringLiteral(u"Gr\u00FC\u041F")},
        {"TIT2", utf16Big, &CTrackInfo::m_strTitle, QStringLiteral(u"Gr\u041F")},
        {"TIT2", "\3caf\xC3\xA9", &CTrackInfo::m_strTitle, QStringLiteral(u"caf\u00E9")},
        {"TIT2", EightBit(""), &CTrackInfo::m_strTitle, QStringLiteral("name")},
        {"TIT2", "", &CTrackInfo::m_strTitle, QStringLiteral("name")},
        {"TLEN", EightBit("185000"), &CTrackInfo::m_strLength, QStringLiteral("03:00")},
        {"TLEN", EightBit("59999"), &CTrackInfo::m_strLength, QStringLiteral("00:00")},
        {"TLEN", EightBit("-1"), &CTrackInfo::m_strLength, QStringLiteral("3385579553:71582")},
        {"TSIZ", EightBit("1024"), &CTrackInfo::m_strSize, QStringLiteral("1.00 KB")},
        {"TSIZ", EightBit("99999999999999999999"), &CTrackInfo::m_strSize,
         QStringLiteral("2048.00 MB")},
        {"TSIZ", EightBit("many"), &CTrackInfo::m_strSize, QStringLiteral("0 B")},
        {"TCON", EightBit("(17)Rock"), &CTrackInfo::m_strGenre, QStringLiteral("Rock")},
        {"TCON", EightBit("(57)xyz"), &CTrackInfo::m_strGenre, QStringLiteral("Comedy")},
        {"TCON", EightBit("Rock (17)"), &CTrackInfo::m_strGenre, QStringLiteral("Rock (17)")},
        {"TCON", EightBit("(148)"), &CTrackInfo::m_strGenre, QStringLiteral("(148)")},
        {"TCON", EightBit("(17"), &CTrackInfo::m_strGenre, QStringLiteral("(17")},
        {"TCON", EightBit("17"), &CTrackInfo::m_strGenre, QStringLiteral("17")},
        {"TRCK", EightBit("3/12"), &CTrackInfo::m_strTrackNumber, QStringLiteral("3/12")},
    };
    for (const auto& row : rows) {
        const CTrackInfo info = ReadBytes(TagBytes(3, {{row.id, row.data}}) + Mp3Sound());
        EXPECT_EQ(info.*row.field, row.text)
            << row.id << ' ' << row.data.toPercentEncoding().data();
    }
    EXPECT_EQ(ReadBytes(TagBytes(3, {{"TLEN", EightBit("185000")}})).m_nLengthMs, 185000U);

    // A cut never leaves half a character.
    QString notes = QString(29, u'x') + QStringLiteral(u"\U0001F3B5");
    const QByteArray data =
        QByteArray("\1\xFF\xFE") +
        QByteArray(reinterpret_cast<const char*>(notes.utf16()), 2 * notes.size());
    EXPECT_EQ(ReadBytes(TagBytes(3, {{"TIT2", data}})).m_strTitle, QString(29, u'x'));
}

TEST(ReadTagsTest, OtherVersionsHaveTheSameFields) {
    const CTrackInfo old = ReadBytes(TagBytes(
        2, {{"TT2", EightBit("Title")}, {"TYE", EightBit("1999")}, {"TCO", EightBit("(8)")}}));
    EXPECT_EQ(old.m_strTitle, QStringLiteral("Title"));
    EXPECT_EQ(old.m_strYear, QStringLiteral("1999"));
    EXPECT_EQ(old.m_strGenre, QStringLiteral("Jazz"));

    const QByteArray wide("\2\x04\x1F\0!", 5); // UTF-16 without a byte-order mark
    const CTrackInfo info = ReadBytes(TagBytes(4, {{"TIT2", QByteArray("\3caf\xC3\xA9\0next", 11)},
                                                   {"TPE1", wide},
                                                   {"TALB", "\7nonsense"},
                                                   {"TCON", EightBit("8")},
                                                   {"TDRC", EightBit("1999-05-03T12:00")}}));
    EXPECT_EQ(info.m_strTitle, QStringLiteral(u"caf\u00E9"));
    EXPECT_EQ(info.m_strArtist, QStringLiteral(u"\u041F!"));
    EXPECT_EQ(info.m_strAlbum, QString());
    EXPECT_EQ(info.m_strGenre, QStringLiteral("Jazz"));
    EXPECT_EQ(info.m_strYear, QStringLiteral("1999"));

    // The year as ID3v2.3 has it, where there is no time.
    const FrameList oldYear = {{"TIT2", EightBit("x")}, {"TYER", EightBit("1987")}};
    EXPECT_EQ(ReadBytes(TagBytes(4, oldYear)).m_strYear, QStringLiteral("1987"));
    const FrameList both = {{"TYER", EightBit("1987")}, {"TDRC", EightBit("2001-02")}};
    EXPECT_EQ(ReadBytes(TagBytes(4, both)).m_strYear, QStringLiteral("2001"));

    // Plain sizes in ID3v2.4, where the format wants seven bits a byte.
    QByteArray plain =
        TagBytes(3, {{"TXXX", EightBit(QByteArray(200, 'x'))}, {"TIT2", EightBit("Behind")}});
    plain[3] = 4;
    EXPECT_EQ(ReadBytes(plain).m_strTitle, QStringLiteral("Behind"));
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

// The oracle is id3lib on the file itself. Link turns 16-bit texts into 7-bit ones where ID3v1
// follows, so there it is asked for ID3v2 alone.
TEST(ReadTagsTest, TextsAreThoseOfId3Lib) {
    int compared = 0;
    for (const QString& name :
         MediaFileNames(QStringLiteral("mp3")) + MediaFileNames(QStringLiteral("aac"))) {
        if (name.contains(QStringLiteral("v24")))
            continue;
        const QString path = MediaFile(name);
        ID3_Tag tag;
        tag.Link(path.toLocal8Bit().constData(), HasWideText(path) ? ID3TT_ID3V2 : 0xFFFF);
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(path, info), 0);
        struct {
            ID3_FrameID id;
            QString CTrackInfo::*field;
        } const rows[] = {{ID3FID_ALBUM, &CTrackInfo::m_strAlbum},
                          {ID3FID_LEADARTIST, &CTrackInfo::m_strArtist},
                          {ID3FID_BPM, &CTrackInfo::m_strBPM},
                          {ID3FID_COMPOSER, &CTrackInfo::m_strComposer},
                          {ID3FID_TITLE, &CTrackInfo::m_strTitle},
                          {ID3FID_TRACKNUM, &CTrackInfo::m_strTrackNumber},
                          {ID3FID_YEAR, &CTrackInfo::m_strYear}};
        for (const auto& row : rows) {
            const std::optional<QString> linked = LinkedText(tag, row.id);
            const QString without = row.id == ID3FID_TITLE ? Path::BaseName(name) : QString();
            EXPECT_EQ(info.*row.field, linked.value_or(without)) << name.toStdString();
            compared += linked.has_value();
        }
        QString genre = LinkedText(tag, ID3FID_CONTENTTYPE).value_or(QString());
        if (genre.startsWith(u'(')) // "(17)"
            GenreFromId3Number(genre, genre.mid(1).section(u')', 0, 0).toInt());
        EXPECT_EQ(info.m_strGenre, genre) << name.toStdString();
        const QString length = LinkedText(tag, ID3FID_SONGLEN).value_or(QStringLiteral("0"));
        EXPECT_EQ(info.m_nLengthMs, length.toULongLong()) << name.toStdString();
    }
    EXPECT_GT(compared, 50);
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
        EXPECT_EQ(info.m_strGenre, QStringLiteral("Rock"));
        EXPECT_EQ(info.m_strTrackNumber, QStringLiteral("5"));
    }
}

TEST(ReadTagsTest, ArtworkIsTheFirstPicture) {
    const ScratchFolder scratch;
    const QString out = scratch.File(QStringLiteral("out.jpg"));
    struct {
        const char* name;
        const char* picture;
    } const rows[] = {{"lame-v23-v1-picture.mp3", "small.jpg"},
                      {"id3lib-v23-utf16-unsync.mp3", "large.jpg"},
                      {"mutagen-v24.mp3", "small.jpg"},
                      {"mutagen-v23.aac", "small.jpg"}};
    for (const auto& row : rows) {
        const QByteArray picture = ReadFile(MediaFile(QString::fromLatin1(row.picture)));
        const QString path = MediaFile(QString::fromLatin1(row.name));
        EXPECT_EQ(ReadTrackArtwork(path), picture) << row.name;
        EXPECT_EQ(SaveTrackArtwork(path, out), 0);
        EXPECT_EQ(ReadFile(out), picture);
    }
    const QString old = scratch.Write(QStringLiteral("old.mp3"),
                                      TagBytes(2, {{"PIC", QByteArray("\0JPG\3\0picture", 13)}}));
    EXPECT_EQ(ReadTrackArtwork(old), "picture");
    EXPECT_EQ(SaveTrackArtwork(MediaFile(QStringLiteral("untagged.mp3")), out), 1);
    EXPECT_EQ(SaveTrackArtwork(old, scratch.File(QStringLiteral("no/folder.jpg"))), 1);
}

TEST(ReadTagsTest, SavedArtworkNeverTakesThePlaceOfTheTrackOrWaits) {
    const ScratchFolder scratch;
    const QByteArray content = TagBytes(2, {{"PIC", QByteArray("\0JPG\3\0picture", 13)}});
    const QString track = scratch.Write(QStringLiteral("track.mp3"), content);
    const QString link = scratch.File(QStringLiteral("link.jpg"));
    const QString name = scratch.File(QStringLiteral("name.jpg"));
    const QString pipe = scratch.File(QStringLiteral("pipe.jpg"));
    ASSERT_EQ(::mkfifo(Path::ToBytes(pipe), 0600), 0);
    ASSERT_EQ(::symlink("track.mp3", Path::ToBytes(link)), 0);
    for (const QString& out : {track, link, pipe, scratch.Path()})
        EXPECT_EQ(SaveTrackArtwork(track, out), 1) << out.toStdString();
    ASSERT_EQ(::link(Path::ToBytes(track), Path::ToBytes(name)), 0);
    EXPECT_EQ(SaveTrackArtwork(track, name), 1);
    EXPECT_EQ(ReadFile(track), content);
    EXPECT_EQ(ListFolder(scratch.Path())->size(), 4U) << "nothing is left beside them";
}
