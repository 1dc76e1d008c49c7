#include "tests/unit/support/world.h"

#include <utility>

#include "platform/base/messages.h"
#include "platform/base/text.h"

namespace support {

using sarnel::ImpulseValue;

void World::Create() {
    component.reset();  // one may be alive at a time
    component = std::make_unique<sarnel::Ambrisor>(windows, sarnel::AmbrisorOptions{folder.Path()});
    component->Connect(&host);
}

void World::Load() {
    Create();
    Impulse(sarnel::kImpulseAttach);
    Impulse(sarnel::kImpulseControl, sarnel::kControlLoad);
}

void World::Show(std::u16string_view line) {
    Impulse(sarnel::kImpulseControl, sarnel::kControlShow, true, line);
}

void World::Start(std::u16string_view line) {
    Load();
    Show(line);
}

void World::End() {
    Impulse(sarnel::kImpulseControl, sarnel::kControlShow, false);
    component->Disconnect();
}

void World::Quit() {
    End();
    component.reset();
}

Answered World::Impulse(Long number, ImpulseValue wParam, ImpulseValue lParam1,
                        ImpulseValue lParam2) {
    Answered answered{0, std::move(lParam1), std::move(lParam2)};
    answered.result =
        component->ProcessImpulse(number, std::move(wParam), answered.lParam1, answered.lParam2);
    return answered;
}

void World::Do(const std::function<void()>& routine) {
    const platform::WindowSystem::Dispatching dispatching(windows);
    routine();
}

Long World::Message(Long id, Long wParam, Long lParam) {
    return windows.SendMessage(Window(), id, wParam, lParam);
}

void World::HotKey(std::u16string_view name) {
    const sarnel::JHotKeys::Key* key = Main().hKeys->Find(name);
    Message(platform::WM_HOTKEY, key->id, key->modifiers | (key->key << 16));
}

void World::HandOver(std::string line) {
    windows.SendCopyData(Window(), {0, std::move(line)});
}

void World::Rows(const std::vector<std::u16string>& paths) {
    for (const std::u16string& path : paths) {
        List().AddItem(path, path);
    }
}

std::vector<std::u16string> World::Titles() {
    std::vector<std::u16string> titles;
    for (Long i = 0; i < List().ListCount(); ++i) {
        titles.push_back(List().List(i));
    }
    return titles;
}

std::vector<std::u16string> World::Paths() {
    std::vector<std::u16string> paths;
    for (Long i = 0; i < List().ListCount(); ++i) {
        paths.push_back(List().ListData(i));
    }
    return paths;
}

std::optional<std::string> World::Setting(std::string_view key) const {
    const std::string text = "\n" + folder.Read(kSettings).value_or("");
    const std::string begin = "\n" + std::string(key) + "=";
    const std::size_t at = text.find(begin);
    if (at == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t value = at + begin.size();
    return text.substr(value, text.find_first_of("\r\n", value) - value);
}

std::vector<Long> World::Timers() {
    std::vector<Long> ids;
    for (const auto& timer : windows.Timers(Window())) {
        ids.push_back(timer.first);
    }
    return ids;
}

WorldBuilder& WorldBuilder::Setting(std::string_view key, std::string_view value) {
    settings_ += std::string(key) + "=" + std::string(value) + "\r\n";
    return *this;
}

WorldBuilder& WorldBuilder::Saved(const std::vector<std::string>& names, Long current) {
    const auto number = [](long long value) {
        return (value < 0 ? "" : " ") + std::to_string(value) + " \r\n";
    };
    std::string file =
        "OMK v1.1\r\n" + number(static_cast<long long>(names.size())) + number(current);
    for (const std::string& name : names) {
        file += name + "\r\n" + name + "\r\n";
    }
    world_->folder.Write(World::kPlaylist, file);
    return *this;
}

WorldBuilder& WorldBuilder::Rows(std::vector<std::u16string> paths) {
    rows_ = std::move(paths);
    return *this;
}

WorldBuilder& WorldBuilder::Current(Long row) {
    current_ = row;
    return *this;
}

WorldBuilder& WorldBuilder::Dead(std::initializer_list<std::u16string> paths) {
    world_->host.dead.insert(paths);
    return *this;
}

WorldBuilder& WorldBuilder::Host(const std::function<void(FakeHost&)>& settle) {
    settle(world_->host);
    return *this;
}

std::unique_ptr<World> WorldBuilder::Created() {
    if (!settings_.empty()) {
        world_->folder.Write(World::kSettings, "[Memory]\r\n" + settings_);
    }
    world_->Create();
    return std::move(world_);
}

std::unique_ptr<World> WorldBuilder::Loaded() {
    auto world = Created();
    world->Impulse(sarnel::kImpulseAttach);
    world->Impulse(sarnel::kImpulseControl, sarnel::kControlLoad);
    Furnish(*world);
    return world;
}

std::unique_ptr<World> WorldBuilder::Started(std::u16string_view line) {
    auto world = Created();
    world->Impulse(sarnel::kImpulseAttach);
    world->Impulse(sarnel::kImpulseControl, sarnel::kControlLoad);
    world->Show(line);
    Furnish(*world);
    return world;
}

void WorldBuilder::Furnish(World& world) const {
    world.Rows(rows_);
    if (!rows_.empty()) {
        world.List().ListCurrent(current_);
    }
    world.host.Forget();
}

}  // namespace support
