// The list as a user meets it: repaints with twelve ordinary titles, and keys, scrolling and
// selection with a million rows. Text is drawn as without a screen: blocks, rendered once and kept.
#include <benchmark/benchmark.h>

#include <string>

#include "controls/list/jlist.h"
#include "platform/base/keys.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"

namespace {

using platform::Long;
using sarnel::JList;
using sarnel::JListStored;

constexpr platform::Rect kPlace{0, 0, 281, 181};

JListStored Plain() {
    JListStored stored;
    stored.sorted = false;
    return stored;
}

struct Bench {
    explicit Bench(Long rows) {
        list.RedrawFlag(false);
        for (Long i = 0; i < rows; ++i) {
            list.AddItem(u"The Plucked Strings - Morning Stairs", u"");
        }
        list.RedrawFlag(true);
        list.ListCurrent(3);
        list.ClearOrSelect(1, 4, true);
    }
    void Key(Long code, Long shift = 0) {
        windows.SendMessage(list.HWnd(), platform::WM_KEYDOWN, code, shift);
    }

    platform::HeadlessDriver driver{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows{driver};
    platform::Handle window = windows.CreateWindow(0, kPlace, {});
    JList list{windows, window, kPlace, Plain()};
};

void FullRepaint(benchmark::State& state) {
    Bench bench(static_cast<Long>(state.range(0)));
    for (auto _ : state) {
        bench.list.SetFont(bench.list.ListFont());  // what is on the face counts as old
        bench.list.DisplayList();
    }
}
BENCHMARK(FullRepaint)->Arg(12)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void FullRepaintOfSelectedRows(benchmark::State& state) {
    Bench bench(10'000);
    bench.list.ClearOrSelect(-1, -1, true);
    for (auto _ : state) {
        bench.list.SetFont(bench.list.ListFont());
        bench.list.DisplayList();
    }
}
BENCHMARK(FullRepaintOfSelectedRows)->Unit(benchmark::kMicrosecond);

void UnchangedRepaint(benchmark::State& state) {
    Bench bench(10'000);
    for (auto _ : state) {
        bench.list.DisplayList();
    }
}
BENCHMARK(UnchangedRepaint)->Unit(benchmark::kMicrosecond);

// Four selected rows, one of them current.
void PulsedRepaint(benchmark::State& state) {
    Bench bench(10'000);
    platform::Colour colour = 0;
    for (auto _ : state) {
        colour = (colour + 1) & 0xFFFFFF;
        bench.list.FocusRectColor(colour);
        bench.list.SelTextColor(colour);
        bench.list.DisplayList();
    }
}
BENCHMARK(PulsedRepaint)->Unit(benchmark::kMicrosecond);

constexpr Long kMillion = 1'000'000;

void Keys(benchmark::State& state, Long there, Long back, Long shift) {
    Bench bench(kMillion);
    for (auto _ : state) {
        bench.Key(there, shift);
        bench.Key(back, shift);
    }
}
using namespace platform;
BENCHMARK_CAPTURE(Keys, DownUpOfAMillion, VK_DOWN, VK_UP, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Keys, PagesOfAMillion, VK_NEXT, VK_PRIOR, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Keys, EndHomeOfAMillion, VK_END, VK_HOME, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Keys, ShiftEndHomeOfAMillion, VK_END, VK_HOME, 1)->Unit(benchmark::kMicrosecond);

void SelectAllOfAMillion(benchmark::State& state) {
    Bench bench(kMillion);
    for (auto _ : state) {
        bench.list.ClearOrSelect(-1, -1, true);
        state.PauseTiming();
        bench.list.ClearOrSelect(-1, -1, false);
        state.ResumeTiming();
    }
}
BENCHMARK(SelectAllOfAMillion)->Unit(benchmark::kMicrosecond);

void SelectHalfOfAMillion(benchmark::State& state) {
    Bench bench(kMillion);
    for (auto _ : state) {
        bench.list.ClearOrSelect(kMillion / 2, kMillion, true);
        state.PauseTiming();
        bench.list.ClearOrSelect(-1, -1, false);
        state.ResumeTiming();
    }
}
BENCHMARK(SelectHalfOfAMillion)->Unit(benchmark::kMicrosecond);

void ScrollOfAMillion(benchmark::State& state) {
    Bench bench(kMillion);
    Long row = 0;
    for (auto _ : state) {
        row = (row + 3) % kMillion;
        bench.list.DisplayFrom(row);
    }
}
BENCHMARK(ScrollOfAMillion)->Unit(benchmark::kMicrosecond);

}  // namespace
