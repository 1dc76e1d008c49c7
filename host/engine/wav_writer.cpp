#include "host/engine/wav_writer.h"

#include <algorithm>
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

}  // namespace

WavWriter::WavWriter(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
    failed_ = file_ == nullptr;
}

WavWriter::~WavWriter() {
    SetRate(kDefaultRate);  // if nothing was played: a valid, empty file
    if (file_ != nullptr) {
        std::rewind(file_.get());
        WriteHeader(dataBytes_);
    }
}

void WavWriter::SetRate(int rate) {
    const std::lock_guard lock(mutex_);
    if (rate_ == 0 && !failed_) {
        rate_ = rate;
        WriteHeader(kLargestSize);
    }
}

void WavWriter::Write(std::span<const float> samples) {
    const std::lock_guard lock(mutex_);
    if (failed_) {
        return;
    }
    bytes_.clear();
    for (const float sample : samples) {
        const float scaled = std::round(std::clamp(sample, -1.0F, 1.0F) * 32768.0F);
        const auto value = static_cast<std::int16_t>(std::min(scaled, 32767.0F));
        PutNumber(bytes_, static_cast<std::uint16_t>(value), kBytesPerSample);
    }
    failed_ = std::fwrite(bytes_.data(), 1, bytes_.size(), file_.get()) != bytes_.size();
    dataBytes_ += bytes_.size();
}

int WavWriter::Rate() const {
    const std::lock_guard lock(mutex_);
    return rate_;
}

bool WavWriter::Failed() const {
    const std::lock_guard lock(mutex_);
    return failed_;
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
    failed_ = std::fwrite(header.data(), 1, header.size(), file_.get()) != header.size();
}

}  // namespace veldrin
