#include "tests/scenario/scripted_host.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "core/base/impulses.h"
#include "platform/base/text.h"
#include "tests/scenario/world.h"

namespace scenario {

using namespace sarnel;

namespace {

// "*.mp3" stands for every name with that ending; a pattern without an asterisk for itself.
bool Matches(std::u16string_view name, std::u16string_view pattern) {
    if (!pattern.starts_with(u'*')) {
        return platform::EqualIgnoringCase(name, pattern);
    }
    const std::u16string_view ending = pattern.substr(1);
    return name.size() >= ending.size() &&
           platform::EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

std::u16string TextOf(const ImpulseValue& value) {
    return value.AsString().value_or(u"");
}

}  // namespace

std::string_view NameOf(HostMember member) {
    static constexpr std::array<std::string_view, 3> kNames{"Capacity", "CellItem", "getClass"};
    return kNames.at(static_cast<std::size_t>(member));
}

void ScriptedHost::Cells(std::vector<std::u16string> classes) {
    cells_.clear();
    for (std::u16string& name : classes) {
        cells_.emplace_back(*this, std::move(name));
    }
}

void ScriptedHost::FailIfTold(HostMember member) const {
    if (answers.failing.count(member) != 0) {
        throw std::runtime_error("the scenario's host fails");
    }
}

std::u16string ScriptedHost::Cell::getClass() {
    host_.FailIfTold(HostMember::kGetClass);
    return name_;
}

Long ScriptedHost::Capacity() {
    FailIfTold(HostMember::kCapacity);
    return static_cast<Long>(cells_.size());
}

HostCell* ScriptedHost::CellItem(Long& number) {
    FailIfTold(HostMember::kCellItem);
    const auto index = static_cast<std::size_t>(number) - 1;  // 1-based
    return index < cells_.size() ? &cells_[index] : nullptr;
}

bool ScriptedHost::IsSupported(std::u16string_view name) const {
    std::u16string_view patterns = answers.types;
    for (;;) {
        const std::size_t end = patterns.find(u';');
        const std::u16string_view pattern = patterns.substr(0, end);
        if (!pattern.empty() && Matches(name, pattern)) {
            return true;
        }
        if (end == std::u16string_view::npos) {
            return false;
        }
        patterns.remove_prefix(end + 1);
    }
}

ImpulseValue ScriptedHost::ProcessImpulse(Ambrisor& /*sender*/, ImpulseValue& uMsg,
                                          ImpulseValue& wParam, ImpulseValue& lParam1,
                                          ImpulseValue& lParam2) {
    const Long impulse = uMsg.AsLong().value_or(0);
    const std::string window =
        impulse == ImpulseOpen ? world_.PrintedHandle(wParam) : world_.Printed(wParam);
    log_.push_back({impulse, std::to_string(impulse) + ' ' + window + ' ' +
                                 world_.Printed(lParam1) + ' ' + world_.Printed(lParam2)});
    RunActions(impulse);
    if (answers.throws.count(impulse) != 0) {
        throw std::runtime_error("the scenario's host fails");
    }
    const auto forced = answers.forced.find(impulse);
    if (forced != answers.forced.end()) {
        Force(impulse, forced->second, lParam1, lParam2);
    } else {
        Answer(impulse, wParam, lParam1, lParam2);
    }
    return Long{1};
}

// Playing follows what the host says, not what it was going to say.
void ScriptedHost::Force(Long impulse, const ImpulseValue& value, ImpulseValue& lParam1,
                         ImpulseValue& lParam2) {
    const bool opens = impulse == ImpulseOpen;
    Give(opens ? lParam2 : lParam1, value);
    answers.playing = opens ? answers.playing || value.AsBoolean().value_or(false)
                            : answers.playing && impulse != ImpulseStop;
}

void ScriptedHost::RunActions(Long impulse) {
    const auto [first, last] = actions_.equal_range(impulse);
    const std::multimap<Long, std::function<void()>> due(first, last);
    actions_.erase(first, last);  // before they run: each runs once
    for (const auto& action : due) {
        action.second();
    }
}

void ScriptedHost::Give(ImpulseValue& out, const ImpulseValue& value) const {
    if (!answers.silent) {
        out.Assign(value);
    }
}

void ScriptedHost::Open(const ImpulseValue& path, ImpulseValue& opened) {
    const bool opens = answers.dead.count(TextOf(path)) == 0;
    answers.playing = answers.playing || opens;
    Give(opened, opens);
}

void ScriptedHost::Answer(Long impulse, const ImpulseValue& wParam, ImpulseValue& lParam1,
                          ImpulseValue& lParam2) {
    const auto lookUp = [&](const auto& texts, const std::u16string& otherwise) {
        const auto found = texts.find(TextOf(wParam));
        return found == texts.end() ? otherwise : found->second;
    };
    switch (impulse) {
        case ImpulseGetHostPath:
            return Give(lParam1, answers.path);
        case ImpulseIsSupported:
            return Give(lParam1, IsSupported(TextOf(wParam)));
        case ImpulseGetFileTypes:
            return Give(lParam1, answers.types);
        case ImpulseGetTitle:
            return Give(lParam1, lookUp(answers.titles, TextOf(lParam1)));
        case ImpulseGetInfo:
            return Give(lParam1, lookUp(answers.infos, u""));
        case ImpulseOpen:
            return Open(lParam1, lParam2);
        case ImpulseStop:
            answers.playing = false;
            return;
        case ImpulseGetPosition:
            return Give(lParam1, answers.position);
        case ImpulseGetLength:
            return Give(lParam1, answers.length);
        case ImpulseIsPlaying:
            return Give(lParam1, answers.playing);
        case ImpulseGetTimeText:
            return Give(lParam1, *wParam.AsBoolean() ? answers.remaining : answers.played);
        case ImpulseGetLengthText:
            return Give(lParam1, answers.lengthText);
        case ImpulseGetSampleRate:
            return Give(lParam1, answers.sampleRate);
        case ImpulseGetChannels:
            return Give(lParam1, answers.channels);
        case ImpulseGetBitRate:
            return Give(lParam1, answers.bitRate);
        default:
            return;
    }
}

}  // namespace scenario
