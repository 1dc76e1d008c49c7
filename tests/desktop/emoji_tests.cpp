// Where signs of several characters begin and end.
#include "platform/desktop/emoji.h"

#include <gtest/gtest.h>

namespace {

using platform::desktop::EmojiIn;
using platform::desktop::Part;
using Parts = std::vector<Part>;

TEST(EmojiIn, LettersAndDigitsAreNone) {
    EXPECT_EQ(EmojiIn(u""), Parts{});
    EXPECT_EQ(EmojiIn(u"Morning 12 #3 * \u00E4 \u4E45"), Parts{});
    EXPECT_EQ(EmojiIn(u"\u2764 \u00A9 \u266A"), Parts{});  // signs of the text's own colour
    EXPECT_EQ(EmojiIn(std::u16string{0xD83C, u'a', 0xDFB5}), Parts{});
}

TEST(EmojiIn, APictureIsOne) {
    EXPECT_EQ(EmojiIn(u"a\U0001F3B5b\u2B50"), (Parts{{1, 2}, {4, 1}}));
    EXPECT_EQ(EmojiIn(u"\U0001F3B5\U0001F3B5"), (Parts{{0, 2}, {2, 2}}));
}

TEST(EmojiIn, TheTextMayAskForOneOrForALetter) {
    EXPECT_EQ(EmojiIn(u"\u2764\uFE0F"), (Parts{{0, 2}}));
    EXPECT_EQ(EmojiIn(u"\u2B50\uFE0E"), Parts{});
}

TEST(EmojiIn, FlagsArePairsOfLetters) {
    EXPECT_EQ(EmojiIn(u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), (Parts{{0, 4}, {4, 4}}));
    EXPECT_EQ(EmojiIn(u"\U0001F1E9 "), Parts{});  // half of one
    // Of a region: a black flag and tags.
    EXPECT_EQ(EmojiIn(u"\U0001F3F4\U000E0067\U000E0062\U000E007F!"), (Parts{{0, 8}}));
}

TEST(EmojiIn, KeysWithCaps) {
    EXPECT_EQ(EmojiIn(u"1\uFE0F\u20E3 #\u20E3"), (Parts{{0, 3}, {4, 2}}));
    EXPECT_EQ(EmojiIn(u"1\uFE0F"), Parts{});
}

TEST(EmojiIn, ColoursOfSkinAndFamilies) {
    EXPECT_EQ(EmojiIn(u"\U0001F44D\U0001F3FD"), (Parts{{0, 4}}));
    EXPECT_EQ(EmojiIn(u"\U0001F468\u200D\U0001F469\u200D\U0001F467 x"), (Parts{{0, 8}}));
    EXPECT_EQ(EmojiIn(u"\U0001F469\U0001F3FD\u200D\u2695\uFE0F"), (Parts{{0, 7}}));
    EXPECT_EQ(EmojiIn(u"\U0001F468\u200Da"), (Parts{{0, 2}}));  // a joiner to nothing
}

}  // namespace
