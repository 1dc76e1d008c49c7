// A host without a window: plays the files that it is given, one after the other, and ends.
//
//     headless_host DIRECTORY FILE...
//
// DIRECTORY is where settings and list are kept. The clock is a virtual one, which moves only while
// somebody waits, so all of it takes no time; Clock::kReal is what a program for people takes.
#include <cstdio>
#include <string>

#include "core/ambrisor.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "player_host.h"

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::fprintf(stderr, "usage: headless_host DIRECTORY FILE...\n");
        return 2;
    }
    platform::HeadlessDriver driver(platform::HeadlessDriver::Clock::kVirtual);
    platform::WindowSystem windows(driver);
    SilentPlayer player([&driver] { return driver.Now(); }, 3);
    PlayerHost host(player);
    sarnel::Ambrisor component(windows, {.directory = arguments[1]});
    if (!component.DirectoryIsWritable()) {
        std::fprintf(stderr, "headless_host: nothing will be kept in '%s'\n", arguments[1]);
    }
    component.Connect(&host);

    // The first file takes the place of the saved list and is played, the others join it.
    const std::string first = arguments[2];
    const platform::Handle window = Begin(component, platform::Widen("\"" + first + "\""));
    for (int i = 3; i < argumentCount; ++i) {
        windows.SendCopyData(window, {0, "/ADD \"" + std::string(arguments[i]) + "\""});
    }
    while (!host.closed) {
        windows.WaitMessage();
        if (host.exitWished || host.listEnded) {
            End(component);
        }
    }
    component.Disconnect();
    std::printf("played for %d s\n", static_cast<int>(driver.Now() / 1000));
}
