// The component on a driver of no more than what a driver must have: what it links is all that it
// needs, and a run goes from start to end.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/ambrisor.h"
#include "platform/driver.h"
#include "platform/windows/window_system.h"

namespace {

using platform::Millis;

class LeastDriver : public platform::Driver {
  public:
    Millis Now() const override { return now_; }
    void WaitUntil(std::optional<Millis> deadline) override {
        now_ = std::max(now_, deadline.value_or(now_));
    }
    std::optional<platform::DriverEvent> NextEvent() override { return std::nullopt; }
    void Watch(int /*descriptor*/, std::function<void()> /*onReadable*/) override {}
    std::uint64_t RandomSeed() override { return 1; }
    platform::Size ScreenSize() const override { return {800, 600}; }
    platform::Rect WorkArea() const override { return {0, 0, 800, 600}; }
    platform::Point Pointer() const override { return {}; }
    platform::Size MeasureText(const platform::Font& /*font*/,
                               std::u16string_view text) const override {
        return {7 * static_cast<platform::Long>(text.size()), 12};
    }
    platform::TextPicture RenderText(const platform::Font& /*font*/, std::u16string_view /*text*/,
                                     platform::Long /*left*/, platform::Long /*width*/,
                                     platform::Long /*density*/) const override {
        return {};
    }

  private:
    Millis now_ = 0;
};

bool RunOnce(platform::WindowSystem& windows, const std::string& folder) {
    sarnel::Ambrisor component(windows, {folder});
    component.Connect(nullptr);
    sarnel::ImpulseValue first;
    sarnel::ImpulseValue second;
    component.ProcessImpulse(sarnel::kImpulseAttach, {}, first, second);
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, first, second);
    const platform::Handle window = first.AsLong().value_or(0);
    const bool loaded = windows.IsWindow(window);
    first = true;
    second = u"";
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
    const bool shown = windows.IsVisible(window);
    windows.Sleep(200);
    first = false;
    component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
    return loaded && shown && !windows.IsWindow(window);
}

}  // namespace

int main() {
    std::string folder = (std::filesystem::temp_directory_path() / "alone-XXXXXX").native();
    if (mkdtemp(folder.data()) == nullptr) {
        return 2;
    }
    LeastDriver driver;
    platform::WindowSystem windows(driver);
    const bool good = RunOnce(windows, folder) && RunOnce(windows, folder) &&
                      std::filesystem::exists(folder + "/Sarnel.Ambrisor.omk");
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    std::puts(good ? "good" : "a run did not go from start to end");
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
