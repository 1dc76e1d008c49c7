// Each rule refuses drivers that break it.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/conformance/broken_drivers.h"

namespace conformance {
namespace {

std::vector<BrokenDriver> AllBroken() {
    std::vector<BrokenDriver> all;
    for (auto& some : {BrokenInTime(), BrokenInWindows(), BrokenInInput(), BrokenInText()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

TEST(ConformanceRefuses, EachBrokenDriverByTheRuleThatItBreaks) {
    for (const BrokenDriver& broken : AllBroken()) {
        const Result result = Try(broken.rule, broken.make);
        EXPECT_TRUE(result.outcome == Outcome::kBroken) << broken.rule << ": " << broken.fault;
        EXPECT_NE(result.why, "there is no such rule") << broken.rule;
    }
}

// A rule that nothing can break says nothing.
TEST(ConformanceRefuses, SomethingBrokenByEachRule) {
    std::set<std::string> refusing{"input.press_outside_is_not_ours"};  // needs a real screen
    for (const BrokenDriver& broken : AllBroken()) {
        refusing.insert(broken.rule);
    }
    const std::vector<std::string> all = AllRules();
    EXPECT_EQ(refusing, std::set<std::string>(all.begin(), all.end()));
}

}  // namespace
}  // namespace conformance
