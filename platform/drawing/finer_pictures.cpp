#include "platform/drawing/finer_pictures.h"

namespace platform {

const Surface* FinerPictures::At(Long density, Size size) {
    if (kept_ != density) {
        picture_ = Made(density, size);
        kept_ = density;
    }
    return picture_.get();
}

void FinerPictures::LetGo() {
    kept_.reset();
    picture_ = nullptr;
}

PictureRef FinerPictures::Made(Long density, Size size) const {
    auto known = known_.lower_bound(density);
    if (known == known_.end() && !known_.empty()) {
        --known;
    }
    if (known == known_.end()) {
        return nullptr;
    }
    const PictureRef found = known->second();
    if (found == nullptr || !(found->GetSize() == size)) {
        return nullptr;
    }
    if (found->Density() == density) {
        return found;
    }
    return std::make_shared<Surface>(found->AtDensity(density));
}

}  // namespace platform
