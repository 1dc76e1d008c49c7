#include "host/engine/decoder.h"

#include <algorithm>
#include <vector>

#include "host/engine/aac_lag.h"
#include "host/engine/file_source.h"
#include "host/engine/leveller.h"

namespace veldrin {

namespace {

constexpr std::chrono::milliseconds kBetweenGlances(50);
// A seek to the very end leaves some demuxers hanging.
constexpr std::chrono::milliseconds kBeforeEnd(200);

// What can be mixed down and resampled. The converter ends the process when it meets more channels,
// and a rate beyond these makes the resampler lay out tables, or put out pieces, of hundreds of
// megabytes.
constexpr const char* kAccepted = "audio/x-raw, channels=(int)[1,63], rate=(int)[10,16777216]";

// Seconds of sound that are handed on at once. Decoders give a quarter of it, and each trip through
// elements that the processor has forgotten in between costs more than the sound. A decoder may
// also give an hour at once, if the rate is low enough: it has to be cut up before the resampler
// makes a thousand times as much of it.
constexpr const char* kGathered = "1/10";
// Pieces that are decoded ahead. Together they are longer than the time before the end of an item
// in which the next one is asked for, also when it is played at half as fast again.
constexpr guint kAhead = 5;

// After an error, what was read before it may still be on its way through the decoder.
constexpr std::chrono::milliseconds kStillDecoding(300);

constexpr int kQuality = 5;  // of the resampler, 0 to 10

/// A number of the format that passes the pad, 0 if there is none.
int NumberOf(GstPad* pad, const char* name) {
    const CapsPtr caps(gst_pad_get_current_caps(pad));
    int number = 0;
    if (caps != nullptr) {
        gst_structure_get_int(gst_caps_get_structure(caps.get(), 0), name, &number);
    }
    return number;
}

/// Sends every second channel to the left and the others to the right, all at the same share. The
/// rows are the channels that come out.
void MixChannelsWithoutPlaces(GstElement* convert, int channels) {
    GValue matrix = G_VALUE_INIT;
    g_value_init(&matrix, GST_TYPE_ARRAY);
    for (int side = 0; side < 2; ++side) {
        GValue row = G_VALUE_INIT;
        g_value_init(&row, GST_TYPE_ARRAY);
        const int count = (channels + 1 - side) / 2;
        for (int channel = 0; channel < channels; ++channel) {
            GValue share = G_VALUE_INIT;
            g_value_init(&share, G_TYPE_FLOAT);
            g_value_set_float(&share, channel % 2 == side ? 1.0F / static_cast<float>(count) : 0);
            gst_value_array_append_and_take_value(&row, &share);
        }
        gst_value_array_append_and_take_value(&matrix, &row);
    }
    g_object_set_property(G_OBJECT(convert), "mix-matrix", &matrix);
    g_value_unset(&matrix);
}

/// Its lock is held by the thread that is at work in it. A task that hands its pad over to another
/// element no longer counts as started, but may be held up in the midst of that.
gboolean NoteWork(GstElement*, GstPad* pad, gpointer found) {
    const bool isFree = GST_PAD_STREAM_TRYLOCK(pad) == TRUE;
    if (isFree) {
        GST_PAD_STREAM_UNLOCK(pad);
    }
    *static_cast<bool*>(found) = !isFree || gst_pad_get_task_state(pad) == GST_TASK_STARTED;
    return !*static_cast<bool*>(found);  // go on to the next pad
}

/// Whether any streaming thread of the pipeline is at work or held back.
bool IsAnyThreadAtWork(GstBin* pipeline) {
    const auto lookAt = [](const GValue* item, GValue*, gpointer found) -> gboolean {
        gst_element_foreach_pad(GST_ELEMENT(g_value_get_object(item)), &NoteWork, found);
        return !*static_cast<bool*>(found);  // go on to the next element
    };
    bool found = false;
    GstIterator* elements = gst_bin_iterate_recurse(pipeline);
    const GstIteratorResult result = gst_iterator_fold(elements, lookAt, nullptr, &found);
    gst_iterator_free(elements);
    return found || result == GST_ITERATOR_RESYNC;  // elements are being added: not idle
}

}  // namespace

Decoder::~Decoder() {
    if (pipeline_ != nullptr) {
        gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
    }
}

bool Decoder::Prepare(Plan plan) {
    plan_ = std::move(plan);
    if (!Build() || !WaitForSound()) {
        return false;
    }
    ReadLength();
    ReadSeekable();
    return true;
}

bool Decoder::Build() {
    pipeline_ = Adopt(gst_pipeline_new(nullptr));
    const BusPtr bus(gst_element_get_bus(pipeline_.get()));
    gst_bus_set_sync_handler(bus.get(), &Decoder::OnMessage, this, nullptr);
    GstElement* source = MakeFileSource(plan_.path);
    GstElement* decoder = gst_element_factory_make("decodebin", nullptr);
    if (source == nullptr || decoder == nullptr || !AddConversion()) {
        return false;
    }
    // Sound alone: pictures and texts in the file are not even decoded.
    const CapsPtr sound(gst_caps_from_string("audio/x-raw(ANY)"));
    g_object_set(decoder, "caps", sound.get(), "expose-all-streams", FALSE, nullptr);
    gst_bin_add_many(GST_BIN(pipeline_.get()), source, decoder, nullptr);
    g_signal_connect(decoder, "element-added", G_CALLBACK(&Decoder::OnElementAdded), this);
    g_signal_connect(decoder, "pad-added", G_CALLBACK(&Decoder::OnPadAdded), this);
    g_signal_connect(decoder, "no-more-pads", G_CALLBACK(&Decoder::OnNoMorePads), this);
    return gst_element_link(source, decoder) &&
           gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE;
}

/// What lies behind the decoder, ready for data: the pipeline would not know that this comes before
/// the decoder, which is not linked to it yet.
bool Decoder::AddConversion() {
    std::vector<GstElement*> row;
    const auto add = [&](GstElement* element) {
        if (element != nullptr && gst_bin_add(GST_BIN(pipeline_.get()), element)) {
            row.push_back(element);
        }
        return element;
    };
    const auto make = [&](const char* factory) {
        return add(gst_element_factory_make(factory, nullptr));
    };
    GstElement* entrance = make("capsfilter");
    convert_ = make("audioconvert");
    GstElement* gather = make("audiobuffersplit");
    GstElement* resample = make("audioresample");
    format_ = make("capsfilter");
    for (const ElementPtr& element : MakeLeveller(plan_.path, plan_.loudness)) {
        add(element.get());
    }
    last_ = make("appsink");
    if (entrance == nullptr || convert_ == nullptr || resample == nullptr || format_ == nullptr ||
        last_ == nullptr) {
        return false;
    }
    const CapsPtr accepted(gst_caps_from_string(kAccepted));
    g_object_set(entrance, "caps", accepted.get(), nullptr);
    if (gather != nullptr) {
        gst_util_set_object_arg(G_OBJECT(gather), "output-buffer-duration", kGathered);
    }
    g_object_set(resample, "quality", kQuality, nullptr);
    g_object_set(last_, "sync", FALSE, "async", FALSE, "max-buffers", kAhead, "wait-on-eos", FALSE,
                 nullptr);
    LookAtWhatPasses(entrance);
    bool linked = true;
    for (std::size_t i = 1; i < row.size(); ++i) {
        linked = linked && gst_element_link(row[i - 1], row[i]);
    }
    std::for_each(row.rbegin(), row.rend(),
                  [](GstElement* element) { gst_element_set_state(element, GST_STATE_PAUSED); });
    return linked;
}

void Decoder::LookAtWhatPasses(GstElement* entrance) {
    entry_.reset(gst_element_get_static_pad(entrance, "sink"));
    const PadPtr toMix(gst_element_get_static_pad(convert_, "sink"));
    gst_pad_add_probe(toMix.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, &Decoder::OnFormat, this,
                      nullptr);
    exit_.reset(gst_element_get_static_pad(format_, "src"));
    constexpr auto kAllThatPasses = static_cast<GstPadProbeType>(
        GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM |
        GST_PAD_PROBE_TYPE_EVENT_FLUSH);
    gst_pad_add_probe(exit_.get(), kAllThatPasses, &Decoder::OnSound, this, nullptr);
}

bool Decoder::WaitForSound() {
    const auto deadline = std::chrono::steady_clock::now() + plan_.patience;
    const auto isGivenUp = [&] { return plan_.givenUp != nullptr && *plan_.givenUp; };
    // The decoder swallows an error that comes while it is still putting itself together. Then
    // nothing is said any more, but nothing works any more either.
    int idleLooks = 0;
    std::unique_lock lock(mutex_);
    while (std::chrono::steady_clock::now() < deadline && idleLooks < 2 && !isGivenUp()) {
        if (noted_.wait_for(lock, kBetweenGlances, [&] { return sounds_ || ended_ || failed_; })) {
            return sounds_;
        }
        lock.unlock();
        idleLooks = IsAnyThreadAtWork(GST_BIN(pipeline_.get())) ? 0 : idleLooks + 1;
        lock.lock();
    }
    return false;
}

void Decoder::Note(std::atomic<bool>& what) {
    {
        const std::lock_guard lock(mutex_);
        what = true;
        noted_.notify_all();
    }
    changed_();
}

void Decoder::OnElementAdded(GstBin*, GstElement* element, gpointer self) {
    MendAacTimes(element);
    static_cast<Decoder*>(self)->gates_.CloseFor(element);
}

void Decoder::OnPadAdded(GstElement*, GstPad* pad, gpointer self) {
    const auto* decoder = static_cast<Decoder*>(self);
    if (!gst_pad_is_linked(decoder->entry_.get())) {  // of several sound tracks the first
        gst_pad_link(pad, decoder->entry_.get());
    }
}

void Decoder::OnNoMorePads(GstElement*, gpointer self) {
    auto* decoder = static_cast<Decoder*>(self);
    decoder->gates_.OpenAll();
    if (!gst_pad_is_linked(decoder->entry_.get())) {
        decoder->Note(decoder->failed_);
    }
}

GstPadProbeReturn Decoder::OnFormat(GstPad*, GstPadProbeInfo* info, gpointer self) {
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS) {
        return GST_PAD_PROBE_OK;
    }
    auto* decoder = static_cast<Decoder*>(self);
    GstCaps* format = nullptr;
    gst_event_parse_caps(event, &format);
    const GstStructure* structure = gst_caps_get_structure(format, 0);
    decoder->SettleFormat(structure);
    // Files of many channels mostly do not say where each belongs. The converter refuses to mix
    // them down unless it is told how, and complains if not even that is said.
    int channels = 0;
    guint64 places = 0;
    gst_structure_get_int(structure, "channels", &channels);
    gst_structure_get(structure, "channel-mask", GST_TYPE_BITMASK, &places, nullptr);
    if (channels > 2 && places == 0) {
        MixChannelsWithoutPlaces(decoder->convert_, channels);
        const CapsPtr complete(gst_caps_copy(format));
        gst_caps_set_simple(complete.get(), "channel-mask", GST_TYPE_BITMASK, guint64{0}, nullptr);
        gst_event_unref(event);
        GST_PAD_PROBE_INFO_DATA(info) = gst_event_new_caps(complete.get());
    }
    return GST_PAD_PROBE_OK;
}

/// A medium may change its rate under way; what is handed out keeps the first one.
void Decoder::SettleFormat(const GstStructure* medium) {
    int rate = 0;
    if (rate_ == 0 && gst_structure_get_int(medium, "rate", &rate)) {
        rate_ = std::clamp(rate, plan_.smallestRate, plan_.largestRate);
        const CapsPtr frames(gst_caps_from_string(FramesFormat(rate_).c_str()));
        g_object_set(format_, "caps", frames.get(), nullptr);
    }
}

/// Before what passes has been queued.
GstPadProbeReturn Decoder::OnSound(GstPad*, GstPadProbeInfo* info, gpointer self) {
    auto* decoder = static_cast<Decoder*>(self);
    if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) != 0) {
        const gsize bytes = gst_buffer_get_size(GST_PAD_PROBE_INFO_BUFFER(info));
        decoder->waiting_ += static_cast<std::int64_t>(bytes / (kSides * sizeof(float)));
        if (!decoder->sounds_) {
            decoder->Note(decoder->sounds_);
        } else {
            decoder->changed_();
        }
        return GST_PAD_PROBE_OK;
    }
    switch (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info))) {
        case GST_EVENT_EOS:
            decoder->Note(decoder->ended_);
            break;
        case GST_EVENT_FLUSH_STOP:
            decoder->waiting_ = 0;
            decoder->ended_ = false;
            break;
        default:
            break;
    }
    return GST_PAD_PROBE_OK;
}

/// On whatever thread has something to say; nobody reads the bus besides.
GstBusSyncReply Decoder::OnMessage(GstBus*, GstMessage* message, gpointer self) {
    auto* decoder = static_cast<Decoder*>(self);
    switch (GST_MESSAGE_TYPE(message)) {
        case GST_MESSAGE_ERROR:
            decoder->failedAt_ = std::chrono::steady_clock::now();
            decoder->Note(decoder->failed_);
            break;
        case GST_MESSAGE_DURATION_CHANGED:
            decoder->lengthChanged_ = true;
            break;
        default:
            break;
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

bool Decoder::IsOver() const {
    return ended_ ||
           (failed_ && std::chrono::steady_clock::now() - failedAt_.load() > kStillDecoding);
}

SamplePtr Decoder::Take() {
    GstSample* sample = nullptr;
    if (waiting_ > 0) {
        g_signal_emit_by_name(last_, "try-pull-sample", guint64{0}, &sample);
    }
    if (sample != nullptr) {
        const gsize bytes = gst_buffer_get_size(gst_sample_get_buffer(sample));
        waiting_ -= static_cast<std::int64_t>(bytes / (kSides * sizeof(float)));
    }
    return SamplePtr(sample);
}

Time Decoder::Reachable(Time place) const {
    const Time length = length_;
    const Time last = length > Time(0) ? length - kBeforeEnd : Time::max();
    return std::max(Time(0), std::min(place, last));
}

bool Decoder::Seek(Time place) {
    constexpr auto kFlags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    return gst_pad_send_event(exit_.get(),
                              gst_event_new_seek(1.0, GST_FORMAT_TIME, kFlags, GST_SEEK_TYPE_SET,
                                                 place.count(), GST_SEEK_TYPE_NONE, -1)) == TRUE;
}

void Decoder::ReadLength() {
    gint64 length = 0;
    if (gst_pad_peer_query_duration(entry_.get(), GST_FORMAT_TIME, &length) && length > 0) {
        length_ = Time(length);
    }
}

void Decoder::ReadSeekable() {
    const std::unique_ptr<GstQuery, decltype(&gst_query_unref)> query(
        gst_query_new_seeking(GST_FORMAT_TIME), &gst_query_unref);
    gboolean seekable = TRUE;
    if (gst_pad_peer_query(entry_.get(), query.get())) {
        gst_query_parse_seeking(query.get(), nullptr, &seekable, nullptr, nullptr);
    }
    seekable_ = seekable == TRUE;
}

Time Decoder::Length() {
    if (lengthChanged_.exchange(false)) {
        ReadLength();
    }
    return length_;
}

int Decoder::MediumRate() const {
    return NumberOf(entry_.get(), "rate");
}
int Decoder::MediumChannels() const {
    return NumberOf(entry_.get(), "channels");
}

}  // namespace veldrin
