#pragma once

#include "player/GstHandles.h"
#include "player/MediaGraph.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

/// What is wished of a graph. A newer wish takes the place of an older one that was not looked at.
struct GraphWishes {
    GraphState state = GraphState::Stopped;
    std::optional<std::int64_t> seek; ///< units of 100 ns
    int volume = 0;                   ///< hundredths of a decibel
    bool end = false;                 ///< close everything
};

/// What a graph, on the interface thread, and the thread that works for it know of each other, and
/// the messages of the pipeline, which come from threads of GStreamer.
///
/// Thread: any.
struct GraphChannel {
    /// Changes the wishes, and wakes the thread that works.
    template <typename Change>
    void Wish(Change change) {
        const std::lock_guard lock(mutex);
        change(wishes);
        hasWork = true;
        wake.notify_one();
    }

    bool IsEndWished() {
        const std::lock_guard lock(mutex);
        return wishes.end;
    }

    void AddMessage(GstMessagePtr message) {
        const std::lock_guard lock(mutex);
        messages.push_back(std::move(message));
        hasWork = true;
        wake.notify_one();
    }

    void DropMessages() {
        const std::lock_guard lock(mutex);
        messages.clear();
    }

    /// Tells the interface thread.
    void Tell(GraphEvent event) {
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
        target.Post({notification});
    }

    /// Sets the length, and answers with what was known before.
    std::optional<std::int64_t> ExchangeDuration(std::optional<std::int64_t> length) {
        const std::lock_guard lock(mutex);
        return std::exchange(duration, length);
    }

    /// How far the thread has let go of things.
    enum class Hold {
        Nothing,
        Thread, ///< it works, but the sound device is free
        Device, ///< the sound device is held, or will be as soon as the graph before lets go of it
    };

    void SetHold(Hold held) {
        const std::lock_guard lock(mutex);
        hold = held;
        released.notify_all();
    }

    /// Waits until no more than `most` is held. False if it takes longer.
    bool WaitForRelease(Hold most, std::chrono::milliseconds longest) {
        std::unique_lock lock(mutex);
        return released.wait_for(lock, longest, [&] { return hold <= most; });
    }

    std::mutex mutex;

    std::condition_variable wake;
    bool hasWork = false;
    GraphWishes wishes;
    std::deque<GstMessagePtr> messages;

    CMessageAddress target;
    int notification = 0;
    std::deque<GraphEvent> events;
    std::optional<std::int64_t> duration;
    std::optional<std::int64_t> position;

    Hold hold = Hold::Nothing;
    std::condition_variable released;
};
