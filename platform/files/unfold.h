// What people give to a player, as the files that it stands for: a folder with all folders below
// it, a list of media of another player. Paths are raw bytes; nothing here throws.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/folder_walk.h"
#include "platform/files/media_name.h"

namespace platform {

/// Whether a path has to be unfolded: a folder, or a list of media.
bool IsFolded(const std::string& path);

class Unfolder {
  public:
    /// The names in the bytes of an xspf file, each an address; none if they are no such file.
    using XspfReader = std::function<std::optional<std::vector<std::string>>(std::string_view)>;

    struct Rules {
        Below below = Below::kIncluded;
        XspfReader xspf;
        /// Which files are looked for, by name; all if empty.
        std::function<bool(const std::string&)> wanted;
        std::string wantedText = "file";  ///< for people, as in "no file in ..."
    };

    /// What comes out, in order. Each answers False if nothing more is wanted.
    struct Taker {
        std::function<bool(const std::string& path)> file;
        /// A folder with wanted files right in it, their names in order.
        std::function<bool(const std::string& folder, const std::vector<std::string>& files)>
            folder;
    };

    Unfolder(Rules rules, Taker taker) : rules_(std::move(rules)), taker_(std::move(taker)) {}

    /// Unfolds an absolute path. What is neither folder nor list is taken as it is, whatever it
    /// is. `name`: what people call it.
    void Unfold(const std::string& path, const std::string& name);

    /// What people should know, a line each; of names and paths the raw bytes.
    const std::vector<std::string>& Remarks() const { return remarks_; }

    /// Whether everything was taken so far.
    bool GoesOn() const { return goesOn_; }

  private:
    struct Names {
        std::vector<std::string> names;
        MediaNames kind = MediaNames::kPaths;
    };
    struct Left {
        std::size_t missing = 0;
        std::size_t unwanted = 0;
        std::size_t lists = 0;
        std::vector<std::string> streams;
    };

    std::size_t UnfoldFolder(const std::string& path, const std::string& name);
    void UnfoldList(const std::string& path, const std::string& name);
    std::optional<Names> NamesIn(const std::string& path, const std::string& name);
    void TakeName(const std::string& entry, MediaNames kind, const std::string& folder, Left& left);
    void TellWhatIsLeft(const std::string& name, std::size_t all, const Left& left);
    void Remark(const std::string& name, const std::string& text);
    bool IsWanted(const std::string& path) const { return !rules_.wanted || rules_.wanted(path); }

    Rules rules_;
    Taker taker_;
    std::vector<std::string> remarks_;
    bool goesOn_ = true;
};

}  // namespace platform
