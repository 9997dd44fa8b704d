#pragma once

#include "base/Listeners.h"
#include "library/FolderScan.h"
#include "library/TrackReader.h"
#include "platform/Worker.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <stop_token>

class CMediaList;
class CMediaLists;

/// Fills the lists from the disk: walks folders, has their files read, and appends what comes.
///
/// Each scan has a thread of its own and a stop of its own; of a list only one scan runs at a time.
/// Cancelled, it ends at once, whatever its threads stand still in, and what it has brought stays.
///
/// Thread:   interface thread; walks and reading have theirs.
/// Lifetime: `lists` outlives this. Destroying it, or removing the list, ends scans; it waits for
///           no thread.
/// Errors:   what can't be read stays a track with its file name as title.
class CLibraryScanner {
public:
    /// Takes a track that was just appended.
    using AddedHandler = std::function<void(CMediaList& list, int index)>;

    explicit CLibraryScanner(CMediaLists& lists);
    ~CLibraryScanner();
    CLibraryScanner(const CLibraryScanner&) = delete;
    CLibraryScanner& operator=(const CLibraryScanner&) = delete;

    /// Takes the messages of scans, and of others that fill lists: WM_TD_ADD_TRACK,
    /// WM_TD_TRACKS_READ and WM_TD_LIST_DONE.
    void Listen(CMessageTarget& messages);

    /// Scans a folder of a list with all its subfolders. A scan of the list that runs is left.
    void ScanList(const CMediaList& list, const QString& folder);
    void Start(std::unique_ptr<CScanRequest> request);

    /// Reads the files of all tracks that a list has now, whose texts and sizes then change.
    void ReadTracks(const CMediaList& list);

    /// Adds a file to a list, and tells when it is there.
    void Add(const CMediaList& list, const QString& path, AddedHandler added);

    /// True while a scan fills the list.
    [[nodiscard]] bool IsScanning(int listId) const { return m_scans.contains(listId); }

    /// Ends the scan of a list, if one runs, which is then told as one that is not whole.
    void Cancel(int listId);

    /// Ends it without a word: nothing more is added to the list.
    void Leave(int listId);

    /// Tells once when the scan of My Collection adds the file of this path.
    void AutoPlay(const QString& path, AddedHandler play);

    /// True if the path lies under the folder of My Collection.
    [[nodiscard]] bool IsInCollection(const QString& path) const;

    /// Hears of tracks that were appended to a list by a scan: from index `first` on.
    using FoundCall = std::function<void(const CMediaList& list, int first)>;
    [[nodiscard]] CListening OnFound(FoundCall call) { return m_found.Listen(std::move(call)); }

    /// Hears of tracks whose files have been read, at these indices.
    using ReadCall = std::function<void(const CMediaList& list, const std::vector<int>& indices)>;
    [[nodiscard]] CListening OnRead(ReadCall call) { return m_read.Listen(std::move(call)); }

    /// Hears of the end of a scan; `isWhole` says that nothing is missing.
    using DoneCall = std::function<void(const CMediaList& list, bool isWhole)>;
    [[nodiscard]] CListening OnDone(DoneCall call) { return m_done.Listen(std::move(call)); }

private:
    /// What the thread of a scan does: hands over files until they end, or no more are wanted.
    using Source = std::function<void(const std::stop_token& stop, const FileTaker& take)>;

    struct Scan {
        int id;
        std::stop_source stop;
        bool appends; ///< or else reads what is there
    };

    void AddRequest(const CMediaList& list, CMediaFileRequest request, AddedHandler added);
    void StartScan(const CMediaList& list, bool appends, Source source);
    [[nodiscard]] CMediaList* FindScanned(int listId, int scanId) const;
    std::intptr_t OnAddTrack(Message& message);
    void OnTracksRead(Message& message);
    void OnListDone(Message& message);
    void Append(CMediaList& list, CTrackReader::Tracks tracks);
    void Update(CMediaList& list, const CTrackReader::Tracks& tracks);
    void End(int listId, bool isWhole);

    CMediaLists& m_lists;
    CMessageAddress m_messages;
    std::map<int, Scan> m_scans; ///< those that run, by the list
    int m_nLastScan = 0;
    QString m_strAutoPlayPath; ///< empty: none
    AddedHandler m_pfnAutoPlay;
    CListeners<const CMediaList&, int> m_found;
    CListeners<const CMediaList&, const std::vector<int>&> m_read;
    CListeners<const CMediaList&, bool> m_done;
    CListening m_removing;
    CWorker m_additions; ///< reads single files
};
