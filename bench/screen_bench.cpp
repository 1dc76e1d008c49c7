// The picture of the main window: composed anew, and a tick of its timers.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <span>

#include "core/ambrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/headless/headless_driver.h"
#include "playback/mPlayback.h"

namespace {

using namespace sarnel;
using platform::Rect;

// A screen that is there and costs nothing.
class Screen : public platform::HeadlessDriver {
  public:
    Screen() : HeadlessDriver(Clock::kVirtual) {}
    bool ShowsPictures() const override { return true; }
    void ShowPicture(platform::Handle, const platform::Surface&,
                     std::span<const Rect> changed) override {
        for (const Rect& rect : changed) {
            pixels += std::int64_t{rect.Width()} * rect.Height();
        }
    }
    std::int64_t pixels = 0;
};

struct Player {
    explicit Player(Long rows) {
        folder = std::filesystem::temp_directory_path() / "veldrin-screen-bench";
        std::filesystem::create_directories(folder);
        component = std::make_unique<Ambrisor>(windows, AmbrisorOptions{folder.string()});
        ImpulseValue first;
        ImpulseValue second;
        component->ProcessImpulse(kImpulseAttach, {}, first, second);
        component->ProcessImpulse(kImpulseControl, kControlLoad, first, second);
        for (Long i = 0; i < rows; ++i) {
            Playlist().AddItem(u"The Plucked Strings - Morning Stairs", u"/m/a.mp3");
        }
        first = true;
        second = u"";
        component->ProcessImpulse(kImpulseControl, kControlShow, first, second);
        windows.DoEvents();
    }
    ~Player() {
        component.reset();
        std::filesystem::remove_all(folder);
    }

    std::filesystem::path folder;
    Screen screen;
    platform::WindowSystem windows{screen};
    std::unique_ptr<Ambrisor> component;
};

void WholePicture(benchmark::State& state) {
    Player player(100);
    for (auto _ : state) {
        player.windows.InvalidateRect(App().Main().HWnd(), {0, 0, 293, 277});
        player.windows.UpdateScreen();
    }
}
BENCHMARK(WholePicture);

// A beat of the scroll timer; the argument tells how many rows are selected.
void Tick(benchmark::State& state) {
    Player player(100);
    for (Long i = 0; i < state.range(0); ++i) {
        Playlist().Selected(i, true);
    }
    const platform::Handle window = App().Main().HWnd();
    for (auto _ : state) {
        ScrollTimerProc(window, 12);
        player.windows.UpdateScreen();
    }
    state.counters["pixels"] =
        static_cast<double>(player.screen.pixels) / static_cast<double>(state.iterations());
}
BENCHMARK(Tick)->Arg(0)->Arg(1)->Arg(12);

}  // namespace
