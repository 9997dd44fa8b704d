#pragma once

#include "base/Listeners.h"
#include "player/MediaGraph.h"

#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

class ITransportDisplay;

/// Plays one file at a time through a media graph: loads it, runs, pauses and stops it, seeks in
/// it, and sets its volume. What comes next is not known here.
///
/// Thread:   interface thread. Its owner passes on the messages that the graph posts.
/// Lifetime: `display` outlives this; so does what the factory uses.
/// Errors:   a file that can't be played is told by an event; without a file nothing happens.
class CMediaPlayer {
public:
    /// `dialog` gets WM_TD_GRAPH_NOTIFY and WM_TD_TRACK_FINISHED.
    CMediaPlayer(MediaGraphFactory factory, CMessageAddress dialog, ITransportDisplay& display);

    /// Hears of every event of the graph but the end of the track.
    [[nodiscard]] CListening OnEvent(std::function<void(const GraphEvent& event)> call) {
        return m_eventListeners.Listen(std::move(call));
    }

    /// Hears of each jump to another position, in units of 100 ns.
    [[nodiscard]] CListening OnSeek(std::function<void(std::int64_t position)> call) {
        return m_seekListeners.Listen(std::move(call));
    }

    /// Makes a new graph for a file, in the place of the old one. How it went is told by an event.
    void LoadFile(const QString& path);
    void CloseFilterGraph();
    [[nodiscard]] bool HasGraph() const { return m_pGraph != nullptr; }

    /// How many files were loaded so far: another number for each, even for one that plays again.
    [[nodiscard]] int GetFileNumber() const { return m_nFile; }

    /// Runs the graph, at the slider's volume. False without one.
    bool PlayMedia();
    void PauseMedia();
    void StopMedia();

    /// Stops, and goes back to the beginning.
    void Rewind();

    /// Position of the volume slider, 0 to 100; kept for the files to come.
    void SetVolumeFromSlider(int slider);

    /// Shows the position. Happens by itself every 100 ms while a file plays.
    void UpdatePosition();

    /// What the seek bar is doing.
    enum class Scroll : int {
        Track = 5, ///< held, on its way
        End = 8,   ///< let go
    };

    /// The user moved the seek bar to a position in percent. While the bar is held the graph stays
    /// in its state; at the end it takes up again the one that it had before.
    void OnSeekScroll(Scroll code, int percent);

    /// Goes to a position in units of 100 ns.
    void SeekTo(std::int64_t position);

    /// In units of 100 ns; 0 if there is no file or nothing is known of it.
    [[nodiscard]] std::int64_t GetDuration() const { return m_nDuration; }
    [[nodiscard]] std::int64_t GetPosition() const;

    /// Handler of WM_TD_GRAPH_NOTIFY: takes the graph's events.
    void OnGraphNotify();

    /// Whether the file that is loaded has been played to its end, and is to be left. A
    /// WM_TD_TRACK_FINISHED that comes in when this is false is that of a file before, or the seek
    /// bar is held: let go of, it leads elsewhere, or to the end once more.
    [[nodiscard]] bool IsFinished() const { return m_bFinished && m_bSeekStart; }

private:
    void CreateFilterGraph();
    void PrepareMedia(const QString& path);
    void SetState(GraphState state);
    void SetPositions(std::int64_t position);

    MediaGraphFactory m_pfnMakeGraph;
    CMessageAddress m_dialog;
    ITransportDisplay& m_display;
    CListeners<const GraphEvent&> m_eventListeners;
    CListeners<std::int64_t> m_seekListeners;
    std::unique_ptr<IMediaGraph> m_pGraph; ///< none when no file is loaded
    int m_nFile = 0;
    GraphState m_iGraphState = GraphState::Stopped;
    std::int64_t m_nDuration = 0;
    int m_nVolume = 100; ///< of the slider
    bool m_bFinished = false;
    bool m_bSeekStart = true; ///< the next move of the seek bar is the first one
    GraphState m_iStateBeforeSeek = GraphState::Stopped; ///< or that was entered during it
    QTimer m_positionTimer;                              // last: it goes first
};

/// Volume in hundredths of a decibel for a position 0 to 100 of the slider: a quarter circle, steep
/// at its low end.
[[nodiscard]] int VolumeFromSlider(int slider);
