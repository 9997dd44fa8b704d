#include "platform/MessageTarget.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QThread>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// How long messages are handled before the event loop gets a turn. Short against the 100 ms that
/// a person begins to notice, long against the cost of one turn.
constexpr auto kHandlingTime = 8ms;

/// How long a sender looks out for its answer, and a target for the next message of a sender that
/// it has just answered, before the thread goes to sleep. To wake a thread can take longer than to
/// handle a message; a worker that sends one message after another is served without.
constexpr auto kAnswerLookout = 200us;
constexpr auto kMessageLookout = 50us;

/// Waits awake until `happened` holds or the time is over.
template <typename Test>
void LookOut(std::chrono::microseconds time, Test happened) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!happened() && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
}

const QEvent::Type kWakeEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// The place of a waiting sender's answer, on the sender's stack.
struct Reply {
    std::condition_variable answered;
    std::atomic<bool> done = false; ///< set under the lock
    std::intptr_t value = 0;
};

struct Envelope {
    Message message;
    Reply* reply = nullptr; ///< none for a posted message
};

} // namespace

/// What sender and receiver share. Qt's own queue only wakes the receiver; messages go through
/// this lock, which orders all that was written before a message before all that its handler reads.
struct CMessageAddress::Mailbox {
    explicit Mailbox(CMessageTarget* target)
        : receiver(target)
        , thread(target->thread()) {}

    std::mutex mutex;
    std::deque<Envelope> queue;
    CMessageTarget* receiver; ///< none once the target is gone
    QThread* const thread;
    bool wakePending = false;          ///< the receiver needs no more waking
    std::atomic<bool> waiting = false; ///< the queue is not empty; changed under the lock

    /// Under the lock. False if the target is gone.
    bool Enqueue(Envelope& envelope) {
        if (!receiver)
            return false;
        queue.push_back(std::move(envelope));
        waiting = true;
        Wake();
        return true;
    }

    /// Under the lock. One event is under way at most, however many messages wait.
    void Wake() {
        if (!std::exchange(wakePending, true))
            QCoreApplication::postEvent(receiver, new QEvent(kWakeEvent));
    }

    /// Under the lock.
    static void Answer(Reply& reply, std::intptr_t value) {
        reply.value = value;
        reply.done = true;
        reply.answered.notify_one();
    }

    /// Answers, and then waits awake for a moment: a sender that was answered often sends again.
    void AnswerAndLookOut(Reply& reply, std::intptr_t value) {
        {
            const std::lock_guard lock(mutex);
            Answer(reply, value);
            wakePending = true;
        }
        LookOut(kMessageLookout, [this] { return waiting.load(); });
        const std::lock_guard lock(mutex);
        wakePending = false;
    }

    bool Next(Envelope& envelope) {
        const std::lock_guard lock(mutex);
        if (queue.empty())
            return false;
        envelope = std::move(queue.front());
        queue.pop_front();
        waiting = !queue.empty();
        // A handler may run an event loop of its own, which must go on with what is queued.
        if (!queue.empty())
            Wake();
        return true;
    }
};

bool CMessageAddress::Post(Message message) const {
    if (!m_mailbox)
        return false;
    Envelope envelope{std::move(message)};
    const std::lock_guard lock(m_mailbox->mutex);
    return m_mailbox->Enqueue(envelope);
}

std::intptr_t CMessageAddress::Send(Message message) const {
    if (!m_mailbox)
        return 0;
    if (QThread::currentThread() == m_mailbox->thread)
        return m_mailbox->receiver ? m_mailbox->receiver->Handle(message) : 0;
    Reply reply;
    Envelope envelope{std::move(message), &reply};
    {
        const std::lock_guard lock(m_mailbox->mutex);
        if (!m_mailbox->Enqueue(envelope))
            return 0;
    }
    LookOut(kAnswerLookout, [&reply] { return reply.done.load(); });
    // The lock is taken in any case: the one who answers is done with the reply when it is free.
    std::unique_lock lock(m_mailbox->mutex);
    reply.answered.wait(lock, [&reply] { return reply.done.load(); });
    return reply.value;
}

bool CMessageAddress::IsClosed() const {
    if (!m_mailbox)
        return true;
    const std::lock_guard lock(m_mailbox->mutex);
    return m_mailbox->receiver == nullptr;
}

CMessageTarget::CMessageTarget()
    : m_address(std::make_shared<CMessageAddress::Mailbox>(this)) {}

CMessageTarget::~CMessageTarget() {
    auto& mailbox = *m_address.m_mailbox;
    std::deque<Envelope> undelivered;
    {
        const std::lock_guard lock(mailbox.mutex);
        mailbox.receiver = nullptr;
        undelivered.swap(mailbox.queue);
    }
    for (const Envelope& envelope : undelivered) {
        const std::lock_guard lock(mailbox.mutex);
        if (envelope.reply)
            mailbox.Answer(*envelope.reply, 0);
    }
}

void CMessageTarget::On(int id, Handler handler) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_handlers[id] = std::move(handler);
}

void CMessageTarget::SetHeld(bool held) {
    Q_ASSERT(QThread::currentThread() == thread());
    if (std::exchange(m_bHeld, held) == held || held)
        return;
    auto& mailbox = *m_address.m_mailbox;
    const std::lock_guard lock(mailbox.mutex);
    mailbox.Wake();
}

bool CMessageTarget::event(QEvent* event) {
    bool woken = false;
    {
        // A sender made the wake event: under the lock, what it wrote is seen.
        const std::lock_guard lock(m_address.m_mailbox->mutex);
        woken = event->type() == kWakeEvent;
        if (woken)
            m_address.m_mailbox->wakePending = false;
    }
    if (!woken)
        return QObject::event(event);
    if (m_iPauseTimer == 0)
        DeliverQueued();
    return true;
}

void CMessageTarget::timerEvent(QTimerEvent*) {
    killTimer(std::exchange(m_iPauseTimer, 0));
    DeliverQueued();
}

void CMessageTarget::DeliverQueued() {
    const auto end = std::chrono::steady_clock::now() + kHandlingTime;
    auto& mailbox = *m_address.m_mailbox;
    Envelope envelope;
    while (!m_bHeld && mailbox.Next(envelope)) {
        const std::intptr_t answer = Handle(envelope.message);
        envelope.message.payload.reset();
        if (envelope.reply)
            mailbox.AnswerAndLookOut(*envelope.reply, answer);
        if (std::chrono::steady_clock::now() >= end) {
            if (m_iPauseTimer == 0)
                m_iPauseTimer = startTimer(0);
            return;
        }
    }
}

std::intptr_t CMessageTarget::Handle(Message& message) const {
    const auto found = m_handlers.find(message.id);
    if (found == m_handlers.end())
        return 0;
    try {
        return found->second(message);
    } catch (const std::exception& error) {
        qWarning() << "A handler of message" << message.id << "failed:" << error.what();
    } catch (...) {
        qWarning() << "A handler of message" << message.id << "failed";
    }
    return 0;
}
