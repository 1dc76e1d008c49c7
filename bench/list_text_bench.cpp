// The playlist's repaint with the desktop's own text: lines kept from the last time, and lines that
// are shaped and rendered anew.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <string>

#include "controls/list/jlist.h"
#include "platform/base/text.h"
#include "platform/desktop/text_engine.h"
#include "platform/headless/headless_driver.h"

namespace {

using platform::Font;
using platform::Long;
using sarnel::JList;

constexpr platform::Rect kPlace{0, 0, 281, 181};
constexpr Long kRows = 12;  // that fit

class TextDriver : public platform::HeadlessDriver {
  public:
    TextDriver() : HeadlessDriver(Clock::kVirtual) {}
    platform::Size MeasureText(const Font& font, std::u16string_view text) const override {
        return engine_.Measure(font, text);
    }
    platform::TextPicture RenderText(const Font& font, std::u16string_view text, Long left,
                                     Long width, Long density) const override {
        return engine_.Render(font, text, left, width, density);
    }

  private:
    mutable platform::desktop::TextEngine engine_;
};

struct Bench {
    explicit Bench(Long number, Long rows = kRows) {
        list.RedrawFlag(false);
        for (Long row = 0; row < rows; ++row) {
            list.AddItem(Title(number + row), u"");
        }
    }
    static std::u16string Title(Long number) {
        return u"The Plucked Strings - Morning Stairs, part " +
               platform::Widen(std::to_string(number));
    }

    TextDriver driver;
    platform::WindowSystem windows{driver};
    platform::Handle window = windows.CreateWindow(0, kPlace, {});
    JList list{windows, window, kPlace, sarnel::JListStored{}};
};

void FullRepaint(benchmark::State& state) {
    Bench bench(0);
    for (auto _ : state) {
        bench.list.SetFont(bench.list.ListFont());  // what is on the face counts as old
        bench.list.DisplayList();
    }
}
BENCHMARK(FullRepaint)->Unit(benchmark::kMicrosecond);

// The first one of a list.
void FirstRepaint(benchmark::State& state) {
    Long number = 1000;
    for (auto _ : state) {
        state.PauseTiming();
        Bench bench(number += kRows);
        state.ResumeTiming();
        bench.list.DisplayList();
    }
}
BENCHMARK(FirstRepaint)->Unit(benchmark::kMicrosecond);

// From page to page of a long list, none of which has been seen before, at a density.
void PageDown(benchmark::State& state) {
    constexpr Long kLong = 100'000;
    platform::Surface::DensityInForce(static_cast<Long>(state.range(0)));
    {
        Bench bench(0, kLong);
        bench.list.RedrawFlag(true);
        for (auto _ : state) {
            bench.windows.SendMessage(bench.list.HWnd(), platform::WM_KEYDOWN, platform::VK_NEXT,
                                      0);
            if (bench.list.ListIndex() == kLong - 1) {
                bench.windows.SendMessage(bench.list.HWnd(), platform::WM_KEYDOWN,
                                          platform::VK_HOME, 0);
            }
        }
    }
    platform::Surface::DensityInForce(1);
}
BENCHMARK(PageDown)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
