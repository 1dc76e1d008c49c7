// The object as a whole: its life, its font, and the showing of popups. Items are in
// jpopupmenu_items.cpp, drawing in jpopupmenu_draw.cpp, keys in jpopupmenu_keys.cpp.
#include "menus/jpopupmenu.h"

#include <utility>

#include "core/base/failure.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long kMeasureFormat = DT_CALCRECT | DT_NOPREFIX;
constexpr Long kPixelsPerInch = 96;
constexpr Long kPointsPerInch = 72;

}  // namespace

JPopupMenu::JPopupMenu(std::shared_ptr<mJPopupMenu> shared)
    : shared_(std::move(shared)), windows_(shared_->Windows()) {
    Clear();
    shared_->RegisterMenu(*this);
}

JPopupMenu::~JPopupMenu() {
    shared_->UnregisterMenu(*this);
    Clear();
    shared_->ReleaseCheckBitmap();
}

Menus& JPopupMenu::PlatformMenus() const {
    return windows_.PopupMenus();
}

void JPopupMenu::hWndOwner(Handle hWndA) {
    owner_ = hWndA;
    canMeasure_ = true;
    Refresh();
}

void JPopupMenu::BackgroundPicture(PictureRef sPic) {
    background_ = sPic != nullptr && !sPic->IsEmpty() ? std::move(sPic) : nullptr;
}

void JPopupMenu::SetFontData(MenuFont font) {
    fontData_ = std::move(font);
    Refresh();
}

void JPopupMenu::Refresh() {
    constexpr Long kBold = 600;
    constexpr Long kLowLine = 15;
    const Long pixels =
        (fontData_.fSize * kPixelsPerInch + kPointsPerInch / 2) / kPointsPerInch;  // rounded
    font_ = {fontData_.fName, static_cast<double>(pixels) * kPointsPerInch / kPixelsPerInch,
             fontData_.fWeight >= kBold, fontData_.fItalic};
    const Long height =
        canMeasure_ ? windows_.Text().Calculate(font_, u"yY", {}, kMeasureFormat).Height() : 0;
    itemHeight_ = height < kLowLine ? 18 : height + 4;
    for (Long i = 1; i <= Count(); ++i) {
        MeasureAgain(i);
    }
}

Long JPopupMenu::WidthOf(std::u16string_view text) const {
    return canMeasure_ ? windows_.Text().Calculate(font_, text, {}, kMeasureFormat).Width() : 0;
}

Long JPopupMenu::ShowPopup(Long lLeftPixel, Long lTopPixel, Long lIndex, Long bAlign, Long bMButton,
                           bool bTryToKeepLeft) {
    if (Count() == 0 || lIndex > Count()) {
        return 0;
    }
    // What is chosen may end the menu.
    const WindowSystem::Dispatching dispatching(windows_);
    const Handle menu = hMenu(lIndex < 1 ? 1 : lIndex);
    const Long flags =
        bAlign | TPM_NONOTIFY | TPM_RETURNCMD | bMButton | (bTryToKeepLeft ? 0 : TPM_VERTICAL);
    const Point pointer = windows_.GetCursorPos();
    const Point at{lLeftPixel == -1 ? pointer.x : lLeftPixel,
                   lTopPixel == -1 ? pointer.y : lTopPixel};
    windows_.SendMessage(owner_, WM_ENTERMENULOOP, 0, 0);
    Long id = 0;
    Step([&] {
        id = PlatformMenus().TrackPopupMenu(
            menu, flags, at, owner_,
            {colours_.headGrad2, colours_.bkText, colours_.txtColor, colours_.selText});
    });
    Long index = ItemForID(id);
    const auto handler = onClick;
    if (index > 0 && handler) {
        Step([&] { handler(index); });
    }
    windows_.SendMessage(owner_, WM_EXITMENULOOP, 0, 0);
    return index;
}

}  // namespace sarnel
