#include "platform/drawing/finer_pictures.h"

namespace platform {

const Surface* FinerPictures::At(Long density, Size size) {
    if (kept_ == density) {
        return picture_.get();
    }
    kept_ = density;
    picture_ = nullptr;
    if (size == Size{}) {
        return nullptr;
    }
    auto known = known_.lower_bound(density);
    if (known == known_.end() && !known_.empty()) {
        --known;
    }
    if (known == known_.end()) {
        return nullptr;
    }
    const PictureRef found = known->second();
    if (found == nullptr || !(found->GetSize() == size) || found->Density() == density) {
        picture_ = found != nullptr && found->GetSize() == size ? found : nullptr;
    } else {
        picture_ = std::make_shared<Surface>(found->AtDensity(density));
    }
    return picture_.get();
}

}  // namespace platform
