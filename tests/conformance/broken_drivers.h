// Drivers that break one rule each, and the rule that has to refuse each of them.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tests/conformance/conformance.h"

namespace conformance {

struct BrokenDriver {
    const char* fault;
    const char* rule;
    std::function<std::unique_ptr<Surroundings>()> make;
};

std::vector<BrokenDriver> BrokenInTime();
std::vector<BrokenDriver> BrokenInWindows();
std::vector<BrokenDriver> BrokenInInput();
std::vector<BrokenDriver> BrokenInText();

}  // namespace conformance
