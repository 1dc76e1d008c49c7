// A window that nobody sees costs nothing, and is whole when it is seen again.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "tests/unit/support/screen_windows.h"

namespace platform {
namespace {

using support::Rows;
using support::RowsOf;
using Rects = std::vector<Rect>;

// A desktop that says which windows nobody sees.
class CoveredDriver : public support::ScreenDriver {
  public:
    bool IsSeen(Handle window) const override { return !unseen_.contains(window); }
    void ShowPicture(Handle window, const Surface& picture,
                     std::span<const Rect> changed) override {
        ++shown;
        ScreenDriver::ShowPicture(window, picture, changed);
    }
    void Cover(Handle window) { unseen_.insert(window); }
    void Uncover(Handle window) {
        unseen_.erase(window);
        Push(SeenAgain{window});
    }

    int shown = 0;

  private:
    std::set<Handle> unseen_;
};

class WindowSight : public testing::Test {
  protected:
    void SetUp() override {
        face_.FillRect(face_.Bounds(), 1);
        windows_.SetFace(top_, &face_);
        windows_.ShowWindow(top_, SW_SHOW);
        windows_.DoEvents();
        driver_.Sent();
        driver_.shown = 0;
    }
    void Paint(const Rect& rect, Colour colour) {
        face_.FillRect(rect, colour);
        windows_.InvalidateRect(top_, rect);
        windows_.DoEvents();
    }
    Rows OnScreen() { return RowsOf(driver_.screens[top_]); }

    CoveredDriver driver_;
    WindowSystem windows_{driver_};
    Surface face_{{4, 2}};
    Handle top_ = windows_.CreateWindow(0, {0, 0, 4, 2}, {});
};

TEST_F(WindowSight, NothingIsShownOfOneThatNobodySees) {
    driver_.Cover(top_);
    Paint({0, 0, 1, 1}, 2);
    Paint({3, 1, 4, 2}, 2);
    EXPECT_EQ(driver_.shown, 0);
    EXPECT_EQ(OnScreen(), (Rows{"1111", "1111"}));
}

TEST_F(WindowSight, SeenAgainItShowsAllThatHasChangedAtOnce) {
    driver_.Cover(top_);
    Paint({0, 0, 1, 1}, 2);
    Paint({3, 1, 4, 2}, 2);
    driver_.Uncover(top_);
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 1);
    EXPECT_EQ(driver_.Sent(), (Rects{{0, 0, 1, 1}, {3, 1, 4, 2}}));
    EXPECT_EQ(OnScreen(), (Rows{"2111", "1112"}));
    Paint({1, 0, 2, 1}, 2);
    EXPECT_EQ(driver_.Sent(), (Rects{{1, 0, 2, 1}}));
}

TEST_F(WindowSight, ThePictureIsGivenEvenIfNothingHasChanged) {
    driver_.Cover(top_);
    windows_.DoEvents();
    driver_.Uncover(top_);
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 1);
    EXPECT_EQ(driver_.Sent(), Rects{});
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 1);
}

TEST_F(WindowSight, OneThatIsStillMinimisedThenGetsItWhenItIsRestored) {
    windows_.ShowWindow(top_, SW_MINIMIZE);
    driver_.Cover(top_);
    windows_.DoEvents();
    driver_.shown = 0;
    driver_.Uncover(top_);
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 0);
    windows_.ShowWindow(top_, SW_RESTORE);
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 1);
}

TEST_F(WindowSight, AnotherWindowGoesOn) {
    Surface other({2, 1});
    const Handle second = windows_.CreateWindow(0, {0, 0, 2, 1}, {});
    windows_.SetFace(second, &other);
    windows_.ShowWindow(second, SW_SHOW);
    windows_.DoEvents();
    driver_.Cover(top_);
    driver_.shown = 0;
    other.FillRect(other.Bounds(), 2);
    windows_.InvalidateRect(second, other.Bounds());
    Paint({0, 0, 1, 1}, 2);
    EXPECT_EQ(driver_.shown, 1);
    EXPECT_EQ(RowsOf(driver_.screens[second]), (Rows{"22"}));
}

TEST_F(WindowSight, ItMayHaveGoneMeanwhile) {
    driver_.Uncover(top_);
    windows_.DestroyWindow(top_);
    windows_.DoEvents();
    EXPECT_EQ(driver_.shown, 0);
}

TEST_F(WindowSight, ADensityThatChangesUnseenIsThereAfterwards) {
    driver_.Cover(top_);
    Paint({0, 0, 1, 1}, 2);
    Surface::DensityInForce(2);
    driver_.Uncover(top_);
    windows_.DoEvents();
    Surface::DensityInForce(1);
    EXPECT_EQ(driver_.Sent().front(), (Rect{0, 0, 4, 2}));
    EXPECT_EQ(OnScreen(), (Rows{"2111", "1111"}));
}

}  // namespace
}  // namespace platform
