// A single-line text box under the mouse. Its text begins 2 pixels from the left edge, so that the
// gap in front of unit n lies at 2 + 6 n.
#include <gtest/gtest.h>

#include "platform/base/keys.h"
#include "tests/unit/support/text_box_bench.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

class TextBoxMouse : public ::testing::Test {
  protected:
    void Fill(std::u16string_view text, Long caret = 0) { bench_.Fill(text, caret); }
    std::u16string Shown() const { return bench_.Shown(); }
    static constexpr Point At(Long gap) { return {2 + 6 * gap, 10}; }

    support::TextBoxBench bench_{TextBox::Kind::kLine, {100, 20}};
    TextBox& box_ = bench_.box;
};

TEST_F(TextBoxMouse, APressTakesTheFocusAndPutsTheCaretIntoTheNearestGap) {
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

TEST_F(TextBoxMouse, ExactlyBetweenTwoGapsThePressGoesToTheFirst) {
    Fill(u"abcd");
    bench_.Click({2 + 6 * 2 + 3, 10});
    EXPECT_EQ(Shown(), u"ab[]cd");
    bench_.Click(At(3));
    EXPECT_EQ(Shown(), u"abc[]d");
}

TEST_F(TextBoxMouse, ExactlyBetweenTwoLettersThePointerIsOnTheSecond) {
    Fill(u"one two");
    bench_.DoubleClick(At(4));
    EXPECT_EQ(Shown(), u"one [two]");
    bench_.DoubleClick(At(3));
    EXPECT_EQ(Shown(), u"one[ ]two");
    bench_.DoubleClick({2 + 6 * 3 - 1, 10});
    EXPECT_EQ(Shown(), u"[one] two");
}

TEST_F(TextBoxMouse, ARightPressTakesTheFocusLeavesTheSelectionAndAsksForAMenu) {
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

TEST_F(TextBoxMouse, DraggingSelectsFromThePressOn) {
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

TEST_F(TextBoxMouse, APressWithShiftExtendsTheSelection) {
    Fill(u"abcdef", 1);
    bench_.Press(At(4), 1, kShiftBit);
    bench_.Release(At(4));
    EXPECT_EQ(Shown(), u"a[bcd]ef");
}

TEST_F(TextBoxMouse, ADoubleClickSelectsTheWordUnderThePointer) {
    Fill(u"one two three");
    bench_.DoubleClick({2 + 6 * 6 + 5, 10});  // the right part of the last letter of "two"
    EXPECT_EQ(Shown(), u"one [two] three");
    EXPECT_EQ(bench_.Events(), (Lines{"GotFocus", "MouseDown 1 0 43 10", "MouseUp 1 0 43 10",
                                      "Click", "DblClick", "MouseUp 1 0 43 10"}));
    bench_.Move({60, 10});
    EXPECT_EQ(Shown(), u"one [two] three");
}

TEST_F(TextBoxMouse, TheMouseNeverPartsAPairOrALetterFromItsMarks) {
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

TEST_F(TextBoxMouse, AlongScrolledTextPressesFindWhatIsShown) {
    Fill(std::u16string(30, u'x'), 30);
    // 180 pixels of text and one of the caret in 96: the view begins at 85. The point 2 + 5 is the
    // pixel 90, at the gap 15.
    bench_.Click({2 + 5, 10});
    EXPECT_EQ(box_.SelStart(), 15);
    bench_.Drag({50, 10}, {-40, 10});  // 2 + 5 - 47 = -40 is 47 pixels before
    EXPECT_EQ(box_.SelStart(), 7);     // 85 - 42 = 43 is nearest to 42
}

TEST_F(TextBoxMouse, TheWheelGoesOnToWhatTheLineLiesOn) {
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
