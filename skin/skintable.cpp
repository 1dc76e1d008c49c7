#include "skin/skintable.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/base/failure.h"
#include "core/base/impulsevalue.h"
#include "platform/base/text.h"
#include "platform/drawing/bitmap_file.h"

namespace sarnel {

namespace {

constexpr char kSeparator = '|';

ComponentError MissingResource() {
    return {326, u"Resource not found"};
}

template <class T>
T Converted(const std::optional<T>& value) {
    if (!value) {
        throw ComponentError(13, u"Type mismatch");
    }
    return *value;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

SkinTable::SkinTable(std::string_view text, const std::vector<EmbeddedPicture>& pictures) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ReadLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    for (const EmbeddedPicture& picture : pictures) {
        Bitmap(picture.id, picture.file, picture.density);
    }
}

// number | text | comment
void SkinTable::ReadLine(std::string_view line) {
    const std::size_t afterNumber = line.find(kSeparator);
    if (line.starts_with('#') || afterNumber == std::string_view::npos) {
        return;
    }
    const std::string_view rest = line.substr(afterNumber + 1);
    const auto number = TextToLong(platform::Widen(Trimmed(line.substr(0, afterNumber))));
    const std::string_view text = Trimmed(rest.substr(0, rest.find(kSeparator)));
    if (number && !text.empty()) {
        Row(*number, platform::Widen(text));
    }
}

void SkinTable::Row(Long number, std::u16string text) {
    rows_[number] = std::move(text);
}

void SkinTable::Bitmap(Long id, std::string_view file, Long density) {
    Picture& picture = pictures_[id];
    picture.decoded = nullptr;
    if (density == 1) {
        picture.file = file;
        picture.finer = nullptr;  // those there were belong to another picture
        return;
    }
    if (picture.finer == nullptr) {
        picture.finer = std::make_shared<platform::FinerPictures>();
    }
    picture.finer->Add(density, [=] { return platform::DecodeBitmap(file, density); });
}

const std::u16string& SkinTable::Row(Long number) const {
    const auto found = rows_.find(number);
    if (found == rows_.end() || found->second.empty()) {
        throw MissingResource();
    }
    return found->second;
}

platform::PictureRef SkinTable::Bitmap(Long id) {
    const auto found = pictures_.find(id);
    if (found == pictures_.end()) {
        throw MissingResource();
    }
    Picture& picture = found->second;
    if (picture.decoded == nullptr) {
        const platform::PictureRef plain = platform::DecodeBitmap(picture.file);
        if (plain == nullptr) {
            throw MissingResource();
        }
        if (picture.finer != nullptr) {
            auto withFiner = std::make_shared<platform::Surface>(*plain);
            withFiner->Finer(picture.finer);
            picture.decoded = std::move(withFiner);
        } else {
            picture.decoded = plain;
        }
    }
    return picture.decoded;
}

Long SkinTable::Number(Long row) const {
    return Converted(TextToLong(Row(row)));
}

bool SkinTable::Boolean(Long row) const {
    return Converted(TextToBoolean(Row(row)));
}

Long SkinRows::RowAt(Long offset) const {
    const std::int64_t row = std::int64_t{base_} + from_ + offset;
    if (base_ == 0 || row > std::numeric_limits<Long>::max()) {
        throw MissingResource();
    }
    return static_cast<Long>(row);
}

}  // namespace sarnel
