// What every control is made of: place, looks, face, and messages that become events.
#include "platform/windows/widget.h"

#include <gtest/gtest.h>

#include "tests/unit/support/pictures.h"
#include "tests/unit/support/screen_driver.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
using support::Rows;
using support::RowsOf;

// Notes what reaches it, and lets a test draw.
class Probe : public Widget {
  public:
    using Widget::Canvas;
    using Widget::EndsClick;
    using Widget::Raised;
    using Widget::ShowFace;
    using Widget::Widget;
    Lines notes;

  protected:
    void Resized() override { notes.push_back("resized"); }
    void Relocated() override { notes.push_back("relocated"); }
    void Shown() override { notes.push_back("shown"); }
    void LooksChanged() override { notes.push_back("looks"); }
    void MouseUp(const MouseEvent& event) override {
        notes.push_back(EndsClick(event) ? "click" : "no click");
        RaiseMouseUp(event);
    }
};

class WidgetTest : public ::testing::Test {
  protected:
    WidgetTest() {
        window_.Visible(true);
        widget_.Observe([this](const std::string& event, const std::string& arguments) {
            events_.push_back(event + (arguments.empty() ? "" : " ") + arguments);
        });
    }
    // Points of the widget.
    void Move(Point at, Long shift = 0) {
        windows_.Deliver(PointerMoved{{at.x + 10, at.y + 20}, shift});
    }
    void Button(Point at, bool down, Long button = 1, Long shift = 0) {
        windows_.Deliver(ButtonChanged{{at.x + 10, at.y + 20}, button, down, shift});
    }
    Lines Events() { return std::exchange(events_, {}); }
    Lines Notes() { return std::exchange(widget_.notes, {}); }

    support::ScreenDriver driver_;
    WindowSystem windows_{driver_};
    Widget window_{windows_, 0, {0, 0, 100, 100}};
    Probe widget_{windows_, window_.HWnd(), {10, 20, 14, 22}};
    Lines events_;
};

TEST_F(WidgetTest, ATopLevelOneIsHiddenAndAChildVisible) {
    const Widget other(windows_, 0, {0, 0, 5, 5});
    EXPECT_FALSE(other.Visible());
    EXPECT_TRUE(widget_.Visible());
    EXPECT_TRUE(widget_.Enabled());
}

TEST_F(WidgetTest, PlaceAndSizeInPixelsOfTheParent) {
    widget_.Left(1);
    widget_.Top(2);
    EXPECT_EQ(Notes(), (Lines{"relocated", "relocated"}));
    widget_.Width(30);
    widget_.Height(40);
    EXPECT_EQ(Notes(), (Lines{"resized", "resized"}));
    EXPECT_EQ(windows_.GetRect(widget_.HWnd()), (Rect{1, 2, 31, 42}));
    widget_.Move(5, 6);
    widget_.Move(7, 8, 9, 10);
    EXPECT_EQ(Notes(), (Lines{"relocated", "relocated", "resized"}));
    widget_.Move(7, 8, 9, 10);
    EXPECT_EQ(Notes(), Lines{});
    widget_.Width(-5);
    EXPECT_EQ(widget_.Width(), 0);
}

TEST_F(WidgetTest, EveryWriteOfALookIsTold) {
    widget_.BackColor(5);
    widget_.ForeColor(6);
    widget_.SetFont({u"Arial", 10, true, true});
    widget_.FontName(u"Courier");
    widget_.FontSize(12.5);
    widget_.FontBold(false);
    widget_.FontItalic(false);
    widget_.Text(u"text");
    EXPECT_EQ(Notes(), Lines(8, "looks"));
    EXPECT_EQ(widget_.BackColor(), 5);
    EXPECT_EQ(widget_.ForeColor(), 6);
    EXPECT_EQ(widget_.GetFont(), (Font{u"Courier", 12.5, false, false}));
    EXPECT_EQ(widget_.Text(), u"text");
}

TEST_F(WidgetTest, TheHeightOfATextCountsItsLines) {
    EXPECT_EQ(widget_.TextHeight(u"^j"), 13);
    EXPECT_EQ(widget_.TextHeight(u""), 13);
    EXPECT_EQ(widget_.TextHeight(u"one\r\n\r\na long line that no width breaks"), 39);
}

TEST_F(WidgetTest, ShowingItIsTold) {
    widget_.Visible(false);
    EXPECT_EQ(Notes(), Lines{});
    widget_.Visible(true);
    widget_.Visible(true);
    EXPECT_EQ(Notes(), (Lines{"shown"}));
}

TEST_F(WidgetTest, MouseMessagesBecomeEvents) {
    Move({1, 0}, 1);
    Button({1, 1}, true, 2, 3);
    Move({-5, 1}, 4);
    Button({9, 9}, false, 2);
    EXPECT_EQ(Events(), (Lines{"MouseMove 0 1 1 0", "MouseDown 2 3 1 1", "MouseMove 2 4 -5 1",
                               "MouseUp 2 0 9 9"}));
}

TEST_F(WidgetTest, AMoveTellsAllButtonsThatAreHeld) {
    Button({1, 1}, true, 1);
    Button({1, 1}, true, 2);
    Button({1, 1}, true, 4);
    Move({2, 1});
    Button({2, 1}, false, 1);
    Move({3, 1});
    const Lines events = Events();
    EXPECT_EQ(events[3], "MouseMove 7 0 2 1");
    EXPECT_EQ(events[5], "MouseMove 6 0 3 1");
}

TEST_F(WidgetTest, TheSecondPressOfADoubleClickIsAPressLikeTheFirst) {
    for (int i = 0; i < 2; ++i) {
        Button({1, 1}, true);
        Button({1, 1}, false);
    }
    EXPECT_EQ(Events(), (Lines{"MouseDown 1 0 1 1", "MouseUp 1 0 1 1", "MouseDown 1 0 1 1",
                               "MouseUp 1 0 1 1"}));
    EXPECT_EQ(Notes(), (Lines{"click", "click"}));
}

TEST_F(WidgetTest, AClickEndsWhereItBeganWithTheSameButton) {
    Button({1, 1}, true);
    Button({4, 1}, false);  // past the edge
    Button({3, 1}, true, 2);
    Button({3, 1}, false, 2);
    windows_.Sleep(1000);
    Button({1, 1}, true, 1);
    Button({1, 1}, true, 2);  // what was pressed last counts
    Button({1, 1}, false, 1);
    Button({1, 1}, false, 2);
    EXPECT_EQ(Notes(), (Lines{"no click", "click", "no click", "click"}));
    windows_.SendMessage(widget_.HWnd(), WM_LBUTTONUP, 0, WordOf({1, 1}));
    EXPECT_EQ(Notes(), (Lines{"no click"}));  // it was never pressed
}

TEST_F(WidgetTest, AHandlerMayReplaceItself) {
    int first = 0;
    int second = 0;
    widget_.onMouseDown = [&](const MouseEvent& event) {
        EXPECT_EQ(event.X, 1.0F);
        ++first;
        widget_.onMouseDown = [&](const MouseEvent&) { ++second; };
    };
    Button({1, 1}, true);
    Button({1, 1}, true);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST_F(WidgetTest, TheObserverHearsOfArgumentsApartByBlanks) {
    widget_.Raised("Event", {1, -2, 3});
    widget_.Raised("Other");
    EXPECT_EQ(Events(), (Lines{"Event 1 -2 3", "Other"}));
    widget_.Observe({});
    widget_.Raised("Event");
    EXPECT_EQ(Events(), Lines{});
}

TEST_F(WidgetTest, TheWheelGoesOnToTheParent) {
    Lines reached;
    windows_.SetWindowProc(window_.HWnd(), [&](const Message& message) -> Long {
        if (message.id == WM_MOUSEWHEEL) {
            reached.push_back(std::to_string(message.wParam / 65536) + " " +
                              std::to_string(PointOf(message.lParam).x));
        }
        return 33;
    });
    EXPECT_EQ(windows_.SendMessage(widget_.HWnd(), WM_MOUSEWHEEL, 120 * 65536, WordOf({11, 21})),
              33);
    EXPECT_EQ(reached, (Lines{"120 11"}));
}

TEST_F(WidgetTest, AFaceIsShownOnceItIsDrawnOn) {
    EXPECT_EQ(windows_.GetFace(widget_.HWnd()), nullptr);
    EXPECT_TRUE(widget_.Face().IsEmpty());
    widget_.BackColor(3);
    widget_.Canvas().SetPixel({1, 0}, 4);
    EXPECT_EQ(windows_.GetFace(widget_.HWnd()), &widget_.Face());
    EXPECT_EQ(RowsOf(widget_.Face()), (Rows{"3433", "3333"}));
}

TEST_F(WidgetTest, AFaceFollowsTheSizeAndKeepsWhatIsOnIt) {
    widget_.BackColor(3);
    widget_.Canvas().SetPixel({0, 0}, 4);
    widget_.Move(10, 20, 2, 3);
    widget_.BackColor(5);
    EXPECT_EQ(RowsOf(widget_.Canvas()), (Rows{"43", "33", "55"}));
}

TEST_F(WidgetTest, ShowingTheFaceSendsWhatHasChanged) {
    widget_.Canvas().FillRect({0, 0, 4, 2}, 7);
    windows_.UpdateScreen();
    driver_.Sent();
    widget_.Canvas().FillRect({0, 0, 4, 2}, 8);
    widget_.ShowFace({1, 0, 3, 1});
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), (std::vector<Rect>{{11, 20, 13, 21}}));
    widget_.ShowFace();
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), (std::vector<Rect>{{10, 20, 14, 22}}));
}

TEST_F(WidgetTest, AWidgetThatEndsIsGoneFromTheScreen) {
    {
        Probe other(windows_, window_.HWnd(), {0, 0, 3, 2});
        other.Canvas().FillRect({0, 0, 3, 2}, 7);
        windows_.UpdateScreen();
        EXPECT_EQ(driver_.screens[window_.HWnd()].GetPixel({2, 1}), 7);
        driver_.Sent();
    }
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), (std::vector<Rect>{{0, 0, 3, 2}}));
    EXPECT_EQ(driver_.screens[window_.HWnd()].GetPixel({2, 1}), 0);
}

}  // namespace
}  // namespace platform
