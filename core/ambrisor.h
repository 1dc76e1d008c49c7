// Ambrisor is the whole user interface of the player, as a host sees it: an object that the host
// creates, connects to itself and drives by impulses. A run goes
//
//     platform::WindowSystem windows(driver);          // headless or desktop
//     Ambrisor component(windows, {directory});        // directory: settings, playlist, lyrics
//     component.Connect(&host);
//     component.ProcessImpulse(3, ...);                 // attach
//     component.ProcessImpulse(15, 16, window, ...);    // load; the window is still hidden
//     component.ProcessImpulse(15, 17, True, line);     // handle the command line and show
//     ... windows.WaitMessage() until impulse 7 reaches the host ...
//     component.Disconnect();
//
// The window's close button ends a run by itself. To end it from outside, or to grant impulse 15,
// the user's wish to exit, the host sends (15, 17, False); impulse 7 comes before that returns.
//
// All of it happens on one thread. One Ambrisor may be alive at a time in a process; a new one
// starts with clean state. To make a second one while the first lives is a mistake, which a debug
// build asserts; otherwise the second does nothing, ever, and answers 0 to every impulse.
#pragma once

#include <memory>
#include <string>

#include "core/base/component.h"
#include "core/base/hostobject.h"
#include "core/base/impulses.h"
#include "core/base/impulsevalue.h"

namespace platform {
class WindowSystem;
}

namespace sarnel {

struct Program;

/// What the host settles before the component exists.
struct AmbrisorOptions {
    /// The one writable directory, without a separator at its end; raw bytes. It holds
    /// "Sarnel.Ambrisor.ini", "Sarnel.Ambrisor.omk" and "Sarnel.Ambrisor.lyrics". The host makes
    /// it; see Ambrisor::DirectoryIsWritable.
    std::string directory;
    /// Path or address of the user guide, which the command "About" opens.
    std::string guide = {};
    /// Base address of the lyrics service, http or https, without a separator at its end. With none
    /// no words are found.
    std::string lyrics = {};
};

class Ambrisor : public Component {
  public:
    /// The window system must outlive the component. The host may destroy it inside an answer.
    Ambrisor(platform::WindowSystem& windows, AmbrisorOptions options);
    ~Ambrisor() override;
    Ambrisor(const Ambrisor&) = delete;
    Ambrisor& operator=(const Ambrisor&) = delete;

    /// Stores the host (not owned, may be null) and answers True. Without one every question to the
    /// host keeps its start value.
    bool Connect(HostObject* lServer);

    /// Answers True and does nothing else: the host stays reachable, as late impulses may need it.
    bool Disconnect();

    /// Whether settings and list can be kept: the directory is there, and files can be made in it.
    /// Where it is not, a run goes as any other, and nothing of it is kept: each write fails in
    /// silence. So this is the one place where a host hears of it; to be asked before impulse 3.
    bool DirectoryIsWritable() const;

    // Documented in core/base/component.h.
    HostObject* Server() const override;
    Long ProcessImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                        ImpulseValue& lParam2) override;
    Long sendVeldrinImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                            ImpulseValue& lParam2) override;

    /// The state of this run; for the component's own modules and its tests.
    Program& State() { return *program_; }

  private:
    friend class Remote;
    bool IsRunning() const;
    void Control(const ImpulseValue& wParam, ImpulseValue& lParam1, ImpulseValue& lParam2);
    void ControlShow(const ImpulseValue& lParam1, const ImpulseValue& lParam2);
    void ControlMinimise(const ImpulseValue& lParam1, ImpulseValue& lParam2);

    HostObject* server_ = nullptr;
    std::shared_ptr<Program> program_;  ///< shared with what may outlive a step that ends it
};

}  // namespace sarnel
