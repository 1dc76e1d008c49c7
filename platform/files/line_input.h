// The lines of a file, as sequential reading has them. What is in memory is a piece of the file, or
// a line where that is longer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files/files.h"

namespace platform {

/// Hands out an ordinary file line by line. A line ends at CR or CR LF, or where the file ends; an
/// LF alone stays in the line.
class LineInput {
  public:
    /// Bytes of a line. A longer one is none, and nothing comes behind it.
    static constexpr std::size_t kLongestLine = std::size_t{256} << 20U;

    explicit LineInput(std::u16string_view path, std::size_t longestLine = kLongestLine)
        : file_(path), longestLine_(longestLine) {}

    /// Good until the next call; none at the end of the file, or if it cannot be read.
    std::optional<std::string_view> Next();

  private:
    /// Where the line in front ends. The file may go on behind the buffer, so a CR at its end
    /// counts only when the byte behind it is known.
    std::size_t FindEnd();
    bool More();

    FileReader file_;
    std::size_t longestLine_;
    std::string buffer_;
    std::size_t at_ = 0;  ///< what has been handed out ends there
};

}  // namespace platform
