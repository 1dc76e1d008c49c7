#include "host/application.h"

#include <unistd.h>

#include <csignal>
#include <utility>

#include "core/base/impulses.h"
#include "host/http/http.h"
#include "host/list_export.h"
#include "host/paths.h"
#include "host/remote/perform.h"
#include "host/remote/status.h"
#include "platform/base/text.h"
#include "platform/menus/menu.h"

namespace veldrin {
namespace {

using sarnel::ImpulseValue;

std::unique_ptr<LyricsServer> MakeLyrics(const std::optional<LyricsSettings>& settings,
                                         Console& console) {
    if (!settings) {
        return nullptr;
    }
    // A single write even from the server's thread: no progress line is shown beside a window.
    return std::make_unique<LyricsServer>(
        *settings, LoadHttp, [&console](const std::string& text) { console.Complain(text); });
}

}  // namespace

Application::Application(Beginning beginning, Signals& signals, Front& front, Console& console)
    : lock_(std::move(beginning.lock)),
      place_(std::move(beginning.place)),
      signals_(signals),
      front_(front),
      console_(console),
      rescue_(std::move(beginning.rescue)),
      engine_(
          beginning.output,
          [this](const std::string& notice) { console_.Complain(Printable(notice)); },
          std::move(beginning.typesFile), beginning.loudness),
      lyrics_(MakeLyrics(beginning.words, console)),
      windows_(front.GetDriver()),
      host_(engine_, tags_, *this, *this),
      component_(windows_, {beginning.directory, UserGuide(ProgramPath()),
                            lyrics_ ? lyrics_->Address() : beginning.lyrics}),
      errands_(windows_, front.GetDriver().ShowsPictures()),
      learning_(windows_, engine_),
      lines_(std::move(beginning.lines)),
      given_(std::move(beginning.more)),
      rules_(std::move(beginning.rules)),
      restored_(beginning.restored),
      plays_(beginning.plays),
      notifies_(beginning.notifies) {
    tags_.GiveUpWhile([this] { return endRequested_ || Signals::IsEndAsked(); });
    front_.GetDriver().Watch(signals_.Number(), [this] {
        signals_.Take([this](int number) { SignalArrived(number); });
    });
    engine_.WaitBy([this](const std::function<bool()>& isDone) { return AwaitOpening(isDone); });
    front_.Enter({windows_, engine_, tags_, [this] { RequestEnd(); },
                  [this] { return endRequested_ || closed_; }, [this] { EndNow(); },
                  [this] { DisplayLost(); }});
}

Application::~Application() {
    LeaveGiven();
    front_.Leave();
    front_.GetDriver().Watch(signals_.Number(), {});
}

int Application::Run() {
    Listen();
    Offer();
    LearnTypes();
    Load();
    AddRestOfLines();
    errands_.WorkOff();
    if (given_) {
        ReadGiven(std::move(given_));
    }
    if (!ended_) {
        BeginPlaying();
    }
    while (!closed_ && !endRequested_ && IsReady()) {
        windows_.WaitMessage();
        if (keeper_) {
            keeper_->Turn();
        }
        if (mpris_) {
            mpris_->Turn();
        }
    }
    constexpr int kNowhereToPlayTo = 1;
    const bool ready = IsReady();
    End();
    return ready ? front_.Status() : kNowhereToPlayTo;
}

void Application::BeginPlaying() {
    if (plays_) {
        front_.Begin(restored_);
    } else {
        front_.BeginSilently();
    }
    if (rescue_) {
        keeper_.emplace(windows_, sarnel::Remote(component_), *rescue_);
        keeper_->Begin(restored_ && lines_.empty());
    }
}

void Application::Closed() {
    closed_ = true;
    errands_.Stop();
}

void Application::ItemOpened(const std::string& path) {
    if (lyrics_) {
        lyrics_->ItemOpened(path);
    }
    front_.ItemOpened(path);
    if (mpris_) {
        mpris_->ItemOpened(path);
    }
}

// The stop may be the window's end: after it the list is saved.
void Application::Stopped(bool ended) {
    front_.Stopped(ended);
    AddWhatWaits();
}

void Application::Sought(int seconds) {
    if (mpris_) {
        mpris_->Sought(seconds);
    }
}

void Application::ItemFailed(const std::string& path) {
    // What the end has broken off has not failed.
    if (!ended_) {
        front_.ItemFailed(path);
    }
}

// The component waits for the host's answer. Its timers may run meanwhile, but nothing that could
// make it ask for another file; only the end does not wait.
bool Application::AwaitOpening(const std::function<bool()>& isDone) {
    if (!windows_.HasKeptInput()) {
        keptInput_ = {};
    }
    errands_.Hold();
    windows_.WaitKeepingInput([&] { return !isDone() && !endRequested_ && !closed_; },
                              [&](const platform::DriverEvent& event) {
                                  const bool keeps = keptInput_.Keeps(event);
                                  if (keptInput_.AskedToClose()) {
                                      RequestEnd();
                                  }
                                  return keeps;
                              });
    errands_.LetGo();
    if (endRequested_) {
        End();
    }
    return !ended_;
}

void Application::Load() {
    component_.Connect(&host_);
    ImpulseValue first;
    ImpulseValue second;
    component_.ProcessImpulse(sarnel::kImpulseAttach, {}, first, second);
    component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, first, second);
    window_ = first.AsLong().value_or(0);
    first = true;
    second = platform::Widen(FirstLine());
    component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
}

void Application::Listen() {
    Descriptor listening = lock_ ? lock_->Listen(place_) : Descriptor();
    if (listening) {
        server_.emplace(
            windows_, std::move(listening),
            [this](const std::vector<Request>& requests, const Reply& reply) {
                Handle(requests, reply);
            },
            HandoverServer::Limits());
    }
}

// An end does not wait, nor does the question how things stand.
void Application::Handle(const std::vector<Request>& requests, const Reply& reply) {
    for (const Request& request : requests) {
        if (request.kind == Request::Kind::kQuit || request.kind == Request::Kind::kStatus) {
            Do(request, reply);
        } else if (request.kind == Request::Kind::kLine) {
            AddLine(request.text);
        } else {
            const bool countsOnce =
                request.kind == Request::Kind::kVerb && request.text.find(' ') == std::string::npos;
            errands_.Add({[this, request, reply] { Do(request, reply); },
                          countsOnce ? request.text : std::string()});
        }
    }
    errands_.WorkOff();
}

void Application::Do(const Request& request, const Reply& reply) {
    if (closed_) {
        return;
    }
    switch (request.kind) {
        case Request::Kind::kLine:
            break;  // the list's, even at the end
        case Request::Kind::kShow:
            front_.MayActivate(request.text);
            Show();
            break;
        case Request::Kind::kQuit:
            RequestEnd();
            break;
        case Request::Kind::kVerb:
            if (const auto verb = ParseVerb(request.text)) {
                reply.Say(Perform(*verb, sarnel::Remote(component_)));
            }
            break;
        case Request::Kind::kStatus: {
            const Status status = StatusOf(sarnel::Remote(component_), engine_);
            reply.Say(request.text == "json" ? StatusJson(status) : StatusLine(status));
            break;
        }
        case Request::Kind::kExport:
            ExportInBackground(sarnel::Remote(component_).CopyList(), request.text, reply);
            break;
    }
}

void Application::Show() {
    ImpulseValue minimise(false);
    ImpulseValue former(platform::Long{0});
    component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlMinimise, minimise, former);
}

void Application::Offer() {
    platform::SessionBus* const bus = front_.Bus();
    if (bus == nullptr) {
        return;
    }
    Mpris::Player player{*bus,
                         windows_,
                         sarnel::Remote(component_),
                         engine_,
                         [this](const std::string& name, std::function<void()> work) {
                             const bool counts = errands_.Add({std::move(work), name});
                             errands_.WorkOff();
                             return counts;
                         },
                         [this] { Show(); },
                         [this] { RequestEnd(); },
                         [this](const std::string& path) { Open(path); },
                         {}};
    if (notifies_) {
        notifier_.emplace(*bus);
        player.announce = [this](const std::string& title, const SongFacts& facts) {
            if (!windows_.IsVisible(window_)) {
                notifier_->Show(title, facts.names.artist, facts.names.album, facts.picture);
            }
        };
    }
    const auto cache = CacheFolder();
    mpris_.emplace(std::move(player), cache ? *cache + "/art" : std::string());
}

void Application::SignalArrived(int number) {
    switch (number) {
        case SIGTSTP:
            front_.Suspending();
            Signals::Suspend();
            break;
        case SIGCONT:
            front_.Continued();
            break;
        default:
            RequestEnd();
            break;
    }
}

// An open menu and a button held on a list would keep the main loop waiting; both let messages
// through.
void Application::RequestEnd() {
    endRequested_ = true;
    windows_.PopupMenus().EndMenu(0);
    windows_.PostMessage(window_, platform::WM_CLOSE, 0, 0);
    AddWhatWaits();
    errands_.Hurry();
}

// Whatever handler of the component is below, it finds nothing to go on with.
void Application::EndNow() {
    endRequested_ = true;
    End();
    if (windows_.IsDispatching()) {
        LeaveProcess(front_.Status());
    }
}

// Perhaps in the middle of the toolkit's own end of the process, so nothing may be taken down that
// the list does not need.
void Application::DisplayLost() {
    constexpr int kNoDisplay = 1;
    End();
    console_.Complain("the display has gone");
    LeaveProcess(kNoDisplay);
}

// Without a way back: what is below has lost its windows. The senders of a quit request see the end
// of the process.
void Application::LeaveProcess(int status) {
    engine_.FinishOutput();
    server_.reset();
    lock_.reset();
    _exit(status);
}

void Application::End() {
    if (std::exchange(ended_, true)) {
        return;
    }
    AddWhatWaits();
    errands_.Stop();
    if (mpris_) {
        mpris_->End();
    }
    if (server_) {
        waitingForEnd_ = server_->StopListening();
        lock_->RemoveSocket(place_);
    }
    if (!closed_) {
        ImpulseValue show(false);
        ImpulseValue unused(platform::Long{0});
        component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, show, unused);
    }
    // The list is saved: from here on the run counts as ended in order.
    if (const auto notice = rescue_ ? rescue_->Finish() : std::nullopt) {
        console_.Complain(Printable(*notice));
    }
    component_.Disconnect();
}

}  // namespace veldrin
