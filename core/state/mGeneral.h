// The settings store and the file helpers. Settings lie in one private-profile file in the
// component's directory, section "Memory". There is no cache: each read goes to the file, each
// write straight to it.
#pragma once

#include <string>
#include <string_view>

namespace sarnel {

/// The value of a key, at most 254 bytes of it, without blanks at the end; the default if the file
/// or the key is missing.
std::u16string ReadSetting(std::u16string_view key, std::u16string_view defaultValue);
/// A failed write is lost without a word.
void WriteSetting(std::u16string_view key, std::u16string_view value);

/// Callers pass a path that ends in a separator. False for an empty path.
bool DirExists(std::u16string_view path);
/// False for a folder, True for a file of any length.
bool FileExists(std::u16string_view path);
/// The path from the root folder on, without "." and "..", which are taken out of its names alone:
/// what a link leads to plays no part. A separator at the end stays.
std::u16string FullPathName(std::u16string_view path);
/// The text before the first zero character.
std::u16string StripNull(std::u16string_view text);

/// The full path of one of the component's own files.
std::u16string ComponentFile(std::u16string_view name);

}  // namespace sarnel
