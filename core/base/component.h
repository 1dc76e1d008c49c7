// The component as its own modules see it: the way to the host. The class itself is the roof
// (core/ambrisor.h), they are below it.
#pragma once

#include "core/base/impulsevalue.h"

namespace sarnel {

class HostObject;

class Component : public Object {
  public:
    /// The host given to Connect, or null.
    virtual HostObject* Server() const = 0;

    /// An impulse from the host (or from the component to itself). Answers 0 for a number that is
    /// not known, else 1 or 2 as core/base/impulses.h tells. A step that fails is skipped.
    virtual Long ProcessImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                                ImpulseValue& lParam2) = 0;

    /// An impulse to the host. Answers what the host answered, 0 if it did not, threw, or there is
    /// none.
    virtual Long sendVeldrinImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                                    ImpulseValue& lParam2) = 0;
};

}  // namespace sarnel
