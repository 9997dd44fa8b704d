#include "library/TrackEdit.h"

#include "base/FileKinds.h"
#include "base/Language.h"
#include "library/MediaList.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace {

using R = CTrackRecord;
using I = CTrackInfo;

constexpr struct {
    TrackText shown;
    QString CTrackInfo::*stored;
    bool isTyped; ///< not chosen from a menu
} kStoredTexts[] = {
    {&R::m_strTitle, &I::m_strTitle, true},
    {&R::m_strArtist, &I::m_strArtist, true},
    {&R::m_strAlbum, &I::m_strAlbum, true},
    {&R::m_strComposer, &I::m_strComposer, true},
    {&R::m_strDiskNumber, &I::m_strDiskNumber, true},
    {&R::m_strGenre, &I::m_strGenre, false},
    {&R::m_strTrackNumber, &I::m_strTrackNumber, true},
    {&R::m_strYear, &I::m_strYear, true},
};

/// Null for a text that the tags don't hold.
const auto* FindStoredText(TrackText shown) {
    const auto* found = std::find_if(std::begin(kStoredTexts), std::end(kStoredTexts),
                                     [shown](const auto& text) { return text.shown == shown; });
    return found == std::end(kStoredTexts) ? nullptr : found;
}

constexpr qsizetype kLongestName = 255; // bytes

} // namespace

bool IsEditable(const CMediaList& list, int index, TrackText text) {
    const CTrackRecord* track = list[index];
    if (!track || list.TypeOfSource() != MEDIA_TYPE_COLLECTION)
        return false;
    if (IsPlaylistFile(track->m_strPath))
        return list.m_iType != MEDIA_TYPE_PLAYLIST && text == &R::m_strTitle;
    const auto* stored = FindStoredText(text);
    return HasWritableTags(track->m_strPath) && stored && stored->isTyped;
}

StoreResult StoreTrackText(const QString& path, TrackText text, const QString& value) {
    const auto* row = FindStoredText(text);
    CTrackInfo info;
    if (!row || ReadTrackTags(path, info) != 0)
        return {std::nullopt, WhyUnwritable(path)};
    info.*row->stored = value;
    CTrackInfo written;
    if (WriteTrackTags(path, info, 0) != 0 || ReadTrackTags(path, written) != 0)
        return {std::nullopt, WhyUnwritable(path)};
    return {written.*row->stored, {}};
}

StoreResult RenamePlaylist(const QString& path, const QString& title) {
    QString name = title.trimmed();
    const QString noName = LoadString(IDS_EDIT_NONAME);
    if (name.isEmpty() || name.startsWith(u'.') || name.contains(u'/') || name.contains(QChar()))
        return {std::nullopt, noName};
    if (!IsPlaylistFile(name))
        name += QStringLiteral(".m3u");
    if (Path::ToBytes(name).size() > kLongestName)
        return {std::nullopt, noName};
    const QString renamed = Path::Join(Path::Folder(path), name);
    if (MoveToFreePath(path, renamed))
        return {renamed, {}};
    return {std::nullopt, GetFileStatus(renamed) ? qt_error_string(EEXIST) : WhyUnwritable(path)};
}

QString WhyUnwritable(const QString& path) {
    for (const QString& needed : {path, Path::Folder(path)})
        if (::access(Path::ToBytes(needed), W_OK) != 0)
            return qt_error_string(errno);
    const auto status = GetFileStatus(path);
    struct statvfs volume = {};
    if (status && ::statvfs(Path::ToBytes(path), &volume) == 0 &&
        volume.f_bavail * volume.f_frsize < status->size)
        return qt_error_string(ENOSPC);
    return LoadString(IDS_EDIT_DAMAGED);
}
