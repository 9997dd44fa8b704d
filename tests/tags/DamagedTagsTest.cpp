#include "tags/Id3Fields.h"
#include "tests/tags/TagBytes.h"

#include <QFile>
#include <QtEndian>

#include <random>
#include <set>

namespace {

/// A tag with frames that are read and others, in all forms of text.
QByteArray SmallTag(int version) {
    const bool old = version == 2;
    const QByteArray picture =
        old ? QByteArray("\0JPG\3\0picture", 13) : QByteArray("\0image/jpeg\0\3\0picture", 21);
    return TagBytes(version, {{old ? "TT2" : "TIT2", EightBit("A title")},
                              {old ? "TAL" : "TALB", QByteArray("\1\xFF\xFEG\0r\0\xFC\0", 9)},
                              {old ? "XYZ" : "XXYZ", "unknown"},
                              {old ? "TLE" : "TLEN", EightBit("185000")},
                              {old ? "TCO" : "TCON", EightBit("(17)")},
                              {old ? "PIC" : "APIC", picture}});
}

QByteArray Unsynchronised(QByteArray tag) {
    tag = tag.first(10) + Unsynchronise(tag.sliced(10));
    tag[5] = '\x80';
    tag[8] = static_cast<char>((tag.size() - 10) >> 7);
    tag[9] = static_cast<char>((tag.size() - 10) & 0x7F);
    return tag;
}

/// Where something begins in a tag: its size and flags, the frames, their sizes, flags and data.
std::set<qsizetype> Boundaries(const QByteArray& tag) {
    std::set<qsizetype> offsets = {0, 3, 5, 6, 10, tag.size()};
    const qsizetype header = tag[3] == 2 ? 6 : 10;
    const qsizetype size = tag[3] == 2 ? 3 : 4;
    const qsizetype lowByte = tag[3] == 2 ? 5 : 7; // all sizes in these tags fit it
    for (qsizetype frame = 10; frame + header < tag.size();
         frame += header + static_cast<unsigned char>(tag[frame + lowByte]))
        offsets.insert({frame, frame + size, frame + lowByte, frame + header - 2, frame + header,
                        frame + header + 1});
    return offsets;
}

std::vector<QByteArray> Variants(const QByteArray& tag, const QByteArray& rest) {
    const QByteArray whole = tag + rest;
    std::vector<QByteArray> variants = {whole, tag, QByteArray()};
    for (const qsizetype offset : Boundaries(tag)) {
        variants.push_back(whole.first(offset));
        for (const QByteArray& bytes :
             {QByteArray(4, '\xFF'), QByteArray(4, '\x7F'), QByteArray(4, '\0'), QByteArray("\2")})
            variants.push_back(QByteArray(whole).replace(offset, bytes.size(), bytes));
    }
    std::mt19937 random(1984);
    for (int i = 0; i < 20; ++i) {
        QByteArray noisy = whole;
        for (unsigned flips = random() % 8 + 1; flips > 0; --flips)
            noisy[static_cast<qsizetype>(random() % static_cast<unsigned>(tag.size()))] =
                static_cast<char>(random());
        variants.push_back(noisy);
    }
    return variants;
}

/// The defined outcome: a title and texts of bounded length from a read; from a write either the
/// file with the new text, all sound still in it, or the file as it was.
void ExpectDefinedOutcome(const QString& path, const QByteArray& content, const QByteArray& sound) {
    CTrackInfo info = ReadInfo(path);
    EXPECT_FALSE(info.m_strTitle.isEmpty());
    for (const QString& text : {info.m_strTitle, info.m_strAlbum, info.m_strArtist})
        EXPECT_LE(text.size(), kMaxId3Text);
    static_cast<void>(ReadTrackArtwork(path));

    info.m_strArtist = "written";
    if (WriteTrackTags(path, info, 0) != 0) {
        EXPECT_EQ(ReadFile(path), content);
        return;
    }
    const CTrackInfo again = ReadInfo(path);
    EXPECT_EQ(again.m_strArtist, info.m_strArtist);
    EXPECT_EQ(again.m_strTitle, info.m_strTitle);
    EXPECT_TRUE(!content.contains(sound) || ReadFile(path).contains(sound));
}

TEST(DamagedTagsTest, EveryVariantHasADefinedOutcome) {
    const QByteArray sound = Mp3Sound().first(4000);
    const QByteArray id3v1 = ReadFile(MediaFile("lame-v1.mp3")).last(128);
    const ScratchFolder scratch(ScratchFolder::Place::Memory);
    for (const QByteArray& tag :
         {SmallTag(2), SmallTag(3), SmallTag(4), Unsynchronised(SmallTag(3))}) {
        for (const QByteArray& variant : Variants(tag, sound + id3v1)) {
            SCOPED_TRACE(variant.left(200).toPercentEncoding().toStdString());
            const QString path = scratch.Write("damaged.mp3", variant);
            ExpectDefinedOutcome(path, variant, sound);
        }
    }
}

using Pieces = std::vector<std::pair<qint64, QByteArray>>;

/// A file that takes no room on disk but for the pieces, given with their offsets.
void WriteSparse(const QString& path, qint64 size, const Pieces& pieces) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(size));
    for (const auto& [offset, bytes] : pieces)
        ASSERT_TRUE(file.seek(offset) && file.write(bytes) == bytes.size());
}

/// What this process reads from files in `work`, in bytes.
template <typename Work>
qint64 BytesReadBy(Work work) {
    const auto total = [] {
        QFile file("/proc/self/io");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readLine().mid(7).trimmed().toLongLong(); // "rchar: 123"
    };
    const qint64 before = total();
    work();
    return total() - before;
}

/// A header of ID3v2.3 that claims 256 MB.
QByteArray LargestHeader(char flags = 0) {
    return QByteArray("ID3\3\0", 5) + flags + "\x7F\x7F\x7F\x7F";
}

QByteArray FrameHeader(const char* id, std::uint32_t size) {
    QByteArray header = AssembleId3Frame(3, {id, 0, {}});
    qToBigEndian(size, header.data() + 4);
    return header;
}

TEST(DamagedTagsTest, ReadingIsBoundedWhateverTheTagClaims) {
    constexpr qint64 kMegabyte = 1024 * 1024;
    constexpr qint64 kTag = 256 * kMegabyte - 1;
    constexpr qint64 kFrame = 20'000;
    const QByteArray title = AssembleId3Frame(3, {"TIT2", 0, EightBit("Title")});
    Pieces many = {{0, LargestHeader() + title}};
    for (qint64 i = 0; i < 1'100; ++i) // a hundred too many
        many.push_back({many[0].second.size() + i * (10 + kFrame), FrameHeader("PRIV", kFrame)});
    const QByteArray picture = FrameHeader("APIC", 200 * kMegabyte);
    // What it is, and less than how many MB its texts and its picture cost.
    const std::tuple<const char*, Pieces, qint64, qint64> rows[] = {
        {"unsynchronised", {{0, LargestHeader('\x80') + title + picture}}, 9, 74},
        {"many frames", many, 9, 74},
        {"a picture too large", {{0, LargestHeader() + title + picture}}, 1, 1}};
    const ScratchFolder scratch(ScratchFolder::Place::Memory);
    const QString path = scratch.File("large.mp3");
    for (const auto& [what, pieces, textCost, pictureCost] : rows) {
        SCOPED_TRACE(what);
        WriteSparse(path, kTag + 10 + 1000, pieces);
        CTrackInfo info;
        EXPECT_LT(BytesReadBy([&] { info = ReadInfo(path); }), textCost * kMegabyte);
        EXPECT_EQ(info.m_strTitle, u"Title");
        EXPECT_LT(BytesReadBy([&] { EXPECT_EQ(ReadTrackArtwork(path), QByteArray()); }),
                  pictureCost * kMegabyte);
        EXPECT_LT(BytesReadBy([&] { EXPECT_NE(WriteTrackTags(path, info, 0), 0); }), kMegabyte)
            << "above what is read whole";
    }
}

// Tags that would cost a reader dearly which believes their sizes, or searches.
TEST(DamagedTagsTest, HostileTagsAreReadUpToTheDamage) {
    const QByteArray title = AssembleId3Frame(3, {"TIT2", 0, EightBit("Title")});
    const QByteArray bomb = AssembleId3Frame(3, {"TALB", 0x0080, "\x7F\xFF\xFF\xFFx\x9C garbage"});
    const QByteArray huge = FrameHeader("TALB", 0x7FFFFFFF) + "\0x";
    const QByteArray empties = FrameHeader("TXXX", 0).repeated(200'000);
    const std::tuple<const char*, QByteArray, const char*> rows[] = {
        {"compressed to 2 GB", LargestHeader() + bomb + title, "Title"},
        {"frame of 2 GB", LargestHeader() + title + huge, "Title"},
        {"frame of 2 GB first", LargestHeader() + huge + title, "damaged"},
        {"endless empty frames", LargestHeader() + empties + title, "damaged"},
        {"tag of 256 MB, cut", LargestHeader(), "damaged"}};
    const ScratchFolder scratch(ScratchFolder::Place::Memory);
    for (const auto& [what, content, read] : rows) {
        const QString path = scratch.Write("damaged.mp3", content);
        EXPECT_EQ(ReadInfo(path).m_strTitle, QLatin1StringView(read)) << what;
    }
}

} // namespace
