// The host object of the component: answers its impulses with the engine and the tag reader. Two
// others hear of some of them: who shows the user what plays, and who runs the program.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/base/hostobject.h"
#include "host/engine/engine.h"
#include "host/engine/tags.h"

namespace veldrin {

// Both are called from within impulses: take note, and act once the component has returned.

/// Hears what becomes of the items.
class ItemListener {
  public:
    virtual ~ItemListener() = default;

    virtual void ItemOpened(const std::string& path) = 0;
    virtual void ItemFailed(const std::string& path) = 0;
    /// The component stopped the sound; `ended` if the stream had come to its end by itself.
    virtual void Stopped(bool ended) = 0;
    /// The position has jumped to this second of the item.
    virtual void Sought(int /*seconds*/) {}
};

/// Hears what concerns the run of the program.
class RunListener {
  public:
    virtual ~RunListener() = default;

    /// The user wishes to end the program.
    virtual void ExitRequested() = 0;
    /// The component's windows are gone.
    virtual void Closed() = 0;
};

class VeldrinHost : public sarnel::HostObject {
  public:
    /// All must outlive the host.
    VeldrinHost(Engine& engine, TagReader& tags, ItemListener& items, RunListener& run);
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
    ItemListener& items_;
    RunListener& run_;
    bool opened_ = false;  ///< something was opened and not stopped since
    std::vector<std::unique_ptr<Cell>> cells_;
};

}  // namespace veldrin
