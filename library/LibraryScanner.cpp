#include "library/LibraryScanner.h"

#include "base/SizeText.h"
#include "library/MediaLists.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"

#include <utility>

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

std::unique_ptr<CTrackRecord> MakeTrack(const CMediaFileRequest& request) {
    auto track = std::make_unique<CTrackRecord>();
    track->m_strTitle = Path::FileName(request.m_strPath);
    track->m_strPath = request.m_strPath;
    const auto status = GetFileStatus(request.m_strPath);
    track->m_nFileSize = status ? status->size : request.m_nSize;
    track->m_strSize = SizeText(track->m_nFileSize);
    track->m_strFormat = Path::Extension(request.m_strPath).toUpper();
    CTrackInfo info;
    if (ReadTrackTags(request.m_strPath, info) == 0)
        CopyTags(info, *track);
    track->m_bChecked = request.m_bChecked;
    return track;
}

void CLibraryScanner::ScanList(const MessageAddress& target, int type, int listId,
                               const QString& folder) {
    auto request = std::make_unique<CScanRequest>();
    request->m_hWndTarget = target;
    request->m_iType = type;
    request->m_iListId = listId;
    request->m_strPath = folder;
    request->m_bRecurse = 1;
    m_scanning.insert(type);
    Start(std::move(request));
}

void CLibraryScanner::Start(std::unique_ptr<CScanRequest> request) {
    StartScanThread(std::move(request), m_stop.get_token());
}

void CLibraryScanner::AutoPlay(const QString& path, AddedHandler play) {
    m_strAutoPlayPath = path;
    m_pfnAutoPlay = std::move(play);
}

bool CLibraryScanner::IsInCollection(const QString& path) const {
    const CMediaList* collection = m_lists.FindListByType(MEDIA_TYPE_COLLECTION);
    const QString folder = collection ? m_lists.GetLocation(collection->m_iId) : QString();
    return !folder.isEmpty() && path.startsWith(Path::Join(folder, QString()), Qt::CaseInsensitive);
}

std::intptr_t CLibraryScanner::OnAddTrack(Message& message) {
    const auto request = message.Take<CMediaFileRequest>();
    if (!request)
        return 1;
    const bool isCopy =
        request->m_iType == MEDIA_TYPE_PLAYLIST || request->m_iType == MEDIA_TYPE_SELECTION;
    if (!isCopy && request->m_iType != MEDIA_TYPE_COLLECTION && IsInCollection(request->m_strPath))
        return 0;
    CMediaList* list = m_lists.FindListById(request->m_iListId);
    if (!list)
        return 1;
    list->Append(MakeTrack(*request));
    if (request->m_iType == MEDIA_TYPE_COLLECTION && request->m_strPath == m_strAutoPlayPath &&
        !m_strAutoPlayPath.isEmpty()) {
        m_strAutoPlayPath.clear();
        m_pfnAutoPlay(*list, list->GetCount() - 1);
    }
    return 0;
}
