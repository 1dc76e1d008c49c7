// The world of one scenario file: a clock, a screen, a host, a scratch folder and a component of
// its own, and what its commands have printed so far.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/ambrisor.h"
#include "menus/jpopupmenu.h"
#include "platform/windows/window_system.h"
#include "shell/jhotkeys.h"
#include "tests/scenario/names.h"
#include "tests/scenario/output.h"
#include "tests/scenario/popups.h"
#include "tests/scenario/screen.h"
#include "tests/scenario/scripted_host.h"
#include "tests/scenario/value.h"

namespace scenario {

class World;

/// A line of a scenario, ready to run.
using Command = std::function<void(World&)>;

class World {
  public:
    /// `directory` is the scratch folder, raw bytes, absolute; it is not removed.
    /// `directory`: the scratch folder. Surfaces are `density` times as fine as their coordinates.
    explicit World(std::string directory, Long density = 1);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    platform::WindowSystem& Windows() { return windows_; }
    scenario::Screen& Screen() { return screen_; }
    ScriptedHost& Host() { return host_; }
    Popups& PopupMenus() { return popups_; }
    const std::string& Directory() const { return directory_; }

    // Runs of the component.

    /// The component in its present run; at first need one that knows no host yet.
    sarnel::Ambrisor& Component();
    /// Connects a fresh component and loads its window. A run that was not ended is cut off.
    void Load();
    /// Handles a command line and shows the window.
    void Show(const std::u16string& line);
    void Quit();
    /// The main window, null while there is none.
    sarnel::frmMAIN* ExistingMain();
    /// Its window, 0 while there is none.
    platform::Handle MainWindow();

    /// What is not as the component carries it, in runs that begin from now on. An empty text and
    /// no path stand for what is missing.
    struct ChangedLooks {
        std::map<Long, std::u16string> rows;
        std::map<Long, std::optional<std::u16string>> bitmaps;  ///< paths of pictures
    };
    ChangedLooks& Looks() { return looks_; }

    // The instance that `new` makes.

    void MakeInstance(const Class& type);
    /// Raises Mistake unless the instance is of that class.
    Object It(const Class& type) const;
    /// The window that holds it, 0 if there is none.
    platform::Handle ItsWindow() const;

    /// The hot keys that it is, null if it is something else.
    const sarnel::JHotKeys* ItsKeys() const;
    /// The main window's, null while there are none.
    const sarnel::JHotKeys* MainKeys();

    /// A list that is read from what is stored with it.
    void MakeList(const sarnel::JListStored& stored);

    // Printing.

    void Print(std::string line) {
        output_.plain.push_back(line);
        PrintFurther(std::move(line));
    }
    /// A line that a check need not name.
    void PrintFurther(std::string line) { output_.lines.push_back(std::move(line)); }
    /// A value as it is printed, with $D put back.
    std::string Printed(const Value& value) const;
    /// A text without quotes, with $D put back.
    std::string Bare(std::u16string_view text) const;
    std::string Printed(const sarnel::ImpulseValue& value) const;
    /// The same where the main window's handle may stand.
    std::string PrintedHandle(const sarnel::ImpulseValue& value) const;
    /// What has been printed since the last call.
    Output TakeOutput() { return std::exchange(output_, {}); }

    // Events.

    /// Records the events of a widget, or of hot keys, under a name.
    void Record(const Object& object, const std::string& name);
    std::vector<std::string> TakeRaised() { return std::exchange(raised_, {}); }

    // Commands. They may run inside one another, from a schedule or from inside the host, where no
    // exception may pass.

    /// Runs a command of that line. Prints an error that the component raises; whatever else goes
    /// wrong is kept.
    void Run(int line, const Command& command);
    struct Trouble {
        int line;
        std::string what;
    };
    /// Why a command could not run: the scenario is wrong. Told once.
    std::optional<Trouble> TakeMistake() { return std::exchange(mistake_, std::nullopt); }
    /// What the component threw although its routines keep their failures to themselves. Told once.
    std::vector<Trouble> TakeFailures() { return std::exchange(failures_, {}); }

  private:
    using Instance =
        std::variant<std::monostate, std::unique_ptr<platform::Widget>,
                     std::unique_ptr<sarnel::JPopupMenu>, std::unique_ptr<sarnel::JHotKeys>>;

    sarnel::ImpulseValue SendToComponent(Long uMsg, Long wParam, sarnel::ImpulseValue lParam1,
                                         sarnel::ImpulseValue lParam2);

    void ApplyLooks();
    platform::Handle HolderOfNew(const Class& type);

    std::string directory_;
    scenario::Screen screen_;
    platform::WindowSystem windows_{screen_};
    ScriptedHost host_{*this};
    Popups popups_{*this};
    ChangedLooks looks_;
    std::map<Long, std::string> pictureFiles_;  ///< outlive the component, which refers to them
    std::unique_ptr<sarnel::Ambrisor> component_;
    bool runBegun_ = false;
    platform::Widget holder_;  ///< hidden window around the instance that `new` makes
    const Class* instanceClass_ = nullptr;
    Instance instance_;
    Output output_;
    std::vector<std::string> raised_;
    std::optional<Trouble> mistake_;
    std::vector<Trouble> failures_;
};

}  // namespace scenario
