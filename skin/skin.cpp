#include "skin/skin.h"

#include "core/frmmain.h"
#include "core/mGeneral.h"
#include "core/program.h"

namespace sarnel {

namespace {

struct EffectRange {
    Long slider;
    Long max;
};
constexpr EffectRange kEffectRanges[] = {{3, 100}, {4, 40}, {5, 6}, {6, 20},
                                         {7, 30},  {8, 30}, {9, 30}};

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
    for (const EffectRange& range : kEffectRanges) {
        App().Main().sldSkin(range.slider).Max(range.max);
    }
}

}  // namespace sarnel
