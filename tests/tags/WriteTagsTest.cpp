#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <utility>
#include <vector>

namespace {

/// What an independent reader sees in each file.
std::vector<QJsonObject> Inspect(const QStringList& paths) {
    QProcess reader;
    reader.start(QStringLiteral(TRACKDECK_ID3_FRAMES), paths);
    EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0)
        << reader.readAllStandardError().toStdString();
    std::vector<QJsonObject> files;
    while (reader.canReadLine())
        files.push_back(QJsonDocument::fromJson(reader.readLine()).object());
    EXPECT_EQ(files.size(), static_cast<std::size_t>(paths.size()));
    files.resize(static_cast<std::size_t>(paths.size()));
    return files;
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

/// Frames of text as they are read, but for their length.
constexpr std::pair<const char*, QString CTrackInfo::*> kTexts[] = {
    {"TALB", &CTrackInfo::m_strAlbum}, {"TPE1", &CTrackInfo::m_strArtist},
    {"TBPM", &CTrackInfo::m_strBPM},   {"TCOM", &CTrackInfo::m_strComposer},
    {"TIT2", &CTrackInfo::m_strTitle}, {"TRCK", &CTrackInfo::m_strTrackNumber},
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

/// A copy of a music file, and what the reader saw in it before and after an edit.
struct Edited {
    QString name;
    QString path;
    QJsonObject before;
    QJsonObject after;

    [[nodiscard]] QJsonValue After(const char* key) const { return after[QLatin1StringView(key)]; }
};

/// Copies the files and lets `edit` change them. All of them have the same sound afterwards.
std::vector<Edited> Edit(const ScratchFolder& scratch, std::initializer_list<const char*> names,
                         const std::function<void(const QString&)>& edit) {
    QStringList paths;
    for (const char* name : names)
        paths += scratch.Write(QString::fromLatin1(name),
                               ReadFile(MediaFile(QString::fromLatin1(name))));
    const std::vector<QJsonObject> before = Inspect(paths);
    for (const QString& path : paths)
        edit(path);
    const std::vector<QJsonObject> after = Inspect(paths);
    std::vector<Edited> files;
    for (std::size_t i = 0; i < names.size(); ++i) {
        files.push_back({QString::fromLatin1(names.begin()[i]), paths[static_cast<qsizetype>(i)],
                         before[i], after[i]});
        EXPECT_EQ(after[i][QStringLiteral("sound")], before[i][QStringLiteral("sound")])
            << names.begin()[i];
    }
    return files;
}

} // namespace

TEST(WriteTagsTest, KeepsOtherFramesAndTheSound) {
    const ScratchFolder scratch;
    std::map<QString, CTrackInfo> read;
    std::map<QString, CTrackInfo> written;
    const auto files = Edit(
        scratch,
        {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23.aac", "lame-v1.mp3", "untagged.mp3",
         "untagged.aac", "ffmpeg-v23-v1.mp3", "ffmpeg-v24-v1.mp3", "lame-v23-v1-picture.mp3",
         "mutagen-v24-utf16.mp3", "id3lib-v23-utf16-unsync.mp3", "lame-v23-utf16.mp3"},
        [&](const QString& path) {
            CTrackInfo info = ReadInfo(path);
            read[path] = info;
            info.m_strAlbum = QStringLiteral(u"Gr\u00FC\u00DFe \u041F\u0440\u0438");
            info.m_strArtist = QStringLiteral(u"\u00FF\u00FE plain");
            info.m_strGenre = QStringLiteral("Comedy");
            info.m_strYear.clear();
            info.m_nLengthMs = 61000;
            EXPECT_EQ(WriteTrackTags(path, info, 0), 0);
            info.m_strLength = QStringLiteral("01:00");
            if (info.m_strSize.isEmpty())
                info.m_strSize = QStringLiteral("0 B");
            written[path] = info;
        });
    for (const Edited& file : files) {
        SCOPED_TRACE(file.name.toStdString());
        const CTrackInfo& info = written[file.path];
        for (const auto& [id, field] : kTexts) {
            const QString text = read[file.path].*field;
            EXPECT_TRUE(file.before[QStringLiteral("version")] == 0 ||
                        (Frame(file.before, id).contains(text) && !text.isEmpty()) ||
                        (Frame(file.before, id).isEmpty() && text.isEmpty()))
                << id;
        }
        const int version = file.name.contains(QStringLiteral("v24")) ? 4 : 3;
        EXPECT_EQ(file.After("version").toInt(), version);
        EXPECT_EQ(OtherFrames(file.after), OtherFrames(file.before));
        EXPECT_EQ(file.After("id3v1").toString().size(), 128);
        EXPECT_TRUE(Frame(file.after, "TALB").contains(info.m_strAlbum));
        EXPECT_TRUE(Frame(file.after, "TPE1").contains(info.m_strArtist));
        EXPECT_TRUE(Frame(file.after, "TCON").contains(QStringLiteral("(57)")));
        EXPECT_TRUE(HasEmptyFrame(file.path, version == 4 ? "TDRC" : "TYER"));
        EXPECT_EQ(ReadInfo(file.path), info);
    }
}

TEST(WriteTagsTest, LeavesFramesThatReadTheSame) {
    const ScratchFolder scratch;
    const auto save = [](const QString& path) {
        EXPECT_EQ(WriteTrackTags(path, ReadInfo(path), 0), 0);
    };
    for (const Edited& file :
         Edit(scratch, {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23-utf16-v1.mp3"}, save))
        EXPECT_EQ(file.After("frames"), file.before[QStringLiteral("frames")])
            << file.name.toStdString();
    const auto shorten = [](const QString& path) {
        CTrackInfo info = ReadInfo(path);
        info.m_strTitle = QStringLiteral("Short");
        EXPECT_EQ(WriteTrackTags(path, info, 0), 0);
    };
    for (const Edited& file : Edit(scratch, {"mutagen-v23.mp3"}, shorten))
        EXPECT_FALSE(Frame(file.after, "TIT2").contains(QStringLiteral("thirty")));
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
    CTrackInfo info;
    info.m_strTitle = QStringLiteral("Only this");
    const auto rebuild = [&](const QString& path) { EXPECT_EQ(WriteTrackTags(path, info, 1), 0); };
    for (const Edited& file :
         Edit(scratch, {"mutagen-v23.mp3", "mutagen-v24-utf16.mp3"}, rebuild)) {
        EXPECT_EQ(OtherFrames(file.after), QJsonObject());
        EXPECT_TRUE(HasEmptyFrame(file.path, "TALB"));
        EXPECT_EQ(ReadInfo(file.path).m_strTitle, info.m_strTitle);
        EXPECT_EQ(ReadInfo(file.path).m_strArtist, QString());
    }
}

TEST(WriteTagsTest, Id3v1KeepsItsCommentAndWhatDidNotChange) {
    const ScratchFolder scratch;
    const QString path = scratch.Write(QStringLiteral("lame-v1.mp3"),
                                       ReadFile(MediaFile(QStringLiteral("lame-v1.mp3"))));
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
    const auto write = [&](const QString& path) { EXPECT_EQ(WriteTrackArtwork(path, jpeg), 0); };
    for (const Edited& file :
         Edit(scratch, {"mutagen-v23.mp3", "mutagen-v24.mp3", "untagged.mp3", "untagged.aac"},
              write)) {
        EXPECT_EQ(ReadTrackArtwork(file.path), ReadFile(jpeg)) << file.name.toStdString();
        const QString frame = Frame(file.after, "APIC:Cover Inserted by Veltria Track Deck");
        EXPECT_TRUE(frame.contains(QStringLiteral("mime='image/jpeg'")));
        EXPECT_TRUE(frame.contains(QStringLiteral("type=<PictureType.COMPOSER: 11>")))
            << frame.left(200).toStdString();
        EXPECT_TRUE(Frame(file.after, "APIC:front").isEmpty());
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
    CTrackInfo info;
    const auto write = [&](const QString& path) {
        info = ReadInfo(path);
        EXPECT_EQ(WriteTrackArtwork(path, MediaFile(QStringLiteral("small.jpg"))), 0);
        EXPECT_EQ(ReadInfo(path), info);
    };
    for (const Edited& file : Edit(scratch, {"lame-v1.mp3"}, write)) {
        EXPECT_EQ(file.After("id3v1"), file.before[QStringLiteral("id3v1")]);
        for (const auto& [id, field] : kTexts)
            EXPECT_TRUE(Frame(file.after, id).contains(info.*field)) << id;
        EXPECT_TRUE(Frame(file.after, "TCON").contains(QStringLiteral("(17)")));
    }
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
    const std::pair<const char*, QByteArray> rows[] = {
        {"one frame alone", lookalike},
        {"empty file", QByteArray()},
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
    for (const auto& [what, content] : rows) {
        const QString path = scratch.Write(QStringLiteral("file.mp3"), content);
        EXPECT_NE(WriteTrackTags(path, info, 0), 0) << what;
        EXPECT_EQ(ReadFile(path), content) << what;
    }
    EXPECT_NE(WriteTrackTags(scratch.Write(QStringLiteral("a.m4a"), Mp3Sound()), info, 0), 0);
    EXPECT_NE(WriteTrackTags(scratch.File(QStringLiteral("missing.mp3")), info, 0), 0);
}
