#include "tags/TrackTags.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/Id3Picture.h"
#include "tags/Id3Tags.h"

#include <array>

namespace {

/// The tag format of a kind of file; an operation that it lacks is null.
struct TagFormat {
    int (*read)(const QString& path, CTrackInfo& info) = nullptr;
    int (*write)(const QString& path, const CTrackInfo& info, int forceEmpty) = nullptr;
    QByteArray (*readArtwork)(const QString& path) = nullptr;
    int (*writeArtwork)(const QString& path, const QByteArray& jpeg) = nullptr;
};

constexpr TagFormat kId3{Id3Tags::Read, Id3Tags::Write, Id3Tags::ReadArtwork,
                         Id3Tags::WriteArtwork};
constexpr TagFormat kUnread{};

struct FormatRow {
    const char* extension;
    const TagFormat* format;
};
constexpr std::array<FormatRow, 5> kFormats = {
    {{"mp3", &kId3}, {"aac", &kId3}, {"mp4", &kUnread}, {"m4a", &kUnread}, {"wma", &kUnread}}};

const TagFormat* FormatOf(const QString& path) {
    const QString extension = Path::Extension(path);
    for (const FormatRow& row : kFormats) {
        if (extension.compare(QLatin1StringView(row.extension), Qt::CaseInsensitive) == 0)
            return row.format;
    }
    return nullptr;
}

bool IsSameFile(const QString& one, const QString& other) {
    const std::optional<FileStatus> a = GetFileStatus(one);
    const std::optional<FileStatus> b = GetFileStatus(other);
    return a && b && a->identity == b->identity;
}

/// What a track without a title is shown as; a name that is all extension stands for itself.
QString TitleFromName(const QString& path) {
    const QString base = Path::BaseName(path);
    return Path::ForDisplay(base.isEmpty() ? Path::FileName(path) : base);
}

} // namespace

int ReadTrackTags(const QString& path, CTrackInfo& info) {
    const TagFormat* format = FormatOf(path);
    if (!format)
        return 1;
    const int result = format->read ? format->read(path, info) : 1;
    if (result != 0 || info.m_strTitle.isEmpty())
        info.m_strTitle = TitleFromName(path);
    return 0;
}

bool HasWritableTags(const QString& path) {
    const TagFormat* format = FormatOf(path);
    return format && format->write;
}

int WriteTrackTags(const QString& path, const CTrackInfo& info, int forceEmpty) {
    const TagFormat* format = FormatOf(path);
    return format && format->write ? format->write(path, info, forceEmpty) : 1;
}

QByteArray ReadTrackArtwork(const QString& path) {
    const TagFormat* format = FormatOf(path);
    return format && format->readArtwork ? format->readArtwork(path) : QByteArray();
}

int SaveTrackArtwork(const QString& path, const QString& outPath) {
    const QByteArray picture = ReadTrackArtwork(path);
    if (picture.isEmpty() || IsSameFile(path, outPath))
        return 1;
    std::optional<CFileReplacement> file = CFileReplacement::BeginOrCreate(outPath);
    return file && file->Append(picture) && file->Commit() ? 0 : 1;
}

int WriteTrackArtwork(const QString& path, const QByteArray& jpeg) {
    const TagFormat* format = FormatOf(path);
    if (!format || !format->writeArtwork || jpeg.isEmpty() || jpeg.size() > Id3Picture::kMaxSize)
        return 1;
    return format->writeArtwork(path, jpeg);
}

int WriteTrackArtwork(const QString& path, const QString& jpegPath) {
    const std::optional<QByteArray> jpeg = ReadWholeFile(jpegPath, Id3Picture::kMaxSize);
    return jpeg ? WriteTrackArtwork(path, *jpeg) : 1;
}
