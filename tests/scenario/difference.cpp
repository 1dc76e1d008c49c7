#include "tests/scenario/difference.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace scenario {

namespace {

// How many lines the rests of two lists, from any two places on, have in common in their order.
class CommonLines {
  public:
    CommonLines(const Lines& a, const Lines& b) : width_(b.size() + 1) {
        constexpr std::size_t kMostCells = 4'000'000;
        if ((a.size() + 1) * width_ > kMostCells) {
            return;
        }
        cells_.resize((a.size() + 1) * width_);
        for (std::size_t i = a.size(); i-- > 0;) {
            for (std::size_t j = b.size(); j-- > 0;) {
                cells_[i * width_ + j] =
                    a[i] == b[j] ? At(i + 1, j + 1) + 1 : std::max(At(i + 1, j), At(i, j + 1));
            }
        }
    }

    bool AreTooMany() const { return cells_.empty(); }
    std::uint32_t At(std::size_t i, std::size_t j) const { return cells_[i * width_ + j]; }

  private:
    std::size_t width_;
    std::vector<std::uint32_t> cells_;
};

// Puts stretches together from lines that are told one after the other.
class Stretches {
  public:
    void Add(bool same, std::size_t expected, std::size_t printed) {
        if (all_.empty() || all_.back().same != same) {
            all_.push_back({same, expectedDone_, printedDone_, 0, 0});
        }
        all_.back().expectedCount += expected;
        all_.back().printedCount += printed;
        expectedDone_ += expected;
        printedDone_ += printed;
    }
    std::vector<Stretch> Take() { return std::move(all_); }

  private:
    std::vector<Stretch> all_;
    std::size_t expectedDone_ = 0;
    std::size_t printedDone_ = 0;
};

}  // namespace

std::vector<Stretch> Compare(const Lines& expected, const Lines& printed) {
    Stretches stretches;
    if (expected == printed) {  // as nearly always
        stretches.Add(true, expected.size(), printed.size());
        return stretches.Take();
    }
    const CommonLines common(expected, printed);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < expected.size() && j < printed.size()) {
        if (expected[i] == printed[j]) {
            stretches.Add(true, 1, 1);
            ++i;
            ++j;
        } else if (common.AreTooMany()) {
            stretches.Add(false, 1, 1);
            ++i;
            ++j;
        } else if (common.At(i + 1, j) >= common.At(i, j + 1)) {
            stretches.Add(false, 1, 0);
            ++i;
        } else {
            stretches.Add(false, 0, 1);
            ++j;
        }
    }
    if (i < expected.size() || j < printed.size()) {
        stretches.Add(false, expected.size() - i, printed.size() - j);
    }
    return stretches.Take();
}

namespace {

class DifferencePrinter {
  public:
    explicit DifferencePrinter(std::ostream& out) : out_(out) {}

    /// What is missing or too many. Of a flood the beginning says enough.
    void Differing(std::string_view mark, const Lines& lines, std::size_t first,
                   std::size_t count) {
        constexpr std::size_t kMost = 20;
        const std::size_t told = std::min(count, kMost);
        Tell(mark, lines, first, first + told);
        if (told < count) {
            out_ << kIndent << mark << "... and " << count - told << " more\n";
        }
    }

    /// What is the same: the lines that follow a difference, and those that come before one.
    void Same(const Lines& lines, const Stretch& stretch, bool isFirst, bool isLast) {
        constexpr std::size_t kContext = 2;
        const std::size_t end = stretch.expected + stretch.expectedCount;
        const std::size_t head = isFirst ? 0 : kContext;
        const std::size_t tail = isLast ? 0 : kContext;
        if (stretch.expectedCount <= head + tail) {
            Tell("  ", lines, stretch.expected, end);
            return;
        }
        Tell("  ", lines, stretch.expected, stretch.expected + head);
        out_ << kIndent << "  ...\n";
        Tell("  ", lines, end - tail, end);
    }

  private:
    static constexpr const char* kIndent = "    ";

    void Tell(std::string_view mark, const Lines& lines, std::size_t first, std::size_t end) {
        for (std::size_t i = first; i < end; ++i) {
            out_ << kIndent << mark << lines[i] << '\n';
        }
    }

    std::ostream& out_;
};

}  // namespace

void PrintDifference(const std::vector<Stretch>& stretches, const Lines& expected,
                     const Lines& printed, std::ostream& out) {
    DifferencePrinter printer(out);
    for (const Stretch& stretch : stretches) {
        if (stretch.same) {
            printer.Same(expected, stretch, &stretch == &stretches.front(),
                         &stretch == &stretches.back());
        } else {
            printer.Differing("- ", expected, stretch.expected, stretch.expectedCount);
            printer.Differing("+ ", printed, stretch.printed, stretch.printedCount);
        }
    }
}

}  // namespace scenario
