#include "tests/scenario/prints.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <vector>

#include "tests/scenario/nearest.h"
#include "tests/scenario/words.h"

namespace scenario {

namespace {

// Values that are words. The main window stands as HWND where a host hears of it.
constexpr std::array<std::string_view, 6> kWords{"True", "False", "null", "object", "none", "HWND"};

bool IsPrintedNumber(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return stop == end && error == std::errc();
}

bool IsRectangle(std::string_view text) {
    std::size_t sides = 0;
    for (std::size_t comma = 0; comma != std::string_view::npos; ++sides) {
        comma = text.find(',');
        if (!IsPrintedNumber(text.substr(0, comma))) {
            return false;
        }
        text.remove_prefix(std::min(comma, text.size() - 1) + 1);
    }
    return sides == 4;
}

// As the component's errors are printed: error 0x8004041C "description".
bool IsError(const std::vector<Word>& words) {
    return words.size() == 3 && !words[0].quoted && words[0].raw == "error" && !words[1].quoted &&
           words[1].raw.starts_with("0x") && words[2].quoted;
}

void CheckValue(const Word& word) {
    if (word.quoted) {
        static_cast<void>(Unescape(word.raw));  // raises what is wrong with it
        return;
    }
    const bool isWord = std::find(kWords.begin(), kWords.end(), word.raw) != kWords.end();
    if (!isWord && !IsPrintedNumber(word.raw) && !IsRectangle(word.raw)) {
        const std::string hint = DidYouMean(word.raw, {kWords.begin(), kWords.end()});
        throw Mistake("no value is printed so: " + word.raw +
                      (hint.empty() ? "; a text stands in double quotes" : hint));
    }
}

}  // namespace

void CheckCanBePrinted(std::string_view line, Prints prints) {
    if (prints != Prints::kValue && prints != Prints::kValues) {
        return;
    }
    const std::vector<Word> words = SplitWords(line);
    if (words.empty()) {
        throw Mistake("no value is printed so: an empty line");
    }
    if (IsError(words)) {
        CheckValue(words.back());
        return;
    }
    if (prints == Prints::kValue && words.size() > 1) {
        throw Mistake("no value is printed so: " + std::string(line) +
                      "; a text stands in double quotes");
    }
    std::for_each(words.begin(), words.end(), CheckValue);
}

}  // namespace scenario
