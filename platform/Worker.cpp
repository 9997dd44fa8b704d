#include "platform/Worker.h"

#include "platform/WorkerThread.h"

#include <QDebug>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr int kWorkDone = 1;

struct DonePayload : CMessagePayload {
    explicit DonePayload(CWorker::Done done)
        : m_pfnDone(std::move(done)) {}
    CWorker::Done m_pfnDone;
};

CWorker::Done Try(const CWorker::Work& work) {
    try {
        return work();
    } catch (const std::exception& error) {
        qWarning() << "Work in the background failed:" << error.what();
        return {};
    }
}

} // namespace

struct CWorker::State {
    std::mutex mutex;
    std::condition_variable ended;
    std::deque<Work> queue;
    bool isRunning = false; ///< a thread is there to take from the queue
};

CWorker::CWorker(const char* name, AtEnd atEnd)
    : m_pszName(name)
    , m_atEnd(atEnd)
    , m_pState(std::make_shared<State>()) {
    m_results.On(kWorkDone, [](Message& message) {
        if (const auto done = message.Take<DonePayload>())
            done->m_pfnDone();
        return 0;
    });
}

CWorker::~CWorker() {
    std::unique_lock lock(m_pState->mutex);
    if (m_atEnd == AtEnd::Drop)
        m_pState->queue.clear();
    else
        m_pState->ended.wait_for(lock, std::chrono::seconds(kLongestEnd),
                                 [this] { return !m_pState->isRunning; });
}

void CWorker::Run(Work work) {
    const std::lock_guard lock(m_pState->mutex);
    m_pState->queue.push_back(std::move(work));
    if (m_pState->isRunning)
        return;
    LetRun([state = m_pState, results = m_results.Address()] { WorkOff(state, results); },
           m_pszName);
    m_pState->isRunning = true;
}

/// The thread ends with the queue; the next work starts another one.
void CWorker::WorkOff(const std::shared_ptr<State>& state, const CMessageAddress& results) {
    std::unique_lock lock(state->mutex);
    while (!state->queue.empty()) {
        const Work work = std::move(state->queue.front());
        state->queue.pop_front();
        lock.unlock();
        if (Done done = Try(work))
            results.Post({kWorkDone, 0, 0, std::make_unique<DonePayload>(std::move(done))});
        lock.lock();
    }
    state->isRunning = false;
    state->ended.notify_all();
}
