// What the component requires of the program that creates it. A host owns everything that touches
// audio; the component asks it by impulses. Any member may throw: the component skips the step.
#pragma once

#include <string>

#include "core/base/impulsevalue.h"

namespace sarnel {

class Ambrisor;

/// One component that the host has loaded; only its name is ever asked for.
class HostCell : public Object {
  public:
    virtual std::u16string getClass() = 0;
};

class HostObject : public Object {
  public:
    /// An impulse from the component. The numbers and their arguments are in core/base/impulses.h.
    /// Results go back with lParam1.Assign and lParam2.Assign; an argument that is not assigned
    /// keeps its start value. The answer must convert to a number and is otherwise not looked at.
    virtual ImpulseValue ProcessImpulse(Ambrisor& sender, ImpulseValue& uMsg, ImpulseValue& wParam,
                                        ImpulseValue& lParam1, ImpulseValue& lParam2) = 0;

    /// Number of cells. Asked once, while the command menu is built.
    virtual Long Capacity() = 0;

    /// The cell with the 1-based number; null if there is none. Not owned by the caller.
    virtual HostCell* CellItem(Long& number) = 0;
};

}  // namespace sarnel
