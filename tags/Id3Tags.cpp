#include "tags/Id3Tags.h"

#include "tags/Id3Fields.h"
#include "tags/Id3File.h"
#include "tags/Id3Picture.h"
#include "tags/Id3v23Frames.h"
#include "tags/Id3v24Frames.h"

#include <limits>

namespace Id3Tags {
namespace {

std::size_t KeepPictures(QByteArrayView id) {
    const bool picture = id == Id3PictureId(2) || id == Id3PictureId(3);
    return picture ? std::numeric_limits<std::size_t>::max() : 0;
}

/// The texts of both tags; those of ID3v2 win.
Id3Texts ReadTexts(const Id3v2Tag& tag, const QByteArray& id3v1) {
    if (tag.version < 4)
        return Id3v23Frames::ReadTexts(tag, id3v1);
    Id3Texts texts = Id3v24Frames::ReadTexts(tag);
    const Id3Texts fallback = Id3v23Frames::ReadTexts({}, id3v1);
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        if (!texts[i])
            texts[i] = fallback[i];
    }
    return texts;
}

} // namespace

int Read(const QString& path, CTrackInfo& info) {
    const std::optional<Id3File> file = OpenId3File(path, KeepId3Texts);
    if (!file)
        return 1;
    const Id3Texts texts = ReadTexts(file->tag, file->id3v1);
    TakeId3Texts(texts, info);
    return texts[static_cast<std::size_t>(Id3Field::Title)] ? 0 : 1;
}

QByteArray ReadArtwork(const QString& path) {
    const std::optional<Id3File> file = OpenId3File(path, KeepPictures);
    if (!file)
        return {};
    return file->tag.version == 4 ? Id3v24Frames::Picture(file->tag)
                                  : Id3v23Frames::Picture(file->tag);
}

} // namespace Id3Tags
