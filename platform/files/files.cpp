#include "platform/files/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

bool HoldsZero(std::u16string_view path) {
    return path.find(u'\0') != std::u16string_view::npos;
}

std::optional<struct stat> Status(std::u16string_view path) {
    struct stat status {};
    if (HoldsZero(path) || stat(Narrow(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status;
}

// Never waits: a pipe would let us wait for whoever is at its other end.
int Open(std::u16string_view path, int flags) {
    constexpr mode_t kOwnersAlone = 0600;
    constexpr int kAlways = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    return HoldsZero(path) ? -1 : open(Narrow(path).c_str(), flags | kAlways, kOwnersAlone);
}

bool IsHidden(std::u16string_view path) {
    const std::size_t slash = path.rfind(kPathSeparator);
    const std::size_t name = slash == std::u16string_view::npos ? 0 : slash + 1;
    return name < path.size() && path[name] == u'.';
}

// Sees to it that a file's bytes are on the disk before it takes the place of another: a file
// system may carry out the renaming first, and after a power cut there would be nothing in it. To
// wait for the disk takes up to tens of milliseconds, too long for each of a row of writes.
bool Flush(int descriptor, const struct stat* replaced) {
    constexpr std::int64_t kRow = 1;  // second
    struct stat status {};
    if (fstat(descriptor, &status) != 0) {
        return false;
    }
    const bool inRow = replaced != nullptr && status.st_mtim.tv_sec >= replaced->st_mtim.tv_sec &&
                       status.st_mtim.tv_sec - replaced->st_mtim.tv_sec <= kRow;
    if (inRow) {
        sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
        return true;
    }
    return fdatasync(descriptor) == 0 || errno == EINVAL;  // there are disks that cannot be flushed
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

std::u16string JoinPath(std::u16string_view directory, std::u16string_view name) {
    std::u16string path(directory);
    path += kPathSeparator;
    path += name;
    return path;
}

std::u16string FullPath(std::u16string_view path) {
    // Most paths are full: they hold no empty name and none that begins with a dot.
    const bool isFull = path.starts_with(kPathSeparator) &&
                        path.find(u"//") == std::u16string_view::npos &&
                        path.find(u"/.") == std::u16string_view::npos;
    if (isFull) {
        return std::u16string(path);
    }
    std::error_code error;
    const fs::path full = fs::absolute(fs::path(Narrow(path)), error).lexically_normal();
    return error ? std::u16string(path) : Widen(full.native());
}

std::optional<FileStamp> StampOf(std::u16string_view path) {
    const auto status = Status(path);
    if (!status || !S_ISREG(status->st_mode)) {
        return std::nullopt;
    }
    const auto nanoseconds = [](const timespec& time) {
        return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    };
    return FileStamp{status->st_dev, status->st_ino, status->st_size, nanoseconds(status->st_mtim),
                     nanoseconds(status->st_ctim)};
}

std::optional<std::int64_t> FileLength(std::u16string_view path) {
    const auto status = Status(path);
    if (!status || S_ISDIR(status->st_mode)) {
        return std::nullopt;
    }
    return status->st_size;
}

bool DirectoryMatches(std::u16string_view path) {
    return Status(path).has_value();
}

bool OrdinaryFileMatches(std::u16string_view path) {
    const auto status = Status(path);
    return status && S_ISREG(status->st_mode) && !IsHidden(path);
}

bool IsTaken(std::u16string_view path) {
    struct stat status {};
    return !HoldsZero(path) && lstat(Narrow(path).c_str(), &status) == 0;
}

bool IsWritableFolder(std::u16string_view path) {
    const auto status = Status(path);
    return status && S_ISDIR(status->st_mode) &&
           faccessat(AT_FDCWD, Narrow(path).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::optional<std::string> ReadWholeFile(std::u16string_view path, std::size_t most) {
    FileReader file(path);
    // Those that the system makes up, as in /proc, say that they hold nothing.
    if (!file.IsOpen() || std::cmp_greater(FileLength(path).value_or(0), most)) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(FileLength(path).value_or(0)) + kBufferSize);
    while (bytes.size() <= most && file.Append(bytes)) {
    }
    return bytes.size() <= most ? std::optional(std::move(bytes)) : std::nullopt;
}

bool ReplaceFile(std::u16string_view path, std::string_view bytes, Disk disk) {
    if (disk == Disk::kFull) {
        return false;
    }
    std::error_code error;
    fs::path target(Narrow(path));
    const fs::path resolved = fs::canonical(target, error);
    if (!error) {
        target = resolved;
    }
    struct stat status {};
    const bool existed = stat(target.c_str(), &status) == 0;
    if (existed && (!S_ISREG(status.st_mode) || access(target.c_str(), W_OK) != 0)) {
        return false;
    }
    std::string temporary = target.native() + ".XXXXXX";
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    bool good = WriteAll(descriptor, bytes);
    good = fchmod(descriptor, existed ? status.st_mode & 07777 : 0600) == 0 && good;
    good = good && Flush(descriptor, existed ? &status : nullptr);
    good = close(descriptor) == 0 && good;
    good = good && rename(temporary.c_str(), target.c_str()) == 0;
    if (!good) {
        unlink(temporary.c_str());
    }
    return good;
}

bool RemoveFile(std::u16string_view path, Disk disk) {
    return disk == Disk::kWritable && unlink(Narrow(path).c_str()) == 0;
}

FileReader::FileReader(std::u16string_view path) : descriptor_(Open(path, O_RDONLY)) {
    struct stat status {};
    // A pipe or device in the file's place could feed us for ever.
    if (descriptor_ >= 0 && (fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(descriptor_);
        descriptor_ = -1;
    }
}

FileReader::~FileReader() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

bool FileReader::Append(std::string& buffer) {
    const std::size_t filled = buffer.size();
    buffer.resize(filled + kBufferSize);
    ssize_t count = 0;
    do {
        count = read(descriptor_, buffer.data() + filled, kBufferSize);
    } while (count < 0 && errno == EINTR);
    buffer.resize(filled + (count > 0 ? static_cast<std::size_t>(count) : 0));
    return count > 0;
}

FileWriter::FileWriter(std::u16string_view path, Disk disk) {
    if (disk == Disk::kWritable) {
        descriptor_ = Open(path, O_WRONLY | O_CREAT | O_TRUNC);
        buffer_.reserve(kBufferSize);
    }
}

FileWriter::~FileWriter() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

void FileWriter::Write(std::string_view bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= kBufferSize - 4096) {
        Flush();
    }
}

void FileWriter::Flush() {
    failed_ = failed_ || descriptor_ < 0 || !WriteAll(descriptor_, buffer_);
    buffer_.clear();
}

bool FileWriter::CloseFlushed() {
    Flush();
    failed_ = failed_ || (fdatasync(descriptor_) != 0 && errno != EINVAL);
    return Close();
}

bool FileWriter::Close() {
    Flush();
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor >= 0 && close(descriptor) == 0 && !failed_;
}

}  // namespace platform
