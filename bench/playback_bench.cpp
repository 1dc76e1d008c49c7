// The last pick of a random round over a long list: one free row among all the played ones.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "core/ambrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"
#include "playback/mPlayback.h"

namespace {

using platform::Long;

// Opens everything and plays for ever.
class WillingHost : public sarnel::HostObject {
  public:
    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor&, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue&, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override {
        if (uMsg.AsLong() == sarnel::ImpulseOpen) {
            lParam2.Assign(true);
        } else if (uMsg.AsLong() == sarnel::ImpulseGetLength) {
            lParam1.Assign(Long{200});
        }
        return Long{0};
    }
    Long Capacity() override { return 0; }
    sarnel::HostCell* CellItem(Long&) override { return nullptr; }
};

void LastRandomPick(benchmark::State& state) {
    const auto rows = static_cast<Long>(state.range(0));
    std::string folder = "/tmp/veldrin-bench-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        state.SkipWithError("no scratch folder");
        return;
    }
    platform::HeadlessDriver driver(platform::HeadlessDriver::Clock::kVirtual);
    platform::WindowSystem windows(driver);
    WillingHost host;
    {
        sarnel::Ambrisor component(windows, {folder});
        component.Connect(&host);
        sarnel::ImpulseValue unused1;
        sarnel::ImpulseValue unused2;
        component.ProcessImpulse(sarnel::kImpulseAttach, {}, unused1, unused2);
        component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, unused1, unused2);
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
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}
BENCHMARK(LastRandomPick)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
