// Compares what commands printed with what the `= ` lines of a scenario expect.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/scenario/difference.h"
#include "tests/scenario/tally.h"

namespace scenario {

/// The `= ` lines below a command.
struct Expectation {
    struct Line {
        int number;
        std::string text;  ///< in the form of Canonical
    };
    std::vector<Line> lines;
    std::optional<int> nothing;  ///< number of the line `= nothing`, which stands alone

    bool IsNone() const { return lines.empty() && !nothing; }
};

class Checker {
  public:
    /// `file` as it was named.
    Checker(const std::string& file, std::ostream& out, Tally& tally)
        : file_(file), out_(out), tally_(tally) {}

    /// Counts each expected line. Lines that need not be named are looked at if more is expected
    /// than without them. Behind those that fail it is told which command printed so, and where
    /// several lines meet, how the two sides differ.
    void Check(int commandNumber, std::string_view command, const Expectation& expectation,
               const Output& output);

  private:
    void CountLines(const std::vector<Stretch>& stretches,
                    const std::vector<Expectation::Line>& lines, const Lines& printed);
    void Count(bool held, int number, std::string_view expected, std::string_view got);

    const std::string& file_;
    std::ostream& out_;
    Tally& tally_;
};

}  // namespace scenario
