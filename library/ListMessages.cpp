#include "library/ListMessages.h"

#include "base/Messages.h"
#include "library/FolderScan.h"
#include "library/MediaList.h"

#include <memory>
#include <utility>

void SendAddTrack(const MessageAddress& target, const CMediaList& list, const QString& path,
                  int checked) {
    auto request = std::make_unique<CMediaFileRequest>();
    request->m_strPath = path;
    request->m_iType = list.m_iType;
    request->m_iListId = list.m_iId;
    request->m_bChecked = checked;
    target.Send({WM_TD_ADD_TRACK, 0, 1, std::move(request)});
}

void SendListDone(const MessageAddress& target, int type) {
    target.Send({WM_TD_LIST_DONE, type});
}
