// System-wide keys, as far as no desktop is needed for them: key symbols, what portals are told,
// and what of a keyboard has to be grabbed.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/base/keys.h"
#include "platform/base/messages.h"
#include "platform/desktop/hotkeys/key_grabs.h"
#include "platform/desktop/hotkeys/key_symbols.h"

namespace {

using namespace platform;
using namespace platform::desktop;

constexpr Long kBothKeys = MOD_ALT | MOD_CONTROL;

// Numbers of symbols and modifiers are those of the X protocol.
constexpr std::uint32_t kSymbolHome = 0xFF50;
constexpr std::uint32_t kSymbolNext = 0xFF56;
constexpr std::uint32_t kSymbolPadNext = 0xFF9B;
constexpr std::uint32_t kSymbolPad3 = 0xFFB3;
constexpr std::uint32_t kSymbolNumLock = 0xFF7F;
constexpr std::uint32_t kSymbolScrollLock = 0xFF14;
constexpr std::uint32_t kSymbolAlt = 0xFFE9;
constexpr std::uint32_t kSymbolSuper = 0xFFEB;
constexpr std::uint16_t kShiftMask = 1;
constexpr std::uint16_t kLockMask = 2;
constexpr std::uint16_t kControlMask = 4;
constexpr std::uint16_t kMod1Mask = 8;
constexpr std::uint16_t kMod2Mask = 16;
constexpr std::uint16_t kMod3Mask = 32;

KeyCombination Combination(Long key, Long modifiers = kBothKeys) {
    return {u"Key", modifiers, key};
}

// Keys 8 to 14, of four symbols each: Page Down, 3 of the pad, NumLock, Alt, Scroll Lock, Super, Q.
// Two keys for each modifier at most.
KeyboardMap PlainKeyboard() {
    return {8,
            4,
            {kSymbolNext,
             0,
             0,
             0,
             kSymbolPadNext,
             kSymbolPad3,
             0,
             0,
             kSymbolNumLock,
             0,
             0,
             0,
             0,
             kSymbolAlt,
             0,
             0,
             kSymbolScrollLock,
             0,
             0,
             0,
             kSymbolSuper,
             0,
             0,
             0,
             'q',
             'Q',
             kSymbolHome,
             0},
            {0, 0, 0, 0, 0, 0, 0, 11, 10, 0, 0, 0, 0, 0, 0, 0}};
}

// Number of key, modifiers; in order.
std::vector<std::pair<int, int>> Sorted(const std::vector<KeyGrab>& grabs) {
    std::vector<std::pair<int, int>> pairs;
    for (const KeyGrab& grab : grabs) {
        pairs.emplace_back(grab.code, grab.modifiers);
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

std::pair<int, int> First(const std::vector<KeyGrab>& grabs) {
    return grabs.empty() ? std::pair(0, 0) : Sorted(grabs).front();
}

TEST(HotKeySymbols, AreThoseOfTheMainBlockAndOfThePad) {
    EXPECT_EQ(SymbolOf(VK_NEXT)->symbol, kSymbolNext);
    EXPECT_EQ(SymbolOf(VK_NEXT)->pad, kSymbolPadNext);
    EXPECT_EQ(SymbolOf(VK_F1)->symbol, 0xFFBEU);
    EXPECT_EQ(SymbolOf(VK_F12)->symbol, 0xFFC9U);
    EXPECT_EQ(SymbolOf(VK_F12)->pad, 0U);
    EXPECT_EQ(SymbolOf(VK_F1 + 23)->name, "F24");
    EXPECT_FALSE(SymbolOf(VK_F1 + 24));
    EXPECT_EQ(SymbolOf('A')->symbol, 0x61U);
    EXPECT_EQ(SymbolOf('Z')->name, "z");
    EXPECT_EQ(SymbolOf('0')->symbol, 0x30U);
    EXPECT_FALSE(SymbolOf('9' + 1));
    EXPECT_FALSE(SymbolOf(0));
    EXPECT_FALSE(SymbolOf(-1));
}

TEST(HotKeySymbols, OfTheTenKeysAsPortalsAreTold) {
    const std::vector<std::pair<Long, std::string>> wanted = {
        {VK_F12, "F12"},   {VK_NEXT, "Page_Down"}, {VK_PRIOR, "Page_Up"}, {VK_END, "End"},
        {VK_HOME, "Home"}, {VK_INSERT, "Insert"},  {VK_LEFT, "Left"},     {VK_RIGHT, "Right"},
        {VK_UP, "Up"},     {VK_DOWN, "Down"}};
    for (const auto& [key, name] : wanted) {
        EXPECT_EQ(TriggerOf(Combination(key)), "CTRL+ALT+" + name);
    }
}

TEST(HotKeySymbols, ModifiersOfATrigger) {
    EXPECT_EQ(TriggerOf(Combination('Q', MOD_SHIFT | MOD_WIN)), "SHIFT+LOGO+q");
    EXPECT_EQ(TriggerOf(Combination(VK_F5, 0)), "F5");
    EXPECT_EQ(TriggerOf(Combination(VK_NUMLOCK)), "");
}

TEST(HotKeyGrabs, AreOneForEachStateOfTheLockKeys) {
    const auto base = kControlMask | kMod1Mask;
    KeyboardMap map = PlainKeyboard();
    map.symbols[4] = kSymbolPad3;  // no pad for now
    EXPECT_EQ(Sorted(GrabsOf(Combination(VK_NEXT), map)),
              (std::vector<std::pair<int, int>>{{8, base},
                                                {8, base | kLockMask},
                                                {8, base | kMod2Mask},
                                                {8, base | kLockMask | kMod2Mask}}));
    // Scroll Lock becomes the third modifier, NumLock the second key of its own.
    map.modifierKeys[8] = 0;
    map.modifierKeys[9] = 10;
    map.modifierKeys[10] = 12;
    const auto grabs = Sorted(GrabsOf(Combination(VK_NEXT), map));
    ASSERT_EQ(grabs.size(), 8U);
    EXPECT_EQ(grabs.front(), std::pair(8, int{base}));
    EXPECT_EQ(grabs.back(), std::pair(8, base | kLockMask | kMod2Mask | kMod3Mask));
    EXPECT_EQ(std::adjacent_find(grabs.begin(), grabs.end()), grabs.end());
}

TEST(HotKeyGrabs, OfThePadOnlyWhileItMovesTheCaret) {
    const auto base = kControlMask | kMod1Mask;
    const auto grabs = Sorted(GrabsOf(Combination(VK_NEXT), PlainKeyboard()));
    ASSERT_EQ(grabs.size(), 6U);
    EXPECT_EQ(grabs[4], std::pair(9, int{base}));
    EXPECT_EQ(grabs[5], std::pair(9, base | kLockMask));
}

TEST(HotKeyGrabs, KeysCountByWhatTheyAreWithoutShiftInEitherGroup) {
    EXPECT_EQ(First(GrabsOf(Combination('Q', 0), PlainKeyboard())), std::pair(14, 0));
    EXPECT_EQ(First(GrabsOf(Combination(VK_HOME, 0), PlainKeyboard())), std::pair(14, 0));
    KeyboardMap map = PlainKeyboard();
    map.symbols = {'q', kSymbolHome, 0, 0};
    EXPECT_TRUE(GrabsOf(Combination(VK_HOME, 0), map).empty());
    map.perCode = 1;
    EXPECT_EQ(First(GrabsOf(Combination(VK_HOME, 0), map)), std::pair(9, 0));
}

TEST(HotKeyGrabs, ALockKeyThatIsAModifierOfTheCombinationIsHeldAnyway) {
    KeyboardMap map = PlainKeyboard();
    map.modifierKeys[7] = 10;  // NumLock beside Alt
    map.modifierKeys[6] = 11;
    map.modifierKeys[8] = 0;
    EXPECT_EQ(Sorted(GrabsOf(Combination('Q', MOD_ALT), map)),
              (std::vector<std::pair<int, int>>{{14, kMod1Mask}, {14, kMod1Mask | kLockMask}}));
}

TEST(HotKeyGrabs, NoneWhereTheKeyboardLacksKeyOrModifier) {
    EXPECT_TRUE(GrabsOf(Combination(VK_END), PlainKeyboard()).empty());
    EXPECT_TRUE(GrabsOf(Combination(VK_NUMLOCK), PlainKeyboard()).empty());
    // Super is on the keyboard, but no modifier.
    EXPECT_TRUE(GrabsOf(Combination('Q', MOD_WIN), PlainKeyboard()).empty());
    EXPECT_EQ(First(GrabsOf(Combination('Q', MOD_SHIFT), PlainKeyboard())),
              std::pair(14, int{kShiftMask}));
    EXPECT_TRUE(GrabsOf(Combination('Q'), {}).empty());
}

TEST(HotKeyGrabs, OfAServerThatAnswersNonsense) {
    KeyboardMap map = PlainKeyboard();
    map.symbols.resize(26);              // the last key is cut off
    map.modifierKeys = {1, 2, 3, 4, 5};  // less than eight rows
    EXPECT_TRUE(GrabsOf(Combination('Q'), map).empty());
    map.modifierKeys.assign(8, 255);
    EXPECT_TRUE(GrabsOf(Combination(VK_NEXT), map).empty());
    map.modifierKeys.assign(8, 7);
    EXPECT_TRUE(GrabsOf(Combination(VK_NEXT), map).empty());
}

}  // namespace
