#include "skin/skin.h"

#include <string_view>
#include <vector>

#include "core/failure.h"
#include "core/frmmain.h"
#include "core/impulses.h"
#include "core/mGeneral.h"
#include "core/program.h"
#include "core/seams.h"

namespace sarnel {

namespace {

struct EffectRange {
    Long slider;
    Long max;
};
constexpr EffectRange kEffectRanges[] = {{3, 100}, {4, 40}, {5, 6}, {6, 20},
                                         {7, 30},  {8, 30}, {9, 30}};

std::vector<std::u16string> Split(std::u16string_view text, char16_t delimiter) {
    std::vector<std::u16string> pieces;
    if (text.empty()) {
        return pieces;
    }
    std::size_t end = text.find(delimiter);
    while (end != std::u16string_view::npos) {
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
        end = text.find(delimiter);
    }
    pieces.emplace_back(text);
    return pieces;
}

// What the host can play, six types a line; a heading and an invitation only from three types on.
void FillSupportedTypes() {
    constexpr std::u16string_view kLineBreak = u"\r\n";
    constexpr std::size_t kTypesPerLine = 6;
    std::u16string answer;
    SendImpulse(ImpulseGetFileTypes, {}, &answer, {});
    const std::vector<std::u16string> types = Split(answer, u';');
    const bool framed = types.size() > 2;
    std::u16string text;
    if (framed) {
        text.append(kLineBreak).append(u"File types supported:").append(kLineBreak);
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        const bool lastOfLine = i % kTypesPerLine == kTypesPerLine - 1;
        text.append(types[i]).append(lastOfLine ? kLineBreak : u" ");
    }
    if (framed) {
        text.append(kLineBreak).append(kLineBreak);
        text.append(u"Click here to accociate types in shell!").append(kLineBreak);
    }
    App().Main().lblFileTypesSupported->Caption(text);
}

}  // namespace

Long SkinCount() {
    return 1;
}

std::u16string SkinName(Long /*skin*/) {
    return u"Funky Blue";
}

void LoadSkin(Long skin) {
    App().CurrentSkin = skin > SkinCount() || skin < 1 ? 1 : skin;
    WriteSetting(u"Skin", LongToText(App().CurrentSkin));
    Step(seams::ApplySkin);
    Step(FillSupportedTypes);
    for (const EffectRange& range : kEffectRanges) {
        App().Main().sldSkin(range.slider).Max(range.max);
    }
}

}  // namespace sarnel
