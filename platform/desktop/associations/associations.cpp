#include "platform/desktop/associations/associations.h"

#include <cstdlib>
#include <system_error>
#include <utility>

#include "platform/base/signals_held.h"
#include "platform/desktop/associations/publication.h"

namespace platform::desktop {

Associations::Associations(ProgramIdentity program) : program_(std::move(program)) {}

Associations::~Associations() {
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Associations::Publish(const std::vector<RegistryValue>& registry) {
    const auto fileClass = ReadFileClass(registry);
    // The environment is read here: elsewhere somebody might change it meanwhile.
    const auto folders = UserFoldersBy([](const char* name) { return std::getenv(name); });
    if (!fileClass || !folders) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        next_ = Publication{*fileClass, *folders};
        if (std::exchange(working_, true)) {
            return;
        }
    }
    if (thread_.joinable()) {
        thread_.join();  // it has nothing more to do
    }
    try {
        const SignalsHeld held;
        thread_ = std::thread([this] { Work(); });
    } catch (const std::system_error&) {  // no thread to be had
        working_ = false;
    }
}

void Associations::Work() {
    while (const auto publication = Next()) {
        PublishClass(program_, publication->fileClass, publication->folders);
    }
}

std::optional<Associations::Publication> Associations::Next() {
    const std::lock_guard lock(mutex_);
    working_ = next_.has_value();
    return std::exchange(next_, std::nullopt);
}

}  // namespace platform::desktop
