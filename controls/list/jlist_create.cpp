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
    layout_.itemImageSize = stored.itemImageSize;
    index_.current = stored.listCurrent;
    index_.added = stored.newIndex;
    redrawFlag_ = stored.redrawFlag;
    colours_ = stored.colours;
    rows_.SelCount(stored.selCount);
    rows_.KeepsImages(stored.showItemImages);
    showSelectRect_ = stored.showSelectRect;
    showNumeric_ = stored.showNumeric;
    rows_.Sorted(stored.sorted);
    range_.top = stored.topIndex;
    mouse_.dragArmed = mouse_.dragStored = stored.dragEnabled;
    sortedLoaded_ = stored.sorted;
    index_.list = 0;
    SetupMetrics();
    Refresh();
}

void JList::Create() {
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
    layout_.rowHeight = TextHeight(u"^j") + kRowMargin;
    layout_.imageColumn = ShowItemImages() ? layout_.ImageWidth() + 2 : 0;
    layout_.PlaceRows(ScaleHeight(), ShowItemImages());
    backDC_ = platform::Surface({ScaleWidth(), ScaleHeight()});
    RebuildGradients();
    backBrush_ = BackColor();
    backDC_.FillRect(backDC_.Bounds(), backBrush_);
    Paint().BitBlt(backDC_.Bounds(), backDC_, {0, 0});
}

void JList::ListFont(const platform::Font& font) {
    SetFont(font);
    layout_.rowHeight = TextHeight(u"^j");
    layout_.PlaceRows(ScaleHeight(), ShowItemImages());
}

void JList::Enabled(bool value) {
    Widget::Enabled(value);
    SetupMetrics();
}

void JList::ItemImageSize(Long value) {
    layout_.itemImageSize = value;
    SetupMetrics();
}

void JList::ShowItemImages(bool value) {
    rows_.KeepsImages(value);
    SetupMetrics();
    RepaintIfAllowed();
}

void JList::ShowSelectRect(bool value) {
    showSelectRect_ = value;
    ++painted_.looks;
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
    ++painted_.looks;
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
    selectionBar_.Become({ScaleWidth(), RowHeight()}, OleTranslateColor(colours_.sel1),
                         OleTranslateColor(colours_.sel2), 0);
    ++painted_.looks;
}

void JList::BuildThumbBar() {
    thumbBar_.Become({ListThumb::kWidth, thumb_.barHeight}, OleTranslateColor(colours_.thumb1),
                     OleTranslateColor(colours_.thumb2), 180);
    ++painted_.looks;
}

void JList::RebuildGradients() {
    BuildSelectionBar();
    thumb_.barHeight = ScaleHeight();
    BuildThumbBar();
}

}  // namespace sarnel
