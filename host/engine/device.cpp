#include "host/engine/device.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "host/engine/come_first.h"
#include "host/engine/gst_ptr.h"

namespace veldrin {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using std::chrono::milliseconds;

// What the device holds is heard whatever the user does, so it is little; but a desktop that is
// busy for a moment must not be heard as a gap.
constexpr milliseconds kBuffer(80);
// What the user may ask for instead.
constexpr const char* kBufferVariable = "PULSE_LATENCY_MSEC";
constexpr int kSmallestBuffer = 10;
constexpr int kLargestBuffer = 250;

// If the program was held up for longer (stopped in a terminal), outputs would leave out what
// should have been heard meanwhile.
constexpr milliseconds kHeldUp(500);

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

milliseconds BufferTime() {
    const char* asked = g_getenv(kBufferVariable);
    const int number = asked == nullptr ? 0 : std::atoi(asked);
    return number <= 0 ? kBuffer
                       : milliseconds(std::clamp(number, kSmallestBuffer, kLargestBuffer));
}

bool Has(GstElement* element, const char* property) {
    return g_object_class_find_property(G_OBJECT_GET_CLASS(element), property) != nullptr;
}

/// How much it may hold, and how desktops name it in their mixers.
void SetUp(GstElement* sink) {
    if (Has(sink, "buffer-time") && Has(sink, "latency-time")) {
        const microseconds buffer = BufferTime();
        g_object_set(sink, "buffer-time", gint64{buffer.count()}, "latency-time",
                     gint64{buffer.count() / 4}, nullptr);
    }
    if (Has(sink, "stream-properties")) {
        GstStructure* properties = gst_structure_new(
            "props", "media.role", G_TYPE_STRING, "music", "application.name", G_TYPE_STRING,
            "Veldrin", "application.icon_name", G_TYPE_STRING, "veldrin", nullptr);
        g_object_set(sink, "stream-properties", properties, nullptr);
        gst_structure_free(properties);
    }
}

class Device : public Drain {
  public:
    Device() = default;
    ~Device() override {
        // A pad that is being written to must not be taken away before it has been let go.
        gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
        gst_pad_set_active(pad_.get(), FALSE);
    }

    /// Builds the pipeline around the output and opens it; False if that does not work.
    bool Open(GstElement* sink);

    bool Begin(int rate) override;
    bool Write(std::span<const float> frames) override;
    std::int64_t Heard() override;
    void Rest() override;
    Time Portion() const override { return portion_; }

  private:
    bool Start();
    /// As the pipeline counts it.
    GstClockTime TimeUntil(std::int64_t frames) const {
        return static_cast<GstClockTime>(TimeOf(frames - startedAt_, rate_).count());
    }
    static GstBusSyncReply OnMessage(GstBus* bus, GstMessage* message, gpointer self);

    ElementPtr pipeline_ = Adopt(gst_pipeline_new(nullptr));
    PadPtr pad_{GST_PAD(gst_object_ref_sink(gst_pad_new("frames", GST_PAD_SRC)))};
    GstElement* sink_ = nullptr;  // owned by the pipeline
    std::atomic<bool> failed_{false};
    const Time portion_ = BufferTime() / 4;
    bool plays_ = false;
    int rate_ = 1;
    std::int64_t written_ = 0;
    std::int64_t heard_ = 0;
    std::int64_t startedAt_ = 0;  // frames that had been written by then
    Clock::time_point wroteAt_;   // or began to
};

bool Device::Open(GstElement* sink) {
    SetUp(sink);
    GstElement* convert = gst_element_factory_make("audioconvert", nullptr);
    GstElement* resample = gst_element_factory_make("audioresample", nullptr);
    if (convert == nullptr || resample == nullptr) {
        return false;
    }
    sink_ = sink;
    gst_bin_add_many(GST_BIN(pipeline_.get()), convert, resample, sink, nullptr);
    gst_element_link_many(convert, resample, sink, nullptr);
    const PadPtr in(gst_element_get_static_pad(convert, "sink"));
    gst_pad_link(pad_.get(), in.get());
    const BusPtr bus(gst_element_get_bus(pipeline_.get()));
    gst_bus_set_sync_handler(bus.get(), &Device::OnMessage, this, nullptr);
    // READY is where an output opens its device.
    return gst_element_set_state(pipeline_.get(), GST_STATE_READY) != GST_STATE_CHANGE_FAILURE;
}

/// Lets go of whoever waits for a device that has gone.
void Release(GstElement*, gpointer pad) {
    gst_pad_push_event(GST_PAD(pad), gst_event_new_flush_start());
}

/// On whatever thread has something to say; nobody reads the bus besides.
GstBusSyncReply Device::OnMessage(GstBus*, GstMessage* message, gpointer self) {
    auto* device = static_cast<Device*>(self);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR && !device->failed_.exchange(true)) {
        // A device that goes while it is being started is waited for without an end. Not from here,
        // where the output may hold what it needs to let go.
        gst_element_call_async(device->pipeline_.get(), &Release,
                               gst_object_ref(device->pad_.get()), &gst_object_unref);
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

bool Device::Begin(int rate) {
    rate_ = rate;
    written_ = 0;
    heard_ = 0;
    return Start();
}

/// Plays what is written from now on at once, whatever was before.
bool Device::Start() {
    startedAt_ = written_;
    plays_ = true;
    gst_pad_set_active(pad_.get(), FALSE);
    gst_element_set_state(pipeline_.get(), GST_STATE_READY);
    gst_pad_set_active(pad_.get(), TRUE);
    if (gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        return false;
    }
    const CapsPtr format(gst_caps_from_string(FramesFormat(rate_).c_str()));
    GstSegment segment;
    gst_segment_init(&segment, GST_FORMAT_TIME);
    return gst_pad_push_event(pad_.get(), gst_event_new_stream_start("veldrin")) == TRUE &&
           gst_pad_push_event(pad_.get(), gst_event_new_caps(format.get())) == TRUE &&
           gst_pad_push_event(pad_.get(), gst_event_new_segment(&segment)) == TRUE;
}

bool Device::Write(std::span<const float> frames) {
    if (!std::exchange(plays_, true)) {
        gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING);
    } else if (written_ > startedAt_ && Clock::now() - wroteAt_ > kHeldUp) {
        Start();
    }
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, frames.size_bytes(), nullptr);
    gst_buffer_fill(buffer, 0, frames.data(), frames.size_bytes());
    const GstClockTime from = TimeUntil(written_);
    written_ += static_cast<std::int64_t>(frames.size() / kSides);
    GST_BUFFER_PTS(buffer) = from;
    GST_BUFFER_DURATION(buffer) = TimeUntil(written_) - from;
    wroteAt_ = Clock::now();
    return gst_pad_push(pad_.get(), buffer) == GST_FLOW_OK && !failed_;
}

std::int64_t Device::Heard() {
    gint64 position = 0;
    if (gst_element_query_position(sink_, GST_FORMAT_TIME, &position)) {
        heard_ = std::clamp(startedAt_ + FramesIn(Time(position), rate_), heard_, written_);
    }
    return heard_;
}

void Device::Rest() {
    plays_ = false;
    gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED);
}

}  // namespace

OpenedDevice OpenDevice() {
    ComeFirst();  // outputs start threads that hand the sound on
    GList* list = gst_element_factory_list_get_elements(
        GST_ELEMENT_FACTORY_TYPE_SINK | GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO, GST_RANK_MARGINAL);
    OpenedDevice opened;
    for (GstElementFactory* factory : RankedSinks(list)) {
        auto device = std::make_unique<Device>();
        GstElement* sink = gst_element_factory_create(factory, nullptr);
        if (sink != nullptr && device->Open(sink)) {
            opened = {std::move(device),
                      gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_LONGNAME)};
            break;
        }
    }
    gst_plugin_feature_list_free(list);
    return opened;
}

}  // namespace veldrin
