#include "library/FolderScan.h"

#include "base/FileKinds.h"
#include "base/Language.h"
#include "base/Messages.h"
#include "platform/Files.h"
#include "platform/Path.h"
#include "platform/WorkerThread.h"

#include <QDebug>

#include <exception>
#include <set>
#include <thread>
#include <utility>

std::atomic<int> g_bCancelScan = 0;

namespace {

/// One walk over a folder tree.
class Walk {
public:
    Walk(const CScanRequest& request, const std::stop_token& stop)
        : m_request(request)
        , m_stop(stop)
        , m_strHead(LoadString(IDS_SCAN_HEAD) + u' ') {}

    void WalkFolder(const QString& folder) {
        const auto status = GetFileStatus(folder);
        if (!status || !m_walked.insert(status->identity).second)
            return;
        ShowFolder(folder);
        // The whole listing is read before the first entry is looked at, so that a deep tree does
        // not hold a descriptor for each of its levels.
        const auto entries = ListFolder(folder);
        if (!entries)
            return;
        for (const FolderEntry& entry : *entries) {
            if (IsEnding())
                return;
            TakeEntry(Path::Join(folder, entry.name), entry.kind);
        }
    }

    [[nodiscard]] bool IsAbandoned() const {
        return m_stop.stop_requested() || m_request.m_hWndTarget.IsClosed();
    }

private:
    [[nodiscard]] bool IsEnding() const { return g_bCancelScan || IsAbandoned(); }

    void TakeEntry(const QString& path, FileKind kind) {
        if (kind == FileKind::Folder) {
            if (m_request.m_bRecurse)
                WalkFolder(path);
        } else if (kind == FileKind::Regular && IsMusicFile(path) &&
                   (m_request.m_bIncludePlaylists || !IsPlaylistFile(path))) {
            SendFile(path);
        }
    }

    void SendFile(const QString& path) {
        auto file = std::make_unique<CMediaFileRequest>();
        file->m_strPath = path;
        file->m_iType = m_request.m_iType;
        file->m_iListId = m_request.m_iListId;
        m_request.m_hWndTarget.Send({WM_TD_ADD_TRACK, 0, m_nNumber++, std::move(file)});
    }

    void ShowFolder(const QString& folder) const {
        if (m_request.m_pProgressDlg.IsClosed())
            return;
        auto text = std::make_unique<TextPayload>(m_strHead + Path::ForDisplay(folder));
        m_request.m_pProgressDlg.Send({WM_SETTEXT, kScanFolderItem, 0, std::move(text)});
    }

    const CScanRequest& m_request;
    const std::stop_token& m_stop;
    const QString m_strHead; ///< what stands before a folder that is shown
    std::set<FileIdentity> m_walked;
    std::intptr_t m_nNumber = 1;
};

} // namespace

int ScanFolders(const CScanRequest& request, const std::stop_token& stop) {
    g_bCancelScan = 0;
    try {
        Walk walk(request, stop);
        walk.WalkFolder(request.m_strPath);
        if (!walk.IsAbandoned())
            request.m_hWndTarget.Send({WM_TD_LIST_DONE, request.m_iType});
        return 0;
    } catch (const std::exception& error) {
        qWarning() << "A scan failed:" << error.what();
        return 1;
    }
}

void StartScanThread(std::unique_ptr<CScanRequest> request, std::stop_token stop) {
    std::thread scan(
        [request = std::move(request), stop = std::move(stop)] { ScanFolders(*request, stop); });
    LetRun(std::move(scan), kScanThreadName);
}
