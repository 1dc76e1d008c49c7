// Playing without a window: a line for each item as it starts, a progress line and key commands on
// a terminal, and an end after the last item. It sees what the host hears and speaks to the
// component as a user would, by keys, so everything about lists and order stays where it belongs.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "host/console.h"
#include "host/engine/engine.h"
#include "host/engine/tags.h"
#include "host/keyboard.h"
#include "platform/headless/headless_driver.h"
#include "platform/window_system.h"

namespace veldrin {

class TerminalFront {
  public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        platform::HeadlessDriver& driver;
        platform::WindowSystem& windows;
        Engine& engine;
        TagReader& tags;
        Console& console;
    };

    /// `requestEnd` asks for the orderly end of the program, once the main loop has control.
    TerminalFront(Surroundings surroundings, std::function<void()> requestEnd);

    /// The component has handled the command line. Whatever it started goes on; otherwise the list
    /// is made to play: from its current row if it was `restored` from the last run, else from the
    /// first. Asks for the end if nothing in it can be played.
    void Begin(bool restored);

    // From the host.
    void ItemOpened(const std::string& path);
    void ItemFailed(const std::string& path);
    void Stopped(bool ended);

    /// The program is about to be stopped, and the terminal goes back to the shell.
    void Suspending();
    /// The program goes on; whether it has the terminal is to be seen.
    void Continued() { keyboard_.Resume(); }

    bool HasPlayed() const { return started_ > 0; }

  private:
    void Press(platform::Long code);
    void KeyTyped(char key);
    void Beat();
    void FollowEnd();
    void ShowProgress();

    Surroundings s_;
    std::function<void()> requestEnd_;
    Keyboard keyboard_;
    int started_ = 0;        ///< items of this run
    int failed_ = 0;         ///< attempts of this run
    bool sounding_ = false;  ///< an item was opened and not stopped since
    int beatsSinceEnd_ = 0;  ///< beats in which the stream had ended and nobody had acted on it
    std::set<std::string> complained_;  ///< files that were said to be unplayable
};

}  // namespace veldrin
