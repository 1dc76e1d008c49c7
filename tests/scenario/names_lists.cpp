// The members of the list control.
#include <memory>

#include "controls/list/jlist.h"
#include "tests/scenario/names.h"

namespace scenario {

using platform::Widget;
using sarnel::JList;
using sarnel::ListMouse;
using sarnel::ListThumb;

namespace {

void AddItem(JList& list, Text text, Text data, std::optional<Long> at) {
    list.AddItem(text, data, at.value_or(-1));
}

void DisplayList(JList& list, std::optional<double> grabOffset) {
    list.DisplayList(static_cast<float>(grabOffset.value_or(-1)));
}

// A font of the given size: its looks are one and the same without a screen.
void ListFont(JList& list, Text name, double size) {
    list.ListFont({std::u16string(name), size, false, false});
}

// A picture of one colour.
void AddImage(JList& list, Long width, Long height, Long colour) {
    platform::Surface picture({width, height});
    picture.FillRect(picture.Bounds(), colour);
    list.AddImage(std::make_shared<const platform::Surface>(std::move(picture)));
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
        ReadOnly("ScrollBarShown", &JList::ScrollBarShown),
        ReadOnly("RowTop", &JList::RowTop),
        ReadOnly("RowHeight", &JList::RowHeight),
        ReadOnly("RowPitch", &JList::RowPitch),
        ReadOnly("TextLeft", &JList::TextLeft),
        ReadOnly("ImageLeft", &JList::ImageLeft),
        ReadOnly("ImageColumn", &JList::ImageColumn),
        ReadOnly("RightReserve", &JList::RightReserve),
        Method("DisplayList", DisplayList),
        Method("DisplayFrom", &JList::DisplayFrom),
        Method("HighlightCurrent", &JList::HighlightCurrent),
        Method("AdjustDisplayRange", &JList::AdjustDisplayRange),
        Method("Refresh", &JList::Refresh),
        ReadOnly("hdc", &JList::hdc),
    };
}

std::vector<Entry> Looks() {
    return {
        // BackColor and Enabled hide those of every window: they repaint, or measure again.
        Property("BackColor", &JList::BackColor, &JList::BackColor),
        Property("Enabled", &JList::Enabled, &JList::Enabled),
        Property("FocusRectColor", &JList::FocusRectColor, &JList::FocusRectColor),
        Property("SelColor1", &JList::SelColor1, &JList::SelColor1),
        Property("SelColor2", &JList::SelColor2, &JList::SelColor2),
        Property("SelTextColor", &JList::SelTextColor, &JList::SelTextColor),
        Property("TextColor", &JList::TextColor, &JList::TextColor),
        Property("ThumbBorderColor", &JList::ThumbBorderColor, &JList::ThumbBorderColor),
        Property("ThumbColor1", &JList::ThumbColor1, &JList::ThumbColor1),
        Property("ThumbColor2", &JList::ThumbColor2, &JList::ThumbColor2),
        Property("ShowSelectRect", &JList::ShowSelectRect, &JList::ShowSelectRect),
        Property("ShowNumeric", &JList::ShowNumeric, &JList::ShowNumeric),
        Property("ShowItemImages", &JList::ShowItemImages, &JList::ShowItemImages),
        Property("ItemImageSize", &JList::ItemImageSize, &JList::ItemImageSize),
        Method("ListFont", ListFont),
        ReadOnly("ImageCount", &JList::ImageCount),
        Method("AddImage", AddImage),
        Method("RemoveImages", &JList::RemoveImages),
        ReadOnly("ScaleWidth", &JList::ScaleWidth),
        ReadOnly("ScaleHeight", &JList::ScaleHeight),
        Property("ScaleMode", &JList::ScaleMode, &JList::ScaleMode),
        Property("AutoRedraw", &JList::AutoRedraw, &JList::AutoRedraw),
    };
}

// A field of the list's record of the mouse or of the thumb.
template <class T>
Entry OfMouse(std::string_view name, T ListMouse::*field) {
    return {name,
            binding::OfClass<JList, T>([field](JList& list) { return list.Mouse().*field; }),
            {},
            {}};
}
template <class T>
Entry OfThumb(std::string_view name, T ListThumb::*field) {
    return {name,
            binding::OfClass<JList, T>([field](JList& list) { return list.Thumb().*field; }),
            {},
            {}};
}

std::vector<Entry> Pointer() {
    return {
        Method("MouseOverIndex", &JList::MouseOverIndex),
        Method("WM_MOUSEMOVE_Process", &JList::WM_MOUSEMOVE_Process),
        Method("WM_MOUSELEAVE_Process", &JList::WM_MOUSELEAVE_Process),
        Method("WM_MOUSEWHEEL_Process", &JList::WM_MOUSEWHEEL_Process),
        Property("DragEnabled", &JList::DragEnabled, &JList::DragEnabled),
        OfMouse("MouseX", &ListMouse::x),
        OfMouse("MouseY", &ListMouse::y),
        OfMouse("MouseZone", &ListMouse::zone),
        OfMouse("MouseMode", &ListMouse::mode),
        OfMouse("MouseInside", &ListMouse::inside),
        OfMouse("RightDown", &ListMouse::rightDown),
        OfMouse("ShiftDown", &ListMouse::shiftDown),
        OfMouse("CtrlDown", &ListMouse::ctrlDown),
        OfMouse("ShiftAnchor", &ListMouse::shiftAnchor),
        OfMouse("BandStart", &ListMouse::bandStart),
        OfMouse("BandEnd", &ListMouse::bandEnd),
        OfMouse("LastHover", &ListMouse::lastHover),
        OfMouse("DragArmed", &ListMouse::dragArmed),
        OfMouse("EdgeScrolling", &ListMouse::edgeScrolling),
        OfMouse("ThumbDragging", &ListMouse::thumbDragging),
        OfMouse("ThumbLoopActive", &ListMouse::thumbLoopActive),
        OfMouse("ThumbGrabOffset", &ListMouse::thumbGrabOffset),
        OfMouse("ThumbLastY", &ListMouse::thumbLastY),
        OfThumb("ThumbDirty", &ListThumb::dirty),
        OfThumb("ThumbBarHeight", &ListThumb::barHeight),
        OfThumb("ThumbHeight", &ListThumb::height),
        OfThumb("ThumbTop", &ListThumb::top),
        OfThumb("ThumbMinY", &ListThumb::minY),
        OfThumb("ThumbMaxY", &ListThumb::maxY),
        OfThumb("ScrollBarRect", &ListThumb::stripRect),
        OfThumb("ThumbRect", &ListThumb::rect),
    };
}

std::vector<Entry> Members() {
    std::vector<Entry> members = Rows();
    for (const auto& further : {View(), Looks(), Pointer()}) {
        members.insert(members.end(), further.begin(), further.end());
    }
    return members;
}

}  // namespace

const Class& ListClass() {
    static const Class type{"JList", &PictureBoxClass(), Members()};
    return type;
}

}  // namespace scenario
