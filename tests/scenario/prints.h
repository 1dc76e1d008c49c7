// What commands can print, and so what may be expected of them: a check that nothing printed could
// ever meet is an error of the scenario, not of the component.
#pragma once

#include <string_view>

namespace scenario {

/// Each may be everything that those before it may.
enum class Prints {
    kNothing,
    kValue,   ///< a value, `none`, or an error that the component raises
    kValues,  ///< lines of several values
    kLines,   ///< lines of any form
};

/// Raises Mistake for an expected line that a command of that kind never prints, such as a text
/// without quotes. Only values are looked at.
void CheckCanBePrinted(std::string_view line, Prints prints);

}  // namespace scenario
