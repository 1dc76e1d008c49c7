#include "host/engine/sound_end.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <vector>

#include "host/engine/bytes.h"
#include "host/engine/read_only_file.h"

namespace veldrin {

namespace {

constexpr std::int64_t kChunkHeader = 8;
// A file with more chunks behind its sound has been made to be slow.
constexpr int kMostChunks = 1000;

constexpr std::string_view kPageStart("OggS\0", 5);  // with the version, the only one there is
constexpr std::int64_t kPageHeader = 27;
constexpr std::int64_t kLargestPage = kPageHeader + 255 + 255 * 255;
// Gigabytes of rubbish, or a slow disk: then the demuxer may try its luck.
constexpr std::chrono::seconds kSearchTime(2);

/// Follows the chunks of WAV or AIFF.
std::optional<std::int64_t> EndOfChunks(const ReadOnlyFile& file, std::string_view sound,
                                        bool bigEndian) {
    int behind = 0;  // chunks behind the sound
    std::array<char, kChunkHeader> bytes{};
    std::int64_t position = 12;
    while (true) {
        const std::string_view header = file.Read(bytes.data(), bytes.size(), position);
        if (header.size() < bytes.size()) {
            return std::nullopt;
        }
        const std::string_view name = header.substr(0, 4);
        const auto size = bigEndian ? static_cast<std::int64_t>(NumberAt(header, 4, 4))
                                    : LittleEndianAt(header, 4);
        const bool nothing = size == 0 && name == std::string_view("\0\0\0\0", 4);
        if (behind > 0 && (nothing || behind > kMostChunks)) {
            return position;
        }
        if (name == sound && size == 0) {
            return std::nullopt;  // whoever wrote it did not know: up to the end
        }
        behind += behind > 0 || name == sound ? 1 : 0;
        position += kChunkHeader + size + size % 2;
    }
}

/// Looks for the last page from the end on.
std::optional<std::int64_t> EndOfPages(const ReadOnlyFile& file) {
    constexpr std::int64_t kStep = 1024L * 1024;
    constexpr auto kOverlap = static_cast<std::int64_t>(kPageStart.size()) - 1;
    std::vector<char> bytes(kLargestPage);
    std::int64_t end = file.Size();
    const auto deadline = std::chrono::steady_clock::now() + kSearchTime;
    for (std::int64_t step = kLargestPage; end > 0 && std::chrono::steady_clock::now() < deadline;
         step = kStep) {
        bytes.resize(static_cast<std::size_t>(step + kOverlap));
        const std::int64_t start = std::max(std::int64_t{0}, end - step);
        const std::string_view read = file.Read(bytes.data(), bytes.size(), start);
        const std::size_t found = read.rfind(kPageStart);
        if (found != std::string_view::npos) {
            // The page itself is searched at once; what is beyond the longest page, never.
            const std::int64_t page = start + static_cast<std::int64_t>(found);
            return page + kLargestPage < file.Size() ? std::optional(page + kLargestPage)
                                                     : std::nullopt;
        }
        end = start;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::int64_t> EndOfSound(const std::string& path) {
    const ReadOnlyFile file(path);
    std::array<char, 12> bytes{};
    const std::string_view head = file.Read(bytes.data(), bytes.size(), 0);
    const std::string_view kind = head.size() < bytes.size() ? "" : head.substr(8);
    if (head.starts_with("RIFF") && kind == "WAVE") {
        return EndOfChunks(file, "data", false);
    }
    if (head.starts_with("FORM") && (kind == "AIFF" || kind == "AIFC")) {
        return EndOfChunks(file, "SSND", true);
    }
    return head.starts_with(kPageStart) ? EndOfPages(file) : std::nullopt;
}

}  // namespace veldrin
