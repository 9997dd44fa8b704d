#pragma once

#include <gst/gst.h>

#include <memory>

/// Owners of what GStreamer counts references of.

struct GstObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template <typename T>
using GstObjectPtr = std::unique_ptr<T, GstObjectUnref>;

struct GstMessageUnref {
    void operator()(GstMessage* message) const { gst_message_unref(message); }
};
using GstMessagePtr = std::unique_ptr<GstMessage, GstMessageUnref>;

struct GstCapsUnref {
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
};
using GstCapsPtr = std::unique_ptr<GstCaps, GstCapsUnref>;
