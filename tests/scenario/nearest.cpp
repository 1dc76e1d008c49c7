#include "tests/scenario/nearest.h"

#include <algorithm>
#include <numeric>

namespace scenario {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool AreSame(char a, char b) {
    return Lower(a) == Lower(b);
}

std::size_t MostWrong(std::size_t length) {
    constexpr std::size_t kMost = 3;
    return std::min(length / 3, kMost);
}

}  // namespace

std::size_t Distance(std::string_view a, std::string_view b) {
    // Rows of the table of distances between beginnings of the words: of two letters of `a` less
    // than in `row`, of one less, and `row` itself.
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (AreSame(a[i - 1], b[j - 1]) ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            const bool isSwapped =
                i > 1 && j > 1 && AreSame(a[i - 1], b[j - 2]) && AreSame(a[i - 2], b[j - 1]);
            if (isSwapped) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

std::string DidYouMean(std::string_view word, const std::vector<std::string_view>& names) {
    std::string_view nearest;
    std::size_t least = 0;
    for (const std::string_view name : names) {
        const auto [shorter, longer] = std::minmax({word.size(), name.size()});
        const std::size_t most = MostWrong(longer);
        if (longer - shorter > most) {
            continue;  // the difference in length alone is too much
        }
        const std::size_t distance = Distance(word, name);
        if (distance <= most && (nearest.empty() || distance < least)) {
            nearest = name;
            least = distance;
        }
    }
    return nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + '?';
}

}  // namespace scenario
