// The component in a world of a test's own: a virtual clock, a scratch folder as its directory, and
// a host that does as it is told. WorldBuilder says what is there before the run begins.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ambrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "tests/unit/support/fake_host.h"
#include "tests/unit/support/temp_folder.h"

namespace support {

using platform::Handle;
using platform::Long;

/// An impulse's answer and its two arguments as they stand afterwards.
struct Answered {
    Long result = 0;
    sarnel::ImpulseValue lParam1;
    sarnel::ImpulseValue lParam2;
};

class World {
  public:
    static constexpr const char* kSettings = "Sarnel.Ambrisor.ini";
    static constexpr const char* kPlaylist = "Sarnel.Ambrisor.omk";

    TempFolder folder;
    platform::HeadlessDriver driver{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows{driver};
    FakeHost host;
    std::unique_ptr<sarnel::Ambrisor> component;

    // A run, step by step. Create makes a component and connects it to the host.
    void Create();
    void Load();                                 ///< up to (15, 16)
    void Show(std::u16string_view line);         ///< (15, 17, True, line)
    void Start(std::u16string_view line = u"");  ///< all of it
    void End();                                  ///< (15, 17, False), Disconnect
    /// Ends the run and destroys the component.
    void Quit();

    Answered Impulse(Long number, sarnel::ImpulseValue wParam = Long{0},
                     sarnel::ImpulseValue lParam1 = Long{0},
                     sarnel::ImpulseValue lParam2 = Long{0});

    sarnel::Program& State() { return component->State(); }
    sarnel::frmMAIN& Main() { return State().Main(); }
    sarnel::JList& List() { return Main().lstPlaylist; }
    Handle Window() { return Main().HWnd(); }

    /// Lets milliseconds pass.
    void Advance(platform::Millis duration) { windows.Sleep(duration); }
    /// Runs a routine of the component as a message would: what it closes lives until its end.
    void Do(const std::function<void()>& routine);
    Long Message(Long id, Long wParam = 0, Long lParam = 0);
    void HotKey(std::u16string_view name);
    /// A second start hands over its command line.
    void HandOver(std::string line);

    /// Adds rows; each text is title and path.
    void Rows(const std::vector<std::u16string>& paths);
    std::vector<std::u16string> Titles();
    std::vector<std::u16string> Paths();
    /// The raw text of a key in the settings file; none if it is not there.
    std::optional<std::string> Setting(std::string_view key) const;
    std::optional<std::string> Saved() const { return folder.Read(kPlaylist); }
    /// Ids of the main window's running timers.
    std::vector<Long> Timers();
};

class WorldBuilder {
  public:
    WorldBuilder& Setting(std::string_view key, std::string_view value);
    /// The playlist file that the start finds: each name is title and path of a row.
    WorldBuilder& Saved(const std::vector<std::string>& names, Long current = -1);
    /// Rows added once the window is there.
    WorldBuilder& Rows(std::vector<std::u16string> paths);
    WorldBuilder& Current(Long row);
    WorldBuilder& Dead(std::initializer_list<std::u16string> paths);
    WorldBuilder& Host(const std::function<void(FakeHost&)>& settle);

    /// A world whose component is made and connected, no more.
    std::unique_ptr<World> Created();
    std::unique_ptr<World> Loaded();
    /// Running, with what reached the host on the way forgotten.
    std::unique_ptr<World> Started(std::u16string_view line = u"");

  private:
    void Furnish(World& world) const;

    std::unique_ptr<World> world_ = std::make_unique<World>();
    std::string settings_;
    std::vector<std::u16string> rows_;
    Long current_ = -1;
};

}  // namespace support
