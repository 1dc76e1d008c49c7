// A component that is loaded and shown nowhere, with a host that agrees to everything, in a scratch
// folder.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "core/ambrisor.h"
#include "core/base/impulses.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

namespace bench {

// Supports and opens everything and plays for ever.
class WillingHost : public sarnel::HostObject {
  public:
    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor&, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue&, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override {
        switch (uMsg.AsLong().value_or(0)) {
            case sarnel::ImpulseIsSupported:
                lParam1.Assign(true);
                break;
            case sarnel::ImpulseOpen:
                lParam2.Assign(true);
                break;
            case sarnel::ImpulseGetLength:
                lParam1.Assign(platform::Long{200});
                break;
            default:
                break;
        }
        return platform::Long{0};
    }
    platform::Long Capacity() override { return 0; }
    sarnel::HostCell* CellItem(platform::Long&) override { return nullptr; }
};

class ScratchFolder {
  public:
    ScratchFolder() {
        if (mkdtemp(path_.data()) == nullptr) {
            throw std::runtime_error("no scratch folder");
        }
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& Path() const { return path_; }

  private:
    std::string path_ = "/tmp/veldrin-bench-XXXXXX";
};

struct LoadedComponent {
    LoadedComponent() : component(windows, {folder.Path()}) {
        component.Connect(&host);
        sarnel::ImpulseValue unused1;
        sarnel::ImpulseValue unused2;
        component.ProcessImpulse(sarnel::kImpulseAttach, {}, unused1, unused2);
        component.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, unused1, unused2);
    }

    ScratchFolder folder;
    platform::HeadlessDriver driver{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows{driver};
    WillingHost host;
    sarnel::Ambrisor component;
};

}  // namespace bench
