#include "host/remote/file_address.h"

#include "host/lyrics/address.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

constexpr std::string_view kScheme = "file:";

bool TakeWord(std::string_view& text, std::string_view word) {
    if (!platform::EqualIgnoringCase(platform::Widen(text.substr(0, word.size())),
                                     platform::Widen(word))) {
        return false;
    }
    text.remove_prefix(word.size());
    return true;
}

}  // namespace

std::string FileAddress(std::string_view absolutePath) {
    std::string address = "file://";
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::string_view::npos; start = end + 1) {
        end = absolutePath.find('/', start);
        address += PercentEncode(absolutePath.substr(start, end - start));
        if (end != std::string_view::npos) {
            address += '/';
        }
    }
    return address;
}

std::optional<std::string> PathOfAddress(std::string_view address) {
    if (!TakeWord(address, kScheme)) {
        return std::nullopt;
    }
    if (TakeWord(address, "//") && !address.starts_with('/')) {
        const bool isHere = TakeWord(address, "localhost") && address.starts_with('/');
        if (!isHere) {
            return std::nullopt;
        }
    }
    const std::string path =
        platform::PercentDecode(address.substr(0, address.find_first_of("?#")));
    const bool isPath = path.starts_with('/') && path.find('\0') == std::string::npos;
    return isPath ? std::optional(path) : std::nullopt;
}

}  // namespace veldrin
