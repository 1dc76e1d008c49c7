// Owning pointers for what GStreamer hands out by reference count, so that nothing in this folder
// has to be unreferenced by hand.
#pragma once

#include <gst/gst.h>

#include <memory>

namespace veldrin {

struct GstUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstSample* sample) const { gst_sample_unref(sample); }
};

using ElementPtr = std::unique_ptr<GstElement, GstUnref>;
using PadPtr = std::unique_ptr<GstPad, GstUnref>;
using BusPtr = std::unique_ptr<GstBus, GstUnref>;
using CapsPtr = std::unique_ptr<GstCaps, GstUnref>;
using SamplePtr = std::unique_ptr<GstSample, GstUnref>;

/// Takes over an element that nobody owns yet ("floating"); empty if it is null.
inline ElementPtr Adopt(GstElement* floating) {
    return ElementPtr(floating == nullptr ? nullptr : GST_ELEMENT(gst_object_ref_sink(floating)));
}

/// A new element, empty if its plug-in is not installed.
inline ElementPtr MakeElement(const char* factory) {
    return Adopt(gst_element_factory_make(factory, nullptr));
}

}  // namespace veldrin
