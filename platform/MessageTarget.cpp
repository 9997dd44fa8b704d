#include "platform/MessageTarget.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QThread>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// How long messages are handled before the event loop gets a turn. Short against the 100 ms that
/// a person begins to notice, long against the cost of one turn.
constexpr auto kHandlingTime = 8ms;

const QEvent::Type kWakeEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// The place of a waiting sender's answer, on the sender's stack.
struct Reply {
    std::condition_variable answered;
    bool done = false;
    std::intptr_t value = 0;
};

struct Envelope {
    Message message;
    Reply* reply = nullptr; ///< none for a posted message
};

} // namespace

/// What sender and receiver share. Qt's own queue only wakes the receiver; messages go through
/// this lock, which orders all that was written before a message before all that its handler reads.
struct MessageAddress::Mailbox {
    explicit Mailbox(MessageTarget* target)
        : receiver(target)
        , thread(target->thread()) {}

    std::mutex mutex;
    std::deque<Envelope> queue;
    MessageTarget* receiver; ///< none once the target is gone
    QThread* const thread;
    bool wakePending = false;

    /// Under the lock. False if the target is gone.
    bool Enqueue(Envelope& envelope) {
        if (!receiver)
            return false;
        queue.push_back(std::move(envelope));
        Wake();
        return true;
    }

    /// Under the lock. One event is under way at most, however many messages wait.
    void Wake() {
        if (!std::exchange(wakePending, true))
            QCoreApplication::postEvent(receiver, new QEvent(kWakeEvent));
    }

    void Answer(Reply* reply, std::intptr_t value) {
        if (!reply)
            return;
        const std::lock_guard lock(mutex);
        reply->value = value;
        reply->done = true;
        reply->answered.notify_one();
    }

    bool Next(Envelope& envelope) {
        const std::lock_guard lock(mutex);
        if (queue.empty())
            return false;
        envelope = std::move(queue.front());
        queue.pop_front();
        // A handler may run an event loop of its own, which must go on with what is queued.
        if (!queue.empty())
            Wake();
        return true;
    }
};

bool MessageAddress::Post(Message message) const {
    if (!m_mailbox)
        return false;
    Envelope envelope{std::move(message)};
    const std::lock_guard lock(m_mailbox->mutex);
    return m_mailbox->Enqueue(envelope);
}

std::intptr_t MessageAddress::Send(Message message) const {
    if (!m_mailbox)
        return 0;
    if (QThread::currentThread() == m_mailbox->thread)
        return m_mailbox->receiver ? m_mailbox->receiver->Handle(message) : 0;
    Reply reply;
    Envelope envelope{std::move(message), &reply};
    std::unique_lock lock(m_mailbox->mutex);
    if (!m_mailbox->Enqueue(envelope))
        return 0;
    reply.answered.wait(lock, [&reply] { return reply.done; });
    return reply.value;
}

bool MessageAddress::IsClosed() const {
    if (!m_mailbox)
        return true;
    const std::lock_guard lock(m_mailbox->mutex);
    return m_mailbox->receiver == nullptr;
}

MessageTarget::MessageTarget()
    : m_address(std::make_shared<MessageAddress::Mailbox>(this)) {}

MessageTarget::~MessageTarget() {
    auto& mailbox = *m_address.m_mailbox;
    std::deque<Envelope> undelivered;
    {
        const std::lock_guard lock(mailbox.mutex);
        mailbox.receiver = nullptr;
        undelivered.swap(mailbox.queue);
    }
    for (const Envelope& envelope : undelivered)
        mailbox.Answer(envelope.reply, 0);
}

void MessageTarget::On(int id, Handler handler) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_handlers[id] = std::move(handler);
}

void MessageTarget::SetHeld(bool held) {
    Q_ASSERT(QThread::currentThread() == thread());
    if (std::exchange(m_bHeld, held) == held || held)
        return;
    auto& mailbox = *m_address.m_mailbox;
    const std::lock_guard lock(mailbox.mutex);
    mailbox.Wake();
}

bool MessageTarget::event(QEvent* event) {
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

void MessageTarget::timerEvent(QTimerEvent*) {
    killTimer(std::exchange(m_iPauseTimer, 0));
    DeliverQueued();
}

void MessageTarget::DeliverQueued() {
    const auto end = std::chrono::steady_clock::now() + kHandlingTime;
    auto& mailbox = *m_address.m_mailbox;
    Envelope envelope;
    while (!m_bHeld && mailbox.Next(envelope)) {
        const std::intptr_t answer = Handle(envelope.message);
        envelope.message.payload.reset();
        mailbox.Answer(envelope.reply, answer);
        if (std::chrono::steady_clock::now() >= end) {
            if (m_iPauseTimer == 0)
                m_iPauseTimer = startTimer(0);
            return;
        }
    }
}

std::intptr_t MessageTarget::Handle(Message& message) const {
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
