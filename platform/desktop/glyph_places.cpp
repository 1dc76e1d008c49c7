#include "platform/desktop/glyph_places.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace platform::desktop {

namespace {

// Glyphs between two blanks, and what all of them may be moved by alike; nothing if `least` is
// above `most`.
struct Word {
    std::size_t start;
    std::size_t end;
    double least;
    double most;
    double border;  ///< what the first glyph is moved by at least: ink must not leave the line
};

class Placing {
  public:
    Placing(std::vector<GlyphPlace>& glyphs, const LineMeasures& line)
        : glyphs_(glyphs), line_(line), tolerance_(line.density) {}

    void PlaceAll() {
        FindWords();
        for (std::size_t i = 0; i < words_.size(); ++i) {
            // All gaps between words give or take about as much.
            const double share = static_cast<double>(i) /
                                 static_cast<double>(std::max<std::size_t>(words_.size(), 2) - 1);
            const Word& word = words_[i];
            const double shared = std::floor((line_.room - line_.fineWidth) * share + 0.5);
            const double least = i > 0 ? LeastBehind(words_[i - 1], word) : shared;
            const double shift = std::max(shared, least);
            if (word.least > word.most || least > word.most) {
                PlaceEach(word, shift);
                continue;
            }
            for (std::size_t glyph = word.start; glyph < word.end; ++glyph) {
                glyphs_[glyph].shift = std::clamp(shift, word.least, word.most);
            }
        }
        MakeRoomAtEnd();
    }

  private:
    double Wanted(std::size_t glyph) const {
        return line_.density * glyphs_[glyph].plain - glyphs_[glyph].fine;
    }

    void FindWords() {
        for (std::size_t start = 0; start < glyphs_.size(); ++start) {
            std::size_t end = start;
            Word word{start, start, -kUnbound, kUnbound, -kUnbound};
            for (; end < glyphs_.size() && !glyphs_[end].blank; ++end) {
                word.least = std::max(word.least, std::ceil(Wanted(end) - tolerance_));
                word.most = std::min(word.most, std::floor(Wanted(end) + tolerance_));
            }
            if (end > start) {
                word.end = end;
                words_.push_back(word);
            }
            start = end;
        }
        if (!words_.empty()) {
            Word& first = words_.front();
            first.border = std::ceil(line_.fineLead);
            first.least = std::max({first.least, first.border, 0.0});
            Word& last = words_.back();
            last.most = std::min(last.most, RoomAtEnd());
        }
    }

    // How much of the gap between two words may be taken, so that they stay apart.
    double Gives(const Word& former, const Word& word) const {
        constexpr double kMostOfAGap = 0.3;
        return std::floor((glyphs_[word.start].fine - glyphs_[former.end].fine) * kMostOfAGap);
    }
    double LeastBehind(const Word& former, const Word& word) const {
        return glyphs_[former.end - 1].shift - Gives(former, word);
    }

    double RoomAtEnd() const { return std::floor(line_.room - line_.fineWidth); }

    void PlaceEach(const Word& word, double shift) {
        for (std::size_t glyph = word.start; glyph < word.end; ++glyph) {
            const double wanted = Wanted(glyph);
            if (glyph == word.start || !line_.joined) {
                shift = std::max(shift, std::ceil(wanted - tolerance_));
            }
            shift = std::min(shift, std::floor(wanted + tolerance_));
            if (glyph == word.start) {
                shift = std::max(shift, word.border);
            }
            glyphs_[glyph].shift = shift;
        }
    }

    // Nothing crosses the line's end, and no gap closes for it.
    void MakeRoomAtEnd() {
        for (std::size_t i = words_.size(); i-- > 0;) {
            const bool isLast = i + 1 == words_.size();
            GiveWay(words_[i],
                    isLast ? RoomAtEnd()
                           : glyphs_[words_[i + 1].start].shift + Gives(words_[i], words_[i + 1]));
        }
    }

    // The last letter is moved by `most` at most; from there back each letter comes a little closer
    // to the next than its place would have it.
    void GiveWay(const Word& word, double most) {
        for (std::size_t glyph = word.end; glyph-- > word.start;) {
            double& shift = glyphs_[glyph].shift;
            shift = std::min(shift, most);
            if (glyph > word.start) {
                most += std::max(std::ceil(Wanted(glyph - 1) - Wanted(glyph)) + 1, 1.0);
            }
        }
        double& first = glyphs_[word.start].shift;
        first = std::max(first, word.border);
    }

    static constexpr double kUnbound = 1e9;

    std::vector<GlyphPlace>& glyphs_;
    const LineMeasures& line_;
    double tolerance_;
    std::vector<Word> words_;
};

}  // namespace

void PlaceGlyphs(std::vector<GlyphPlace>& glyphs, const LineMeasures& line) {
    Placing(glyphs, line).PlaceAll();
}

}  // namespace platform::desktop
