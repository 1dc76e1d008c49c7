#include "platform/files/folder_walk.h"

#include <set>
#include <utility>

#include "platform/base/text.h"
#include "platform/files/folders.h"

namespace platform {

namespace {

// A folder whose own folders are being walked.
struct Entered {
    std::string path;
    std::vector<std::string> folders;
    std::vector<std::string> files;
    std::size_t next = 0;  ///< of `folders`
};

class Walk {
  public:
    Walk(Below below, const FolderVisitor& visit) : below_(below), visit_(visit) {}

    WalkEnd From(const std::string& start) {
        Enter(start);
        // Not by recursion: how deep folders lie is not ours to say.
        while (!way_.empty() && end_.complete) {
            Entered& last = way_.back();
            if (last.next < last.folders.size()) {
                Enter(Inside(last.path, last.folders[last.next++]));
            } else {
                end_.complete = visit_(last.path, last.files);
                way_.pop_back();
            }
        }
        return end_;
    }

  private:
    static std::string Inside(const std::string& folder, const std::string& name) {
        return folder.ends_with('/') ? folder + name : folder + "/" + name;
    }

    void Enter(std::string path) {
        const std::u16string text = Widen(path);
        const auto identity = IdentityOf(text);
        if (identity && !seen_.insert(*identity).second) {
            return;
        }
        auto entries = identity ? ListFolder(text) : std::nullopt;
        if (!entries) {
            ++end_.unreadable;
            return;
        }
        if (seen_.size() > kMostFolders) {
            end_.complete = false;
            return;
        }
        Entered& entered = way_.emplace_back();
        entered.path = std::move(path);
        for (const FolderEntry& entry : *entries) {
            if (!entry.isFolder) {
                entered.files.push_back(Narrow(entry.name));
            } else if (below_ == Below::kIncluded) {
                entered.folders.push_back(Narrow(entry.name));
            }
        }
    }

    Below below_;
    const FolderVisitor& visit_;
    std::vector<Entered> way_;
    std::set<FolderIdentity> seen_;
    WalkEnd end_;
};

}  // namespace

WalkEnd WalkFolders(const std::string& start, Below below, const FolderVisitor& visit) {
    return Walk(below, visit).From(start);
}

}  // namespace platform
