#include "player/MediaPlayer.h"

#include "base/Messages.h"
#include "player/TransportDisplay.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

constexpr std::chrono::milliseconds kPositionPeriod(100);

/// How much of a path is looked at for its kind.
constexpr int kLongestPath = 260;

bool IsWindowsMedia(const QString& path) {
    const QString start = path.left(kLongestPath).toLower();
    return start.contains(QLatin1String(".asf")) || start.contains(QLatin1String(".wma")) ||
           start.contains(QLatin1String(".wmv"));
}

} // namespace

int VolumeFromSlider(int slider) {
    const double t = slider / 100.0;
    return static_cast<int>(-10000.0 * (1 - std::sqrt(1 - (t - 1) * (t - 1))));
}

CMediaPlayer::CMediaPlayer(MediaGraphFactory factory, CMessageAddress dialog,
                           ITransportDisplay& display)
    : m_pfnMakeGraph(std::move(factory))
    , m_dialog(std::move(dialog))
    , m_display(display) {
    m_positionTimer.setInterval(kPositionPeriod);
    QObject::connect(&m_positionTimer, &QTimer::timeout, &m_positionTimer,
                     [this] { UpdatePosition(); });
}

void CMediaPlayer::LoadFile(const QString& path) {
    ++m_nFile;
    CloseFilterGraph();
    CreateFilterGraph();
    PrepareMedia(path);
}

void CMediaPlayer::CreateFilterGraph() {
    m_pGraph = m_pfnMakeGraph();
    m_pGraph->SetNotify(m_dialog, WM_TD_GRAPH_NOTIFY);
}

void CMediaPlayer::PrepareMedia(const QString& path) {
    m_pGraph->Render(path, IsWindowsMedia(path) ? IMediaGraph::Route::WindowsMedia
                                                : IMediaGraph::Route::ByContent);
}

void CMediaPlayer::CloseFilterGraph() {
    StopMedia();
    m_pGraph.reset();
    m_nDuration = 0;
    m_bSeekStart = true;
    m_display.ShowPosition(0);
}

/// The seek bar may be held meanwhile: it must not undo this when it is let go of.
void CMediaPlayer::SetState(GraphState state) {
    m_iGraphState = m_iStateBeforeSeek = state;
}

bool CMediaPlayer::PlayMedia() {
    if (!m_pGraph)
        return false;
    m_pGraph->PutVolume(VolumeFromSlider(m_nVolume));
    m_pGraph->Run();
    SetState(GraphState::Running);
    m_positionTimer.start();
    return true;
}

void CMediaPlayer::PauseMedia() {
    m_positionTimer.stop();
    if (m_iGraphState != GraphState::Running)
        return;
    m_pGraph->Pause();
    SetState(GraphState::Paused);
}

void CMediaPlayer::StopMedia() {
    m_positionTimer.stop();
    m_bFinished = false;
    if (m_iGraphState == GraphState::Stopped)
        return;
    m_pGraph->Stop();
    SetState(GraphState::Stopped);
}

void CMediaPlayer::Rewind() {
    if (!m_pGraph)
        return;
    StopMedia();
    m_pGraph->SetPositions(0);
    UpdatePosition();
}

void CMediaPlayer::SetVolumeFromSlider(int slider) {
    m_nVolume = std::clamp(slider, 0, 100);
    if (m_pGraph)
        m_pGraph->PutVolume(VolumeFromSlider(m_nVolume));
}

std::int64_t CMediaPlayer::GetPosition() const {
    return m_pGraph ? m_pGraph->GetCurrentPosition().value_or(0) : 0;
}

void CMediaPlayer::UpdatePosition() {
    const auto position = m_pGraph ? m_pGraph->GetCurrentPosition() : std::nullopt;
    if (position)
        m_display.ShowPosition(m_nDuration == 0 ? 0
                                                : static_cast<int>(*position * 100 / m_nDuration));
}

void CMediaPlayer::SetPositions(std::int64_t position) {
    m_bFinished = false;
    m_pGraph->SetPositions(position);
    m_seekListeners.Tell(position);
}

void CMediaPlayer::OnSeekScroll(Scroll code, int percent) {
    if (!m_pGraph)
        return;
    if (m_bSeekStart)
        m_iStateBeforeSeek = m_pGraph->GetState();
    m_bSeekStart = false;
    SetPositions(m_nDuration * percent / 100);
    if (code != Scroll::End)
        return;
    if (m_iStateBeforeSeek == GraphState::Stopped)
        m_pGraph->Stop();
    else if (m_iStateBeforeSeek == GraphState::Running)
        m_pGraph->Run();
    m_bSeekStart = true;
}

void CMediaPlayer::SeekTo(std::int64_t position) {
    if (!m_pGraph)
        return;
    SetPositions(std::clamp<std::int64_t>(position, 0, m_nDuration));
    UpdatePosition();
}

void CMediaPlayer::OnGraphNotify() {
    while (m_pGraph) {
        const auto event = m_pGraph->GetEvent();
        if (!event)
            return;
        if (event->code == GraphEvent::Code::Complete) {
            m_bFinished = true;
            m_dialog.Post({WM_TD_TRACK_FINISHED});
            continue;
        }
        m_nDuration = m_pGraph->GetDuration().value_or(0);
        m_eventListeners.Tell(*event);
    }
}
