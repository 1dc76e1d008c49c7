#include "platform/desktop/tray/tray_icons.h"

#include <utility>

namespace platform::desktop {

TrayIcons::TrayIcons(WaitLoop& loop, EventQueue& events, Placed onPlaced)
    : loop_(loop), events_(events), onPlaced_(std::move(onPlaced)) {}

TrayIcons::~TrayIcons() = default;

void TrayIcons::Show(Handle window, std::u16string_view /*tip*/) {
    onPlaced_(window, false);
}

void TrayIcons::Hide(Handle /*window*/) {}

}  // namespace platform::desktop
