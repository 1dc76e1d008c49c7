#include "shell/jhotkeys.h"

#include <algorithm>
#include <cstdint>

#include "shell/hotkeyerror.h"

namespace sarnel {

namespace {

constexpr std::size_t kLongestName = 32;
constexpr std::size_t kLongestAtom = 254;
constexpr std::size_t kLongestSystemText = 256;
constexpr std::u16string_view kComponentFile = u"Sarnel.Ambrisor";

constexpr std::uint32_t kNoSuchKey = 0x80040419;
constexpr std::uint32_t kNoAtom = 0x8004041A;
constexpr std::uint32_t kRefused = 0x8004041B;
constexpr std::uint32_t kNameIsTaken = 0x8004041C;

[[noreturn]] void Raise(std::uint32_t number, std::u16string description) {
    throw HotKeyError(number, std::move(description));
}

// "... 'name'...", as the errors quote it.
std::u16string Quoting(std::u16string_view before, std::u16string_view name,
                       std::u16string_view after) {
    std::u16string text(before);
    text.append(u"'").append(name).append(u"'").append(after);
    return text;
}

}  // namespace

JHotKeys::~JHotKeys() {
    Step([this] { Clear(); });
}

void JHotKeys::Clear() {
    const std::size_t bound = keys_.size();
    for (std::size_t i = 0; i < bound; ++i) {
        if (i >= keys_.size()) {
            throw BoundsError();
        }
        UnregisterKey(std::u16string(keys_[i].name));  // a copy: its record goes
    }
}

void JHotKeys::RegisterKey(std::u16string_view sName, Long eModifiers, Long eKey) {
    const std::u16string name(sName.substr(0, kLongestName));
    if (Find(name) != nullptr) {
        Raise(kNameIsTaken, Quoting(u"The Key Name ", name, u" is already registered."));
    }
    const std::u16string atomName = AtomName(name);
    const Long atom = windows_.GlobalAddAtom(atomName);
    const Long id = static_cast<std::int16_t>(atom);
    if (id == 0) {
        Raise(kNoAtom, u"Failed to add GlobalAtom" + SystemText());
    }
    if (!windows_.RegisterHotKey(window_, id, eModifiers, eKey, name)) {
        const std::u16string text = SystemText();
        windows_.GlobalDeleteAtom(atom);
        Raise(kRefused, u"Failed to Register Hot Key" + text);
    }
    keys_.push_back({name, atomName, id, eKey, eModifiers});
}

void JHotKeys::UnregisterKey(std::u16string_view sName) {
    const Key* key = Find(sName);
    if (key == nullptr) {
        Raise(kNoSuchKey, Quoting(u"No hot key registered under the name ", sName, u""));
    }
    windows_.UnregisterHotKey(window_, key->id);
    windows_.GlobalDeleteAtom(static_cast<std::uint16_t>(key->id));
    keys_.erase(keys_.begin() + (key - keys_.data()));
}

void JHotKeys::WM_HOTKEY(Long id, Long lParam) {
    constexpr Long kSnapWindow = -1;
    constexpr Long kSnapDesktop = -2;
    if (id == kSnapWindow || id == kSnapDesktop) {
        return;
    }
    const auto handler = onHotKeyPress;  // a copy: it may end the run, and with it the keys
    const auto key =
        std::find_if(keys_.begin(), keys_.end(), [id](const Key& k) { return k.id == id; });
    if (!handler) {
        return;
    }
    if (key != keys_.end()) {
        const Key known = *key;
        handler(known.name, known.modifiers, known.key);
    } else {
        handler(u"Unknown HotKey", lParam & 0xFFFF, lParam / 65536);
    }
}

const JHotKeys::Key* JHotKeys::Find(std::u16string_view sName) const {
    const auto key =
        std::find_if(keys_.begin(), keys_.end(), [&](const Key& k) { return k.name == sName; });
    return key == keys_.end() ? nullptr : &*key;
}

// The time makes it another one in each run.
std::u16string JHotKeys::AtomName(std::u16string_view name) const {
    std::u16string atomName(name);
    atomName.append(u"_").append(kComponentFile).append(u"_");
    for (const char digit : std::to_string(windows_.Now())) {
        atomName.push_back(static_cast<char16_t>(digit));
    }
    return atomName.substr(0, kLongestAtom);
}

std::u16string JHotKeys::SystemText() const {
    const std::u16string text = windows_.LastErrorText().substr(0, kLongestSystemText);
    return text.empty() ? text : u" [" + text + u"]";
}

}  // namespace sarnel
