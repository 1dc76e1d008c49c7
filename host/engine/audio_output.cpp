#include "host/engine/audio_output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace veldrin {

namespace {

// Ways to the same devices as the others, that write to the terminal or start servers when they
// find nothing.
constexpr std::array<std::string_view, 2> kShunnedSinks = {"openalsink", "jackaudiosink"};

/// The factories of installed audio outputs, best first.
std::vector<GstElementFactory*> RankedSinks(GList* list) {
    std::vector<GstElementFactory*> factories;
    for (GList* node = list; node != nullptr; node = node->next) {
        auto* factory = GST_ELEMENT_FACTORY(node->data);
        const std::string_view name = GST_OBJECT_NAME(factory);
        if (std::find(kShunnedSinks.begin(), kShunnedSinks.end(), name) == kShunnedSinks.end()) {
            factories.push_back(factory);
        }
    }
    std::stable_sort(factories.begin(), factories.end(), [](auto* one, auto* other) {
        return gst_plugin_feature_get_rank(GST_PLUGIN_FEATURE(one)) >
               gst_plugin_feature_get_rank(GST_PLUGIN_FEATURE(other));
    });
    return factories;
}

/// How desktops name the stream in their mixers.
void Introduce(GstElement* sink) {
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(sink), "stream-properties") == nullptr) {
        return;
    }
    GstStructure* properties = gst_structure_new(
        "props", "media.role", G_TYPE_STRING, "music", "application.name", G_TYPE_STRING, "Veldrin",
        "application.icon_name", G_TYPE_STRING, "veldrin", nullptr);
    g_object_set(sink, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
}

/// Closes the device; an element must not go in any other state.
void Dispose(ElementPtr element) {
    if (element != nullptr) {
        gst_element_set_state(element.get(), GST_STATE_NULL);
    }
}

/// The device and what it needs in front of it, as one element; empty on failure.
ElementPtr WithConversion(GstElement* sink) {
    ElementPtr bin = Adopt(gst_bin_new(nullptr));
    GstElement* convert = gst_element_factory_make("audioconvert", nullptr);
    GstElement* resample = gst_element_factory_make("audioresample", nullptr);
    if (convert == nullptr || resample == nullptr) {
        return {};
    }
    gst_bin_add_many(GST_BIN(bin.get()), convert, resample, sink, nullptr);
    gst_element_link_many(convert, resample, sink, nullptr);
    const PadPtr pad(gst_element_get_static_pad(convert, "sink"));
    gst_element_add_pad(bin.get(), gst_ghost_pad_new("sink", pad.get()));
    return bin;
}

}  // namespace

AudioOutput::AudioOutput(const Output& choice) : choice_(choice) {
    if (choice_.kind == Output::Kind::kFile) {
        writer_ = std::make_unique<WavWriter>(choice_.path);
    }
}

AudioOutput::~AudioOutput() {
    Dispose(std::move(element_));
}

void AudioOutput::Start() {
    if (choice_.kind == Output::Kind::kAuto) {
        if (!OpenDevice()) {
            GoSilent("No sound device found; playing silently");
        }
        return;
    }
    element_ = MakeElement("fakesink");
    if (element_ == nullptr) {
        return;
    }
    g_object_set(element_.get(), "sync", writer_ == nullptr, nullptr);
    if (writer_ != nullptr) {
        g_object_set(element_.get(), "signal-handoffs", TRUE, nullptr);
        g_signal_connect(element_.get(), "handoff", G_CALLBACK(&AudioOutput::OnSamples), this);
    }
}

void AudioOutput::Replace(bool silently) {
    if (choice_.kind == Output::Kind::kAuto && (silently || !OpenDevice())) {
        GoSilent("The sound device has gone; playing silently");
    }
}

void AudioOutput::Retry() {
    if (silent_) {
        OpenDevice();
    }
}

bool AudioOutput::OpenDevice() {
    GList* list = gst_element_factory_list_get_elements(
        GST_ELEMENT_FACTORY_TYPE_SINK | GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO, GST_RANK_MARGINAL);
    bool found = false;
    for (GstElementFactory* factory : RankedSinks(list)) {
        found = TryDevice(factory);
        if (found) {
            break;
        }
    }
    gst_plugin_feature_list_free(list);
    return found;
}

bool AudioOutput::TryDevice(GstElementFactory* factory) {
    const ElementPtr sink = Adopt(gst_element_factory_create(factory, nullptr));
    if (sink == nullptr) {
        return false;
    }
    Introduce(sink.get());
    ElementPtr element = WithConversion(sink.get());
    // READY is where a sink opens its device.
    if (element == nullptr ||
        gst_element_set_state(element.get(), GST_STATE_READY) == GST_STATE_CHANGE_FAILURE) {
        Dispose(std::move(element));
        return false;
    }
    Dispose(std::exchange(element_, std::move(element)));
    device_ = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_LONGNAME);
    silent_ = false;
    return true;
}

void AudioOutput::GoSilent(const char* reason) {
    Dispose(std::exchange(element_, MakeElement("fakesink")));
    if (element_ != nullptr) {
        g_object_set(element_.get(), "sync", TRUE, nullptr);
    }
    device_.clear();
    silent_ = true;
    if (!noticed_) {
        noticed_ = true;
        notice_ = reason;
    }
}

void AudioOutput::OnSamples(GstElement*, GstBuffer* buffer, GstPad*, gpointer self) {
    GstMapInfo map = GST_MAP_INFO_INIT;
    if (gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        // The chain ends in interleaved native floats; buffers of audio are aligned for them.
        static_cast<AudioOutput*>(self)->writer_->Write(
            {reinterpret_cast<const float*>(map.data), map.size / sizeof(float)});
        gst_buffer_unmap(buffer, &map);
    }
}

bool AudioOutput::IsSourceOf(GstMessage* message) const {
    return element_ != nullptr && GST_MESSAGE_SRC(message) != nullptr &&
           (GST_MESSAGE_SRC(message) == GST_OBJECT(element_.get()) ||
            gst_object_has_as_ancestor(GST_MESSAGE_SRC(message), GST_OBJECT(element_.get())));
}

std::string AudioOutput::ChoiceName() const {
    switch (choice_.kind) {
        case Output::Kind::kFile:
            return "WAV file " + choice_.path;
        case Output::Kind::kNull:
            return "none (silent)";
        case Output::Kind::kAuto:
            break;
    }
    return "sound device";
}

std::string AudioOutput::Name() const {
    if (choice_.kind != Output::Kind::kAuto) {
        return ChoiceName();
    }
    return device_.empty() ? "none found (silent)" : device_;
}

std::string AudioOutput::TakeNotice() {
    if (!Ready() && !std::exchange(noticed_, true)) {
        const int error = writer_->Error();
        notice_ = "Cannot write " + choice_.path + ": " +
                  (error == ENXIO ? "nobody reads from it" : std::strerror(error));
    }
    return std::exchange(notice_, {});
}

}  // namespace veldrin
