// What walks a long playlist. The search panel: a keystroke, the first and the fifth, the opening,
// and what the heap holds after a hundred keystrokes; a title in five is in Cyrillic letters. And
// the removal of the rows whose file is gone.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <string>

#include "bench/loaded_component.h"
#include "browser/search.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "menus/commandmenu.h"
#include "platform/base/text.h"
#include "playlist/listcommands.h"

namespace {

using platform::Long;

// A run with a playlist of so many rows, its window shown.
class Run {
  public:
    explicit Run(Long rows) {
        sarnel::ImpulseValue show = true;
        sarnel::ImpulseValue line = std::u16string();
        loaded_.component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, show, line);
        sarnel::JList& list = sarnel::Playlist();
        list.RedrawFlag(false);
        for (Long i = 0; i < rows; ++i) {
            list.AddItem(Title(i), u"/home/someone/music/Some Artist/An Album/Song.flac");
        }
        list.RedrawFlag(true);
    }

  private:
    static std::u16string Title(Long i) {
        static const std::array<std::u16string, 5> kArtists{
            u"The Silent Harbour", u"Nina Lindqvist", u"Orchestre du Pont",
            u"\u0410\u043D\u043D\u0430 \u0420\u0435\u043A\u0430 \u0438 \u0445\u043E\u0440",
            u"Four Stones"};
        static const std::array<std::u16string, 7> kWords{u"Songs",  u"of",   u"Evening", u"Sun",
                                                          u"Rivers", u"Ways", u"Slow"};
        std::u16string title = kArtists.at(static_cast<std::size_t>(i) % kArtists.size()) + u" - ";
        for (Long n = i, words = 0; words < 4; ++words, n = n / 3 + 1) {
            title += kWords.at(static_cast<std::size_t>(n) % kWords.size()) + u" ";
        }
        return title + platform::Widen(std::to_string(i));
    }

    bench::LoadedComponent loaded_;
};

constexpr std::u16string_view kTyped = u"songs";

// What of a keystroke is looking alone.
void NothingFound(benchmark::State& state) {
    const Run run(static_cast<Long>(state.range(0)));
    for (auto unused : state) {
        sarnel::RefreshSearch(u"sonnet");
    }
}
BENCHMARK(NothingFound)->Unit(benchmark::kMillisecond)->Arg(100)->Arg(10'000)->Arg(100'000);

// Rows, and how many letters there are after the keystroke.
void Keystroke(benchmark::State& state) {
    const Run run(static_cast<Long>(state.range(0)));
    const auto letters = static_cast<std::size_t>(state.range(1));
    for (auto unused : state) {
        state.PauseTiming();
        sarnel::RefreshSearch(kTyped.substr(0, letters - 1));
        state.ResumeTiming();
        sarnel::RefreshSearch(kTyped.substr(0, letters));
    }
    state.counters["hits"] = sarnel::App().Main().lst_Search->ListCount();
}
BENCHMARK(Keystroke)
    ->Unit(benchmark::kMillisecond)
    ->ArgsProduct({{100'000}, {1, 2, 3, 4, 5}})
    ->ArgsProduct({{1'000'000}, {1, 5}});

void OpenPanel(benchmark::State& state) {
    const Run run(static_cast<Long>(state.range(0)));
    for (auto unused : state) {
        sarnel::RunMenuCommand(u"kPkSh");
        state.PauseTiming();
        sarnel::RunMenuCommand(u"kPkSh");
        state.ResumeTiming();
    }
}
BENCHMARK(OpenPanel)->Unit(benchmark::kMillisecond)->Arg(100'000);

// What the heap holds more after a second hundred of keystrokes than after the first: bytes.
void HundredKeystrokes(benchmark::State& state) {
    const Run run(100'000);
    const auto strike = [] {
        for (std::size_t i = 0; i < 100; ++i) {
            sarnel::RefreshSearch(kTyped.substr(0, kTyped.size() - i % kTyped.size()));
        }
    };
    strike();  // the allocator keeps small blocks for itself
    const auto before = mallinfo2().uordblks;
    for (auto unused : state) {
        strike();
    }
    state.counters["grown"] =
        static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before);
}
BENCHMARK(HundredKeystrokes)->Unit(benchmark::kMillisecond)->Iterations(1);

// Every second row names a file that is there.
void RemoveDeadRows(benchmark::State& state) {
    const Run run(static_cast<Long>(state.range(0)));
    sarnel::JList& list = sarnel::Playlist();
    for (auto unused : state) {
        state.PauseTiming();
        sarnel::ClearAllEntries();
        list.RedrawFlag(false);
        for (Long i = 0; i < state.range(0); ++i) {
            list.AddItem(u"Title",
                         i % 2 == 0 ? u"/bin/sh" : u"/usr/share/music/Some Artist/Album/Song.flac");
        }
        list.RedrawFlag(true);
        state.ResumeTiming();
        sarnel::RemoveDeadEntries();
    }
    state.counters["left"] = list.ListCount();
}
BENCHMARK(RemoveDeadRows)->Unit(benchmark::kMillisecond)->Arg(100'000);

}  // namespace
