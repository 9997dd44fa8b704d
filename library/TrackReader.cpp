#include "library/TrackReader.h"

#include "platform/WorkerThread.h"

#include <QDebug>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr std::size_t kMostReaders = 16;

/// A file that takes longer is waited for, not worked on: another reader won't be in the way.
constexpr auto kSlowFile = 5ms;

/// How much is delivered at a time: as many tracks, or what has come in as long.
constexpr std::size_t kFullBatch = 256;
constexpr auto kLongestBatch = 50ms;

/// Files that a reader takes together.
constexpr std::size_t kMostAtOnce = 8;

constexpr auto kReaderThreadName = "track reader";

} // namespace

class CTrackReader::Queue : public std::enable_shared_from_this<Queue> {
public:
    Queue(std::stop_token stop, Read read, Deliver deliver)
        : m_stop(std::move(stop))
        , m_read(std::move(read))
        , m_deliver(std::move(deliver))
        , m_onStop(m_stop, Wake{*this}) {}

    bool Add(FoundFiles files) {
        std::unique_lock lock(m_mutex);
        m_moved.wait(lock, [this] { return IsEnded() || m_files.size() < kMostWaiting; });
        if (IsEnded())
            return false;
        for (auto& file : files)
            m_files.push_back({std::move(file), nullptr});
        while (m_nReaders < FirstReaders())
            StartReader();
        m_added.notify_all();
        return true;
    }

    bool Finish() {
        std::unique_lock lock(m_mutex);
        m_moved.wait(lock, [this] { return IsEnded() || m_files.empty(); });
        if (IsEnded())
            return false;
        DeliverBatch();
        return true;
    }

    void End() {
        const std::lock_guard lock(m_mutex);
        m_bEnded = true;
        WakeAll();
    }

private:
    struct File {
        std::unique_ptr<CMediaFileRequest> request; ///< none once a reader has it
        std::unique_ptr<CTrackRecord> track;        ///< none until it is read
    };

    struct Wake {
        Queue& queue;
        void operator()() const { queue.End(); }
    };

    [[nodiscard]] bool IsEnded() const { return m_bEnded; }

    [[nodiscard]] static std::size_t FirstReaders() {
        return std::clamp(std::thread::hardware_concurrency(), 2u, 4u);
    }

    void WakeAll() {
        m_added.notify_all();
        m_moved.notify_all();
    }

    void StartReader() {
        LetRun([self = shared_from_this()] { self->ReadFiles(); }, kReaderThreadName);
        ++m_nReaders;
    }

    void ReadFiles() {
        std::unique_lock lock(m_mutex);
        try {
            while (WaitForFile(lock))
                ReadNext(lock);
        } catch (const std::exception& error) {
            qWarning() << "A file could not be read:" << error.what();
            if (!lock.owns_lock())
                lock.lock();
            m_bEnded = true;
            WakeAll();
        }
    }

    bool WaitForFile(std::unique_lock<std::mutex>& lock) {
        if (m_nNext == m_files.size())
            DeliverBatch(); // nothing more may come for long
        m_added.wait(lock, [this] { return IsEnded() || m_nNext < m_files.size(); });
        return !IsEnded();
    }

    /// Reads a few files at once, so that the others are rarely waited for at the lock.
    void ReadNext(std::unique_lock<std::mutex>& lock) {
        const std::size_t unread = m_files.size() - m_nNext;
        const std::size_t count =
            std::clamp(unread / (2 * m_nReaders), std::size_t(1), kMostAtOnce);
        const std::uint64_t number = m_nTaken + m_nNext;
        FoundFiles files;
        for (std::size_t i = 0; i < count; ++i)
            files.push_back(std::move(m_files[m_nNext++].request));
        lock.unlock();
        const auto begin = Clock::now();
        Tracks tracks;
        for (const auto& file : files)
            tracks.push_back(m_read(*file));
        const bool wasSlow = Clock::now() - begin > kSlowFile * count;
        lock.lock();
        for (std::size_t i = 0; i < count; ++i)
            m_files[number - m_nTaken + i].track = std::move(tracks[i]);
        for (int more = 0; wasSlow && more < 2 && m_nReaders < kMostReaders; ++more)
            StartReader();
        TakeFinished();
    }

    /// Moves what is finished at the head of the queue into the batch.
    void TakeFinished() {
        const bool wasFull = m_files.size() >= kMostWaiting;
        while (!m_files.empty() && m_files.front().track) {
            m_batch.push_back(std::move(m_files.front().track));
            m_files.pop_front();
            ++m_nTaken;
            --m_nNext;
        }
        if (m_batch.size() >= kFullBatch || Clock::now() - m_delivered > kLongestBatch)
            DeliverBatch();
        if (wasFull || m_files.empty())
            m_moved.notify_all();
    }

    /// Under the lock, so that batches keep their order.
    void DeliverBatch() {
        m_delivered = Clock::now();
        if (!m_batch.empty() && !IsEnded())
            m_deliver(std::exchange(m_batch, {}));
    }

    const std::stop_token m_stop;
    const Read m_read;
    const Deliver m_deliver;

    std::mutex m_mutex;
    std::condition_variable m_added; ///< files to read
    std::condition_variable m_moved; ///< room for files, or none left
    std::deque<File> m_files;        ///< in the order of their delivery
    std::size_t m_nNext = 0;         ///< index of the first file that no reader has
    std::uint64_t m_nTaken = 0;      ///< how many have gone from the head of the queue
    Tracks m_batch;
    Clock::time_point m_delivered = Clock::now();
    std::size_t m_nReaders = 0;
    bool m_bEnded = false;
    std::stop_callback<Wake> m_onStop; ///< last, for it may call at once
};

CTrackReader::CTrackReader(std::stop_token stop, Read read, Deliver deliver)
    : m_pQueue(std::make_shared<Queue>(std::move(stop), std::move(read), std::move(deliver))) {}

CTrackReader::~CTrackReader() {
    m_pQueue->End();
}

bool CTrackReader::Add(FoundFiles files) {
    return m_pQueue->Add(std::move(files));
}

bool CTrackReader::Finish() {
    return m_pQueue->Finish();
}
