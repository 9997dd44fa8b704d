#pragma once

#include "platform/MessageTarget.h"

#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <stop_token>

/// Asks the main dialog to add one file to a list. Carried by WM_TD_ADD_TRACK.
struct CMediaFileRequest : MessagePayload {
    QString m_strPath;
    QString m_strCdLength; ///< of a CD track: "mm:ss" from the drive
    int m_iType = 0;       ///< type of the target list
    int m_iListId = 0;
    std::uint64_t m_nSize = 0; ///< bytes; used where the file system can't tell
    int m_bChecked = 0;        ///< the track starts checked
};

/// What to scan, and whom to tell.
struct CScanRequest {
    MessageAddress m_hWndTarget; ///< gets WM_TD_ADD_TRACK and WM_TD_LIST_DONE
    int m_iType = 0;             ///< type of the list to fill
    int m_iListId = 0;
    QString m_strPath; ///< folder to walk
    int m_bRecurse = 0;
    MessageAddress m_pProgressDlg; ///< a dialog to show the current folder in; may lead nowhere
    int m_bIncludePlaylists = 1;
};

/// The text that WM_SETTEXT carries.
struct TextPayload : MessagePayload {
    explicit TextPayload(QString text)
        : m_strText(std::move(text)) {}
    QString m_strText;
};

/// Item of the progress dialog that shows the current folder.
inline constexpr int kScanFolderItem = 1017;

/// Ends all running scans. Set by the cancel button, cleared at the start of every scan, looked at
/// before every entry of a folder.
extern std::atomic<int> g_bCancelScan;

/// Walks the folder of a request and sends WM_TD_ADD_TRACK for each music file, then, unless the
/// request was given up, WM_TD_LIST_DONE. No file is opened here, and the call waits while the
/// receiver reads the tags of a file.
///
/// A folder that is met again on the same walk, through a link or a mount, is passed over; so is
/// one that can't be opened.
///
/// Thread: any; messages alone leave it. Errors: 0, or 1 if an exception ended the walk.
int ScanFolders(const CScanRequest& request, const std::stop_token& stop);

/// Runs ScanFolders on a thread of its own. Nobody waits for the thread: it ends with the walk,
/// when `stop` is requested, or with the process.
void StartScanThread(std::unique_ptr<CScanRequest> request, std::stop_token stop);
