// Labels and picture boxes. A unit of text is 6 x 13 pixels; its block fills the columns 1 to 4 and
// the rows 3 to 9 of these.
#include "platform/widgets/label.h"

#include <gtest/gtest.h>

#include "platform/widgets/picture_box.h"
#include "tests/unit/support/screen_driver.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

class Labels : public ::testing::Test {
  protected:
    Labels() {
        window_.Visible(true);
        box_.BackColor(1);
        label_.ForeColor(2);
        label_.BackColor(3);
        box_.Observe(Into("box "));
        label_.Observe(Into("label "));
    }
    Widget::Observer Into(const std::string& name) {
        return [this, name](const std::string& event, const std::string&) {
            events_.push_back(name + event);
        };
    }
    // Points of the window.
    void Button(Point at, bool down, Long button = 1) {
        windows_.Deliver(ButtonChanged{at, button, down});
    }
    Lines Events() { return std::exchange(events_, {}); }
    Colour Pixel(Point at) const { return label_.Face().GetPixel(at); }

    support::ScreenDriver driver_;
    WindowSystem windows_{driver_};
    Widget window_{windows_, 0, {0, 0, 200, 200}};
    PictureBox box_{windows_, window_.HWnd(), {10, 10, 110, 110}};
    Label label_{windows_, box_.HWnd(), {5, 5, 41, 31}};
    Lines events_;
};

TEST_F(Labels, ShowItsCaptionOnWhatItsParentShows) {
    label_.Caption(u"a");
    EXPECT_EQ(label_.Caption(), u"a");
    EXPECT_EQ(Pixel({1, 3}), 2);
    EXPECT_EQ(Pixel({4, 9}), 2);
    EXPECT_EQ(Pixel({0, 3}), 1);
    EXPECT_EQ(Pixel({5, 10}), 1);
    label_.ForeColor(4);
    EXPECT_EQ(Pixel({1, 3}), 4);
}

TEST_F(Labels, AnAmpersandIsShown) {
    label_.AutoSize(true);
    label_.Caption(u"a&b &c");  // 36 pixels: exactly the label's width
    EXPECT_EQ(label_.Height(), 13);
    EXPECT_EQ(Pixel({7, 3}), 2);
    EXPECT_EQ(Pixel({34, 3}), 2);
    label_.Caption(u"a&b &cd");
    EXPECT_EQ(label_.Height(), 26);
}

TEST_F(Labels, OpaqueOnesShowTheirOwnBackColour) {
    label_.Caption(u"a");
    EXPECT_FALSE(label_.Opaque());
    label_.Opaque(true);
    EXPECT_EQ(Pixel({0, 0}), 3);
    EXPECT_EQ(Pixel({1, 3}), 2);
    label_.BackColor(5);
    EXPECT_EQ(Pixel({35, 25}), 5);
}

TEST_F(Labels, BreakTheirCaptionBetweenWords) {
    label_.Caption(u"aaa bbb");  // six units fit
    EXPECT_EQ(Pixel({1, 3}), 2);
    EXPECT_EQ(Pixel({25, 3}), 1);
    EXPECT_EQ(Pixel({1, 16}), 2);
    EXPECT_EQ(Pixel({16, 22}), 2);
}

TEST_F(Labels, MovingOneBringsWhatIsBelowItsNewPlace) {
    box_.DrawText(u"x", {50, 0, 56, 13}, 0);  // in black
    label_.Move(50, 0);
    EXPECT_EQ(Pixel({1, 3}), 0);
    EXPECT_EQ(Pixel({0, 0}), 1);
    label_.Move(5, 5);
    EXPECT_EQ(Pixel({1, 3}), 1);
}

TEST_F(Labels, TheHeightFollowsTheTextWhereItIsToldTo) {
    EXPECT_FALSE(label_.AutoSize());
    label_.Caption(u"one\r\ntwo\r\nthree");
    EXPECT_EQ(label_.Height(), 26);
    label_.AutoSize(true);
    EXPECT_EQ(label_.Height(), 39);
    label_.Caption(u"aaa bbb");
    EXPECT_EQ(label_.Height(), 26);
    EXPECT_EQ(label_.Width(), 36);
    label_.Width(42);  // all seven units
    EXPECT_EQ(label_.Height(), 13);
    label_.Width(18);
    EXPECT_EQ(label_.Height(), 26);
    label_.Height(99);
    EXPECT_EQ(label_.Height(), 26);
    label_.Caption(u"");
    EXPECT_EQ(label_.Height(), 13);
    EXPECT_EQ(label_.Face().GetSize(), (Size{18, 13}));
}

TEST_F(Labels, AreMarksOnTheirParent) {
    EXPECT_EQ(windows_.WindowFromPoint({16, 16}), box_.HWnd());
    Button({16, 16}, true);
    Button({16, 16}, false);
    EXPECT_EQ(Events(), (Lines{"label MouseDown", "label MouseUp", "label Click"}));
    EXPECT_EQ(windows_.GetFocus(), 0);
}

TEST_F(Labels, ADoubleClickIsNoSecondClick) {
    int clicks = 0;
    int doubles = 0;
    label_.onClick = [&] { ++clicks; };
    label_.onDblClick = [&] { ++doubles; };
    for (int i = 0; i < 3; ++i) {
        Button({16, 16}, true);
        Button({16, 16}, false);
    }
    EXPECT_EQ(Events(),
              (Lines{"label MouseDown", "label MouseUp", "label Click", "label DblClick",
                     "label MouseUp", "label MouseDown", "label MouseUp", "label Click"}));
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(doubles, 1);
}

TEST_F(Labels, AReleaseElsewhereIsNoClick) {
    Button({16, 16}, true);
    Button({100, 100}, false);
    EXPECT_EQ(Events(), (Lines{"label MouseDown", "label MouseUp"}));
    Button({100, 100}, true);
    Button({16, 16}, false);  // still on the box, though the label lies there
    EXPECT_EQ(Events(), (Lines{"box MouseDown", "box MouseUp", "box Click"}));
}

TEST_F(Labels, ABoxIsFilledWithItsColourAndDrawnOn) {
    EXPECT_EQ(box_.Face().GetPixel({99, 99}), 1);
    box_.ForeColor(6);
    box_.DrawText(u"ab", {10, 40, 90, 60}, DT_SINGLELINE);  // below the label
    EXPECT_EQ(box_.Face().GetPixel({11, 43}), 6);
    EXPECT_EQ(box_.Face().GetPixel({10, 43}), 1);
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.screens[window_.HWnd()].GetPixel({21, 53}), 6);
    box_.Cls();
    EXPECT_EQ(box_.Face().GetPixel({11, 43}), 1);
}

TEST_F(Labels, ABoxOfAnotherSizeIsEmpty) {
    box_.DrawText(u"ab", {0, 0, 90, 40}, DT_SINGLELINE);
    box_.Move(0, 0, 50, 60);
    EXPECT_EQ(box_.Face().GetPixel({1, 3}), 1);
    EXPECT_EQ(box_.ScaleWidth(), 50);
    EXPECT_EQ(box_.ScaleHeight(), 60);
}

TEST_F(Labels, EachPressOfABoxIsAClick) {
    int clicks = 0;
    box_.onClick = [&] { ++clicks; };
    for (int i = 0; i < 2; ++i) {
        Button({80, 80}, true);
        Button({80, 80}, false);
    }
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(Events(), (Lines{"box MouseDown", "box MouseUp", "box Click", "box MouseDown",
                               "box MouseUp", "box Click"}));
}

}  // namespace
}  // namespace platform
