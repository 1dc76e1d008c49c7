#include "playlist/media.h"

#include <algorithm>

#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/mGeneral.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/folders.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kEnqueue = u"/ADD";
constexpr std::u16string_view kEveryName = u"*.*";
constexpr std::size_t kDropBuffer = 254;

void StartPlaying() {
    if (App().Random) {
        NextItem();
    } else {
        PlayCurrentItem();
    }
}

void RestoreList() {
    static_cast<void>(Playlist().Deserialize(PlaylistFile()));
}

// The line without "/ADD" and the character behind it. A line that is too short stays as it is, and
// is then no path.
std::u16string_view WithoutEnqueue(std::u16string_view line) {
    return line.size() > kEnqueue.size() ? line.substr(kEnqueue.size() + 1) : line;
}

std::u16string_view WithoutQuotes(std::u16string_view line) {
    if (line.starts_with(u'"')) {
        line.remove_prefix(1);
    }
    if (line.ends_with(u'"')) {
        line.remove_suffix(1);
    }
    return line;
}

// A sign of life: no event runs until the search is over.
void ShowFolderInWork(std::u16string_view folder) {
    App().Main().lblFrameAddPathName->Caption(folder);
    App().windows.UpdateScreen();
    App().windows.KeepShown();
}

// Subfolders come first, and are left out without a trail.
void Search(const std::u16string& folder, std::u16string_view mask, platform::FolderTrail* trail) {
    Step([&] { ShowFolderInWork(folder); });
    const auto entries = platform::ListFolder(folder);
    if (!entries) {
        return;
    }
    for (const platform::FolderEntry& entry : *entries) {
        if (trail == nullptr || !entry.isFolder) {
            continue;
        }
        const std::u16string below = folder + entry.name + platform::kPathSeparator;
        if (trail->Enter(below)) {
            Search(below, mask, trail);
            trail->Leave();
        }
    }
    for (const platform::FolderEntry& entry : *entries) {
        const bool matches = mask == kEveryName || platform::EqualIgnoringCase(entry.name, mask);
        if (!entry.isFolder && matches) {
            AddFileToList(entry.name, folder + entry.name);
            App().windows.KeepShown();
        }
    }
}

// Puts the first row in place for playing what a command line has just brought.
bool StandOnFirstRow(bool enqueue) {
    if (enqueue || Playlist().ListCount() < 1) {
        return false;
    }
    Playlist().ListCurrent(0);
    Playlist().ListIndex(0);
    return true;
}

void AddPath(std::u16string_view path, bool enqueue) {
    const std::u16string folder = std::u16string(path) + platform::kPathSeparator;
    if (DirExists(folder)) {
        SearchFiles(folder, kEveryName, false);
        if (StandOnFirstRow(enqueue)) {
            StartPlaying();
        }
    } else if (FileExists(path)) {
        AddFileToList(path, path);
        // One file was asked for, so Random plays no part.
        if (StandOnFirstRow(enqueue)) {
            PlayCurrentItem();
        }
    }
}

void AddLine(std::u16string_view line, bool startup) {
    const bool enqueue = platform::EqualIgnoringCase(line.substr(0, kEnqueue.size()), kEnqueue);
    if (enqueue) {
        line = WithoutEnqueue(line);
        if (startup) {
            RestoreList();
        }
    } else if (!startup) {
        Playlist().Clear();  // which also sets RedrawFlag: the rows then repaint one by one
    }
    AddPath(WithoutQuotes(line), enqueue);
}

}  // namespace

std::u16string PlaylistFile() {
    return ComponentFile(u"Sarnel.Ambrisor.omk");
}

void ProcessCommandLine(std::u16string_view line, bool startup) {
    line = platform::TrimBlanks(line);
    Playlist().RedrawFlag(false);
    if (!line.empty()) {
        Step([&] { AddLine(line, startup); });
    } else if (startup) {
        Step([] {
            RestoreList();
            if (App().PlayAtStartup) {
                StartPlaying();
            }
        });
    }
    Playlist().RedrawFlag(true);
}

void AddFileToList(std::u16string_view filename, std::u16string_view path) {
    if (!Ask(ImpulseIsSupported, false, path)) {
        return;
    }
    const std::u16string title = Ask(ImpulseGetTitle, std::u16string(filename), path);
    Playlist().AddItem(title, path);
}

void SearchFiles(std::u16string_view filePath, std::u16string_view filename, bool Recursive) {
    const std::u16string folder(filePath);
    platform::FolderTrail trail(folder);
    Search(folder, filename, Recursive ? &trail : nullptr);
}

void lstPlaylist_OLEDragDrop(const std::vector<std::string>& paths) {
    for (const std::string& bytes : paths) {
        Step([&] {
            const std::u16string path = platform::Widen(bytes);
            const std::u16string folder = path + platform::kPathSeparator;
            if (DirExists(folder)) {
                SearchFiles(folder, kEveryName, false);
            } else if (FileExists(path)) {
                AddFileToList(path, path);
            }
        });
    }
}

void AddDroppedFiles(Handle drop) {
    platform::WindowSystem& windows = App().windows;
    const Long count = windows.DragQueryFileCount(drop);
    for (Long i = 0; i < count; ++i) {
        const std::u16string path = platform::Widen(windows.DragQueryFile(drop, i, kDropBuffer));
        AddFileToList(path, path);
    }
    windows.DragFinish(drop);
    windows.DoEvents();
}

}  // namespace sarnel
