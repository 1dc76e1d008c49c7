// A file that is only looked into, here and there.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldrin {

class ReadOnlyFile {
  public:
    /// One that cannot be opened is as good as empty.
    explicit ReadOnlyFile(const std::string& path)
        : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
        struct stat status {};
        if (file_ >= 0 && fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) {
            size_ = status.st_size;
        }
    }
    ~ReadOnlyFile() {
        if (file_ >= 0) {
            close(file_);
        }
    }
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    /// In bytes, when it was opened; 0 for what is no regular file.
    std::int64_t Size() const { return size_; }
    /// What there is from this place on, up to as many bytes as there is room for.
    std::string_view Read(char* bytes, std::size_t room, std::int64_t position) const {
        return {bytes, static_cast<std::size_t>(std::max(
                           ssize_t{0}, pread(file_, bytes, room, static_cast<off_t>(position))))};
    }

  private:
    int file_;
    std::int64_t size_ = 0;
};

}  // namespace veldrin
