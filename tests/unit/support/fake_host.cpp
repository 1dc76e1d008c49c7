#include "tests/unit/support/fake_host.h"

#include <algorithm>
#include <stdexcept>

#include "platform/base/text.h"

namespace support {

using sarnel::ImpulseValue;

namespace {

class Cell : public sarnel::HostCell {
  public:
    Cell(std::u16string name, std::function<void()> inside)
        : name_(std::move(name)), inside_(std::move(inside)) {}
    std::u16string getClass() override {
        inside_();
        return name_;
    }

  private:
    std::u16string name_;
    std::function<void()> inside_;
};

}  // namespace

std::string Describe(const ImpulseValue& value) {
    const ImpulseValue plain = value.Plain();
    if (plain.IsNull()) {
        return "null";
    }
    if (plain.IsObject()) {
        return "object";
    }
    const std::string text = platform::Narrow(plain.AsString().value_or(u"?"));
    return plain.IsString() ? '"' + text + '"' : text;
}

std::vector<Long> FakeHost::Numbers() const {
    std::vector<Long> numbers;
    for (const Call& call : calls) {
        numbers.push_back(call.number);
    }
    return numbers;
}

int FakeHost::Count(Long number) const {
    return static_cast<int>(std::count_if(
        calls.begin(), calls.end(), [number](const Call& call) { return call.number == number; }));
}

std::vector<FakeHost::Call> FakeHost::Of(const std::set<Long>& numbers) const {
    std::vector<Call> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const Call& call) { return numbers.contains(call.number); });
    return found;
}

void FakeHost::Forget() {
    calls.clear();
    opened.clear();
}

ImpulseValue FakeHost::ProcessImpulse(sarnel::Ambrisor& from, ImpulseValue& uMsg,
                                      ImpulseValue& wParam, ImpulseValue& lParam1,
                                      ImpulseValue& lParam2) {
    const Long number = uMsg.AsLong().value_or(0);
    sender = &from;
    calls.push_back({number, Describe(wParam), Describe(lParam1), Describe(lParam2)});
    if (number == sarnel::ImpulseOpen) {
        opened.push_back(lParam1.AsString().value_or(u""));
    }
    if (const auto hook = inside.find(number); hook != inside.end()) {
        const std::function<void()> run = hook->second;  // a copy: it may take itself out
        run();
    }
    Inside(number);
    if (failing.contains(number)) {
        throw std::runtime_error("the host fails");
    }
    if (!silent) {
        Answer(number, wParam, lParam1, lParam2);
    }
    return Long{0};
}

void FakeHost::Inside(Long number) const {
    if (const auto run = insideAny) {
        run(number);
    }
}

void FakeHost::Answer(Long number, const ImpulseValue& wParam, ImpulseValue& lParam1,
                      ImpulseValue& lParam2) {
    const std::u16string path = wParam.AsString().value_or(u"");
    switch (number) {
        case sarnel::ImpulseIsSupported:
            lParam1.Assign(!unsupported.contains(path));
            break;
        case sarnel::ImpulseGetFileTypes:
            lParam1.Assign(fileTypes);
            break;
        case sarnel::ImpulseGetTitle:
            if (const auto title = titles.find(path); title != titles.end()) {
                lParam1.Assign(title->second);
            }
            break;
        case sarnel::ImpulseOpen:
            playing = !dead.contains(lParam1.AsString().value_or(u"")) || playing;
            lParam2.Assign(!dead.contains(lParam1.AsString().value_or(u"")));
            break;
        case sarnel::ImpulseStop:
            playing = false;
            break;
        case sarnel::ImpulseGetPosition:
            lParam1.Assign(position);
            break;
        case sarnel::ImpulseGetLength:
            lParam1.Assign(length);
            break;
        case sarnel::ImpulseIsPlaying:
            lParam1.Assign(playing);
            break;
        case sarnel::ImpulseGetTimeText:
            lParam1.Assign(wParam.AsBoolean().value_or(false) ? timeRemaining : timePlayed);
            break;
        case sarnel::ImpulseGetLengthText:
            lParam1.Assign(lengthText);
            break;
        case sarnel::ImpulseGetSampleRate:
            lParam1.Assign(sampleRate);
            break;
        case sarnel::ImpulseGetChannels:
            lParam1.Assign(channels);
            break;
        case sarnel::ImpulseGetBitRate:
            lParam1.Assign(bitRate);
            break;
        default:
            break;
    }
}

Long FakeHost::Capacity() {
    ++capacityAsked;
    Inside(0);
    if (failingCells) {
        throw std::runtime_error("the host fails");
    }
    return static_cast<Long>(cellNames.size());
}

sarnel::HostCell* FakeHost::CellItem(Long& number) {
    Inside(0);
    if (number < 1 || number > static_cast<Long>(cellNames.size())) {
        return nullptr;
    }
    cells_.push_back(std::make_unique<Cell>(cellNames[static_cast<std::size_t>(number) - 1],
                                            [this] { Inside(0); }));
    return cells_.back().get();
}

}  // namespace support
