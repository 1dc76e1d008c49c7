// The program's skin table, changed for a test.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "skin/skintable.h"

namespace support {

/// Rows to put in the place of others; nothing empties a row.
using RowChanges = std::map<platform::Long, std::optional<std::string>>;

/// The embedded table's text with these changes.
std::string ChangedTable(const RowChanges& changes);

/// The same as a table, with the embedded pictures but those left out.
sarnel::SkinTable ChangedSkins(const RowChanges& changes,
                               const std::vector<platform::Long>& withoutPictures = {});

/// The rows of skin 1 once more as skin 2, at base 400, with the pictures that belong to a base:
/// there the pictures of skin 1 in turn.
sarnel::SkinTable TwoSkins(RowChanges changes = {});

}  // namespace support
