#include "platform/drawing/text_lines.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "platform/base/text.h"

namespace platform {

namespace {

// Longer words are measured in parts only: no line is wide enough for them.
constexpr std::size_t kLongestWord = 1024;

// What may be spent on measuring the words of one text, in units of text. Each time costs as much
// as some units more.
constexpr std::size_t kMostMeasured = std::size_t{256} << 10U;
constexpr std::size_t kCostOfMeasuring = 32;

// Breaks paragraphs between words. The width of a beginning is the sum of its words' widths, each
// measured once; only where that is too close to the line's end to be sure, since words are rounded
// to whole pixels, the beginning itself is measured.
class Breaker {
  public:
    Breaker(const Driver& driver, const Font& font, Long width)
        : driver_(driver), font_(font), width_(width), blank_(Measure(u" ")) {}

    void Break(std::u16string_view paragraph, std::size_t most,
               std::vector<std::u16string_view>& lines) {
        while (lines.size() < most) {
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
    Long Measure(std::u16string_view text) {
        if (spent_ > kMostMeasured) {
            return static_cast<Long>(pixels_ * static_cast<std::int64_t>(text.size()) / units_);
        }
        const Long width = driver_.MeasureText(font_, text).width;
        spent_ += text.size() + kCostOfMeasuring;
        units_ += static_cast<std::int64_t>(text.size());
        pixels_ += width;
        return width;
    }

    Long WidthOf(std::u16string_view word) {
        const auto known = widths_.find(word);
        if (known != widths_.end()) {
            return known->second;
        }
        const bool isExact = spent_ <= kMostMeasured;
        const Long width = Measure(word);
        if (isExact) {
            widths_.emplace(word, width);
        }
        return width;
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
    std::size_t UnitsOfWord(std::u16string_view text) {
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
    std::size_t spent_ = 0;
    std::int64_t units_ = 0;   ///< measured so far
    std::int64_t pixels_ = 0;  ///< their width
    Long blank_;
    std::unordered_map<std::u16string_view, Long> widths_;
};

}  // namespace

Size MeasureLine(const Driver& driver, const Font& font, std::u16string_view line) {
    Size size = driver.MeasureText(font, line.substr(0, kMostUnits));
    if (line.size() > kMostUnits) {
        constexpr double kWidest = 1 << 30;
        const double units = static_cast<double>(line.size()) / kMostUnits;
        size.width = static_cast<Long>(std::min(size.width * units, kWidest));
    }
    return size;
}

std::vector<std::u16string_view> BreakLines(const Driver& driver, const Font& font,
                                            std::u16string_view text, Long width,
                                            std::size_t most) {
    std::vector<std::u16string_view> lines;
    std::optional<Breaker> breaker;  // measures, which lines of any width do not need
    if (width > 0) {
        breaker.emplace(driver, font, width);
    }
    for (bool more = true; more && lines.size() < most;) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        const std::u16string_view line = text.substr(0, end);
        more = end < text.size();
        text.remove_prefix(more ? end + (text.substr(end, 2) == u"\r\n" ? 2 : 1) : end);
        if (breaker) {
            breaker->Break(line, most, lines);
        } else {
            lines.push_back(line);
        }
    }
    return lines;
}

}  // namespace platform
