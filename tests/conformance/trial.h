// What the rules are tried with: waiting, windows as the window system makes them, and what makes a
// rule count as broken.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/drawing/surface.h"
#include "tests/conformance/conformance.h"

namespace conformance {

using platform::Driver;
using platform::DriverEvent;
using platform::Rect;
using platform::Size;
using platform::Surface;

/// Where the windows of most trials stand.
inline constexpr Rect kPlace{100, 100, 200, 160};

struct Broken {
    std::string why;
};
struct NotTried {};

class Trial {
  public:
    explicit Trial(Surroundings& surroundings)
        : surroundings_(surroundings), driver_(surroundings.Driver()) {}
    /// All windows go, before their pictures do.
    ~Trial();
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    Driver& Desktop() { return driver_; }
    Surroundings& Around() { return surroundings_; }

    static void Require(bool isKept, const std::string& why) {
        if (!isKept) {
            throw Broken{why};
        }
    }
    /// Of what the surroundings answer.
    static void Need(bool canBeDone) {
        if (!canBeDone) {
            throw NotTried{};
        }
    }

    /// Takes what is reported until nothing more is to come; answers that.
    std::vector<DriverEvent> Settle();
    /// Waits for a condition that something other than an event brings about.
    void Await(const std::function<bool()>& condition, const std::string& what);
    /// The next event of that kind. Others before it are kept in Passed().
    template <typename Event>
    Event AwaitEvent(const std::string& what) {
        passed_.clear();
        const Millis until = driver_.Now() + kPatience;
        while (auto event = Next(until)) {
            if (const auto* const wanted = std::get_if<Event>(&*event)) {
                return *wanted;
            }
            passed_.push_back(std::move(*event));
        }
        throw Broken{what + " is not reported"};
    }
    const std::vector<DriverEvent>& Passed() const { return passed_; }

    /// A window as the window system makes one, shown, with a picture in which each pixel has its
    /// own colour. Answers when the desktop has nothing more to say about it.
    Handle Open(const Rect& rect);
    /// Not shown yet.
    Handle Create(const Rect& rect);
    Handle CreatePopup(const Rect& rect, Handle owner, platform::PopupKind kind);
    /// Shows a window with its picture.
    void Show(Handle window);
    /// Gives the window a picture of its size and shows all of it.
    void ShowNewPicture(Handle window, Size size);
    Surface& PictureOf(Handle window) { return pictures_[window]; }
    void Destroy(Handle window);

    /// The colour of a pixel of the pictures.
    static platform::Colour ColourAt(Point point);

  private:
    static constexpr Millis kPatience = 5000;

    std::optional<DriverEvent> Next(Millis until);

    Surroundings& surroundings_;
    Driver& driver_;
    Handle lastHandle_ = 0;
    std::map<Handle, Surface> pictures_;  ///< of all windows that there are
    std::vector<DriverEvent> passed_;
};

struct Rule {
    const char* name;
    void (*keep)(Trial& trial);
};

// The rules by what they are about.
std::span<const Rule> RulesOfTime();
std::span<const Rule> RulesOfWindows();
std::span<const Rule> RulesOfPictures();
std::span<const Rule> RulesOfInput();
std::span<const Rule> RulesOfText();

/// Whether any of the events is of that kind.
template <typename Event>
bool HasAny(const std::vector<DriverEvent>& events) {
    for (const DriverEvent& event : events) {
        if (std::holds_alternative<Event>(event)) {
            return true;
        }
    }
    return false;
}

}  // namespace conformance
