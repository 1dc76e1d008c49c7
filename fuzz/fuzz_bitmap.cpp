// A damaged bitmap file: a picture within the limits comes out, or none.
#include "fuzz/fuzz.h"
#include "platform/drawing/bitmap_file.h"

namespace {

// 5 x 3, 8 bits a pixel, four colours, run-length compressed: runs, a stretch, a skip.
constexpr unsigned char kSeed[] = {
    'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 70, 0, 0, 0,  40,  0, 0,  0, 5, 0, 0, 0, 3,
    0,   0,   0, 1, 0, 8, 0, 1, 0, 0, 0,  0, 0, 0,  0,   0, 0,  0, 0, 0, 0, 0, 0,
    4,   0,   0, 0, 0, 0, 0, 0, 0, 0, 0,  0, 0, 64, 128, 0, 64, 0, 0, 0, 9, 9, 9,
    0,   5,   1, 0, 0, 0, 3, 1, 2, 3, 0,  2, 2, 0,  0,   0, 2,  1, 0, 1, 3, 0, 1};

}  // namespace

std::string_view fuzz::Seed() {
    return Bytes(kSeed, sizeof kSeed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const platform::PictureRef picture = platform::DecodeBitmap(fuzz::Bytes(data, size));
    if (picture != nullptr) {
        fuzz::Check(!picture->IsEmpty(), "a picture has pixels");
        fuzz::Check(picture->Width() <= platform::kLongestBitmapSide &&
                        picture->Height() <= platform::kLongestBitmapSide,
                    "no side is too long");
        fuzz::Check(picture->GetPixel({picture->Width() - 1, picture->Height() - 1}) >= 0,
                    "and all of them are there");
    }
    if (fuzz::Bytes(data, size) == fuzz::Seed()) {
        fuzz::Check(picture != nullptr, "the seed is whole");
    }
    return 0;
}
