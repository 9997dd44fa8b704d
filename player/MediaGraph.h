#pragma once

#include "platform/MessageTarget.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

/// Positions and lengths are told in units of 100 ns; this many are a second.
inline constexpr std::int64_t kMediaSecond = 10'000'000;

/// The numbers are those of the transport, too.
enum class GraphState : int { Stopped = 0, Paused = 1, Running = 2 };

/// What a graph tells of its file.
struct GraphEvent {
    enum class Code {
        Rendered,       ///< the file can be played, and as much of its length is known as it tells
        LengthChanged,  ///< the length is known better than before
        Complete,       ///< the file was played to its end
        Missing,        ///< there is no such file
        Failed,         ///< the file can't be played, or no further
        DeviceFailed,   ///< nothing can be heard any more, whatever the file
        DecoderMissing, ///< it could be if the package `detail` were installed
    };
    Code code;
    QString detail = {};
};

/// One file on its way to the ear: opened, decoded, and heard. A graph is made for each file.
///
/// Thread:   interface thread. No call waits for the file or the sound device, slow or stuck.
///           What is asked for happens in time and in order, and what is told is what was last
///           heard of.
/// Lifetime: may be destroyed at any moment; the file is closed soon after.
/// Errors:   told by events.
class IMediaGraph {
public:
    virtual ~IMediaGraph() = default;

    /// How a file is taken apart.
    enum class Route {
        ByContent,
        WindowsMedia, ///< a reader that splits the file first; then its first output with sound is
                      ///< rendered
    };

    /// Posts `message` to `target` whenever there may be a new event.
    virtual void SetNotify(const CMessageAddress& target, int message) = 0;

    /// Opens the file and makes ready to play it. To be called once, before anything below.
    virtual void Render(const QString& path, Route route) = 0;

    /// A stopped graph gives its sound device back, and goes on from its position when it is run.
    virtual void Run() = 0;
    virtual void Pause() = 0;
    virtual void Stop() = 0;

    /// The state that was asked for last, stopped at first.
    [[nodiscard]] virtual GraphState GetState() const = 0;

    /// Nothing as long as it isn't known.
    [[nodiscard]] virtual std::optional<std::int64_t> GetDuration() const = 0;
    [[nodiscard]] virtual std::optional<std::int64_t> GetCurrentPosition() const = 0;

    /// Goes to a position, in any state, which stays as it is.
    virtual void SetPositions(std::int64_t position) = 0;

    /// Hundredths of a decibel, from -10000, which is silence, to 0.
    virtual void PutVolume(int volume) = 0;

    /// Takes the oldest event that was not taken yet.
    [[nodiscard]] virtual std::optional<GraphEvent> GetEvent() = 0;
};

using MediaGraphFactory = std::function<std::unique_ptr<IMediaGraph>()>;
