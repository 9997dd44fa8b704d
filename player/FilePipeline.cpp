#include "player/FilePipeline.h"

#include "platform/Path.h"

#include <QDebug>
#include <QLatin1String>

#include <cmath>
#include <utility>

namespace {

constexpr std::int64_t kNanoseconds = 100; // of a unit

constexpr int kSilence = -10000;

const QLatin1String kBasePlugins("gstreamer1.0-plugins-base");
const QLatin1String kGoodPlugins("gstreamer1.0-plugins-good");
const QLatin1String kUglyPlugins("gstreamer1.0-plugins-ugly");
const QLatin1String kLibavPlugin("gstreamer1.0-libav");

/// What plays the kinds of files that we know, in the order in which files need it.
constexpr const char* kCommonElements[] = {
    "filesrc",       "decodebin", "audioconvert",   "audioresample",  "volume",
    "autoaudiosink", "id3demux",  "mpegaudioparse", "mpg123audiodec", "aacparse",
    "avdec_aac",     "qtdemux",   "asfdemux",       "avdec_wmav2",
};

/// The only kind of stream that is decoded.
GstCapsPtr SoundCaps() {
    return GstCapsPtr(gst_caps_new_empty_simple("audio/x-raw"));
}

bool IsSound(GstPad* pad) {
    const GstCapsPtr caps(gst_pad_query_caps(pad, nullptr));
    return gst_caps_get_size(caps.get()) > 0 &&
           g_str_has_prefix(gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)),
                            "audio/");
}

} // namespace

bool CFilePipeline::Initialize() {
    static const bool isThere = [] {
        GError* error = nullptr;
        if (gst_init_check(nullptr, nullptr, &error))
            return true;
        qWarning() << "GStreamer can't be used:" << (error ? error->message : "");
        g_clear_error(&error);
        return false;
    }();
    return isThere;
}

void CFilePipeline::WarmUp() {
    if (!Initialize())
        return;
    for (const char* factory : kCommonElements)
        if (GstElement* element = gst_element_factory_make(factory, nullptr))
            gst_object_unref(gst_object_ref_sink(element));
}

CFilePipeline::CFilePipeline(MessageHandler onMessage)
    : m_pfnMessage(std::move(onMessage))
    , m_pPipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr)))) {
    const GstObjectPtr<GstBus> bus(gst_element_get_bus(m_pPipeline.get()));
    gst_bus_set_sync_handler(bus.get(), &OnMessage, this, nullptr);
}

CFilePipeline::~CFilePipeline() {
    gst_element_set_state(m_pPipeline.get(), GST_STATE_NULL);
    const GstObjectPtr<GstBus> bus(gst_element_get_bus(m_pPipeline.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

QString CFilePipeline::Build(const QString& path, IMediaGraph::Route route) {
    GstElement* source = Add("filesrc");
    const bool isSplit = route == IMediaGraph::Route::WindowsMedia;
    GstElement* reader = isSplit ? Add("parsebin") : AddDecoder();
    m_pConvert = Add("audioconvert");
    GstElement* resample = Add("audioresample");
    m_pVolume = Add("volume");
    m_pSink = Add("autoaudiosink");
    if (!m_strMissing.isEmpty())
        return m_strMissing;
    g_object_set(source, "location", Path::ToBytes(path).constData(), nullptr);
    if (isSplit)
        g_signal_connect(reader, "pad-added", G_CALLBACK(&OnPinAdded), this);
    gst_element_link(source, reader);
    gst_element_link_many(m_pConvert, resample, m_pVolume, m_pSink, nullptr);
    return {};
}

/// Null, with the package noted, where there is no such element.
GstElement* CFilePipeline::Add(const char* factory) {
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element)
        gst_bin_add(GST_BIN(m_pPipeline.get()), element);
    else if (m_strMissing.isEmpty())
        m_strMissing =
            QLatin1String(factory) == QLatin1String("autoaudiosink") ? kGoodPlugins : kBasePlugins;
    return element;
}

GstElement* CFilePipeline::AddDecoder() {
    GstElement* decoder = Add("decodebin");
    if (decoder) {
        g_object_set(decoder, "caps", SoundCaps().get(), "expose-all-streams", FALSE, nullptr);
        g_signal_connect(decoder, "pad-added", G_CALLBACK(&OnSoundAdded), this);
    }
    return decoder;
}

void CFilePipeline::OnPinAdded(GstElement*, GstPad* pin, gpointer self) {
    static_cast<CFilePipeline*>(self)->RenderPin(pin);
}

/// Only the first pin with sound, as one thread of the reader serves them all: it would stand still
/// at the first one's end and leave the others' decoders without data. Pins that aren't rendered
/// are an error of the reader, if no other one is. After a stop the reader makes its pins anew.
void CFilePipeline::RenderPin(GstPad* pin) {
    if (!IsSound(pin))
        return;
    if (!m_pPinDecoder)
        m_pPinDecoder = AddDecoder();
    if (!m_pPinDecoder)
        return;
    const GstObjectPtr<GstPad> sink(gst_element_get_static_pad(m_pPinDecoder, "sink"));
    if (gst_pad_is_linked(sink.get()))
        return;
    gst_pad_link(pin, sink.get());
    gst_element_sync_state_with_parent(m_pPinDecoder);
}

void CFilePipeline::OnSoundAdded(GstElement*, GstPad* pad, gpointer self) {
    static_cast<CFilePipeline*>(self)->ConnectSound(pad);
}

/// The first stream of sound is the one that is heard.
void CFilePipeline::ConnectSound(GstPad* pad) {
    const GstObjectPtr<GstPad> sink(gst_element_get_static_pad(m_pConvert, "sink"));
    if (!gst_pad_is_linked(sink.get()))
        gst_pad_link(pad, sink.get());
}

GstBusSyncReply CFilePipeline::OnMessage(GstBus*, GstMessage* message, gpointer self) {
    GstMessagePtr owned(message);
    if (GST_MESSAGE_TYPE(message) & kMessages)
        static_cast<CFilePipeline*>(self)->m_pfnMessage(std::move(owned));
    return GST_BUS_DROP;
}

/// Most elements say why they can't change their state, but not all.
void CFilePipeline::SetState(GstState state) {
    if (gst_element_set_state(m_pPipeline.get(), state) != GST_STATE_CHANGE_FAILURE)
        return;
    GError* error = g_error_new_literal(GST_CORE_ERROR, GST_CORE_ERROR_STATE_CHANGE,
                                        "the state could not be changed");
    m_pfnMessage(GstMessagePtr(gst_message_new_error(nullptr, error, nullptr)));
    g_error_free(error);
}

bool CFilePipeline::HasRunningTask() const {
    const auto isRunning = [](GstElement*, GstPad* pad, gpointer running) -> gboolean {
        GST_OBJECT_LOCK(pad);
        GstTask* task = GST_PAD_TASK(pad);
        if (task && gst_task_get_state(task) == GST_TASK_STARTED)
            *static_cast<bool*>(running) = true;
        GST_OBJECT_UNLOCK(pad);
        return TRUE;
    };
    bool isAnyRunning = false;
    const std::unique_ptr<GstIterator, decltype(&gst_iterator_free)> elements(
        gst_bin_iterate_recurse(GST_BIN(m_pPipeline.get())), &gst_iterator_free);
    GValue element = G_VALUE_INIT;
    GstIteratorResult result = GST_ITERATOR_OK;
    while (!isAnyRunning &&
           (result = gst_iterator_next(elements.get(), &element)) == GST_ITERATOR_OK) {
        gst_element_foreach_pad(GST_ELEMENT(g_value_get_object(&element)), isRunning,
                                &isAnyRunning);
        g_value_reset(&element);
    }
    g_value_unset(&element);
    return isAnyRunning || result == GST_ITERATOR_RESYNC; // somebody puts elements in
}

bool CFilePipeline::Seek(std::int64_t position, Accuracy accuracy) {
    const int flags =
        GST_SEEK_FLAG_FLUSH | (accuracy == Accuracy::Exact ? GST_SEEK_FLAG_ACCURATE : 0);
    return gst_element_seek_simple(m_pPipeline.get(), GST_FORMAT_TIME,
                                   static_cast<GstSeekFlags>(flags), position * kNanoseconds);
}

bool CFilePipeline::IsFromDevice(GstMessage* message) const {
    GstObject* source = GST_MESSAGE_SRC(message);
    return source && gst_object_has_as_ancestor(source, GST_OBJECT(m_pSink));
}

std::optional<std::int64_t> CFilePipeline::QueryPosition() const {
    gint64 position = -1;
    if (!gst_element_query_position(m_pPipeline.get(), GST_FORMAT_TIME, &position) || position < 0)
        return std::nullopt;
    return position / kNanoseconds;
}

std::optional<std::int64_t> CFilePipeline::QueryDuration() const {
    gint64 duration = -1;
    if (!gst_element_query_duration(m_pPipeline.get(), GST_FORMAT_TIME, &duration) || duration <= 0)
        return std::nullopt;
    return duration / kNanoseconds;
}

void CFilePipeline::SetVolume(int volume) {
    const double factor = volume <= kSilence ? 0 : std::pow(10, volume / 2000.0);
    g_object_set(m_pVolume, "volume", factor, nullptr);
}

QString MissingPackage(GstMessage* message) {
    const GstStructure* news = gst_message_get_structure(message);
    if (!news || !gst_structure_has_name(news, "missing-plugin"))
        return {};
    const GValue* detail = gst_structure_get_value(news, "detail");
    if (!detail || !GST_VALUE_HOLDS_CAPS(detail) || gst_caps_is_empty(gst_value_get_caps(detail)))
        return {};
    const GstStructure* missing = gst_caps_get_structure(gst_value_get_caps(detail), 0);
    const QLatin1String kind(gst_structure_get_name(missing));
    if (kind == QLatin1String("video/x-ms-asf"))
        return kUglyPlugins;
    if (kind == QLatin1String("video/quicktime") || kind == QLatin1String("audio/x-m4a") ||
        kind == QLatin1String("application/x-id3"))
        return kGoodPlugins;
    int version = 0;
    if (kind == QLatin1String("audio/mpeg") &&
        gst_structure_get_int(missing, "mpegversion", &version) && version == 1)
        return kGoodPlugins;
    return kind.startsWith(QLatin1String("audio/")) ? kLibavPlugin : QLatin1String();
}
