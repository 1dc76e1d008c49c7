#include "browser/searchfilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "platform/base/text.h"

namespace sarnel {
namespace {

bool Finds(std::u16string_view filter, std::u16string_view text) {
    return SearchFilter(filter).Matches(RowText(text));
}

TEST(SearchFilter, IgnoresCaseInEitherWidth) {
    EXPECT_TRUE(Finds(u"song", u"Evening SONG"));
    EXPECT_TRUE(Finds(u"SONG", u"evening song"));
    EXPECT_TRUE(Finds(u"\u043F\u0435\u0441", u"\u041F\u0415\u0421\u041D\u042F"));
    EXPECT_TRUE(Finds(u"song", u"\u0101 SonG"));
    EXPECT_FALSE(Finds(u"song", u"son g"));
    EXPECT_FALSE(Finds(u"song", u"son"));
}

TEST(SearchFilter, LettersThatShareACapitalAreOne) {
    // Both small sigmas, dotless i, long s, the micro sign; sharp s stays what it is.
    EXPECT_TRUE(Finds(u"\u03C3", u"\u03C2"));
    EXPECT_TRUE(Finds(u"i", u"\u0131"));
    EXPECT_TRUE(Finds(u"\u0131", u"i"));
    EXPECT_TRUE(Finds(u"s", u"\u017F"));
    EXPECT_TRUE(Finds(u"\u03BC", u"\u00B5"));
    EXPECT_TRUE(Finds(u"\u0178", u"\u00FF"));
    EXPECT_FALSE(Finds(u"ss", u"\u00DF"));
}

TEST(SearchFilter, AnEmptyOneIsInEveryText) {
    EXPECT_TRUE(Finds(u"", u""));
    EXPECT_TRUE(Finds(u"", u"x"));
    EXPECT_FALSE(Finds(u"x", u""));
}

// Eight places are looked at together, in texts of wide units four.
TEST(SearchFilter, FindsInEveryPlaceOfTextsOfEveryLength) {
    for (const char16_t filling : {u'-', u'\u0416'}) {
        for (std::size_t length = 1; length < 40; ++length) {
            for (const std::u16string filter : {u"q", u"qw", u"qwe"}) {
                for (std::size_t at = 0; at + filter.size() <= length; ++at) {
                    std::u16string text(length, filling);
                    text.replace(at, filter.size(), platform::Upper(filter));
                    ASSERT_TRUE(Finds(filter, text)) << length << ' ' << at;
                    text[at + filter.size() - 1] = u'x';
                    ASSERT_FALSE(Finds(filter, text)) << length << ' ' << at;
                }
            }
        }
    }
}

TEST(SearchFilter, RandomTextsAreSearchedAsTheirCapitalsAre) {
    std::mt19937 random(7);
    const std::u16string units = u"aAbB \u00E5\u00C5\u00FF\u00B5\u017F\u212B\u03C2\xDC80\0sS";
    const auto any = [&](std::size_t longest) {
        std::u16string text(random() % (longest + 1), u' ');
        // Half of them of one byte a unit.
        const std::size_t kinds = random() % 2 == 0 ? 9 : units.size();
        std::generate(text.begin(), text.end(), [&] { return units[random() % kinds]; });
        return text;
    };
    int found = 0;
    for (int i = 0; i < 20'000; ++i) {
        const std::u16string filter = any(3);
        const std::u16string text = any(40);
        const bool isIn =
            platform::Upper(text).find(platform::Upper(filter)) != std::u16string::npos;
        ASSERT_EQ(Finds(filter, text), isIn) << i;
        found += isIn ? 1 : 0;
    }
    EXPECT_GT(found, 5'000);
    EXPECT_LT(found, 19'000);
}

}  // namespace
}  // namespace sarnel
