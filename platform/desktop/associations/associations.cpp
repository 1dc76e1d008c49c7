#include "platform/desktop/associations/associations.h"

#include <utility>

namespace platform::desktop {

Associations::Associations(ProgramIdentity program) : program_(std::move(program)) {}

Associations::~Associations() = default;

void Associations::Publish(const std::vector<RegistryValue>& /*registry*/) {}

}  // namespace platform::desktop
