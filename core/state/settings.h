// The settings: every key that is kept from one run to the next, with the type of its value and its
// default. What each of them means tells docs/files.md, whose table a test compares with kAll. They
// lie as text in the settings store (mGeneral.h): no cache, each read goes to the file and each
// write straight to it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

/// A number or a switch: T is Long or bool.
template <class T>
struct Setting {
    std::u16string_view key;
    T initial;  ///< what a missing file or key gives

    /// None if what is stored is no T; with Take the variable then stays as it was.
    std::optional<T> Read() const;
    /// A failed write is lost without a word.
    void Write(T value) const;
};
extern template struct Setting<Long>;
extern template struct Setting<bool>;

/// A number whose default is worked out by whoever reads it.
struct PlaceSetting {
    std::u16string_view key;

    /// As of Setting; `centred` is what a missing file or key gives.
    std::optional<Long> Read(Long centred) const;
    void Write(Long value) const;
};

/// A text that is empty at first.
struct TextSetting {
    std::u16string_view key;

    std::u16string Read() const;
    /// As of Setting.
    void Write(std::u16string_view value) const;
};

/// False if what is stored is no boolean.
bool IsOn(const Setting<bool>& setting);

namespace settings {

inline constexpr PlaceSetting kX{u"X"};
inline constexpr PlaceSetting kY{u"Y"};
inline constexpr Setting<bool> kTopMost{u"TopMost", false};
inline constexpr Setting<bool> kHideInSystray{u"HideInSystray", false};
inline constexpr Setting<Long> kSkin{u"Skin", 1};
inline constexpr TextSetting kLastDir{u"LastDir"};
inline constexpr Setting<bool> kRecurseSubdirs{u"RecurseSubdirs", true};
inline constexpr Setting<Long> kMusicVolume{u"MusicVolume", 80};
inline constexpr Setting<bool> kRandom{u"Random", false};
inline constexpr Setting<bool> kRepeatItem{u"RepeatItem", false};
inline constexpr Setting<bool> kRepeatList{u"RepeatList", false};
inline constexpr Setting<bool> kManualAdvance{u"ManualAdvance", false};
inline constexpr Setting<bool> kPlayAtStartup{u"PlayAtStartup", false};
inline constexpr Setting<Long> kDisplayMode{u"DisplayMode", 1};
inline constexpr Setting<Long> kSortFilesMode{u"SortFilesMode", 0};
inline constexpr Setting<Long> kEffectTempo{u"Effect_Tempo", 50};
inline constexpr Setting<Long> kEffectPitch{u"Effect_Pitch", 20};
inline constexpr Setting<Long> kEffectEcho{u"Effect_Echo", 0};
inline constexpr Setting<Long> kEffectReverb{u"Effect_Reverb", 0};
inline constexpr Setting<Long> kEffectBass{u"Effect_Bass", 15};
inline constexpr Setting<Long> kEffectMid{u"Effect_Mid", 15};
inline constexpr Setting<Long> kEffectTreble{u"Effect_Treble", 15};

using AnySetting = std::variant<Setting<Long>, Setting<bool>, PlaceSetting, TextSetting>;

/// All of them, in the order of docs/files.md.
inline constexpr auto kAll = std::to_array<AnySetting>({kX,
                                                        kY,
                                                        kTopMost,
                                                        kHideInSystray,
                                                        kSkin,
                                                        kLastDir,
                                                        kRecurseSubdirs,
                                                        kMusicVolume,
                                                        kRandom,
                                                        kRepeatItem,
                                                        kRepeatList,
                                                        kManualAdvance,
                                                        kPlayAtStartup,
                                                        kDisplayMode,
                                                        kSortFilesMode,
                                                        kEffectTempo,
                                                        kEffectPitch,
                                                        kEffectEcho,
                                                        kEffectReverb,
                                                        kEffectBass,
                                                        kEffectMid,
                                                        kEffectTreble});

}  // namespace settings

}  // namespace sarnel
