// The routines of the component that a scenario may call by name.
#include "browser/filebrowser.h"
#include "browser/search.h"
#include "controls/list/jlist.h"
#include "core/mAmbrisor.h"
#include "core/state/frmtip.h"
#include "core/state/mGeneral.h"
#include "lyrics/lyrics.h"
#include "menus/commandmenu.h"
#include "playback/mPlayback.h"
#include "playlist/media.h"
#include "shell/associations.h"
#include "shell/tray.h"
#include "skin/panels.h"
#include "skin/skin.h"
#include "tests/scenario/names.h"

namespace scenario {

const std::vector<Entry>& RoutineNames() {
    using namespace sarnel;
    using platform::Widget;
    static const std::vector<Entry> names{
        // Transport and sequencing.
        Routine("PlayCurrentItem", PlayCurrentItem),
        Routine("NextItem", NextItem),
        Routine("PreviousItem", PreviousItem),
        Routine("StopPlayback", StopPlayback),
        Routine("TogglePlayback", TogglePlayback),
        Routine("SuspendPlayback", SuspendPlayback),
        Routine("OpenMedia", OpenMedia),
        Routine("IsInPlayedHistory", IsInPlayedHistory),
        Routine("ClearPlayedHistory", ClearPlayedHistory),
        Routine("StartTickTimer", StartTickTimer),
        Routine("StopTickTimer", StopTickTimer),
        Routine("TickTimerProc", TickTimerProc),
        // Position, volume, effects.
        Routine("SetVolume", SetVolume),
        Routine("SetPosition", SetPosition),
        Routine("UpdatePosition", UpdatePosition),
        Routine("SetTempo", SetTempo),
        Routine("SetPitch", SetPitch),
        Routine("SetEcho", SetEcho),
        Routine("SetReverb", SetReverb),
        Routine("SetBass", SetBass),
        Routine("SetMid", SetMid),
        Routine("SetTreble", SetTreble),
        // Now playing.
        Routine("SetWindowTitle", SetWindowTitle),
        Routine("SetScrollText", SetScrollText),
        Routine("StartScrollTimer", StartScrollTimer),
        Routine("StopScrollTimer", StopScrollTimer),
        Routine("ScrollTimerProc", ScrollTimerProc),
        Routine("RefreshInfoDisplay", RefreshInfoDisplay),
        Routine("DrawInfoDisplay", DrawInfoDisplay),
        // Settings and files.
        Routine("ReadSetting", ReadSetting),
        Routine("WriteSetting", WriteSetting),
        Routine("DirExists", DirExists),
        Routine("FileExists", FileExists),
        Routine("StripNull", StripNull),
        // Adding media.
        Routine("ProcessCommandLine", ProcessCommandLine),
        Routine("AddFileToList", AddFileToList),
        Routine("SearchFiles", SearchFiles),
        // Lyrics, file browser, search.
        Routine("ShowLyrics", ShowLyrics),
        Routine("FetchLyrics", FetchLyrics),
        Routine("OpenLyricsEditor", OpenLyricsEditor),
        Routine("IsOnline", IsOnline),
        Routine("FillBrowser", FillBrowser),
        Routine("FullPathName", FullPathName),
        Routine("RefreshSearch", RefreshSearch),
        // Shell.
        Routine(
            "ShowTooltip",
            +[](Text text, Long timeOut) { App().Tip().ShowTooltip(text, timeOut); }),
        Routine(
            "TrayAdd", +[](Widget& window, Long icon,
                           Text tip) { TrayAdd(App().windows, window.HWnd(), icon, tip); }),
        Routine(
            "TrayModify", +[](Widget& window, Long icon,
                              Text tip) { TrayModify(App().windows, window.HWnd(), icon, tip); }),
        Routine(
            "TrayDelete",
            +[](Widget& window, Long icon) { TrayDelete(App().windows, window.HWnd(), icon); }),
        Routine(
            "RegisterExtension",
            +[](Text extension, Text exe, Text className, Text icon) {
                RegisterExtension(App().windows, extension, exe, className, icon);
            }),
        Routine(
            "RegisterDirectoryVerbs",
            +[](Text exe) { RegisterDirectoryVerbs(App().windows, exe); }),
        Routine(
            "NotifyAssociationChange", +[] { NotifyAssociationChange(App().windows); }),
        // Start, stop and window.
        Routine("InstallWindowHooks", InstallWindowHooks),
        Routine("RemoveWindowHooks", RemoveWindowHooks),
        Routine("LoadSettings", LoadSettings),
        Routine("CreateHotKeys", CreateHotKeys),
        Routine("SetMinimized", SetMinimized),
        Routine("ReadWorkArea", ReadWorkArea),
        Routine("BuildMenu", BuildMenu),
        Routine("LoadSkin", LoadSkin),
        // Menu, panels and window.
        Routine("hMenu_Click", hMenu_Click),
        Routine("SetHideInSystray", SetHideInSystray),
        Routine("SetPlayAtStartup", SetPlayAtStartup),
        Routine("SetManualAdvance", SetManualAdvance),
        Routine("SetRandom", SetRandom),
        Routine("SetRepeatItem", SetRepeatItem),
        Routine("SetRepeatList", SetRepeatList),
        Routine("ShowPanel", ShowPanel),
        Routine("SetTopMost", SetTopMost),
        Routine("ApplyTopMost", ApplyTopMost),
        Routine("DragWindow", DragWindow),
        Routine("RemoveSystemMenuItems", RemoveSystemMenuItems),
        Routine("sldSkin_Scroll", sldSkin_Scroll),
        Routine("ShowItemInfo", ShowItemInfo),
    };
    return names;
}

}  // namespace scenario
