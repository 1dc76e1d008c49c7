// A damaged playlist file: loading it neither crashes nor hangs, and what it loads can be saved and
// loaded again unchanged.
#include "controls/list/jlist.h"
#include "fuzz/fuzz.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/headless/headless_driver.h"

std::string_view fuzz::Seed() {
    return "OMK v1.1\r\n 2 \r\n 1 \r\nFirst\r\n/music/first.mp3\r\nSecond\r\n/music/second.ogg\r\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using sarnel::JList;
    const std::string damaged = fuzz::WriteScratch("damaged.omk", fuzz::Bytes(data, size));
    const std::u16string saved = platform::Widen(fuzz::ScratchFolder() + "/saved.omk");
    platform::HeadlessDriver driver(platform::HeadlessDriver::Clock::kVirtual);
    platform::WindowSystem windows(driver);
    const platform::Rect place{0, 0, 281, 181};
    JList list(windows, 0, place, {false, true, false});
    JList again(windows, 0, place, {false, true, false});
    static_cast<void>(list.Deserialize(platform::Widen(damaged)));
    fuzz::Check(list.Serialize(saved), "a loaded list can be saved");
    fuzz::Check(again.Deserialize(saved), "a saved list can be loaded");
    fuzz::Check(again.ListCount() == list.ListCount(), "as many rows");
    for (platform::Long i = 0; i < list.ListCount(); ++i) {
        fuzz::Check(again.List(i) == list.List(i) && again.ListData(i) == list.ListData(i),
                    "the same rows");
    }
    return 0;
}
