#include "host/front.h"

namespace veldrin {

// Once a run: a list that is repeated comes to the same file again and again.
void Front::ItemFailed(const std::string& path) {
    if (complained_.insert(path).second) {
        console_.Complain("cannot play '" + Printable(path) + "'");
    }
}

}  // namespace veldrin
