// Copies of pages: which are kept, how long, and how many.
#include "host/http/page_cache.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "host/http/page_fetcher.h"

namespace veldrin {
namespace {

using std::chrono::seconds;

constexpr PageCache::Moment kNow{seconds(1'000'000)};

HttpAnswer Rules(const std::string& cacheControl, const std::string& body = "page") {
    return {200, {{"cache-control", cacheControl}}, body};
}

/// For how many seconds a copy is shown.
long Life(const HttpAnswer& answer) {
    PageCache cache;
    cache.Keep("a", answer, kNow);
    long life = 0;
    while (cache.Find("a", kNow + seconds(life)) && life < 100'000) {
        ++life;
    }
    return life;
}

TEST(PageCache, ACopyIsShownAsLongAsTheAnswerAllows) {
    EXPECT_EQ(Life({200, {}, "x"}), 0);
    EXPECT_EQ(Life(Rules("max-age=2")), 2);
    EXPECT_EQ(Life(Rules("private,  MAX-Age=3 , immutable")), 3);
    EXPECT_EQ(Life(Rules("max-age=0")), 0);
    EXPECT_EQ(Life(Rules("public")), 0);
    EXPECT_EQ(Life(Rules("max-age=9, no-store")), 0);
    EXPECT_EQ(Life(Rules("no-cache, max-age=9")), 0);
    for (const auto* wrong : {"max-age=", "max-age=x", "max-age=-5", "max-age=5x", "max-age", ",,",
                              "xmax-age=5", "max-age=\"5\""}) {
        EXPECT_EQ(Life(Rules(wrong)), 0) << wrong;
    }
    EXPECT_EQ(Life(Rules("max-age=99999999999999999999")), 86400);
    EXPECT_EQ(Life(Rules("max-age=9223372036854775807")), 86400);
}

TEST(PageCache, TheTimeThatItLayElsewhereCounts) {
    HttpAnswer answer = Rules("max-age=5");
    answer.headers["age"] = "3";
    EXPECT_EQ(Life(answer), 2);
    answer.headers["age"] = "5";
    EXPECT_EQ(Life(answer), 0);
}

TEST(PageCache, ANewCopyTakesThePlaceOfTheFormer) {
    PageCache cache;
    cache.Keep("a", Rules("max-age=5", "old"), kNow);
    cache.Keep("a", Rules("max-age=5", "new"), kNow);
    EXPECT_EQ(cache.Find("a", kNow), "new");
    cache.Keep("a", Rules("no-store", "secret"), kNow);
    EXPECT_EQ(cache.Find("a", kNow), std::nullopt);
    cache.Keep("a", Rules("max-age=5"), kNow);
    cache.Forget("a");
    cache.Forget("b");
    EXPECT_EQ(cache.Find("a", kNow), std::nullopt);
}

TEST(PageCache, ThirtyTwoPagesAndTheOldestGoFirst) {
    PageCache cache;
    for (int i = 0; i < 33; ++i) {
        cache.Keep(std::to_string(i), Rules("max-age=5"), kNow);
    }
    EXPECT_FALSE(cache.Find("0", kNow));
    EXPECT_TRUE(cache.Find("1", kNow));
    EXPECT_TRUE(cache.Find("32", kNow));
    cache.Keep("1", Rules("max-age=5"), kNow);  // is the newest now
    cache.Keep("33", Rules("max-age=5"), kNow);
    EXPECT_TRUE(cache.Find("1", kNow));
    EXPECT_FALSE(cache.Find("2", kNow));
}

TEST(PageCache, FourMegabytesInAll) {
    constexpr std::size_t kMost = 4 * 1024 * 1024;
    PageCache cache;
    const std::string half(kMost / 2 - 1, 'x');
    cache.Keep("a", Rules("max-age=5", half), kNow);
    cache.Keep("b", Rules("max-age=5", half), kNow);
    EXPECT_TRUE(cache.Find("a", kNow));  // full to the last byte, addresses included
    cache.Keep("c", Rules("max-age=5", ""), kNow);
    EXPECT_FALSE(cache.Find("a", kNow));
    EXPECT_TRUE(cache.Find("b", kNow));
    EXPECT_TRUE(cache.Find("c", kNow));
    cache.Keep("d", Rules("max-age=5", std::string(kMost, 'x')), kNow);  // too large by its address
    EXPECT_FALSE(cache.Find("d", kNow));
    EXPECT_TRUE(cache.Find("b", kNow));
}

/// Answers with the number of the request, and whether no copy was wanted.
class Counting : public Http {
  public:
    std::optional<HttpAnswer> Get(const std::string& /*address*/, const HttpHeaders& headers,
                                  const HttpLimits& limits) override {
        EXPECT_EQ(limits.size, 77U);
        ++asked;
        HttpAnswer given = answer;
        given.body = std::to_string(asked);
        for (const auto& [name, value] : headers) {
            given.body += " " + name + "=" + value;
        }
        return reached ? std::optional(given) : std::nullopt;
    }
    void Serve(int /*listening*/, Handler /*handler*/) override {}

    HttpAnswer answer{200, {{"cache-control", "max-age=3600"}}, {}};
    bool reached = true;
    int asked = 0;
};

struct Fetching : testing::Test {
    Counting http;
    PageFetcher pages{[this] { return &http; }, {seconds(1), 77}};
};

TEST_F(Fetching, ACopyAnswersUntilAFreshPageIsWanted) {
    EXPECT_EQ(pages.Fetch("a", false), "1");
    EXPECT_EQ(pages.Fetch("a", false), "1");
    EXPECT_EQ(pages.Fetch("b", false), "2");
    EXPECT_EQ(pages.Fetch("a", true), "3 cache-control=no-cache pragma=no-cache");
    EXPECT_EQ(pages.Fetch("a", false), "3 cache-control=no-cache pragma=no-cache");
}

TEST_F(Fetching, NoCopyOutlivesTheWishForAFreshPage) {
    EXPECT_EQ(pages.Fetch("a", false), "1");
    http.reached = false;
    EXPECT_EQ(pages.Fetch("a", true), std::nullopt);
    EXPECT_EQ(pages.Fetch("a", false), std::nullopt);
}

TEST_F(Fetching, OnlyAPageThatIsThereIsOne) {
    for (const int status : {204, 206, 302, 404, 500}) {
        http.answer.status = status;
        EXPECT_EQ(pages.Fetch("a", false), std::nullopt) << status;
    }
    http.answer.status = 200;
    EXPECT_EQ(pages.Fetch("a", false), "6");
}

TEST_F(Fetching, WithoutANetworkThereAreNoPages) {
    PageFetcher none([] { return nullptr; }, {});
    EXPECT_EQ(none.Fetch("a", false), std::nullopt);
}

}  // namespace
}  // namespace veldrin
