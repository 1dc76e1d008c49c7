// What a command has printed.
#pragma once

#include <string>
#include <vector>

namespace scenario {

using Lines = std::vector<std::string>;

struct Output {
    Lines lines;
    Lines plain;  ///< without those that a check need not name
};

}  // namespace scenario
