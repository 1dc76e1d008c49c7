// What lies under the pointer.
#include "controls/list/jlist.h"
#include "controls/list/moved.h"

namespace sarnel {

bool JList::IsInList(float x, float y) const {
    const Long limit = ScaleWidth() - (thumb_.shown ? 13 : 1);
    return x >= 0 && double{x} <= limit && y >= 0 && double{y} <= ScaleHeight() - 1;
}

// Over none of them the zone stays what it was.
void JList::UpdateZone(float x, float y) {
    if (IsInList(x, y)) {
        mouse_.zone = ListMouse::kRows;
    } else if (thumb_.IsOn(x, y)) {
        mouse_.zone = ListMouse::kThumb;
    } else if (thumb_.IsOnTrack(x, y)) {
        mouse_.zone = ListMouse::kTrack;
    }
}

Long JList::MouseOverIndex(float YPos) const {
    const Long index = Moved(range_.first, layout_.RowFromY(YPos));
    const bool outside = index > ListCount() - 1 || !IsInList(mouse_.x, mouse_.y);
    return outside && !mouse_.edgeScrolling ? -1 : index;
}

}  // namespace sarnel
