// A text box on a visible window, with keys and mouse to use it. A unit of text is 6 x 13 pixels.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/widgets/text_box.h"

namespace support {

using platform::Long;
using platform::Point;

inline constexpr platform::Colour kPaper = 0x102030;
inline constexpr platform::Colour kInk = 0xC0B0A0;

/// Remembers where the user writes, and how often composing was ended.
class WritingDriver : public platform::HeadlessDriver {
  public:
    WritingDriver() : HeadlessDriver(Clock::kVirtual) {}
    void SetTextInput(const std::optional<platform::TextInput>& where) override { input = where; }
    void EndComposing() override { ++ended; }

    std::optional<platform::TextInput> input;
    int ended = 0;
};

class TextBoxBench {
  public:
    explicit TextBoxBench(platform::TextBox::Kind kind, platform::Size size)
        : box(windows, window.HWnd(), {10, 20, 10 + size.width, 20 + size.height}, kind) {
        window.Visible(true);
        box.BackColor(kPaper);
        box.ForeColor(kInk);
        box.Observe([this](const std::string& event, const std::string& arguments) {
            events_.push_back(event + (arguments.empty() ? "" : " ") + arguments);
        });
    }

    /// Presses a key with the focus in the box.
    void Key(Long code, Long shift = 0) {
        windows.SetFocus(box.HWnd());
        driver.PushKey(code, shift);
        windows.DoEvents();
    }
    void Keys(Long code, int times, Long shift = 0) {
        for (; times > 0; --times) {
            Key(code, shift);
        }
    }
    void Type(std::u16string text) {
        windows.SetFocus(box.HWnd());
        driver.Push(platform::TextTyped{std::move(text)});
        windows.DoEvents();
    }
    // Points count from the corner of the box.
    void Press(Point at, Long button = 1, Long shift = 0) { Button(at, button, shift, true); }
    void Release(Point at, Long button = 1) { Button(at, button, 0, false); }
    void Move(Point at) {
        driver.MovePointer(OnScreen(at));
        driver.Push(platform::PointerMoved{OnScreen(at)});
        windows.DoEvents();
    }
    void Click(Point at) {
        windows.Sleep(1000);  // no press before counts any more
        Press(at);
        Release(at);
    }
    void Drag(Point from, Point to) {
        Press(from);
        Move(to);
        Release(to);
    }
    void DoubleClick(Point at) {
        Click(at);
        Press(at);
        Release(at);
    }
    void Turn(Long notches) {
        driver.Push(platform::WheelTurned{OnScreen({5, 5}), notches});
        windows.DoEvents();
    }
    /// Another text, without a trace among the events.
    void Fill(std::u16string_view text, Long caret = 0) {
        box.Text(text);
        box.SelStart(caret);
        Events();
    }
    /// Text and selection, as "before[selected]after".
    std::u16string Shown() const {
        std::u16string text = box.Text();
        const auto start = static_cast<std::size_t>(box.SelStart());
        text.insert(start + static_cast<std::size_t>(box.SelLength()), u"]");
        text.insert(start, u"[");
        return text;
    }
    /// How many of the events since the last time are changes of the text.
    int Changes() {
        int changes = 0;
        for (const std::string& event : Events()) {
            changes += event == "Change" ? 1 : 0;
        }
        return changes;
    }
    /// The names of the events since the last time, with their arguments.
    std::vector<std::string> Events() { return std::exchange(events_, {}); }
    platform::Colour Pixel(Point at) { return box.Face().GetPixel(at); }

    WritingDriver driver;
    platform::WindowSystem windows{driver};
    platform::Widget window{windows, 0, {100, 50, 400, 250}};
    platform::TextBox box;

  private:
    static Point OnScreen(Point at) { return {at.x + 110, at.y + 70}; }
    void Button(Point at, Long button, Long shift, bool down) {
        driver.MovePointer(OnScreen(at));
        driver.Push(platform::ButtonChanged{OnScreen(at), button, down, shift});
        windows.DoEvents();
    }

    std::vector<std::string> events_;
};

}  // namespace support
