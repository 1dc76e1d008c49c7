// What is kept of a user's impatience while a file is being opened.
#include "host/kept_input.h"

#include <gtest/gtest.h>

#include "platform/base/keys.h"

namespace veldrin {
namespace {

using namespace platform;

TEST(KeptInput, ATransportKeyCountsOnceWithItsReleaseAndItsText) {
    KeptInput input;
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_TRUE(input.Keeps(TextTyped{u"b"}));
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, false}));
    EXPECT_FALSE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_FALSE(input.Keeps(TextTyped{u"b"}));
    EXPECT_FALSE(input.Keeps(KeyChanged{'B', 0, false}));
    for (const Long code : {'Z', 'X', 'C', 'V'}) {
        EXPECT_TRUE(input.Keeps(KeyChanged{code, 0, true})) << code;
        EXPECT_FALSE(input.Keeps(KeyChanged{code, 0, true})) << code;
        EXPECT_TRUE(input.Keeps(KeyChanged{code, 0, false})) << code;
    }
}

TEST(KeptInput, TheReleaseOfAnEarlierPressLeavesThePressItsOwn) {
    KeptInput input;
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, false}));
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, false}));
    EXPECT_FALSE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_FALSE(input.Keeps(KeyChanged{'B', 0, false}));
}

TEST(KeptInput, AllElseIsKeptEachTime) {
    KeptInput input;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(input.Keeps(KeyChanged{'A', 0, true}));
        EXPECT_TRUE(input.Keeps(TextTyped{u"a"}));
        EXPECT_TRUE(input.Keeps(KeyChanged{'C', kShiftBit, true}));  // another command
        EXPECT_TRUE(input.Keeps(ButtonChanged{}));
        EXPECT_TRUE(input.Keeps(PointerMoved{}));
    }
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_FALSE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_TRUE(input.Keeps(KeyChanged{'A', 0, true}));
    EXPECT_TRUE(input.Keeps(TextTyped{u"a"}));
}

TEST(KeptInput, ASystemWideKeyCountsOnce) {
    KeptInput input;
    EXPECT_TRUE(input.Keeps(HotKeyPressed{7}));
    EXPECT_FALSE(input.Keeps(HotKeyPressed{7}));
    EXPECT_TRUE(input.Keeps(HotKeyPressed{8}));
}

TEST(KeptInput, TellsWhetherAWindowIsToClose) {
    KeptInput input;
    EXPECT_TRUE(input.Keeps(KeyChanged{'B', 0, true}));
    EXPECT_FALSE(input.AskedToClose());
    EXPECT_TRUE(input.Keeps(CloseRequested{}));
    EXPECT_TRUE(input.AskedToClose());
}

}  // namespace
}  // namespace veldrin
