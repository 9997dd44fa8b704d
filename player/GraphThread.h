#pragma once

#include "player/FilePipeline.h"
#include "player/GraphChannel.h"
#include "player/MediaGraph.h"

#include <QString>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

class CFrameCounter;

/// The work of one graph: makes the pipeline of a file do what is wished, and tells how it goes.
///
/// Thread: one of its own, for the whole of Work(), which waits as long as file and device take.
/// Errors: told as events; none throws.
class CGraphThread {
public:
    /// `predecessor`: of the graph before, which may still hold the sound device, or null.
    CGraphThread(std::shared_ptr<GraphChannel> channel, std::shared_ptr<GraphChannel> predecessor,
                 QString path, IMediaGraph::Route route);
    ~CGraphThread();

    /// Works until the end is wished.
    void Work();

private:
    void Open();
    void AwaitDevice();
    void Fail(GraphEvent event);
    void Wait();
    void Turn();
    [[nodiscard]] bool IsLoading() const;
    void CheckLoading();
    void OnMessage(GstMessage* message);
    void OnRendered();
    void OnError(GstMessage* message);
    void Follow();
    void Stop();
    void EnterState(GstState state);
    void TellLength(std::int64_t length);
    void CountLength();
    void UpdatePosition();

    std::shared_ptr<GraphChannel> m_pChannel;
    std::shared_ptr<GraphChannel> m_pPredecessor;
    const QString m_strPath;
    const IMediaGraph::Route m_route;

    GraphWishes m_wishes; ///< those that were heard last; the seek until it is begun
    std::deque<GstMessagePtr> m_messages;
    bool m_bNews = false; ///< the last wait ended with some, and not with its time

    std::unique_ptr<CFilePipeline> m_pPipeline; ///< none after a failure
    GstState m_state = GST_STATE_NULL;          ///< asked of the pipeline
    int m_nVolume = 0;                          ///< that the pipeline has
    bool m_bReady = false;                      ///< the pipeline has sound, and may go on
    bool m_bRendered = false;                   ///< it had once
    bool m_bSeeking = false;
    bool m_bFramesOnly = false; ///< the file tells neither its length nor where anything is
    int m_nLifeless = 0;        ///< looks at the loading in a row that saw nobody at work
    QString m_strPackage;       ///< that the pipeline misses
    std::unique_ptr<CFrameCounter> m_pCounter; ///< while the length is counted
    bool m_bCounted = false;                   ///< it was: what the pipeline estimates is worse
};
