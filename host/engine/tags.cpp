#include "host/engine/tags.h"

#include "host/engine/tag_file.h"
#include "host/engine/tag_prefetcher.h"

namespace veldrin {

TagReader::TagReader() : prefetcher_(std::make_unique<TagPrefetcher>()) {}
TagReader::~TagReader() = default;

std::string TagReader::Title(const std::string& path, const std::string& fallbackName) {
    if (isPointless_ && isPointless_()) {
        return fallbackName;
    }
    std::string title = prefetcher_->Title(path);
    return title.empty() ? fallbackName : title;
}

std::string TagReader::Info(const std::string& path) const {
    return ReadInfo(path);
}

}  // namespace veldrin
