// Whatever calls itself xspf: reading it neither crashes nor hangs nor swells, and no name is empty
// or longer than a name may be.
#include "fuzz/fuzz.h"
#include "platform/desktop/xspf.h"
#include "platform/files/media_list.h"

std::string_view fuzz::Seed() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<playlist version=\"1\" "
           "xmlns=\"http://xspf.org/ns/0/\">\n<location>http://a</location><trackList>\n<track>"
           "<title>&lt;b&gt;</title><location>file:///a%20b.mp3</location></track>\n<track>"
           "<location><![CDATA[c&d.mp3]]></location></track></trackList></playlist>\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto names = platform::desktop::LocationsOfXspf(fuzz::Bytes(data, size));
    if (!names) {
        return 0;
    }
    fuzz::Check(names->size() <= size, "no more names than bytes");
    for (const std::string& name : *names) {
        fuzz::Check(!name.empty() && name.size() <= platform::kLongestMediaName, "a fit length");
    }
    return 0;
}
