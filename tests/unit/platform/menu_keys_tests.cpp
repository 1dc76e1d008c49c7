// A menu that is open, driven by keys.
#include <gtest/gtest.h>

#include "tests/unit/support/menu_bench.h"

namespace platform {
namespace {

using support::MenuBench;
using Lines = std::vector<std::string>;

// Rows 1, a line, 2, a submenu with 11 and 12, 3 disabled, 4.
class MenuKeys : public ::testing::Test {
  protected:
    MenuKeys() {
        b_.Add(1, u"Apple");
        b_.Add(901);
        b_.Add(2, u"Banana");
        below_ = b_.AddSubmenu(b_.menu, u"Cherry");
        b_.Add(3, u"Damson", MF_GRAYED);
        b_.Add(4, u"Blackberry");
        b_.Add(below_, 11, u"Red");
        b_.Add(below_, 12, u"Black");
    }
    /// What is chosen by these keys, one every 10 ms.
    Long Chosen(const std::vector<Long>& keys) {
        Millis when = 0;
        for (const Long key : keys) {
            b_.Key(when += 10, key);
        }
        return b_.Track();
    }
    /// The row that is selected after these keys.
    Long Selected(const std::vector<Long>& keys) {
        Long selected = -1;
        b_.Look(static_cast<Millis>(keys.size()) * 10 + 1, [&] { selected = b_.selected; });
        EXPECT_EQ(Chosen(keys), 0);
        return selected;
    }
    Long Typed(const std::u16string& text) {
        b_.Type(10, text);
        return b_.Track();
    }
    /// How many popups are open after these keys.
    std::size_t Popups(const std::vector<Long>& keys) {
        std::size_t popups = 0;
        b_.Look(static_cast<Millis>(keys.size()) * 10 + 1,
                [&] { popups = b_.driver.popups.size(); });
        EXPECT_EQ(Chosen(keys), 0);
        return popups;
    }

    MenuBench b_;
    Handle below_ = 0;
};

TEST_F(MenuKeys, EnterChoosesTheSelectedRow) {
    EXPECT_EQ(Chosen({VK_DOWN, VK_RETURN}), 1);
    EXPECT_EQ(Chosen({VK_DOWN, VK_DOWN, VK_RETURN}), 2);  // past the line
    EXPECT_EQ(Chosen({VK_UP, VK_RETURN}), 4);
    EXPECT_EQ(Chosen({VK_RETURN}), 0);
    EXPECT_TRUE(b_.driver.popups.empty());
}

TEST_F(MenuKeys, UpAndDownGoRoundTheEndsPastLines) {
    EXPECT_EQ(Selected({VK_DOWN, VK_UP}), 4);
    EXPECT_EQ(Selected({VK_UP, VK_DOWN}), 1);
    EXPECT_EQ(Selected({VK_DOWN, VK_DOWN, VK_UP}), 1);
    EXPECT_EQ(Selected({VK_UP, VK_HOME}), 1);
    EXPECT_EQ(Selected({VK_HOME, VK_END}), 4);
}

TEST_F(MenuKeys, ADisabledRowIsSelectedButNotChosen) {
    EXPECT_EQ(Selected({VK_UP, VK_UP}), 3);
    EXPECT_EQ(Selected({VK_UP, VK_UP, VK_RETURN}), 3);  // still open
}

TEST_F(MenuKeys, RightAndEnterOpenASubmenuWithItsFirstRowSelected) {
    EXPECT_EQ(Selected({VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT}), 11);
    EXPECT_EQ(Selected({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}), 11);
    EXPECT_EQ(Chosen({VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN}), 12);
    EXPECT_EQ(Popups({VK_DOWN, VK_RIGHT}), 1U);  // nothing to open
}

TEST_F(MenuKeys, EachSubmenuThatOpensIsToldWithItsLevel) {
    const Handle deeper = b_.AddSubmenu(below_);
    b_.Add(deeper, 21);
    std::vector<std::pair<Handle, std::size_t>> told;
    b_.menus.ObserveSubmenus(
        [&](Handle menu, std::size_t level) { told.emplace_back(menu, level); });
    // Down to the submenu and into it, up from its first row to its last, and into the next.
    EXPECT_EQ(Chosen({VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_UP, VK_RIGHT, VK_RETURN}), 21);
    EXPECT_EQ(told, (std::vector<std::pair<Handle, std::size_t>>{{below_, 1}, {deeper, 2}}));
}

TEST_F(MenuKeys, LeftAndEscCloseOneLevel) {
    const std::vector<Long> open{VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT};
    for (const Long key : {VK_LEFT, VK_ESCAPE}) {
        std::vector<Long> keys = open;
        EXPECT_EQ(Popups(keys), 2U);
        keys.push_back(key);
        EXPECT_EQ(Popups(keys), 1U);
        keys.push_back(key);
        EXPECT_EQ(Popups(keys), key == VK_LEFT ? 1U : 0U);
    }
}

TEST_F(MenuKeys, MovingOnClosesASubmenuThatThePointerHasOpened) {
    b_.Move(10, {150, 155});  // rows at 101, line 121, 127, 147
    b_.Look(220, [&] { EXPECT_EQ(b_.driver.popups.size(), 2U); });
    b_.Key(230, VK_DOWN);
    b_.Look(231, [&] {
        EXPECT_EQ(b_.driver.popups.size(), 1U);
        EXPECT_EQ(b_.selected, 3);
    });
    EXPECT_EQ(b_.Track(), 0);
}

TEST_F(MenuKeys, ALetterChoosesTheOnlyRowThatBeginsWithIt) {
    EXPECT_EQ(Typed(u"a"), 1);
    EXPECT_EQ(Typed(u"A"), 1);
    EXPECT_EQ(Typed(u"x"), 0);
    b_.Add(5, u"Ảnh");
    EXPECT_EQ(Typed(u"ả"), 5);
}

TEST_F(MenuKeys, ALetterOfSeveralRowsStepsThroughThem) {
    EXPECT_EQ(Typed(u"b"), 0);
    b_.Key(20, VK_RETURN);
    EXPECT_EQ(Typed(u"b"), 2);
    b_.Key(20, VK_RETURN);
    EXPECT_EQ(Typed(u"bb"), 4);
    b_.Key(20, VK_RETURN);
    EXPECT_EQ(Typed(u"bbb"), 2);
}

TEST_F(MenuKeys, ALetterOpensTheSubmenuAndLeavesADisabledRowSelected) {
    b_.Look(11, [&] { EXPECT_EQ(b_.selected, 11); });
    EXPECT_EQ(Typed(u"c"), 0);
    b_.Look(11, [&] { EXPECT_EQ(b_.selected, 3); });
    EXPECT_EQ(Typed(u"d"), 0);
    EXPECT_EQ(Typed(u"cr"), 11);
}

TEST_F(MenuKeys, KeysAndTextReachNobodyElse) {
    b_.Key(10, VK_DOWN);
    b_.Type(10, u"x");
    b_.Key(20, VK_RETURN);
    EXPECT_EQ(b_.Track(), 1);
    b_.windows.Deliver(TextTyped{u"\r"});  // of the Enter that ended the menu
    EXPECT_EQ(b_.messages, Lines());
    b_.windows.Deliver(KeyChanged{'Y', 0, true});
    b_.windows.Deliver(TextTyped{u"y"});
    EXPECT_EQ(b_.messages, (Lines{"256 89 0", "258 121 0"}));
}

TEST_F(MenuKeys, AKeyThatIsStillHeldAfterTheMenuDoesNothingUntilItIsUp) {
    b_.Key(10, VK_DOWN);
    b_.KeyDown(20, VK_RETURN);
    EXPECT_EQ(b_.Track(), 1);
    b_.windows.Deliver(KeyChanged{VK_RETURN, 0, true});
    b_.windows.Deliver(TextTyped{u"\r"});
    b_.windows.Deliver(KeyChanged{VK_RETURN, 0, false});
    EXPECT_EQ(b_.messages, Lines());
    b_.windows.Deliver(KeyChanged{VK_RETURN, 0, true});
    EXPECT_EQ(b_.messages, (Lines{"256 13 0"}));
}

TEST_F(MenuKeys, AKeyHeldFromBeforeGoesUpWhereItWentDown) {
    b_.windows.Deliver(KeyChanged{VK_RIGHT, 0, true});
    b_.KeyDown(10, VK_RIGHT);  // repeated
    b_.At(20, [&] { b_.windows.Deliver(KeyChanged{VK_RIGHT, 0, false}); });
    EXPECT_EQ(b_.Track(), 0);
    EXPECT_EQ(b_.messages, (Lines{"256 39 0", "257 39 0"}));
}

TEST_F(MenuKeys, TheFocusStaysWhereItIs) {
    b_.Key(10, VK_DOWN);
    b_.Look(15, [&] { EXPECT_EQ(b_.windows.GetFocus(), b_.owner); });
    b_.Track();
    EXPECT_EQ(b_.windows.GetFocus(), b_.owner);
    EXPECT_EQ(b_.messages, Lines());  // no WM_KILLFOCUS, no WM_SETFOCUS
}

// The list of filters: the one that was set last is asked first.
TEST(KeyboardHooks, SeeKeysBeforeTheFocusAndEatThem) {
    MenuBench b;
    Lines seen;
    const auto hook = [&](std::string name, Long eats) {
        return [&seen, name, eats](Long code, Long modifiers, bool down) {
            seen.push_back(name + ' ' + std::to_string(code) + ' ' + std::to_string(modifiers) +
                           (down ? " down" : " up"));
            return down && code == eats;
        };
    };
    b.windows.SetWindowsHookEx(hook("first", 65));
    const Handle second = b.windows.SetWindowsHookEx(hook("second", 66));
    b.windows.Deliver(KeyChanged{65, 2, true});
    b.windows.Deliver(TextTyped{u"a"});
    b.windows.Deliver(KeyChanged{65, 2, false});
    EXPECT_EQ(seen,
              (Lines{"second 65 2 down", "first 65 2 down", "second 65 2 up", "first 65 2 up"}));
    EXPECT_EQ(b.messages, (Lines{"257 65 2"}));  // neither the press nor its text
    b.windows.Deliver(KeyChanged{66, 0, true});
    EXPECT_EQ(seen.back(), "second 66 0 down");
    b.windows.UnhookWindowsHookEx(second);
    b.messages.clear();
    b.windows.Deliver(KeyChanged{66, 0, true});
    b.windows.Deliver(TextTyped{u"b"});
    EXPECT_EQ(b.messages, (Lines{"256 66 0", "258 98 0"}));
    EXPECT_TRUE(b.windows.GetAsyncKeyState(66));
    EXPECT_FALSE(b.windows.GetAsyncKeyState(65));
    EXPECT_FALSE(b.windows.GetAsyncKeyState(-1));
}

}  // namespace
}  // namespace platform
