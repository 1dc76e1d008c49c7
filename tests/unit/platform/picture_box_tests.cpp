// Picture boxes: what ShowText leaves out is only what is there already.
#include "platform/widgets/picture_box.h"

#include <gtest/gtest.h>

#include "platform/drawing/text_drawing.h"
#include "tests/unit/support/screen_driver.h"

namespace platform {
namespace {

// Without a screen each unit of a text is a block of 6 by 13 pixels with a margin of one pixel at
// the left and three above.
constexpr Point kInkAt{1, 3};
constexpr Point kInkOfSecond{7, 3};

class PictureBoxes : public ::testing::Test {
  protected:
    PictureBoxes() {
        box_.BackColor(1);
        box_.ForeColor(2);
        Show(u"a");
    }
    void Show(std::u16string_view text) { box_.ShowText(text, {0, 0, 40, 13}, DT_SINGLELINE); }
    Colour Pixel(Point at) const { return box_.Face().GetPixel(at); }

    support::ScreenDriver driver_;
    WindowSystem windows_{driver_};
    Widget window_{windows_, 0, {0, 0, 100, 100}};
    PictureBox box_{windows_, window_.HWnd(), {0, 0, 40, 20}};
};

TEST_F(PictureBoxes, ShowTextReplacesWhatWasThere) {
    Show(u"aa");
    EXPECT_EQ(Pixel(kInkOfSecond), 2);
    Show(u"a");
    EXPECT_EQ(Pixel(kInkAt), 2);
    EXPECT_EQ(Pixel(kInkOfSecond), 1);
}

TEST_F(PictureBoxes, TheSameTextElsewhereIsDrawnThere) {
    box_.ShowText(u"a", {6, 0, 40, 13}, DT_SINGLELINE);
    EXPECT_EQ(Pixel(kInkAt), 1);
    EXPECT_EQ(Pixel(kInkOfSecond), 2);
    box_.ShowText(u"a", {6, 0, 40, 13}, DT_SINGLELINE | DT_RIGHT);
    EXPECT_EQ(Pixel(kInkOfSecond), 1);
}

TEST_F(PictureBoxes, TheSameTextIsBackAfterAnythingElseWasDrawn) {
    box_.Cls();
    EXPECT_EQ(Pixel(kInkAt), 1);
    Show(u"a");
    EXPECT_EQ(Pixel(kInkAt), 2);
    box_.DrawText(u"aa", {0, 0, 40, 13}, DT_SINGLELINE);
    Show(u"a");
    EXPECT_EQ(Pixel(kInkOfSecond), 1);
}

TEST_F(PictureBoxes, TheSameTextIsBackAfterAChangeOfLooksOrSize) {
    box_.ForeColor(4);
    Show(u"a");
    EXPECT_EQ(Pixel(kInkAt), 4);
    box_.Width(50);
    Show(u"a");
    EXPECT_EQ(Pixel(kInkAt), 4);
    EXPECT_EQ(Pixel({45, 10}), 1);
}

}  // namespace
}  // namespace platform
