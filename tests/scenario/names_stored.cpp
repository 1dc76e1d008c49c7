// The properties that are stored with a list, by their keys.
#include <algorithm>

#include "controls/list/jliststored.h"
#include "platform/base/text.h"
#include "tests/scenario/names.h"

namespace scenario {

namespace {

using sarnel::JListStored;
using sarnel::ListColours;

template <auto kMember>
StoredProperty Stored(std::string_view key) {
    using T = std::decay_t<decltype(std::declval<JListStored>().*kMember)>;
    return {key, binding::KindOfType<T>(),
            [](JListStored& stored, const Value& value) { stored.*kMember = std::get<T>(value); }};
}

template <platform::Colour ListColours::*kColour>
StoredProperty Colour(std::string_view key) {
    return {key, Kind::kInteger, [](JListStored& stored, const Value& value) {
                stored.colours.*kColour = std::get<Long>(value);
            }};
}

// One that a list stores but does not read back.
StoredProperty NeverRead(std::string_view key, Kind kind) {
    return {key, kind, [](JListStored&, const Value&) {}};
}

// A font by its name, in the usual size.
void SetListFont(JListStored& stored, const Value& value) {
    stored.listFont.name = std::get<std::u16string>(value);
}

}  // namespace

const std::vector<StoredProperty>& StoredProperties() {
    static const std::vector<StoredProperty> properties{
        {"ListFont", Kind::kText, SetListFont},
        Stored<&JListStored::backColor>("BackColor"),
        Stored<&JListStored::dragEnabled>("DragEnabled"),
        Stored<&JListStored::enabled>("Enabled"),
        Colour<&ListColours::focusRect>("FocusRectColor"),
        Stored<&JListStored::itemImageSize>("ItemImageSize"),
        NeverRead("ListIndex", Kind::kInteger),
        Stored<&JListStored::listCurrent>("ListCurrent"),
        Stored<&JListStored::newIndex>("NewIndex"),
        Stored<&JListStored::redrawFlag>("RedrawFlag"),
        Colour<&ListColours::sel1>("SelColor1"),
        Colour<&ListColours::sel2>("SelColor2"),
        Stored<&JListStored::selCount>("SelCount"),
        Colour<&ListColours::selText>("SelTextColor"),
        Stored<&JListStored::showItemImages>("ShowItemImages"),
        Stored<&JListStored::showSelectRect>("ShowSelectRect"),
        Stored<&JListStored::showNumeric>("ShowNumeric"),
        Stored<&JListStored::sorted>("Sorted"),
        NeverRead("Text", Kind::kText),
        Colour<&ListColours::text>("TextColor"),
        Colour<&ListColours::thumbBorder>("ThumbBorderColor"),
        Colour<&ListColours::thumb1>("ThumbColor1"),
        Colour<&ListColours::thumb2>("ThumbColor2"),
        Stored<&JListStored::topIndex>("TopIndex"),
    };
    return properties;
}

const StoredProperty* FindStoredProperty(std::u16string_view key) {
    const std::vector<StoredProperty>& properties = StoredProperties();
    const auto found =
        std::find_if(properties.begin(), properties.end(), [key](const StoredProperty& property) {
            return platform::EqualIgnoringCase(platform::Widen(property.key), key);
        });
    return found == properties.end() ? nullptr : &*found;
}

}  // namespace scenario
