#include "tags/Id3Fields.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace {

/// A tag with the frames that are read and others, in all forms of text.
QByteArray SmallTag(int version) {
    const QByteArray wide("\1\xFF\xFEG\0r\0\xFC\0", 9);
    if (version == 2)
        return TagBytes(2, {{"TT2", EightBit("A title")},
                            {"TAL", wide},
                            {"XYZ", "unknown"},
                            {"TLE", EightBit("185000")},
                            {"PIC", QByteArray("\0JPG\3\0picture", 13)}});
    return TagBytes(version, {{"TIT2", EightBit("A title")},
                              {"TALB", wide},
                              {"XXYZ", "unknown"},
                              {"TLEN", EightBit("185000")},
                              {"TCON", EightBit("(17)")},
                              {"APIC", QByteArray("\0image/jpeg\0\3\0picture", 21)}});
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
    for (qsizetype frame = 10; frame + header < tag.size();) {
        offsets.insert(
            {frame, frame + header / 2, frame + header - 2, frame + header, frame + header + 1});
        frame += header + tag[frame + header / 2]; // all sizes in these tags fit a byte
    }
    return offsets;
}

std::vector<QByteArray> Variants(const QByteArray& tag, const QByteArray& rest) {
    const QByteArray whole = tag + rest;
    std::vector<QByteArray> variants = {whole, tag, QByteArray()};
    for (const qsizetype offset : Boundaries(tag)) {
        for (const qsizetype cut : {offset - 1, offset, offset + 1})
            variants.push_back(whole.first(std::max<qsizetype>(cut, 0)));
        for (const char* bytes : {"\xFF\xFF\xFF\xFF", "\x7F\x7F\x7F\x7F", "\xFF", "\x80", "\x02"}) {
            QByteArray changed = whole;
            variants.push_back(changed.replace(offset, qstrlen(bytes), bytes));
        }
        QByteArray cleared = whole;
        variants.push_back(cleared.replace(offset, 4, QByteArray(4, '\0')));
    }
    std::mt19937 random(1984);
    for (int i = 0; i < 60; ++i) {
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
    CTrackInfo info;
    EXPECT_EQ(ReadTrackTags(path, info), 0);
    EXPECT_FALSE(info.m_strTitle.isEmpty());
    for (const QString& text : {info.m_strTitle, info.m_strAlbum, info.m_strArtist})
        EXPECT_LE(text.size(), kMaxId3Text);
    static_cast<void>(ReadTrackArtwork(path));

    info.m_strArtist = QStringLiteral("written");
    if (WriteTrackTags(path, info, 0) != 0) {
        EXPECT_EQ(ReadFile(path), content);
        return;
    }
    CTrackInfo again;
    EXPECT_EQ(ReadTrackTags(path, again), 0);
    EXPECT_EQ(again.m_strArtist, info.m_strArtist);
    EXPECT_EQ(again.m_strTitle, info.m_strTitle);
    EXPECT_TRUE(!content.contains(sound) || ReadFile(path).contains(sound));
}

} // namespace

TEST(DamagedTagsTest, EveryVariantHasADefinedOutcome) {
    const QByteArray sound = Mp3Sound().first(4000);
    const QByteArray id3v1 = ReadFile(MediaFile(QStringLiteral("lame-v1.mp3"))).last(128);
    const QByteArray tags[] = {SmallTag(2), SmallTag(3), SmallTag(4), Unsynchronised(SmallTag(3)),
                               Unsynchronised(SmallTag(2))};
    const ScratchFolder scratch;
    std::size_t count = 0;
    for (const QByteArray& tag : tags) {
        for (const QByteArray& variant : Variants(tag, sound + id3v1)) {
            SCOPED_TRACE(variant.left(200).toPercentEncoding().toStdString());
            const QString path = scratch.Write(QStringLiteral("damaged.mp3"), variant);
            ExpectDefinedOutcome(path, variant, sound);
            ++count;
        }
    }
    EXPECT_GT(count, 900U);
}

// Tags that would cost a reader dearly which believes their sizes, or searches.
TEST(DamagedTagsTest, HostileTagsAreReadUpToTheDamage) {
    const QByteArray title = AssembleId3Frame(3, {"TIT2", 0, EightBit("Title")});
    const auto tag = [](const QByteArray& body) {
        return QByteArray("ID3\3\0\0\x7F\x7F\x7F\x7F", 10) + body;
    };
    QByteArray bomb = AssembleId3Frame(3, {"TALB", 0x0080, "\x7F\xFF\xFF\xFFx\x9C garbage"});
    QByteArray huge = AssembleId3Frame(3, {"TALB", 0, "\0x"});
    huge.replace(4, 4, "\x7F\xFF\xFF\xFF");
    QByteArray empties;
    for (int i = 0; i < 200'000; ++i)
        empties += AssembleId3Frame(3, {"TXXX", 0, {}});
    struct {
        const char* what;
        QByteArray content;
        const char* title;
    } const rows[] = {
        {"compressed to 2 GB", tag(bomb + title), "Title"},
        {"frame of 2 GB", tag(title + huge), "Title"},
        {"frame of 2 GB first", tag(huge + title), "damaged"},
        {"endless empty frames", tag(empties + title), "damaged"},
        {"zeros", QByteArray(8 << 20, '\0'), "damaged"},
        {"tag of 256 MB, cut", tag({}), "damaged"},
    };
    const ScratchFolder scratch;
    for (const auto& row : rows) {
        const QString path = scratch.Write(QStringLiteral("damaged.mp3"), row.content);
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(path, info), 0);
        EXPECT_EQ(info.m_strTitle, QLatin1StringView(row.title)) << row.what;
    }
}
