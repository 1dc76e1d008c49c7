// Finds the name that somebody may have meant by a word that nothing is called.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scenario {

/// How many letters must be put in, left out, replaced or swapped with their neighbour to make one
/// word of the other. Case counts as nothing.
std::size_t Distance(std::string_view a, std::string_view b);

/// "; did you mean X?" with the nearest of the names, the first one of several. Nothing if none is
/// near: a letter may be wrong in every three, and three at the most.
std::string DidYouMean(std::string_view word, const std::vector<std::string_view>& names);

}  // namespace scenario
