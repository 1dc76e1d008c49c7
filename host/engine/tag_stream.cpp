#include "host/engine/tag_stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace veldrin {

namespace {

// Enough for large pictures in front of the tags.
constexpr long kMostBytesRead = 64L * 1024 * 1024;
// Each reading counts as this much more: a search, window by window, is slow, and in a few
// megabytes it has found what there is.
constexpr long kCostOfReading = 160L * 1024;

}  // namespace

TagStream::TagStream(const std::string& path) : path_(path), budget_(kMostBytesRead) {
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
    if (position_ < 0 || position_ >= end) {
        return {};
    }
    if (end - position_ > kWindowBytes) {
        TagLib::ByteVector large(static_cast<unsigned>(end - position_), '\0');
        const long count = Read(large.data(), position_, end - position_);
        large.resize(static_cast<unsigned>(count));
        position_ += count;
        return large;
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

/// The bytes read; 0 at the end of the file, on failure, and when enough has been read.
long TagStream::Read(char* bytes, long start, long size) {
    if (budget_ <= 0) {
        return 0;
    }
    const long count = std::max(0L, pread(file_, bytes, static_cast<std::size_t>(size), start));
    budget_ -= count + kCostOfReading;
    return count;
}

}  // namespace veldrin
