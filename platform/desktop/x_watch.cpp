#include "platform/desktop/x_watch.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "platform/desktop/x_answers.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

namespace {

constexpr int kSentBit = 0x80;  // by a client, not by the server itself

}  // namespace

XWatch::XWatch(std::function<void(const XNotice&)> onNotice) : onNotice_(std::move(onNotice)) {
    if (ToolkitConnection() != nullptr) {
        qGuiApp->installNativeEventFilter(this);
    }
}

bool XWatch::TellsOfDesktop(std::uint32_t property) {
    if (desktop_.empty()) {
        for (const char* name : {"_NET_CURRENT_DESKTOP", "_NET_WM_DESKTOP", "_NET_WM_STATE"}) {
            desktop_.push_back(AtomOf(ToolkitConnection(), name, IfUnknown::kMake));
        }
    }
    return std::find(desktop_.begin(), desktop_.end(), property) != desktop_.end();
}

bool XWatch::nativeEventFilter(const QByteArray& /*kind*/, void* message, qintptr* /*result*/) {
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    const int type = event->response_type & ~kSentBit;
    if (type == XCB_VISIBILITY_NOTIFY) {
        const auto& visibility = *static_cast<const xcb_visibility_notify_event_t*>(message);
        const bool isCovered = visibility.state == XCB_VISIBILITY_FULLY_OBSCURED;
        onNotice_(
            {isCovered ? XNotice::Kind::kCovered : XNotice::Kind::kUncovered, visibility.window});
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = *static_cast<const xcb_property_notify_event_t*>(message);
        if (change.atom == XCB_ATOM_RESOURCE_MANAGER) {
            onNotice_({XNotice::Kind::kResources});
        } else if (TellsOfDesktop(change.atom)) {
            onNotice_({XNotice::Kind::kDesktop});
        }
    }
    return false;
}

}  // namespace platform::desktop
