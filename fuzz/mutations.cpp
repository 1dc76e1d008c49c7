// The driver for compilers without a fuzzer: runs the seed, then a fixed number of mutations of it.
// The same number gives the same inputs on every machine.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "fuzz/fuzz.h"

namespace fuzz {

namespace {

struct Scratch {
    std::string path = std::filesystem::temp_directory_path() / "veldrin-fuzz-XXXXXX";
    Scratch() { Check(mkdtemp(path.data()) != nullptr, "a scratch folder"); }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
};

void Run(std::string_view bytes) {
    LLVMFuzzerTestOneInput(static_cast<const std::uint8_t*>(static_cast<const void*>(bytes.data())),
                           bytes.size());
}

// One to eight changes: a byte, a piece left out, a piece twice, or a piece that parsers trip over.
std::string Mutated(std::string_view seed, std::mt19937& random) {
    static constexpr std::string_view kPieces[] = {"\r",          "\n",
                                                   "\r\n",        std::string_view("\0", 1),
                                                   "-1",          "4294967296",
                                                   "-2147483648", "2147483647",
                                                   "\xff",        "\xed\xa0\x80",
                                                   "\"",          "[",
                                                   "]",           "=",
                                                   ";",           "/ADD "};
    std::string bytes(seed);
    const auto below = [&](std::size_t end) {
        return end == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    };
    for (std::size_t changes = 1 + below(8); changes > 0; --changes) {
        const std::size_t at = below(bytes.size());
        const std::size_t length = below(1 + std::min<std::size_t>(bytes.size() - at, 16));
        switch (below(4)) {
            case 0:
                bytes.insert(at, 1, static_cast<char>(below(256)));
                break;
            case 1:
                bytes.erase(at, length);
                break;
            case 2:
                bytes.append(bytes, at, length);
                break;
            default:
                bytes.insert(at, kPieces[below(std::size(kPieces))]);
                break;
        }
    }
    return bytes;
}

}  // namespace

void Check(bool holds, const char* promise) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", promise);
        std::abort();
    }
}

const std::string& ScratchFolder() {
    static const Scratch scratch;
    return scratch.path;
}

std::string WriteScratch(const char* name, std::string_view bytes) {
    const std::string path = ScratchFolder() + "/" + name;
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

}  // namespace fuzz

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 1000;
    std::mt19937 random(1);
    fuzz::Run(fuzz::Seed());
    fuzz::Run({});
    for (int i = 0; i < rounds; ++i) {
        fuzz::Run(fuzz::Mutated(fuzz::Seed(), random));
    }
    std::printf("%d inputs\n", rounds + 2);
    return 0;
}
