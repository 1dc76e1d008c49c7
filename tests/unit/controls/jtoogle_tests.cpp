// The button that latches, where it differs from the push button.
#include "controls/jtoogle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/support/control_bench.h"

namespace sarnel {
namespace {

using platform::Rect;
using support::kWhite;
using support::Strip;
using Events = std::vector<std::string>;

// A toggle of 10 x 6 at (20, 30), whose six images have the colours 1 to 6.
class AToggle : public ::testing::Test {
  protected:
    AToggle() {
        toggle_.MaskPicture(Strip({10, 6}, {kWhite}));
        toggle_.Picture(Strip({10, 6}, {1, 2, 3, 4, 5, 6}));
        bench_.Record(toggle_);
    }
    Colour Look() { return toggle_.Face().GetPixel({9, 5}); }
    void MoveTo(Long x, Long y) {
        bench_.Move({20 + x, 30 + y});
        bench_.Events();
    }

    support::ControlBench bench_;
    JToogle toggle_{bench_.windows, bench_.holder.HWnd(), Rect{20, 30, 25, 35}};
};

TEST_F(AToggle, ShowsTheImageOfItsStateAndItsLatch) {
    EXPECT_EQ(Look(), 1);
    toggle_.Value(true);
    EXPECT_EQ(Look(), 4);
    toggle_.Enabled(false);
    EXPECT_EQ(Look(), 6);
    toggle_.Value(false);
    EXPECT_EQ(Look(), 3);
    EXPECT_EQ(bench_.Events(), Events{});
}

TEST_F(AToggle, AClickLatchesFirstThenRaisesClickThenMouseUp) {
    MoveTo(3, 3);
    bench_.Press();
    EXPECT_EQ(Look(), 2);
    bool atClick = false;
    Colour lookAtClick = 0;
    toggle_.onClick = [&] {
        atClick = toggle_.Value();
        lookAtClick = Look();
    };
    bench_.Release();
    EXPECT_TRUE(atClick);
    EXPECT_EQ(lookAtClick, 4);
    EXPECT_EQ(bench_.Events(), (Events{"MouseDown 1 0 3 3", "Click", "MouseUp 1 0 3 3"}));
    bench_.Press();
    EXPECT_EQ(Look(), 5);
    bench_.Release();
    EXPECT_EQ(Look(), 1);
    EXPECT_FALSE(toggle_.Value());
}

TEST_F(AToggle, IsOnTheScreenBeforeItsOwnerHears) {
    std::vector<Colour> shown;
    const auto look = [&](const auto&...) { shown.push_back(bench_.OnScreen({29, 35})); };
    MoveTo(3, 3);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.OnScreen({29, 35}), 1);
    toggle_.onMouseDown = look;
    toggle_.onMouseMove = look;
    toggle_.onClick = look;
    toggle_.onMouseUp = look;
    bench_.Press();
    MoveTo(-1, 3);
    MoveTo(4, 3);
    bench_.Release();
    EXPECT_EQ(shown, (std::vector<Colour>{2, 1, 2, 4, 4}));
    shown.clear();
    bench_.Press();
    MoveTo(-1, 3);
    bench_.Release();
    EXPECT_EQ(shown, (std::vector<Colour>{5, 4, 4}));
}

TEST_F(AToggle, ReleasedOutsideItStaysAsItWas) {
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(-1, 3);
    EXPECT_EQ(Look(), 1);
    bench_.Release();
    EXPECT_FALSE(toggle_.Value());
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 -1 3"}));
}

TEST_F(AToggle, TheEdgesAtWidthAndHeightAreInside) {
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(10, 6);
    EXPECT_EQ(Look(), 2);
    bench_.Release();
    EXPECT_TRUE(toggle_.Value());
}

TEST_F(AToggle, TheRightButtonDoesNotLatch) {
    MoveTo(3, 3);
    bench_.Press(2);
    bench_.Release(2);
    EXPECT_FALSE(toggle_.Value());
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(bench_.Events(), (Events{"MouseDown 2 0 3 3", "MouseUp 2 0 3 3"}));
}

TEST_F(AToggle, EnabledWrittenWithItsValueDrawsNothing) {
    MoveTo(3, 3);
    bench_.Press();
    toggle_.Enabled(true);
    EXPECT_EQ(Look(), 2);
    EXPECT_EQ(toggle_.PressState(), 1);
    toggle_.Enabled(false);
    EXPECT_EQ(Look(), 3);
    EXPECT_EQ(toggle_.PressState(), 1);
    toggle_.Enabled(true);
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(toggle_.PressState(), 0);
}

TEST_F(AToggle, ADoubleClickLatchesTwice) {
    MoveTo(3, 3);
    for (const bool latched : {true, false}) {
        bench_.Press();
        bench_.Release();
        EXPECT_EQ(toggle_.Value(), latched);
    }
}

// Six images of 2 rows in a control of 10 x 6: each row is seen three times, and the one column in
// all ten.
TEST_F(AToggle, ItsImageIsStretchedToTheControl) {
    toggle_.Picture(support::PictureOfColumn({10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21}));
    toggle_.Value(true);  // the fourth image
    EXPECT_EQ(toggle_.Face().GetPixel({0, 0}), 16);
    EXPECT_EQ(toggle_.Face().GetPixel({9, 2}), 16);
    EXPECT_EQ(toggle_.Face().GetPixel({0, 3}), 17);
    EXPECT_EQ(toggle_.Face().GetPixel({9, 5}), 17);
}

// Eight rows: an image is 1 1/3 high, the second begins at 1.33. The middles of the control's two
// rows lie a third and one further in: 1.67 and 2.33.
TEST_F(AToggle, AnImageMayBeginBetweenTwoPixels) {
    JToogle thin(bench_.windows, bench_.holder.HWnd(), Rect{0, 0, 1, 2});
    thin.Picture(support::PictureOfColumn({10, 11, 12, 13, 14, 15, 16, 17}));
    bench_.Move({0, 0});
    bench_.Press();
    EXPECT_EQ(thin.Face().GetPixel({0, 0}), 11);
    EXPECT_EQ(thin.Face().GetPixel({0, 1}), 12);
}

TEST_F(AToggle, ThatEndsWithItsWindowInClickRaisesNothingMore) {
    MoveTo(3, 3);
    bench_.Press();
    bench_.Events();
    toggle_.onClick = [&] { bench_.windows.DestroyWindow(bench_.holder.HWnd()); };
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"Click"}));
}

// The value is taken over last, after the drawing.
TEST_F(AToggle, ACopyOfALatchedOneShowsItOnceItIsShown) {
    toggle_.Value(true);
    JToogle copy(bench_.windows, bench_.holder.HWnd(), {});
    copy.CopyFrom(toggle_);
    EXPECT_TRUE(copy.Value());
    EXPECT_FALSE(copy.Visible());
    EXPECT_EQ(copy.Face().GetPixel({9, 5}), 1);
    copy.Visible(true);
    EXPECT_EQ(copy.Face().GetPixel({9, 5}), 4);
}

}  // namespace
}  // namespace sarnel
