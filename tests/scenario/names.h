// The names that a scenario may use, each in one table: program-wide variables (names_program.cpp),
// routines (names_routines.cpp), objects with their classes (names_objects.cpp), and the members
// of each class (names_controls.cpp, names_lists.cpp). Whoever builds something new adds its line
// there.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/scenario/binding.h"
#include "tests/scenario/value.h"

namespace sarnel {
struct JListStored;
}  // namespace sarnel

namespace scenario {

class World;

/// The members of a class of objects. What is not found here is looked for in `base`.
struct Class {
    std::string_view name;
    const Class* base = nullptr;
    std::vector<Entry> members;
    bool isWindow = true;  ///< takes messages, focus, drops, and raises events
};

const Class& MainWindowClass();
const Class& TipWindowClass();
const Class& LabelClass();
const Class& PictureBoxClass();
const Class& TextBoxClass();
const Class& ButtonClass();
const Class& ToggleClass();
const Class& SliderClass();
const Class& ListClass();
const Class& PopupMenuClass();
const Class& HotKeysClass();

/// The classes of which `new` can make an instance, and the one with that name; null if none.
const std::vector<const Class*>& ClassesForNew();
const Class* ClassForNew(std::string_view name);

/// A property that is stored with a list.
struct StoredProperty {
    std::string_view key;
    Kind kind;
    void (*set)(sarnel::JListStored& stored, const Value& value);
};
const std::vector<StoredProperty>& StoredProperties();
/// The property with this key, ignoring case; null if there is none.
const StoredProperty* FindStoredProperty(std::u16string_view key);

/// The member of a class or of its bases; null if there is none.
const Entry* FindMember(const Class& type, std::string_view name);

/// An object of the component by name. A control array has a lowest and a highest index.
struct ObjectName {
    std::string_view name;
    const Class* type;
    Object (*find)(Long index);  ///< in the run in progress; a null pointer if it is not there
    Long first = 0;
    Long last = -1;  ///< below `first`: no array
    bool IsArray() const { return last >= first; }
};

const std::vector<ObjectName>& ObjectNames();
const ObjectName* FindObject(std::string_view name);

/// The name of the main window's control that has this window, "" if none has. Does not bring the
/// main window into being.
std::string NameOfWindow(platform::Handle window);

const std::vector<Entry>& ProgramNames();
const std::vector<Entry>& RoutineNames();
/// Among variables and routines; null if there is none.
const Entry* FindProgramName(std::string_view name);

}  // namespace scenario
