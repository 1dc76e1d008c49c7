// The drivers that need no display keep the rules.
#include "tests/conformance/conformance.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "tests/conformance/pushed_desktop.h"

namespace conformance {
namespace {

using platform::HeadlessDriver;

// Whatever is tried is kept; answers what is not tried.
template <typename Desktop, typename... Arguments>
std::set<std::string> NotTriedOn(Arguments... arguments) {
    std::set<std::string> rules;
    for (const std::string& rule : AllRules()) {
        const Result result = Try(rule, [=] {
            return std::make_unique<PushedDesktop>(std::make_unique<Desktop>(arguments...));
        });
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

}  // namespace
}  // namespace conformance
