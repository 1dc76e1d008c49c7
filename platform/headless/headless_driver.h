// A desktop without a screen: a screen of 1024 x 768 with a work area of 0,0,1024,740, text of 6 by
// 13 pixels a unit, and a clock that is either virtual (tests: it moves only when somebody waits)
// or the real one (playing without a window).
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/driver.h"

namespace platform {

class HeadlessDriver : public Driver {
  public:
    enum class Clock { kVirtual, kReal };

    explicit HeadlessDriver(Clock clock, Long density = 1);

    // What users and desktops do, done by a test.
    void Push(DriverEvent event) { events_.push_back(std::move(event)); }
    /// A key goes down and up.
    void PushKey(Long code, Long shift = 0);
    void MovePointer(Point ptScreen) { pointer_ = ptScreen; }
    void SetWorkArea(const Rect& area);
    void SetDensity(Long density);

    void SetDisk(Disk disk) { disk_ = disk; }
    void AddDrive(Drive drive) { drives_.push_back(std::move(drive)); }
    void SetOnline(bool online) { online_ = online; }
    /// What a download of that address yields from now on; any other fails.
    void SetPage(std::u16string_view address, std::string body) {
        pages_.insert_or_assign(std::u16string(address), std::move(body));
    }
    struct AskedPage {
        std::u16string address;
        bool isFresh = false;  ///< its copy was forgotten before
    };
    /// The pages asked for since the last call, whether there were any or not.
    std::vector<AskedPage> TakeDownloads() { return std::exchange(downloads_, {}); }

    // What the virtual shell has been given.
    /// Another program holds that combination from now on.
    void TakeHotKey(Long modifiers, Long key) { taken_.push_back({{}, modifiers, key}); }
    /// The combinations that are taken from the desktop, by what names them.
    const std::map<Handle, KeyCombination>& HotKeys() const { return hotKeys_; }
    /// Whether a combination of that name has ever been asked for, granted or not.
    bool HasAskedForHotKey(const std::u16string& name) const { return hotKeyNames_.contains(name); }
    /// Tips of the icons in the tray by window.
    const std::map<Handle, std::u16string>& TrayTips() const { return trayTips_; }
    /// Every value written, in order.
    const std::vector<RegistryValue>& Registry() const { return registry_; }
    /// What was published last; none if nothing was.
    const std::optional<std::vector<RegistryValue>>& Published() const { return published_; }

    Millis Now() const override;
    void WaitUntil(std::optional<Millis> deadline) override;
    std::optional<DriverEvent> NextEvent() override;
    bool ExpectsInput() const override { return !events_.empty(); }
    void Watch(int descriptor, std::function<void()> onReadable) override;
    std::uint64_t RandomSeed() override;
    Size ScreenSize() const override { return {1024, 768}; }
    Long Density() const override { return density_; }
    Rect WorkArea() const override { return workArea_; }
    Point Pointer() const override { return pointer_; }
    Size MeasureText(const Font& font, std::u16string_view text) const override;
    /// Each unit but a blank is a block, 1 pixel in from the sides of its 6 x 13 pixels, 3 from top
    /// and bottom.
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long density) const override;
    Disk GetDisk() const override { return disk_; }
    std::u16string ClipboardText() const override { return clipboard_; }
    void SetClipboardText(std::u16string_view text) override { clipboard_ = text; }
    void OpenDocument(std::u16string_view pathOrAddress) override {
        opened_.emplace_back(pathOrAddress);
    }
    std::vector<Drive> Drives() const override { return drives_; }
    bool IsOnline(std::u16string_view /*address*/) const override { return online_; }
    void ForgetDownload(std::u16string_view address) override { forgotten_.emplace(address); }
    std::optional<std::string> Download(std::u16string_view address) override;
    bool GrabHotKey(Handle id, const KeyCombination& key) override;
    void ReleaseHotKey(Handle id) override { hotKeys_.erase(id); }
    void ShowTrayIcon(Handle window, std::u16string_view tip) override { trayTips_[window] = tip; }
    void HideTrayIcon(Handle window) override { trayTips_.erase(window); }
    void RegistryWritten(const RegistryValue& value) override { registry_.push_back(value); }
    void PublishAssociations(const std::vector<RegistryValue>& registry) override {
        published_ = registry;
    }
    /// What has been opened since the last call.
    std::vector<std::u16string> TakeOpened() { return std::exchange(opened_, {}); }

  private:
    bool CallWatches(int timeout);

    Clock clock_;
    Millis virtualNow_ = 0;
    std::chrono::steady_clock::time_point start_;
    Long density_ = 1;
    Rect workArea_{0, 0, 1024, 740};
    Point pointer_;
    Disk disk_ = Disk::kWritable;
    std::u16string clipboard_;
    std::vector<std::u16string> opened_;
    std::vector<Drive> drives_;
    bool online_ = true;
    std::map<std::u16string, std::string> pages_;
    std::set<std::u16string> forgotten_;
    std::vector<AskedPage> downloads_;
    std::vector<KeyCombination> taken_;  ///< by other programs
    std::map<Handle, KeyCombination> hotKeys_;
    std::set<std::u16string> hotKeyNames_;
    std::map<Handle, std::u16string> trayTips_;
    std::vector<RegistryValue> registry_;
    std::optional<std::vector<RegistryValue>> published_;
    std::deque<DriverEvent> events_;
    std::map<int, std::function<void()>> watches_;
};

}  // namespace platform
