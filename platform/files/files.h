// Files, as the rules need them; folders.h lists folders. Paths are text with "/" between names
// (bytes that are not UTF-8 survive, see platform/base/text.h). Nothing here throws; a failure is
// an empty answer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/base/types.h"

namespace platform {

inline constexpr char16_t kPathSeparator = u'/';

/// `directory` (without a separator at its end), a separator, `name`.
std::u16string JoinPath(std::u16string_view directory, std::u16string_view name);

/// What changes whenever another file takes a file's place, or its bytes change.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    std::int64_t length = 0;
    std::int64_t modified = 0;  ///< nanoseconds, as the next
    std::int64_t changed = 0;
    bool operator==(const FileStamp&) const = default;
};

/// None for what is no ordinary file, nor a link to one.
std::optional<FileStamp> StampOf(std::u16string_view path);

/// Length in bytes of an ordinary file, or of what a link to one leads to.
std::optional<std::int64_t> FileLength(std::u16string_view path);

/// Whether a search for `path` finds a folder, or also a file if the path does not end in a
/// separator. Hidden (dot) entries are found by their own name.
bool DirectoryMatches(std::u16string_view path);

/// Whether a search that sees ordinary files only finds `path`: no folder, no hidden (dot) file.
bool OrdinaryFileMatches(std::u16string_view path);

/// The path from the root folder on, without names that stand for a folder already named: ".", ".."
/// and empty ones. Links are names like all others. A separator at the end stays.
std::u16string FullPath(std::u16string_view path);

/// Whether something stands there under that name, be it a link that leads nowhere.
bool IsTaken(std::u16string_view path);

/// Whether `path` is a folder, or a link to one, in which the process may make files.
bool IsWritableFolder(std::u16string_view path);

/// The bytes of an ordinary file. None if it holds more than `most`: who reads a file whole says
/// how much of it he can bear.
std::optional<std::string> ReadWholeFile(std::u16string_view path, std::size_t most);

/// Whether files can be written, made, renamed and deleted at all. On a full disk they cannot;
/// reading goes on.
enum class Disk { kWritable, kFull };

/// Puts `bytes` in the place of the file in one step: whoever reads meanwhile, or after a crash,
/// finds the old content or the new, never a part. They are flushed to the disk first, unless the
/// file was replaced within the last second: of such a row of writes the later ones are only on
/// their way there, since each may come from one step of a slider. A link stays a link. False if
/// that failed, or what stands there is no ordinary file, and then it is as it was.
[[nodiscard]] bool ReplaceFile(std::u16string_view path, std::string_view bytes,
                               Disk disk = Disk::kWritable);

bool RemoveFile(std::u16string_view path, Disk disk = Disk::kWritable);

/// An ordinary file that is read from its beginning, piece by piece.
class FileReader {
  public:
    explicit FileReader(std::u16string_view path);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    /// Appends the next piece to `buffer`. False at the end, and after a failure.
    [[nodiscard]] bool Append(std::string& buffer);

  private:
    int descriptor_ = -1;
};

/// A file that is written from its beginning; an existing one is emptied. Buffered. Never waits.
class FileWriter {
  public:
    explicit FileWriter(std::u16string_view path, Disk disk = Disk::kWritable);
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    /// After a failure nothing more is written.
    void Write(std::string_view bytes);
    /// True if all that was written has reached the file.
    [[nodiscard]] bool Close();
    /// The same, and the disk: waits for that.
    [[nodiscard]] bool CloseFlushed();

  private:
    void Flush();

    int descriptor_ = -1;
    bool failed_ = false;
    std::string buffer_;
};

}  // namespace platform
