#pragma once

#include "player/MediaGraph.h"

#include <memory>

struct GraphChannel;

/// Name of the threads that graphs work on.
inline constexpr const char* kGraphThreadName = "media graph";

/// Makes the graphs that play through GStreamer, on the default sound device. On a machine without
/// one, time passes all the same and nothing is heard.
///
/// Each graph works on a thread of its own, which ends when the graph has been destroyed and file
/// and device are let go of; one that is stuck holds up nobody else for longer than a second. A
/// graph opens the device when the one before has closed it, for some devices let in one at a time.
///
/// Thread:   interface thread.
/// Lifetime: the graphs are destroyed first. Destroying this waits for the last one's thread, half
///           a second at most.
class CGstMediaGraphs {
public:
    CGstMediaGraphs() = default;
    ~CGstMediaGraphs();
    CGstMediaGraphs(const CGstMediaGraphs&) = delete;
    CGstMediaGraphs& operator=(const CGstMediaGraphs&) = delete;

    [[nodiscard]] std::unique_ptr<IMediaGraph> Make();

    /// Loads what graphs need on a thread of its own, so that the first one starts as fast as any.
    static void WarmUp();

private:
    std::shared_ptr<GraphChannel> m_pLast; ///< of the graph that was made last
};
