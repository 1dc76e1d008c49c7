// Any bytes survive the way into text and out again.
#include "fuzz/fuzz.h"
#include "platform/base/text.h"

std::string_view fuzz::Seed() {
    return "/music/Caf\xc3\xa9 \xf0\x9f\x8e\xb5/\xe9t\xe9.mp3";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::Bytes(data, size);
    fuzz::Check(platform::Narrow(platform::Widen(bytes)) == bytes, "bytes survive");
    return 0;
}
