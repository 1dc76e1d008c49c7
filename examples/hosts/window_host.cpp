// A host with a window. A second start hands its file to the first and ends.
//
//     window_host DIRECTORY [FILE]
//
// DIRECTORY is where settings and list are kept; it is made by whoever starts this. FILE is a path
// from the root folder on.
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "core/ambrisor.h"
#include "platform/desktop/desktop_driver.h"
#include "platform/windows/window_system.h"
#include "player_host.h"
#include "second_start.h"

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "usage: window_host DIRECTORY [FILE]\n");
        return 2;
    }
    const std::string directory = arguments[1];
    // An empty line brings the saved list back.
    const std::string line = argumentCount > 2 ? "\"" + std::string(arguments[2]) + "\"" : "";
    FirstStart start(directory);
    if (start.HandOver(line)) {
        return 0;
    }
    // The toolkit ends the process where it finds no display.
    if (const auto fault = platform::DesktopDriver::WhyNoDisplay()) {
        std::fprintf(stderr, "window_host: %s\n", fault->c_str());
        return 1;
    }
    platform::DesktopDriver driver({.id = "window_host",
                                    .title = "Window host",
                                    .genericName = "Music player",
                                    .categories = "AudioVideo;Audio;Player;"},
                                   std::nullopt);
    platform::WindowSystem windows(driver);
    SilentPlayer player([&driver] { return driver.Now(); }, 180);
    PlayerHost host(player);
    sarnel::Ambrisor component(windows, {.directory = directory});
    if (!component.DirectoryIsWritable()) {
        std::fprintf(stderr, "window_host: nothing will be kept in '%s'\n", directory.c_str());
    }
    component.Connect(&host);
    // The desktop's session ends: what is to be saved is saved when this returns.
    driver.WatchSessionEnd([&component] { End(component); });
    // Whatever waits for a display that has gone waits for ever.
    driver.WatchDisplay([] { std::_Exit(1); });

    const platform::Handle window = Begin(component, platform::Widen(line));
    // Not from within the driver's wait: the component may have to wait in turn.
    driver.Watch(start.Descriptor(), [&] {
        windows.Schedule(0, [&windows, window, later = start.TakeLine()] {
            windows.SendCopyData(window, {0, later});
            windows.SetForegroundWindow(window);
        });
    });
    while (!host.closed) {
        windows.WaitMessage();
        if (host.exitWished) {
            End(component);
        }
    }
    driver.Watch(start.Descriptor(), {});
    component.Disconnect();
}
