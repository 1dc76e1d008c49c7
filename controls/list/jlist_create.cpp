// Construction, measuring, and the properties that are stored with a list's window.
#include "controls/list/jlist.h"
#include "controls/list/translatecolour.h"

namespace sarnel {

using platform::Colour;
using platform::Rect;

JList::JList(platform::WindowSystem& windows, Handle parent, const Rect& rect)
    : Widget(windows, parent, rect) {
    Create();
    ListFont(GetFont());
    Widget::BackColor(JListStored().backColor);
    backBrush_ = BackColor();
    Refresh();
}

JList::JList(platform::WindowSystem& windows, Handle parent, const Rect& rect,
             const JListStored& stored)
    : Widget(windows, parent, rect) {
    Create();
    SetFont(stored.listFont);
    Widget::BackColor(stored.backColor);
    Widget::Enabled(stored.enabled);
    itemImageSize_ = stored.itemImageSize;
    listCurrent_ = stored.listCurrent;
    newIndex_ = stored.newIndex;
    redrawFlag_ = stored.redrawFlag;
    colours_ = stored.colours;
    selCount_ = stored.selCount;
    showItemImages_ = stored.showItemImages;
    showSelectRect_ = stored.showSelectRect;
    showNumeric_ = stored.showNumeric;
    sorted_ = stored.sorted;
    topIndex_ = stored.topIndex;
    mouse_.dragArmed = dragStored_ = stored.dragEnabled;
    sortedLoaded_ = stored.sorted;
    listIndex_ = 0;
    SetupMetrics();
    Refresh();
}

void JList::Create() {
    itemText_.Reset(1);
    itemData_.Reset(1);
    itemSelected_.Reset(1);
    itemImage_.Reset(1);
    AcceptDrops([this](const std::vector<std::string>& paths) {
        // The button that carried the files is up by now.
        constexpr Long kCopied = 1;
        constexpr Long kNoButton = 0;
        const Rect place = windows_.GetWindowRect(HWnd());
        const platform::Point pointer = windows_.GetCursorPos();
        Raised("OLEDragDrop",
               {static_cast<Long>(paths.size()), kCopied, kNoButton, windows_.Modifiers(),
                pointer.x - place.left, pointer.y - place.top});
        if (onOLEDragDrop) {
            onOLEDragDrop(paths);
        }
    });
}

// The face is left blank, and not shown: the next repaint brings the rows back.
void JList::SetupMetrics() {
    constexpr Long kRowMargin = 2;
    rowHeight_ = TextHeight(u"^j") + kRowMargin;
    imageColumn_ = showItemImages_ ? ImageWidth() + 2 : 0;
    ComputeRows();
    backDC_ = platform::Surface({ScaleWidth(), ScaleHeight()});
    RebuildGradients();
    backBrush_ = BackColor();
    backDC_.FillRect(backDC_.Bounds(), backBrush_);
    Paint().BitBlt(backDC_.Bounds(), backDC_, {0, 0});
}

void JList::ListFont(const platform::Font& font) {
    SetFont(font);
    rowHeight_ = TextHeight(u"^j");
    ComputeRows();
}

void JList::Enabled(bool value) {
    Widget::Enabled(value);
    SetupMetrics();
}

void JList::ItemImageSize(Long value) {
    itemImageSize_ = value;
    SetupMetrics();
}

void JList::ShowItemImages(bool value) {
    showItemImages_ = value;
    SetupMetrics();
    RepaintIfAllowed();
}

void JList::ShowSelectRect(bool value) {
    showSelectRect_ = value;
    ++looks_;
}

void JList::BackColor(Colour value) {
    Widget::BackColor(value);
    Refresh();
}

void JList::SelColor1(Colour value) {
    colours_.sel1 = value;
    BuildSelectionBar();
}

void JList::SelColor2(Colour value) {
    colours_.sel2 = value;
    BuildSelectionBar();
}

void JList::ThumbBorderColor(Colour value) {
    colours_.thumbBorder = value;
    ++looks_;
}

void JList::ThumbColor1(Colour value) {
    colours_.thumb1 = value;
    BuildThumbBar();
    DrawScrollBar(-1);
}

void JList::ThumbColor2(Colour value) {
    colours_.thumb2 = value;
    BuildThumbBar();
    DrawScrollBar(-1);
}

void JList::BuildSelectionBar() {
    selectionBar_.Build(ScaleWidth(), rowHeight_, OleTranslateColor(colours_.sel1),
                        OleTranslateColor(colours_.sel2), 0);
    ++looks_;
}

void JList::BuildThumbBar() {
    thumbBar_.Build(ListThumb::kWidth, thumb_.barHeight, OleTranslateColor(colours_.thumb1),
                    OleTranslateColor(colours_.thumb2), 180);
    ++looks_;
}

void JList::RebuildGradients() {
    BuildSelectionBar();
    thumb_.barHeight = ScaleHeight();
    BuildThumbBar();
}

}  // namespace sarnel
