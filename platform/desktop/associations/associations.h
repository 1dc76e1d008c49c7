// Makes the shell's registry of file types true on a freedesktop desktop, in the user's own
// directories: desktop entries, default applications, and the caches of both. The work is done on a
// thread of its own, one publication after the other.
#pragma once

#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/desktop/associations/file_class.h"
#include "platform/desktop/associations/user_folders.h"
#include "platform/desktop/desktop_driver.h"

namespace platform::desktop {

class Associations {
  public:
    explicit Associations(ProgramIdentity program);
    /// Waits for what is under way: some seconds, if a tool of the machine's hangs.
    ~Associations();
    Associations(const Associations&) = delete;
    Associations& operator=(const Associations&) = delete;

    /// As Driver::PublishAssociations.
    void Publish(const std::vector<RegistryValue>& registry);

  private:
    struct Publication {
        FileClass fileClass;
        UserFolders folders;
    };

    void Work();
    std::optional<Publication> Next();

    const ProgramIdentity program_;
    std::mutex mutex_;
    std::optional<Publication> next_;  ///< the newest: it says all that those before it said
    bool working_ = false;
    std::thread thread_;  ///< while there is something to do
};

}  // namespace platform::desktop
