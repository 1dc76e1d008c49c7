// The drivers that need no display keep the rules, and the rules refuse drivers that do not.
#include "tests/conformance/conformance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/conformance/broken_drivers.h"
#include "tests/conformance/pushed_desktop.h"

namespace conformance {
namespace {

using platform::HeadlessDriver;

// Whatever is tried is kept; answers what is not tried.
template <typename Desktop, typename... Arguments>
std::set<std::string> NotTriedOn(Arguments... arguments) {
    std::set<std::string> rules;
    for (const std::string& rule : AllRules()) {
        const Result result =
            Try(rule, [=] { return std::make_unique<PushedDesktop<Desktop>>(arguments...); });
        EXPECT_TRUE(result.outcome != Outcome::kBroken) << rule << ": " << result.why;
        if (result.outcome == Outcome::kNotTried) {
            rules.insert(rule);
        }
    }
    return rules;
}

const std::set<std::string> kOfADesktop{"input.press_outside_is_not_ours"};
const std::set<std::string> kOfAScreen{
    "input.press_outside_is_not_ours", "pictures.shown_as_it_is",
    "pictures.changes_are_shown",      "pictures.stays_while_hidden",
    "pictures.follows_the_size",       "pictures.comes_back_after_minimising",
    "pictures.popup_lies_above",       "pictures.stands_where_it_was_put"};

TEST(Conformance, ThePagesDriver) {
    EXPECT_EQ(NotTriedOn<RecordingDriver>(), kOfAScreen);
}

TEST(Conformance, ThePagesDriverWithAScreen) {
    EXPECT_EQ(NotTriedOn<PaperDriver>(), kOfADesktop);
}

TEST(Conformance, HeadlessOnAVirtualClock) {
    EXPECT_EQ(NotTriedOn<HeadlessDriver>(HeadlessDriver::Clock::kVirtual), kOfAScreen);
}

TEST(Conformance, HeadlessOnAVirtualClockAndADenseScreen) {
    EXPECT_EQ(NotTriedOn<HeadlessDriver>(HeadlessDriver::Clock::kVirtual, Long{3}), kOfAScreen);
}

TEST(Conformance, HeadlessOnTheRealClock) {
    EXPECT_EQ(NotTriedOn<HeadlessDriver>(HeadlessDriver::Clock::kReal), kOfAScreen);
}

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
    std::set<std::string> refusing = kOfADesktop;
    for (const BrokenDriver& broken : AllBroken()) {
        refusing.insert(broken.rule);
    }
    const std::vector<std::string> all = AllRules();
    EXPECT_EQ(refusing, std::set<std::string>(all.begin(), all.end()));
}

}  // namespace
}  // namespace conformance
