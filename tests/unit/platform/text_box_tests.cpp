// What a text box shows and holds: properties, drawing, and the page with its lines.
#include "platform/widgets/text_box.h"

#include <gtest/gtest.h>

#include "platform/base/keys.h"
#include "tests/unit/support/text_box_bench.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
using support::kInk;
using support::kPaper;
using support::TextBoxBench;

// A line of 100 x 20: its 13 pixels of text begin at 2, 3. Each unit but a blank is a block that
// fills the columns 1 to 4 and the rows 3 to 9 of its 6 x 13 pixels.
class TextBoxLine : public ::testing::Test {
  protected:
    TextBoxBench bench_{TextBox::Kind::kLine, {100, 20}};
    TextBox& box_ = bench_.box;
};

TEST_F(TextBoxLine, HoldsItsTextAndTellsOfEveryWrite) {
    bench_.Events();
    box_.Text(u"abc");
    EXPECT_EQ(box_.Text(), u"abc");
    box_.Text(u"abc");
    EXPECT_EQ(bench_.Events(), (Lines{"Change", "Change"}));
    EXPECT_FALSE(box_.MultiLine());
    EXPECT_FALSE(box_.Locked());
    EXPECT_EQ(box_.LineCount(), 1);
}

TEST_F(TextBoxLine, AnAmpersandIsShown) {
    box_.Text(u"&a");
    EXPECT_EQ(bench_.Pixel({2 + 1, 6}), kInk);
    EXPECT_EQ(bench_.Pixel({2 + 6 + 1, 6}), kInk);
}

TEST_F(TextBoxLine, SelectionByNumbersIsBroughtInside) {
    box_.Text(u"abcdef");
    box_.SelStart(2);
    box_.SelLength(3);
    EXPECT_EQ(box_.SelText(), u"cde");
    EXPECT_EQ(box_.SelStart(), 2);
    box_.SelLength(99);
    EXPECT_EQ(box_.SelLength(), 4);
    box_.SelLength(-1);
    EXPECT_EQ(box_.SelLength(), 0);
    box_.SelStart(99);
    EXPECT_EQ(box_.SelStart(), 6);
    box_.SelLength(2147483647);
    EXPECT_EQ(box_.SelLength(), 0);
    box_.SelStart(-5);
    EXPECT_EQ(box_.SelStart(), 0);
}

TEST_F(TextBoxLine, SelTextReplacesAndTells) {
    box_.Text(u"abcdef");
    box_.SelStart(2);
    box_.SelLength(3);
    bench_.Events();
    box_.SelText(u"X");
    EXPECT_EQ(box_.Text(), u"abXf");
    EXPECT_EQ(box_.SelStart(), 3);
    EXPECT_EQ(box_.SelLength(), 0);
    EXPECT_EQ(bench_.Events(), (Lines{"Change"}));
}

TEST_F(TextBoxLine, ShowsItsTextTwoPixelsInAndInTheMiddle) {
    box_.Text(u"a");
    EXPECT_EQ(bench_.Pixel({3, 6}), kInk);  // 2 + 1, 3 + 3
    EXPECT_EQ(bench_.Pixel({2, 6}), kPaper);
    EXPECT_EQ(bench_.Pixel({3, 5}), kPaper);
    EXPECT_EQ(bench_.Pixel({6, 12}), kInk);
    EXPECT_EQ(bench_.Pixel({7, 12}), kPaper);
    EXPECT_EQ(bench_.Pixel({6, 13}), kPaper);
}

TEST_F(TextBoxLine, TheSelectionHasTheColoursExchanged) {
    box_.Text(u"abc");
    box_.SelStart(1);
    box_.SelLength(1);
    EXPECT_EQ(bench_.Pixel({7, 6}), kPaper);  // the last column of a
    EXPECT_EQ(bench_.Pixel({8, 3}), kInk);    // b's cell from its corner on
    EXPECT_EQ(bench_.Pixel({9, 6}), kPaper);  // b's block
    EXPECT_EQ(bench_.Pixel({13, 15}), kInk);
    EXPECT_EQ(bench_.Pixel({14, 3}), kPaper);  // c's cell
    EXPECT_EQ(bench_.Pixel({8, 2}), kPaper);   // above and below
    EXPECT_EQ(bench_.Pixel({8, 16}), kPaper);
}

TEST_F(TextBoxLine, ColoursAndFontAreDrawnAtOnce) {
    box_.Text(u"a");
    box_.ForeColor(1);
    EXPECT_EQ(bench_.Pixel({3, 6}), 1);
    box_.BackColor(2);
    EXPECT_EQ(bench_.Pixel({0, 0}), 2);
    EXPECT_EQ(bench_.Pixel({99, 19}), 2);
}

TEST_F(TextBoxLine, TheCaretIsAThinLineWhileTheBoxHasTheFocus) {
    box_.Text(u"ab");
    box_.SelStart(1);
    EXPECT_EQ(bench_.Pixel({8, 3}), kPaper);
    bench_.windows.SetFocus(box_.HWnd());
    for (Long y = 3; y < 16; ++y) {
        EXPECT_EQ(bench_.Pixel({8, y}), kInk) << y;
    }
    EXPECT_EQ(bench_.Pixel({8, 2}), kPaper);
    EXPECT_EQ(bench_.Pixel({8, 16}), kPaper);
    EXPECT_EQ(bench_.Pixel({9, 4}), kPaper);
    bench_.windows.SetFocus(0);
    EXPECT_EQ(bench_.Pixel({8, 3}), kPaper);
}

TEST_F(TextBoxLine, AHiddenCaretComesBackWithTheFocus) {
    bench_.windows.SetFocus(box_.HWnd());
    EXPECT_EQ(bench_.Pixel({2, 3}), kInk);
    box_.HideCaret();
    EXPECT_EQ(bench_.Pixel({2, 3}), kPaper);
    bench_.Click({5, 5});
    EXPECT_EQ(bench_.Pixel({2, 3}), kPaper);
    bench_.windows.SetFocus(0);
    bench_.windows.SetFocus(box_.HWnd());
    EXPECT_EQ(bench_.Pixel({2, 3}), kInk);
    box_.onGotFocus = [&] { box_.HideCaret(); };
    bench_.windows.SetFocus(0);
    bench_.windows.SetFocus(box_.HWnd());
    EXPECT_EQ(bench_.Pixel({2, 3}), kPaper);
}

TEST_F(TextBoxLine, ALongTextScrollsSoThatTheCaretShows) {
    bench_.windows.SetFocus(box_.HWnd());
    box_.Text(std::u16string(30, u'x'));  // 180 pixels in 96
    EXPECT_EQ(bench_.Pixel({3, 6}), kInk);
    bench_.Key(VK_END);
    // The caret at 180 is the last column of the text's area, 97; the view begins at 85, 1 pixel
    // into a unit, whose block it so begins with.
    EXPECT_EQ(bench_.Pixel({97, 3}), kInk);
    EXPECT_EQ(bench_.Pixel({96, 3}), kPaper);
    EXPECT_EQ(bench_.Pixel({2, 6}), kInk);
    EXPECT_EQ(bench_.Pixel({6, 6}), kPaper);
    EXPECT_EQ(bench_.Pixel({1, 6}), kPaper);  // nothing is drawn outside of the area
    EXPECT_EQ(bench_.Pixel({98, 6}), kPaper);
    bench_.Keys(VK_LEFT, 3);  // to 162, still in view: 79 from the left
    EXPECT_EQ(bench_.Pixel({79, 3}), kInk);
    bench_.Key(VK_HOME);
    EXPECT_EQ(bench_.Pixel({2, 3}), kInk);
}

TEST_F(TextBoxLine, NoRoomStaysEmptyAtTheRightWhenTheTextGetsShorter) {
    bench_.windows.SetFocus(box_.HWnd());
    box_.Text(std::u16string(30, u'x'));
    bench_.Key(VK_END);
    bench_.Keys(VK_BACK, 10);  // 120 pixels and the caret: the view begins at 25
    EXPECT_EQ(bench_.Pixel({97, 3}), kInk);
    EXPECT_EQ(bench_.Pixel({2, 6}), kInk);
    bench_.Keys(VK_BACK, 10);  // 60: all of it shows
    EXPECT_EQ(bench_.Pixel({62, 3}), kInk);
    EXPECT_EQ(bench_.Pixel({3, 6}), kInk);
    EXPECT_EQ(bench_.Pixel({2, 6}), kPaper);
}

TEST_F(TextBoxLine, ABoxThatGetsWiderShowsMoreOfTheText) {
    box_.Text(std::u16string(30, u'x'));
    box_.SelStart(30);
    EXPECT_EQ(bench_.Pixel({2, 6}), kInk);  // scrolled by 85
    box_.Width(200);
    EXPECT_EQ(bench_.Pixel({2, 6}), kPaper);
    EXPECT_EQ(bench_.Pixel({3, 6}), kInk);
    EXPECT_EQ(box_.Face().GetSize(), (Size{200, 20}));
}

TEST_F(TextBoxLine, ABoxWithoutRoomIsHarmless) {
    box_.Text(u"abc");
    for (const Size size : {Size{0, 0}, Size{1, 1}, Size{4, 5}, Size{5, 40}}) {
        box_.Move(0, 0, size.width, size.height);
        bench_.Click({0, 0});
        bench_.Key(VK_END);
        EXPECT_EQ(box_.SelStart(), 3);
    }
}

// A page of 64 x 43: ten units wide and three lines high.
class TextBoxPage : public ::testing::Test {
  protected:
    static std::u16string Numbered(int lines) {
        std::u16string text;
        for (int i = 0; i < lines; ++i) {
            text += (i == 0 ? u"" : u"\r\n") + std::u16string(1, static_cast<char16_t>(u'a' + i));
        }
        return text;
    }
    Long Send(Long id, Long lParam = 0) {
        return bench_.windows.SendMessage(box_.HWnd(), id, 0, lParam);
    }

    TextBoxBench bench_{TextBox::Kind::kPage, {64, 43}};
    TextBox& box_ = bench_.box;
};

TEST_F(TextBoxPage, CountsTheLinesAsWrapped) {
    EXPECT_EQ(box_.LineCount(), 1);
    box_.Text(u"one two three\r\n\r\nfour");  // "one two", "three", "", "four"
    EXPECT_EQ(box_.LineCount(), 4);
    EXPECT_EQ(Send(EM_GETLINECOUNT), 4);
    box_.Width(100);
    EXPECT_EQ(box_.LineCount(), 3);
    EXPECT_TRUE(box_.MultiLine());
}

TEST_F(TextBoxPage, ScrollsByLinesAsFarAsThereIsTextToFillIt) {
    box_.Text(Numbered(8));
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    EXPECT_EQ(Send(EM_LINESCROLL, 2), 1);
    EXPECT_EQ(box_.FirstVisibleLine(), 2);
    box_.LineScroll(99);
    EXPECT_EQ(box_.FirstVisibleLine(), 5);
    box_.LineScroll(-1);
    EXPECT_EQ(box_.FirstVisibleLine(), 4);
    Send(EM_LINESCROLL, -2147483647 - 1);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(2147483647);
    EXPECT_EQ(box_.FirstVisibleLine(), 5);
    box_.Text(Numbered(3));
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(1);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(TextBoxPage, ShowsWholeLinesFromTheFirstVisibleOneOn) {
    box_.Height(50);  // room for three lines and a half
    box_.Text(u"a\nbb\nccc\ndddd\neeeee");
    // The second unit's block begins at 2 + 6 + 1; line n's at 2 + 13 n + 3.
    EXPECT_EQ(bench_.Pixel({9, 5}), kPaper);
    EXPECT_EQ(bench_.Pixel({9, 18}), kInk);
    EXPECT_EQ(bench_.Pixel({15, 31}), kInk);
    EXPECT_EQ(bench_.Pixel({3, 44}), kPaper);  // of the fourth no half is shown
    box_.LineScroll(1);
    EXPECT_EQ(bench_.Pixel({9, 5}), kInk);
    EXPECT_EQ(bench_.Pixel({15, 5}), kPaper);
    EXPECT_EQ(bench_.Pixel({21, 31}), kInk);
}

TEST_F(TextBoxPage, KeysScroll) {
    box_.Text(Numbered(10));
    const auto after = [&](Long key) {
        bench_.Key(key);
        return box_.FirstVisibleLine();
    };
    EXPECT_EQ(after(VK_DOWN), 1);
    EXPECT_EQ(after(VK_NEXT), 4);
    EXPECT_EQ(after(VK_NEXT), 7);
    EXPECT_EQ(after(VK_DOWN), 7);
    EXPECT_EQ(after(VK_UP), 6);
    EXPECT_EQ(after(VK_PRIOR), 3);
    EXPECT_EQ(after(VK_END), 7);
    EXPECT_EQ(after(VK_HOME), 0);
    box_.onKeyDown = [](Long& KeyCode, Long) { KeyCode = 0; };
    EXPECT_EQ(after(VK_DOWN), 0);
}

TEST_F(TextBoxPage, TheWheelScrollsThreeLinesOrWhatItIsTold) {
    box_.Text(Numbered(20));
    Long reached = 0;
    bench_.windows.SetWindowProc(bench_.window.HWnd(), [&](const Message& message) -> Long {
        reached += message.id == WM_MOUSEWHEEL ? 1 : 0;
        return 0;
    });
    bench_.Turn(-2);
    EXPECT_EQ(box_.FirstVisibleLine(), 6);
    bench_.Turn(1);
    EXPECT_EQ(box_.FirstVisibleLine(), 3);
    box_.LinesPerNotch(0);
    bench_.Turn(-1);
    EXPECT_EQ(box_.FirstVisibleLine(), 3);
    EXPECT_EQ(reached, 0);
}

TEST_F(TextBoxPage, CannotBeChangedByTheUser) {
    box_.Text(u"abc");
    box_.Locked(false);
    EXPECT_TRUE(box_.Locked());
    bench_.driver.SetClipboardText(u"paste");
    bench_.Key('A', kCtrlBit);
    bench_.Key('X', kCtrlBit);
    EXPECT_EQ(bench_.driver.ClipboardText(), u"abc");  // a cut is a copy here
    bench_.driver.SetClipboardText(u"paste");
    bench_.Key('V', kCtrlBit);
    bench_.Key(VK_DELETE);
    bench_.Type(u"x");
    EXPECT_EQ(box_.Text(), u"abc");
}

TEST_F(TextBoxPage, TheMouseSelectsOverLines) {
    box_.Text(u"first\r\nsecond\r\nthird");
    bench_.Drag({2 + 6 * 3, 8}, {2 + 6 * 2, 34});  // line 0, gap 3, to line 2, gap 2
    EXPECT_EQ(box_.SelText(), u"st\r\nsecond\r\nth");
    bench_.Key('C', kCtrlBit);
    EXPECT_EQ(bench_.driver.ClipboardText(), u"st\r\nsecond\r\nth");
    EXPECT_EQ(bench_.Pixel({2 + 6 * 3 - 1, 2}), kPaper);
    EXPECT_EQ(bench_.Pixel({2 + 6 * 3, 2}), kInk);
    EXPECT_EQ(bench_.Pixel({2 + 6 * 5, 2}), kPaper);  // right of the line's end
    EXPECT_EQ(bench_.Pixel({2, 15}), kInk);
    EXPECT_EQ(bench_.Pixel({2 + 6 * 2 - 1, 28}), kInk);
    box_.HideCaret();
    EXPECT_EQ(bench_.Pixel({2 + 6 * 2, 28}), kPaper);
}

TEST_F(TextBoxPage, APressBelowTheTextIsOnItsLastLineAndOnePastALineAtItsEnd) {
    box_.Text(u"ab\r\ncd");
    bench_.Click({60, 40});
    EXPECT_EQ(box_.SelStart(), 6);
    bench_.Click({60, 5});
    EXPECT_EQ(box_.SelStart(), 2);
    bench_.Press({2, 18});
    bench_.Move({-10, -10});
    EXPECT_EQ(box_.SelText(), u"ab\r\n");
}

TEST_F(TextBoxPage, PressesCountFromTheFirstVisibleLine) {
    box_.Text(Numbered(8));
    box_.LineScroll(4);
    bench_.DoubleClick({4, 18});  // the second line in view
    EXPECT_EQ(box_.SelText(), u"f");
    EXPECT_EQ(box_.SelStart(), 15);  // five lines of three units lie before
}

TEST_F(TextBoxPage, AChangeOfWidthKeepsTheTopOfTheViewAtItsPlaceInTheText) {
    std::u16string text;
    for (int i = 0; i < 20; ++i) {
        text += u"wordword ";  // ten units: one to a line
    }
    box_.Text(text);
    EXPECT_EQ(box_.LineCount(), 20);
    box_.LineScroll(10);
    box_.Width(4 + 20 * 6);  // two to a line
    EXPECT_EQ(box_.LineCount(), 10);
    EXPECT_EQ(box_.FirstVisibleLine(), 5);
    box_.Height(4 + 13 * 8);  // eight lines of ten in view
    EXPECT_EQ(box_.FirstVisibleLine(), 2);
}

TEST_F(TextBoxPage, ANewTextBeginsAtItsTop) {
    box_.Text(Numbered(10));
    box_.LineScroll(5);
    box_.SelStart(4);
    box_.Text(Numbered(10));
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    EXPECT_EQ(box_.SelStart(), 0);
    box_.LineScroll(7);
    bench_.Key('A', kCtrlBit);
    box_.SelText(u"x");  // a shorter text takes the view along
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(TextBoxPage, ATextOfMegabytesIsScrolledFromEndToEnd) {
    std::u16string text;
    for (int i = 0; i < 50'000; ++i) {
        text += u"some words of a line that is wrapped\r\n";
    }
    box_.Text(text);
    // "some words", "of a line", "that is", "wrapped" and the empty line at the end
    EXPECT_EQ(box_.LineCount(), 200'001);
    bench_.Keys(VK_NEXT, 1000);
    EXPECT_EQ(box_.FirstVisibleLine(), 3000);
    bench_.Key(VK_END);
    EXPECT_EQ(box_.FirstVisibleLine(), 199'998);
}

}  // namespace
}  // namespace platform
