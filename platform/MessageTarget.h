#pragma once

#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

class QTimerEvent;

/// Base of what a message carries by ownership.
class CMessagePayload {
public:
    virtual ~CMessagePayload() = default;
};

/// A number with two words, and possibly something that the message owns until its handler takes
/// it. What nobody takes is freed with the message.
struct Message {
    int id = 0;
    std::intptr_t wParam = 0;
    std::intptr_t lParam = 0;
    std::unique_ptr<CMessagePayload> payload = {};

    /// Takes the payload, which has to be a `T`. Nothing if the message carries something else.
    template <typename T>
    [[nodiscard]] std::unique_ptr<T> Take() {
        auto* taken = dynamic_cast<T*>(payload.get());
        if (taken)
            static_cast<void>(payload.release());
        return std::unique_ptr<T>(taken);
    }
};

/// Where messages are sent to: a copyable handle to a CMessageTarget that outlives it.
///
/// Thread: any. A message to a target that is gone is freed and answered with 0.
class CMessageAddress {
public:
    /// An address that leads nowhere.
    CMessageAddress() = default;

    /// Puts the message in the target's queue and returns at once. Messages of one sender keep
    /// their order. False if the target is gone.
    bool Post(Message message) const;

    /// Waits until the handler has answered, and returns its answer. On the target's own thread
    /// this is a direct call, ahead of what is queued.
    std::intptr_t Send(Message message) const;

    /// True once the target is gone.
    [[nodiscard]] bool IsClosed() const;

private:
    friend class CMessageTarget;
    struct Mailbox;
    explicit CMessageAddress(std::shared_ptr<Mailbox> mailbox)
        : m_mailbox(std::move(mailbox)) {}

    std::shared_ptr<Mailbox> m_mailbox;
};

/// The receiver of messages on one thread: each number has one handler, and handlers run one at a
/// time from the thread's event loop.
///
/// However fast messages come in, the event loop stays alive: after a few milliseconds of
/// handling, the target lets timers, input and painting have a turn.
///
/// Thread:   made, used and destroyed on one thread with an event loop, not from its own handlers.
/// Lifetime: senders hold addresses; when the target is destroyed, those that wait wake with the
///           answer 0 and undelivered messages are freed.
/// Errors:   a handler that throws is reported to the debug output, and answers 0.
/// Cost:     a Send from another thread keeps both awake for up to 0.2 ms before they sleep.
class CMessageTarget : public QObject {
public:
    using Handler = std::function<std::intptr_t(Message&)>;

    CMessageTarget();
    ~CMessageTarget() override;

    /// Sets the handler of a message number. A number without handler is answered with 0.
    void On(int id, Handler handler);

    [[nodiscard]] CMessageAddress Address() const { return m_address; }

    /// While held, queued messages wait; direct calls go on. A target starts unheld.
    void SetHeld(bool held);

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    friend class CMessageAddress;
    void DeliverQueued();
    std::intptr_t Handle(Message& message) const;

    CMessageAddress m_address;
    std::map<int, Handler> m_handlers;
    bool m_bHeld = false;
    int m_iPauseTimer = 0; ///< runs while the event loop has its turn, else 0
};
