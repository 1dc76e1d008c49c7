#include "platform/desktop/network.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "platform/base/words.h"
#include "platform/files/files.h"

namespace platform::desktop {

namespace {

constexpr unsigned kUp = 0x1;
constexpr unsigned kRejects = 0x200;

bool LeadsOut(std::string_view interface, std::string_view flags) {
    unsigned bits = 0;
    const char* const end = flags.data() + flags.size();
    const bool isNumber = std::from_chars(flags.data(), end, bits, 16).ptr == end;  // or a heading
    return isNumber && interface != "lo" && (bits & kUp) != 0 && (bits & kRejects) == 0;
}

/// The host, without brackets and port.
std::string_view HostOf(std::string_view address) {
    constexpr std::string_view kSlashes = "://";
    const std::size_t scheme = address.find(kSlashes);
    if (scheme == std::string_view::npos) {
        return {};
    }
    address.remove_prefix(scheme + kSlashes.size());
    address = address.substr(0, address.find_first_of("/?#\\"));
    if (address.find('@') != std::string_view::npos) {
        return {};
    }
    if (!address.starts_with('[')) {
        return address.substr(0, address.find(':'));
    }
    const std::size_t end = address.find(']');
    return end == std::string_view::npos ? std::string_view() : address.substr(1, end - 1);
}

}  // namespace

bool LeadsToThisMachine(std::string_view address) {
    std::string host(HostOf(address));
    std::ranges::transform(host, host.begin(), LowerAscii<char>);
    in_addr four{};
    in6_addr six{};
    return host == "localhost" ||
           (inet_pton(AF_INET, host.c_str(), &four) == 1 && host.starts_with("127.")) ||
           (inet_pton(AF_INET6, host.c_str(), &six) == 1 && IN6_IS_ADDR_LOOPBACK(&six));
}

bool HasRoute(std::string_view routes, std::string_view routes6) {
    constexpr std::size_t kColumns = 4;    // interface, destination, gateway, flags
    constexpr std::size_t kColumns6 = 10;  // the flags last but one, the interface last
    const auto leads = [](std::string_view line) {
        const auto columns = Words(line);
        return columns.size() >= kColumns && LeadsOut(columns[0], columns[3]);
    };
    const auto leads6 = [](std::string_view line) {
        const auto columns = Words(line);
        return columns.size() >= kColumns6 && LeadsOut(columns[9], columns[8]);
    };
    return std::ranges::any_of(Lines(routes), leads) || std::ranges::any_of(Lines(routes6), leads6);
}

bool HasRouteHere() {
    constexpr std::size_t kMostRead = std::size_t{4} << 20U;
    return HasRoute(ReadWholeFile(u"/proc/net/route", kMostRead).value_or(""),
                    ReadWholeFile(u"/proc/net/ipv6_route", kMostRead).value_or(""));
}

}  // namespace platform::desktop
