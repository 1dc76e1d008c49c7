#include "host/engine/file_source.h"

#include <algorithm>
#include <cstdint>

#include "host/engine/sound_end.h"

namespace veldrin {

namespace {

/// Asked for the length of the file, the pad answers with the end of the sound.
GstPadProbeReturn OnQuery(GstPad*, GstPadProbeInfo* info, gpointer end) {
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) == GST_QUERY_DURATION) {
        GstFormat format = GST_FORMAT_UNDEFINED;
        gint64 length = 0;
        gst_query_parse_duration(query, &format, &length);
        if (format == GST_FORMAT_BYTES) {
            gst_query_set_duration(query, format,
                                   std::min(length, static_cast<gint64>(GPOINTER_TO_SIZE(end))));
        }
    }
    return GST_PAD_PROBE_OK;
}

/// Asked for bytes from behind that end on, it has none.
GstPadProbeReturn OnBytes(GstPad*, GstPadProbeInfo* info, gpointer end) {
    return GST_PAD_PROBE_INFO_OFFSET(info) < GPOINTER_TO_SIZE(end) ? GST_PAD_PROBE_OK
                                                                   : GST_PAD_PROBE_DROP;
}

}  // namespace

GstElement* MakeFileSource(const std::string& path) {
    GstElement* source = gst_element_factory_make("filesrc", nullptr);
    if (source == nullptr) {
        return nullptr;
    }
    // The file's name goes in as it is: a URI would only have to be encoded here and decoded there.
    g_object_set(source, "location", path.c_str(), nullptr);
    if (const auto end = EndOfSound(path)) {
        const PadPtr pad(gst_element_get_static_pad(source, "src"));
        constexpr auto kAnswers = static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_QUERY_UPSTREAM |
                                                               GST_PAD_PROBE_TYPE_PULL);
        constexpr auto kPulled =
            static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_PULL);
        const gpointer place = GSIZE_TO_POINTER(*end);
        gst_pad_add_probe(pad.get(), kAnswers, &OnQuery, place, nullptr);
        gst_pad_add_probe(pad.get(), kPulled, &OnBytes, place, nullptr);
    }
    return source;
}

}  // namespace veldrin
