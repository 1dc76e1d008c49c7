// What the panel of the file associations does: its two labels.
#include <string>
#include <vector>

#include "core/base/impulses.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "shell/associations.h"
#include "skin/panels.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kClass = u"Veldrin media file";

std::vector<std::u16string> ExtensionsOf(std::u16string types) {
    constexpr std::u16string_view kAnyName = u"*.";
    for (std::size_t at = types.find(kAnyName); at != std::u16string::npos;
         at = types.find(kAnyName, at)) {
        types.erase(at, kAnyName.size());
    }
    // No types at all count as one type without a name, where Split gives none.
    return types.empty() ? std::vector<std::u16string>{u""} : platform::Split(types, u';');
}

void lblFileTypesSupported_Click() {
    const std::u16string types = Ask(ImpulseGetFileTypes, std::u16string());
    const std::u16string exe = Ask(ImpulseGetHostPath, std::u16string());
    platform::WindowSystem& windows = App().windows;
    for (const std::u16string& extension : ExtensionsOf(types)) {
        RegisterExtension(windows, extension, exe, kClass, exe);
    }
    RegisterDirectoryVerbs(windows, exe);
    NotifyAssociationChange(windows);
}

// While the button is down the label has the colour of a selected row.
void MakeActive(platform::Label& label) {
    label.onMouseDown = [&label](const platform::MouseEvent&) {
        label.ForeColor(Playlist().SelColor1());
    };
    label.onMouseUp = [&label](const platform::MouseEvent&) {
        label.ForeColor(Playlist().TextColor());
    };
}

}  // namespace

void AttachAssociationHandlers(frmMAIN& main) {
    MakeActive(*main.lblFileTypesSupported);
    MakeActive(*main.lblFrameFileAssocOK);
    main.lblFileTypesSupported->onClick = lblFileTypesSupported_Click;
    main.lblFrameFileAssocOK->onClick = [] {
        ShowPanel(kAssociationPanel, !IsMarked(menukeys::kAssociateFiles));
    };
}

}  // namespace sarnel
