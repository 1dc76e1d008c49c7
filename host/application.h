// The running player: engine, host, window system and component, from the command line to the end.
// One thread runs it all; whoever wishes to end it only leaves a note, and the main loop acts on it
// when no handler of the component is on the stack.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/ambrisor.h"
#include "host/engine/engine.h"
#include "host/engine/tags.h"
#include "host/errands.h"
#include "host/front.h"
#include "host/given_reader.h"
#include "host/instance/handover_server.h"
#include "host/instance/instance.h"
#include "host/kept_input.h"
#include "host/lyrics/server.h"
#include "host/remote/mpris.h"
#include "host/remote/notifier.h"
#include "host/rescue/list_keeper.h"
#include "host/rescue/rescue.h"
#include "host/signals.h"
#include "host/terminal/console.h"
#include "host/type_learning.h"
#include "host/veldrin_host.h"
#include "platform/windows/window_system.h"

namespace veldrin {

/// What a run begins with.
struct Beginning {
    std::string directory;  ///< of the component; it exists
    std::string typesFile;  ///< where the engine keeps its list of playable types
    Output output;
    Loudness loudness = Loudness::kOff;
    std::string lyrics;                   ///< another lyrics service's base address
    std::optional<LyricsSettings> words;  ///< for a lyrics service of its own
    std::vector<std::string> lines;     ///< command lines for the component; none restores the list
    std::unique_ptr<GivenReader> more;  ///< brings further lines; none: there will be none
    std::function<GivenRules()> rules;  ///< of what the desktop gives later
    bool restored = false;              ///< the saved list comes back, whatever else is added
    bool notifies = false;              ///< of items that begin while the window is hidden
    bool plays = true;                  ///< false: nothing is played until somebody asks for it
    std::unique_ptr<Rescue> rescue;     ///< of the list, begun; none: there is no place for a copy
    std::optional<InstanceLock> lock;   ///< none: later starts cannot find this one
    MeetingPlace place;                 ///< of the lock
};

class Application : private RunListener, private ItemListener {
  public:
    /// The three that are referred to must outlive it.
    Application(Beginning beginning, Signals& signals, Front& front, Console& console);

    ~Application() override;

    /// False if there is nowhere to play to: the user has been told, and Run makes no sense.
    bool IsReady() { return engine_.OutputReady(); }

    /// From the first impulse to the last. Answers the exit status.
    int Run();

  private:
    void ExitRequested() override { RequestEnd(); }
    void Closed() override;
    void ItemOpened(const std::string& path) override;
    void ItemFailed(const std::string& path) override;
    void Stopped(bool ended) override;
    void Sought(int seconds) override;

    bool AwaitOpening(const std::function<bool()>& isDone);
    void Load();
    void LearnTypes();
    std::string FirstLine() const;
    void AddRestOfLines();
    void AddWhatWaits();
    void PlayRestored();
    void BeginPlaying();
    void Listen();
    void Offer();
    void ReadGiven(std::unique_ptr<GivenReader> given);
    void TakeGiven();
    void LeaveGiven();
    void AddLine(std::string line);
    void Handle(const std::vector<Request>& requests, const Reply& reply);
    void Do(const Request& request, const Reply& reply);
    void Show();
    void Open(const std::string& path);
    void HandOver(const std::string& line);
    void SignalArrived(int number);
    void RequestEnd();
    void EndNow();
    void DisplayLost();
    [[noreturn]] void LeaveProcess(int status);
    void End();

    // The connections of those who wait for the end come first, so that they close last.
    std::vector<std::shared_ptr<const Descriptor>> waitingForEnd_;
    std::optional<InstanceLock> lock_;
    MeetingPlace place_;
    Signals& signals_;
    Front& front_;
    Console& console_;
    std::unique_ptr<Rescue> rescue_;
    Engine engine_;
    TagReader tags_;
    std::unique_ptr<LyricsServer> lyrics_;
    platform::WindowSystem windows_;
    VeldrinHost host_;
    sarnel::Ambrisor component_;
    std::optional<ListKeeper> keeper_;
    std::optional<Notifier> notifier_;
    std::optional<Mpris> mpris_;
    Errands errands_;
    TypeLearning learning_;
    std::optional<HandoverServer> server_;
    std::vector<std::string> lines_;
    std::unique_ptr<GivenReader> given_;
    std::function<GivenRules()> rules_;
    bool restored_;
    bool plays_;
    bool notifies_;
    platform::Handle window_ = 0;
    KeptInput keptInput_;
    bool endRequested_ = false;
    bool waitsForTypes_ = false;  ///< all errands do
    bool playsNoMore_ = false;
    bool closed_ = false;
    bool ended_ = false;
};

}  // namespace veldrin
