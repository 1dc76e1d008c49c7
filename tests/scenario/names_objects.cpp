// The objects of the main window by name, and the look-up in all the tables.
#include <algorithm>

#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "core/state/program.h"
#include "tests/scenario/names.h"

namespace scenario {

using namespace sarnel;

namespace {

// A control of the main window, however it is held; brings the window into being. For the two that
// come and go with start-up: null when they are not there.
template <auto kMember>
Object Control(Long index) {
    auto& member = App().Main().*kMember;
    if constexpr (requires { member(index); }) {
        return &member(index);
    } else if constexpr (requires { member.get(); }) {
        return member.get();
    } else {
        return &member;
    }
}

Object MainWindow(Long /*index*/) {
    return &App().Main();
}

Object TipWindow(Long /*index*/) {
    return &App().Tip();
}

const Entry* FindIn(const std::vector<Entry>& entries, std::string_view name) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [name](const Entry& entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

}  // namespace

const std::vector<ObjectName>& ObjectNames() {
    static const std::vector<ObjectName> names{
        {"frmMAIN", &MainWindowClass(), MainWindow},
        {"frmTIP", &TipWindowClass(), TipWindow},
        {"lstPlaylist", &ListClass(), Control<&frmMAIN::lstPlaylist>},
        {"lst_Search", &ListClass(), Control<&frmMAIN::lst_Search>},
        {"lstFilesAndFolders", &ListClass(), Control<&frmMAIN::lstFilesAndFolders>},
        {"btnSkin", &ButtonClass(), Control<&frmMAIN::btnSkin>, 0, 12},
        {"tglSkin", &ToggleClass(), Control<&frmMAIN::tglSkin>, 0, 3},
        {"sldSkin", &SliderClass(), Control<&frmMAIN::sldSkin>, 0, 9},
        {"picFrame", &PictureBoxClass(), Control<&frmMAIN::picFrame>, 0, 5},
        {"picScrollText", &PictureBoxClass(), Control<&frmMAIN::picScrollText>},
        {"picInfoDisplay", &PictureBoxClass(), Control<&frmMAIN::picInfoDisplay>},
        {"lblEffects", &LabelClass(), Control<&frmMAIN::lblEffects>, 3, 9},
        {"lblFrameAddPathName", &LabelClass(), Control<&frmMAIN::lblFrameAddPathName>},
        {"lblFileTypesSupported", &LabelClass(), Control<&frmMAIN::lblFileTypesSupported>},
        {"lblFrameFileAssocOK", &LabelClass(), Control<&frmMAIN::lblFrameFileAssocOK>},
        {"lblFrameInfoDescription", &LabelClass(), Control<&frmMAIN::lblFrameInfoDescription>},
        {"txtLyrics", &TextBoxClass(), Control<&frmMAIN::txtLyrics>},
        {"txt_SearchFilter", &TextBoxClass(), Control<&frmMAIN::txt_SearchFilter>},
        {"hMenu", &PopupMenuClass(), Control<&frmMAIN::hMenu>},
        {"hKeys", &HotKeysClass(), Control<&frmMAIN::hKeys>},
    };
    return names;
}

const ObjectName* FindObject(std::string_view name) {
    const auto& names = ObjectNames();
    const auto found = std::find_if(names.begin(), names.end(), [name](const ObjectName& object) {
        return object.name == name;
    });
    return found == names.end() ? nullptr : &*found;
}

std::string NameOfWindow(platform::Handle window) {
    if (App().ExistingMain() == nullptr) {
        return {};
    }
    for (const ObjectName& name : ObjectNames()) {
        if (!name.type->isWindow || name.find == TipWindow) {
            continue;
        }
        const Long last = std::max(name.first, name.last);
        for (Long index = name.first; index <= last; ++index) {
            if (std::get<platform::Widget*>(name.find(index))->HWnd() == window) {
                return std::string(name.name) +
                       (name.IsArray() ? '(' + std::to_string(index) + ')' : std::string());
            }
        }
    }
    return {};
}

const std::vector<const Class*>& ClassesForNew() {
    static const std::vector<const Class*> classes{&ListClass(),      &SliderClass(),
                                                   &ButtonClass(),    &ToggleClass(),
                                                   &PopupMenuClass(), &HotKeysClass()};
    return classes;
}

const Class* ClassForNew(std::string_view name) {
    const std::vector<const Class*>& classes = ClassesForNew();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [name](const Class* type) { return type->name == name; });
    return found == classes.end() ? nullptr : *found;
}

const Entry* FindMember(const Class& type, std::string_view name) {
    for (const Class* at = &type; at != nullptr; at = at->base) {
        if (const Entry* member = FindIn(at->members, name)) {
            return member;
        }
    }
    return nullptr;
}

const Entry* FindProgramName(std::string_view name) {
    const Entry* variable = FindIn(ProgramNames(), name);
    return variable != nullptr ? variable : FindIn(RoutineNames(), name);
}

}  // namespace scenario
