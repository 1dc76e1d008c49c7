// The state of one run. It is born with the component and dies with it, so that two runs in one
// process start clean. App() is the way of the free routines in the modules to it: the one pointer
// at namespace scope, set while an Ambrisor lives.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "core/base/impulsevalue.h"
#include "core/state/windowhooks.h"
#include "menus/mJPopupMenu.h"
#include "platform/files/profile.h"
#include "platform/windows/window_system.h"
#include "playback/playedhistory.h"
#include "skin/skintable.h"

namespace sarnel {

class Component;
class frmMAIN;
class frmTIP;

/// Blue, green, red.
using ColourBytes = std::array<std::uint8_t, 3>;

struct Program {
    Program(platform::WindowSystem& windowSystem, std::string componentDirectory,
            std::string userGuide, std::string lyricsBase);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    platform::WindowSystem& windows;
    /// Raw bytes, without a separator at the end.
    const std::string directory;
    /// Path or address.
    const std::string guide;
    /// Base address of the lyrics service.
    const std::u16string lyrics;

    /// For ReadSetting and WriteSetting.
    platform::ProfileMemory SettingsMemory;

    /// Stored by impulse 3; nothing can be sent before.
    Component* component = nullptr;
    /// The component object has died. What is left of the step in which it did so still finds the
    /// state here, and a new run may take its place.
    bool IsOver = false;

    // Playback modes, independent of each other.
    bool Random = false;
    bool RepeatList = false;
    bool RepeatItem = false;
    bool ManualAdvance = false;  ///< stop at the end of an item
    bool PlayAtStartup = false;

    /// Which fact picInfoDisplay shows: 0 played, 1 remaining, 2 format, 3 bit rate.
    Long DisplayMode = 0;
    Long SortFilesMode = 0;
    Long CurrentSkin = 0;

    /// The tick timer runs and the position is followed: False when stopped and when paused.
    bool Playing = false;
    /// The host's last answer to the tick.
    bool StreamAlive = true;
    PlayedHistory History;

    std::u16string InfoText;
    /// The scrolling title, four copies long, and where it is drawn in picScrollText.
    std::u16string ScrollText;
    platform::Rect ScrollRect;
    bool ScrollBack = false;
    Long PulseLevel = 0;
    bool PulseFalling = false;
    /// The two ends of the pulse.
    ColourBytes PulseColorFrom{};
    ColourBytes PulseColorTo{};
    /// Where InfoText is drawn in picInfoDisplay.
    platform::Rect DisplayRect;

    /// The lyrics slider's value at the last scroll.
    Long LyricsLine = 0;

    /// Where the button went down on the window's surface, in pixels of the surface.
    platform::Point DragOrigin;
    /// The desktop less its panels; read at impulse 3 and after each change of it.
    platform::Rect WorkArea;

    WindowHooks Hooks;
    /// What all popup menus share; each holds it while it lives.
    std::shared_ptr<mJPopupMenu> Popups;

    SkinTable Skins;

    /// The main window, created on demand; only its load event runs start-up.
    frmMAIN& Main();
    /// The main window if there is one.
    frmMAIN* ExistingMain() const { return main_.get(); }
    frmTIP& Tip();
    /// Unloads the tooltip, then the main window. The objects live on until no message is handled.
    void UnloadTip();
    void UnloadMain();

  private:
    std::shared_ptr<frmMAIN> main_;
    std::shared_ptr<frmTIP> tip_;
    bool unloading_ = false;
};

/// The run in progress. There is one while an Ambrisor lives, and until the step in which it dies
/// is over; to ask at any other time is a mistake.
Program& App();
/// Makes this the run in progress. False, and nothing has changed, while the component of another
/// one is alive. For Ambrisor alone, as the next.
[[nodiscard]] bool BeginRun(Program& program);
bool IsRunning(const Program& program);

/// Sends an impulse through the component reference; lost, with answer 0, before impulse 3.
Long SendImpulse(Long uMsg, ImpulseValue wParam = Long{0}, ImpulseValue lParam1 = Long{0},
                 ImpulseValue lParam2 = Long{0});

/// Sends an impulse and gives what the host has put into its second argument, a variable that holds
/// `start` before; a host that does not answer leaves it so. T is Long, bool or std::u16string.
template <class T>
T Ask(Long impulse, T start, ImpulseValue wParam = Long{0}, ImpulseValue lParam2 = Long{0}) {
    static_assert(std::is_same_v<T, Long> || std::is_same_v<T, bool> ||
                  std::is_same_v<T, std::u16string>);
    SendImpulse(impulse, std::move(wParam), &start, std::move(lParam2));
    return start;
}

/// The playlist control of the main window.
class JList;
JList& Playlist();

}  // namespace sarnel
