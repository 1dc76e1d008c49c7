// The part of Application that brings lines to the component: those of the command line, which may
// have to wait at the very first start, and what is found in folders and playlists meanwhile or
// later.
#include <chrono>
#include <utility>

#include "core/remote.h"
#include "host/application.h"
#include "host/paths.h"

namespace veldrin {

// A window need not wait for what the list is filled with; a terminal shows nothing else.
void Application::LearnTypes() {
    waitsForTypes_ = front_.GetDriver().ShowsPictures() && learning_.Begin([this] {
        sarnel::Remote(component_).FileTypesChanged();
        if (std::exchange(waitsForTypes_, false)) {
            errands_.LetGo();
        }
    });
    if (waitsForTypes_) {
        errands_.Hold();
    }
}

std::string Application::FirstLine() const {
    if (waitsForTypes_) {
        return LineOfNothing(lines_.empty() || IsAdding(lines_.front()));
    }
    return lines_.empty() ? std::string() : lines_.front();
}

void Application::AddRestOfLines() {
    if (waitsForTypes_ && lines_.empty()) {
        errands_.Add({[this] { PlayRestored(); }});
    }
    for (std::size_t i = waitsForTypes_ ? 0 : 1; i < lines_.size(); ++i) {
        AddLine(std::move(lines_[i]));
    }
}

// Somebody cannot or will not wait, though nobody knows yet what of it can be played. It is not
// played, then.
void Application::AddWhatWaits() {
    if (std::exchange(waitsForTypes_, false)) {
        playsNoMore_ = true;
        errands_.LetGo();
        errands_.DoForList();
        playsNoMore_ = false;
    }
}

// As the component does when it restores the list itself.
void Application::PlayRestored() {
    sarnel::Remote remote(component_);
    if (!remote.PlayAtStartup() || remote.State() != sarnel::PlaybackState::kStopped) {
        return;
    }
    if (remote.Random()) {
        remote.Next();
    } else {
        remote.Play();
    }
}

// Another one may still be looking for what the list had before.
void Application::ReadGiven(std::unique_ptr<GivenReader> given) {
    LeaveGiven();
    given_ = std::move(given);
    front_.GetDriver().Watch(given_->Number(), [this] { TakeGiven(); });
    TakeGiven();
}

// Not from within the driver's wait: the component may wait in turn.
void Application::TakeGiven() {
    GivenPaths given = given_->Take();
    for (std::string& line : given.lines) {
        AddLine(std::move(line));
    }
    for (const std::string& complaint : given.complaints) {
        console_.Complain(Printable(complaint));
    }
    if (given_->IsDone()) {
        LeaveGiven();
    }
    errands_.WorkOffSoon();
}

void Application::LeaveGiven() {
    if (given_) {
        front_.GetDriver().Watch(given_->Number(), {});
        given_.reset();
    }
}

void Application::AddLine(std::string line) {
    errands_.Add({[this, line = std::move(line)] { HandOver(playsNoMore_ ? Adding(line) : line); },
                  {},
                  true});
}

// As a later start does with a path. Most are found at once, and what is asked next finds it done.
void Application::Open(const std::string& path) {
    constexpr std::chrono::milliseconds kPatience(50);
    auto given = std::make_unique<GivenReader>(std::vector{path}, rules_());
    given->WaitForAll(kPatience);
    ReadGiven(std::move(given));
    errands_.WorkOff();
}

void Application::HandOver(const std::string& line) {
    windows_.SendCopyData(window_, {0, line});
}

}  // namespace veldrin
