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

    void AddMessage(GstMessagePtr message) {
        const std::lock_guard lock(mutex);
        messages.push_back(std::move(message));
        hasWork = true;
        wake.notify_one();
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

    void TellEnd() {
        const std::lock_guard lock(mutex);
        isWorking = false;
        ended.notify_all();
    }

    /// Waits until the thread has ended. False if it takes longer.
    bool WaitForEnd(std::chrono::milliseconds longest) {
        std::unique_lock lock(mutex);
        return ended.wait_for(lock, longest, [this] { return !isWorking; });
    }

    std::mutex mutex;

    std::condition_variable wake;
    bool hasWork = false;
    GraphWishes wishes;
    std::deque<GstMessagePtr> messages;

    MessageAddress target;
    int notification = 0;
    std::deque<GraphEvent> events;
    std::optional<std::int64_t> duration;
    std::optional<std::int64_t> position;

    bool isWorking = false;
    std::condition_variable ended;
};
