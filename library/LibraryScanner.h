#pragma once

#include "library/FolderScan.h"

#include <QString>

#include <functional>
#include <memory>
#include <set>
#include <stop_token>

class CMediaList;
class CMediaLists;
class CTrackRecord;

/// The record of a file, with what the file system and its tags tell. What can't be read stays a
/// track with its file name as title.
[[nodiscard]] std::unique_ptr<CTrackRecord> MakeTrack(const CMediaFileRequest& request);

/// Fills the lists from the disk: starts the scans, and takes the files that they find.
///
/// Thread:   interface thread; the walks run on threads of their own.
/// Lifetime: `lists` outlives this. Destroying it ends the walks that it started; it waits for
///           none of them.
/// Errors:   what can't be read stays a track with its file name as title.
class CLibraryScanner {
public:
    /// Takes a track that was just appended.
    using AddedHandler = std::function<void(CMediaList& list, int index)>;

    explicit CLibraryScanner(CMediaLists& lists)
        : m_lists(lists) {}
    ~CLibraryScanner() { m_stop.request_stop(); }
    CLibraryScanner(const CLibraryScanner&) = delete;
    CLibraryScanner& operator=(const CLibraryScanner&) = delete;

    /// Scans a folder of the list with all its subfolders, telling `target`.
    void ScanList(const MessageAddress& target, int type, int listId, const QString& folder);

    /// True from ScanList() to the end of that scan.
    [[nodiscard]] bool IsScanning(int type) const { return m_scanning.contains(type); }

    /// To be called on WM_TD_LIST_DONE.
    void OnListDone(int type) { m_scanning.erase(type); }

    void Start(std::unique_ptr<CScanRequest> request);

    /// Tells once when the scan of My Collection adds the file of this path.
    void AutoPlay(const QString& path, AddedHandler play);

    /// True if the path lies under the folder of My Collection.
    [[nodiscard]] bool IsInCollection(const QString& path) const;

    /// Handler of WM_TD_ADD_TRACK: reads the file's tags and appends it to the list that the
    /// request names. Files of My Collection enter no list but their own. Returns 1 if there is no
    /// such list, else 0.
    std::intptr_t OnAddTrack(Message& message);

private:
    CMediaLists& m_lists;
    std::stop_source m_stop;
    std::set<int> m_scanning;  ///< types of the lists that are being scanned
    QString m_strAutoPlayPath; ///< empty: none
    AddedHandler m_pfnAutoPlay;
};
