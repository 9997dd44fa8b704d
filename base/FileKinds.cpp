#include "base/FileKinds.h"

#include "platform/Path.h"

#include <algorithm>
#include <initializer_list>

namespace {

bool HasExtension(const QString& path, std::initializer_list<QStringView> extensions) {
    const QString extension = Path::Extension(path);
    return std::any_of(extensions.begin(), extensions.end(), [&](QStringView candidate) {
        return candidate.compare(extension, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

bool IsPlaylistFile(const QString& path) {
    return HasExtension(path, {u"m3u"});
}

bool IsWmaFile(const QString& path) {
    return HasExtension(path, {u"wma"});
}

bool IsMp3OrAacFile(const QString& path) {
    return HasExtension(path, {u"mp3", u"aac"});
}

bool IsMp4File(const QString& path) {
    return HasExtension(path, {u"mp4", u"m4a"});
}

bool IsCdTrackFile(const QString& path) {
    return HasExtension(path, {u"cda", u"cdx"});
}

bool IsMusicFile(const QString& path) {
    return HasExtension(path, {u"mp3", u"m4a", u"aac", u"wma", u"m3u"});
}
