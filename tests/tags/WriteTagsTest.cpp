#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

/// What an independent reader sees in a file.
struct Inspected {
    explicit Inspected(const QString& path) {
        QProcess reader;
        reader.start(QStringLiteral(TRACKDECK_ID3_FRAMES), {path});
        EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0)
            << reader.readAllStandardError().toStdString();
        const QJsonObject all = QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
        frames = otherFrames = all[QStringLiteral("frames")].toObject();
        for (const char* id : {"TALB", "TPE1", "TBPM", "TCOM", "TLEN", "TSIZ", "TIT2", "TRCK",
                               "TYER", "TDRC", "TCON"})
            otherFrames.remove(QLatin1StringView(id));
        sound = all[QStringLiteral("sound")].toString();
        id3v1 = all[QStringLiteral("id3v1")].toString();
        version = all[QStringLiteral("version")].toInt();
    }

    void ExpectText(const char* id, const QString& text) const {
        EXPECT_TRUE(frames[QLatin1StringView(id)].toString().contains(text)) << id;
    }

    QJsonObject frames;
    QJsonObject otherFrames; ///< those that a save does not write
    QString sound;
    QString id3v1;
    int version = 0;
};

/// A text frame without text, which the independent reader passes over.
bool HasEmptyFrame(const QString& path, const QByteArray& id) {
    return ReadFile(path).contains(id + QByteArray("\0\0\0\1\0\0\0", 7));
}

CTrackInfo ReadInfo(const QString& path) {
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(path, info), 0);
    return info;
}

QString CopyOf(const ScratchFolder& scratch, const char* name) {
    const QString file = QString::fromLatin1(name);
    return scratch.Write(file, ReadFile(MediaFile(file)));
}

} // namespace

TEST(WriteTagsTest, KeepsOtherFramesAndTheSound) {
    const ScratchFolder scratch;
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23.aac", "lame-v1.mp3",
                             "untagged.aac", "ffmpeg-v24-v1.mp3", "lame-v23-v1-picture.mp3",
                             "mutagen-v24-utf16.mp3", "id3lib-v23-utf16-unsync.mp3"}) {
        SCOPED_TRACE(name);
        const int version = QByteArray(name).contains("v24") ? 4 : 3;
        const QString path = CopyOf(scratch, name);
        const Inspected before(path);
        CTrackInfo info = ReadInfo(path);
        info.m_strAlbum = QStringLiteral(u"Gr\u00FC\u00DFe \u041F\u0440\u0438\u0432\u0435\u0442");
        info.m_strArtist = QStringLiteral(u"\u00FF\u00FE plain");
        info.m_strGenre = QStringLiteral("Comedy");
        info.m_strYear.clear();
        info.m_nLengthMs = 61000;
        ASSERT_EQ(WriteTrackTags(path, info, 0), 0);

        const Inspected after(path);
        EXPECT_EQ(after.version, version);
        EXPECT_EQ(after.sound, before.sound);
        EXPECT_EQ(after.otherFrames, before.otherFrames);
        EXPECT_EQ(after.id3v1.size(), 128);
        after.ExpectText("TALB", info.m_strAlbum);
        after.ExpectText("TPE1", info.m_strArtist);
        after.ExpectText("TCON", QStringLiteral("(57)"));
        EXPECT_TRUE(HasEmptyFrame(path, version == 4 ? "TDRC" : "TYER"));
        info.m_strLength = QStringLiteral("01:00");
        if (info.m_strSize.isEmpty())
            info.m_strSize = QStringLiteral("0 B");
        EXPECT_EQ(ReadInfo(path), info);
    }
}

TEST(WriteTagsTest, LeavesFramesThatReadTheSame) {
    const ScratchFolder scratch;
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23-utf16-v1.mp3"}) {
        const QString path = CopyOf(scratch, name);
        const QJsonObject before = Inspected(path).frames;
        CTrackInfo info = ReadInfo(path);
        EXPECT_EQ(WriteTrackTags(path, info, 0), 0);
        EXPECT_EQ(Inspected(path).frames, before) << name;

        info.m_strTitle = QStringLiteral("Only this");
        ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
        QJsonObject after = Inspected(path).frames;
        EXPECT_NE(after[QStringLiteral("TIT2")], before[QStringLiteral("TIT2")]);
        after[QStringLiteral("TIT2")] = before[QStringLiteral("TIT2")];
        EXPECT_EQ(after, before) << name;
    }
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
    EXPECT_EQ(info.m_strTitle, u"Title");
    info.m_strAlbum = QStringLiteral("Other");
    ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
    tag.frames[2].data = EightBit("Other");
    for (const Id3Frame& frame : tag.frames)
        EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, frame))) << frame.id.data();

    const FrameList frames = {{"TT2", EightBit("Title")}, {"XYZ", "unknown"}};
    const QString old = scratch.Write(QStringLiteral("old.mp3"), TagBytes(2, frames) + Mp3Sound());
    info.m_strTitle = QStringLiteral(u"\u041F\u0440\u0438");
    ASSERT_EQ(WriteTrackTags(old, info, 0), 0);
    EXPECT_EQ(ReadInfo(old).m_strTitle, info.m_strTitle);
    EXPECT_EQ(ReadInfo(old).m_strAlbum, u"Other");
    EXPECT_TRUE(ReadFile(old).startsWith("ID3\2"));
    EXPECT_TRUE(ReadFile(old).contains(AssembleId3Frame(2, {"XYZ", 0, "unknown"})));
}

TEST(WriteTagsTest, BuildsTheTagFromNothing) {
    const ScratchFolder scratch;
    CTrackInfo info;
    info.m_strTitle = QStringLiteral("Only this");
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24-utf16.mp3"}) {
        const QString path = CopyOf(scratch, name);
        const QString sound = Inspected(path).sound;
        ASSERT_EQ(WriteTrackTags(path, info, 1), 0);
        const Inspected after(path);
        EXPECT_EQ(after.otherFrames, QJsonObject());
        EXPECT_EQ(after.sound, sound);
        EXPECT_TRUE(HasEmptyFrame(path, "TALB"));
        EXPECT_EQ(ReadInfo(path).m_strTitle, info.m_strTitle);
        EXPECT_EQ(ReadInfo(path).m_strArtist, QString());
    }
}

TEST(WriteTagsTest, Id3v1KeepsItsCommentAndWhatDidNotChange) {
    const ScratchFolder scratch;
    const QString path = CopyOf(scratch, "lame-v1.mp3");
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
    for (const char* name : {"mutagen-v23.mp3", "mutagen-v24.mp3", "untagged.aac"}) {
        SCOPED_TRACE(name);
        const QString path = CopyOf(scratch, name);
        const QString sound = Inspected(path).sound;
        ASSERT_EQ(WriteTrackArtwork(path, jpeg), 0);
        EXPECT_EQ(ReadTrackArtwork(path), ReadFile(jpeg));
        const Inspected after(path);
        EXPECT_EQ(after.sound, sound);
        const char* const picture = "APIC:Cover Inserted by Veltria Track Deck";
        after.ExpectText(picture, QStringLiteral("mime='image/jpeg'"));
        after.ExpectText(picture, QStringLiteral("type=<PictureType.COMPOSER: 11>"));
        EXPECT_FALSE(after.frames.contains(QStringLiteral("APIC:front")));
    }
    const QString old = scratch.Write(QStringLiteral("old.mp3"),
                                      TagBytes(2, {{"TT2", EightBit("Title")}}) + Mp3Sound());
    EXPECT_EQ(WriteTrackArtwork(old, jpeg), 0);
    EXPECT_EQ(ReadTrackArtwork(old), ReadFile(jpeg));
    EXPECT_NE(WriteTrackArtwork(old, scratch.File(QStringLiteral("missing.jpg"))), 0);
    EXPECT_NE(WriteTrackArtwork(QString(), jpeg), 0);
}

TEST(WriteTagsTest, ArtworkBringsTheTextsOfId3v1Along) {
    const ScratchFolder scratch;
    const QString path = CopyOf(scratch, "lame-v1.mp3");
    const CTrackInfo info = ReadInfo(path);
    const QByteArray id3v1 = ReadFile(path).last(128);
    ASSERT_EQ(WriteTrackArtwork(path, MediaFile(QStringLiteral("small.jpg"))), 0);
    EXPECT_EQ(ReadFile(path).last(128), id3v1);
    WriteFile(path, ReadFile(path).chopped(128));
    EXPECT_EQ(ReadInfo(path), info);
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
        bool goesWithForce; ///< building the tag from nothing makes it whole
    } const rows[] = {
        {"one frame alone", lookalike, false},
        {"empty file", QByteArray(), false},
        {"no sound", QByteArray(100'000, '\0'), false},
        {"another kind", "RIFF\x24\x08\0\0WAVEfmt " + QByteArray(1000, 'x'), false},
        {"unknown version", tag(frame, 5), false},
        {"compressed tag", tag(frame, 2, 0x40), false},
        {"frame past the tag", tag(frame.chopped(2)), true},
        {"bytes in the padding", tag(frame + QByteArray(10, '\0') + "x"), true},
        {"tag past the file", TagBytes(3, {{"PRIV", QByteArray(1000, 'x')}}).first(500), false},
        {"encrypted frame of ours", AssembleId3v2Tag(encrypted) + Mp3Sound(), true},
    };
    const ScratchFolder scratch;
    CTrackInfo info;
    info.m_strTitle = QStringLiteral("New");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const QString path = scratch.Write(QStringLiteral("file.mp3"), row.content);
        EXPECT_NE(WriteTrackTags(path, info, 0), 0);
        EXPECT_EQ(ReadFile(path), row.content);
        EXPECT_EQ(WriteTrackTags(path, info, 1), row.goesWithForce ? 0 : 1);
        if (row.goesWithForce) {
            EXPECT_EQ(ReadInfo(path).m_strTitle, info.m_strTitle);
            EXPECT_TRUE(ReadFile(path).chopped(128).endsWith(Mp3Sound()));
        } else {
            EXPECT_EQ(ReadFile(path), row.content);
        }
    }
    EXPECT_NE(WriteTrackTags(scratch.Write(QStringLiteral("a.m4a"), Mp3Sound()), info, 0), 0);
    EXPECT_NE(WriteTrackTags(scratch.File(QStringLiteral("missing.mp3")), info, 0), 0);
}
