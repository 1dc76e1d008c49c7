#include "browser/filebrowser.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/mGeneral.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "platform/files/files.h"
#include "platform/files/folders.h"
#include "playlist/media.h"

namespace sarnel {

namespace {

using platform::FolderEntry;
using platform::kPathSeparator;

constexpr std::u16string_view kThisLevel = u"[.]";
constexpr std::u16string_view kParentLevel = u"[..]";

std::u16string Bracketed(std::u16string_view name) {
    std::u16string text(1, u'[');
    text += name;
    text += u']';
    return text;
}

void AddRow(JList& list, std::u16string_view text, std::u16string_view data, Long image) {
    list.AddItem(text, data);
    Step([&] { list.ImageIndex(list.newIndex(), image); });
}

// The root folder and drives have nothing above them.
bool HasParent(std::u16string_view folder) {
    const std::vector<platform::Drive> drives = App().windows.GetDriver().Drives();
    return folder != std::u16string_view(&kPathSeparator, 1) &&
           std::none_of(drives.begin(), drives.end(),
                        [&](const platform::Drive& drive) { return drive.root == folder; });
}

// `path` is full and ends in a separator: what is in the folder then has a full path as well.
void AddFolders(JList& list, const std::u16string& path, const std::vector<FolderEntry>& entries) {
    if (HasParent(path)) {
        AddRow(list, kParentLevel, FullPathName(path + u"../"), kFolderImage);
    }
    for (const FolderEntry& entry : entries) {
        if (entry.isFolder) {
            AddRow(list, Bracketed(entry.name), path + entry.name + kPathSeparator, kFolderImage);
        }
    }
}

void AddFiles(JList& list, const std::u16string& path, const std::vector<FolderEntry>& entries) {
    for (const FolderEntry& entry : entries) {
        if (!entry.isFolder && Ask(ImpulseIsSupported, false, entry.name)) {
            AddRow(list, entry.name, path + entry.name, kFileImage);
        }
    }
}

void ShowFolder(JList& list, const std::u16string& path) {
    App().Main().lblFrameAddPathName->Caption(path);
    list.Clear();
    list.RedrawFlag(false);
    AddRow(list, kThisLevel, u"", kTopImage);
    Step([&] {
        if (const auto entries = platform::ListFolder(path)) {
            const std::u16string full = FullPathName(path);
            AddFolders(list, full, *entries);
            AddFiles(list, full, *entries);
        }
    });
    if (ShowsParent(list)) {
        list.ListIndex(1);
        list.Selected(1, true);
    }
}

// A drive's name is its root without the separator; the root folder's is the separator itself.
std::u16string DriveName(const std::u16string& root) {
    return root.size() > 1 ? root.substr(0, root.size() - 1) : root;
}

void ShowDrives(JList& list) {
    list.Clear();
    list.RedrawFlag(false);
    Step([&] {
        for (const platform::Drive& drive : App().windows.GetDriver().Drives()) {
            const std::u16string label = drive.label.empty() ? u"" : drive.label + u" ";
            AddRow(list, Bracketed(label + DriveName(drive.root)), drive.root, kTopImage);
        }
    });
    App().Main().lblFrameAddPathName->Caption(u"My Computer");
}

bool IsLevelRow(std::u16string_view text) {
    return text == kThisLevel || text == kParentLevel;
}

}  // namespace

void FillBrowser(JList& list, std::u16string_view path) {
    std::u16string folder(path);
    if (folder.empty()) {
        ShowDrives(list);
    } else {
        if (!folder.ends_with(kPathSeparator)) {
            folder += kPathSeparator;
        }
        if (!DirExists(folder)) {
            return;
        }
        ShowFolder(list, folder);
    }
    list.RedrawFlag(true);
    settings::kLastDir.Write(folder);
}

bool ShowsFolder(const JList& list) {
    return list.List(0) == kThisLevel;
}

bool ShowsParent(const JList& list) {
    return list.List(1) == kParentLevel;
}

bool CanAddSelected(const JList& list) {
    const bool isLevelRowAlone = list.SelCount() == 1 && ((list.Selected(0) && ShowsFolder(list)) ||
                                                          (list.Selected(1) && ShowsParent(list)));
    return list.SelCount() > 0 && !isLevelRowAlone;
}

void AddSelected(bool recurse) {
    frmMAIN& main = App().Main();
    JList& list = *main.lstFilesAndFolders;
    list.Enabled(false);
    main.lblFrameAddPathName->Visible(true);
    Playlist().RedrawFlag(false);
    for (Long row = 0; row < list.ListCount(); ++row) {
        Step([&] {
            const std::u16string text = list.List(row);
            if (!list.Selected(row) || IsLevelRow(text)) {
                return;
            }
            if (list.ImageIndex(row) == kFileImage) {
                AddFileToList(text, list.ListData(row));
            } else {
                SearchFiles(list.ListData(row), u"*.*", recurse);
            }
        });
    }
    list.Enabled(true);
    main.lblFrameAddPathName->Visible(false);
    Playlist().RedrawFlag(true);
    Playlist().HighlightCurrent();
}

}  // namespace sarnel
