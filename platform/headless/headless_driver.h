// A desktop without a screen: a screen of 1024 x 768 with a work area of 0,0,1024,740, text of 6 by
// 13 pixels a unit, and a clock that is either virtual (tests: it moves only when somebody waits)
// or the real one (playing without a window).
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/driver.h"

namespace platform {

class HeadlessDriver : public Driver {
  public:
    enum class Clock { kVirtual, kReal };

    explicit HeadlessDriver(Clock clock);

    // What users and desktops do, done by a test.
    void Push(DriverEvent event) { events_.push_back(std::move(event)); }
    /// A key goes down and up.
    void PushKey(Long code, Long shift = 0);
    void MovePointer(Point ptScreen) { pointer_ = ptScreen; }
    void SetWorkArea(const Rect& area);

    void SetDisk(Disk disk) { disk_ = disk; }

    Millis Now() const override;
    void WaitUntil(std::optional<Millis> deadline) override;
    std::optional<DriverEvent> NextEvent() override;
    bool ExpectsInput() const override { return !events_.empty(); }
    void Watch(int descriptor, std::function<void()> onReadable) override;
    std::uint64_t RandomSeed() override;
    Size ScreenSize() const override { return {1024, 768}; }
    Rect WorkArea() const override { return workArea_; }
    Point Pointer() const override { return pointer_; }
    Size MeasureText(const Font& font, std::u16string_view text) const override;
    /// Each unit but a blank is a block, 1 pixel in from the sides of its 6 x 13 pixels, 3 from top
    /// and bottom.
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left,
                           Long width) const override;
    Disk GetDisk() const override { return disk_; }
    std::u16string ClipboardText() const override { return clipboard_; }
    void SetClipboardText(std::u16string_view text) override { clipboard_ = text; }
    void OpenDocument(std::u16string_view pathOrAddress) override {
        opened_.emplace_back(pathOrAddress);
    }
    /// What has been opened since the last call.
    std::vector<std::u16string> TakeOpened() { return std::exchange(opened_, {}); }

  private:
    Clock clock_;
    Millis virtualNow_ = 0;
    std::chrono::steady_clock::time_point start_;
    Rect workArea_{0, 0, 1024, 740};
    Point pointer_;
    Disk disk_ = Disk::kWritable;
    std::u16string clipboard_;
    std::vector<std::u16string> opened_;
    std::deque<DriverEvent> events_;
    std::map<int, std::function<void()>> watches_;
};

}  // namespace platform
