// Words of a stranger, from a stranger made up here, at a time that only the test moves.
#include "host/lyrics/online_words.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using namespace std::chrono_literals;
using Words = std::optional<std::string>;

class LyricsOnline : public testing::Test {
  protected:
    std::string Find(const Song& song, bool anew = false) {
        return online_.Find({song, {}, {}}, anew);
    }

    ScratchFolder scratch_;
    std::vector<std::string> asked_;
    HttpHeaders headers_;
    HttpLimits limits_;
    std::optional<HttpAnswer> answer_ = HttpAnswer{200, {}, R"({"plainLyrics":"One\nTwo"})"};
    std::chrono::system_clock::time_point now_{1'000'000'000s};
    OnlineWords online_{
        "http://h", scratch_.Path("c"),
        [this](const std::string& address, const HttpHeaders& headers, const HttpLimits& limits) {
            asked_.push_back(address);
            headers_ = headers;
            limits_ = limits;
            return answer_;
        },
        [this] { return now_; }};
    const Song song_{"Ann & Bob", "Blue"};
};

TEST_F(LyricsOnline, QuestionTellsWhatIsKnownAndNoMore) {
    EXPECT_EQ(online_.Find({{"Ann & Bob", "1+1=2?"}, "Al/bum", 215s}, false), "One\nTwo");
    EXPECT_EQ(Find({"\xC3\xA9", "x"}), "One\nTwo");
    EXPECT_EQ(asked_, (std::vector<std::string>{
                          "http://h/api/get?artist_name=Ann%20%26%20Bob&track_name=1%2B1%3D2%3F"
                          "&album_name=Al%2Fbum&duration=215",
                          "http://h/api/get?artist_name=%C3%A9&track_name=x"}));
    EXPECT_EQ(headers_, (HttpHeaders{{"user-agent", "Veldrin/1.1"}}));
    EXPECT_EQ(limits_.time, 5000ms);
    EXPECT_EQ(limits_.size, 1048576u);
}

TEST_F(LyricsOnline, HalfANameIsNotAskedFor) {
    EXPECT_EQ(Find({"", "Blue"}), "");
    EXPECT_EQ(Find({"Ann", ""}), "");
    EXPECT_TRUE(asked_.empty());
}

TEST_F(LyricsOnline, WordsAreKeptThirtyDays) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    now_ += 24h * 30 - 1s;
    answer_ = HttpAnswer{200, {}, R"({"plainLyrics":"Three"})"};
    EXPECT_EQ(Find({"ANN & bob", "bLUE"}), "One\nTwo");
    EXPECT_EQ(asked_.size(), 1u);
    now_ += 1s;
    EXPECT_EQ(Find(song_), "Three");
    EXPECT_EQ(asked_.size(), 2u);
}

TEST_F(LyricsOnline, MissIsKeptOneDay) {
    answer_ = HttpAnswer{404, {}, R"({"code":404})"};
    EXPECT_EQ(Find(song_), "");
    now_ += 24h - 1s;
    answer_ = HttpAnswer{200, {}, R"({"plainLyrics":"One"})"};
    EXPECT_EQ(Find(song_), "");
    now_ += 1s;
    EXPECT_EQ(Find(song_), "One");
    EXPECT_EQ(asked_.size(), 2u);
}

TEST_F(LyricsOnline, ReloadAsksAnewAndKeepsThat) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    answer_->body = R"({"plainLyrics":"Three"})";
    EXPECT_EQ(Find(song_, true), "Three");
    EXPECT_EQ(Find(song_), "Three");
    answer_->status = 404;
    EXPECT_EQ(Find(song_, true), "");
    EXPECT_EQ(Find(song_), "");
    EXPECT_EQ(asked_.size(), 3u);
}

TEST_F(LyricsOnline, FailuresAreNoMisses) {
    answer_.reset();
    EXPECT_EQ(Find(song_), "");
    for (const int status : {200, 302, 400, 429, 500, 503}) {
        answer_ = HttpAnswer{status, {}, "oops"};
        EXPECT_EQ(Find(song_), "") << status;
    }
    EXPECT_EQ(asked_.size(), 7u);
    answer_ = HttpAnswer{200, {}, R"({"plainLyrics":"One"})"};
    EXPECT_EQ(Find(song_), "One");
}

TEST_F(LyricsOnline, OldWordsAreBetterThanNone) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    answer_.reset();
    EXPECT_EQ(Find(song_, true), "One\nTwo");
    now_ += 24h * 31;
    EXPECT_EQ(Find(song_), "One\nTwo");
    EXPECT_EQ(asked_.size(), 3u);
}

TEST_F(LyricsOnline, AnswersFromTheFutureAreOld) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    now_ -= 1s;
    answer_->body = R"({"plainLyrics":"Three"})";
    EXPECT_EQ(Find(song_), "Three");
}

TEST_F(LyricsOnline, SpoiltCacheIsAskedAnew) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    const auto file = std::filesystem::directory_iterator(scratch_.Path("c"))->path();
    const std::string key = "ANN%20%26%20BOB&BLUE\n";
    std::size_t asked = 1;
    for (const std::string& content :
         {std::string(), std::string("rubbish"), std::string("veldrin lyrics 1"),
          "veldrin lyrics 1\nx\n" + key + "w", "veldrin lyrics 1\n1000000000 \n" + key + "w",
          "veldrin lyrics 1\n99999999999999999999999\n" + key + "w",
          "veldrin lyrics 1\n-5\n" + key + "w",
          std::string("veldrin lyrics 1\n1000000000\nOTHER&SONG\nw"), std::string(70000, '\0')}) {
        std::ofstream(file, std::ios::binary) << content;
        EXPECT_EQ(Find(song_), "One\nTwo") << content.substr(0, 80);
        EXPECT_EQ(asked_.size(), ++asked);
    }
    std::ofstream(file, std::ios::binary) << "veldrin lyrics 1\n1000000000\n" + key + "kept";
    EXPECT_EQ(Find(song_), "kept");
}

TEST_F(LyricsOnline, CacheIsTheOwnersAndNotNeeded) {
    EXPECT_EQ(Find(song_), "One\nTwo");
    EXPECT_EQ(RightsOf(scratch_.Path("c")), 0700U);
    const OnlineWords forgetful(
        "http://h", "", [this](const auto&, const auto&, const auto&) { return answer_; },
        [this] { return now_; });
    EXPECT_EQ(forgetful.Find({song_, {}, {}}, false), "One\nTwo");
}

TEST(LyricsAnswer, WordsInstrumentalsAndTheirLack) {
    EXPECT_EQ(WordsInAnswer(R"({"id":1,"plainLyrics":"\u00e9\r\nx\u0000","syncedLyrics":null})"),
              "\xC3\xA9\nx");
    EXPECT_EQ(WordsInAnswer(R"({"plainLyrics":null,"instrumental":true})"), "[Instrumental]");
    EXPECT_EQ(WordsInAnswer(R"({"plainLyrics":"x","instrumental":true})"), "x");
    EXPECT_EQ(WordsInAnswer(R"({"plainLyrics":null,"instrumental":false})"), "");
    EXPECT_EQ(WordsInAnswer(R"({"plainLyrics":"  "})"), "");
    EXPECT_EQ(WordsInAnswer(R"({"a":{"plainLyrics":"deep"},"plainLyrics":"x","b":[1,[2]]})"), "x");
}

TEST(LyricsAnswer, RubbishIsNothing) {
    for (const std::string body :
         {"", "null", "3", "[]", "\"plainLyrics\"", "{}", "{", R"({"plainLyrics":3})",
          R"({"plainLyrics":["x"]})", R"({"plainLyrics":{"a":"x"}})", R"({"plainLyrics":"x")",
          R"({"plainLyrics":"\ud800"})", "{\"plainLyrics\":\"\xFF\"}", R"({"instrumental":"true"})",
          R"({"a":{"plainLyrics":"deep"}})", "<html>"}) {
        EXPECT_EQ(WordsInAnswer(body), std::nullopt) << body;
    }
}

TEST(LyricsAnswer, DeepAnswersAreRead) {
    constexpr std::size_t kDepth = 500'000;
    EXPECT_EQ(WordsInAnswer(std::string(kDepth, '[')), std::nullopt);
    const std::string deep = std::string(kDepth, '[') + std::string(kDepth, ']');
    EXPECT_EQ(WordsInAnswer(deep), std::nullopt);
    EXPECT_EQ(WordsInAnswer("{\"a\":" + deep + R"(,"plainLyrics":"x"})"), "x");
}

}  // namespace
}  // namespace veldrin
