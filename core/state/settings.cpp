#include "core/state/settings.h"

#include <cstddef>
#include <type_traits>

#include "core/base/failure.h"
#include "core/base/impulsevalue.h"
#include "core/state/mGeneral.h"

namespace sarnel {

namespace {

constexpr std::u16string_view KeyOf(const settings::AnySetting& setting) {
    return std::visit([](const auto& held) { return held.key; }, setting);
}

constexpr bool HaveKeysOfTheirOwn() {
    for (std::size_t i = 0; i < settings::kAll.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (KeyOf(settings::kAll[i]) == KeyOf(settings::kAll[j])) {
                return false;
            }
        }
    }
    return true;
}
static_assert(HaveKeysOfTheirOwn());

}  // namespace

template <class T>
std::optional<T> Setting<T>::Read() const {
    if constexpr (std::is_same_v<T, bool>) {
        return TextToBoolean(ReadSetting(key, BooleanToText(initial)));
    } else {
        return TextToLong(ReadSetting(key, LongToText(initial)));
    }
}

template <class T>
void Setting<T>::Write(T value) const {
    if constexpr (std::is_same_v<T, bool>) {
        WriteSetting(key, BooleanToText(value));
    } else {
        WriteSetting(key, LongToText(value));
    }
}

template struct Setting<Long>;
template struct Setting<bool>;

std::optional<Long> PlaceSetting::Read(Long centred) const {
    return Setting<Long>{key, centred}.Read();
}

void PlaceSetting::Write(Long value) const {
    Setting<Long>{key, 0}.Write(value);
}

std::u16string TextSetting::Read() const {
    return ReadSetting(key, u"");
}

void TextSetting::Write(std::u16string_view value) const {
    WriteSetting(key, value);
}

bool IsOn(const Setting<bool>& setting) {
    bool on = false;
    Take(on, setting.Read());
    return on;
}

}  // namespace sarnel
