// Who takes all input gets it in place of the windows, but for what they had begun.
#include "platform/windows/modal_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/support/input_windows.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

class Taker : public ModalInput {
  public:
    explicit Taker(support::WindowLog& log) : log_(log) {}
    void PointerMoved(Point at) override { Add("moved " + std::to_string(at.x)); }
    void ButtonChange(const ButtonChanged& event, bool isOlder) override {
        Add(std::string(isOlder ? "older " : "") + (event.down ? "down " : "up ") +
            std::to_string(event.button));
    }
    void Wheel(const WheelTurned& event) override { Add("wheel " + std::to_string(event.notches)); }
    void KeyDown(Long code) override { Add("key " + std::to_string(code)); }
    void Text(std::u16string_view text) override { Add("text of " + std::to_string(text.size())); }
    void CloseRequest(Handle) override { Add("close"); }
    void InputLost() override { Add("lost"); }

  private:
    void Add(const std::string& line) { log_.Add("taker " + line); }
    support::WindowLog& log_;
};

class InputTaken : public support::InputWindows {
  protected:
    InputTaken() {
        windows_.SetFocus(w_);
        log_.Take();
    }
    Lines KeyDown(Long code) { return After(KeyChanged{code, 0, true}); }
    Lines KeyUp(Long code) { return After(KeyChanged{code, 0, false}); }
    void Take() { windows_.TakeInput(&taker_); }
    void GiveBack() { windows_.TakeInput(nullptr); }

    Taker taker_{log_};
};

TEST_F(InputTaken, ReachesNoWindow) {
    Take();
    EXPECT_EQ(Move({115, 65}), (Lines{"taker moved 115"}));
    EXPECT_EQ(Press({115, 65}, kRightButton), (Lines{"taker down 2"}));
    EXPECT_EQ(Release({115, 65}, kRightButton), (Lines{"taker up 2"}));
    EXPECT_EQ(After(WheelTurned{{115, 65}, 2}), (Lines{"taker wheel 2"}));
    EXPECT_EQ(KeyDown('A'), (Lines{"taker key 65"}));
    EXPECT_EQ(KeyUp('A'), Lines{});
    EXPECT_EQ(After(TextTyped{u"ab"}), (Lines{"taker text of 2"}));
    EXPECT_EQ(After(CloseRequested{w_}), (Lines{"taker close"}));
    EXPECT_EQ(After(InputLost{}), (Lines{"taker lost"}));
    GiveBack();
    EXPECT_EQ(Move({115, 65}), (Lines{"w move 15,15"}));
    EXPECT_EQ(After(CloseRequested{w_}), (Lines{"w 16 0 0"}));
    EXPECT_EQ(After(InputLost{}), Lines{});
}

TEST_F(InputTaken, IsKeptByTheTakerUntilTheKeyAndTheButtonAreUp) {
    Take();
    Press({115, 65});
    KeyDown('A');
    GiveBack();
    EXPECT_EQ(KeyDown('A'), Lines{});  // repeated, since it is held
    EXPECT_EQ(KeyUp('A'), Lines{});
    EXPECT_EQ(Release({115, 65}), Lines{});
    EXPECT_EQ(KeyDown('A'), (Lines{"w 256 65 0"}));
    EXPECT_EQ(Press({115, 65}), (Lines{"w down 15,15 held 1"}));  // and no double click
}

TEST_F(InputTaken, LeavesTheWindowsTheReleaseOfWhatWasDown) {
    Press({115, 65});
    KeyDown('A');
    Take();
    EXPECT_EQ(KeyDown('A'), Lines{});
    EXPECT_EQ(KeyUp('A'), (Lines{"w 257 65 0"}));
    EXPECT_EQ(Release({5, 5}), (Lines{"taker older up 1", "w up -95,-45"}));
}

TEST_F(InputTaken, IsLeavingForAWindowThatWaitsForIt) {
    Move({115, 65});
    windows_.TrackMouseLeave(w_);
    Take();
    EXPECT_EQ(Move({115, 65}), (Lines{"w 675 0 0", "taker moved 115"}));
    EXPECT_EQ(Move({116, 65}), (Lines{"taker moved 116"}));
}

TEST_F(InputTaken, LeavesNobodyToWriteIn) {
    windows_.SetTextInput(w_, Rect{0, 0, 1, 5});
    After(TextComposed{u"ab", 1});
    Take();
    windows_.UpdateScreen();
    EXPECT_EQ(log_.Take(), (Lines{"w 271 0 0", "w 258 97 0", "w 258 98 0"}));
    EXPECT_EQ(After(TextComposed{u"c", 1}), Lines{});
    EXPECT_EQ(windows_.Composition().text, u"");
}

}  // namespace
}  // namespace platform
