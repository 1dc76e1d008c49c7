// What the command line may ask of the running player, in words.
#include "host/remote/verb.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

using Kind = Verb::Kind;

TEST(Verbs, WordsWithoutAValue) {
    const std::pair<const char*, Kind> words[] = {
        {"play", Kind::kPlay}, {"pause", Kind::kPause}, {"play-pause", Kind::kPlayPause},
        {"stop", Kind::kStop}, {"next", Kind::kNext},   {"previous", Kind::kPrevious}};
    for (const auto& [word, kind] : words) {
        const auto verb = ParseVerb(word);
        ASSERT_TRUE(verb.has_value()) << word;
        EXPECT_EQ(verb->kind, kind) << word;
        EXPECT_FALSE(ParseVerb(std::string(word) + " 1").has_value()) << word;
        EXPECT_FALSE(ParseVerb(std::string(word) + " ").has_value()) << word;
    }
}

TEST(Verbs, NumbersWithAndWithoutASign) {
    struct Row {
        const char* text;
        Kind kind;
        bool relative;
        platform::Long amount;
    };
    for (const Row& row :
         {Row{"volume 0", Kind::kVolume, false, 0}, Row{"volume 100", Kind::kVolume, false, 100},
          Row{"volume +5", Kind::kVolume, true, 5}, Row{"volume -100", Kind::kVolume, true, -100},
          Row{"seek 90", Kind::kSeek, false, 90}, Row{"seek +007", Kind::kSeek, true, 7},
          Row{"seek -10", Kind::kSeek, true, -10},
          Row{"seek 999999999", Kind::kSeek, false, 999'999'999}}) {
        const auto verb = ParseVerb(row.text);
        ASSERT_TRUE(verb.has_value()) << row.text;
        EXPECT_EQ(verb->kind, row.kind) << row.text;
        EXPECT_EQ(verb->relative, row.relative) << row.text;
        EXPECT_EQ(verb->amount, row.amount) << row.text;
    }
}

TEST(Verbs, AnythingElseIsNone) {
    for (const char* text :
         {"", "plays", "Play", " play", "volume", "volume ", "volume 101", "volume +101",
          "volume 5%", "volume +-5", "volume + 5", "volume 1.5", "seek 1:30", "seek 1000000000",
          "seek 99999999999999999999", "seek x", "command", "command "}) {
        EXPECT_FALSE(ParseVerb(text).has_value()) << text;
    }
}

TEST(Verbs, ACommandHasAKey) {
    const auto verb = ParseVerb("command kPRdm");
    ASSERT_TRUE(verb.has_value());
    EXPECT_EQ(verb->kind, Kind::kCommand);
    EXPECT_EQ(verb->key, "kPRdm");
}

}  // namespace
}  // namespace veldrin
