#include "host/engine/aac_lag.h"

#include <string_view>

namespace veldrin {

namespace {

// The decoder "faad" swallows the first frame that it gets and tells the others to be one frame
// earlier than they are. Where the file says which part of its sound is music and which is there
// for the decoder's sake, the cut would fall a frame late at both ends. So the start is moved in
// front of the parser, which leaves frames before it out, and the end in front of the decoder
// alone.
constexpr guint64 kFrame = 1024;  // samples; twice as many come out where the file doubles its rate

enum class End : gsize { kStart, kStop };

std::string_view FactoryOf(GstElement* element) {
    GstElementFactory* factory = gst_element_get_factory(element);
    return factory == nullptr ? std::string_view() : GST_OBJECT_NAME(factory);
}

/// Whether the installed decoder of AAC that is tried first is that one.
bool IsUsed() {
    GList* decoders = gst_element_factory_list_get_elements(
        GST_ELEMENT_FACTORY_TYPE_DECODER | GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO, GST_RANK_MARGINAL);
    const CapsPtr aac(gst_caps_from_string("audio/mpeg, mpegversion=(int)4, framed=(boolean)true"));
    GList* able = gst_element_factory_list_filter(decoders, aac.get(), GST_PAD_SINK, FALSE);
    able = g_list_sort(able, &gst_plugin_feature_rank_compare_func);
    const bool used = able != nullptr && std::string_view(GST_OBJECT_NAME(able->data)) == "faad";
    gst_plugin_feature_list_free(able);
    gst_plugin_feature_list_free(decoders);
    return used;
}

GstClockTime Lag(GstPad* pad) {
    const CapsPtr caps(gst_pad_get_current_caps(pad));
    int rate = 0;
    if (caps != nullptr) {
        gst_structure_get_int(gst_caps_get_structure(caps.get(), 0), "rate", &rate);
    }
    return rate <= 0 ? 0 : gst_util_uint64_scale_int(kFrame, GST_SECOND, rate);
}

GstPadProbeReturn OnEvent(GstPad* pad, GstPadProbeInfo* info, gpointer which) {
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_SEGMENT) {
        return GST_PAD_PROBE_OK;
    }
    GstSegment segment;
    gst_event_copy_segment(event, &segment);
    const GstClockTime lag = Lag(pad);
    const bool isStart = static_cast<End>(GPOINTER_TO_SIZE(which)) == End::kStart;
    guint64& place = isStart ? segment.start : segment.stop;
    if (segment.format != GST_FORMAT_TIME || !GST_CLOCK_TIME_IS_VALID(place) || place < lag) {
        return GST_PAD_PROBE_OK;
    }
    place -= lag;
    if (isStart) {
        segment.position = segment.start;
    }
    GstEvent* mended = gst_event_new_segment(&segment);
    gst_event_set_seqnum(mended, gst_event_get_seqnum(event));
    gst_event_unref(event);
    GST_PAD_PROBE_INFO_DATA(info) = mended;
    return GST_PAD_PROBE_OK;
}

}  // namespace

void MendAacTimes(GstElement* element) {
    const std::string_view factory = FactoryOf(element);
    const bool isParser = factory == "aacparse";
    if ((!isParser && factory != "faad") || (isParser && !IsUsed())) {
        return;
    }
    const PadPtr sink(gst_element_get_static_pad(element, "sink"));
    gst_pad_add_probe(sink.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, &OnEvent,
                      GSIZE_TO_POINTER(static_cast<gsize>(isParser ? End::kStart : End::kStop)),
                      nullptr);
}

}  // namespace veldrin
