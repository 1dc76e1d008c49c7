// The push button: strip, mask, press and the order of its events.
#include "controls/jbutton.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/unit/support/control_bench.h"

namespace sarnel {
namespace {

using platform::Point;
using platform::Rect;
using support::kBlue;
using support::kGreen;
using support::kRed;
using support::kWhite;
using support::MaskOf;
using support::PictureOfColumn;
using support::Strip;
using Events = std::vector<std::string>;

// A button of 10 x 6 at (20, 30): red normal, green pressed, blue disabled.
class AButton : public ::testing::Test {
  protected:
    AButton() {
        button_->MaskPicture(Strip({10, 6}, {kWhite}));
        button_->Picture(Strip({10, 6}, {kRed, kGreen, kBlue}));
        bench_.Record(*button_);
    }
    Colour Look() { return button_->Face().GetPixel({5, 3}); }
    void MoveTo(Long x, Long y) {
        bench_.Move({20 + x, 30 + y});
        bench_.Events();
    }

    support::ControlBench bench_;
    std::unique_ptr<JButton> button_ =
        std::make_unique<JButton>(bench_.windows, bench_.holder.HWnd(), Rect{20, 30, 25, 35});
};

TEST_F(AButton, TakesItsSizeFromTheMaskAndShowsTheFirstImage) {
    EXPECT_EQ(button_->Left(), 20);
    EXPECT_EQ(button_->Top(), 30);
    EXPECT_EQ(button_->Width(), 10);
    EXPECT_EQ(button_->Height(), 6);
    EXPECT_EQ(Look(), kRed);
    button_->Width(50);
    EXPECT_EQ(button_->Width(), 10);
}

TEST_F(AButton, WithoutAMaskKeepsTheSizeOfItsContainerAndIsNotDrawnByItsPicture) {
    JButton plain(bench_.windows, bench_.holder.HWnd(), {0, 0, 7, 9});
    plain.Picture(Strip({10, 6}, {kRed, kGreen, kBlue}));
    EXPECT_EQ(plain.Width(), 7);
    EXPECT_EQ(plain.Height(), 9);
    EXPECT_EQ(plain.Face().GetPixel({1, 1}), -1);
    plain.Refresh();
    EXPECT_EQ(plain.Face().GetPixel({1, 1}), kRed);
}

TEST_F(AButton, APressIsShownBeforeMouseDownAndClickComesAfterMouseUp) {
    MoveTo(3, 4);
    button_->onMouseDown = [&](const auto&) { EXPECT_EQ(Look(), kGreen); };
    button_->onMouseUp = [&](const auto&) { EXPECT_EQ(Look(), kGreen); };
    button_->onClick = [&] { EXPECT_EQ(Look(), kRed); };
    bench_.Press();
    EXPECT_EQ(button_->PressState(), 1);
    EXPECT_EQ(bench_.Events(), (Events{"MouseDown 1 0 3 4"}));
    bench_.Release();
    EXPECT_EQ(button_->PressState(), 0);
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 3 4", "Click"}));
}

TEST_F(AButton, IsOnTheScreenBeforeItsOwnerHears) {
    std::vector<Colour> shown;
    const auto look = [&](const auto&...) { shown.push_back(bench_.OnScreen({25, 33})); };
    MoveTo(3, 3);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.OnScreen({25, 33}), kRed);
    button_->onMouseDown = look;
    button_->onMouseMove = look;
    button_->onClick = look;
    bench_.Press();
    MoveTo(-1, 3);
    MoveTo(4, 3);
    bench_.Release();
    EXPECT_EQ(shown, (std::vector<Colour>{kGreen, kRed, kGreen, kRed}));
}

TEST_F(AButton, DraggedOutItPopsUpAndDraggedBackItIsPressedAgain) {
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(-1, 3);
    EXPECT_EQ(Look(), kRed);
    EXPECT_EQ(button_->PressState(), 0);
    MoveTo(3, 3);
    EXPECT_EQ(Look(), kGreen);
    MoveTo(3, 100);
    EXPECT_EQ(Look(), kRed);
    MoveTo(0, 0);
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 0 0", "Click"}));
    EXPECT_EQ(Look(), kRed);
}

TEST_F(AButton, ReleasedOutsideItIsNotClicked) {
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(11, 3);
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 11 3"}));
}

// The edges at Width and Height lie one pixel outside of the window and count all the same.
TEST_F(AButton, TheEdgesAtWidthAndHeightAreInside) {
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(10, 6);
    EXPECT_EQ(Look(), kGreen);
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 10 6", "Click"}));
    MoveTo(3, 3);
    bench_.Press();
    MoveTo(10, 7);
    EXPECT_EQ(Look(), kRed);
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 10 7"}));
}

TEST_F(AButton, OtherButtonsRaiseTheirEventsAndDoNothing) {
    for (const Long other : {2, 4}) {
        MoveTo(3, 3);
        bench_.Press(other);
        EXPECT_EQ(Look(), kRed);
        bench_.Release(other);
        const std::string number = std::to_string(other);
        EXPECT_EQ(bench_.Events(),
                  (Events{"MouseDown " + number + " 0 3 3", "MouseUp " + number + " 0 3 3"}));
    }
}

// Two buttons held make 3, which is not the left button alone.
TEST_F(AButton, LeavingWithTwoButtonsHeldChangesNothing) {
    MoveTo(3, 3);
    bench_.Press(1);
    bench_.Press(2);
    MoveTo(-5, 3);
    EXPECT_EQ(Look(), kGreen);
    EXPECT_EQ(button_->PressState(), 1);
}

TEST_F(AButton, TheSecondPressOfADoubleClickIsAPressLikeTheFirst) {
    MoveTo(3, 3);
    for (int i = 0; i < 2; ++i) {
        bench_.Press();
        EXPECT_EQ(Look(), kGreen);
        bench_.Release();
        EXPECT_EQ(bench_.Events(), (Events{"MouseDown 1 0 3 3", "MouseUp 1 0 3 3", "Click"}));
    }
}

TEST_F(AButton, DisabledWhilePressedItKeepsItsPressStateUntilItIsEnabled) {
    MoveTo(3, 3);
    bench_.Press();
    button_->Enabled(false);
    EXPECT_EQ(Look(), kBlue);
    EXPECT_EQ(button_->PressState(), 1);
    button_->Refresh();
    EXPECT_EQ(Look(), kBlue);
    EXPECT_EQ(button_->PressState(), 1);
    button_->Enabled(true);
    EXPECT_EQ(Look(), kRed);
    EXPECT_EQ(button_->PressState(), 0);
}

TEST_F(AButton, EnabledWrittenTrueAgainPopsAPressedButtonUp) {
    MoveTo(3, 3);
    bench_.Press();
    button_->Enabled(true);
    EXPECT_EQ(Look(), kRed);
    EXPECT_EQ(button_->PressState(), 0);
}

TEST_F(AButton, ADisabledButtonGetsNoMouse) {
    button_->Enabled(false);
    MoveTo(3, 3);
    bench_.Press();
    bench_.Release();
    EXPECT_EQ(bench_.Events(), Events{});
    EXPECT_EQ(Look(), kBlue);
}

TEST_F(AButton, IsDrawnWhenItIsShown) {
    MoveTo(3, 3);
    bench_.Press();
    button_->Visible(false);
    EXPECT_EQ(Look(), kGreen);
    button_->Visible(true);
    EXPECT_EQ(Look(), kRed);
}

TEST_F(AButton, NeverTakesTheFocus) {
    bench_.windows.SetFocus(bench_.holder.HWnd());
    MoveTo(3, 3);
    bench_.Press();
    bench_.Release();
    EXPECT_EQ(bench_.windows.GetFocus(), bench_.holder.HWnd());
}

// By the mask colour 0, black is outside.
TEST_F(AButton, OnlyWhatHasNotTheMaskColourBelongsToIt) {
    button_->MaskPicture(MaskOf({"#.", ".#"}));
    const auto at = [&](Long x, Long y) {
        return bench_.windows.WindowFromPoint({20 + x, 30 + y}) == button_->HWnd();
    };
    EXPECT_TRUE(at(0, 0));
    EXPECT_FALSE(at(1, 0));
    EXPECT_FALSE(at(0, 1));
    EXPECT_TRUE(at(1, 1));
    EXPECT_FALSE(at(2, 2));
    button_->MaskColor(kWhite);
    EXPECT_FALSE(at(0, 0));
    EXPECT_TRUE(at(1, 0));
    button_->MaskPicture(nullptr);
    EXPECT_TRUE(at(0, 0));
    EXPECT_TRUE(at(1, 1));
    EXPECT_EQ(button_->Width(), 2);
}

TEST_F(AButton, ItsParentShowsWhereTheMaskIsNot) {
    button_->MaskPicture(MaskOf({"#.", ".#"}));
    const platform::Surface shown = bench_.windows.Compose(bench_.holder.HWnd());
    EXPECT_EQ(shown.GetPixel({20, 30}), kRed);
    EXPECT_EQ(shown.GetPixel({21, 30}), 0);
    EXPECT_EQ(shown.GetPixel({21, 31}), kRed);
}

// Ten rows: an image is 3 1/3 high. The middles of the pixels 3.3 to 6.7 are those of rows 3, 4
// and 5 at whole steps from 3.83; the disabled image begins at 6.67, so at row 7.
TEST_F(AButton, AnImageMayBeginBetweenTwoPixels) {
    JButton thin(bench_.windows, bench_.holder.HWnd(), {0, 0, 1, 3});
    thin.Picture(PictureOfColumn({10, 11, 12, 13, 14, 15, 16, 17, 18, 19}));
    const auto rows = [&] {
        std::vector<Colour> colours;
        for (Long y = 0; y < 3; ++y) {
            colours.push_back(thin.Face().GetPixel({0, y}));
        }
        return colours;
    };
    thin.Refresh();
    EXPECT_EQ(rows(), (std::vector<Colour>{10, 11, 12}));
    bench_.Move({0, 1});
    bench_.Press();
    EXPECT_EQ(rows(), (std::vector<Colour>{13, 14, 15}));
    thin.Enabled(false);
    EXPECT_EQ(rows(), (std::vector<Colour>{17, 18, 19}));
}

// Row 3 is more than half of the pressed image, which the normal one must not show.
TEST_F(AButton, LargerThanItsImageShowsNothingOfTheNextOne) {
    JButton tall(bench_.windows, bench_.holder.HWnd(), {0, 0, 1, 4});
    tall.BackColor(kGreen);
    tall.Picture(PictureOfColumn({10, 11, 12, 13, 14, 15, 16, 17, 18, 19}));
    tall.Refresh();
    EXPECT_EQ(tall.Face().GetPixel({0, 2}), 12);
    EXPECT_EQ(tall.Face().GetPixel({0, 3}), kGreen);
}

TEST_F(AButton, AnEmptyPictureDrawsNothingAndPressesAllTheSame) {
    button_->Picture(std::make_shared<platform::Surface>());
    MoveTo(3, 3);
    bench_.Press();
    EXPECT_EQ(button_->PressState(), 1);
    EXPECT_EQ(Look(), kRed);
    button_->Picture(nullptr);
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseDown 1 0 3 3", "MouseUp 1 0 3 3", "Click"}));
}

// At the corner, which is inside even of the size 0 that is left.
TEST_F(AButton, ThatEndsWithItsWindowInMouseUpIsNotClicked) {
    MoveTo(0, 0);
    bench_.Press();
    bench_.Events();
    button_->onMouseUp = [&](const auto&) {
        bench_.windows.DestroyWindow(bench_.holder.HWnd());
        bench_.windows.DeferDelete(std::shared_ptr<JButton>(std::move(button_)));
    };
    bench_.Release();
    EXPECT_EQ(bench_.Events(), (Events{"MouseUp 1 0 0 0"}));
}

TEST_F(AButton, ACopyIsHiddenAndLooksAlike) {
    button_->Enabled(false);
    button_->MousePointer(2);
    JButton copy(bench_.windows, bench_.holder.HWnd(), {});
    copy.CopyFrom(*button_);
    EXPECT_FALSE(copy.Visible());
    EXPECT_FALSE(copy.Enabled());
    EXPECT_EQ(copy.MousePointer(), 2);
    EXPECT_EQ(copy.Left(), 20);
    EXPECT_EQ(copy.Width(), 10);
    EXPECT_EQ(copy.Face().GetPixel({5, 3}), kBlue);
}

}  // namespace
}  // namespace sarnel
