#include "platform/drawing/text_lines.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "platform/base/text.h"

namespace platform {

namespace {

// Longer words are measured in parts only: no line is wide enough for them.
constexpr std::size_t kLongestWord = 1024;

// Breaks paragraphs between words. The width of a beginning is the sum of its words' widths, each
// measured once; only where that is too close to the line's end to be sure, since words are rounded
// to whole pixels, the beginning itself is measured.
class Breaker {
  public:
    Breaker(const Driver& driver, const Font& font, Long width)
        : driver_(driver), font_(font), width_(width), blank_(Measure(u" ")) {}

    void Break(std::u16string_view paragraph, std::vector<std::u16string_view>& lines) {
        for (;;) {
            const std::size_t fits = FittingUnits(paragraph);
            const std::size_t next = paragraph.find_first_not_of(u' ', fits);
            lines.push_back(paragraph.substr(0, fits));
            if (next == std::u16string_view::npos) {
                return;  // blanks alone make no line
            }
            paragraph.remove_prefix(next);
        }
    }

  private:
    Long Measure(std::u16string_view text) const { return driver_.MeasureText(font_, text).width; }

    Long WidthOf(std::u16string_view word) {
        const auto [entry, isNew] = widths_.try_emplace(word, 0);
        if (isNew) {
            entry->second = Measure(word);
        }
        return entry->second;
    }

    // How much of a paragraph goes on one line: whole words if one fits, else units, at least one.
    std::size_t FittingUnits(std::u16string_view text) {
        std::size_t end = 0;
        Long sum = 0;
        Long roundings = 0;
        while (end < text.size()) {
            const std::size_t word = std::min(text.find_first_not_of(u' ', end), text.size());
            // No further than that: a word of megabytes is looked at once a line.
            const std::size_t units =
                std::min(text.substr(word, kLongestWord + 1).find(u' '), text.size() - word);
            const std::size_t wordEnd = word + units;
            bool goes = units <= kLongestWord;
            if (goes) {
                const auto blanks = static_cast<Long>(std::min<std::size_t>(word - end, 0xFFFF));
                sum += blanks * blank_ + WidthOf(text.substr(word, units));
                roundings += blanks + 1;
                goes = sum - roundings <= width_ &&
                       (sum + roundings <= width_ || Measure(text.substr(0, wordEnd)) <= width_);
            }
            if (!goes) {
                const std::size_t blanks = end == 0 ? word : end;
                return blanks > 0 ? blanks : UnitsOfWord(text);
            }
            end = wordEnd;
        }
        return end;
    }

    // The longest beginning that fits, of a text whose first word does not.
    std::size_t UnitsOfWord(std::u16string_view text) const {
        std::size_t fits = 1;
        std::size_t tooLong = 2;
        while (tooLong <= text.size() && Measure(text.substr(0, tooLong)) <= width_) {
            fits = tooLong;
            tooLong *= 2;
        }
        tooLong = std::min(tooLong, text.size() + 1);
        while (fits + 1 < tooLong) {
            const std::size_t middle = fits + (tooLong - fits) / 2;
            (Measure(text.substr(0, middle)) <= width_ ? fits : tooLong) = middle;
        }
        if (InsidePair(text, fits)) {
            return fits == 1 ? 2 : fits - 1;
        }
        return fits;
    }

    const Driver& driver_;
    const Font& font_;
    Long width_;
    Long blank_;
    std::unordered_map<std::u16string_view, Long> widths_;
};

}  // namespace

std::vector<std::u16string_view> BreakLines(const Driver& driver, const Font& font,
                                            std::u16string_view text, Long width) {
    std::vector<std::u16string_view> lines;
    std::optional<Breaker> breaker;  // measures, which lines of any width do not need
    if (width > 0) {
        breaker.emplace(driver, font, width);
    }
    for (bool more = true; more;) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        const std::u16string_view line = text.substr(0, end);
        more = end < text.size();
        text.remove_prefix(more ? end + (text.substr(end, 2) == u"\r\n" ? 2 : 1) : end);
        if (breaker) {
            breaker->Break(line, lines);
        } else {
            lines.push_back(line);
        }
    }
    return lines;
}

}  // namespace platform
