#include "host/http/address.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/base/text.h"

namespace veldrin {

using platform::LowerAscii;

namespace {

constexpr int kPlainPort = 80;
constexpr int kSecurePort = 443;
constexpr std::size_t kLongestHost = 253;

// By hand: the standard's functions of that name ask the locale.
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return LowerAscii(c) >= 'a' && LowerAscii(c) <= 'z';
}

bool IsHexDigit(char c) {
    return IsDigit(c) || (LowerAscii(c) >= 'a' && LowerAscii(c) <= 'f');
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), LowerAscii<char>);
    return lower;
}

bool MayStand(char c) {
    return c > ' ' && c < 0x7F && std::string_view("\"'<>#%\\^`{|}").find(c) == std::string::npos;
}

bool IsEscape(std::string_view text) {
    return text.size() >= 3 && text[0] == '%' && IsHexDigit(text[1]) && IsHexDigit(text[2]);
}

std::string Escape(std::string_view target) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (std::size_t i = 0; i < target.size(); ++i) {
        if (MayStand(target[i]) || IsEscape(target.substr(i))) {
            escaped += target[i];
        } else {
            const auto byte = static_cast<unsigned char>(target[i]);
            escaped += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
        }
    }
    return escaped;
}

bool IsHost(std::string_view host, bool bracketed) {
    return !host.empty() && host.size() <= kLongestHost && std::ranges::all_of(host, [&](char c) {
        return bracketed ? IsHexDigit(c) || c == ':' || c == '.'
                         : IsLetter(c) || IsDigit(c) || c == '-' || c == '.' || c == '_';
    });
}

std::optional<int> ParsePort(std::string_view text) {
    int port = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, port);
    const bool sound = fault == std::errc() && stop == end && port > 0 && port <= 65535;
    return sound ? std::optional(port) : std::nullopt;
}

// "host", "host:port", "[number]", "[number]:port".
bool TakeAuthority(std::string_view authority, HttpAddress& address) {
    const bool bracketed = authority.starts_with('[');
    const std::size_t end = bracketed ? authority.find(']') : authority.find(':');
    if (bracketed && end == std::string_view::npos) {
        return false;
    }
    const std::string_view host =
        bracketed ? authority.substr(1, end - 1) : authority.substr(0, end);
    std::string_view rest = authority.substr(std::min(bracketed ? end + 1 : end, authority.size()));
    if (!IsHost(host, bracketed)) {
        return false;
    }
    address.host = Lower(host);
    if (rest.empty() || rest == ":") {
        return true;
    }
    const auto port = rest.front() == ':' ? ParsePort(rest.substr(1)) : std::nullopt;
    address.port = port.value_or(address.port);
    return port.has_value();
}

std::optional<HttpAddress> AddressOf(bool secure, std::string_view afterSlashes) {
    HttpAddress address;
    address.secure = secure;
    address.port = secure ? kSecurePort : kPlainPort;
    const std::size_t end = std::min(afterSlashes.find_first_of("/?#\\"), afterSlashes.size());
    if (!TakeAuthority(afterSlashes.substr(0, end), address)) {
        return std::nullopt;
    }
    address.target = Escape(afterSlashes.substr(end));
    if (!address.target.starts_with('/')) {
        address.target.insert(0, "/");
    }
    return address;
}

bool HasScheme(std::string_view location) {
    const std::size_t end = location.find_first_of(":/?");
    return end != std::string_view::npos && location[end] == ':';
}

// A path without "." and "..", which lead no further up than to the root.
std::string Straightened(std::string_view path) {
    std::string straight;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/', 1), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(end);
        if (part == "/.." || part == "/.") {
            if (part == "/..") {
                straight.resize(std::min(straight.rfind('/'), straight.size()));
            }
            if (path.empty()) {
                straight += '/';
            }
        } else {
            straight += part;
        }
    }
    return straight;
}

}  // namespace

std::string HttpAddress::Authority() const {
    std::string authority = host.find(':') == std::string::npos ? host : "[" + host + "]";
    if (port != (secure ? kSecurePort : kPlainPort)) {
        authority += ":" + std::to_string(port);
    }
    return authority;
}

std::optional<HttpAddress> ParseHttpAddress(std::string_view address) {
    const std::string scheme = Lower(address.substr(0, address.find("://")));
    if (scheme.size() == address.size() || (scheme != "http" && scheme != "https")) {
        return std::nullopt;
    }
    return AddressOf(scheme == "https", address.substr(scheme.size() + 3));
}

std::optional<HttpAddress> ResolveLocation(const HttpAddress& page, std::string_view location) {
    location = location.substr(0, location.find('#'));
    if (location.starts_with("//")) {
        return AddressOf(page.secure, location.substr(2));
    }
    if (HasScheme(location)) {
        return ParseHttpAddress(location);
    }
    HttpAddress next = page;
    const std::string path = page.target.substr(0, page.target.find('?'));
    const std::size_t query = std::min(location.find('?'), location.size());
    std::string whole(location.substr(0, query));
    if (whole.empty()) {
        whole = path;
    } else if (!whole.starts_with('/')) {
        whole.insert(0, path, 0, path.rfind('/') + 1);
    }
    next.target = Escape(Straightened(whole) + std::string(location.substr(query)));
    return next;
}

}  // namespace veldrin
