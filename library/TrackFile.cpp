#include "library/TrackFile.h"

#include "base/SizeText.h"
#include "library/FolderScan.h"
#include "library/MediaList.h"
#include "library/TrackColumns.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

namespace {

void CopyTags(const CTrackInfo& info, CTrackRecord& track) {
    track.m_strAlbum = info.m_strAlbum;
    track.m_strArtist = info.m_strArtist;
    track.m_strBPM = info.m_strBPM;
    track.m_strComposer = info.m_strComposer;
    track.m_strDiskNumber = info.m_strDiskNumber;
    track.m_strGenre = info.m_strGenre;
    track.m_strLength = info.m_strLength;
    track.m_strTempo = info.m_strTempo;
    track.m_strTitle = info.m_strTitle;
    track.m_strTrackNumber = info.m_strTrackNumber;
    track.m_strYear = info.m_strYear;
}

} // namespace

TrackOrigin OriginOf(int listType) {
    if (listType == MEDIA_TYPE_PHONE)
        return TrackOrigin::Phone;
    return listType == MEDIA_TYPE_CD ? TrackOrigin::Disc : TrackOrigin::Computer;
}

std::unique_ptr<CTrackRecord> NewTrack(const CMediaFileRequest& request, TrackOrigin origin) {
    auto track = std::make_unique<CTrackRecord>();
    track->m_strTitle = Path::FileName(request.m_strPath);
    track->m_strPath = request.m_strPath;
    track->m_nFileSize = request.m_nSize;
    track->m_strSize = SizeText(track->m_nFileSize);
    track->m_strFormat = Path::Extension(request.m_strPath).toUpper();
    track->m_bChecked = request.m_bChecked;
    track->m_origin = origin;
    return track;
}

void ReadTrack(CTrackRecord& track) {
    if (track.m_origin != TrackOrigin::Computer)
        return;
    const auto status = GetFileStatus(track.m_strPath);
    if (status) {
        track.m_nFileSize = status->size;
        track.m_strSize = SizeText(track.m_nFileSize);
    }
    CTrackInfo info;
    if (ReadTrackTags(track.m_strPath, info) == 0)
        CopyTags(info, track);
    // The path of a file on another system, whose name stands behind another separator.
    const qsizetype separator = track.m_strPath.lastIndexOf(u'\\');
    if (!status && separator >= 0)
        track.m_strTitle = Path::ForDisplay(track.m_strPath.sliced(separator + 1));
}

std::unique_ptr<CTrackRecord> MakeTrack(const CMediaFileRequest& request, TrackOrigin origin) {
    auto track = NewTrack(request, origin);
    ReadTrack(*track);
    return track;
}

void TakeReading(const CTrackRecord& read, CTrackRecord& track) {
    for (const TrackColumn& column : AllTrackColumns())
        if (const QString& text = read.*column.text; !text.isEmpty())
            track.*column.text = text;
    track.m_nFileSize = read.m_nFileSize;
}
