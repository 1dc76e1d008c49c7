#include "platform/files/file_address.h"

#include <unistd.h>

#include <algorithm>
#include <array>

#include "platform/base/text.h"

namespace platform {

namespace {

// The names of schemes and hosts know no case but that of ASCII.
bool SameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

bool StandsForItself(char c) {
    const char lower = LowerAscii(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("/-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::optional<std::string> PathOfAddress(std::string_view address, std::string_view hostName) {
    constexpr std::string_view kScheme = "file:";
    if (!SameWord(address.substr(0, kScheme.size()), kScheme)) {
        return std::nullopt;
    }
    address.remove_prefix(kScheme.size());
    if (address.starts_with("//")) {
        address.remove_prefix(2);
        const std::string_view host = address.substr(0, address.find('/'));
        const bool local = host.empty() || SameWord(host, "localhost") || SameWord(host, hostName);
        if (!local) {
            return std::nullopt;
        }
        address.remove_prefix(host.size());
    }
    if (!address.starts_with('/')) {
        return std::nullopt;
    }
    std::string bytes = PercentDecode(address);
    return bytes.find('\0') == std::string::npos ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string AddressOfPath(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string address = "file://";
    for (const char c : path) {
        if (StandsForItself(c)) {
            address.push_back(c);
        } else {
            const auto byte = static_cast<unsigned char>(c);
            address.append({'%', kDigits[byte / 16], kDigits[byte % 16]});
        }
    }
    return address;
}

std::string HostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : "";
}

}  // namespace platform
