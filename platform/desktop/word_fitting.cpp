#include "platform/desktop/word_fitting.h"

#include <QRect>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/desktop/glyph_ink.h"

namespace platform::desktop {

namespace {

constexpr int kFarAway = 1 << 24;
// As small as that a word may become on its base line; one that would have to be smaller is moved.
constexpr double kSmallestOnBase = 0.75;
constexpr int kSmallest = 3;  // pixels

struct Word {
    qsizetype start = 0;
    qsizetype length = 0;
    QString family;  ///< the first that is not the line's own; empty: it is the line's
    int above = 0;   ///< rows of ink above the base line
    int below = 0;   ///< the same below it
};

class WordFitting {
  public:
    WordFitting(const QString& text, const QFont& font, const QTextLine& shaped,
                const LineRoom& room, WordLooks& looks)
        : text_(text),
          size_(font.pixelSize()),
          family_(QRawFont::fromFont(font).familyName()),
          shaped_(shaped),
          above_(room.base),
          below_(room.height - room.base),
          looks_(looks) {}

    Fitting Fit() {
        int above = 0;
        int below = 0;
        Measure(shaped_.glyphRuns(), above, below);
        const bool untouched = std::ranges::all_of(
            looks_.units, [](const auto& look) { return look.size == 0 && look.drop == 0; });
        if (untouched && above <= above_ && below <= below_) {
            return {};
        }
        if (untouched && above + below <= above_ + below_) {
            return {true, above > above_ ? above - above_ : below_ - below, false};
        }
        Fitting fitting;
        for (const Word& word : Words()) {
            const int drop = looks_.At(word.start).drop;
            if (word.above - drop > above_ || word.below + drop > below_) {
                fitting.fits = false;
                fitting.changed |= Change(word);
            }
        }
        return fitting;
    }

  private:
    void Measure(const QList<QGlyphRun>& runs, int& above, int& below) const {
        const int base = static_cast<int>(std::lround(shaped_.ascent()));
        const QRect inside(-kFarAway, base - above_, 2 * kFarAway, above_ + below_);
        for (const QGlyphRun& run : runs) {
            const QRect ink = InkOfRun(run, inside);
            if (!ink.isEmpty()) {
                above = std::max(above, base - ink.top());
                below = std::max(below, ink.bottom() + 1 - base);
            }
        }
    }

    // Words of one font that is not the line's own are as high as the highest of them, so that they
    // stay of one size.
    std::vector<Word> Words() const {
        std::vector<Word> words;
        for (qsizetype start = 0; start < text_.size(); ++start) {
            qsizetype end = start;
            while (end < text_.size() && !text_[end].isSpace()) {
                ++end;
            }
            if (end > start) {
                words.push_back(MeasuredWord(start, end - start));
            }
            start = end;
        }
        for (Word& word : words) {
            for (const Word& other : words) {
                if (!word.family.isEmpty() && word.family == other.family) {
                    word.above = std::max(word.above, other.above);
                    word.below = std::max(word.below, other.below);
                }
            }
        }
        return words;
    }

    Word MeasuredWord(qsizetype start, qsizetype length) const {
        Word word{start, length, {}};
        const auto runs = shaped_.glyphRuns(static_cast<int>(start), static_cast<int>(length));
        Measure(runs, word.above, word.below);
        for (const QGlyphRun& run : runs) {
            const QString family = run.rawFont().familyName();
            if (word.family.isEmpty() && family != family_) {
                word.family = family;
            }
        }
        return word;
    }

    bool Change(const Word& word) {
        WordLooks::Look look = looks_.At(word.start);
        const int size = look.size != 0 ? look.size : size_;
        const int room = above_ + below_;
        const double onBase = std::min(above_ * 1.0 / std::max(word.above, 1),
                                       below_ * 1.0 / std::max(word.below, 1));
        const double moved = room * 1.0 / (word.above + word.below);
        const bool staysOnBase = word.family.isEmpty() && onBase >= kSmallestOnBase;
        if (!staysOnBase && moved >= 1) {
            look.drop = word.above > above_ ? word.above - above_ : below_ - word.below;
        } else {
            const double share = staysOnBase ? onBase : moved;
            const int smaller = std::min(static_cast<int>(size * share), size - 1);
            if (smaller < kSmallest) {
                return false;
            }
            look.size = smaller;
        }
        Set(word, look);
        return true;
    }

    void Set(const Word& word, const WordLooks::Look& look) {
        looks_.units.resize(static_cast<std::size_t>(text_.size()));
        for (qsizetype unit = word.start; unit < word.start + word.length; ++unit) {
            WordLooks::Look& old = looks_.units[static_cast<std::size_t>(unit)];
            old.size = look.size;
            old.drop = look.drop;
        }
    }

    const QString& text_;
    int size_;
    QString family_;
    const QTextLine& shaped_;
    int above_;
    int below_;
    WordLooks& looks_;
};

}  // namespace

Fitting FitWords(const QString& text, const QFont& font, const QTextLine& shaped,
                 const LineRoom& room, WordLooks& looks) {
    return WordFitting(text, font, shaped, room, looks).Fit();
}

}  // namespace platform::desktop
