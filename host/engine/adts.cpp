#include "host/engine/adts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "host/engine/read_only_file.h"

namespace veldrin {

namespace {

constexpr std::array kRates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                               22050, 16000, 12000, 11025, 8000,  7350};
constexpr int kSamplesPerBlock = 1024;
constexpr int kFewestFrames = 3;  // what looks like fewer may be chance
constexpr std::int64_t kMostBytesFollowed = 64L * 1024 * 1024;  // an hour of sound
constexpr int kFramesBetweenLooks = 1000;                       // at the time

struct FrameHeader {
    int bytes = 0;  ///< of the whole frame; 0 if there is none here
    int rate = 0;
    int channels = 0;
    int samples = 0;
};

/// Goes through a file from its start to its end.
class Stretches {
  public:
    explicit Stretches(const std::string& path) : file_(path) {}

    /// The bytes there, from a stretch of the file in memory that moves on with them.
    template <std::size_t kCount>
    bool Read(std::array<std::uint8_t, kCount>& bytes, std::int64_t position) {
        constexpr auto kNeeded = static_cast<std::int64_t>(kCount);
        if (position < start_ || position + kNeeded > start_ + size_) {
            start_ = position;
            size_ = static_cast<std::int64_t>(
                file_.Read(stretch_.data(), stretch_.size(), position).size());
        }
        if (size_ - (position - start_) < kNeeded) {
            return false;
        }
        std::copy_n(stretch_.begin() + (position - start_), kCount, bytes.begin());
        return true;
    }
    std::int64_t Size() const { return file_.Size(); }

  private:
    ReadOnlyFile file_;
    std::int64_t start_ = 0;
    std::int64_t size_ = 0;
    std::array<char, 8192> stretch_{};
};

/// The bytes of tags in front of the sound.
std::int64_t TagBytes(Stretches& file) {
    std::array<std::uint8_t, 10> head{};
    if (!file.Read(head, 0) || head[0] != 'I' || head[1] != 'D' || head[2] != '3') {
        return 0;
    }
    // Seven bits of each byte count.
    return 10 + (((head[6] & 0x7F) << 21) | ((head[7] & 0x7F) << 14) | ((head[8] & 0x7F) << 7) |
                 (head[9] & 0x7F));
}

FrameHeader FrameAt(Stretches& file, std::int64_t position) {
    std::array<std::uint8_t, 7> head{};
    FrameHeader frame;
    // Twelve bits of ones, one for the version, two zeros.
    if (!file.Read(head, position) || head[0] != 0xFF || (head[1] & 0xF6) != 0xF0) {
        return frame;
    }
    const auto rate = static_cast<std::size_t>((head[2] >> 2) & 0x0F);
    const int bytes = ((head[3] & 0x03) << 11) | (head[4] << 3) | (head[5] >> 5);
    if (rate < kRates.size() && bytes > static_cast<int>(head.size())) {
        frame.bytes = bytes;
        frame.rate = kRates[rate];
        frame.channels = ((head[2] & 0x01) << 2) | (head[3] >> 6);
        frame.samples = kSamplesPerBlock * ((head[6] & 0x03) + 1);
    }
    return frame;
}

}  // namespace

SoundFacts ReadAdtsFacts(const std::string& path, const TagLimits& limits) {
    Stretches file(path);
    const std::int64_t start = TagBytes(file);
    const FrameHeader first = FrameAt(file, start);
    std::int64_t position = start;
    double seconds = 0;
    int frames = 0;
    const auto isWorthIt = [&] {
        return position - start < kMostBytesFollowed &&
               (frames % kFramesBetweenLooks != 0 || !limits.AreReached());
    };
    for (FrameHeader frame = first; frame.bytes > 0 && isWorthIt();
         frame = FrameAt(file, position)) {
        seconds += static_cast<double>(frame.samples) / frame.rate;
        position += frame.bytes;
        ++frames;
    }
    if (frames < kFewestFrames) {
        return {};
    }
    const double bitRate = static_cast<double>(position - start) * 8.0 / 1000.0 / seconds;
    // What could not be followed to its end is taken to go on as it began.
    if (position < file.Size()) {
        seconds = static_cast<double>(file.Size() - start) * 8.0 / 1000.0 / bitRate;
    }
    return {std::chrono::milliseconds(std::llround(seconds * 1000.0)),
            static_cast<int>(std::lround(bitRate)), first.rate, first.channels};
}

}  // namespace veldrin
