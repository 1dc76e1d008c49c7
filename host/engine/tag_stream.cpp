#include "host/engine/tag_stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "host/engine/tag_blocks.h"

namespace veldrin {

namespace {

// Enough for large pictures in front of the tags.
constexpr long kMostBytesRead = 64L * 1024 * 1024;
// Each reading counts as this much more: a search, window by window, is slow, and in a few
// megabytes it has found what there is.
constexpr long kCostOfReading = 160L * 1024;
// TagLib reads what it takes apart piece by piece at most as often as a file of music has pieces.
// It also calls itself for pieces within pieces, so without an end to that its stack would have
// one.
constexpr int kMostReads = 20000;

}  // namespace

TagStream::TagStream(const std::string& path, const TagLimits& limits)
    : path_(path),
      limits_(limits),
      budget_(kMostBytesRead),
      largeBlocks_(limits.largeBlocks),
      reads_(kMostReads) {
    // Without O_NONBLOCK opening a FIFO would wait for somebody to write to it.
    file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file_ >= 0 && (fstat(file_, &status_) != 0 || !S_ISREG(status_.st_mode))) {
        close(file_);
        file_ = -1;
        status_ = {};
    }
}

TagStream::~TagStream() {
    if (file_ >= 0) {
        close(file_);
    }
}

TagLib::ByteVector TagStream::readBlock(unsigned long length) {
    const long end = std::min(this->length(),
                              position_ + static_cast<long>(std::min(
                                              length, static_cast<unsigned long>(kMostBytesRead))));
    if (position_ < 0 || position_ >= end || --reads_ < 0) {
        return {};
    }
    if (end - position_ > kWindowBytes) {
        return LargeBlock(end - position_);
    }
    TagLib::ByteVector block;
    while (position_ < end) {
        const Window& window = WindowAt(position_);
        if (!window.Holds(position_)) {
            break;  // the file has become shorter, or enough was read
        }
        const long offset = position_ - window.start;
        const long count = std::min(end - position_, window.size - offset);
        block.append({window.bytes.data() + offset, static_cast<unsigned>(count)});
        position_ += count;
    }
    return block;
}

/// A block to be taken apart in memory, or what of it is worth that.
TagLib::ByteVector TagStream::LargeBlock(long size) {
    if (limits_.AreReached()) {
        return {};
    }
    std::array<char, kId3Header> before{};
    std::array<char, kApeFooter> behind{};
    const long start = std::max(0L, position_ - static_cast<long>(before.size()));
    const std::string_view header = Look(before.data(), start, position_ - start);
    const long end = position_ + size;
    if (IsPictureHeader(header, static_cast<std::size_t>(size))) {
        if (size <= limits_.pictureBytes) {
            return BlockAsItIs(size);
        }
        budget_ -= kCostOfReading;
        position_ = end;
        return {static_cast<unsigned>(size), '\0'};
    }
    if (IsId3Header(header, static_cast<std::size_t>(size))) {
        const TagLib::ByteVector frames = BlockAsItIs(size);
        return TextFramesOf(header, {frames.data(), frames.size()},
                            static_cast<std::size_t>(limits_.pictureBytes));
    }
    if (IsFooterOfManyItems(Look(behind.data(), end, static_cast<long>(behind.size())))) {
        return {};
    }
    tooLarge_ = tooLarge_ || size > largeBlocks_;
    if (tooLarge_) {
        return {};
    }
    largeBlocks_ -= size;
    return BlockAsItIs(size);
}

TagLib::ByteVector TagStream::BlockAsItIs(long size) {
    constexpr long kAtOnce = 1024L * 1024;  // between two looks at the time
    TagLib::ByteVector block(static_cast<unsigned>(size), '\0');
    long count = 0;
    for (long read = 1; count < size && read > 0; count += read) {
        read = Read(block.data() + count, position_ + count, std::min(kAtOnce, size - count));
    }
    block.resize(static_cast<unsigned>(count));
    position_ += count;
    return block;
}

void TagStream::seek(long offset, Position from) {
    const long base = from == Beginning ? 0 : from == Current ? position_ : length();
    position_ = base + offset;
}

const TagStream::Window& TagStream::WindowAt(long position) {
    for (const Window& window : windows_) {
        if (window.Holds(position)) {
            return window;
        }
    }
    // Near the end the window is the end of the file, so that reading backwards stays within it.
    Window& window = windows_[oldest_];
    oldest_ = 1 - oldest_;
    const bool atTheEnd = position >= length() - kWindowBytes && position >= kWindowBytes;
    window.start = atTheEnd ? length() - kWindowBytes : position;
    window.size = Read(window.bytes.data(), window.start, kWindowBytes);
    return window;
}

/// What the file has there.
std::string_view TagStream::Look(char* bytes, long start, long size) const {
    const ssize_t count = pread(file_, bytes, static_cast<std::size_t>(size), start);
    return {bytes, static_cast<std::size_t>(std::max(ssize_t{0}, count))};
}

/// The bytes read; 0 at the end of the file, on failure, and when enough has been read.
long TagStream::Read(char* bytes, long start, long size) {
    if (budget_ <= 0 || limits_.AreReached()) {
        return 0;
    }
    const auto count = static_cast<long>(Look(bytes, start, size).size());
    budget_ -= count + kCostOfReading;
    return count;
}

}  // namespace veldrin
