#include "platform/files/media_name.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/base/text.h"
#include "platform/files/absolute_path.h"
#include "platform/files/file_address.h"

namespace platform {

namespace {

std::string WithoutBlanks(const std::string& name) {
    const std::size_t start = std::min(name.find_first_not_of(" \t"), name.size());
    return name.substr(start, name.find_last_not_of(" \t") + 1 - start);
}

std::string Unescaped(const std::string& name) {
    return PercentDecode(name);
}

std::string WithSlashes(const std::string& name) {
    std::string other = name;
    std::replace(other.begin(), other.end(), '\\', '/');
    return other;
}

// Bytes that are no UTF-8 stand in text as surrogates behind U+DC00.
std::string FromLatin1(const std::string& name) {
    std::u16string text = Widen(name);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool alone = !InsidePair(text, i);
        if (alone && text[i] >= 0xDC80 && text[i] <= 0xDCFF) {
            text[i] = static_cast<char16_t>(text[i] - 0xDC00);
        }
    }
    return Narrow(text);
}

// What the name may say, likeliest first.
std::vector<std::string> Readings(std::string_view name, MediaNames names) {
    std::vector<std::string> readings;
    const auto add = [&readings](std::string reading) {
        if (!reading.empty() &&
            std::find(readings.begin(), readings.end(), reading) == readings.end()) {
            readings.push_back(std::move(reading));
        }
    };
    std::string text(name);
    if (names == MediaNames::kAddresses) {
        add(Unescaped(text));
    }
    add(std::move(text));
    for (const auto change : {WithoutBlanks, Unescaped, FromLatin1, WithSlashes}) {
        for (std::size_t i = 0, count = readings.size(); i < count; ++i) {
            add(change(readings[i]));
        }
    }
    return readings;
}

bool IsFileOrFolder(const std::string& path) {
    struct stat status {};
    return path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

// The letters in front of "://"; a drive has one letter alone.
std::string_view SchemeOf(std::string_view name) {
    const std::string_view scheme = name.substr(0, name.find("://"));
    const bool isOne = scheme.size() > 1 && scheme.size() < name.size() &&
                       std::all_of(scheme.begin(), scheme.end(), [](char c) {
                           const char lower = LowerAscii(c);
                           return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
                                  c == '+' || c == '-' || c == '.';
                       });
    return isOne ? scheme : std::string_view();
}

std::string_view FromFirstLetter(std::string_view name) {
    return name.substr(std::min(name.find_first_not_of(" \t"), name.size()));
}

bool IsFileAddress(std::string_view name) {
    return EqualIgnoringCase(Widen(name.substr(0, 5)), u"file:");
}

}  // namespace

bool IsStream(std::string_view name) {
    const std::string_view text = FromFirstLetter(name);
    return !SchemeOf(text).empty() && !IsFileAddress(text);
}

std::optional<std::string> PathOfMediaName(std::string_view name, MediaNames names,
                                           const std::string& folder) {
    const auto found = [&folder](const std::string& reading) {
        std::string path = AbsolutePath(reading, folder);
        return IsFileOrFolder(path) ? std::optional(std::move(path)) : std::nullopt;
    };
    if (IsFileAddress(FromFirstLetter(name))) {
        const auto path = PathOfAddress(WithoutBlanks(std::string(name)), HostName());
        if (const auto there = path ? found(*path) : std::nullopt) {
            return there;
        }
    }
    for (const std::string& reading : Readings(name, names)) {
        if (auto path = found(reading)) {
            return path;
        }
    }
    return std::nullopt;
}

}  // namespace platform
