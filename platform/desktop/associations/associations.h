// Makes the shell's registry of file types true on a freedesktop desktop, in the user's own
// directories: desktop entries, default applications, and the caches of both. The work is done on a
// thread of its own, one publication after the other.
#pragma once

#include <vector>

#include "platform/desktop/desktop_driver.h"

namespace platform::desktop {

class Associations {
  public:
    explicit Associations(ProgramIdentity program);
    /// Waits for what is under way.
    ~Associations();

    /// As Driver::PublishAssociations.
    void Publish(const std::vector<RegistryValue>& registry);

  private:
    const ProgramIdentity program_;
};

}  // namespace platform::desktop
