#include "fake_device.h"

#include <gst/gst.h>

#include <atomic>
#include <mutex>
#include <string_view>

namespace audio_tests {

namespace {

constexpr const char* kName = "veldrinfakedevice";

// What the device's class and the tests share. GObject's classes live as long as the process.
std::atomic<bool> isPluggedIn{false};
std::atomic<int> openDevices{0};
std::atomic<int> everOpened{0};
std::mutex currentMutex;
GstElement* current = nullptr;  // the device that is open, not owned

GstElementClass* parentClass = nullptr;

GstStateChangeReturn ChangeState(GstElement* element, GstStateChange change) {
    if (change == GST_STATE_CHANGE_NULL_TO_READY) {
        if (!isPluggedIn) {
            return GST_STATE_CHANGE_FAILURE;
        }
        ++openDevices;
        ++everOpened;
        const std::lock_guard lock(currentMutex);
        current = element;
    }
    if (change == GST_STATE_CHANGE_READY_TO_NULL) {
        --openDevices;
        const std::lock_guard lock(currentMutex);
        current = current == element ? nullptr : current;
    }
    return parentClass->change_state(element, change);
}

void InitClass(gpointer objectClass, gpointer) {
    auto* elementClass = GST_ELEMENT_CLASS(objectClass);
    parentClass = GST_ELEMENT_CLASS(g_type_class_peek_parent(objectClass));
    elementClass->change_state = &ChangeState;
    gst_element_class_set_static_metadata(elementClass, "Fake device", "Sink/Audio",
                                          "Plays unheard in real time", "tests");
    GstPadTemplate* pad = gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS,
                                               gst_caps_from_string("audio/x-raw,format=S16LE"));
    gst_element_class_add_pad_template(elementClass, pad);
}

void InitInstance(GTypeInstance* instance, gpointer) {
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    g_object_set(sink, "sync", TRUE, nullptr);
    // A device is asked for its format, unlike a plain fakesink, which takes anything.
    GstElement* format = gst_element_factory_make("capsfilter", nullptr);
    GstCaps* caps = gst_caps_from_string("audio/x-raw,format=S16LE,rate=48000");
    g_object_set(format, "caps", caps, nullptr);
    gst_caps_unref(caps);
    auto* bin = reinterpret_cast<GstBin*>(instance);
    gst_bin_add_many(bin, format, sink, nullptr);
    gst_element_link(format, sink);
    GstPad* pad = gst_element_get_static_pad(format, "sink");
    gst_element_add_pad(GST_ELEMENT(bin), gst_ghost_pad_new("sink", pad));
    gst_object_unref(pad);
    GST_OBJECT_FLAG_SET(bin, GST_ELEMENT_FLAG_SINK);
}

GType FakeDeviceType() {
    static const GType type =
        g_type_register_static_simple(GST_TYPE_BIN, "VeldrinFakeDevice", sizeof(GstBinClass),
                                      &InitClass, sizeof(GstBin), &InitInstance, GTypeFlags{});
    return type;
}

}  // namespace

void UseFakeDevice(bool pluggedIn) {
    gst_init(nullptr, nullptr);
    isPluggedIn = pluggedIn;
    everOpened = 0;
    gst_element_register(nullptr, kName, GST_RANK_PRIMARY, FakeDeviceType());
    GList* sinks = gst_element_factory_list_get_elements(
        GST_ELEMENT_FACTORY_TYPE_SINK | GST_ELEMENT_FACTORY_TYPE_MEDIA_AUDIO, GST_RANK_MARGINAL);
    for (GList* node = sinks; node != nullptr; node = node->next) {
        if (std::string_view(GST_OBJECT_NAME(node->data)) != kName) {
            gst_plugin_feature_set_rank(GST_PLUGIN_FEATURE(node->data), GST_RANK_NONE);
        }
    }
    gst_plugin_feature_list_free(sinks);
}

void PlugFakeDevice(bool pluggedIn) {
    isPluggedIn = pluggedIn;
}

void BreakFakeDevice() {
    GstElement* element = nullptr;
    {
        const std::lock_guard lock(currentMutex);
        element = current == nullptr ? nullptr : GST_ELEMENT(gst_object_ref(current));
    }
    if (element != nullptr) {
        GST_ELEMENT_ERROR(element, RESOURCE, WRITE, ("The device is gone."), (nullptr));
        gst_object_unref(element);
    }
}

int OpenFakeDevices() {
    return openDevices;
}
int FakeDevicesEverOpened() {
    return everOpened;
}

}  // namespace audio_tests
