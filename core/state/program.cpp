#include "core/state/program.h"

#include <cassert>
#include <utility>

#include "core/base/component.h"
#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "platform/base/text.h"

namespace sarnel {

namespace {

// The one mutable pointer at namespace scope; see App().
Program* runningProgram = nullptr;

}  // namespace

Program& App() {
    assert(runningProgram != nullptr && "no component is alive");
    return *runningProgram;
}

bool BeginRun(Program& program) {
    if (runningProgram != nullptr && !runningProgram->IsOver) {
        return false;
    }
    runningProgram = &program;
    return true;
}

bool IsRunning(const Program& program) {
    return runningProgram == &program && !program.IsOver;
}

Program::Program(platform::WindowSystem& windowSystem, std::string componentDirectory,
                 std::string userGuide, std::string lyricsBase)
    : windows(windowSystem),
      directory(std::move(componentDirectory)),
      guide(std::move(userGuide)),
      lyrics(platform::Widen(lyricsBase)),
      Popups(std::make_shared<mJPopupMenu>(windowSystem)) {}

Program::~Program() {
    main_.reset();
    tip_.reset();
    if (runningProgram == this) {  // a host may have begun anew already
        runningProgram = nullptr;
    }
}

frmMAIN& Program::Main() {
    if (!main_) {
        main_ = std::make_shared<frmMAIN>(windows);
    }
    return *main_;
}

frmTIP& Program::Tip() {
    if (!tip_) {
        tip_ = std::make_shared<frmTIP>(windows);
        windows.MakePopup(tip_->HWnd(), main_ ? main_->HWnd() : 0, platform::PopupKind::kTip);
    }
    return *tip_;
}

void Program::UnloadTip() {
    if (const auto tip = std::exchange(tip_, nullptr)) {
        windows.DestroyWindow(tip->HWnd());
        windows.DeferDelete(tip);
    }
}

void Program::UnloadMain() {
    // Unloading talks to the host, which may ask for the same once more: the first time does it
    // all.
    if (!main_ || unloading_) {
        return;
    }
    unloading_ = true;
    main_->Unload();
    const auto main = std::exchange(main_, nullptr);
    windows.DestroyWindow(main->HWnd());
    windows.DeferDelete(main);
    unloading_ = false;
}

Long SendImpulse(Long uMsg, ImpulseValue wParam, ImpulseValue lParam1, ImpulseValue lParam2) {
    Component* component = App().component;
    return component != nullptr
               ? component->sendVeldrinImpulse(uMsg, std::move(wParam), lParam1, lParam2)
               : 0;
}

JList& Playlist() {
    return App().Main().lstPlaylist;
}

}  // namespace sarnel
