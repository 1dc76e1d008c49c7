#include "host/veldrin_host.h"

#include "core/base/impulses.h"
#include "host/paths.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

using platform::Narrow;
using platform::Widen;
using sarnel::ImpulseValue;
using sarnel::Long;

/// The bytes of a path or name in an argument; empty if it is no text.
std::string BytesOf(const ImpulseValue& value) {
    return Narrow(value.AsString().value_or(std::u16string()));
}

}  // namespace

class VeldrinHost::Cell : public sarnel::HostCell {
  public:
    explicit Cell(std::u16string name) : name_(std::move(name)) {}
    std::u16string getClass() override { return name_; }

  private:
    std::u16string name_;
};

VeldrinHost::VeldrinHost(Engine& engine, TagReader& tags, ItemListener& items, RunListener& run)
    : engine_(engine), tags_(tags), items_(items), run_(run) {}

VeldrinHost::~VeldrinHost() = default;

ImpulseValue VeldrinHost::ProcessImpulse(sarnel::Ambrisor& /*sender*/, ImpulseValue& uMsg,
                                         ImpulseValue& wParam, ImpulseValue& lParam1,
                                         ImpulseValue& lParam2) {
    const Long number = uMsg.AsLong().value_or(0);
    switch (number) {
        case sarnel::ImpulseClosed:
            run_.Closed();
            return Long{1};
        case sarnel::ImpulseRequestExit:
            run_.ExitRequested();
            return Long{1};
        case sarnel::ImpulseOpen:
            Open(lParam1, lParam2);
            return Long{1};
        case sarnel::ImpulsePause:
            if (wParam.AsBoolean().value_or(false)) {
                engine_.Pause();
            } else {
                engine_.Toggle();
            }
            return Long{1};
        case sarnel::ImpulseStop:
            Stop();
            return Long{1};
        default:
            break;
    }
    const bool known = AnswerQuestion(number, wParam, lParam1) ||
                       AnswerAboutStream(number, wParam, lParam1) ||
                       SetValue(number, wParam.AsLong().value_or(0));
    return known ? Long{1} : Long{0};
}

Long VeldrinHost::Capacity() {
    if (cells_.empty()) {
        for (const std::string& part : engine_.Parts()) {
            cells_.push_back(std::make_unique<Cell>(Widen(part)));
        }
    }
    return static_cast<Long>(cells_.size());
}

sarnel::HostCell* VeldrinHost::CellItem(Long& number) {
    return number >= 1 && number <= Capacity() ? cells_[static_cast<std::size_t>(number - 1)].get()
                                               : nullptr;
}

void VeldrinHost::Open(ImpulseValue& lParam1, ImpulseValue& lParam2) {
    const std::string path = BytesOf(lParam1);
    const bool opened = engine_.Open(path);
    lParam2.Assign(opened);
    if (opened) {
        opened_ = true;
        items_.ItemOpened(path);
    } else {
        items_.ItemFailed(path);
    }
}

void VeldrinHost::Stop() {
    const bool ended = opened_ && !engine_.IsPlaying();
    opened_ = false;
    engine_.Stop();
    items_.Stopped(ended);
}

bool VeldrinHost::AnswerQuestion(Long number, const ImpulseValue& wParam, ImpulseValue& lParam1) {
    switch (number) {
        case sarnel::ImpulseGetHostPath:
            return lParam1.Assign(Widen(ProgramPath()));
        case sarnel::ImpulseIsSupported:
            return lParam1.Assign(engine_.Supports(BytesOf(wParam)));
        case sarnel::ImpulseGetFileTypes:
            return lParam1.Assign(Widen(engine_.FileTypes()));
        case sarnel::ImpulseGetTitle:
            return lParam1.Assign(Widen(tags_.Title(BytesOf(wParam), BytesOf(lParam1))));
        case sarnel::ImpulseGetInfo:
            return lParam1.Assign(Widen(tags_.Info(BytesOf(wParam))));
        default:
            return false;
    }
}

bool VeldrinHost::AnswerAboutStream(Long number, const ImpulseValue& wParam,
                                    ImpulseValue& lParam1) {
    switch (number) {
        case sarnel::ImpulseGetPosition:
            return lParam1.Assign(Long{engine_.Position()});
        case sarnel::ImpulseGetLength:
            return lParam1.Assign(Long{engine_.Length()});
        case sarnel::ImpulseIsPlaying:
            return lParam1.Assign(engine_.IsPlaying());
        case sarnel::ImpulseGetTimeText:
            return lParam1.Assign(Widen(wParam.AsBoolean().value_or(false) ? engine_.RemainingText()
                                                                           : engine_.PlayedText()));
        case sarnel::ImpulseGetLengthText:
            return lParam1.Assign(Widen(engine_.LengthText()));
        case sarnel::ImpulseGetSampleRate:
            return lParam1.Assign(Long{engine_.SampleRate()});
        case sarnel::ImpulseGetChannels:
            return lParam1.Assign(Long{engine_.Channels()});
        case sarnel::ImpulseGetBitRate:
            return lParam1.Assign(Widen(engine_.BitRateText()));
        default:
            return false;
    }
}

bool VeldrinHost::SetValue(Long number, Long value) {
    switch (number) {
        case sarnel::ImpulseSetVolume:
            engine_.SetVolume(value);
            return true;
        case sarnel::ImpulseSeek:
            engine_.Seek(value);
            items_.Sought(value);
            return true;
        case sarnel::ImpulseSetTempo:
            engine_.SetTempo(value);
            return true;
        case sarnel::ImpulseSetPitch:
            engine_.SetPitch(value);
            return true;
        case sarnel::ImpulseSetEcho:
            engine_.SetEcho(value);
            return true;
        case sarnel::ImpulseSetReverb:
            engine_.SetReverb(value);
            return true;
        case sarnel::ImpulseSetBass:
            engine_.SetBass(value);
            return true;
        case sarnel::ImpulseSetMid:
            engine_.SetMid(value);
            return true;
        case sarnel::ImpulseSetTreble:
            engine_.SetTreble(value);
            return true;
        default:
            return false;
    }
}

}  // namespace veldrin
