#include "library/TrackEdit.h"

#include "base/IPlaybackGuard.h"
#include "library/MediaList.h"
#include "tags/TrackTags.h"

#include <algorithm>
#include <iterator>

namespace {

using R = CTrackRecord;
using I = CTrackInfo;

constexpr struct {
    TrackText shown;
    QString CTrackInfo::*stored;
} kEditableTexts[] = {
    {&R::m_strTitle, &I::m_strTitle},
    {&R::m_strArtist, &I::m_strArtist},
    {&R::m_strAlbum, &I::m_strAlbum},
    {&R::m_strComposer, &I::m_strComposer},
    {&R::m_strDiskNumber, &I::m_strDiskNumber},
    {&R::m_strTrackNumber, &I::m_strTrackNumber},
    {&R::m_strYear, &I::m_strYear},
};

/// Null for a text that can't be edited.
QString CTrackInfo::*StoredText(TrackText shown) {
    const auto* found = std::find_if(std::begin(kEditableTexts), std::end(kEditableTexts),
                                     [shown](const auto& text) { return text.shown == shown; });
    return found == std::end(kEditableTexts) ? nullptr : found->stored;
}

/// The type of the list that the tracks of a list are from.
int TypeOfSource(const CMediaList& list) {
    const bool holdsCopies =
        list.m_iType == MEDIA_TYPE_PLAYLIST || list.m_iType == MEDIA_TYPE_SELECTION;
    return holdsCopies ? list.m_iSourceType : list.m_iType;
}

} // namespace

bool IsEditable(const CMediaList& list, int index, TrackText text) {
    const CTrackRecord* track = list[index];
    return track && HasWritableTags(track->m_strPath) &&
           TypeOfSource(list) == MEDIA_TYPE_COLLECTION && StoredText(text);
}

std::optional<QString> StoreTrackText(IPlaybackGuard& guard, const QString& path, TrackText text,
                                      const QString& value) {
    const auto stored = StoredText(text);
    CTrackInfo info;
    if (!stored || ReadTrackTags(path, info) != 0)
        return std::nullopt;
    info.*stored = value;
    guard.ReleaseFile(path);
    if (WriteTrackTags(path, info, 0) != 0)
        return std::nullopt;
    CTrackInfo written;
    if (ReadTrackTags(path, written) != 0)
        return std::nullopt;
    return written.*stored;
}
