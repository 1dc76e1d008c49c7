#include "host/engine/sound_gates.h"

namespace veldrin {

namespace {

constexpr const char* kDecodedSound = "audio/x-raw";

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

}  // namespace veldrin
