// Writing tags by the names that TagLib gives them in all formats.
#pragma once

#include <gtest/gtest.h>
#include <taglib/fileref.h>
#include <taglib/tpropertymap.h>

#include <string>
#include <utility>

namespace audio_tests {

/// Extensions, and the chains that encode such files.
inline constexpr std::pair<const char*, const char*> kTaggedFormats[] = {
    {"mp3", "lamemp3enc"},
    {"ogg", "vorbisenc ! oggmux"},
    {"flac", "flacenc"},
    {"opus", "opusenc ! oggmux"},
    {"wv", "wavpackenc"},
    {"m4a", "voaacenc ! mp4mux"},
    {"wav", "audioconvert ! wavenc"},
    {"aiff", "aiffmux"},
};

inline void SetTag(const std::string& path, const char* key, const TagLib::String& value) {
    const TagLib::FileRef file(path.c_str(), false);
    ASSERT_FALSE(file.isNull());
    TagLib::PropertyMap properties = file.file()->properties();
    properties.insert(key, TagLib::StringList(value));
    file.file()->setProperties(properties);
    ASSERT_TRUE(file.file()->save());
}

}  // namespace audio_tests
