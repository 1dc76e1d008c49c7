// Lists of media from anywhere: reading them neither crashes nor hangs, and every name could be
// that of a file. The first byte chooses the kind.
#include <utility>

#include "fuzz/fuzz.h"
#include "platform/files/media_list.h"
#include "platform/files/media_name.h"

namespace {

using Names = std::vector<std::string>;

Names NamesIn(unsigned kind, std::string_view bytes) {
    switch (kind % 3) {
        case 0:
            return platform::NamesInM3u(bytes);
        case 1:
            return platform::NamesInPls(bytes);
        default:
            return platform::NamesInCue(bytes).value_or(Names());
    }
}

}  // namespace

std::string_view fuzz::Seed() {
    return "0\xEF\xBB\xBF#EXTM3U\r\n#EXTINF:1,a\r\nFile2=b\\%20c\xE9.mp3\r\nfile:///a%2\n"
           "FILE \"x y.wav\" WAVE\n  TRACK 01 AUDIO\r[playlist]\nFile1=http://a/b\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes = fuzz::Bytes(data, size).substr(1);
    for (const std::string& name : NamesIn(data[0], bytes)) {
        fuzz::Check(!name.empty() && name.size() <= platform::kLongestMediaName, "a fit length");
        fuzz::Check(name.find_first_of(std::string_view("\0\r\n", 3)) == std::string::npos,
                    "a name in one line");
        for (const auto kind : {platform::MediaNames::kPaths, platform::MediaNames::kAddresses}) {
            const auto path = platform::PathOfMediaName(name, kind, fuzz::ScratchFolder());
            fuzz::Check(!path || path->starts_with('/'), "a whole path");
        }
        static_cast<void>(platform::IsStream(name));
    }
    return 0;
}
