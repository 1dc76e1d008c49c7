#include "core/remote.h"

#include <utility>

#include "core/ambrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"

namespace sarnel {

JList* Remote::List() const {
    const Program& state = component_.State();
    frmMAIN* const main = state.ExistingMain();
    return main != nullptr && main->IsLoaded() ? &main->lstPlaylist : nullptr;
}

platform::Long Remote::ListCount() const {
    const JList* const list = List();
    return list != nullptr ? list->ListCount() : 0;
}

platform::Long Remote::ListCurrent() const {
    const JList* const list = List();
    return list != nullptr ? list->ListCurrent() : -1;
}

std::u16string Remote::RowTitle(Long row) const {
    const JList* const list = List();
    return list != nullptr ? list->List(row) : std::u16string();
}

std::u16string Remote::RowPath(Long row) const {
    const JList* const list = List();
    return list != nullptr ? list->ListData(row) : std::u16string();
}

std::uint64_t Remote::Changes() const {
    const JList* const list = List();
    return list != nullptr ? list->Changes() : 0;
}

void Remote::OnNextChange(std::function<void()> observer) {
    if (JList* const list = List()) {
        list->OnNextChange(std::move(observer));
    }
}

ListCopy Remote::CopyList() const {
    const JList* const list = List();
    return list != nullptr ? list->Copy() : ListCopy(0, -1);
}

}  // namespace sarnel
