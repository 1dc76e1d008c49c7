// A single-line text box under keys, typed text, mouse and clipboard. Its text begins 2 pixels from
// the left edge, so that the gap in front of unit n lies at 2 + 6 n.
#include <gtest/gtest.h>

#include "platform/keys.h"
#include "tests/unit/support/text_box_bench.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
constexpr Long kShift = kShiftBit;
constexpr Long kCtrl = kCtrlBit;
constexpr Long kAlt = kAltBit;

class TextBoxInput : public ::testing::Test {
  protected:
    void Fill(std::u16string_view text, Long caret = 0) {
        box_.Text(text);
        box_.SelStart(caret);
        bench_.Events();
    }
    // Text and selection, as "before[selected]after".
    std::u16string Shown() const {
        std::u16string text = box_.Text();
        const auto start = static_cast<std::size_t>(box_.SelStart());
        text.insert(start + static_cast<std::size_t>(box_.SelLength()), u"]");
        text.insert(start, u"[");
        return text;
    }
    int Changes() {
        int changes = 0;
        for (const std::string& event : bench_.Events()) {
            changes += event == "Change" ? 1 : 0;
        }
        return changes;
    }
    static constexpr Point At(Long gap) { return {2 + 6 * gap, 10}; }

    support::TextBoxBench bench_{TextBox::Kind::kLine, {100, 20}};
    TextBox& box_ = bench_.box;
};

TEST_F(TextBoxInput, TypedTextGoesInAtTheCaretAndEachCharacterIsAChange) {
    Fill(u"ad", 1);
    bench_.Type(u"bc");
    EXPECT_EQ(Shown(), u"abc[]d");
    EXPECT_EQ(Changes(), 2);
}

TEST_F(TextBoxInput, TypedTextReplacesTheSelection) {
    Fill(u"abcdef", 2);
    box_.SelLength(3);
    bench_.Type(u"X");
    EXPECT_EQ(Shown(), u"abX[]f");
    EXPECT_EQ(Changes(), 1);
}

TEST_F(TextBoxInput, ACharacterOfTwoUnitsGoesInAsAWhole) {
    bench_.Type(u"\U0001D11E\u00E9");
    EXPECT_EQ(Shown(), u"\U0001D11E\u00E9[]");
    EXPECT_EQ(Changes(), 2);
}

TEST_F(TextBoxInput, AFirstHalfAloneIsDroppedAndASecondHalfAloneIsAByte) {
    bench_.Type(std::u16string{0xD834, u'x', 0xDCE9});
    EXPECT_EQ(Shown(), (std::u16string{u'x', 0xDCE9, u'[', u']'}));
    bench_.Type(std::u16string{0xD834});
    bench_.windows.SetFocus(0);  // what was begun is over
    bench_.Type(std::u16string{0xDD1E});
    EXPECT_EQ(box_.Text(), (std::u16string{u'x', 0xDCE9, 0xDD1E}));
}

TEST_F(TextBoxInput, ControlCharactersChangeNothingButAreKeyPresses) {
    Fill(u"a");
    bench_.Type(u"\b\t\r\x1B\x03\x7F");
    EXPECT_EQ(Shown(), u"[]a");
    EXPECT_EQ(bench_.Events(), (Lines{"GotFocus", "KeyPress 8", "KeyPress 9", "KeyPress 13",
                                      "KeyPress 27", "KeyPress 3", "KeyPress 127"}));
}

TEST_F(TextBoxInput, EnterEscAndTabAreRaisedAndDoNothing) {
    Fill(u"abc", 1);
    box_.SelLength(1);
    for (const Long key : {13, 27, 9}) {
        bench_.Key(key);
    }
    EXPECT_EQ(Shown(), u"a[b]c");
    EXPECT_EQ(bench_.Events(), (Lines{"GotFocus", "KeyDown 13 0", "KeyUp 13 0", "KeyDown 27 0",
                                      "KeyUp 27 0", "KeyDown 9 0", "KeyUp 9 0"}));
}

TEST_F(TextBoxInput, ArrowsStepAndShiftSelects) {
    Fill(u"abcd", 2);
    bench_.Key(VK_RIGHT);
    EXPECT_EQ(Shown(), u"abc[]d");
    bench_.Keys(VK_LEFT, 2, kShift);
    EXPECT_EQ(Shown(), u"a[bc]d");
    bench_.Keys(VK_RIGHT, 3, kShift);
    EXPECT_EQ(Shown(), u"abc[d]");
    bench_.Key(VK_RIGHT);
    EXPECT_EQ(Shown(), u"abcd[]");
    bench_.Key(VK_RIGHT);
    EXPECT_EQ(Shown(), u"abcd[]");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(TextBoxInput, AnArrowWithoutShiftGoesToThatEndOfTheSelection) {
    Fill(u"abcdef", 1);
    box_.SelLength(3);
    bench_.Key(VK_LEFT);
    EXPECT_EQ(Shown(), u"a[]bcdef");
    box_.SelLength(3);
    bench_.Key(VK_RIGHT);
    EXPECT_EQ(Shown(), u"abcd[]ef");
}

TEST_F(TextBoxInput, HomeAndEnd) {
    Fill(u"abcd", 2);
    bench_.Key(VK_END, kShift);
    EXPECT_EQ(Shown(), u"ab[cd]");
    bench_.Key(VK_HOME, kShift);
    EXPECT_EQ(Shown(), u"[ab]cd");
    bench_.Key(VK_END);
    EXPECT_EQ(Shown(), u"abcd[]");
    bench_.Key(VK_HOME);
    EXPECT_EQ(Shown(), u"[]abcd");
}

TEST_F(TextBoxInput, CtrlStepsByWords) {
    Fill(u"one two", 0);
    bench_.Key(VK_RIGHT, kCtrl);
    EXPECT_EQ(Shown(), u"one []two");
    bench_.Key(VK_RIGHT, kCtrl | kShift);
    EXPECT_EQ(Shown(), u"one [two]");
    bench_.Key(VK_LEFT, kCtrl);
    EXPECT_EQ(Shown(), u"one []two");
    bench_.Key(VK_LEFT, kCtrl);
    EXPECT_EQ(Shown(), u"[]one two");
}

TEST_F(TextBoxInput, BackspaceAndDelete) {
    Fill(u"abcdef", 3);
    bench_.Key(VK_BACK);
    EXPECT_EQ(Shown(), u"ab[]def");
    bench_.Key(VK_DELETE);
    EXPECT_EQ(Shown(), u"ab[]ef");
    EXPECT_EQ(Changes(), 2);
    box_.SelLength(1);
    bench_.Key(VK_BACK);
    EXPECT_EQ(Shown(), u"ab[]f");
    box_.SelLength(1);
    bench_.Key(VK_DELETE);
    EXPECT_EQ(Shown(), u"ab[]");
    EXPECT_EQ(Changes(), 2);
}

TEST_F(TextBoxInput, ErasingNothingIsNoChange) {
    Fill(u"a", 0);
    bench_.Key(VK_BACK);
    bench_.Key(VK_BACK, kCtrl);
    box_.SelStart(1);
    bench_.Key(VK_DELETE);
    bench_.Key(VK_DELETE, kCtrl);
    EXPECT_EQ(Shown(), u"a[]");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(TextBoxInput, CtrlWithBackspaceOrDeleteErasesToTheWordsEnds) {
    Fill(u"one two three", 7);
    bench_.Key(VK_BACK, kCtrl);
    EXPECT_EQ(Shown(), u"one [] three");
    bench_.Key(VK_DELETE, kCtrl);
    EXPECT_EQ(Shown(), u"one []three");
    EXPECT_EQ(Changes(), 2);
}

TEST_F(TextBoxInput, APairIsErasedAsAWhole) {
    Fill(u"a\U0001D11Eb", 3);
    bench_.Key(VK_BACK);
    EXPECT_EQ(Shown(), u"a[]b");
    Fill(u"a\U0001D11Eb", 1);
    bench_.Key(VK_DELETE);
    EXPECT_EQ(Shown(), u"a[]b");
}

TEST_F(TextBoxInput, CtrlASelectsAll) {
    Fill(u"abc", 1);
    bench_.Key('A', kCtrl);
    EXPECT_EQ(Shown(), u"[abc]");
    bench_.Key('A', kCtrl | kAlt);  // how some keyboards make other characters
    bench_.Key('A');                // the letter comes as typed text
    EXPECT_EQ(Shown(), u"[abc]");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(TextBoxInput, CopyCutAndPaste) {
    Fill(u"abcd", 1);
    box_.SelLength(2);
    bench_.Key('C', kCtrl);
    EXPECT_EQ(bench_.driver.ClipboardText(), u"bc");
    EXPECT_EQ(Changes(), 0);
    bench_.Key('X', kCtrl);
    EXPECT_EQ(Shown(), u"a[]d");
    EXPECT_EQ(Changes(), 1);
    bench_.Key(VK_END);
    bench_.Key('V', kCtrl);
    EXPECT_EQ(Shown(), u"adbc[]");
    EXPECT_EQ(Changes(), 1);
}

TEST_F(TextBoxInput, TheOlderKeysOfTheClipboardWork) {
    Fill(u"abcd", 1);
    box_.SelLength(2);
    bench_.Key(VK_INSERT, kCtrl);
    EXPECT_EQ(bench_.driver.ClipboardText(), u"bc");
    bench_.Key(VK_DELETE, kShift);
    EXPECT_EQ(Shown(), u"a[]d");
    bench_.Key(VK_INSERT, kShift);
    EXPECT_EQ(Shown(), u"abc[]d");
}

TEST_F(TextBoxInput, WithNothingSelectedTheClipboardStaysAsItIs) {
    bench_.driver.SetClipboardText(u"kept");
    Fill(u"abc", 1);
    bench_.Key('C', kCtrl);
    bench_.Key('X', kCtrl);
    EXPECT_EQ(bench_.driver.ClipboardText(), u"kept");
    EXPECT_EQ(Shown(), u"a[]bc");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(TextBoxInput, PastedLineEndsBecomeBlanksAndControlCharactersVanish) {
    bench_.driver.SetClipboardText(u"a\r\nb\nc\rd\x01\t\u0085e\n\r\U0001D11E");
    bench_.Key('V', kCtrl);
    EXPECT_EQ(Shown(), u"a b c de  \U0001D11E[]");
    EXPECT_EQ(Changes(), 1);
}

TEST_F(TextBoxInput, AnEmptyClipboardChangesNothing) {
    Fill(u"abc", 0);
    box_.SelLength(2);
    bench_.Key('V', kCtrl);
    EXPECT_EQ(Shown(), u"[ab]c");
    EXPECT_EQ(Changes(), 0);
}

TEST_F(TextBoxInput, ALineTakesNoMoreThan8192UnitsAndNoHalfPair) {
    Fill(std::u16string(8190, u'x'), 8190);
    bench_.driver.SetClipboardText(u"a\U0001D11E");
    bench_.Key('V', kCtrl);
    EXPECT_EQ(box_.Text().size(), 8191U);
    EXPECT_EQ(box_.Text().back(), u'a');
    bench_.Type(u"bc");
    EXPECT_EQ(box_.Text().size(), 8192U);
    EXPECT_EQ(Changes(), 2);
    box_.SelStart(0);
    box_.SelLength(2);
    bench_.Type(u"yzz");  // the first of them made room for one more
    EXPECT_EQ(box_.Text().substr(0, 3), u"yzx");
}

TEST_F(TextBoxInput, ALockedBoxSelectsAndCopiesButDoesNotChange) {
    Fill(u"abc", 0);
    box_.Locked(true);
    bench_.Key(VK_RIGHT, kShift);
    bench_.Key('C', kCtrl);
    bench_.Key(VK_DELETE);
    bench_.Key(VK_BACK);
    bench_.Key('X', kCtrl);
    bench_.Key('V', kCtrl);
    bench_.Type(u"z");
    EXPECT_EQ(bench_.driver.ClipboardText(), u"a");
    EXPECT_EQ(Shown(), u"[a]bc");
    EXPECT_EQ(Changes(), 0);
    box_.Locked(false);
    bench_.Type(u"z");
    EXPECT_EQ(Shown(), u"z[]bc");
}

TEST_F(TextBoxInput, AKeyHandlerChangesOrSwallowsTheKey) {
    Fill(u"abcd", 2);
    box_.onKeyDown = [](Long& KeyCode, Long Shift) {
        EXPECT_EQ(Shift, 0);
        KeyCode = KeyCode == VK_LEFT ? VK_RIGHT : 0;
    };
    bench_.Key(VK_LEFT);
    EXPECT_EQ(Shown(), u"abc[]d");
    bench_.Key(VK_BACK);
    EXPECT_EQ(Shown(), u"abc[]d");
    box_.onKeyPress = [](Long& KeyAscii) { KeyAscii = KeyAscii == u'x' ? u'y' : 0; };
    bench_.Type(u"xa");
    EXPECT_EQ(Shown(), u"abcy[]d");
}

TEST_F(TextBoxInput, AHandlerMayReplaceItselfAndTheText) {
    int calls = 0;
    box_.onChange = [&] {
        ++calls;
        box_.onChange = nullptr;
        box_.Text(u"other");
    };
    bench_.Type(u"a");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(Shown(), u"[]other");
}

TEST_F(TextBoxInput, APressTakesTheFocusAndPutsTheCaretIntoTheNearestGap) {
    Fill(u"abcd");
    bench_.Click({2 + 6 * 2 + 2, 10});  // a third into c
    EXPECT_EQ(bench_.windows.GetFocus(), box_.HWnd());
    EXPECT_EQ(Shown(), u"ab[]cd");
    EXPECT_EQ(bench_.Events(),
              (Lines{"GotFocus", "MouseDown 1 0 16 10", "MouseUp 1 0 16 10", "Click"}));
    bench_.Click({2 + 6 * 2 + 4, 10});  // two thirds into c
    EXPECT_EQ(Shown(), u"abc[]d");
    bench_.Click({0, 0});
    EXPECT_EQ(Shown(), u"[]abcd");
    bench_.Click({99, 19});
    EXPECT_EQ(Shown(), u"abcd[]");
}

TEST_F(TextBoxInput, ARightPressTakesTheFocusLeavesTheSelectionAndAsksForAMenu) {
    Fill(u"abcd", 1);
    box_.SelLength(2);
    const WindowProc own = bench_.windows.GetWindowProc(box_.HWnd());
    Lines menus;
    bench_.windows.SetWindowProc(box_.HWnd(), [&](const Message& message) -> Long {
        if (message.id == WM_CONTEXTMENU) {
            const Point at = PointOf(message.lParam);
            menus.push_back(std::to_string(at.x) + "," + std::to_string(at.y));
            return 0;
        }
        return WindowSystem::CallWindowProc(own, message);
    });
    bench_.Press({20, 10}, 2);
    EXPECT_EQ(bench_.windows.GetFocus(), box_.HWnd());
    EXPECT_EQ(menus, Lines{});
    bench_.Release({21, 10}, 2);
    EXPECT_EQ(menus, (Lines{"131,80"}));  // the box stands at 110, 70 on the screen
    EXPECT_EQ(Shown(), u"a[bc]d");
    EXPECT_EQ(bench_.Events(), (Lines{"GotFocus", "MouseDown 2 0 20 10", "MouseUp 2 0 21 10"}));
}

TEST_F(TextBoxInput, DraggingSelectsFromThePressOn) {
    Fill(u"abcdef");
    bench_.Press(At(4));
    bench_.Move(At(2));
    EXPECT_EQ(Shown(), u"ab[cd]ef");
    bench_.Move(At(5));
    EXPECT_EQ(Shown(), u"abcd[e]f");
    bench_.Move({-50, -50});
    EXPECT_EQ(Shown(), u"[abcd]ef");
    bench_.Release({-50, -50});
    bench_.Move(At(5));  // no button is held
    EXPECT_EQ(Shown(), u"[abcd]ef");
}

TEST_F(TextBoxInput, APressWithShiftExtendsTheSelection) {
    Fill(u"abcdef", 1);
    bench_.Press(At(4), 1, kShift);
    bench_.Release(At(4));
    EXPECT_EQ(Shown(), u"a[bcd]ef");
}

TEST_F(TextBoxInput, ADoubleClickSelectsTheWordUnderThePointer) {
    Fill(u"one two three");
    bench_.DoubleClick({2 + 6 * 6 + 5, 10});  // the right part of the last letter of "two"
    EXPECT_EQ(Shown(), u"one [two] three");
    EXPECT_EQ(bench_.Events(), (Lines{"GotFocus", "MouseDown 1 0 43 10", "MouseUp 1 0 43 10",
                                      "Click", "DblClick", "MouseUp 1 0 43 10"}));
    bench_.Move({60, 10});
    EXPECT_EQ(Shown(), u"one [two] three");
}

TEST_F(TextBoxInput, TheMouseNeverPartsAPairOrALetterFromItsMarks) {
    Fill(u"\U0001D11Ee\u0301");  // 12 pixels each
    bench_.Click({2 + 5, 10});
    EXPECT_EQ(Shown(), u"[]\U0001D11Ee\u0301");
    bench_.Click({2 + 7, 10});
    EXPECT_EQ(Shown(), u"\U0001D11E[]e\u0301");
    bench_.Click({2 + 17, 10});
    EXPECT_EQ(Shown(), u"\U0001D11E[]e\u0301");
    bench_.Click({2 + 19, 10});
    EXPECT_EQ(Shown(), u"\U0001D11Ee\u0301[]");
}

TEST_F(TextBoxInput, AlongScrolledTextPressesFindWhatIsShown) {
    Fill(std::u16string(30, u'x'), 30);
    // 180 pixels of text and one of the caret in 96: the view begins at 85. The point 2 + 5 is the
    // pixel 90, at the gap 15.
    bench_.Click({2 + 5, 10});
    EXPECT_EQ(box_.SelStart(), 15);
    bench_.Drag({50, 10}, {-40, 10});  // 2 + 5 - 47 = -40 is 47 pixels before
    EXPECT_EQ(box_.SelStart(), 7);     // 85 - 42 = 43 is nearest to 42
}

TEST_F(TextBoxInput, TheWheelGoesOnToWhatTheLineLiesOn) {
    Long delta = 0;
    bench_.windows.SetWindowProc(bench_.window.HWnd(), [&](const Message& message) -> Long {
        delta += message.id == WM_MOUSEWHEEL ? message.wParam / 65536 : 0;
        return 0;
    });
    bench_.Turn(2);
    EXPECT_EQ(delta, 240);
}

}  // namespace
}  // namespace platform
