#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

/// What an independent reader sees in a file.
QJsonObject Inspect(const QString& path) {
    QProcess reader;
    reader.start(QStringLiteral(TRACKDECK_ID3_FRAMES), {path});
    EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0)
        << reader.readAllStandardError().toStdString();
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

/// The frames that a save does not write.
QJsonObject OtherFrames(const QJsonObject& inspected) {
    QJsonObject frames = inspected[QStringLiteral("frames")].toObject();
    for (const char* id :
         {"TALB", "TPE1", "TBPM", "TCOM", "TLEN", "TSIZ", "TIT2", "TRCK", "TYER", "TDRC", "TCON"})
        frames.remove(QLatin1StringView(id));
    return frames;
}

QString Frame(const QJsonObject& inspected, const char* key) {
    return inspected[QStringLiteral("frames")].toObject()[QLatin1StringView(key)].toString();
}

/// A text frame without text, which the independent reader passes over.
bool HasEmptyFrame(const QString& path, const QByteArray& id) {
    return ReadFile(path).contains(id + QByteArray("\0\0\0\1\0\0\0", 7));
}

CTrackInfo ReadInfo(const QString& path) {
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(path, info), 0);
    return info;
}

QString CopyOf(const ScratchFolder& scratch, const QString& name) {
    return scratch.Write(name, ReadFile(MediaFile(name)));
}

} // namespace

TEST(WriteTagsTest, KeepsOtherFramesAndTheSound) {
    struct {
        const char* name;
        int version;
    } const rows[] = {{"mutagen-v23.mp3", 3},
                      {"mutagen-v24.mp3", 4},
                      {"mutagen-v23.aac", 3},
                      {"lame-v1.mp3", 3},
                      {"untagged.mp3", 3},
                      {"untagged.aac", 3},
                      {"ffmpeg-v23-v1.mp3", 3},
                      {"ffmpeg-v24-v1.mp3", 4},
                      {"lame-v23-v1-picture.mp3", 3},
                      {"mutagen-v24-utf16.mp3", 4},
                      {"id3lib-v23-utf16-unsync.mp3", 3}};
    const ScratchFolder scratch;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QString path = CopyOf(scratch, QString::fromLatin1(row.name));
        const QJsonObject before = Inspect(path);
        CTrackInfo info = ReadInfo(path);
        info.m_strAlbum = QStringLiteral(u"Gr\u00FC\u00DFe \u041F\u0440\u0438\u0432\u0435\u0442");
        info.m_strArtist = QStringLiteral(u"\u00FF\u00FE plain");
        info.m_strGenre = QStringLiteral("Comedy");
        info.m_strYear.clear();
        info.m_nLengthMs = 61000;
        ASSERT_EQ(WriteTrackTags(path, info, 0), 0);

        const QJsonObject after = Inspect(path);
        EXPECT_EQ(after[QStringLiteral("version")].toInt(), row.version);
        EXPECT_EQ(after[QStringLiteral("sound")], before[QStringLiteral("sound")]);
        EXPECT_EQ(OtherFrames(after), OtherFrames(before));
        EXPECT_EQ(after[QStringLiteral("id3v1")].toString().size(), 128);
        EXPECT_TRUE(Frame(after, "TALB").contains(info.m_strAlbum));
        EXPECT_TRUE(Frame(after, "TPE1").contains(info.m_strArtist));
        EXPECT_TRUE(Frame(after, "TCON").contains(QStringLiteral("(57)")));
        EXPECT_TRUE(HasEmptyFrame(path, row.version == 4 ? "TDRC" : "TYER"));
        info.m_strLength = QStringLiteral("01:00");
        if (info.m_strSize.isEmpty())
            info.m_strSize = QStringLiteral("0 B");
        EXPECT_EQ(ReadInfo(path), info);
    }
}

TEST(WriteTagsTest, LeavesFramesThatReadTheSame) {
    const ScratchFolder scratch;
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23-utf16-v1.mp3"}) {
        const QString path = CopyOf(scratch, QString::fromLatin1(name));
        const QJsonObject before = Inspect(path);
        EXPECT_EQ(WriteTrackTags(path, ReadInfo(path), 0), 0);
        EXPECT_EQ(Inspect(path)[QStringLiteral("frames")], before[QStringLiteral("frames")])
            << name;
    }
    const QString path = scratch.File(QStringLiteral("mutagen-v23.mp3"));
    CTrackInfo info = ReadInfo(path);
    info.m_strTitle = QStringLiteral("Short");
    EXPECT_EQ(WriteTrackTags(path, info, 0), 0);
    EXPECT_FALSE(Frame(Inspect(path), "TIT2").contains(QStringLiteral("thirty")));
}

TEST(WriteTagsTest, FlagsAndOldVersionsStay) {
    Id3v2Tag tag;
    tag.version = 3;
    tag.frames = {{"TIT2", 0xC020, QByteArray("g\0Title", 7)}, // in group 'g'
                  {"XABC", 0x6080, "\x12\x34 compressed"},
                  {"TALB", 0x4000, EightBit("Album")}};
    const ScratchFolder scratch;
    const QString path =
        scratch.Write(QStringLiteral("flags.mp3"), AssembleId3v2Tag(tag) + Mp3Sound());
    CTrackInfo info = ReadInfo(path);
    EXPECT_EQ(info.m_strTitle, QStringLiteral("Title"));
    info.m_strAlbum = QStringLiteral("Other");
    ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, tag.frames[0])));
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, tag.frames[1])));
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, {"TALB", 0x4000, EightBit("Other")})));

    const FrameList frames = {{"TT2", EightBit("Title")}, {"XYZ", "unknown"}};
    const QString old = scratch.Write(QStringLiteral("old.mp3"), TagBytes(2, frames) + Mp3Sound());
    info.m_strTitle = QStringLiteral(u"\u041F\u0440\u0438");
    ASSERT_EQ(WriteTrackTags(old, info, 0), 0);
    EXPECT_EQ(ReadInfo(old).m_strTitle, info.m_strTitle);
    EXPECT_EQ(ReadInfo(old).m_strAlbum, QStringLiteral("Other"));
    EXPECT_EQ(ReadFile(old).mid(3, 1), "\2");
    EXPECT_TRUE(ReadFile(old).contains(AssembleId3Frame(2, {"XYZ", 0, "unknown"})));
}

TEST(WriteTagsTest, BuildsTheTagFromNothing) {
    const ScratchFolder scratch;
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24-utf16.mp3"}) {
        const QString path = CopyOf(scratch, QString::fromLatin1(name));
        const QJsonObject before = Inspect(path);
        CTrackInfo info;
        info.m_strTitle = QStringLiteral("Only this");
        ASSERT_EQ(WriteTrackTags(path, info, 1), 0);
        const QJsonObject after = Inspect(path);
        EXPECT_EQ(OtherFrames(after), QJsonObject());
        EXPECT_TRUE(HasEmptyFrame(path, "TALB"));
        EXPECT_EQ(after[QStringLiteral("sound")], before[QStringLiteral("sound")]);
        EXPECT_EQ(ReadInfo(path).m_strTitle, info.m_strTitle);
        EXPECT_EQ(ReadInfo(path).m_strArtist, QString());
    }
}

TEST(WriteTagsTest, Id3v1KeepsItsCommentAndWhatDidNotChange) {
    const ScratchFolder scratch;
    const QString path = CopyOf(scratch, QStringLiteral("lame-v1.mp3"));
    const QByteArray before = ReadFile(path).last(128);
    CTrackInfo info = ReadInfo(path);
    info.m_strArtist = QStringLiteral(u"caf\u00E9 \u041F, of more than thirty characters");
    info.m_strTrackNumber = QStringLiteral("9/12");
    ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
    QByteArray expected = before;
    expected.replace(33, 30, QByteArray("caf\xE9 ?, of more than thirty characters").first(30));
    expected[126] = 9;
    EXPECT_EQ(ReadFile(path).last(128), expected);
}

TEST(WriteTagsTest, PutsArtworkIntoTheFirstPicture) {
    const ScratchFolder scratch;
    const QString jpeg = MediaFile(QStringLiteral("large.jpg"));
    for (const char* name :
         {"mutagen-v23.mp3", "mutagen-v24.mp3", "untagged.mp3", "untagged.aac"}) {
        SCOPED_TRACE(name);
        const QString path = CopyOf(scratch, QString::fromLatin1(name));
        const QJsonObject before = Inspect(path);
        ASSERT_EQ(WriteTrackArtwork(path, jpeg), 0);
        EXPECT_EQ(ReadTrackArtwork(path), ReadFile(jpeg));
        const QJsonObject after = Inspect(path);
        EXPECT_EQ(after[QStringLiteral("sound")], before[QStringLiteral("sound")]);
        const QString frame = Frame(after, "APIC:Cover Inserted by Veltria Track Deck");
        EXPECT_TRUE(frame.contains(QStringLiteral("mime='image/jpeg'")));
        EXPECT_TRUE(frame.contains(QStringLiteral("type=<PictureType.COMPOSER: 11>")))
            << frame.left(200).toStdString();
        EXPECT_TRUE(Frame(after, "APIC:front").isEmpty());
    }
    const QString old = scratch.Write(QStringLiteral("old.mp3"),
                                      TagBytes(2, {{"TT2", EightBit("Title")}}) + Mp3Sound());
    EXPECT_EQ(WriteTrackArtwork(old, jpeg), 0);
    EXPECT_EQ(ReadTrackArtwork(old), ReadFile(jpeg));
    EXPECT_NE(WriteTrackArtwork(old, QString()), 0);
    EXPECT_NE(WriteTrackArtwork(old, scratch.File(QStringLiteral("missing.jpg"))), 0);
    EXPECT_NE(WriteTrackArtwork(QString(), jpeg), 0);
}

TEST(WriteTagsTest, ArtworkBringsTheTextsOfId3v1Along) {
    const ScratchFolder scratch;
    const QString path = CopyOf(scratch, QStringLiteral("lame-v1.mp3"));
    const CTrackInfo info = ReadInfo(path);
    const QByteArray id3v1 = ReadFile(path).last(128);
    ASSERT_EQ(WriteTrackArtwork(path, MediaFile(QStringLiteral("small.jpg"))), 0);
    EXPECT_EQ(ReadFile(path).last(128), id3v1);
    EXPECT_EQ(ReadInfo(path), info);
    const QJsonObject inspected = Inspect(path);
    EXPECT_TRUE(Frame(inspected, "TIT2").contains(info.m_strTitle));
    EXPECT_TRUE(Frame(inspected, "TPE1").contains(info.m_strArtist));
    EXPECT_TRUE(Frame(inspected, "TALB").contains(info.m_strAlbum));
    EXPECT_TRUE(Frame(inspected, "TCON").contains(QStringLiteral("(17)")));
    EXPECT_TRUE(Frame(inspected, "TRCK").contains(info.m_strTrackNumber));
}

TEST(WriteTagsTest, BuildsADamagedTagAnewFromNothing) {
    QByteArray damaged = TagBytes(3, {{"TIT2", EightBit("Old")}, {"TALB", EightBit("Album")}});
    damaged[14] = '\x7F'; // the first frame seems to be 2 GB long
    const ScratchFolder scratch;
    const QString path = scratch.Write(QStringLiteral("damaged.mp3"), damaged + Mp3Sound());
    CTrackInfo info;
    info.m_strTitle = QStringLiteral("New");
    EXPECT_NE(WriteTrackTags(path, info, 0), 0);
    EXPECT_EQ(ReadFile(path), damaged + Mp3Sound());
    EXPECT_EQ(WriteTrackTags(path, info, 1), 0);
    EXPECT_EQ(ReadInfo(path).m_strTitle, info.m_strTitle);
    EXPECT_TRUE(ReadFile(path).chopped(128).endsWith(Mp3Sound()));

    for (const QByteArray& unsure : {damaged, "ID3\5" + damaged.sliced(4) + Mp3Sound()}) {
        const QString other = scratch.Write(QStringLiteral("unsure.mp3"), unsure);
        EXPECT_NE(WriteTrackTags(other, info, 1), 0);
        EXPECT_EQ(ReadFile(other), unsure);
    }
}

TEST(WriteTagsTest, RefusesWhatItDoesNotUnderstand) {
    const QByteArray frame = AssembleId3Frame(3, {"TIT2", 0, EightBit("Title")});
    const auto tag = [](QByteArray body, char version = 3, char flags = 0) {
        const QByteArray header = QByteArray("ID3") + version + '\0' + flags;
        return header + QByteArray("\0\0\0", 3) + static_cast<char>(body.size()) + body +
               Mp3Sound();
    };
    Id3v2Tag encrypted;
    encrypted.version = 3;
    encrypted.frames = {{"TALB", 0x0040, "\1secret"}};
    // What looks like an ADTS frame of 100 bytes ends where the search for sound ends.
    QByteArray lookalike(70'000, '\0');
    lookalike.replace(65536 - 100, 7, QByteArray("\xFF\xF1\x50\x80\x0C\x80\xFC", 7));
    struct {
        const char* what;
        QByteArray content;
    } const rows[] = {
        {"one frame alone", lookalike},
        {"empty file", QByteArray()},
        {"no sound", QByteArray(100'000, '\0')},
        {"another kind", "RIFF\x24\x08\0\0WAVEfmt " + QByteArray(1000, 'x')},
        {"unknown version", tag(frame, 5)},
        {"compressed tag", tag(frame, 2, 0x40)},
        {"frame past the tag", tag(frame.chopped(2))},
        {"bytes in the padding", tag(frame + QByteArray(10, '\0') + "x")},
        {"tag past the file", TagBytes(3, {{"PRIV", QByteArray(1000, 'x')}}).first(500)},
        {"encrypted frame of ours", AssembleId3v2Tag(encrypted) + Mp3Sound()},
    };
    const ScratchFolder scratch;
    CTrackInfo info;
    info.m_strTitle = QStringLiteral("New");
    for (const auto& row : rows) {
        const QString path = scratch.Write(QStringLiteral("file.mp3"), row.content);
        EXPECT_NE(WriteTrackTags(path, info, 0), 0) << row.what;
        EXPECT_EQ(ReadFile(path), row.content) << row.what;
    }
    EXPECT_NE(WriteTrackTags(scratch.Write(QStringLiteral("a.m4a"), Mp3Sound()), info, 0), 0);
    EXPECT_NE(WriteTrackTags(scratch.File(QStringLiteral("missing.mp3")), info, 0), 0);
}
