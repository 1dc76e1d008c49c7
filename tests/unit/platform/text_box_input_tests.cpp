// A single-line text box under keys, typed text and the clipboard.
#include <gtest/gtest.h>

#include "platform/base/keys.h"
#include "tests/unit/support/text_box_bench.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
constexpr Long kShift = kShiftBit;
constexpr Long kCtrl = kCtrlBit;
constexpr Long kAlt = kAltBit;

class TextBoxInput : public ::testing::Test {
  protected:
    void Fill(std::u16string_view text, Long caret = 0) { bench_.Fill(text, caret); }
    std::u16string Shown() const { return bench_.Shown(); }
    int Changes() { return bench_.Changes(); }

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

}  // namespace
}  // namespace platform
