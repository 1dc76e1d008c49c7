// How a list is written: lines that end in CR LF. The signature, the number of rows, the current
// row, then a row's text and its payload, a line each. Nothing is escaped: a text that holds a CR
// shifts all lines behind it.
#pragma once

#include <string_view>

#include "platform/base/types.h"
#include "platform/files/files.h"

namespace sarnel {

inline constexpr std::string_view kListSignature = "OMK v1.1";
inline constexpr std::string_view kListLineEnd = "\r\n";

/// The three lines in front of the rows.
void WriteListHead(platform::FileWriter& file, platform::Long count, platform::Long current);

/// A text or payload as RowText keeps it: one code unit in each byte, or in each char16_t.
void WriteListLine(platform::FileWriter& file, std::string_view units);
void WriteListLine(platform::FileWriter& file, std::u16string_view units);

}  // namespace sarnel
