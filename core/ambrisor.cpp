#include "core/ambrisor.h"

#include <cassert>
#include <utility>

#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "playback/mPlayback.h"
#include "playlist/media.h"

namespace sarnel {

Ambrisor::Ambrisor(platform::WindowSystem& windows, AmbrisorOptions options)
    : program_(std::make_shared<Program>(windows, std::move(options.directory),
                                         std::move(options.guide), std::move(options.lyrics))) {
    [[maybe_unused]] const bool isAlone = BeginRun(*program_);
    assert(isAlone && "another Ambrisor is alive in this process");
}

// A host may destroy the component inside its answer to an impulse. The routine that asked goes on
// afterwards, so the state lives on until all messages have been dealt with; it just finds no
// window on the screen, and no host to ask.
Ambrisor::~Ambrisor() {
    platform::WindowSystem& windows = program_->windows;
    program_->component = nullptr;
    program_->IsOver = true;
    const frmMAIN* main = program_->ExistingMain();
    if (main != nullptr && windows.IsDispatching()) {
        program_->UnloadTip();
        windows.DestroyWindow(main->HWnd());
    }
    windows.DeferDelete(std::move(program_));
}

bool Ambrisor::Connect(HostObject* lServer) {
    server_ = lServer;
    return true;
}

// Keeps the host: impulses that are sent after this still reach it.
bool Ambrisor::Disconnect() {
    return true;
}

HostObject* Ambrisor::Server() const {
    return server_;
}

bool Ambrisor::DirectoryIsWritable() const {
    return program_->windows.GetDriver().GetDisk() == platform::Disk::kWritable &&
           platform::IsWritableFolder(platform::Widen(program_->directory));
}

// Every routine works on the run in progress, which is the other one's if there are two.
bool Ambrisor::IsRunning() const {
    return sarnel::IsRunning(*program_);
}

Long Ambrisor::ProcessImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                              ImpulseValue& lParam2) {
    if (!IsRunning()) {
        return 0;
    }
    const platform::WindowSystem::Dispatching dispatching(program_->windows);
    Long result = 0;
    Step([&] {
        switch (uMsg) {
            case kImpulseAttach:
                result = 1;
                program_->component = this;
                ReadWorkArea();
                break;
            case kImpulseControlNumber:
                result = 2;
                lParam1.Assign(kImpulseControl);
                break;
            case kImpulseComponent:
                result = 2;
                lParam1.Assign(static_cast<Object*>(this));
                break;
            case ImpulseClosed:
                result = 1;
                break;
            case kImpulseControl:
                result = 2;
                Control(wParam, lParam1, lParam2);
                break;
            default:
                break;
        }
    });
    return result;
}

// Uses App() and no members: a step may call the host, which may destroy this object, and the next
// step still runs.
void Ambrisor::Control(const ImpulseValue& wParam, ImpulseValue& lParam1, ImpulseValue& lParam2) {
    const std::optional<Long> command = wParam.AsLong();
    if (command == kControlComponent) {
        lParam1.Assign(static_cast<Object*>(this));
    } else if (command == kControlLoad) {
        Step([] { App().Main().Load(); });
        lParam1.Assign(App().Main().HWnd());
    } else if (command == kControlShow) {
        ControlShow(lParam1, lParam2);
    } else if (command == kControlMinimise) {
        ControlMinimise(lParam1, lParam2);
    } else if (command == kControlScrollText) {
        if (const auto text = lParam1.AsString()) {
            SetScrollText(*text);
        }
    }
}

void Ambrisor::ControlShow(const ImpulseValue& lParam1, const ImpulseValue& lParam2) {
    const std::optional<bool> show = lParam1.AsBoolean();
    if (!show) {
        return;
    }
    if (*show) {
        Step([&] {
            if (const auto line = lParam2.AsString()) {
                ProcessCommandLine(*line, true);
            }
        });
        frmMAIN& main = App().Main();
        App().windows.ShowWindow(main.HWnd(), platform::SW_SHOWNORMAL);
        App().windows.SetFocus(main.lstPlaylist.HWnd());
        return;
    }
    Step([] { App().UnloadTip(); });
    Step([] { App().UnloadMain(); });
    SendImpulse(ImpulseClosed);
}

void Ambrisor::ControlMinimise(const ImpulseValue& lParam1, ImpulseValue& lParam2) {
    const platform::WindowSystem& windows = App().windows;
    const platform::Handle window = App().Main().HWnd();
    // 0 means: shown and not minimised. `visible` is a boolean as a number, -1 or 0, so that its
    // complement is 0 if the window is shown.
    const Long iconic = windows.IsIconic(window) ? 1 : 0;
    const Long visible = windows.IsVisible(window) ? -1 : 0;
    lParam2.Assign(iconic | ~visible);
    if (const auto minimise = lParam1.AsBoolean()) {
        SetMinimized(*minimise);
    }
}

Long Ambrisor::sendVeldrinImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue& lParam1,
                                  ImpulseValue& lParam2) {
    Long answer = 0;
    Step([&] {
        if (server_ == nullptr || !IsRunning()) {
            return;
        }
        ImpulseValue number(&uMsg);
        ImpulseValue argument(&wParam);  // a private copy, by reference
        Take(answer, server_->ProcessImpulse(*this, number, argument, lParam1, lParam2).AsLong());
    });
    return answer;
}

}  // namespace sarnel
