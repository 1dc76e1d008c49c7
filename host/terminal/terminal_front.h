// Playing without a window: a line for each item as it starts, a progress line and key commands on
// a terminal, and an end after the last item. It sees what the host hears and speaks to the
// component as a user would, by keys, so everything about lists and order stays where it belongs.
#pragma once

#include <optional>
#include <string>

#include "host/front.h"
#include "host/terminal/console.h"
#include "host/terminal/keyboard.h"
#include "platform/headless/headless_driver.h"

namespace veldrin {

class TerminalFront : public Front {
  public:
    /// The console must outlive it.
    explicit TerminalFront(Console& console);

    platform::Driver& GetDriver() override { return driver_; }
    void Enter(const Surroundings& surroundings) override;
    /// Whatever the command line started goes on; otherwise the list is made to play: from its
    /// current row if it was `restored` from the last run, else from the first. Asks for the end if
    /// nothing in it can be played.
    void Begin(bool restored) override;
    /// Asks for the end: there is nothing to do here but to play.
    void BeginSilently() override {
        inVain_ = true;
        s_->requestEnd();
    }
    void ItemOpened(const std::string& path) override;
    void ItemFailed(const std::string& path) override;
    void Stopped(bool ended) override;
    void Suspending() override;
    void Continued() override { keyboard_.Resume(); }
    /// 1 if not one item could be played.
    int Status() const override { return inVain_ ? 1 : 0; }

  private:
    /// Whether the list need not be made to play any more: it does, or the end has come.
    bool HasBegun() const { return started_ > 0 || s_->isEnding(); }
    void Press(platform::Long code);
    void KeyTyped(char key);
    void PressTyped();
    void Beat();
    void FollowEnd();
    void ShowProgress();

    platform::HeadlessDriver driver_;
    Keyboard keyboard_;
    std::optional<Surroundings> s_;  ///< set by Enter
    std::string typed_;              ///< keys that wait for their turn, each once
    int started_ = 0;                ///< items of this run
    int failed_ = 0;                 ///< attempts of this run
    bool inVain_ = false;            ///< nothing could or may be played
    bool sounding_ = false;          ///< an item was opened and not stopped since
    int beatsSinceEnd_ = 0;  ///< beats in which the stream had ended and nobody had acted on it
};

}  // namespace veldrin
