// The host object of the component: answers its impulses with the engine and the tag reader. What
// the program beyond wants to know, it hears as a HostListener.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/base/hostobject.h"
#include "host/engine/engine.h"
#include "host/engine/tags.h"

namespace veldrin {

/// Called from within impulses: take note, and act once the component has returned.
class HostListener {
  public:
    virtual ~HostListener() = default;

    virtual void ItemOpened(const std::string& /*path*/) {}
    virtual void ItemFailed(const std::string& /*path*/) {}
    /// The component stopped the sound; `ended` if the stream had come to its end by itself.
    virtual void Stopped(bool /*ended*/) {}
    /// The user wishes to end the program.
    virtual void ExitRequested() = 0;
    /// The component's windows are gone.
    virtual void Closed() = 0;
};

class VeldrinHost : public sarnel::HostObject {
  public:
    /// All must outlive the host.
    VeldrinHost(Engine& engine, TagReader& tags, HostListener& listener);
    ~VeldrinHost() override;

    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor& sender, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override;
    sarnel::Long Capacity() override;
    sarnel::HostCell* CellItem(sarnel::Long& number) override;

  private:
    class Cell;

    void Open(sarnel::ImpulseValue& lParam1, sarnel::ImpulseValue& lParam2);
    void Stop();
    bool AnswerQuestion(sarnel::Long number, const sarnel::ImpulseValue& wParam,
                        sarnel::ImpulseValue& lParam1);
    bool AnswerAboutStream(sarnel::Long number, const sarnel::ImpulseValue& wParam,
                           sarnel::ImpulseValue& lParam1);
    bool SetValue(sarnel::Long number, sarnel::Long value);

    Engine& engine_;
    TagReader& tags_;
    HostListener& listener_;
    bool opened_ = false;  ///< something was opened and not stopped since
    std::vector<std::unique_ptr<Cell>> cells_;
};

}  // namespace veldrin
