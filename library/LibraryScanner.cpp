#include "library/LibraryScanner.h"

#include "base/Messages.h"
#include "library/MediaLists.h"
#include "library/TrackFile.h"
#include "platform/Path.h"
#include "platform/WorkerThread.h"

#include <QDebug>

#include <exception>
#include <thread>
#include <utility>

namespace {

constexpr auto kScanThreadName = "folder scan";

struct TracksPayload : CMessagePayload {
    explicit TracksPayload(CTrackReader::Tracks read)
        : tracks(std::move(read)) {}
    CTrackReader::Tracks tracks;
};

struct EndPayload : CMessagePayload {
    EndPayload(int list, bool whole)
        : listId(list)
        , isWhole(whole) {}
    int listId;
    bool isWhole;
};

} // namespace

CLibraryScanner::CLibraryScanner(CMediaLists& lists)
    : m_lists(lists)
    , m_removing(lists.OnRemoving([this](const CMediaList& list) { Leave(list.m_iId); }))
    , m_additions("added tracks") {}

CLibraryScanner::~CLibraryScanner() {
    while (!m_scans.empty())
        Leave(m_scans.begin()->first);
}

void CLibraryScanner::Listen(CMessageTarget& messages) {
    m_messages = messages.Address();
    messages.On(WM_TD_ADD_TRACK, [this](Message& message) { return OnAddTrack(message); });
    messages.On(WM_TD_TRACKS_READ, [this](Message& message) {
        OnTracksRead(message);
        return 0;
    });
    messages.On(WM_TD_LIST_DONE, [this](Message& message) {
        OnListDone(message);
        return 0;
    });
}

void CLibraryScanner::ScanList(const CMediaList& list, const QString& folder) {
    auto request = std::make_unique<CScanRequest>();
    request->m_iType = list.m_iType;
    request->m_iListId = list.m_iId;
    request->m_strPath = folder;
    request->m_bRecurse = 1;
    Start(std::move(request));
}

void CLibraryScanner::Start(std::unique_ptr<CScanRequest> request) {
    const CMediaList* list = m_lists.FindListById(request->m_iListId);
    if (!list)
        return;
    StartScan(*list, true,
              [shared = std::shared_ptr<const CScanRequest>(std::move(request))](
                  const std::stop_token& stop, const FileTaker& take) {
                  WalkFolders(*shared, stop, take);
              });
}

void CLibraryScanner::ReadTracks(const CMediaList& list) {
    QStringList paths;
    for (int index = 0; index < list.GetCount(); ++index)
        paths += list[index]->m_strPath;
    const int type = list.m_iType;
    StartScan(list, false, [paths, type](const std::stop_token&, const FileTaker& take) {
        FoundFiles files;
        for (const QString& path : paths) {
            files.push_back(std::make_unique<CMediaFileRequest>());
            files.back()->m_strPath = path;
            files.back()->m_iType = type;
        }
        take(std::move(files));
    });
}

void CLibraryScanner::StartScan(const CMediaList& list, bool appends, Source source) {
    Leave(list.m_iId);
    const Scan& scan = m_scans[list.m_iId] = {++m_nLastScan, {}, appends};
    const auto run = [source = std::move(source), messages = m_messages, listId = list.m_iId,
                      type = list.m_iType, id = scan.id, stop = scan.stop.get_token(),
                      origin = OriginOf(list.TypeOfSource())] {
        const auto deliver = [messages, listId, id](CTrackReader::Tracks tracks) {
            messages.Post({WM_TD_TRACKS_READ, listId, id,
                           std::make_unique<TracksPayload>(std::move(tracks))});
        };
        const auto read = [origin](const CMediaFileRequest& file) {
            return MakeTrack(file, origin);
        };
        bool isWhole = false;
        try {
            CTrackReader reader(stop, read, deliver);
            source(stop, [&reader](FoundFiles files) { return reader.Add(std::move(files)); });
            isWhole = reader.Finish();
        } catch (const std::exception& error) {
            qWarning() << "A scan failed:" << error.what();
        }
        messages.Post({WM_TD_LIST_DONE, type, id, std::make_unique<EndPayload>(listId, isWhole)});
    };
    LetRun(run, kScanThreadName);
}

/// What its threads still send is passed over.
void CLibraryScanner::Leave(int listId) {
    if (const auto scan = m_scans.extract(listId))
        scan.mapped().stop.request_stop();
}

void CLibraryScanner::Cancel(int listId) {
    if (IsScanning(listId))
        End(listId, false);
}

void CLibraryScanner::End(int listId, bool isWhole) {
    Leave(listId);
    if (const CMediaList* list = m_lists.FindListById(listId))
        m_done.Tell(*list, isWhole);
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
    const CMediaList* list = request ? m_lists.FindListById(request->m_iListId) : nullptr;
    if (!list)
        return 1;
    AddRequest(*list, std::move(*request), {});
    return 0;
}

void CLibraryScanner::Add(const CMediaList& list, const QString& path, AddedHandler added) {
    CMediaFileRequest request;
    request.m_strPath = path;
    request.m_iType = list.m_iType;
    request.m_iListId = list.m_iId;
    AddRequest(list, std::move(request), std::move(added));
}

void CLibraryScanner::AddRequest(const CMediaList& list, CMediaFileRequest request,
                                 AddedHandler added) {
    const TrackOrigin origin = OriginOf(list.TypeOfSource());
    m_additions.Run([this, request = std::move(request), added = std::move(added), origin] {
        // Shared, because functions are copied.
        const auto track = std::make_shared<CTrackReader::Tracks>();
        track->push_back(MakeTrack(request, origin));
        return [this, track, added, listId = request.m_iListId] {
            CMediaList* list = m_lists.FindListById(listId);
            if (!list)
                return;
            const int first = list->GetCount();
            Append(*list, std::move(*track));
            if (added && list->GetCount() > first)
                added(*list, first);
        };
    });
}

/// The list that a scan fills, while it is there and the scan has not been left.
CMediaList* CLibraryScanner::FindScanned(int listId, int scanId) const {
    const auto scan = m_scans.find(listId);
    return scan != m_scans.end() && scan->second.id == scanId ? m_lists.FindListById(listId)
                                                              : nullptr;
}

void CLibraryScanner::OnTracksRead(Message& message) {
    const auto read = message.Take<TracksPayload>();
    const int listId = static_cast<int>(message.wParam);
    CMediaList* list = FindScanned(listId, static_cast<int>(message.lParam));
    if (!list || !read)
        return;
    if (m_scans.at(listId).appends)
        Append(*list, std::move(read->tracks));
    else
        Update(*list, read->tracks);
}

/// Files of My Collection enter no other list but as copies.
void CLibraryScanner::Append(CMediaList& list, CTrackReader::Tracks tracks) {
    const bool isCollection = list.m_iType == MEDIA_TYPE_COLLECTION;
    const bool isElsewhere = !isCollection && list.TypeOfSource() == list.m_iType;
    const int first = list.GetCount();
    int played = -1;
    for (auto& track : tracks) {
        if (isElsewhere && IsInCollection(track->m_strPath))
            continue;
        if (isCollection && !m_strAutoPlayPath.isEmpty() && track->m_strPath == m_strAutoPlayPath)
            played = list.GetCount();
        list.Append(std::move(track));
    }
    if (list.GetCount() > first)
        m_found.Tell(list, first);
    if (played < 0)
        return;
    m_strAutoPlayPath.clear();
    m_pfnAutoPlay(list, played);
}

void CLibraryScanner::Update(CMediaList& list, const CTrackReader::Tracks& tracks) {
    std::vector<int> indices;
    for (const auto& track : tracks) {
        for (const int index : list.FindPaths(track->m_strPath)) {
            TakeReading(*track, *list[index]);
            indices.push_back(index);
        }
    }
    m_read.Tell(list, indices);
}

void CLibraryScanner::OnListDone(Message& message) {
    const auto end = message.Take<EndPayload>();
    if (end && FindScanned(end->listId, static_cast<int>(message.lParam)))
        End(end->listId, end->isWhole);
}
