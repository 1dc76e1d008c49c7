#include "host/terminal/terminal_front.h"

#include <unistd.h>

#include <string_view>
#include <utility>

#include "host/transport_keys.h"
#include "platform/base/keys.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

/// How often progress is shown and the end is looked for.
constexpr platform::Millis kBeat = 250;

// An item whose length is not known is not followed by the component. It gets this many beats to
// act on the end of a stream by itself, then it is asked for the next item, then there is none.
constexpr int kBeatsUntilNext = 2;
constexpr int kBeatsUntilEnd = 4;

constexpr std::string_view kKeyHelp = "z previous, x play, c pause, v stop, b next, q quit";

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

TerminalFront::TerminalFront(Console& console)
    : Front(console),
      driver_(platform::HeadlessDriver::Clock::kReal),
      keyboard_(STDIN_FILENO, driver_, [this](char key) { KeyTyped(key); }) {}

void TerminalFront::Enter(const Surroundings& surroundings) {
    s_.emplace(surroundings);
    s_->engine.Prepare();
    if (keyboard_.IsTerminal() && console_.ShowsProgress()) {
        console_.Line(kKeyHelp);
    }
}

void TerminalFront::Begin(bool restored) {
    const bool triedFirstRow = !restored && failed_ > 0;
    if (!HasBegun()) {
        if (!triedFirstRow) {
            Press(kKeyPlay);
        }
        if (!HasBegun() && failed_ > 0) {
            Press(kKeyNext);
        }
        if (!HasBegun() && !triedFirstRow) {
            Press(platform::VK_HOME);
            Press(platform::VK_RETURN);
        }
        if (!HasBegun() && !triedFirstRow) {
            Press(kKeyNext);
        }
    }
    if (!HasBegun()) {
        inVain_ = true;
        console_.Complain("nothing could be played");
        s_->requestEnd();
        return;
    }
    Beat();
}

void TerminalFront::ItemOpened(const std::string& path) {
    sounding_ = true;
    beatsSinceEnd_ = 0;
    std::string number = std::to_string(++started_);
    number.insert(0, number.size() < 3 ? 3 - number.size() : 0, ' ');
    std::string line = number + ". " + Printable(s_->tags.Title(path, NameOf(path)));
    if (s_->engine.Length() > 0) {
        line += "  [" + s_->engine.LengthText() + "]";
    }
    console_.Line(line);
}

void TerminalFront::ItemFailed(const std::string& path) {
    Front::ItemFailed(path);
    ++failed_;
}

void TerminalFront::Stopped(bool ended) {
    sounding_ = false;
    console_.Progress("");
    if (ended) {
        s_->requestEnd();
    }
}

void TerminalFront::Suspending() {
    console_.Progress("");
    keyboard_.Release();
}

void TerminalFront::Press(platform::Long code) {
    driver_.PushKey(code);
    s_->windows.DoEvents();
}

void TerminalFront::KeyTyped(char key) {
    const char upper = platform::UpperAscii(key);
    if (upper == 'Q') {
        s_->requestEnd();
    } else if (IsTransportKey(upper) && typed_.find(upper) == std::string::npos) {
        typed_.push_back(upper);
        if (typed_.size() == 1) {
            s_->windows.Schedule(0, [this] { PressTyped(); });
        }
    }
}

void TerminalFront::PressTyped() {
    for (const char key : std::exchange(typed_, {})) {
        driver_.PushKey(key);
    }
}

void TerminalFront::Beat() {
    keyboard_.Resume();
    FollowEnd();
    ShowProgress();
    s_->windows.Schedule(kBeat, [this] { Beat(); });
}

void TerminalFront::FollowEnd() {
    if (!sounding_ || s_->engine.IsPlaying()) {
        beatsSinceEnd_ = 0;
        return;
    }
    ++beatsSinceEnd_;
    if (beatsSinceEnd_ == kBeatsUntilNext) {
        driver_.PushKey(kKeyNext);
    } else if (beatsSinceEnd_ == kBeatsUntilEnd) {
        s_->requestEnd();
    }
}

void TerminalFront::ShowProgress() {
    const bool inBackground = keyboard_.IsTerminal() && !keyboard_.IsListening();
    if (!sounding_ || inBackground || !console_.ShowsProgress()) {
        return;
    }
    std::string text = "     " + s_->engine.PlayedText();
    if (s_->engine.Length() > 0) {
        text += " / " + s_->engine.LengthText();
    }
    if (s_->engine.IsPaused()) {
        text += "  paused";
    }
    console_.Progress(text);
}

}  // namespace veldrin
