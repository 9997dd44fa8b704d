#include "tags/Id3Tags.h"

#include "platform/FileReplacement.h"
#include "tags/Id3Fields.h"
#include "tags/Id3File.h"
#include "tags/Id3Picture.h"
#include "tags/Id3v1Tag.h"
#include "tags/Id3v23Frames.h"
#include "tags/Id3v24Frames.h"

#include <algorithm>
#include <utility>

namespace Id3Tags {
namespace {

constexpr int kNewTagVersion = 3;

/// Some programs write the encodings of ID3v2.4 into older tags, where id3lib can't read them.
bool NeedsTagLib(const Id3v2Tag& tag, Id3Field field) {
    if (tag.version == 4)
        return true;
    const Id3Frame* frame = tag.Find(Id3FrameId(field, tag.version));
    const auto data = frame ? PlainFrameData(tag, *frame) : std::nullopt;
    return data && !data->isEmpty() && (data->front() == 2 || data->front() == 3);
}

/// The texts of both tags; those of ID3v2 win.
Id3Texts ReadTexts(const Id3v2Tag& tag, const QByteArray& id3v1) {
    Id3Texts texts = Id3v23Frames::ReadTexts(tag.version == 4 ? Id3v2Tag() : tag, id3v1);
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        const auto field = static_cast<Id3Field>(i);
        if (tag.version == 0 || !NeedsTagLib(tag, field))
            continue;
        if (std::optional<QString> text = Id3v24Frames::ReadText(tag, field))
            texts[i] = std::move(text);
    }
    return texts;
}

CTrackInfo InfoOf(const Id3v2Tag& tag, const Id3Texts& texts) {
    CTrackInfo info;
    TakeId3Texts(texts, tag.version, info);
    return info;
}

/// A file that is to get other tags. It is read through the replacement, so that another program's
/// change is noticed from the first byte on.
struct Rewriting {
    CFileReplacement replacement;
    Id3File old;
};

/// With `forceEmpty` a damaged tag will do, as long as its size is sure: it goes.
std::optional<Rewriting> BeginRewriting(const QString& path, bool forceEmpty) {
    std::optional<CFileReplacement> replacement = CFileReplacement::Begin(path);
    if (!replacement)
        return std::nullopt;
    const int original = replacement->Original();
    std::optional<Id3File> old = ReadId3File(original, Id3Purpose::Rewriting);
    if (!old)
        return std::nullopt;
    const bool sizeIsSure = old->tag.version != 0 && old->tag.size <= old->size;
    if (!(old->tag.whole || (forceEmpty && sizeIsSure)) || !old->HoldsSound(original))
        return std::nullopt;
    return Rewriting{std::move(*replacement), std::move(*old)};
}

/// The tag to write, so far with the frames of the old one.
Id3v2Tag BeginNewTag(const Id3v2Tag& old) {
    Id3v2Tag tag = old;
    if (tag.version == 0)
        tag.version = kNewTagVersion;
    if (tag.version != 4)
        tag.unsynchronised = true;
    return tag;
}

QByteArray TextData(int version, Id3Field field, const QString& text) {
    return version == 4 ? Id3v24Frames::TextData(field, text) : Id3v23Frames::TextData(field, text);
}

/// Writes the text of each field that reads differently now, and says in `texts` how it will read.
/// False if a frame that has to change is not understood.
bool SetFields(Id3v2Tag& tag, const CTrackInfo& info, Id3Texts& texts) {
    const CTrackInfo current = InfoOf(tag, texts);
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        const auto field = static_cast<Id3Field>(i);
        const QByteArrayView id = Id3FrameId(field, tag.version);
        const QString text = Id3FieldText(info, field);
        if (const Id3Frame* frame = tag.Find(id)) {
            if (!PlainFrameData(tag, *frame))
                return false;
            if (text == Id3FieldText(current, field))
                continue;
        }
        SetId3Frame(tag, id, TextData(tag.version, field, text));
        texts[i] = CutId3Text(text);
    }
    return true;
}

/// Adds the fields of ID3v1: once there is an ID3v2 tag, other programs may look there
/// only.
void AddTextsOfId3v1(const QByteArray& id3v1, Id3v2Tag& tag) {
    const Id3Texts texts = ReadTexts({}, id3v1);
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        const auto field = static_cast<Id3Field>(i);
        if (texts[i])
            SetId3Frame(tag, Id3FrameId(field, tag.version),
                        TextData(tag.version, field, *texts[i]));
    }
}

bool SameTexts(const Id3Texts& a, const Id3Texts& b) {
    return std::equal(a.begin(), a.end(), b.begin(), [](const auto& one, const auto& other) {
        return one.value_or(QString()) == other.value_or(QString());
    });
}

/// Whether the new file reads back as it was meant.
bool ReadsBack(const CFileReplacement& replacement, const Id3File& old, const Id3v2Tag& tag,
               const Id3Texts& texts, const QByteArray& id3v1) {
    const std::optional<Id3File> written =
        ReadId3File(replacement.NewPath(), Id3Purpose::Rewriting);
    return written && written->tag.whole && written->tag.version == tag.version &&
           written->tag.frames == tag.frames && written->id3v1 == id3v1 &&
           written->SoundSize() == old.SoundSize() &&
           SameTexts(ReadTexts(written->tag, {}), texts) &&
           replacement.MatchesOriginal(written->SoundBegin(), old.SoundBegin(), old.SoundSize());
}

int Replace(Rewriting& file, const Id3v2Tag& tag, const Id3Texts& texts, const QByteArray& id3v1) {
    auto& [replacement, old] = file;
    const QByteArray head = AssembleId3v2Tag(tag);
    const bool replaced = !head.isEmpty() && replacement.Append(head) &&
                          replacement.AppendOriginal(old.SoundBegin(), old.SoundSize()) &&
                          replacement.Append(id3v1) &&
                          ReadsBack(replacement, old, tag, texts, id3v1) && replacement.Commit();
    return replaced ? 0 : 1;
}

} // namespace

int Read(const QString& path, CTrackInfo& info) {
    const std::optional<Id3File> file = ReadId3File(path, Id3Purpose::Texts);
    if (!file)
        return 1;
    const Id3Texts texts = ReadTexts(file->tag, file->id3v1);
    TakeId3Texts(texts, file->tag.version, info);
    return texts[static_cast<std::size_t>(Id3Field::Title)] ? 0 : 1;
}

int Write(const QString& path, const CTrackInfo& info, int forceEmpty) {
    std::optional<Rewriting> file = BeginRewriting(path, forceEmpty != 0);
    if (!file)
        return 1;
    Id3v2Tag tag = BeginNewTag(file->old.tag);
    QByteArray id3v1 = file->old.id3v1;
    if (forceEmpty) {
        tag.frames.clear();
        id3v1.clear();
    }
    id3v1 = MakeId3v1Tag(info, InfoOf(tag, ReadTexts(tag, id3v1)), id3v1);
    Id3Texts texts = ReadTexts(tag, {});
    if (!SetFields(tag, info, texts))
        return 1;
    return Replace(*file, tag, texts, id3v1);
}

QByteArray ReadArtwork(const QString& path) {
    const std::optional<Id3File> file = ReadId3File(path, Id3Purpose::FirstPicture);
    if (!file)
        return {};
    return file->tag.version == 4 ? Id3v24Frames::Picture(file->tag)
                                  : Id3v23Frames::Picture(file->tag);
}

int WriteArtwork(const QString& path, const QByteArray& jpeg) {
    std::optional<Rewriting> file = BeginRewriting(path, false);
    if (!file)
        return 1;
    Id3v2Tag tag = BeginNewTag(file->old.tag);
    if (file->old.tag.version == 0)
        AddTextsOfId3v1(file->old.id3v1, tag);
    SetId3Frame(tag, Id3PictureId(tag.version),
                tag.version == 4 ? Id3v24Frames::PictureData(jpeg)
                                 : Id3v23Frames::PictureData(tag.version, jpeg));
    return Replace(*file, tag, ReadTexts(tag, {}), file->old.id3v1);
}

} // namespace Id3Tags
