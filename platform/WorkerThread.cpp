#include "platform/WorkerThread.h"

#include <pthread.h>

#include <atomic>
#include <thread>
#include <utility>

namespace {

std::atomic<int> g_nRunning = 0;

/// Counts a thread from before its start until what it works on has gone.
class Running {
public:
    Running() { ++g_nRunning; }
    Running(Running&& other) noexcept
        : m_bCounts(std::exchange(other.m_bCounts, false)) {}
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        if (m_bCounts)
            --g_nRunning;
    }

private:
    bool m_bCounts = true;
};

} // namespace

void LetRun(std::function<void()> work, const char* name) {
    std::thread thread(
        [running = Running(), work = std::move(work)]() mutable { std::exchange(work, {})(); });
    ::pthread_setname_np(thread.native_handle(), name);
    thread.detach();
}

int CountRunningThreads() {
    return g_nRunning;
}
