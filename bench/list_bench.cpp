// The list at size: restoring, saving, copying, adding, removing, and what a row costs in memory.
// Rows have 25 characters of title and 60 of path.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <string>

#include "controls/list/jlist.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"

namespace {

using platform::Long;
using sarnel::JList;

constexpr platform::Rect kPlace{6, 27, 287, 208};

struct Bench {
    platform::HeadlessDriver driver{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows{driver};
    std::unique_ptr<JList> list = Fresh();

    std::unique_ptr<JList> Fresh() {
        auto made =
            std::make_unique<JList>(windows, 0, kPlace, sarnel::JListStored{false, true, false});
        made->RedrawFlag(false);
        return made;
    }
};

// The number in seven digits between two texts.
std::u16string Numbered(const char* before, Long number, const char* behind) {
    const std::string digits = std::to_string(10'000'000 + number).substr(1);
    return platform::Widen(before + digits + behind);
}

std::u16string Title(Long i) {
    return Numbered("Some Artist - Song", i, "");
}
std::u16string Path(Long i) {
    return Numbered("/home/someone/music/Some Artist/An Album/", i, " Song n.flac");
}

void FillList(JList& list, Long rows) {
    for (Long i = 0; i < rows; ++i) {
        list.AddItem(Title(i), Path(i));
    }
}

std::u16string SavedFile(Long rows) {
    Bench bench;
    FillList(*bench.list, rows);
    const std::u16string path =
        platform::Widen("/tmp/veldrin-bench-" + std::to_string(getpid()) + ".omk");
    static_cast<void>(bench.list->Serialize(path));
    return path;
}

void PerRow(benchmark::State& state) {
    state.counters["s/row"] = benchmark::Counter(
        static_cast<double>(state.range(0)),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Restore(benchmark::State& state) {
    const std::u16string path = SavedFile(static_cast<Long>(state.range(0)));
    Bench bench;
    for (auto _ : state) {
        if (!bench.list->Deserialize(path) || bench.list->ListCount() != state.range(0)) {
            state.SkipWithError("not restored");
        }
        state.PauseTiming();
        bench.list = bench.Fresh();
        state.ResumeTiming();
    }
    PerRow(state);
    unlink(platform::Narrow(path).c_str());
}
BENCHMARK(Restore)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state) {
    Bench bench;
    FillList(*bench.list, static_cast<Long>(state.range(0)));
    const std::u16string path =
        platform::Widen("/tmp/veldrin-bench-" + std::to_string(getpid()) + ".omk");
    for (auto _ : state) {
        if (!bench.list->Serialize(path)) {
            state.SkipWithError("not saved");
        }
    }
    PerRow(state);
    unlink(platform::Narrow(path).c_str());
}
BENCHMARK(Save)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// What the window waits for when the host takes a copy.
void Copy(benchmark::State& state) {
    Bench bench;
    FillList(*bench.list, static_cast<Long>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench.list->Copy());
    }
    PerRow(state);
}
BENCHMARK(Copy)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void AddAtEnd(benchmark::State& state) {
    Bench bench;
    FillList(*bench.list, static_cast<Long>(state.range(0)));
    const std::u16string title = Title(1);
    const std::u16string path = Path(1);
    for (auto _ : state) {
        bench.list->AddItem(title, path);
    }
}
BENCHMARK(AddAtEnd)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);

void RemoveEverySecond(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Bench bench;
        FillList(*bench.list, static_cast<Long>(state.range(0)));
        state.ResumeTiming();
        for (Long i = static_cast<Long>(state.range(0)) - 1; i >= 0; i -= 2) {
            bench.list->RemoveItem(i);
        }
    }
}
BENCHMARK(RemoveEverySecond)->Arg(100'000)->Unit(benchmark::kMillisecond);

void MemoryPerRow(benchmark::State& state) {
    const std::u16string path = SavedFile(static_cast<Long>(state.range(0)));
    for (auto _ : state) {
        Bench bench;
        const auto used = [] {
            const struct mallinfo2 info = mallinfo2();
            return info.uordblks + info.hblkhd;
        };
        const std::size_t before = used();
        static_cast<void>(bench.list->Deserialize(path));
        state.counters["KiB/row"] =
            static_cast<double>(used() - before) / 1024.0 / static_cast<double>(state.range(0));
    }
    unlink(platform::Narrow(path).c_str());
}
BENCHMARK(MemoryPerRow)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Iterations(1);

}  // namespace
