// Small pictures written down as rows of characters: '.' is colour 0, '1' to '9' the colours 1
// to 9.
#pragma once

#include <string>
#include <vector>

#include "platform/drawing/surface.h"

namespace support {

using Rows = std::vector<std::string>;

inline platform::Surface Picture(const Rows& rows) {
    const auto height = static_cast<platform::Long>(rows.size());
    const auto width = static_cast<platform::Long>(rows.empty() ? 0 : rows.front().size());
    platform::Surface picture({width, height});
    for (platform::Long y = 0; y < height; ++y) {
        for (platform::Long x = 0; x < width; ++x) {
            const char at = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            picture.SetPixel({x, y}, at == '.' ? 0 : at - '0');
        }
    }
    return picture;
}

/// Other colours than 0 to 9 show as '?'.
inline Rows RowsOf(const platform::Surface& picture) {
    Rows rows;
    for (platform::Long y = 0; y < picture.Height(); ++y) {
        std::string row;
        for (platform::Long x = 0; x < picture.Width(); ++x) {
            const platform::Colour colour = picture.GetPixel({x, y});
            row += colour == 0                 ? '.'
                   : colour > 0 && colour < 10 ? static_cast<char>('0' + colour)
                                               : '?';
        }
        rows.push_back(row);
    }
    return rows;
}

}  // namespace support
