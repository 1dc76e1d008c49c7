// A command line handed over by a second start, whatever it holds, leaves a player that still
// closes in order and has written its playlist.
#include "core/ambrisor.h"
#include "fuzz/fuzz.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

std::string_view fuzz::Seed() {
    return "/ADD \"/nowhere/at/all.mp3\"";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::HeadlessDriver driver(platform::HeadlessDriver::Clock::kVirtual);
    platform::WindowSystem windows(driver);
    sarnel::Ambrisor component(windows, {fuzz::ScratchFolder()});
    sarnel::ImpulseValue window;
    sarnel::ImpulseValue line(u"");
    component.ProcessImpulse(sarnel::kImpulseAttach, {}, window, line);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, window, line);
    sarnel::ImpulseValue show(true);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, show, line);
    windows.SendCopyData(window.AsLong().value_or(0), {0, std::string(fuzz::Bytes(data, size))});
    windows.Sleep(100);
    sarnel::ImpulseValue hide(false);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, hide, line);
    fuzz::Check(
        platform::FileLength(platform::Widen(fuzz::ScratchFolder() + "/Sarnel.Ambrisor.omk"))
                .value_or(0) > 0,
        "the playlist is written");
    return 0;
}
