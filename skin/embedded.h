// The skin table and the pictures of the skins, carried inside the program. The definitions are
// written at build time from the files in assets/.
#pragma once

#include <string_view>
#include <vector>

#include "platform/base/types.h"

namespace sarnel {

struct EmbeddedPicture {
    platform::Long id = 0;
    std::string_view file;       ///< its bytes, which live as long as the program
    platform::Long density = 1;  ///< of the surfaces that it has been drawn for
};

/// The head of the table, as skins and their order in the build give it, and the rows of each skin.
std::string_view EmbeddedSkinTable();
/// Plain ones first.
std::vector<EmbeddedPicture> EmbeddedPictures();

}  // namespace sarnel
