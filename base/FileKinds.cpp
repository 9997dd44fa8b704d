#include "base/FileKinds.h"

#include <algorithm>
#include <initializer_list>

namespace {

/// Nothing is cut out of the path: lists ask for each of their tracks.
bool EndsWith(const QString& path, std::initializer_list<QStringView> extensions) {
    return std::any_of(extensions.begin(), extensions.end(), [&](QStringView extension) {
        return path.endsWith(extension, Qt::CaseInsensitive);
    });
}

} // namespace

bool IsPlaylistFile(const QString& path) {
    return EndsWith(path, {u".m3u"});
}

bool IsWmaFile(const QString& path) {
    return EndsWith(path, {u".wma"});
}

bool IsMp3OrAacFile(const QString& path) {
    return EndsWith(path, {u".mp3", u".aac"});
}

bool IsMp4File(const QString& path) {
    return EndsWith(path, {u".mp4", u".m4a"});
}

bool IsCdTrackFile(const QString& path) {
    return EndsWith(path, {u".cda", u".cdx"});
}

bool IsMusicFile(const QString& path) {
    return EndsWith(path, {u".mp3", u".m4a", u".aac", u".wma", u".m3u"});
}
