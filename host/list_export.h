// The list for other players: an m3u8 file with titles.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controls/list/listcopy.h"
#include "host/instance/handover_server.h"
#include "host/instance/instance.h"

namespace veldrin {

/// The text of an m3u8 file.
class M3u8Text {
  public:
    /// `title` and `path` are raw bytes. A path that a line cannot hold as it is, or that is not
    /// UTF-8, stands there as an address.
    void AddRow(std::string_view title, std::string_view path);

    const std::string& Text() const { return text_; }

  private:
    std::string text_ = "#EXTM3U\n";
};

/// Writes the playlist that lies in the file `list` to the absolute path `target`, in one step.
/// What is wrong, for people; nothing if it was done.
std::optional<std::string> ExportSaved(const std::string& list, const std::string& target);

/// The same with the list of the player that runs there, if one does.
std::optional<std::string> ExportList(const std::optional<MeetingPlace>& place,
                                      const std::string& list, const std::string& target);

/// The same with a list that is in memory, on a thread of its own, which then replies how it
/// went (kExported).
void ExportInBackground(sarnel::ListCopy list, const std::string& target, const Reply& reply);

}  // namespace veldrin
