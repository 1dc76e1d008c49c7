#include "host/application.h"

#include <unistd.h>

#include <csignal>
#include <utility>

#include "core/base/impulses.h"
#include "host/http/http.h"
#include "host/list_export.h"
#include "host/paths.h"
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
          std::move(beginning.typesFile)),
      lyrics_(MakeLyrics(beginning.words, console)),
      windows_(front.GetDriver()),
      host_(engine_, tags_, *this, *this),
      component_(windows_, {beginning.directory, UserGuide(),
                            lyrics_ ? lyrics_->Address() : beginning.lyrics}),
      lines_(std::move(beginning.lines)),
      more_(std::move(beginning.more)),
      restored_(beginning.restored),
      plays_(beginning.plays) {
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
    if (more_) {
        front_.GetDriver().Watch(more_->Number(), {});
    }
    front_.Leave();
    front_.GetDriver().Watch(signals_.Number(), {});
}

int Application::Run() {
    Listen();
    Load();
    for (std::size_t i = 1; i < lines_.size(); ++i) {
        waiting_.push_back({{Request::Kind::kLine, std::move(lines_[i])}, nullptr});
    }
    WorkOff();
    if (more_) {
        front_.GetDriver().Watch(more_->Number(), [this] { TakeMore(); });
        TakeMore();
    }
    if (!ended_) {
        BeginPlaying();
    }
    while (!closed_ && !endRequested_ && IsReady()) {
        windows_.WaitMessage();
        if (keeper_) {
            keeper_->Turn();
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

void Application::ItemOpened(const std::string& path) {
    if (lyrics_) {
        lyrics_->ItemOpened(path);
    }
    front_.ItemOpened(path);
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
    isOpening_ = true;
    windows_.WaitKeepingInput([&] { return !isDone() && !endRequested_ && !closed_; },
                              [&](const platform::DriverEvent& event) {
                                  const bool keeps = keptInput_.Keeps(event);
                                  if (keptInput_.AskedToClose()) {
                                      RequestEnd();
                                  }
                                  return keeps;
                              });
    isOpening_ = false;
    if (endRequested_) {
        End();
    } else {
        WorkOffSoon();
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
    second = platform::Widen(lines_.empty() ? std::string() : lines_.front());
    component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
}

void Application::Listen() {
    Descriptor listening = lock_ ? lock_->Listen(place_) : Descriptor();
    if (listening) {
        server_.emplace(
            windows_, std::move(listening),
            [this](const auto& requests, const auto& sender) { Handle(requests, sender); },
            HandoverServer::Limits());
    }
}

// Not from within the driver's wait: the component may wait in turn.
void Application::TakeMore() {
    GivenPaths given = more_->Take();
    for (std::string& line : given.lines) {
        waiting_.push_back({{Request::Kind::kLine, std::move(line)}, nullptr});
    }
    for (const std::string& complaint : given.complaints) {
        console_.Complain(Printable(complaint));
    }
    if (more_->IsDone()) {
        front_.GetDriver().Watch(more_->Number(), {});
        more_.reset();
    }
    WorkOffSoon();
}

void Application::Handle(const std::vector<Request>& requests,
                         const std::shared_ptr<const Descriptor>& sender) {
    for (const Request& request : requests) {
        if (request.kind == Request::Kind::kQuit) {
            RequestEnd();
        } else {
            waiting_.push_back({request, sender});
        }
    }
    WorkOff();
}

// A folder with all folders below it is many lines: between them a window gets its turn. Who asks
// for the end has them all in the list, without their tags.
void Application::WorkOff() {
    constexpr platform::Millis kLongest = 20;
    const bool sharesTime = front_.GetDriver().ShowsPictures();
    const platform::Millis start = windows_.Now();
    while (!waiting_.empty() && !isOpening_ && !closed_ && !ended_) {
        if (sharesTime && !endRequested_ && windows_.Now() - start >= kLongest) {
            WorkOffSoon();
            return;
        }
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        Do(next.request, next.sender);
    }
}

void Application::WorkOffSoon() {
    if (!waiting_.empty() && !std::exchange(isWorkScheduled_, true)) {
        windows_.Schedule(0, [this] {
            isWorkScheduled_ = false;
            WorkOff();
        });
    }
}

void Application::Do(const Request& request, const std::shared_ptr<const Descriptor>& sender) {
    ImpulseValue minimise(false);
    ImpulseValue former(platform::Long{0});
    switch (request.kind) {
        case Request::Kind::kLine:
            HandOver(request.text);
            break;
        case Request::Kind::kShow:
            component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlMinimise, minimise,
                                      former);
            break;
        case Request::Kind::kExport:
            ExportInBackground(sarnel::Remote(component_).CopyList(), request.text, sender);
            break;
        case Request::Kind::kQuit:
            break;  // never waits
    }
}

void Application::HandOver(const std::string& line) {
    windows_.SendCopyData(window_, {0, line});
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
    WorkOff();
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
