// The file browser fills its list with a folder of many entries, the host's question for each file
// included, and a search goes through a tree.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/loaded_component.h"
#include "browser/filebrowser.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "playlist/media.h"

namespace {

using platform::Long;

void MakeFiles(const std::string& folder, Long count) {
    std::filesystem::create_directories(folder);
    for (Long i = 0; i < count; ++i) {
        // Names as they are, which differ early and late.
        std::ofstream(folder + "/" + std::to_string(i * 7919 % 100) + " Some Artist - Song " +
                      std::to_string(10'000 + i) + ".mp3");
    }
}

void FillFolder(benchmark::State& state) {
    const auto entries = static_cast<Long>(state.range(0));
    bench::LoadedComponent loaded;
    MakeFiles(loaded.folder.Path() + "/m", entries);
    sarnel::JList& list = *sarnel::App().Main().lstFilesAndFolders;
    const std::u16string path = platform::Widen(loaded.folder.Path() + "/m/");
    for (auto _ : state) {
        sarnel::FillBrowser(list, path);
        if (list.ListCount() != entries + 2) {
            state.SkipWithError("not all entries");
        }
    }
}
BENCHMARK(FillFolder)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMillisecond);

void SearchTree(benchmark::State& state) {
    constexpr Long kPerFolder = 10;
    const auto folders = static_cast<Long>(state.range(0));
    bench::LoadedComponent loaded;
    for (Long i = 0; i < folders; ++i) {
        MakeFiles(loaded.folder.Path() + "/m/Artist " + std::to_string(i / 10) + "/Album " +
                      std::to_string(i),
                  kPerFolder);
    }
    const std::u16string path = platform::Widen(loaded.folder.Path() + "/m/");
    for (auto _ : state) {
        sarnel::Playlist().Clear();
        sarnel::Playlist().RedrawFlag(false);
        sarnel::SearchFiles(path, u"*.*", true);
        if (sarnel::Playlist().ListCount() != folders * kPerFolder) {
            state.SkipWithError("not all files");
        }
    }
}
BENCHMARK(SearchTree)->Arg(1'000)->Unit(benchmark::kMillisecond);

}  // namespace
