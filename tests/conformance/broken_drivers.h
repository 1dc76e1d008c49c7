// Drivers that break one rule each, and the rule that has to refuse each of them.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tests/conformance/pushed_desktop.h"

namespace conformance {

struct BrokenDriver {
    const char* fault;
    const char* rule;
    std::function<std::unique_ptr<Surroundings>()> make;
};

template <typename Desktop>
std::unique_ptr<PaperDriver> MakePaper() {
    return std::make_unique<Desktop>();
}

/// What is the same for all kinds is made once: there are many.
BrokenDriver Breaks(std::unique_ptr<PaperDriver> (*make)(), const char* rule, const char* fault);

template <typename Desktop>
BrokenDriver Breaks(const char* rule, const char* fault) {
    return Breaks(MakePaper<Desktop>, rule, fault);
}

std::vector<BrokenDriver> BrokenInTime();
std::vector<BrokenDriver> BrokenInWindows();
std::vector<BrokenDriver> BrokenInInput();
std::vector<BrokenDriver> BrokenInText();

}  // namespace conformance
