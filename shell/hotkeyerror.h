// What JHotKeys raises to its caller.
#pragma once

#include <string_view>

#include "core/base/failure.h"

namespace sarnel {

class HotKeyError : public ComponentError {
  public:
    using ComponentError::ComponentError;
    /// Who raised it: the same for all of them.
    static constexpr std::u16string_view kSource = u"Sarnel.Ambrisor.cRegHotKey";
};

}  // namespace sarnel
