#include "tests/conformance/trial.h"

#include <array>
#include <exception>

namespace conformance {

namespace {

// What never ends must not keep us for ever.
constexpr int kMostTurns = 100'000;
constexpr std::size_t kMostEvents = 1000;

std::array<std::span<const Rule>, 5> AllParts() {
    return {RulesOfTime(), RulesOfWindows(), RulesOfPictures(), RulesOfInput(), RulesOfText()};
}

Result TryOne(const Rule& rule, const std::function<std::unique_ptr<Surroundings>()>& make) {
    try {
        const std::unique_ptr<Surroundings> surroundings = make();
        Trial trial(*surroundings);
        rule.keep(trial);
        return {rule.name, Outcome::kKept, {}};
    } catch (const NotTried&) {
        return {rule.name, Outcome::kNotTried, {}};
    } catch (const Broken& broken) {
        return {rule.name, Outcome::kBroken, broken.why};
    } catch (const std::exception& thrown) {
        return {rule.name, Outcome::kBroken, std::string("it throws: ") + thrown.what()};
    }
}

}  // namespace

std::vector<std::string> AllRules() {
    std::vector<std::string> names;
    for (const auto& rules : AllParts()) {
        for (const Rule& rule : rules) {
            names.emplace_back(rule.name);
        }
    }
    return names;
}

Result Try(const std::string& name, const std::function<std::unique_ptr<Surroundings>()>& make) {
    for (const auto& rules : AllParts()) {
        for (const Rule& rule : rules) {
            if (rule.name == name) {
                return TryOne(rule, make);
            }
        }
    }
    return {name, Outcome::kBroken, "there is no such rule"};
}

Trial::~Trial() {
    for (const auto& [window, picture] : pictures_) {
        driver_.DestroyTopLevel(window);
    }
}

std::optional<DriverEvent> Trial::Next(Millis until) {
    for (int turn = 0; turn < kMostTurns; ++turn) {
        if (auto event = driver_.NextEvent()) {
            return event;
        }
        if (driver_.Now() >= until) {
            return std::nullopt;
        }
        driver_.WaitUntil(until);
    }
    throw Broken{"waiting again and again, the deadline never comes"};
}

std::vector<DriverEvent> Trial::Settle() {
    std::vector<DriverEvent> events;
    const Millis until = driver_.Now() + surroundings_.Quiet();
    while (auto event = Next(until)) {
        Require(events.size() < kMostEvents, "events are reported without end");
        events.push_back(std::move(*event));
    }
    return events;
}

void Trial::Await(const std::function<bool()>& condition, const std::string& what) {
    constexpr Millis kStep = 10;
    for (Millis waited = 0; waited < kPatience && !condition(); waited += kStep) {
        Next(driver_.Now() + kStep);
    }
    Require(condition(), what + " does not come about");
}

Handle Trial::Create(const Rect& rect) {
    const Handle window = ++lastHandle_;
    driver_.CreateTopLevel(window);
    driver_.SetTopLevelRect(window, rect);
    const std::string number = std::to_string(window);
    driver_.SetTopLevelTitle(window,
                             u"Conformance " + std::u16string(number.begin(), number.end()));
    pictures_[window] = Surface({rect.Width(), rect.Height()});
    return window;
}

Handle Trial::CreatePopup(const Rect& rect, Handle owner, platform::PopupKind kind) {
    const Handle window = ++lastHandle_;
    driver_.CreateTopLevel(window);
    driver_.SetTopLevelRect(window, {});
    driver_.SetTopLevelPopup(window, owner, kind);
    driver_.SetTopLevelRect(window, rect);
    pictures_[window] = Surface({rect.Width(), rect.Height()});
    return window;
}

void Trial::Show(Handle window) {
    driver_.SetTopLevelVisible(window, true);
    ShowNewPicture(window, pictures_[window].GetSize());
}

Handle Trial::Open(const Rect& rect) {
    const Handle window = Create(rect);
    Show(window);
    Settle();
    return window;
}

void Trial::Destroy(Handle window) {
    driver_.DestroyTopLevel(window);
    pictures_.erase(window);
}

platform::Colour Trial::ColourAt(Point point) {
    constexpr Long kMost = 256;
    return (point.x % kMost) | (point.y % kMost) << 8 | 0x800000;
}

void Trial::ShowNewPicture(Handle window, Size size) {
    Surface& picture = pictures_[window];
    picture = Surface(size, driver_.Density());
    for (Long y = 0; y < size.height; ++y) {
        for (Long x = 0; x < size.width; ++x) {
            picture.SetPixel({x, y}, ColourAt({x, y}));
        }
    }
    if (driver_.ShowsPictures()) {
        const std::array<Rect, 1> all{picture.Bounds()};
        driver_.ShowPicture(window, picture, all);
    }
}

}  // namespace conformance
