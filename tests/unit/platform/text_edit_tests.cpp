// Caret, selection and editing of a text, without a window.
#include "platform/widgets/text_edit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

TextEdit With(std::u16string_view text) {
    TextEdit edit;
    edit.Text(text);
    return edit;
}

using Places = std::vector<std::size_t>;

TEST(TextEdit, AFreshTextHasItsCaretAtTheStart) {
    TextEdit edit = With(u"one");
    edit.MoveTo(2, true);
    edit.Text(u"two");
    EXPECT_EQ(edit.Caret(), 0U);
    EXPECT_FALSE(edit.HasSelection());
    EXPECT_EQ(edit.Text(), u"two");
}

TEST(TextEdit, TheSelectionLiesBetweenTheCaretAndWhereItBegan) {
    TextEdit edit = With(u"abcdef");
    edit.MoveTo(4, false);
    edit.MoveTo(1, true);
    EXPECT_EQ(edit.Caret(), 1U);
    EXPECT_EQ(edit.SelStart(), 1U);
    EXPECT_EQ(edit.SelEnd(), 4U);
    EXPECT_EQ(edit.Selected(), u"bcd");
    edit.MoveTo(6, true);  // past where it began
    EXPECT_EQ(edit.Selected(), u"ef");
    edit.MoveTo(6, false);
    EXPECT_FALSE(edit.HasSelection());
}

TEST(TextEdit, PlacesPastTheEndAreTheEnd) {
    TextEdit edit = With(u"ab");
    edit.MoveTo(99, false);
    EXPECT_EQ(edit.Caret(), 2U);
    EXPECT_EQ(edit.After(99), 2U);
    EXPECT_EQ(edit.Before(99), 1U);
    EXPECT_EQ(edit.WordAfter(99), 2U);
    EXPECT_EQ(edit.WordBefore(99), 0U);
    EXPECT_EQ(edit.Before(0), 0U);
    EXPECT_EQ(edit.CharacterAt(99), 2U);
}

TEST(TextEdit, NothingPartsASurrogatePair) {
    TextEdit edit = With(u"a\U0001D11Eb");  // places 0, 1, 3, 4
    edit.MoveTo(2, false);
    EXPECT_EQ(edit.Caret(), 1U);
    edit.Select(2, 4);
    EXPECT_EQ(edit.Selected(), u"\U0001D11Eb");
    EXPECT_EQ(edit.After(1), 3U);
    EXPECT_EQ(edit.Before(3), 1U);
    EXPECT_EQ(edit.CharacterAt(2), 1U);
}

TEST(TextEdit, BytesThatAreNoTextAreCharactersOfTheirOwn) {
    TextEdit edit = With(std::u16string{u'a', 0xDCE9, 0xDCE8, u'b'});
    EXPECT_EQ(edit.After(1), 2U);
    EXPECT_EQ(edit.Before(3), 2U);
    edit.MoveTo(2, false);
    EXPECT_EQ(edit.Caret(), 2U);
}

TEST(TextEdit, TwoHalvesThatMeetByAnErasureLeaveNoCaretBetweenThem) {
    TextEdit edit = With(std::u16string{0xD834, u'x', 0xDD1E});
    edit.Select(1, 2);
    EXPECT_TRUE(edit.Erase(2));
    EXPECT_EQ(edit.Text(), u"\U0001D11E");
    EXPECT_EQ(edit.Caret(), 0U);
    EXPECT_FALSE(edit.HasSelection());
}

TEST(TextEdit, ALetterWithItsCombiningMarksIsOneStep) {
    const TextEdit edit = With(u"xe\u0301\u036Fy");  // x 0, e with two marks 1 to 4, y 4
    EXPECT_EQ(edit.After(1), 4U);
    EXPECT_EQ(edit.Before(4), 1U);
    EXPECT_EQ(edit.CharacterAt(3), 1U);
    const TextEdit next = With(u"e\u02FFe\u0370");  // just outside of the marks' block
    EXPECT_EQ(next.After(0), 1U);
    EXPECT_EQ(next.After(2), 3U);
}

TEST(TextEdit, WordStepsGoToTheStartsOfWords) {
    const TextEdit edit = With(u"one  two-three ");
    Places forward;
    for (std::size_t at = 0; at < 15;) {
        at = edit.WordAfter(at);
        forward.push_back(at);
    }
    EXPECT_EQ(forward, (Places{5, 8, 9, 15}));
    Places back;
    for (std::size_t at = 15; at > 0;) {
        at = edit.WordBefore(at);
        back.push_back(at);
    }
    EXPECT_EQ(back, (Places{9, 8, 5, 0}));
}

TEST(TextEdit, AWordStepFromAWordsMiddleGoesToItsEnds) {
    const TextEdit edit = With(u"hello world");
    EXPECT_EQ(edit.WordBefore(8), 6U);
    EXPECT_EQ(edit.WordAfter(2), 6U);
    EXPECT_EQ(edit.WordAfter(5), 6U);  // on the blank
}

TEST(TextEdit, TheWordAroundAUnitIsSelectedWhole) {
    TextEdit edit = With(u"Don't stop, \u65E5\u672C\r\nnow");
    edit.SelectWordAt(2);
    EXPECT_EQ(edit.Selected(), u"Don't");
    EXPECT_EQ(edit.Caret(), 5U);
    edit.SelectWordAt(5);
    EXPECT_EQ(edit.Selected(), u" ");
    edit.SelectWordAt(9);
    EXPECT_EQ(edit.Selected(), u"stop");
    edit.SelectWordAt(10);
    EXPECT_EQ(edit.Selected(), u",");
    edit.SelectWordAt(13);
    EXPECT_EQ(edit.Selected(), u"\u65E5\u672C");
    edit.SelectWordAt(14);  // a line end is no word
    EXPECT_EQ(edit.Selected(), u"");
    EXPECT_EQ(edit.Caret(), 14U);
    edit.SelectWordAt(99);
    EXPECT_EQ(edit.Selected(), u"");
    EXPECT_EQ(edit.Caret(), 19U);
}

TEST(TextEdit, ReplacingPutsTheCaretBehindTheNewText) {
    TextEdit edit = With(u"abcd");
    edit.Select(3, 1);
    edit.Replace(u"XYZ");
    EXPECT_EQ(edit.Text(), u"aXYZd");
    EXPECT_EQ(edit.Caret(), 4U);
    edit.Replace(u"-");
    EXPECT_EQ(edit.Text(), u"aXYZ-d");
    EXPECT_EQ(edit.Caret(), 5U);
}

TEST(TextEdit, ErasingTakesTheSelectionElseWhatLiesUpToAPlace) {
    TextEdit edit = With(u"abcdef");
    edit.MoveTo(2, false);
    EXPECT_TRUE(edit.Erase(4));
    EXPECT_EQ(edit.Text(), u"abef");
    EXPECT_TRUE(edit.Erase(1));
    EXPECT_EQ(edit.Text(), u"aef");
    EXPECT_EQ(edit.Caret(), 1U);
    edit.Select(1, 3);
    EXPECT_TRUE(edit.Erase(0));  // the place does not matter then
    EXPECT_EQ(edit.Text(), u"a");
    EXPECT_FALSE(edit.Erase(1));
    EXPECT_EQ(edit.Text(), u"a");
}

TEST(TextEdit, UndoTakesWhatWasTypedInOneGoBackAndBringsItAgain) {
    TextEdit edit = With(u"ad");
    EXPECT_FALSE(edit.Undo());
    edit.MoveTo(1, false);
    edit.Replace(u"b");
    edit.Replace(u"c");
    EXPECT_TRUE(edit.Undo());
    EXPECT_EQ(edit.Text(), u"ad");
    EXPECT_EQ(edit.Caret(), 1U);
    EXPECT_FALSE(edit.HasSelection());
    EXPECT_TRUE(edit.Undo());
    EXPECT_EQ(edit.Text(), u"abcd");
    EXPECT_EQ(edit.Selected(), u"bc");
    edit.MoveTo(3, false);
    edit.Replace(u"x");  // what has been undone does not grow
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"abcd");
}

TEST(TextEdit, UndoTakesBackWhatWasErasedInOneGo) {
    TextEdit edit = With(u"abcdef");
    edit.MoveTo(3, false);
    edit.Erase(2);  // c, as Backspace does
    edit.Erase(1);  // b
    edit.Erase(2);  // d, as Del does
    EXPECT_EQ(edit.Text(), u"aef");
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"abcdef");
    EXPECT_EQ(edit.Selected(), u"bcd");
}

TEST(TextEdit, UndoTakesOnlyTheLastChangeBack) {
    TextEdit edit = With(u"abcdef");
    edit.Replace(u"x");
    edit.MoveTo(4, false);
    edit.Replace(u"y");
    EXPECT_EQ(edit.Text(), u"xabcydef");
    edit.Erase(4);  // the y again: another kind of change
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"xabcydef");
    edit.Select(1, 3);
    edit.Replace(u"Z");
    edit.Replace(u"Z");  // typed on
    edit.MoveTo(7, false);
    edit.Erase(7);  // nothing
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"xabcydef");
    EXPECT_EQ(edit.Selected(), u"ab");
}

TEST(TextEdit, AnotherTextCannotBeUndone) {
    TextEdit edit = With(u"a");
    edit.Replace(u"b");
    edit.Text(u"c");
    EXPECT_FALSE(edit.Undo());
    edit.Replace(u"d");
    edit.ForgetChanges();
    EXPECT_FALSE(edit.Undo());
    EXPECT_EQ(edit.Text(), u"dc");
}

}  // namespace
}  // namespace platform
