#include "tests/scenario/world.h"

#include <array>
#include <cstdio>
#include <utility>

#include "controls/jbutton.h"
#include "controls/jslider.h"
#include "controls/list/jlist.h"
#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "tests/scenario/words.h"

namespace scenario {

using namespace sarnel;

namespace {

constexpr platform::Rect kNewInstance{0, 0, 281, 181};
constexpr const char* kGuide = "/opt/veldrin/guide.html";
constexpr const char* kLyrics = "http://lyrics.test";

}  // namespace

World::World(std::string directory, Long density)
    : directory_(std::move(directory)), screen_(density), holder_(windows_, 0, kNewInstance) {
    screen_.Serve(windows_);
}

World::~World() = default;

Ambrisor& World::Component() {
    if (component_ == nullptr) {
        component_ =
            std::make_unique<Ambrisor>(windows_, AmbrisorOptions{directory_, kGuide, kLyrics});
        ApplyLooks();
        runBegun_ = false;
    }
    return *component_;
}

void World::ApplyLooks() {
    SkinTable table;
    for (const auto& [number, text] : looks_.rows) {
        table.Row(number, text);
    }
    pictureFiles_.clear();
    for (const auto& [id, path] : looks_.bitmaps) {
        pictureFiles_[id] = path ? platform::ReadWholeFile(*path, SIZE_MAX).value_or("") : "";
        table.Bitmap(id, pictureFiles_[id]);
    }
    component_->State().Skins = std::move(table);
}

frmMAIN* World::ExistingMain() {
    return Component().State().ExistingMain();
}

platform::Handle World::MainWindow() {
    const frmMAIN* main = ExistingMain();
    return main != nullptr ? main->HWnd() : 0;
}

ImpulseValue World::SendToComponent(Long uMsg, Long wParam, ImpulseValue lParam1,
                                    ImpulseValue lParam2) {
    Component().ProcessImpulse(uMsg, wParam, lParam1, lParam2);
    return lParam1;
}

void World::Load() {
    if (runBegun_) {
        component_.reset();
    }
    Component().Connect(&host_);
    ApplyLooks();
    runBegun_ = true;
    SendToComponent(kImpulseAttach, 0, Long{0}, Long{0});
    SendToComponent(kImpulseControl, kControlLoad, Long{0}, Long{0});
}

void World::Show(const std::u16string& line) {
    SendToComponent(kImpulseControl, kControlShow, true, line);
}

void World::Quit() {
    SendToComponent(kImpulseControl, kControlShow, false, Long{0});
    Component().Disconnect();
}

// Lets go of the former instance.
platform::Handle World::HolderOfNew(const Class& type) {
    holder_.Visible(true);  // so that the pointer can reach the instance
    instance_ = {};
    instanceClass_ = &type;
    return holder_.HWnd();
}

void World::MakeList(const JListStored& stored) {
    const platform::Handle parent = HolderOfNew(ListClass());
    instance_ = std::make_unique<JList>(windows_, parent, kNewInstance, stored);
}

void World::MakeInstance(const Class& type) {
    const platform::Handle parent = HolderOfNew(type);
    if (&type == &ListClass()) {
        instance_ = std::make_unique<JList>(windows_, parent, kNewInstance);
    } else if (&type == &SliderClass()) {
        instance_ = std::make_unique<JSlider>(windows_, parent, kNewInstance);
    } else if (&type == &ButtonClass()) {
        instance_ = std::make_unique<JButton>(windows_, parent, kNewInstance);
    } else if (&type == &ToggleClass()) {
        instance_ = std::make_unique<JToogle>(windows_, parent, kNewInstance);
    } else if (&type == &PopupMenuClass()) {
        instance_ = std::make_unique<JPopupMenu>(Component().State().Popups);
    } else {
        instance_ = std::make_unique<JHotKeys>(windows_);
    }
}

Object World::It(const Class& type) const {
    if (instanceClass_ != &type) {
        throw Mistake("it is no " + std::string(type.name) + " at this time");
    }
    if (const auto* menu = std::get_if<std::unique_ptr<JPopupMenu>>(&instance_)) {
        return menu->get();
    }
    if (const auto* keys = std::get_if<std::unique_ptr<JHotKeys>>(&instance_)) {
        return keys->get();
    }
    return std::get<std::unique_ptr<platform::Widget>>(instance_).get();
}

platform::Handle World::ItsWindow() const {
    const auto* widget = std::get_if<std::unique_ptr<platform::Widget>>(&instance_);
    return widget != nullptr ? (*widget)->HWnd() : 0;
}

const JHotKeys* World::ItsKeys() const {
    const auto* keys = std::get_if<std::unique_ptr<JHotKeys>>(&instance_);
    return keys != nullptr ? keys->get() : nullptr;
}

const JHotKeys* World::MainKeys() {
    const frmMAIN* main = ExistingMain();
    return main != nullptr ? main->hKeys.get() : nullptr;
}

std::string World::Printed(const Value& value) const {
    if (const auto* text = std::get_if<std::u16string>(&value)) {
        return Quote(Replaced(*text, platform::Widen(directory_), u"$D"));
    }
    return scenario::Printed(value);
}

std::string World::Bare(std::u16string_view text) const {
    return platform::Narrow(Replaced(text, platform::Widen(directory_), u"$D"));
}

std::string World::Printed(const ImpulseValue& value) const {
    return Printed(FromImpulse(value));
}

std::string World::PrintedHandle(const ImpulseValue& value) const {
    const frmMAIN* main = component_ != nullptr ? component_->State().ExistingMain() : nullptr;
    const bool isMain = main != nullptr && value.IsLong() && value.AsLong() == main->HWnd();
    return isMain ? "HWND" : Printed(value);
}

void World::Record(const Object& object, const std::string& name) {
    if (auto* const* widget = std::get_if<platform::Widget*>(&object)) {
        (*widget)->Observe([this, name](const std::string& event, const std::string& arguments) {
            raised_.push_back(name + '.' + event + (arguments.empty() ? "" : ' ' + arguments));
        });
    } else if (auto* const* keys = std::get_if<JHotKeys*>(&object)) {
        auto& handler = (*keys)->onHotKeyPress;
        handler = [this, name, former = handler](std::u16string_view sName, Long eModifiers,
                                                 Long eKey) {
            raised_.push_back(name + ".HotKeyPress " + Printed(Value(std::u16string(sName))) + ' ' +
                              std::to_string(eModifiers) + ' ' + std::to_string(eKey));
            if (former) {
                former(sName, eModifiers, eKey);
            }
        };
    }
}

void World::Run(int line, const Command& command) {
    screen_.Expect(0);
    try {
        command(*this);
    } catch (const ComponentError& error) {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "0x%08X", error.Number());
        Print("error " + std::string(number.data()) + ' ' + Printed(Value(error.Description())));
    } catch (const Mistake& mistake) {
        if (!mistake_) {
            mistake_ = {line, mistake.what()};
        }
    } catch (const std::exception& exception) {
        failures_.push_back({line, exception.what()});
    }
}

}  // namespace scenario
