#include "host/engine/element_line.h"

#include "host/engine/frames.h"

namespace veldrin {

namespace {

/// A pad that belongs to no element.
PadPtr FreePad(const char* name, GstPadDirection direction) {
    return PadPtr(GST_PAD(gst_object_ref_sink(gst_pad_new(name, direction))));
}

}  // namespace

ElementLine::ElementLine()
    : bin_(Adopt(gst_bin_new(nullptr))),
      in_(FreePad("in", GST_PAD_SRC)),
      out_(FreePad("out", GST_PAD_SINK)) {
    gst_pad_set_element_private(out_.get(), this);
    gst_pad_set_chain_function(out_.get(), &ElementLine::OnOut);
    gst_pad_set_event_function(out_.get(), [](GstPad*, GstObject*, GstEvent* event) -> gboolean {
        gst_event_unref(event);
        return TRUE;
    });
}

ElementLine::~ElementLine() {
    End();
}

GstElement* ElementLine::Add(const char* factory) {
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element == nullptr) {
        return nullptr;
    }
    gst_bin_add(GST_BIN(bin_.get()), element);
    if (!elements_.empty()) {
        gst_element_link(elements_.back(), element);
    }
    elements_.push_back(element);
    return element;
}

void ElementLine::End() {
    gst_pad_set_active(in_.get(), FALSE);
    gst_element_set_state(bin_.get(), GST_STATE_NULL);
    gst_pad_set_active(out_.get(), FALSE);
}

void ElementLine::Begin(int rate) {
    if (elements_.empty()) {
        return;
    }
    if (rate_ == 0) {
        const PadPtr first(gst_element_get_static_pad(elements_.front(), "sink"));
        const PadPtr last(gst_element_get_static_pad(elements_.back(), "src"));
        gst_pad_link(in_.get(), first.get());
        gst_pad_link(last.get(), out_.get());
    } else {
        End();
    }
    rate_ = rate;
    sent_ = 0;
    gst_pad_set_active(out_.get(), TRUE);
    gst_element_set_state(bin_.get(), GST_STATE_PLAYING);
    gst_pad_set_active(in_.get(), TRUE);
    const CapsPtr format(gst_caps_from_string(FramesFormat(rate).c_str()));
    GstSegment segment;
    gst_segment_init(&segment, GST_FORMAT_TIME);
    gst_pad_push_event(in_.get(), gst_event_new_stream_start("sound"));
    gst_pad_push_event(in_.get(), gst_event_new_caps(format.get()));
    gst_pad_push_event(in_.get(), gst_event_new_segment(&segment));
}

void ElementLine::Send(std::span<const float> frames, std::vector<float>& out) {
    if (elements_.empty()) {
        out.insert(out.end(), frames.begin(), frames.end());
        return;
    }
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, frames.size_bytes(), nullptr);
    gst_buffer_fill(buffer, 0, frames.data(), frames.size_bytes());
    GST_BUFFER_PTS(buffer) = static_cast<GstClockTime>(TimeOf(sent_, rate_).count());
    sent_ += static_cast<std::int64_t>(frames.size() / kSides);
    GST_BUFFER_DURATION(buffer) =
        static_cast<GstClockTime>(TimeOf(sent_, rate_).count()) - GST_BUFFER_PTS(buffer);
    receiver_ = &out;
    gst_pad_push(in_.get(), buffer);
    receiver_ = nullptr;
}

GstFlowReturn ElementLine::OnOut(GstPad* pad, GstObject*, GstBuffer* buffer) {
    auto* self = static_cast<ElementLine*>(gst_pad_get_element_private(pad));
    GstMapInfo map = GST_MAP_INFO_INIT;
    if (self->receiver_ != nullptr && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        const auto* samples = reinterpret_cast<const float*>(map.data);
        self->receiver_->insert(self->receiver_->end(), samples,
                                samples + map.size / sizeof(float));
        gst_buffer_unmap(buffer, &map);
    }
    gst_buffer_unref(buffer);
    return GST_FLOW_OK;
}

}  // namespace veldrin
