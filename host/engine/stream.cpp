#include "host/engine/stream.h"

#include <algorithm>
#include <cmath>

#include "host/engine/file_source.h"
#include "host/engine/leveller.h"

namespace veldrin {

namespace {

constexpr std::chrono::milliseconds kOneTick(5);
constexpr GstClockTime kBetweenLooks = 50 * GST_MSECOND;
constexpr GstClockTime kSettlePatience = 500 * GST_MSECOND;
// A seek to the very end leaves some demuxers hanging.
constexpr std::chrono::milliseconds kBeforeEnd(200);

constexpr const char* kDecodedSound = "audio/x-raw";

// What the streaming threads tell the waiting thread through the bus.
constexpr const char* kFirstSound = "veldrin-first-sound";
constexpr const char* kNoSound = "veldrin-no-sound";

void Post(GstElement* pipeline, const char* what) {
    gst_element_post_message(
        pipeline, gst_message_new_application(GST_OBJECT(pipeline), gst_structure_new_empty(what)));
}

Time Scaled(Time time, double factor) {
    return Time(std::llround(static_cast<double>(time.count()) * factor));
}

/// A number of the format that passes the pad, 0 if there is none.
int NumberOf(GstPad* pad, const char* name) {
    const CapsPtr caps(gst_pad_get_current_caps(pad));
    int number = 0;
    if (caps != nullptr) {
        gst_structure_get_int(gst_caps_get_structure(caps.get(), 0), name, &number);
    }
    return number;
}

gboolean NoteRunningTask(GstElement*, GstPad* pad, gpointer found) {
    *static_cast<bool*>(found) = gst_pad_get_task_state(pad) == GST_TASK_STARTED;
    return !*static_cast<bool*>(found);  // go on to the next pad
}

/// Whether any streaming thread of the pipeline is at work or held back.
bool IsAnyTaskRunning(GstBin* pipeline) {
    const auto lookAt = [](const GValue* item, GValue*, gpointer found) -> gboolean {
        gst_element_foreach_pad(GST_ELEMENT(g_value_get_object(item)), &NoteRunningTask, found);
        return !*static_cast<bool*>(found);  // go on to the next element
    };
    bool found = false;
    GstIterator* elements = gst_bin_iterate_recurse(pipeline);
    const GstIteratorResult result = gst_iterator_fold(elements, lookAt, nullptr, &found);
    gst_iterator_free(elements);
    return found || result == GST_ITERATOR_RESYNC;  // elements are being added: not idle
}

/// Holds back decoded sound. A pad that may put out such has turned out to be one of a parser, and
/// to put out what is still to be decoded: without that the decoder would never be complete.
GstPadProbeReturn HoldSound(GstPad* pad, GstPadProbeInfo*, gpointer) {
    const CapsPtr caps(gst_pad_get_current_caps(pad));
    const bool isSound =
        caps == nullptr ||
        gst_structure_has_name(gst_caps_get_structure(caps.get(), 0), kDecodedSound);
    return isSound ? GST_PAD_PROBE_OK : GST_PAD_PROBE_PASS;
}

}  // namespace

void SoundGates::CloseFor(GstElement* element) {
    const auto lookAt = [](GstElement*, GstPad* pad, gpointer self) -> gboolean {
        const CapsPtr caps(gst_pad_get_pad_template_caps(pad));
        if (!gst_caps_is_any(caps.get()) && !gst_caps_is_empty(caps.get()) &&
            gst_structure_has_name(gst_caps_get_structure(caps.get(), 0), kDecodedSound)) {
            constexpr auto kBuffers =
                static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BLOCK | GST_PAD_PROBE_TYPE_BUFFER);
            const gulong probe = gst_pad_add_probe(pad, kBuffers, &HoldSound, nullptr, nullptr);
            static_cast<SoundGates*>(self)->gates_.push_back(
                {PadPtr(GST_PAD(gst_object_ref(pad))), probe});
        }
        return TRUE;
    };
    const std::lock_guard lock(mutex_);
    if (!open_) {
        gst_element_foreach_src_pad(element, lookAt, this);
    }
}

void SoundGates::OpenAll() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    for (const Gate& gate : gates_) {
        gst_pad_remove_probe(gate.pad.get(), gate.probe);
    }
    gates_.clear();
}

std::unique_ptr<Stream> Stream::Prepare(const Plan& plan) {
    std::unique_ptr<Stream> stream(new Stream(plan));
    if (!stream->Build(plan) || !stream->WaitForSound(plan)) {
        return nullptr;
    }
    stream->ReadLength();
    if (plan.from > Time(0) && stream->Seek(plan.from) && !stream->WaitForSound(plan)) {
        return nullptr;
    }
    return stream;
}

Stream::Stream(const Plan& plan) : pipeline_(Adopt(gst_pipeline_new(nullptr))) {
    bus_.reset(gst_element_get_bus(pipeline_.get()));
    chain_ = std::make_unique<EffectChain>(GST_BIN(pipeline_.get()), plan.effects, plan.rate,
                                           MakeLeveller(plan.path, plan.loudness));
}

Stream::~Stream() {
    Release();
    gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
}

bool Stream::Build(const Plan& plan) {
    GstElement* source = MakeFileSource(plan.path);
    GstElement* decoder = gst_element_factory_make("decodebin", nullptr);
    if (!chain_->Usable() || source == nullptr || decoder == nullptr) {
        return false;
    }
    tempo_ = chain_->TempoFactor();
    chain_->SetGain(plan.gain);
    // Sound alone: pictures and texts in the file are not even decoded.
    const CapsPtr sound(gst_caps_from_string("audio/x-raw(ANY)"));
    g_object_set(decoder, "caps", sound.get(), "expose-all-streams", FALSE, nullptr);
    gst_bin_add_many(GST_BIN(pipeline_.get()), source, decoder, nullptr);
    g_signal_connect(decoder, "element-added", G_CALLBACK(&Stream::OnElementAdded), this);
    g_signal_connect(decoder, "pad-added", G_CALLBACK(&Stream::OnPadAdded), this);
    g_signal_connect(decoder, "no-more-pads", G_CALLBACK(&Stream::OnNoMorePads), this);
    constexpr auto kHeldBack = static_cast<GstPadProbeType>(
        GST_PAD_PROBE_TYPE_BLOCK | GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_BUFFER_LIST |
        GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM);
    probe_ = gst_pad_add_probe(chain_->Exit(), kHeldBack, &Stream::OnData, this, nullptr);
    chain_->Wake();
    return gst_element_link(source, decoder) &&
           gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED) != GST_STATE_CHANGE_FAILURE;
}

bool Stream::WaitForSound(const Plan& plan) {
    const auto deadline = std::chrono::steady_clock::now() + plan.patience;
    const auto isGivenUp = [&] { return plan.givenUp != nullptr && *plan.givenUp; };
    // The decoder swallows an error that comes while it is still putting itself together. Then
    // nothing is said any more, but nothing works any more either.
    int idleLooks = 0;
    while (std::chrono::steady_clock::now() < deadline && idleLooks < 2 && !isGivenUp()) {
        const MessagePtr message(gst_bus_timed_pop_filtered(
            bus_.get(), kBetweenLooks,
            static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_APPLICATION)));
        if (message == nullptr) {
            idleLooks = IsAnyTaskRunning(GST_BIN(pipeline_.get())) ? 0 : idleLooks + 1;
        } else if (gst_message_has_name(message.get(), kFirstSound)) {
            return true;
        } else {
            return false;
        }
    }
    return false;
}

void Stream::OnElementAdded(GstBin*, GstElement* element, gpointer self) {
    static_cast<Stream*>(self)->gates_.CloseFor(element);
}

void Stream::OnPadAdded(GstElement*, GstPad* pad, gpointer self) {
    const auto* stream = static_cast<Stream*>(self);
    if (!gst_pad_is_linked(stream->chain_->Entry())) {  // of several sound tracks the first
        gst_pad_link(pad, stream->chain_->Entry());
    }
}

void Stream::OnNoMorePads(GstElement*, gpointer self) {
    auto* stream = static_cast<Stream*>(self);
    stream->gates_.OpenAll();
    if (!gst_pad_is_linked(stream->chain_->Entry())) {
        Post(stream->pipeline_.get(), kNoSound);
    }
}

GstPadProbeReturn Stream::OnData(GstPad*, GstPadProbeInfo* info, gpointer self) {
    const auto* stream = static_cast<Stream*>(self);
    if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) == 0) {
        Post(stream->pipeline_.get(), kFirstSound);
        return GST_PAD_PROBE_OK;  // wait
    }
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_EOS) {
        Post(stream->pipeline_.get(), kNoSound);
    }
    return GST_PAD_PROBE_PASS;
}

GstPadProbeReturn Stream::OnSoundOut(GstPad*, GstPadProbeInfo* info, gpointer self) {
    const GstClockTime time = GST_BUFFER_PTS(GST_PAD_PROBE_INFO_BUFFER(info));
    if (GST_CLOCK_TIME_IS_VALID(time)) {
        static_cast<Stream*>(self)->lastOut_ = static_cast<gint64>(time);
    }
    return GST_PAD_PROBE_OK;
}

void Stream::Start(AudioOutput& output, bool paused) {
    output.Accept(NumberOf(chain_->Exit(), "rate"));
    keepsTime_ = output.KeepsTime();
    if (!keepsTime_) {
        lastOut_ = anchorPipeline_.count();
        gst_pad_add_probe(chain_->Exit(), GST_PAD_PROBE_TYPE_BUFFER, &Stream::OnSoundOut, this,
                          nullptr);
    }
    output_ = output.Element();
    gst_bin_add(GST_BIN(pipeline_.get()), output_);
    gst_element_link(chain_->Last(), output_);
    gst_element_sync_state_with_parent(output_);
    gst_pad_remove_probe(chain_->Exit(), probe_);
    SetPaused(paused);
}

void Stream::Release() {
    if (output_ != nullptr) {
        gst_element_set_state(output_, GST_STATE_READY);
        gst_bin_remove(GST_BIN(pipeline_.get()), output_);
        output_ = nullptr;
    }
}

Stream::Event Stream::Poll(const AudioOutput& output) {
    while (const MessagePtr message{gst_bus_pop(bus_.get())}) {
        switch (GST_MESSAGE_TYPE(message.get())) {
            case GST_MESSAGE_EOS:
                return Event::kEnded;
            case GST_MESSAGE_ERROR:
                return output.IsSourceOf(message.get()) ? Event::kOutputFailed : Event::kFailed;
            case GST_MESSAGE_DURATION_CHANGED:
                ReadLength();
                break;
            case GST_MESSAGE_CLOCK_LOST:  // a new clock is chosen on the way to playing
                gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED);
                SetPaused(paused_);
                break;
            default:
                break;
        }
    }
    ApplyPending();
    return Event::kNothing;
}

void Stream::SetPaused(bool paused) {
    paused_ = paused;
    gst_element_set_state(pipeline_.get(), paused ? GST_STATE_PAUSED : GST_STATE_PLAYING);
}

void Stream::Halt() {
    SetPaused(true);
    gst_element_get_state(pipeline_.get(), nullptr, nullptr, kSettlePatience);
}

bool Stream::Seek(Time target) {
    if (output_ != nullptr && !settled_) {
        // A flush that meets the very first data on their way into the output ends the stream.
        gst_element_get_state(pipeline_.get(), nullptr, nullptr, kSettlePatience);
        settled_ = true;
    }
    const Time last = length_ - kBeforeEnd;
    const Time media = std::max(Time(0), length_ > Time(0) ? std::min(target, last) : target);
    constexpr auto kFlags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    GstEvent* event = gst_event_new_seek(1.0, GST_FORMAT_TIME, kFlags, GST_SEEK_TYPE_SET,
                                         media.count(), GST_SEEK_TYPE_NONE, -1);
    // Sent in front of the time-stretching element, which would multiply the target by a tempo that
    // it may be about to change. Also, the output would not pass it on before it has begun to play.
    // Not in the midst of a change of state, which the output would then miss the end of.
    GST_STATE_LOCK(pipeline_.get());
    const bool sought = gst_pad_send_event(chain_->Gate(), event);
    GST_STATE_UNLOCK(pipeline_.get());
    if (!sought) {
        return false;
    }
    seeking_ = output_ != nullptr;
    readAt_ = {};
    held_ = media;
    anchorMedia_ = media;
    anchorPipeline_ = Scaled(media, 1.0 / tempo_);
    return true;
}

void Stream::Apply(const Effects& effects) {
    pending_ = effects;
    ApplyPending();
}

void Stream::ApplyPending() {
    if (!pending_) {
        return;
    }
    if (chain_->Stretches() && pending_->TempoFactor() != tempo_) {
        Time now;
        if (!ReadPosition(now)) {
            return;  // between two places: wait until the pipeline is at one
        }
        anchorMedia_ = held_;
        anchorPipeline_ = now;
    }
    chain_->Apply(*pending_);
    tempo_ = chain_->TempoFactor();
    pending_.reset();
}

Time Stream::Position() {
    // Slider and display ask within one tick.
    const auto now = std::chrono::steady_clock::now();
    if (now - readAt_ >= kOneTick) {
        Time pipelineTime;
        ReadPosition(pipelineTime);
        readAt_ = now;
    }
    return held_;
}

bool Stream::ReadPosition(Time& pipelineTime) {
    if (output_ == nullptr) {
        return false;
    }
    // Until a seek is done the output has lost its state.
    seeking_ = seeking_ && gst_element_get_state(pipeline_.get(), nullptr, nullptr, 0) ==
                               GST_STATE_CHANGE_ASYNC;
    gint64 position = lastOut_;
    if (seeking_ ||
        (keepsTime_ && !gst_element_query_position(output_, GST_FORMAT_TIME, &position))) {
        return false;
    }
    pipelineTime = Time(position);
    held_ = std::max(Time(0), anchorMedia_ + Scaled(pipelineTime - anchorPipeline_, tempo_));
    if (length_ > Time(0)) {
        held_ = std::min(held_, length_);
    }
    return true;
}

void Stream::ReadLength() {
    // Asked of the decoder: behind the time-stretching element it would change with the tempo.
    gint64 length = 0;
    if (gst_pad_peer_query_duration(chain_->Entry(), GST_FORMAT_TIME, &length) && length > 0) {
        length_ = Time(length);
    }
}

bool Stream::Seekable() const {
    const std::unique_ptr<GstQuery, decltype(&gst_query_unref)> query(
        gst_query_new_seeking(GST_FORMAT_TIME), &gst_query_unref);
    gboolean seekable = FALSE;
    if (gst_pad_peer_query(chain_->Entry(), query.get())) {
        gst_query_parse_seeking(query.get(), nullptr, &seekable, nullptr, nullptr);
    }
    return seekable;
}

int Stream::FormatNumber(const char* name) const {
    return NumberOf(chain_->Entry(), name);
}

}  // namespace veldrin
