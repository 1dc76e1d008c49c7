// TagStream shows a file to TagLib. TagLib's own file class seeks and reads a few bytes at a time,
// each a call into the system; this one keeps two stretches of the file in memory, in most cases
// its start and its end, which is where tags lie. When that has cost more than tags can be worth,
// it goes on as if the file had ended.
#pragma once

#include <sys/stat.h>
#include <taglib/tiostream.h>

#include <array>
#include <atomic>
#include <chrono>
#include <string>
#include <string_view>

namespace veldrin {

/// When to give up one reading of a file.
struct TagLimits {
    std::chrono::steady_clock::time_point deadline;
    /// Bytes of the large blocks that are given out to be taken apart in memory.
    long largeBlocks;
    /// Set by another thread to end the reading; may be null.
    const std::atomic<bool>* stop;
    /// Bytes that a picture may have to be given out; without it there are none of any size to
    /// speak of.
    long pictureBytes = 0;

    bool AreReached() const {
        return (stop != nullptr && *stop) || std::chrono::steady_clock::now() > deadline;
    }
};

class TagStream final : public TagLib::IOStream {
  public:
    /// Opens a regular file; isOpen() tells if that worked.
    TagStream(const std::string& path, const TagLimits& limits);
    ~TagStream() override;
    TagStream(const TagStream&) = delete;
    TagStream& operator=(const TagStream&) = delete;

    /// The file's state when it was opened.
    const struct stat& Status() const { return status_; }
    const std::string& Path() const { return path_; }
    const TagLimits& Limits() const { return limits_; }
    /// Whether something was held back because it is larger than the limits allow.
    bool WasTooLarge() const { return tooLarge_; }

    TagLib::FileName name() const override { return path_.c_str(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void seek(long offset, Position from) override;
    void seek(long offset) { seek(offset, Beginning); }
    long tell() const override { return position_; }
    long length() override { return static_cast<long>(status_.st_size); }
    bool isOpen() const override { return file_ >= 0; }

    // Tags are only read here.
    bool readOnly() const override { return true; }
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}

  private:
    static constexpr long kWindowBytes = 8192;
    struct Window {
        long start = 0;
        long size = 0;
        std::array<char, kWindowBytes> bytes;
        bool Holds(long position) const { return position >= start && position < start + size; }
    };
    TagLib::ByteVector LargeBlock(long size);
    TagLib::ByteVector BlockAsItIs(long size);
    const Window& WindowAt(long position);
    std::string_view Look(char* bytes, long start, long size) const;
    long Read(char* bytes, long start, long size);

    std::string path_;
    int file_ = -1;
    struct stat status_ {};
    long position_ = 0;
    const TagLimits limits_;
    long budget_;       // bytes that may still be read from the file
    long largeBlocks_;  // bytes of large blocks that may still be given out
    int reads_;         // blocks that may still be given out
    bool tooLarge_ = false;
    std::array<Window, 2> windows_;
    std::size_t oldest_ = 0;
};

}  // namespace veldrin
