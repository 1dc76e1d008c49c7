#include "host/engine/file_source.h"

#include <algorithm>
#include <cstdint>

#include "host/engine/nesting.h"
#include "host/engine/sound_end.h"

namespace veldrin {

namespace {

// Bytes in which no number of levels does any harm.
constexpr guint kFewestNested = 32 * 1024;

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

bool IsTooDeep(GstBuffer* buffer) {
    GstMapInfo map = GST_MAP_INFO_INIT;
    if (buffer == nullptr || gst_buffer_map(buffer, &map, GST_MAP_READ) == FALSE) {
        return false;
    }
    const bool tooDeep = NestsTooDeep({reinterpret_cast<const char*>(map.data), map.size});
    gst_buffer_unmap(buffer, &map);
    return tooDeep;
}

/// Asked for bytes from behind that end on, it has none. Nor has it when asked for no bytes at all:
/// a demuxer that has miscalculated would do that for ever, and its decoder keep every nothing.
/// What would be too much for the demuxer's stack is kept from it as well.
GstPadProbeReturn OnBytes(GstPad*, GstPadProbeInfo* info, gpointer end) {
    GstBuffer* buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (GST_PAD_PROBE_INFO_SIZE(info) >= kFewestNested && IsTooDeep(buffer)) {
        return GST_PAD_PROBE_DROP;
    }
    const bool given = GST_PAD_PROBE_INFO_SIZE(info) > 0 &&
                       GST_PAD_PROBE_INFO_OFFSET(info) < GPOINTER_TO_SIZE(end);
    return given ? GST_PAD_PROBE_OK : GST_PAD_PROBE_DROP;
}

}  // namespace

GstElement* MakeFileSource(const std::string& path) {
    GstElement* source = gst_element_factory_make("filesrc", nullptr);
    if (source == nullptr) {
        return nullptr;
    }
    // The file's name goes in as it is: a URI would only have to be encoded here and decoded there.
    g_object_set(source, "location", path.c_str(), nullptr);
    const PadPtr pad(gst_element_get_static_pad(source, "src"));
    const auto end = EndOfSound(path);
    const gpointer place = GSIZE_TO_POINTER(end.value_or(G_MAXINT64));
    constexpr auto kPulled =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_PULL);
    gst_pad_add_probe(pad.get(), kPulled, &OnBytes, place, nullptr);
    if (end) {
        constexpr auto kAnswers = static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_QUERY_UPSTREAM |
                                                               GST_PAD_PROBE_TYPE_PULL);
        gst_pad_add_probe(pad.get(), kAnswers, &OnQuery, place, nullptr);
    }
    return source;
}

}  // namespace veldrin
