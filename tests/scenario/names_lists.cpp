// The members of the list control.
#include "controls/list/jlist.h"
#include "tests/scenario/names.h"

namespace scenario {

using platform::Widget;
using sarnel::JList;

namespace {

void AddItem(JList& list, Text text, Text data, std::optional<Long> at) {
    list.AddItem(text, data, at.value_or(-1));
}

std::vector<Entry> Rows() {
    return {
        ReadOnly("List", &JList::List),
        Property("ListData", &JList::ListData, &JList::ListData),
        Property("Selected", &JList::Selected, &JList::Selected),
        Property("ImageIndex", &JList::ImageIndex, &JList::ImageIndex),
        ReadOnly("ListCount", &JList::ListCount),
        Property("ListIndex", &JList::ListIndex, &JList::ListIndex),
        Property("ListCurrent", &JList::ListCurrent, &JList::ListCurrent),
        Property("newIndex", &JList::newIndex, &JList::newIndex),
        ReadOnly("Text", &JList::Text),
        ReadOnly("SelCount", &JList::SelCount),
        Property("FocusIndex", &JList::FocusIndex, &JList::FocusIndex),
        Property("CaretIndex", &JList::CaretIndex, &JList::CaretIndex),
        Property("Sorted", &JList::Sorted, &JList::Sorted),
        ReadOnly("SortedLoaded", &JList::SortedLoaded),
        Method("AddItem", AddItem),
        Method("RemoveItem", &JList::RemoveItem),
        Method("Clear", &JList::Clear),
        Method("ClearOrSelect", &JList::ClearOrSelect),
        Method("FindDataIndex", &JList::FindDataIndex),
        Method("Sort", &JList::Sort),
        Method("ReverseStringArray", &JList::ReverseStringArray),
        Method("Serialize", &JList::Serialize),
        Method("Deserialize", &JList::Deserialize),
    };
}

std::vector<Entry> View() {
    return {
        Property("RedrawFlag", &JList::RedrawFlag, &JList::RedrawFlag),
        ReadOnly("TopIndex", &JList::TopIndex),
        ReadOnly("DisplayFirst", &JList::DisplayFirst),
        ReadOnly("DisplayLast", &JList::DisplayLast),
        ReadOnly("VisibleRows", &JList::VisibleRows),
        ReadOnly("ThumbDirty", &JList::ThumbDirty),
        ReadOnly("ScrollBarShown", &JList::ScrollBarShown),
        ReadOnly("RowTop", &JList::RowTop),
        ReadOnly("RowHeight", &JList::RowHeight),
        ReadOnly("ImageCount", &JList::ImageCount),
        Property("ShowItemImages", &JList::ShowItemImages, &JList::ShowItemImages),
        Property("ShowNumeric", &JList::ShowNumeric, &JList::ShowNumeric),
        // Hides that of every window: a list measures itself again.
        Property("Enabled", &JList::Enabled, &JList::Enabled),
        Method("RemoveImages", &JList::RemoveImages),
        Method("DisplayFrom", &JList::DisplayFrom),
        Method("HighlightCurrent", &JList::HighlightCurrent),
        Method("AdjustDisplayRange", &JList::AdjustDisplayRange),
        Method("Refresh", &JList::Refresh),
    };
}

std::vector<Entry> RowsAndView() {
    std::vector<Entry> members = Rows();
    for (Entry& member : View()) {
        members.push_back(std::move(member));
    }
    return members;
}

}  // namespace

const Class& ListClass() {
    static const Class type{"JList", &PictureBoxClass(), RowsAndView()};
    return type;
}

}  // namespace scenario
