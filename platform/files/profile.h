// A private-profile text file: sections in brackets, "key=value" lines, ";" comments. Sections and
// keys are found ignoring case. A write changes one line and keeps all others to the byte:
// comments, order, blank lines and line ends. It replaces the file in one step, so that a crash
// never leaves half a file, and replaces none where nothing would change.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/files/files.h"

namespace platform {

/// A larger file is as good as missing for who reads, and is never replaced.
inline constexpr std::size_t kMostProfile = std::size_t{4} << 20U;

/// What has been read of a large file, kept from one call to the next for who asks for one key
/// after the other, for as long as the file's stamp stays. Belongs to whom the settings belong to.
class ProfileMemory {
  public:
    ProfileMemory();
    ~ProfileMemory();
    ProfileMemory(const ProfileMemory&) = delete;
    ProfileMemory& operator=(const ProfileMemory&) = delete;

    struct Contents;
    /// A section of the file that has this stamp.
    const Contents& Of(std::u16string_view file, const FileStamp& stamp, std::string_view section);

  private:
    std::unique_ptr<Contents> last_;
};

/// The value without the blanks around it, cut to `bufferSize` - 1 bytes; the default (cut
/// likewise) if file, section or key is missing. Without a memory the file is gone through each
/// time.
std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                    std::string_view defaultValue, std::size_t bufferSize,
                                    std::u16string_view file, ProfileMemory* memory = nullptr);

/// False, with the file as it was, if the write failed, or if something stands there that cannot be
/// read: a folder, a pipe, a link that leads nowhere. A value ends at its first line end or NUL,
/// since the file has no way to hold one.
bool WritePrivateProfileString(std::string_view section, std::string_view key,
                               std::string_view value, std::u16string_view file,
                               Disk disk = Disk::kWritable, ProfileMemory* memory = nullptr);

}  // namespace platform
