#include "platform/Files.h"
#include "tests/fixtures/InterruptedWrite.h"
#include "tests/tags/TagBytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

/// What an independent reader sees in each file.
QList<QJsonObject> Inspect(const QStringList& paths) {
    QProcess reader;
    reader.start(QStringLiteral(TRACKDECK_ID3_FRAMES), paths);
    EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0)
        << reader.readAllStandardError().toStdString();
    QList<QJsonObject> files;
    while (reader.canReadLine())
        files += QJsonDocument::fromJson(reader.readLine()).object();
    EXPECT_EQ(files.size(), paths.size());
    files.resize(paths.size());
    return files;
}

/// The frames that a save does not write.
QJsonObject OtherFrames(const QJsonObject& inspected) {
    QJsonObject frames = inspected[u"frames"].toObject();
    for (const char* id :
         {"TALB", "TPE1", "TBPM", "TCOM", "TLEN", "TSIZ", "TIT2", "TRCK", "TYER", "TDRC", "TCON"})
        frames.remove(QLatin1StringView(id));
    return frames;
}

QString Frame(const QJsonObject& inspected, const char* key) {
    return inspected[u"frames"].toObject()[QLatin1StringView(key)].toString();
}

/// Frames of text as they are read, but for their length.
constexpr std::pair<const char*, QString CTrackInfo::*> kTexts[] = {
    {"TALB", &CTrackInfo::m_strAlbum}, {"TPE1", &CTrackInfo::m_strArtist},
    {"TBPM", &CTrackInfo::m_strBPM},   {"TCOM", &CTrackInfo::m_strComposer},
    {"TIT2", &CTrackInfo::m_strTitle}, {"TRCK", &CTrackInfo::m_strTrackNumber}};

/// A text frame without text, which the independent reader passes over.
bool HasEmptyFrame(const QString& path, const QByteArray& id) {
    return ReadFile(path).contains(id + QByteArray("\0\0\0\1\0\0\0", 7));
}

/// A music file, and what the reader saw in it before and after an edit.
struct Edited {
    QString path;
    QJsonObject before;
    QJsonObject after;
};

struct WriteTagsTest : ::testing::Test {
    WriteTagsTest() { m_info.m_strTitle = "New title"; }

    [[nodiscard]] QString Write(const char* name, const QByteArray& content) const {
        return m_scratch.Write(QString::fromLatin1(name), content);
    }
    [[nodiscard]] QString Copy(const char* name) const {
        return Write(name, ReadFile(MediaFile(QString::fromLatin1(name))));
    }
    /// Copies files and lets `edit` change them. All of them have the same sound afterwards.
    [[nodiscard]] std::vector<Edited> Edit(std::initializer_list<const char*> names,
                                           const std::function<void(const QString&)>& edit) const {
        QStringList paths;
        for (const char* name : names)
            paths += Copy(name);
        const QList<QJsonObject> before = Inspect(paths);
        for (const QString& path : paths)
            edit(path);
        const QList<QJsonObject> after = Inspect(paths);
        std::vector<Edited> files;
        for (qsizetype i = 0; i < paths.size(); ++i) {
            files.push_back({paths[i], before[i], after[i]});
            EXPECT_EQ(after[i][u"sound"], before[i][u"sound"]) << paths[i].toStdString();
        }
        return files;
    }

    const ScratchFolder m_scratch;
    CTrackInfo m_info; ///< to be written
};

} // namespace

TEST_F(WriteTagsTest, KeepsOtherFramesAndTheSound) {
    std::map<QString, CTrackInfo> read;
    std::map<QString, CTrackInfo> written;
    const auto files = Edit(
        {"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23.aac", "lame-v1.mp3", "untagged.mp3",
         "untagged.aac", "ffmpeg-v23-v1.mp3", "ffmpeg-v24-v1.mp3", "lame-v23-v1-picture.mp3",
         "mutagen-v24-utf16.mp3", "id3lib-v23-utf16-unsync.mp3", "lame-v23-utf16.mp3"},
        [&](const QString& path) {
            CTrackInfo info = ReadInfo(path);
            read[path] = info;
            info.m_strAlbum = QStringLiteral(u"Gr\u00FC\u00DFe \u041F\u0440\u0438");
            info.m_strArtist = QStringLiteral(u"\u00FF\u00FE plain");
            info.m_strGenre = "Comedy";
            info.m_strYear.clear();
            info.m_nLengthMs = 61000;
            EXPECT_EQ(WriteTrackTags(path, info, 0), 0);
            info.m_strLength = "01:00";
            if (info.m_strSize.isEmpty())
                info.m_strSize = "0 B";
            written[path] = info;
        });
    for (const Edited& file : files) {
        SCOPED_TRACE(file.path.toStdString());
        const CTrackInfo& info = written[file.path];
        const int version = file.before[u"version"].toInt();
        for (const auto& [id, field] : kTexts) {
            const QString text = read[file.path].*field;
            const QString frame = Frame(file.before, id);
            EXPECT_TRUE(version == 0 || (frame.contains(text) && frame.isEmpty() == text.isEmpty()))
                << id;
        }
        EXPECT_EQ(file.after[u"version"].toInt(), std::max(version, 3));
        EXPECT_EQ(OtherFrames(file.after), OtherFrames(file.before));
        EXPECT_EQ(file.after[u"id3v1"].toString().size(), 128);
        EXPECT_TRUE(Frame(file.after, "TALB").contains(info.m_strAlbum));
        EXPECT_TRUE(Frame(file.after, "TPE1").contains(info.m_strArtist));
        EXPECT_TRUE(Frame(file.after, "TCON").contains("(57)"));
        EXPECT_TRUE(HasEmptyFrame(file.path, version == 4 ? "TDRC" : "TYER"));
        EXPECT_EQ(ReadInfo(file.path), info);
    }
}

TEST_F(WriteTagsTest, LeavesFramesThatReadTheSame) {
    const auto save = [](const QString& path) {
        EXPECT_EQ(WriteTrackTags(path, ReadInfo(path), 0), 0);
    };
    for (const Edited& file :
         Edit({"mutagen-v23.mp3", "mutagen-v24.mp3", "mutagen-v23-utf16-v1.mp3"}, save))
        EXPECT_EQ(file.after[u"frames"], file.before[u"frames"]) << file.path.toStdString();
}

TEST_F(WriteTagsTest, FlagsAndOldVersionsStay) {
    Id3v2Tag tag;
    tag.version = 3;
    tag.frames = {{"TIT2", 0xC020, QByteArray("g\0Title", 7)}, // in group 'g'
                  {"XABC", 0x6080, "\x12\x34 compressed"},
                  {"TALB", 0x4000, EightBit("Album")}};
    const QString path = Write("flags.mp3", AssembleId3v2Tag(tag) + Mp3Sound());
    CTrackInfo info = ReadInfo(path);
    EXPECT_EQ(info.m_strTitle, "Title");
    info.m_strAlbum = "Other";
    ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, tag.frames[0])));
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, tag.frames[1])));
    EXPECT_TRUE(ReadFile(path).contains(AssembleId3Frame(3, {"TALB", 0x4000, EightBit("Other")})));

    const FrameList frames = {{"TT2", EightBit("Title")}, {"XYZ", "unknown"}};
    const QString old = Write("old.mp3", TagBytes(2, frames) + Mp3Sound());
    info.m_strTitle = QStringLiteral(u"\u041F\u0440\u0438");
    ASSERT_EQ(WriteTrackTags(old, info, 0), 0);
    EXPECT_EQ(ReadInfo(old).m_strTitle, info.m_strTitle);
    EXPECT_EQ(ReadInfo(old).m_strAlbum, "Other");
    EXPECT_EQ(ReadFile(old).mid(3, 1), "\2");
    EXPECT_TRUE(ReadFile(old).contains(AssembleId3Frame(2, {"XYZ", 0, "unknown"})));
}

TEST_F(WriteTagsTest, BuildsTheTagFromNothing) {
    const auto rebuild = [&](const QString& path) {
        EXPECT_EQ(WriteTrackTags(path, m_info, 1), 0);
    };
    for (const Edited& file : Edit({"mutagen-v23.mp3", "mutagen-v24-utf16.mp3"}, rebuild)) {
        EXPECT_EQ(OtherFrames(file.after), QJsonObject());
        EXPECT_TRUE(HasEmptyFrame(file.path, "TALB"));
        EXPECT_EQ(ReadInfo(file.path).m_strTitle, m_info.m_strTitle);
        EXPECT_EQ(ReadInfo(file.path).m_strArtist, QString());
    }
}

TEST_F(WriteTagsTest, Id3v1KeepsItsCommentAndWhatDidNotChange) {
    const QString path = Copy("lame-v1.mp3");
    QByteArray expected = ReadFile(path).last(128);
    CTrackInfo info = ReadInfo(path);
    info.m_strArtist = QStringLiteral(u"caf\u00E9 \u041F, of more than thirty characters");
    info.m_strTrackNumber = "9/12";
    ASSERT_EQ(WriteTrackTags(path, info, 0), 0);
    expected.replace(33, 30, QByteArray("caf\xE9 ?, of more than thirty characters").first(30));
    expected[126] = 9;
    EXPECT_EQ(ReadFile(path).last(128), expected);
}

TEST_F(WriteTagsTest, PutsArtworkIntoTheFirstPicture) {
    const QString jpeg = MediaFile("large.jpg");
    const auto write = [&](const QString& path) { EXPECT_EQ(WriteTrackArtwork(path, jpeg), 0); };
    for (const Edited& file :
         Edit({"mutagen-v23.mp3", "mutagen-v24.mp3", "untagged.mp3", "untagged.aac"}, write)) {
        EXPECT_EQ(ReadTrackArtwork(file.path), ReadFile(jpeg)) << file.path.toStdString();
        const QString frame = Frame(file.after, "APIC:Cover Inserted by Veltria Track Deck");
        EXPECT_TRUE(frame.contains("mime='image/jpeg'"));
        EXPECT_TRUE(frame.contains("type=<PictureType.COMPOSER: 11>"))
            << frame.left(200).toStdString();
        EXPECT_TRUE(Frame(file.after, "APIC:front").isEmpty());
    }
    const QString old = Write("old.mp3", TagBytes(2, {{"TT2", EightBit("Title")}}) + Mp3Sound());
    EXPECT_EQ(WriteTrackArtwork(old, jpeg), 0);
    EXPECT_EQ(ReadTrackArtwork(old), ReadFile(jpeg));
    EXPECT_NE(WriteTrackArtwork(old, QString()), 0);
    EXPECT_NE(WriteTrackArtwork(old, m_scratch.File("missing.jpg")), 0);
    EXPECT_NE(WriteTrackArtwork(QString(), jpeg), 0);
}

TEST_F(WriteTagsTest, ArtworkBringsTheTextsOfId3v1Along) {
    CTrackInfo info;
    const auto write = [&](const QString& path) {
        info = ReadInfo(path);
        EXPECT_EQ(WriteTrackArtwork(path, MediaFile("small.jpg")), 0);
        EXPECT_EQ(ReadInfo(path), info);
    };
    for (const Edited& file : Edit({"lame-v1.mp3"}, write)) {
        EXPECT_EQ(file.after[u"id3v1"], file.before[u"id3v1"]);
        for (const auto& [id, field] : kTexts)
            EXPECT_TRUE(Frame(file.after, id).contains(info.*field)) << id;
        EXPECT_TRUE(Frame(file.after, "TCON").contains("(17)"));
    }
}

TEST_F(WriteTagsTest, BuildsADamagedTagAnewFromNothing) {
    QByteArray damaged = TagBytes(3, {{"TIT2", EightBit("Old")}, {"TALB", EightBit("Album")}});
    damaged[14] = '\x7F'; // the first frame seems to be 2 GB long
    const QString path = Write("damaged.mp3", damaged + Mp3Sound());
    EXPECT_NE(WriteTrackTags(path, m_info, 0), 0);
    EXPECT_EQ(ReadFile(path), damaged + Mp3Sound());
    EXPECT_EQ(WriteTrackTags(path, m_info, 1), 0);
    EXPECT_EQ(ReadInfo(path).m_strTitle, m_info.m_strTitle);
    EXPECT_TRUE(ReadFile(path).chopped(128).endsWith(Mp3Sound()));

    for (const QByteArray& unsure : {damaged, "ID3\5" + damaged.sliced(4) + Mp3Sound()}) {
        const QString other = Write("unsure.mp3", unsure);
        EXPECT_NE(WriteTrackTags(other, m_info, 1), 0);
        EXPECT_EQ(ReadFile(other), unsure);
    }
}

TEST_F(WriteTagsTest, RefusesWhatItDoesNotUnderstand) {
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
        {"encrypted frame of ours", AssembleId3v2Tag(encrypted) + Mp3Sound()}};
    for (const auto& [what, content] : rows) {
        const QString path = Write("file.mp3", content);
        EXPECT_NE(WriteTrackTags(path, m_info, 0), 0) << what;
        EXPECT_EQ(ReadFile(path), content) << what;
    }
    EXPECT_NE(WriteTrackTags(Write("a.m4a", Mp3Sound()), m_info, 0), 0);
    EXPECT_NE(WriteTrackTags(m_scratch.File("missing.mp3"), m_info, 0), 0);
}

TEST_F(WriteTagsTest, AnInterruptedWriteLeavesTheOldOrTheNewFile) {
    for (const Fault fault : {Fault::Refuse, Fault::Kill}) {
        const QString path = Copy("mutagen-v23.mp3");
        const auto write = [&] { return WriteTrackTags(path, m_info, 0) == 0; };
        ExpectOldOrNewFile(path, write, fault);
    }
}

TEST_F(WriteTagsTest, AFullDiskLeavesTheOldFileAlone) {
    const QString path = Copy("mutagen-v23.mp3");
    const QByteArray old = ReadFile(path);
    ASSERT_EQ(WriteTrackTags(path, m_info, 0), 0);
    const rlim_t whole = ReadFile(path).size();
    WriteFile(path, old);
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{100}, rlim_t{70'000}, whole - 1}) {
        const int status = WaitFor(Fork([&] {
            // A file that may not grow on is the full disk of one process.
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limits{room, room};
            return ::setrlimit(RLIMIT_FSIZE, &limits) != 0 || WriteTrackTags(path, m_info, 0) == 0;
        }));
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kFailed) << room;
        EXPECT_EQ(ReadFile(path), old);
        EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 1U) << "nothing is left beside it";
    }
}
