#include "tags/TrackTags.h"

#include "platform/Path.h"
#include "tags/Id3Tags.h"

#include <array>

namespace {

/// The tag format of a kind of file; an operation that it lacks is null.
struct TagFormat {
    int (*read)(const QString& path, CTrackInfo& info);
    QByteArray (*readArtwork)(const QString& path);
};

constexpr TagFormat kId3{Id3Tags::Read, Id3Tags::ReadArtwork};
constexpr TagFormat kUnread{nullptr, nullptr};

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

QByteArray ReadTrackArtwork(const QString& path) {
    const TagFormat* format = FormatOf(path);
    return format && format->readArtwork ? format->readArtwork(path) : QByteArray();
}
