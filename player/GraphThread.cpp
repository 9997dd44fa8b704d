#include "player/GraphThread.h"

#include "platform/Files.h"
#include "platform/Path.h"
#include "player/FrameCounter.h"

#include <QDebug>

#include <chrono>
#include <exception>
#include <utility>

namespace {

/// How long a graph waits for the sound device that the one before it holds.
constexpr std::chrono::seconds kLongestClosing(1);

constexpr std::chrono::milliseconds kPositionPeriod(50);

/// How often it is looked whether a file still loads, and how often in a row it may seem not to.
constexpr std::chrono::milliseconds kLoadingPeriod(250);
constexpr int kMaxLifeless = 2;

} // namespace

CGraphThread::CGraphThread(std::shared_ptr<GraphChannel> channel,
                           std::shared_ptr<GraphChannel> predecessor, QString path,
                           IMediaGraph::Route route)
    : m_pChannel(std::move(channel))
    , m_pPredecessor(std::move(predecessor))
    , m_strPath(std::move(path))
    , m_route(route) {}

CGraphThread::~CGraphThread() = default;

void CGraphThread::Work() {
    try {
        Open();
        for (Wait(); !m_wishes.end; Wait())
            Turn();
    } catch (const std::exception& error) {
        qWarning() << "Playing ended:" << error.what();
        Fail({GraphEvent::Code::Failed});
    }
    m_pPipeline.reset();
}

void CGraphThread::Open() {
    const auto status = GetFileStatus(m_strPath);
    if (!status)
        return Fail({GraphEvent::Code::Missing});
    if (status->kind != FileKind::Regular || !CFilePipeline::Initialize())
        return Fail({GraphEvent::Code::Failed});
    m_pPipeline = std::make_unique<CFilePipeline>(
        [channel = m_pChannel](GstMessagePtr message) { channel->AddMessage(std::move(message)); });
    const QString package = m_pPipeline->Build(m_strPath, m_route);
    if (!package.isEmpty())
        return Fail({GraphEvent::Code::DecoderMissing, package});
    AwaitDevice();
    if (!m_pChannel->IsEndWished())
        EnterState(GST_STATE_PAUSED);
}

/// The graphs before the predecessor are let go of with it, as it waits for them, too.
void CGraphThread::AwaitDevice() {
    if (const auto predecessor = std::exchange(m_pPredecessor, nullptr))
        predecessor->WaitForRelease(GraphChannel::Hold::Thread, kLongestClosing);
}

/// Closes everything. Only the end is left to wait for.
void CGraphThread::Fail(GraphEvent event) {
    m_pPipeline.reset();
    m_pCounter.reset();
    m_state = GST_STATE_NULL;
    m_pChannel->Tell(std::move(event));
    AwaitDevice();
    m_pChannel->SetHold(GraphChannel::Hold::Thread);
}

/// Waits for something to do, for a limited time only while time itself brings work, and takes it.
void CGraphThread::Wait() {
    std::unique_lock lock(m_pChannel->mutex);
    const auto hasWork = [this] { return m_pChannel->hasWork; };
    if (m_state == GST_STATE_PLAYING && !m_pCounter)
        m_pChannel->wake.wait_for(lock, kPositionPeriod, hasWork);
    else if (IsLoading())
        m_pChannel->wake.wait_for(lock, kLoadingPeriod, hasWork);
    else if (!m_pCounter)
        m_pChannel->wake.wait(lock, hasWork);
    m_bNews = std::exchange(m_pChannel->hasWork, false);
    m_messages = std::exchange(m_pChannel->messages, {});
    GraphWishes wishes = m_pChannel->wishes;
    m_pChannel->wishes.seek.reset();
    if (!wishes.seek)
        wishes.seek = m_wishes.seek;
    m_wishes = wishes;
}

void CGraphThread::Turn() {
    for (const GstMessagePtr& message : std::exchange(m_messages, {}))
        if (m_pPipeline)
            OnMessage(message.get());
    if (m_pPipeline)
        Follow();
    if (m_pPipeline)
        UpdatePosition();
    if (!m_bNews && IsLoading())
        CheckLoading();
    if (m_pCounter)
        CountLength();
}

bool CGraphThread::IsLoading() const {
    return m_state == GST_STATE_PAUSED && !m_bReady;
}

/// Errors at the head of a file get lost at times (decodebin of GStreamer 1.22 keeps those of an
/// element to itself while it tries it). Then nothing works any more, and nothing will come. A file
/// that is only slow to read has a task that waits for it.
void CGraphThread::CheckLoading() {
    m_nLifeless = m_pPipeline->HasRunningTask() ? 0 : m_nLifeless + 1;
    if (m_nLifeless > kMaxLifeless)
        Fail({GraphEvent::Code::Failed});
}

void CGraphThread::OnMessage(GstMessage* message) {
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ASYNC_DONE:
        m_bSeeking = false;
        m_bReady = true;
        if (!std::exchange(m_bRendered, true))
            OnRendered();
        break;
    case GST_MESSAGE_EOS:
        if (!m_bSeeking && !m_wishes.seek) // else it is the end from before the seek
            m_pChannel->Tell({GraphEvent::Code::Complete});
        break;
    case GST_MESSAGE_DURATION_CHANGED:
        if (const auto length =
                m_bRendered && !m_bCounted ? m_pPipeline->QueryDuration() : std::nullopt)
            TellLength(*length);
        break;
    case GST_MESSAGE_CLOCK_LOST: // paused and run again, the pipeline chooses another one
        EnterState(GST_STATE_PAUSED);
        break;
    case GST_MESSAGE_ELEMENT:
        if (m_strPackage.isEmpty())
            m_strPackage = MissingPackage(message);
        break;
    case GST_MESSAGE_ERROR:
        OnError(message);
        break;
    default:
        break;
    }
}

void CGraphThread::OnRendered() {
    const auto length = m_pPipeline->QueryDuration();
    m_bFramesOnly = !length;
    if (m_bFramesOnly)
        m_pCounter = std::make_unique<CFrameCounter>(m_strPath);
    m_pChannel->ExchangeDuration(length);
    m_pChannel->Tell({GraphEvent::Code::Rendered});
}

void CGraphThread::OnError(GstMessage* message) {
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    qWarning().noquote() << (m_route == IMediaGraph::Route::WindowsMedia
                                 ? "Failed to Render WM File"
                                 : "Failed in RenderFile")
                         << Path::ForDisplay(m_strPath) << error->message;
    g_error_free(error);
    if (!m_strPackage.isEmpty())
        Fail({GraphEvent::Code::DecoderMissing, m_strPackage});
    else if (m_pPipeline->IsFromDevice(message))
        Fail({GraphEvent::Code::DeviceFailed});
    else
        Fail({GraphEvent::Code::Failed});
}

/// Brings the pipeline to what is wished, as far as it can go now.
void CGraphThread::Follow() {
    if (m_nVolume != m_wishes.volume)
        m_pPipeline->SetVolume(m_nVolume = m_wishes.volume);
    if (m_wishes.state == GraphState::Stopped) {
        if (m_bReady)
            Stop();
        return;
    }
    if (m_state < GST_STATE_PAUSED)
        EnterState(GST_STATE_PAUSED);
    if (!m_bReady || m_bSeeking) // a state that changes in the middle of a seek shifts its time
        return;
    if (m_wishes.state == GraphState::Paused)
        EnterState(GST_STATE_PAUSED);
    if (const auto seek = std::exchange(m_wishes.seek, std::nullopt))
        m_bSeeking = m_pPipeline->Seek(*seek, m_bFramesOnly ? CFilePipeline::Accuracy::Exact
                                                            : CFilePipeline::Accuracy::Fast);
    if (m_wishes.state == GraphState::Running && !m_bSeeking)
        EnterState(GST_STATE_PLAYING);
}

/// Gives the device back, and keeps the position for the next run.
void CGraphThread::Stop() {
    if (!m_wishes.seek)
        m_wishes.seek = m_pPipeline->QueryPosition();
    if (m_wishes.seek == 0) // there it begins by itself
        m_wishes.seek.reset();
    m_bReady = m_bSeeking = false;
    EnterState(GST_STATE_NULL); // a ready one would keep the device open
    m_pChannel->DropMessages(); // they would be taken for those of the next run
}

void CGraphThread::EnterState(GstState state) {
    using Hold = GraphChannel::Hold;
    if (m_state == state)
        return;
    if (m_state == GST_STATE_NULL)
        m_pChannel->SetHold(Hold::Device);
    m_pPipeline->SetState(m_state = state);
    if (m_state == GST_STATE_NULL)
        m_pChannel->SetHold(Hold::Thread);
}

/// Told by the second, as many files have their length estimated anew all the time.
void CGraphThread::TellLength(std::int64_t length) {
    const auto known = m_pChannel->ExchangeDuration(length);
    if (!known || *known / kMediaSecond != length / kMediaSecond)
        m_pChannel->Tell({GraphEvent::Code::LengthChanged});
}

void CGraphThread::CountLength() {
    if (m_pCounter->Step())
        return;
    const auto length = m_pCounter->GetLength();
    m_pCounter.reset();
    m_bCounted = length.has_value();
    if (length)
        TellLength(*length);
}

/// Where a seek leads is known already, before the pipeline has got there.
void CGraphThread::UpdatePosition() {
    if (m_bSeeking || m_wishes.seek || !m_bReady)
        return;
    const auto position = m_pPipeline->QueryPosition();
    const std::lock_guard lock(m_pChannel->mutex);
    if (position && !m_pChannel->wishes.seek)
        m_pChannel->position = position;
}
