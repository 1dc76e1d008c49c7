// What the fuzz targets share: the entry point that a fuzzer calls, the seed that the driver in
// mutations.cpp starts from, and a scratch file to put the bytes into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// A valid input, defined by each target.
std::string_view Seed();

/// The bytes of an input as text.
inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
    return {static_cast<const char*>(static_cast<const void*>(data)), size};
}

/// Ends the program with a message if a promise does not hold.
void Check(bool holds, const char* promise);

/// A folder of its own for this process, removed at its end.
const std::string& ScratchFolder();

/// Puts bytes into a file of the scratch folder and answers its path.
std::string WriteScratch(const char* name, std::string_view bytes);

}  // namespace fuzz
