#pragma once

#include "player/GstHandles.h"
#include "player/MediaGraph.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

/// The GStreamer pipeline that plays one file: source, decoder, conversion, volume, and the sound
/// device, or, on a machine without one, a sink that takes sound as fast as a device would.
///
/// Thread:   one thread at a time, which waits as long as file and device make it wait. `onMessage`
///           is called on threads of GStreamer, until the destructor has returned.
/// Errors:   told by messages; a seek that fails does so by its answer.
class CFilePipeline {
public:
    using MessageHandler = std::function<void(GstMessagePtr message)>;

    /// Loads the library. Further calls do nothing. False if that failed.
    static bool Initialize();

    /// Loads what most files need, so that the first one doesn't wait for it.
    static void WarmUp();

    explicit CFilePipeline(MessageHandler onMessage);
    ~CFilePipeline();
    CFilePipeline(const CFilePipeline&) = delete;
    CFilePipeline& operator=(const CFilePipeline&) = delete;

    /// The kinds of messages that are handed out.
    static constexpr int kMessages = GST_MESSAGE_EOS | GST_MESSAGE_ERROR | GST_MESSAGE_ELEMENT |
                                     GST_MESSAGE_ASYNC_DONE | GST_MESSAGE_DURATION_CHANGED |
                                     GST_MESSAGE_CLOCK_LOST;

    /// Puts the pipeline together; nothing is opened yet. Answers with the name of the package that
    /// is missing for that, or with nothing.
    [[nodiscard]] QString Build(const QString& path, IMediaGraph::Route route);

    void SetState(GstState state);

    /// Whether any thread is at work in it, be it only waiting for the file.
    [[nodiscard]] bool HasRunningTask() const;

    enum class Accuracy {
        Fast,
        Exact, ///< reads the file from its head on, if it has no index
    };

    /// Positions in units of 100 ns. False if nothing will come of the seek.
    bool Seek(std::int64_t position, Accuracy accuracy);
    [[nodiscard]] std::optional<std::int64_t> QueryPosition() const;
    [[nodiscard]] std::optional<std::int64_t> QueryDuration() const;

    /// Whether a message of the pipeline comes from the sound device.
    [[nodiscard]] bool IsFromDevice(GstMessage* message) const;

    /// Hundredths of a decibel; -10000 is silence.
    void SetVolume(int volume);

private:
    GstElement* Add(const char* factory);
    GstElement* AddDecoder();
    void RenderPin(GstPad* pin);
    void ConnectSound(GstPad* pad);
    static void OnPinAdded(GstElement* reader, GstPad* pin, gpointer self);
    static void OnSoundAdded(GstElement* decoder, GstPad* pad, gpointer self);
    static GstBusSyncReply OnMessage(GstBus* bus, GstMessage* message, gpointer self);

    MessageHandler m_pfnMessage;
    GstObjectPtr<GstElement> m_pPipeline;
    GstElement* m_pConvert = nullptr; ///< of the pipeline, as the next
    GstElement* m_pVolume = nullptr;
    GstElement* m_pSink = nullptr;
    GstElement* m_pPinDecoder = nullptr; ///< of the reader's pin that is rendered
    QString m_strMissing;                ///< package of the first element that could not be made
};

/// The package in which the decoder lies that a message of the pipeline misses. Empty for messages
/// of other kinds, and for what is no sound.
[[nodiscard]] QString MissingPackage(GstMessage* message);
