#include "player/GstMediaGraph.h"

#include "platform/WorkerThread.h"
#include "player/GraphThread.h"

#include <chrono>
#include <thread>
#include <utility>

namespace {

/// How long the end of the program waits for the sound device to be closed.
constexpr std::chrono::milliseconds kLongestEnd(500);

/// The side of a graph that is on the interface thread.
class GstMediaGraph : public IMediaGraph {
public:
    GstMediaGraph(std::shared_ptr<GraphChannel> channel, std::shared_ptr<GraphChannel> predecessor)
        : m_pChannel(std::move(channel))
        , m_pPredecessor(std::move(predecessor)) {}
    ~GstMediaGraph() override {
        m_pChannel->Wish([](GraphWishes& wishes) { wishes.end = true; });
    }

    void SetNotify(const CMessageAddress& target, int message) override {
        const std::lock_guard lock(m_pChannel->mutex);
        m_pChannel->target = target;
        m_pChannel->notification = message;
    }

    void Render(const QString& path, Route route) override {
        m_pChannel->SetHold(GraphChannel::Hold::Device); // it may open it at any time from now on
        LetRun(
            [channel = m_pChannel, predecessor = std::move(m_pPredecessor), path, route]() mutable {
                CGraphThread(channel, std::move(predecessor), path, route).Work();
                channel->SetHold(GraphChannel::Hold::Nothing);
            },
            kGraphThreadName);
    }

    void Run() override { Enter(GraphState::Running); }
    void Pause() override { Enter(GraphState::Paused); }
    void Stop() override { Enter(GraphState::Stopped); }

    [[nodiscard]] GraphState GetState() const override {
        const std::lock_guard lock(m_pChannel->mutex);
        return m_pChannel->wishes.state;
    }
    [[nodiscard]] std::optional<std::int64_t> GetDuration() const override {
        const std::lock_guard lock(m_pChannel->mutex);
        return m_pChannel->duration;
    }
    [[nodiscard]] std::optional<std::int64_t> GetCurrentPosition() const override {
        const std::lock_guard lock(m_pChannel->mutex);
        return m_pChannel->position;
    }

    void SetPositions(std::int64_t position) override {
        m_pChannel->Wish([this, position](GraphWishes& wishes) {
            wishes.seek = position;
            m_pChannel->position = position;
            std::erase_if(m_pChannel->events, [](const GraphEvent& event) {
                return event.code == GraphEvent::Code::Complete;
            });
        });
    }

    void PutVolume(int volume) override {
        m_pChannel->Wish([volume](GraphWishes& wishes) { wishes.volume = volume; });
    }

    [[nodiscard]] std::optional<GraphEvent> GetEvent() override {
        const std::lock_guard lock(m_pChannel->mutex);
        if (m_pChannel->events.empty())
            return std::nullopt;
        GraphEvent event = std::move(m_pChannel->events.front());
        m_pChannel->events.pop_front();
        return event;
    }

private:
    void Enter(GraphState state) {
        m_pChannel->Wish([state](GraphWishes& wishes) { wishes.state = state; });
    }

    std::shared_ptr<GraphChannel> m_pChannel;
    std::shared_ptr<GraphChannel> m_pPredecessor; ///< until the thread has begun
};

} // namespace

CGstMediaGraphs::~CGstMediaGraphs() {
    if (m_pLast)
        m_pLast->WaitForRelease(GraphChannel::Hold::Nothing, kLongestEnd);
}

std::unique_ptr<IMediaGraph> CGstMediaGraphs::Make() {
    auto channel = std::make_shared<GraphChannel>();
    return std::make_unique<GstMediaGraph>(channel, std::exchange(m_pLast, channel));
}

void CGstMediaGraphs::WarmUp() {
    LetRun(&CFilePipeline::WarmUp, kGraphThreadName);
}
