#include "host/rescue/rescue.h"

#include <unistd.h>

#include <utility>

#include "host/paths.h"

namespace veldrin {
namespace {

using Kind = ListState::Kind;

std::string KeptAs(const std::string& name) {
    return "; what was there is kept as '" + name + "'";
}

}  // namespace

Rescue::Places Rescue::PlacesFor(const std::string& directory, const std::string& stateFolder) {
    const std::string stem = stateFolder + "/" + InstanceName(directory);
    return {directory + "/" + kListName, stem + ".omk", stem + ".run"};
}

Rescue::Rescue(Places places) : places_(std::move(places)), writer_(places_.copy) {}

Rescue::~Rescue() {
    Finish();
}

std::optional<std::string> SetUnreadableListAside(const std::string& list) {
    if (GlanceAtList(list).kind != Kind::kUnreadable) {
        return std::nullopt;
    }
    const auto aside = SetAside(list);
    return "cannot read the playlist '" + list + "'" + (aside ? KeptAs(*aside) : std::string());
}

Rescue::Findings Rescue::Begin() {
    Findings findings;
    mark_ = RunMark::Take(places_.mark);
    const ListState list = GlanceAtList(places_.list);
    const bool putBack = mark_ && CopyIsToBePutBack(list);
    if (mark_ && !putBack) {
        // Before the mark says that a run is on: the copy could then seem to be of that run.
        unlink(places_.copy.c_str());
    }
    if (mark_) {
        findings.mayPlay = mark_->Before().brokenStarts < kBrokenStarts;
        mark_->Begin(putBack ? std::nullopt : std::optional(list.stamp));
        RemoveLeftovers(places_.list.substr(0, places_.list.rfind('/')));
    }
    if (putBack) {
        PutBack(findings);
    } else if (auto notice = SetUnreadableListAside(places_.list)) {
        findings.notices.push_back(std::move(*notice));
    }
    if (mark_ && !putBack) {
        hasFirstCopy_ = DuplicateFile(places_.list, places_.copy);
    }
    if (!findings.mayPlay) {
        findings.notices.push_back("the last " + std::to_string(kBrokenStarts) +
                                   " starts broke off at once: nothing is played at this one");
    }
    return findings;
}

bool Rescue::CopyIsToBePutBack(const ListState& glance) const {
    if (GlanceAtList(places_.copy).kind != Kind::kWhole) {
        return false;
    }
    const RunMark::Former& former = mark_->Before();
    const bool isAsSaved = glance.kind == Kind::kMissing ||
                           (glance.kind == Kind::kWhole && glance.stamp.size == former.savedSize);
    if (former.savedSize && isAsSaved) {
        return false;
    }
    const ListState list = JudgeList(places_.list);
    if (JudgeList(places_.copy).kind != Kind::kWhole) {
        return false;
    }
    if (list.kind != Kind::kWhole) {
        return true;
    }
    // A run that broke off has not saved the list that it found. No clock is asked which is newer.
    return former.found == list.stamp && !HaveSameBytes(places_.list, places_.copy);
}

// The file goes first, so that a kill in between leaves none, and the next start the copy.
void Rescue::PutBack(Findings& findings) {
    const bool isThere = GlanceAtList(places_.list).kind != Kind::kMissing;
    const auto aside = isThere ? SetAside(places_.list) : std::nullopt;
    if (isThere && !aside) {
        return;
    }
    findings.putBack = DuplicateFile(places_.copy, places_.list);
    if (findings.putBack) {
        findings.notices.push_back("the playlist is that of its rescue copy" +
                                   (aside ? KeptAs(*aside) : std::string()));
    }
    mark_->Begin(GlanceAtList(places_.list).stamp);
    hasFirstCopy_ = true;
}

void Rescue::Lasted() {
    if (mark_) {
        mark_->Lasted();
    }
}

std::optional<std::string> Rescue::Finish() {
    if (!mark_) {
        return std::nullopt;
    }
    RunMark mark = *std::exchange(mark_, std::nullopt);
    writer_.Stop();
    const ListState list = JudgeList(places_.list);
    if (list.kind == Kind::kWhole || JudgeList(places_.copy).kind != Kind::kWhole) {
        mark.End(list.stamp.size);
        return std::nullopt;
    }
    mark.Lasted();
    return "the playlist could not be saved; the next start takes its rescue copy";
}

}  // namespace veldrin
