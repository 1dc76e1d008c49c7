// Writing in a text box: the keys that are its own, undoing, and what an input method puts
// together.
#include <gtest/gtest.h>

#include "platform/base/keys.h"
#include "platform/menus/menu.h"
#include "tests/unit/support/text_box_bench.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
using support::kInk;
using support::kPaper;

class Writing : public ::testing::Test {
  protected:
    explicit Writing(TextBox::Kind kind = TextBox::Kind::kLine) : bench_(kind, {100, 20}) {
        bench_.windows.SetWindowsHookEx([this](Long code, Long modifiers, bool down) {
            filtered_.push_back(std::to_string(code) + " " + std::to_string(modifiers) +
                                (down ? " down" : " up"));
            return false;
        });
    }

    void Focus() { bench_.windows.SetFocus(box_.HWnd()); }
    void Compose(std::u16string text, std::optional<std::size_t> caret) {
        bench_.driver.Push(TextComposed{std::move(text), caret});
        bench_.windows.DoEvents();
    }
    /// Keys that the procedures in front saw.
    Lines Filtered() { return std::exchange(filtered_, {}); }
    bool IsFiltered(Long code, Long modifiers = 0) {
        Filtered();
        bench_.Key(code, modifiers);
        return !Filtered().empty();
    }

    support::TextBoxBench bench_;
    TextBox& box_ = bench_.box;

  private:
    Lines filtered_;
};

class WritingOnPage : public Writing {
  protected:
    WritingOnPage() : Writing(TextBox::Kind::kPage) {}
};

TEST_F(Writing, KeysToWriteWithAreTheBoxs) {
    for (const Long modifiers : {0, kShiftBit, kCtrlBit, kShiftBit | kCtrlBit}) {
        for (const Long code :
             {VK_BACK, VK_DELETE, VK_HOME, VK_END, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) {
            EXPECT_FALSE(IsFiltered(code, modifiers)) << code << " " << modifiers;
        }
    }
    for (const Long modifiers : {0, kShiftBit}) {
        for (const Long code : {Long{'A'}, Long{'C'}, Long{'Z'}, Long{'0'}, Long{'9'}, VK_SPACE,
                                VK_NUMPAD0, VK_NUMPAD0 + 9, VK_MULTIPLY, VK_DIVIDE, VK_OEM_1,
                                VK_OEM_3, VK_OEM_4, VK_OEM_7, VK_OEM_102}) {
            EXPECT_FALSE(IsFiltered(code, modifiers)) << code << " " << modifiers;
        }
    }
    for (const char letter : {'A', 'C', 'V', 'X', 'Z'}) {
        EXPECT_FALSE(IsFiltered(letter, kCtrlBit)) << letter;
        EXPECT_TRUE(IsFiltered(letter, kCtrlBit | kShiftBit)) << letter;
    }
}

TEST_F(Writing, AllOtherKeysPassTheProceduresInFront) {
    for (const Long code : {VK_RETURN, VK_ESCAPE, VK_TAB, VK_INSERT, VK_PRIOR, VK_NEXT, VK_F1,
                            VK_SHIFT, VK_CONTROL, VK_CLEAR}) {
        EXPECT_TRUE(IsFiltered(code)) << code;
    }
    for (const Long code : {Long{'B'}, Long{'L'}, Long{'1'}, VK_SPACE, VK_OEM_1, VK_NUMPAD0}) {
        EXPECT_TRUE(IsFiltered(code, kCtrlBit)) << code;
    }
    for (const Long code : {Long{'A'}, VK_DELETE, VK_LEFT, VK_HOME, VK_BACK}) {
        EXPECT_TRUE(IsFiltered(code, kAltBit)) << code;
        EXPECT_TRUE(IsFiltered(code, kAltBit | kCtrlBit)) << code;
    }
}

TEST_F(Writing, WhoSawThePressSeesTheRelease) {
    const auto key = [&](Long code, Long shift, bool down) {
        bench_.windows.Deliver(KeyChanged{code, shift, down});
    };
    Focus();
    key('L', kCtrlBit, true);
    key('L', 0, false);  // Ctrl went up first: L alone would be the box's
    EXPECT_EQ(Filtered(), (Lines{"76 2 down", "76 0 up"}));
    key('L', 0, true);
    key('L', kCtrlBit, false);
    EXPECT_EQ(Filtered(), Lines{});
    key('L', 0, true);
    bench_.windows.SetFocus(0);
    key('L', 0, false);
    EXPECT_EQ(Filtered(), Lines{});
    key('L', 0, true);
    EXPECT_EQ(Filtered(), Lines{"76 0 down"});
}

TEST_F(Writing, ALockedBoxHasNoKeysOfItsOwn) {
    box_.Locked(true);
    EXPECT_TRUE(IsFiltered(VK_DELETE));
    EXPECT_TRUE(IsFiltered('A', kCtrlBit));
    box_.Locked(false);
    EXPECT_FALSE(IsFiltered(VK_DELETE));
}

TEST_F(WritingOnPage, APageHasNoKeysOfItsOwn) {
    for (const Long code : {VK_DELETE, VK_UP, VK_HOME, Long{'C'}, VK_SPACE}) {
        EXPECT_TRUE(IsFiltered(code)) << code;
    }
    EXPECT_TRUE(IsFiltered('C', kCtrlBit));
}

TEST_F(Writing, CtrlZTakesTheLastChangeBackAndBringsItAgain) {
    bench_.Fill(u"abc", 3);
    bench_.Type(u"de");
    bench_.Key('Z', kCtrlBit);
    EXPECT_EQ(bench_.Shown(), u"abc[]");
    bench_.Key('Z', kCtrlBit);
    EXPECT_EQ(bench_.Shown(), u"abc[de]");
    EXPECT_EQ(bench_.Changes(), 4);
    box_.Locked(true);
    bench_.Key('Z', kCtrlBit);
    EXPECT_EQ(bench_.Shown(), u"abc[de]");
}

TEST_F(Writing, WhatTheOwnerWroteCannotBeUndone) {
    bench_.Type(u"a");
    bench_.Fill(u"abc", 3);
    bench_.Key('Z', kCtrlBit);
    bench_.Type(u"d");
    box_.SelText(u"e");
    bench_.Events();
    bench_.Key('Z', kCtrlBit);
    EXPECT_EQ(bench_.Shown(), u"abcde[]");
    EXPECT_EQ(bench_.Changes(), 0);
}

// The window stands at 100, 50 and the box at 10, 20 in it; a line begins at 2, 3 in the box.
TEST_F(Writing, TheDriverHearsWhereTheUserWrites) {
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input, std::nullopt);
    Focus();
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input, (TextInput{bench_.window.HWnd(), {12, 23, 13, 36}}));
    bench_.Type(u"ab");
    EXPECT_EQ(bench_.driver.input->caret, (Rect{24, 23, 25, 36}));
    box_.Move(30, 40);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input->caret, (Rect{44, 43, 45, 56}));
    bench_.window.Move(0, 0);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input->caret, (Rect{44, 43, 45, 56}));
    box_.Locked(true);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input, std::nullopt);
    box_.Locked(false);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input->caret, (Rect{44, 43, 45, 56}));
    bench_.windows.SetFocus(bench_.window.HWnd());
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.driver.input, std::nullopt);
}

TEST_F(Writing, AWindowAtTheEndOfTheWorldIsHarmless) {
    Focus();
    bench_.window.Move(2147483000, 2147483000);
    box_.Move(-2147483647, -2147483647);
    bench_.windows.DoEvents();
    EXPECT_TRUE(bench_.driver.input);
}

TEST_F(Writing, WhatIsComposedShowsUnderlinedAtTheCaret) {
    bench_.Fill(u"ab", 1);
    Focus();
    Compose(u"xy ", 1);
    EXPECT_EQ(box_.Text(), u"ab");
    EXPECT_EQ(bench_.Changes(), 0);
    // "axy b": blocks from 3, 9, 15 and 27 on, 4 wide; a line below the second to fourth unit.
    for (const Long x : {3, 9, 15, 27}) {
        EXPECT_EQ(bench_.Pixel({x, 6}), kInk) << x;
    }
    EXPECT_EQ(bench_.Pixel({21, 6}), kPaper);
    for (Long x = 2; x < 40; ++x) {
        EXPECT_EQ(bench_.Pixel({x, 15}), x >= 8 && x < 26 ? kInk : kPaper) << x;
    }
    EXPECT_EQ(bench_.Pixel({14, 3}), kInk);  // the caret, behind the x
    EXPECT_EQ(bench_.Pixel({8, 3}), kPaper);
    EXPECT_EQ(bench_.driver.input->caret, (Rect{24, 23, 25, 36}));
    Compose(u"", {});
    EXPECT_EQ(bench_.Pixel({9, 6}), kInk);  // the b
    EXPECT_EQ(bench_.Pixel({15, 6}), kPaper);
    EXPECT_EQ(bench_.Pixel({10, 15}), kPaper);
    EXPECT_EQ(bench_.Pixel({8, 3}), kInk);
    EXPECT_EQ(bench_.driver.ended, 0);
}

TEST_F(Writing, AComposedTextMayHaveNoCaretAndOneTooFarIsAtItsEnd) {
    Focus();
    Compose(u"xy", std::nullopt);
    for (const Long x : {2, 8, 14}) {
        EXPECT_EQ(bench_.Pixel({x, 3}), kPaper) << x;
    }
    Compose(u"xy", 99);
    EXPECT_EQ(bench_.Pixel({14, 3}), kInk);
}

TEST_F(Writing, WhatIsComposedStandsForTheSelectionUntilItIsTyped) {
    bench_.Fill(u"abcd", 1);
    box_.SelLength(2);
    Focus();
    Compose(u"x", 1);
    // "axd", and nothing else.
    EXPECT_EQ(bench_.Pixel({15, 6}), kInk);
    EXPECT_EQ(bench_.Pixel({21, 6}), kPaper);
    EXPECT_EQ(bench_.Shown(), u"a[bc]d");
    Compose(u"", {});
    EXPECT_EQ(bench_.Pixel({21, 6}), kInk);
    Compose(u"x", 1);
    Compose(u"", {});
    bench_.Type(u"y");
    EXPECT_EQ(bench_.Shown(), u"ay[]d");
    EXPECT_EQ(bench_.Pixel({21, 6}), kPaper);
}

TEST_F(Writing, ALongCompositionScrollsSoThatItsCaretShows) {
    Focus();
    Compose(std::u16string(30, u'x'), 30);
    EXPECT_EQ(bench_.Pixel({97, 3}), kInk);
    EXPECT_EQ(bench_.driver.input->caret.left, 10 + 97);
}

TEST_F(Writing, WhatIsComposedWhenTheFocusGoesIsTyped) {
    bench_.Fill(u"ab", 1);
    Focus();
    Compose(u"x\U0001D11E", 1);
    bench_.Events();
    bench_.windows.SetFocus(bench_.window.HWnd());
    EXPECT_EQ(bench_.Shown(), u"ax\U0001D11E[]b");
    EXPECT_EQ(bench_.driver.ended, 1);
    EXPECT_EQ(bench_.Events(), (Lines{"KeyPress 120", "Change", "KeyPress 55348", "KeyPress 56606",
                                      "Change", "LostFocus"}));
    Compose(u"late", 1);
    EXPECT_EQ(box_.Text(), u"ax\U0001D11Eb");
    EXPECT_EQ(bench_.driver.ended, 2);
    Focus();
    EXPECT_TRUE(bench_.windows.Composition().text.empty());
}

TEST_F(Writing, WhatIsComposedIsTypedBeforeAPressMovesTheCaret) {
    bench_.Fill(u"ab", 2);
    Focus();
    Compose(u"x", 1);
    bench_.Press({2, 10});
    EXPECT_EQ(bench_.Shown(), u"[]abx");
    EXPECT_EQ(bench_.driver.ended, 1);
}

TEST_F(Writing, AMenuEndsComposingAndHasTheKeys) {
    Menus& menus = bench_.windows.PopupMenus();
    const Handle menu = menus.CreatePopupMenu();
    menus.AppendMenu(menu, MF_OWNERDRAW, 1, u"");
    Focus();
    Compose(u"x", 1);
    bool looked = false;
    bench_.windows.Schedule(50, [&] {
        looked = true;
        EXPECT_EQ(bench_.driver.input, std::nullopt);
        EXPECT_EQ(box_.Text(), u"x");
        menus.EndMenu(0);
    });
    menus.TrackPopupMenu(menu, TPM_RIGHTBUTTON, {10, 10}, bench_.window.HWnd());
    EXPECT_TRUE(looked);
    bench_.windows.DoEvents();
    EXPECT_TRUE(bench_.driver.input);
}

TEST_F(Writing, AHandlerOfWhatWasComposedMayTakeTheFocus) {
    TextBox other(bench_.windows, bench_.window.HWnd(), {0, 0, 50, 20});
    Focus();
    Compose(u"xy", 1);
    box_.onChange = [&] { bench_.windows.SetFocus(other.HWnd()); };
    bench_.windows.SetFocus(0);
    EXPECT_EQ(box_.Text(), u"xy");
    EXPECT_EQ(other.Text(), u"");
    EXPECT_EQ(bench_.windows.GetFocus(), 0);
}

TEST_F(Writing, ABoxThatGoesTakesWhatIsComposedWithIt) {
    auto other =
        std::make_unique<TextBox>(bench_.windows, bench_.window.HWnd(), Rect{0, 0, 50, 20});
    bench_.windows.SetFocus(other->HWnd());
    Compose(u"xy", 1);
    other.reset();
    EXPECT_EQ(bench_.driver.ended, 1);
    Focus();
    EXPECT_EQ(box_.Text(), u"");
    EXPECT_TRUE(bench_.windows.Composition().text.empty());
}

TEST_F(WritingOnPage, NothingIsComposedOnAPage) {
    bench_.Fill(u"ab");
    Focus();
    Compose(u"x", 1);
    EXPECT_TRUE(bench_.windows.Composition().text.empty());
    EXPECT_EQ(bench_.driver.ended, 1);
    EXPECT_EQ(bench_.driver.input, std::nullopt);
}

}  // namespace
}  // namespace platform
