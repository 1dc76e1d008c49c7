#include "host/engine/wav_writer.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace veldrin {

namespace {

constexpr std::uint64_t kChannels = 2;
constexpr int kBytesPerSample = 2;
constexpr int kDefaultRate = 44100;
constexpr std::uint32_t kHeaderBytes = 44;
constexpr std::uint64_t kLargestSize = 0xFFFFFFFFU;

void PutNumber(std::vector<std::uint8_t>& bytes, std::uint64_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
    }
}

void PutText(std::vector<std::uint8_t>& bytes, const char* text) {
    for (; *text != '\0'; ++text) {
        bytes.push_back(static_cast<std::uint8_t>(*text));
    }
}

// Created or emptied. A pipe that nobody reads fails by ENXIO, instead of waiting for a reader.
std::FILE* OpenForWriting(const std::string& path) {
    constexpr mode_t kLeftToTheUser = 0666;
    const int number =
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, kLeftToTheUser);
    if (number < 0 || fcntl(number, F_SETFL, fcntl(number, F_GETFL) & ~O_NONBLOCK) < 0) {
        return nullptr;
    }
    return fdopen(number, "wb");
}

}  // namespace

WavWriter::WavWriter(const std::string& path) : file_(OpenForWriting(path)) {
    if (file_ == nullptr) {
        error_ = errno;
    } else {
        // So that what has been written is known when no more can be.
        static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
    }
}

WavWriter::~WavWriter() {
    Finish();
}

void WavWriter::Finish() {
    SetRate(kDefaultRate);  // if nothing was played: a valid, empty file
    const std::lock_guard lock(mutex_);
    // A pipe has no beginning to go back to.
    if (file_ != nullptr && rate_ != 0 && std::fseek(file_.get(), 0, SEEK_SET) == 0) {
        constexpr std::uint64_t kFrameBytes = kChannels * kBytesPerSample;
        WriteHeader(dataBytes_ - dataBytes_ % kFrameBytes);
    }
    file_.reset();
}

void WavWriter::SetRate(int rate) {
    const std::lock_guard lock(mutex_);
    if (rate_ == 0 && error_ == 0) {
        rate_ = rate;
        WriteHeader(kLargestSize);
    }
}

void WavWriter::Write(std::span<const float> samples) {
    const std::lock_guard lock(mutex_);
    if (error_ != 0 || file_ == nullptr || samples.empty()) {
        return;
    }
    bytes_.clear();
    for (const float given : samples) {
        // A damaged file may hold what is no number; it is silent then.
        const float sample = std::isnan(given) ? 0.0F : given;
        const float scaled = std::round(std::clamp(sample, -1.0F, 1.0F) * 32768.0F);
        const auto value = static_cast<std::int16_t>(std::min(scaled, 32767.0F));
        PutNumber(bytes_, static_cast<std::uint16_t>(value), kBytesPerSample);
    }
    dataBytes_ += Append(bytes_);
}

std::uint64_t WavWriter::Append(const std::vector<std::uint8_t>& bytes) {
    const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file_.get());
    if (written != bytes.size()) {
        error_ = errno;
    }
    return written;
}

int WavWriter::Rate() const {
    const std::lock_guard lock(mutex_);
    return rate_;
}

int WavWriter::Error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

void WavWriter::WriteHeader(std::uint64_t dataBytes) {
    const auto rate = static_cast<std::uint64_t>(rate_);
    std::vector<std::uint8_t> header;
    PutText(header, "RIFF");
    PutNumber(header, std::min(dataBytes + kHeaderBytes - 8, kLargestSize), 4);
    PutText(header, "WAVEfmt ");
    PutNumber(header, 16, 4);  // bytes of this block
    PutNumber(header, 1, 2);   // plain PCM
    PutNumber(header, kChannels, 2);
    PutNumber(header, rate, 4);
    PutNumber(header, rate * kChannels * kBytesPerSample, 4);
    PutNumber(header, kChannels * kBytesPerSample, 2);
    PutNumber(header, std::uint64_t{8} * kBytesPerSample, 2);
    PutText(header, "data");
    PutNumber(header, std::min(dataBytes, kLargestSize), 4);
    Append(header);
}

}  // namespace veldrin
