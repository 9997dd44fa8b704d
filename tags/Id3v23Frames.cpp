#include "tags/Id3v23Frames.h"

#include "tags/EightBitText.h"
#include "tags/Id3Picture.h"

#include <QtEndian>
#include <id3/readers.h>
#include <id3/tag.h>
#include <id3/writers.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace Id3v23Frames {
namespace {

// In the order of Id3Field.
constexpr std::array<ID3_FrameID, kId3FieldCount> kNumbers = {
    ID3FID_ALBUM, ID3FID_LEADARTIST, ID3FID_BPM,      ID3FID_COMPOSER, ID3FID_SONGLEN,
    ID3FID_SIZE,  ID3FID_TITLE,      ID3FID_TRACKNUM, ID3FID_YEAR,     ID3FID_CONTENTTYPE};

void Link(ID3_Tag& tag, const QByteArray& bytes, flags_t types) {
    ID3_MemoryReader reader(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    tag.Link(reader, types);
}

bool HasLaterEncoding(const QByteArray& data) {
    return !data.isEmpty() && data.front() != ID3TE_ISO8859_1 && data.front() != ID3TE_UTF16;
}

void AddFrame(const Id3v2Tag& from, QByteArrayView id, QByteArrayView newId, Id3v2Tag& to) {
    const Id3Frame* frame = from.Find(id);
    if (!frame)
        return;
    const std::optional<QByteArray> data = PlainFrameData(from, *frame);
    if (data && !HasLaterEncoding(*data))
        to.frames.push_back({newId.toByteArray(), 0, *data});
}

/// The frames that matter to the texts as an ID3v2.3 tag; empty if there are none.
QByteArray SmallTag(const Id3v2Tag& tag) {
    if (tag.version == 0)
        return {};
    Id3v2Tag small;
    small.version = 3;
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        const auto field = static_cast<Id3Field>(i);
        AddFrame(tag, Id3FrameId(field, tag.version), Id3FrameId(field, 3), small);
    }
    for (const auto& [id2, id3] : kId3OtherArtists)
        AddFrame(tag, tag.version == 2 ? id2 : id3, id3, small);
    return small.frames.empty() ? QByteArray() : AssembleId3v2Tag(small);
}

/// Text with a byte-order mark comes out of id3lib in the other byte order, and its size in bytes.
QString SwappedText(const unicode_t* units, std::size_t bytes) {
    QString text(static_cast<qsizetype>(bytes / sizeof(char16_t)), Qt::Uninitialized);
    qbswap<sizeof(char16_t)>(units, text.size(), text.data());
    return text;
}

std::optional<QString> GetFrameText(const ID3_Tag& tag, ID3_FrameID number) {
    const ID3_Frame* frame = tag.Find(number);
    const ID3_Field* field = frame ? frame->GetField(ID3FN_TEXT) : nullptr;
    if (!field)
        return std::nullopt;
    std::array<char, kMaxId3Text> bytes{};
    if (const std::size_t count = field->Get(bytes.data(), bytes.size()))
        return CutId3Text(
            FromEightBit(QByteArrayView(bytes.data(), static_cast<qsizetype>(count))));
    const unicode_t* units = field->GetRawUnicodeText();
    if (!units || field->Size() < sizeof(unicode_t))
        return std::nullopt;
    return CutId3Text(SwappedText(units, field->Size()));
}

bool MissesId3v1Field(const Id3Texts& texts) {
    constexpr std::array kFields = {Id3Field::Title, Id3Field::Artist, Id3Field::Album,
                                    Id3Field::Track, Id3Field::Year,   Id3Field::Genre};
    return std::any_of(kFields.begin(), kFields.end(), [&texts](Id3Field field) {
        return !texts[static_cast<std::size_t>(field)];
    });
}

/// The frame's data alone, as the library stores it.
QByteArray Render(const ID3_Frame& frame, qsizetype atMost) {
    constexpr qsizetype kFrameHeader = 10;
    QByteArray bytes(kFrameHeader + atMost, '\0');
    ID3_MemoryWriter writer(reinterpret_cast<uchar*>(bytes.data()),
                            static_cast<std::size_t>(bytes.size()));
    frame.Render(writer);
    bytes.truncate(static_cast<qsizetype>(writer.getCur()));
    return bytes.sliced(kFrameHeader);
}

} // namespace

Id3Texts ReadTexts(const Id3v2Tag& tag, const QByteArray& id3v1) {
    Id3Texts texts;
    const QByteArray small = SmallTag(tag);
    const auto take = [&texts](const ID3_Tag& linked) {
        for (std::size_t i = 0; i < kId3FieldCount; ++i) {
            if (!texts[i])
                texts[i] = GetFrameText(linked, kNumbers[i]);
        }
    };
    if (!small.isEmpty()) {
        ID3_Tag linked;
        Link(linked, small, ID3TT_ID3V2);
        take(linked);
    }
    if (!id3v1.isEmpty() && MissesId3v1Field(texts)) {
        // One byte of a sync word stands for the sound: without it id3lib would look for one.
        ID3_Tag linked;
        Link(linked, small + '\xFF' + id3v1, ID3TT_ID3V2 | ID3TT_ID3V1);
        take(linked);
    }
    return texts;
}

QByteArray TextData(Id3Field field, const QString& text) {
    ID3_Frame frame(kNumbers[static_cast<std::size_t>(field)]);
    ID3_Field* target = frame.GetField(ID3FN_TEXT);
    if (FitsEightBit(text)) {
        target->Set(text.toLatin1().constData());
    } else {
        std::vector<unicode_t> units(static_cast<std::size_t>(text.size()) + 1);
        qbswap<sizeof(char16_t)>(text.utf16(), text.size(), units.data());
        frame.GetField(ID3FN_TEXTENC)->Set(ID3TE_UNICODE);
        target->SetEncoding(ID3TE_UNICODE);
        target->Set(units.data());
    }
    return Render(frame, 2 * text.size() + 16);
}

QByteArray Picture(const Id3v2Tag& tag) {
    const Id3Frame* frame = tag.Find(Id3PictureId(tag.version));
    const std::optional<QByteArray> data = frame ? PlainFrameData(tag, *frame) : std::nullopt;
    if (!data)
        return {};
    Id3v2Tag small;
    small.version = tag.version;
    small.frames.push_back({frame->id, 0, *data});
    ID3_Tag linked;
    Link(linked, AssembleId3v2Tag(small), ID3TT_ID3V2);
    const ID3_Frame* picture = linked.Find(ID3FID_PICTURE);
    const ID3_Field* field = picture ? picture->GetField(ID3FN_DATA) : nullptr;
    if (!field || field->Size() == 0)
        return {};
    QByteArray bytes(static_cast<qsizetype>(field->Size()), '\0');
    field->Get(reinterpret_cast<uchar*>(bytes.data()), static_cast<std::size_t>(bytes.size()));
    return bytes;
}

QByteArray PictureData(int version, const QByteArray& jpeg) {
    ID3_Frame frame(ID3FID_PICTURE);
    frame.SetSpec(version == 2 ? ID3V2_2_0 : ID3V2_3_0);
    frame.GetField(ID3FN_IMAGEFORMAT)->Set("JPG");
    frame.GetField(ID3FN_MIMETYPE)->Set(Id3Picture::kMimeType);
    frame.GetField(ID3FN_PICTURETYPE)->Set(Id3Picture::kType);
    frame.GetField(ID3FN_DESCRIPTION)->Set(Id3Picture::kDescription);
    frame.GetField(ID3FN_DATA)
        ->Set(reinterpret_cast<const uchar*>(jpeg.constData()),
              static_cast<std::size_t>(jpeg.size()));
    return Render(frame, jpeg.size() + 256);
}

} // namespace Id3v23Frames
