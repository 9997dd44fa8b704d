#include "tags/Id3v24Frames.h"

#include "tags/EightBitText.h"
#include "tags/Id3Picture.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/textidentificationframe.h>

namespace Id3v24Frames {
namespace {

constexpr qsizetype kFrameHeader = 10;
constexpr int kVersion = 4;
constexpr char kLastEncoding = TagLib::String::UTF8;

TagLib::ByteVector ToTagLib(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

QByteArray FromTagLib(const TagLib::ByteVector& bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

/// The first frame with this id in the plain form that TagLib's frames parse; empty if none.
TagLib::ByteVector PlainFrame(const Id3v2Tag& tag, QByteArrayView id, QByteArrayView newId) {
    const Id3Frame* frame = tag.Find(id);
    const std::optional<QByteArray> data = frame ? PlainFrameData(tag, *frame) : std::nullopt;
    if (!data || data->isEmpty() || data->front() < 0 || data->front() > kLastEncoding)
        return {};
    return ToTagLib(AssembleId3Frame(kVersion, {newId.toByteArray(), 0, *data}));
}

template <typename Frame>
QByteArray Render(const Frame& frame) {
    return FromTagLib(frame.render()).sliced(kFrameHeader);
}

} // namespace

std::optional<QString> ReadText(const Id3v2Tag& tag, Id3Field field) {
    QByteArrayView id = Id3FrameId(field, tag.version);
    if (field == Id3Field::Year && tag.version == kVersion && !tag.Find(id))
        id = Id3FrameId(field, 3); // as programs write that only change the version
    const TagLib::ByteVector bytes = PlainFrame(tag, id, Id3FrameId(field, kVersion));
    if (bytes.isEmpty())
        return std::nullopt;
    const TagLib::ID3v2::TextIdentificationFrame frame(bytes);
    const TagLib::StringList texts = frame.fieldList();
    if (texts.isEmpty())
        return std::nullopt;
    const bool eightBit = frame.textEncoding() == TagLib::String::Latin1;
    const std::string text = texts.front().to8Bit(!eightBit);
    return CutId3Text(eightBit ? FromEightBit(text) : QString::fromStdString(text));
}

QByteArray TextData(Id3Field field, const QString& text) {
    const bool eightBit = FitsEightBit(text) && !text.contains(QChar(0xFF));
    const TagLib::String::Type encoding = eightBit ? TagLib::String::Latin1 : TagLib::String::UTF8;
    TagLib::ID3v2::TextIdentificationFrame frame(
        ToTagLib(Id3FrameId(field, kVersion).toByteArray()), encoding);
    frame.setText(TagLib::String(text.toStdString(), TagLib::String::UTF8));
    return Render(frame);
}

QByteArray Picture(const Id3v2Tag& tag) {
    const TagLib::ByteVector bytes =
        PlainFrame(tag, Id3PictureId(kVersion), Id3PictureId(kVersion));
    if (bytes.isEmpty())
        return {};
    return FromTagLib(TagLib::ID3v2::AttachedPictureFrame(bytes).picture());
}

QByteArray PictureData(const QByteArray& jpeg) {
    TagLib::ID3v2::AttachedPictureFrame frame;
    frame.setTextEncoding(TagLib::String::Latin1);
    frame.setMimeType(Id3Picture::kMimeType);
    frame.setType(static_cast<TagLib::ID3v2::AttachedPictureFrame::Type>(Id3Picture::kType));
    frame.setDescription(Id3Picture::kDescription);
    frame.setPicture(ToTagLib(jpeg));
    return Render(frame);
}

} // namespace Id3v24Frames
