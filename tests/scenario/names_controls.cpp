// The members of windows, of the small controls, and of the menu and the hot keys.
#include <iterator>
#include <utility>
#include <vector>

#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "playlist/media.h"
#include "tests/scenario/names.h"

namespace scenario {

using namespace sarnel;
using platform::Widget;

namespace {

const Class& WidgetClass() {
    static const Class type{"window",
                            nullptr,
                            {
                                Property("Left", &Widget::Left, &Widget::Left),
                                Property("Top", &Widget::Top, &Widget::Top),
                                Property("Width", &Widget::Width, &Widget::Width),
                                Property("Height", &Widget::Height, &Widget::Height),
                                Property("Visible", &Widget::Visible, &Widget::Visible),
                                Property("Enabled", &Widget::Enabled, &Widget::Enabled),
                                Property("BackColor", &Widget::BackColor, &Widget::BackColor),
                                Property("ForeColor", &Widget::ForeColor, &Widget::ForeColor),
                                Property("Tag", &Widget::Tag, &Widget::Tag),
                                ReadOnly("hWnd", &Widget::HWnd),
                                ReadOnly("HWnd", &Widget::HWnd),
                            }};
    return type;
}

// A window or control with a font of its own.
const Class& LetteredClass() {
    static const Class type{"window with a font",
                            &WidgetClass(),
                            {
                                Property("FontName", &Widget::FontName, &Widget::FontName),
                                Property("FontSize", &Widget::FontSize, &Widget::FontSize),
                                Property("FontBold", &Widget::FontBold, &Widget::FontBold),
                                Property("FontItalic", &Widget::FontItalic, &Widget::FontItalic),
                            }};
    return type;
}

Entry ToolTipText() {
    return Property("ToolTipText", &Widget::ToolTipText, &Widget::ToolTipText);
}

}  // namespace

const Class& MainWindowClass() {
    static const Class type{"frmMAIN",
                            &LetteredClass(),
                            {
                                Property("Caption", &frmMAIN::Caption, &frmMAIN::Caption),
                                ReadOnly("Icon", &frmMAIN::Icon),
                                Routine("AddFileToList", AddFileToList),
                                Routine("SearchFiles", SearchFiles),
                            }};
    return type;
}

const Class& TipWindowClass() {
    static const Class type{"frmTIP",
                            &LetteredClass(),
                            {
                                ReadOnly("Helptext", &frmTIP::Helptext),
                                Method("ShowTooltip", &frmTIP::ShowTooltip),
                                Method("Form_Resize", &frmTIP::Form_Resize),
                            }};
    return type;
}

const Class& LabelClass() {
    using platform::Label;
    static const Class type{"Label",
                            &LetteredClass(),
                            {Property("Caption", &Label::Caption, &Label::Caption), ToolTipText()}};
    return type;
}

const Class& PictureBoxClass() {
    static const Class type{"PictureBox", &LetteredClass(), {ToolTipText()}};
    return type;
}

const Class& TextBoxClass() {
    using platform::TextBox;
    static const Class type{"TextBox",
                            &LetteredClass(),
                            {
                                Property("Text", &TextBox::Text, &TextBox::Text),
                                Property("SelStart", &TextBox::SelStart, &TextBox::SelStart),
                                Property("SelLength", &TextBox::SelLength, &TextBox::SelLength),
                                Property("SelText", &TextBox::SelText, &TextBox::SelText),
                                ReadOnly("MultiLine", &TextBox::MultiLine),
                                Property("Locked", &TextBox::Locked, &TextBox::Locked),
                                ReadOnly("LineCount", &TextBox::LineCount),
                                ReadOnly("FirstVisibleLine", &TextBox::FirstVisibleLine),
                                Method("LineScroll", &TextBox::LineScroll),
                                Method("HideCaret", &TextBox::HideCaret),
                                ToolTipText(),
                            }};
    return type;
}

namespace {

// What a strip of images and a mask make of a button or toggle; Enabled is the class's own.
template <class T>
std::vector<Entry> StripMembers(std::vector<Entry> own) {
    std::vector<Entry> members{
        Property("Enabled", &T::Enabled, &T::Enabled),
        Property<SkinButton, Colour, Colour>("MaskColor", &SkinButton::MaskColor,
                                             &SkinButton::MaskColor),
        Property<SkinnedControl, Long, Long>("MousePointer", &SkinnedControl::MousePointer,
                                             &SkinnedControl::MousePointer),
        ReadOnly("PressState", &SkinButton::PressState),
        Method("Refresh", &SkinButton::Refresh),
        ToolTipText(),
    };
    std::move(own.begin(), own.end(), std::back_inserter(members));
    return members;
}

}  // namespace

const Class& ButtonClass() {
    static const Class type{"JButton", &WidgetClass(), StripMembers<JButton>({})};
    return type;
}

const Class& ToggleClass() {
    static const Class type{
        "JToogle", &WidgetClass(),
        StripMembers<JToogle>({Property("Value", &JToogle::Value, &JToogle::Value)})};
    return type;
}

const Class& SliderClass() {
    static const Class type{
        "JSlider",
        &WidgetClass(),
        {
            Property("Enabled", &JSlider::Enabled, &JSlider::Enabled),
            Property("Value", &JSlider::Value, &JSlider::Value),
            Property("Max", &JSlider::Max, &JSlider::Max),
            Property("Style", &JSlider::Style, &JSlider::Style),
            Property("StickPosition", &JSlider::StickPosition, &JSlider::StickPosition),
            Property("StickMaskColor", &JSlider::StickMaskColor, &JSlider::StickMaskColor),
            Property<SkinnedControl, Long, Long>("MousePointer", &SkinnedControl::MousePointer,
                                                 &SkinnedControl::MousePointer),
            ReadOnly("StickLeft", &JSlider::StickLeft),
            ReadOnly("StickTop", &JSlider::StickTop),
            ReadOnly("StickVisible", &JSlider::StickVisible),
            ReadOnly("IsSliderMouseControled", &JSlider::IsSliderMouseControled),
            Method("Refresh", &JSlider::Refresh),
            ToolTipText(),
        }};
    return type;
}

namespace {

void SetFontData(JPopupMenu& menu, Text name, Long size, bool italic, Long weight, Long charset) {
    menu.SetFontData({std::u16string(name), size, italic, weight, charset});
}

void SetColors(JPopupMenu& menu, Long a, Long b, Long c, Long d, Long e, Long f, Long g, Long h,
               Long i, Long j, Long k, Long l) {
    menu.SetColors({a, b, c, d, e, f, g, h, i, j, k, l});
}

// A picture of one colour.
void BackgroundPicture(JPopupMenu& menu, Long width, Long height, Long colour) {
    platform::Surface picture({width, height});
    picture.FillRect(picture.Bounds(), colour);
    menu.BackgroundPicture(std::make_shared<const platform::Surface>(std::move(picture)));
}

Long KeyModifiers(JPopupMenu& menu, Long index) {
    return menu.Keys(index).modifiers;
}

Long KeyCode(JPopupMenu& menu, Long index) {
    return menu.Keys(index).code;
}

}  // namespace

const Class& PopupMenuClass() {
    using Menu = JPopupMenu;
    static const Class type{"JPopupMenu",
                            nullptr,
                            {
                                Method("AddItem", &Menu::AddItem),
                                Method("BackgroundPicture", BackgroundPicture),
                                Property("Caption", &Menu::Caption, &Menu::Caption),
                                Property("Checked", &Menu::Checked, &Menu::Checked),
                                Method("Clear", &Menu::Clear),
                                Method("ClearBackgroundPicture", &Menu::ClearBackgroundPicture),
                                Method("ClearSubMenusOfItem", &Menu::ClearSubMenusOfItem),
                                ReadOnly("Count", &Menu::Count),
                                Property("Enabled", &Menu::Enabled, &Menu::Enabled),
                                Method("GroupToggle", &Menu::GroupToggle),
                                Property("Header", &Menu::Header, &Menu::Header),
                                ReadOnly("hMenu", &Menu::hMenu),
                                Property("hWndOwner", &Menu::hWndOwner, &Menu::hWndOwner),
                                Method("IndexForKey", &Menu::IndexForKey),
                                Method("ItemForID", &Menu::ItemForID),
                                Property("ItemKey", &Menu::ItemKey, &Menu::ItemKey),
                                ReadOnly("ItemParentIndex", &Menu::ItemParentIndex),
                                ReadOnly("KeyText", &Menu::KeyText),
                                ReadOnly("KeyModifiers", KeyModifiers),
                                ReadOnly("KeyCode", KeyCode),
                                ReadOnly("MenuItemHeight", &Menu::MenuItemHeight),
                                ReadOnly("MenuItemWidth", &Menu::MenuItemWidth),
                                Property("OwnerDraw", &Menu::OwnerDraw, &Menu::OwnerDraw),
                                Property("RadioCheck", &Menu::RadioCheck, &Menu::RadioCheck),
                                Method("Refresh", &Menu::Refresh),
                                Method("RemoveItem", &Menu::RemoveItem),
                                Method("RemoveItemByIndex", &Menu::RemoveItemByIndex),
                                Method("SetColors", SetColors),
                                Method("SetFontData", SetFontData),
                                Method("ShowPopup", &Menu::ShowPopup),
                            },
                            false};
    return type;
}

const Class& HotKeysClass() {
    using Keys = JHotKeys;
    static const Class type{
        "JHotKeys",
        nullptr,
        {
            Property("hWndToCapture", &Keys::hWndToCapture, &Keys::hWndToCapture),
            Method("Clear", &Keys::Clear),
            Method("RegisterKey", &Keys::RegisterKey),
            Method("UnregisterKey", &Keys::UnregisterKey),
            Method("WM_DESTROY", &Keys::WM_DESTROY),
            Method("WM_HOTKEY", &Keys::WM_HOTKEY),
        },
        false};
    return type;
}

}  // namespace scenario
