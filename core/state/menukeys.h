// The keys of the command menu's items, by which their commands, marks and submenus are found.
#pragma once

namespace sarnel::menukeys {

// Headers. By the key of one the submenu is found at whose top it stands.
inline constexpr const char16_t* kPlaylistHeader = u"kMMH";
inline constexpr const char16_t* kAddHeader = u"kAHe";
inline constexpr const char16_t* kRemoveHeader = u"kRHe";
inline constexpr const char16_t* kMiscHeader = u"kSHe";
inline constexpr const char16_t* kListsHeader = u"kLHD";

inline constexpr const char16_t* kAddFiles = u"kAL";  ///< opens the browser panel
inline constexpr const char16_t* kAddStreams = u"kAEx";
inline constexpr const char16_t* kRemoveSelected = u"kRS";
inline constexpr const char16_t* kCropSelected = u"kRCS";
inline constexpr const char16_t* kRemoveDead = u"kRD";
inline constexpr const char16_t* kClearAll = u"kRAll";
inline constexpr const char16_t* kSelectAll = u"kSeA";
inline constexpr const char16_t* kSelectNone = u"kSeN";
inline constexpr const char16_t* kInvertSelection = u"kSeI";
inline constexpr const char16_t* kListManager = u"kLMgr";

inline constexpr const char16_t* kTopMost = u"kTMst";
inline constexpr const char16_t* kHideInSystray = u"kHIS";
inline constexpr const char16_t* kAssociateFiles = u"kAsF";
inline constexpr const char16_t* kSkin = u"kSk";  ///< and the skin's number

inline constexpr const char16_t* kPlayback = u"kPbk";
inline constexpr const char16_t* kLyrics = u"kPkLy";
inline constexpr const char16_t* kEffects = u"kPkEFX";
inline constexpr const char16_t* kInformation = u"kPkNFO";
inline constexpr const char16_t* kSearch = u"kPkSh";
inline constexpr const char16_t* kManualAdvance = u"kPMA";
inline constexpr const char16_t* kPlayAtStartup = u"kPPAS";
inline constexpr const char16_t* kRepeatItem = u"kPRpI";
inline constexpr const char16_t* kRepeatList = u"kPRpP";
inline constexpr const char16_t* kRandom = u"kPRdm";

inline constexpr const char16_t* kComponents = u"kCell";  ///< alone, and with a number
inline constexpr const char16_t* kAbout = u"kAbt";
inline constexpr const char16_t* kExit = u"kExt";

}  // namespace sarnel::menukeys
