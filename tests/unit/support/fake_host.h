// A host that plays nothing and answers as it is told. A successful open makes it playing, a stop
// ends that. Whatever reaches it is written down.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/ambrisor.h"

namespace support {

using platform::Long;

/// The value as text that tells its kind: null, 5, True, "text", object.
std::string Describe(const sarnel::ImpulseValue& value);

class FakeHost : public sarnel::HostObject {
  public:
    struct Call {
        Long number = 0;
        std::string wParam;
        std::string lParam1;  // as they came in
        std::string lParam2;
        bool operator==(const Call&) const = default;
    };

    // What it answers. Paths are as they are asked for.
    std::set<std::u16string> dead;         ///< do not open
    std::set<std::u16string> unsupported;  ///< are no media
    std::map<std::u16string, std::u16string> titles;
    std::u16string fileTypes;
    Long length = 200;
    Long position = 0;
    bool playing = false;
    std::u16string timePlayed = u"0:10";
    std::u16string timeRemaining = u"-3:10";
    std::u16string lengthText = u"3:20";
    Long sampleRate = 44100;
    Long channels = 2;
    std::u16string bitRate = u"128";
    std::vector<std::u16string> cellNames;

    // How it fails.
    bool silent = false;     ///< touches no out value
    std::set<Long> failing;  ///< throws in these impulses
    bool failingCells = false;

    /// Runs inside the handling of an impulse, each time, before the answer.
    std::map<Long, std::function<void()>> inside;
    /// The same for every impulse, with its number, and with 0 for each question about the cells.
    std::function<void(Long number)> insideAny;

    // What it heard.
    std::vector<Call> calls;
    sarnel::Ambrisor* sender = nullptr;  ///< of the last impulse
    int capacityAsked = 0;

    std::vector<Long> Numbers() const;
    int Count(Long number) const;
    /// The calls of these numbers, in order of arrival.
    std::vector<Call> Of(const std::set<Long>& numbers) const;
    /// Paths that it was asked to open, in order.
    std::vector<std::u16string> opened;
    void Forget();

    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor& from, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override;
    Long Capacity() override;
    sarnel::HostCell* CellItem(Long& number) override;

  private:
    void Inside(Long number) const;
    void Answer(Long number, const sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                sarnel::ImpulseValue& lParam2);

    std::vector<std::unique_ptr<sarnel::HostCell>> cells_;
};

}  // namespace support
