#pragma once

#include "platform/MessageTarget.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

/// One file that is to be added to a list. Carried by WM_TD_ADD_TRACK.
struct CMediaFileRequest : CMessagePayload {
    QString m_strPath;
    QString m_strCdLength; ///< of a CD track: "mm:ss" from the drive
    int m_iType = 0;       ///< type of the target list
    int m_iListId = 0;
    std::uint64_t m_nSize = 0; ///< bytes; used where the file system can't tell
    int m_bChecked = 0;        ///< the track starts checked
};

/// What to scan.
struct CScanRequest {
    int m_iType = 0; ///< type of the list to fill
    int m_iListId = 0;
    QString m_strPath; ///< folder to walk
    int m_bRecurse = 0;
    CMessageAddress m_pProgressDlg; ///< a dialog to show the current folder in; may lead nowhere
    int m_bIncludePlaylists = 1;
};

/// The text that WM_SETTEXT carries.
struct TextPayload : CMessagePayload {
    explicit TextPayload(QString text)
        : m_strText(std::move(text)) {}
    QString m_strText;
};

/// Item of the progress dialog that shows the current folder.
inline constexpr int kScanFolderItem = 1017;

/// Takes files that were found; false when no more are wanted.
using FoundFiles = std::vector<std::unique_ptr<CMediaFileRequest>>;
using FileTaker = std::function<bool(FoundFiles files)>;

/// Walks the folder of a request and hands over the music files, those of a folder together. No
/// file is opened. The entries of a folder come by their names as people sort them, track 2 before
/// track 10.
///
/// A folder that is met again on the same walk, through a link or a mount, is passed over; so is
/// one that can't be opened. `stop` is looked at before every entry.
///
/// Thread: any; the dialog of the request is told by messages.
void WalkFolders(const CScanRequest& request, const std::stop_token& stop, const FileTaker& take);
