// The last pick of a random round over a long list: one free row among all the played ones.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/loaded_component.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "playback/mPlayback.h"

namespace {

using platform::Long;

void LastRandomPick(benchmark::State& state) {
    const auto rows = static_cast<Long>(state.range(0));
    const bench::LoadedComponent loaded;
    sarnel::JList& list = sarnel::Playlist();
    list.RedrawFlag(false);
    for (Long i = 0; i < rows; ++i) {
        const std::string digits = std::to_string(10'000'000 + i).substr(1);
        list.AddItem(u"title", platform::Widen("/home/someone/Music/Some Artist/An Album/" +
                                               digits + ".flac"));
    }
    sarnel::App().Random = true;
    sarnel::PlayedHistory& history = sarnel::App().History;
    for (auto _ : state) {
        state.PauseTiming();
        history.Clear();
        for (Long i = 0; i < rows; ++i) {
            if (i != rows / 3) {
                history.Add(list.ListData(i));
            }
        }
        history.Pos(history.Count());
        state.ResumeTiming();
        sarnel::NextItem();
        if (list.ListCurrent() != rows / 3) {
            state.SkipWithError("not the free row");
        }
    }
}
BENCHMARK(LastRandomPick)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
