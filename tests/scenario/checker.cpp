#include "tests/scenario/checker.h"

#include <algorithm>
#include <iterator>

#include "tests/scenario/words.h"

namespace scenario {

namespace {

constexpr std::string_view kNothing = "nothing";

Lines TextsOf(const Expectation& expectation) {
    Lines texts;
    for (const Expectation::Line& line : expectation.lines) {
        texts.push_back(line.text);
    }
    return texts;
}

// Both sides in the form in which they can be compared.
Lines AllCanonical(const Lines& printed) {
    Lines canonical;
    std::transform(printed.begin(), printed.end(), std::back_inserter(canonical), Canonical);
    return canonical;
}

}  // namespace

// A line holds if it was printed in its place; one in front of which something else was printed
// does not. A line too many at the end fails once.
void Checker::Check(int commandNumber, std::string_view command, const Expectation& expectation,
                    const Output& output) {
    if (expectation.IsNone()) {
        return;
    }
    const int failedBefore = tally_.failed;
    const Lines texts = TextsOf(expectation);
    const Lines& printed = texts.size() > output.plain.size() ? output.lines : output.plain;
    const std::vector<Stretch> stretches = Compare(texts, AllCanonical(printed));
    if (expectation.nothing) {
        Count(printed.empty(), *expectation.nothing, kNothing,
              printed.empty() ? kNothing : std::string_view(printed.front()));
    } else {
        CountLines(stretches, expectation.lines, printed);
    }
    if (tally_.failed == failedBefore) {
        return;
    }
    out_ << "    line " << commandNumber << ": " << command << '\n';
    if (std::max(texts.size(), printed.size()) > 1) {
        PrintDifference(stretches, texts, printed, out_);
    }
}

void Checker::CountLines(const std::vector<Stretch>& stretches,
                         const std::vector<Expectation::Line>& lines, const Lines& printed) {
    std::size_t next = 0;  // of the printed lines: the first that no expected line has met
    for (const Stretch& stretch : stretches) {
        const std::size_t end = stretch.printed + stretch.printedCount;
        for (std::size_t i = 0; i < stretch.expectedCount; ++i) {
            const Expectation::Line& line = lines[stretch.expected + i];
            const bool held = stretch.same && next == stretch.printed + i;
            Count(held, line.number, line.text,
                  next < printed.size() ? std::string_view(printed[next]) : kNothing);
            next = stretch.same ? stretch.printed + i + 1 : std::min(next + 1, end);
        }
    }
    if (next < printed.size()) {
        Count(false, lines.back().number, "nothing more", printed[next]);
    }
}

void Checker::Count(bool held, int number, std::string_view expected, std::string_view got) {
    ++(held ? tally_.passed : tally_.failed);
    if (!held) {
        out_ << file_ << ':' << number << ": expected " << expected << ", got " << got << '\n';
    }
}

}  // namespace scenario
