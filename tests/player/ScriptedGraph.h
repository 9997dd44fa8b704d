#pragma once

#include "base/Messages.h"
#include "player/MediaGraph.h"

#include <deque>
#include <utility>

/// A graph that plays nothing: it notes what it is asked for, and tells what the test wants.
class ScriptedGraph : public IMediaGraph {
public:
    /// What all graphs of a test share; `current` is the one made last, null when it is gone.
    struct Script {
        ScriptedGraph* current = nullptr;
        QStringList log; ///< what was asked of the graphs, such as "Render /a.mp3" or "Run"
        std::int64_t duration = 100 * kMediaSecond;
        std::map<QString, GraphEvent> answers; ///< to Render() of a path; else Rendered
        bool answersAtOnce = true;             ///< else the test calls Tell()

        [[nodiscard]] MediaGraphFactory Factory() {
            return [this] { return std::make_unique<ScriptedGraph>(*this); };
        }
        [[nodiscard]] QStringList TakeLog() { return std::exchange(log, {}); }
    };

    explicit ScriptedGraph(Script& script)
        : m_script(script) {
        m_script.current = this;
    }
    ~ScriptedGraph() override {
        if (m_script.current == this)
            m_script.current = nullptr;
    }

    /// The graph has this to tell.
    void Tell(GraphEvent event) {
        m_events.push_back(std::move(event));
        m_target.Post({m_message});
    }

    void SetNotify(const CMessageAddress& target, int message) override {
        m_target = target;
        m_message = message;
    }
    void Render(const QString& path, Route route) override {
        m_script.log += QLatin1String(route == Route::ByContent ? "Render " : "RenderWM ") + path;
        const auto answer = m_script.answers.find(path);
        if (answer != m_script.answers.end())
            Tell(answer->second);
        else if (m_script.answersAtOnce)
            Tell({GraphEvent::Code::Rendered});
    }
    void Run() override { Enter(GraphState::Running, "Run"); }
    void Pause() override { Enter(GraphState::Paused, "Pause"); }
    void Stop() override { Enter(GraphState::Stopped, "Stop"); }
    [[nodiscard]] GraphState GetState() const override { return m_state; }
    [[nodiscard]] std::optional<std::int64_t> GetDuration() const override {
        return m_script.duration > 0 ? std::optional(m_script.duration) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::int64_t> GetCurrentPosition() const override {
        return position;
    }
    void SetPositions(std::int64_t target) override {
        position = target;
        m_script.log += QStringLiteral("Seek %1").arg(target);
    }
    void PutVolume(int volume) override { m_script.log += QStringLiteral("Volume %1").arg(volume); }
    [[nodiscard]] std::optional<GraphEvent> GetEvent() override {
        if (m_events.empty())
            return std::nullopt;
        const GraphEvent event = m_events.front();
        m_events.pop_front();
        return event;
    }

    std::int64_t position = 0;

private:
    void Enter(GraphState state, const char* name) {
        m_state = state;
        m_script.log += QString::fromLatin1(name);
    }

    Script& m_script;
    CMessageAddress m_target;
    int m_message = 0;
    GraphState m_state = GraphState::Stopped;
    std::deque<GraphEvent> m_events;
};
