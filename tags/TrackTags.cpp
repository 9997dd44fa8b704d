#include "tags/TrackTags.h"

#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/Id3Tags.h"

#include <fcntl.h>

#include <array>

namespace {

constexpr std::uint64_t kMaxPicture = 64ULL * 1024 * 1024;

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

} // namespace

int ReadTrackTags(const QString& path, CTrackInfo& info) {
    const TagFormat* format = FormatOf(path);
    if (!format)
        return 1;
    const int result = format->read ? format->read(path, info) : 1;
    if (result != 0 || info.m_strTitle.isEmpty())
        info.m_strTitle = Path::ForDisplay(Path::BaseName(path));
    return 0;
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
    if (picture.isEmpty())
        return 1;
    const FileDescriptor file(
        ::open(Path::ToBytes(outPath).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return file.IsOpen() && WriteAll(file.Get(), picture) ? 0 : 1;
}

int WriteTrackArtwork(const QString& path, const QString& jpegPath) {
    const TagFormat* format = FormatOf(path);
    if (!format || !format->writeArtwork || jpegPath.isEmpty())
        return 1;
    const FileDescriptor file = OpenForReading(jpegPath);
    const std::optional<FileStatus> status = GetFileStatus(jpegPath);
    if (!file.IsOpen() || !status || status->size == 0 || status->size > kMaxPicture)
        return 1;
    const QByteArray jpeg = ReadAt(file.Get(), 0, status->size);
    const bool complete = static_cast<std::uint64_t>(jpeg.size()) == status->size;
    return complete ? format->writeArtwork(path, jpeg) : 1;
}
