#include "host/engine/leveller.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/engine/level_tags.h"

namespace veldrin {

namespace {

// A peak in the tags is rounded, so that what it allows may be off by as much.
constexpr float kFullScale = 1.0001F;

bool Exceeds(GstBuffer* buffer) {
    GstMapInfo map;
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return false;
    }
    const auto* samples = reinterpret_cast<const float*>(map.data);
    const bool exceeds = std::any_of(samples, samples + map.size / sizeof(float),
                                     [](float sample) { return std::abs(sample) > kFullScale; });
    gst_buffer_unmap(buffer, &map);
    return exceeds;
}

/// The limiter bends all that is louder than half of full scale, so only those pass it that need
/// it.
GstPadProbeReturn OnSamples(GstPad*, GstPadProbeInfo* info, gpointer limiter) {
    if (!Exceeds(GST_PAD_PROBE_INFO_BUFFER(info))) {
        return GST_PAD_PROBE_OK;
    }
    g_object_set(limiter, "enabled", TRUE, nullptr);
    return GST_PAD_PROBE_REMOVE;
}

}  // namespace

std::vector<ElementPtr> MakeLeveller(const std::string& path, Loudness loudness) {
    if (loudness == Loudness::kOff) {
        return {};
    }
    ElementPtr volume = MakeElement("volume");
    ElementPtr limiter = MakeElement("rglimiter");
    if (volume == nullptr || limiter == nullptr) {
        return {};
    }
    const Level level = LevelFor(ReadLevelTags(path), loudness);
    g_object_set(volume.get(), "volume", std::pow(10.0, level.gain / 20.0), nullptr);
    g_object_set(limiter.get(), "enabled", level.mayExceed, nullptr);
    if (!level.mayExceed) {
        const PadPtr pad(gst_element_get_static_pad(limiter.get(), "sink"));
        gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, &OnSamples, limiter.get(), nullptr);
    }
    std::vector<ElementPtr> elements;
    elements.push_back(std::move(volume));
    elements.push_back(std::move(limiter));
    return elements;
}

}  // namespace veldrin
