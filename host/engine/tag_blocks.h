// What TagLib takes apart in memory, it takes apart to the last byte, with an object for each piece
// and a call within a call for frames within frames: 16 megabytes of tiny frames cost it ten
// seconds and a gigabyte, and 20,000 frames within each other end the process. So large blocks are
// looked through before it sees them, and it is given what a player wants to know.
#pragma once

#include <cstddef>
#include <string_view>

#include <taglib/tbytevector.h>

namespace veldrin {

inline constexpr std::size_t kId3Header = 10;

/// Whether these 10 bytes begin an ID3v2 tag whose frames take up as many bytes.
bool IsId3Header(std::string_view header, std::size_t frameBytes);

/// Of the frames behind that header those with texts, words and loudness, of which there are never
/// many, laid out so that they can stand in the place of all; and pictures of up to so many bytes,
/// together.
TagLib::ByteVector TextFramesOf(std::string_view header, std::string_view frames,
                                std::size_t pictureBytes = 0);

/// Whether the block behind these 10 bytes is a picture, in FLAC or in MP4.
bool IsPictureHeader(std::string_view header, std::size_t blockBytes);

inline constexpr std::size_t kApeFooter = 32;

/// Whether these 32 bytes end an APE tag of more items than a piece of music can have.
bool IsFooterOfManyItems(std::string_view footer);

}  // namespace veldrin
