// Adding a folder: the titles of 10,000 tagged files (mp3, ogg and flac in turn), asked for one
// after the other in the order in which a folder is added, with the files in the system's cache.
// All titles after 0.46 s are the goal.
#include <benchmark/benchmark.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "host/engine/tag_file.h"
#include "host/engine/tags.h"
#include "sound_files.h"

namespace {

constexpr int kFiles = 10000;

/// 10,000 tagged files, made once for all benchmarks here.
class TaggedFolder {
  public:
    TaggedFolder() {
        struct Kind {
            const char* extension;
            const char* chain;
        };
        constexpr std::array kKinds = {Kind{".mp3", "lamemp3enc"},
                                       Kind{".ogg", "vorbisenc ! oggmux"},
                                       Kind{".flac", "flacenc"}};
        audio_tests::WriteWav(directory_ / "in.wav", audio_tests::Tone(440, 3.0));
        std::filesystem::create_directory(directory_ / "songs");
        for (std::size_t i = 0; i < kFiles; ++i) {
            const Kind& kind = kKinds.at(i % kKinds.size());
            const std::string model = directory_ / (std::string("model") + kind.extension);
            if (i < kKinds.size() &&
                !audio_tests::Encode(directory_ / "in.wav", kind.chain, model)) {
                std::abort();  // without encoders there is nothing to measure
            }
            const std::string number = std::to_string(10000 + i);
            paths_.push_back(directory_ / ("songs/Track " + number + kind.extension));
            std::filesystem::copy_file(model, paths_.back());
            TagLib::FileRef file(paths_.back().c_str(), false);
            file.tag()->setArtist("The Artist of " + number);
            file.tag()->setTitle("A Title of Common Length " + number);
            file.tag()->setAlbum("The Album");
            file.tag()->setGenre("Rock");
            file.tag()->setYear(1999);
            file.save();
        }
    }
    const std::vector<std::string>& Paths() const { return paths_; }

  private:
    audio_tests::TemporaryDirectory directory_;
    std::vector<std::string> paths_;
};

const TaggedFolder& Folder() {
    static const TaggedFolder folder;
    return folder;
}

void Check(benchmark::State& state, const std::string& title, std::size_t i) {
    const std::string number = std::to_string(10000 + i);
    if (title != "The Artist of " + number + " - A Title of Common Length " + number) {
        state.SkipWithError(("wrong title: " + title).c_str());
    }
}

/// Asks for the titles as the host does.
void BM_TitlesOfAFolder(benchmark::State& state) {
    const auto& paths = Folder().Paths();
    for (auto _ : state) {
        veldrin::TagReader reader;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            Check(state, reader.Title(paths[i], "fallback"), i);
        }
    }
}
BENCHMARK(BM_TitlesOfAFolder)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Asks for them without reading ahead.
void BM_TitlesOneByOne(benchmark::State& state) {
    const auto& paths = Folder().Paths();
    for (auto _ : state) {
        std::optional<platform::FileStamp> stamp;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            Check(state, veldrin::ReadTitle(paths[i], stamp), i);
        }
    }
}
BENCHMARK(BM_TitlesOneByOne)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What the library does with its own file class and everything read, for comparison.
void BM_TitlesByTheLibraryAlone(benchmark::State& state) {
    const auto& paths = Folder().Paths();
    for (auto _ : state) {
        for (const std::string& path : paths) {
            const TagLib::FileRef file(path.c_str());
            benchmark::DoNotOptimize(file.tag()->title().to8Bit(true));
        }
    }
}
BENCHMARK(BM_TitlesByTheLibraryAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
