#include "platform/windows/shell.h"

#include <algorithm>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace {

template <class Things>
auto FindIn(Things& things, Handle window, Long id) {
    return std::find_if(things.begin(), things.end(), [&](const auto& thing) {
        return thing.window == window && thing.id == id;
    });
}

}  // namespace

Long Shell::AddAtom(std::u16string_view name) {
    if (name.empty()) {
        return 0;
    }
    const auto known = atoms_.find(name);
    if (known != atoms_.end()) {
        ++known->second.count;
        return known->second.number;
    }
    for (std::size_t i = 0; i < kAtoms; ++i) {
        if (!usedAtoms_[i]) {
            const Long number = kFirstAtom + static_cast<Long>(i);
            usedAtoms_.set(i);
            atoms_.emplace(name, Atom{number, 1});
            return number;
        }
    }
    return 0;
}

void Shell::DeleteAtom(Long atom) {
    const auto found = std::find_if(atoms_.begin(), atoms_.end(), [atom](const auto& known) {
        return known.second.number == atom;
    });
    if (found != atoms_.end() && --found->second.count == 0) {
        usedAtoms_.reset(static_cast<std::size_t>(atom - kFirstAtom));
        atoms_.erase(found);
    }
}

bool Shell::AddKey(Key key) {
    const bool taken = std::any_of(keys_.begin(), keys_.end(), [&](const Key& known) {
        return known.combination.modifiers == key.combination.modifiers &&
               known.combination.key == key.combination.key;
    });
    if (taken || !driver_.GrabHotKey(key.grab, key.combination)) {
        return false;
    }
    keys_.push_back(std::move(key));
    return true;
}

bool Shell::RemoveKey(Handle window, Long id) {
    const auto found = FindIn(keys_, window, id);
    if (found == keys_.end()) {
        return false;
    }
    driver_.ReleaseHotKey(found->grab);
    keys_.erase(found);
    return true;
}

std::optional<Shell::Key> Shell::FindKey(Handle grab) const {
    const auto found = std::find_if(keys_.begin(), keys_.end(),
                                    [grab](const Key& key) { return key.grab == grab; });
    return found == keys_.end() ? std::nullopt : std::optional(*found);
}

bool Shell::AddIcon(const Icon& icon, std::u16string_view tip) {
    if (IconOf(icon.window)) {
        return false;
    }
    icons_.push_back(icon);
    driver_.ShowTrayIcon(icon.window, tip);
    return true;
}

bool Shell::ModifyIcon(Handle window, Long id, std::u16string_view tip) {
    if (FindIn(icons_, window, id) == icons_.end()) {
        return false;
    }
    driver_.ShowTrayIcon(window, tip);
    return true;
}

bool Shell::RemoveIcon(Handle window, Long id) {
    const auto found = FindIn(icons_, window, id);
    if (found == icons_.end()) {
        return false;
    }
    icons_.erase(found);
    driver_.HideTrayIcon(window);
    return true;
}

std::optional<Shell::Icon> Shell::IconOf(Handle window) const {
    const auto found = std::find_if(icons_.begin(), icons_.end(),
                                    [window](const Icon& icon) { return icon.window == window; });
    return found == icons_.end() ? std::nullopt : std::optional(*found);
}

Handle Shell::OpenKey(std::u16string_view name) const {
    const auto found = std::find_if(opened_.begin(), opened_.end(), [name](const auto& known) {
        return EqualIgnoringCase(known.second, name);
    });
    return found == opened_.end() ? 0 : found->first;
}

Handle Shell::CreateKey(std::u16string_view name, Handle fresh) {
    // A key has one handle, however often it is opened: programs leave them open to their end.
    const Handle known = OpenKey(name);
    if (known == 0) {
        opened_.emplace(fresh, name);
    }
    return known != 0 ? known : fresh;
}

bool Shell::SetValue(Handle key, std::u16string_view subKey, std::u16string_view text) {
    const auto found = opened_.find(key);
    if (found == opened_.end()) {
        return false;
    }
    std::u16string path = found->second;
    if (!subKey.empty()) {
        path.append(u"\\").append(subKey);
    }
    RegistryValue& value = registry_[Upper(path)];
    value = {path, std::u16string(text)};
    driver_.RegistryWritten(value);
    return true;
}

void Shell::PublishAssociations() const {
    std::vector<RegistryValue> values;
    values.reserve(registry_.size());
    for (const auto& value : registry_) {
        values.push_back(value.second);
    }
    driver_.PublishAssociations(values);
}

void Shell::Forget(Handle window) {
    std::erase_if(keys_, [&](const Key& key) {
        if (key.window == window) {
            driver_.ReleaseHotKey(key.grab);
        }
        return key.window == window;
    });
    if (const auto icon = IconOf(window)) {
        RemoveIcon(window, icon->id);
    }
}

}  // namespace platform
