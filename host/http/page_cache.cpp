#include "host/http/page_cache.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include "platform/base/text.h"

namespace veldrin {
namespace {

using std::chrono::seconds;

constexpr std::size_t kMostPages = 32;
constexpr std::size_t kMostBytes = std::size_t{4} << 20U;
constexpr seconds kLongest = std::chrono::hours(24);

std::string Lowered(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), platform::LowerAscii<char>);
    return lower;
}

/// 0 for what is no whole number of seconds.
seconds SecondsIn(std::string_view text) {
    long long number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, number);
    if (fault == std::errc::result_out_of_range) {
        return kLongest;
    }
    const bool sound = fault == std::errc() && stop == end && number > 0;
    return sound ? seconds(std::min<long long>(number, kLongest.count())) : seconds(0);
}

/// How long a copy of the answer may be shown.
seconds LifeOf(const HttpAnswer& answer) {
    constexpr std::string_view kMaxAge = "max-age=";
    const std::string rules = Lowered(HeaderOf(answer.headers, "cache-control"));
    seconds life(0);
    for (std::size_t begin = 0; begin < rules.size();) {
        const std::size_t end = std::min(rules.find(',', begin), rules.size());
        std::string_view rule = std::string_view(rules).substr(begin, end - begin);
        rule.remove_prefix(std::min(rule.find_first_not_of(" \t"), rule.size()));
        rule = rule.substr(0, rule.find_last_not_of(" \t") + 1);
        if (rule.starts_with("no-store") || rule.starts_with("no-cache")) {
            return seconds(0);
        }
        if (rule.starts_with(kMaxAge)) {
            life = SecondsIn(rule.substr(kMaxAge.size()));
        }
        begin = end + 1;
    }
    return life - SecondsIn(HeaderOf(answer.headers, "age"));
}

}  // namespace

std::optional<std::string> PageCache::Find(const std::string& address, Moment now) const {
    const auto copy = std::ranges::find(copies_, address, &Copy::address);
    return copy == copies_.end() || copy->end <= now ? std::nullopt : std::optional(copy->page);
}

void PageCache::Forget(const std::string& address) {
    const auto copy = std::ranges::find(copies_, address, &Copy::address);
    if (copy != copies_.end()) {
        size_ -= copy->Size();
        copies_.erase(copy);
    }
}

void PageCache::Keep(const std::string& address, const HttpAnswer& answer, Moment now) {
    Forget(address);
    const seconds life = LifeOf(answer);
    Copy copy{address, answer.body, now + life};
    if (life <= seconds(0) || copy.Size() > kMostBytes) {
        return;
    }
    size_ += copy.Size();
    copies_.push_back(std::move(copy));
    while (copies_.size() > kMostPages || size_ > kMostBytes) {
        Forget(std::string(copies_.front().address));
    }
}

}  // namespace veldrin
