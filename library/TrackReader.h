#pragma once

#include "library/FolderScan.h"
#include "library/TrackRecord.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

/// Reads files into records on threads of its own and delivers the records in the order in which
/// the files came, some at a time.
///
/// A few threads read at once, and more of them where the files come slowly: a disk that needs long
/// for each file is asked for several at a time.
///
/// Thread:   one thread adds files and finishes. Records are delivered on any thread, one delivery
///           after the other.
/// Lifetime: nobody waits for the reading threads, which may stand still in a file for long; they
///           keep what they need. After `stop` or the destructor, nothing more is read.
/// Cost:     holds about kMostWaiting files that are not delivered yet.
class CTrackReader {
public:
    using Tracks = std::vector<std::unique_ptr<CTrackRecord>>;
    using Deliver = std::function<void(Tracks tracks)>;

    static constexpr int kMostWaiting = 2048;

    /// Makes the record of a file.
    using Read = std::function<std::unique_ptr<CTrackRecord>(const CMediaFileRequest& file)>;

    CTrackReader(std::stop_token stop, Read read, Deliver deliver);
    ~CTrackReader();
    CTrackReader(const CTrackReader&) = delete;
    CTrackReader& operator=(const CTrackReader&) = delete;

    /// Has files read; waits while too many are waiting. False once reading has been stopped, or
    /// has failed with an exception.
    bool Add(FoundFiles files);

    /// Waits until all has been delivered. False as for Add().
    [[nodiscard]] bool Finish();

private:
    class Queue;
    const std::shared_ptr<Queue> m_pQueue;
};
