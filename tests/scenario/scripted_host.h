// The host that a scenario scripts: it plays nothing, answers what it was told to answer, keeps a
// log of every impulse, and can fail, fall silent, or do something in the midst of an impulse.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/hostobject.h"
#include "platform/base/types.h"

namespace scenario {

class World;

using platform::Long;

/// What the component reaches of a host beside impulses.
enum class HostMember { kCapacity, kCellItem, kGetClass };

/// The name that a scenario has for it.
std::string_view NameOf(HostMember member);

/// What the host answers; the start values are what a scenario finds when it begins.
struct HostAnswers {
    std::u16string types = u"*.mp3;*.ogg;*.wav";
    std::u16string path = u"/opt/veldrin/veldrin";
    std::map<std::u16string, std::u16string> titles;  ///< by path
    std::map<std::u16string, std::u16string> infos;   ///< by path
    std::set<std::u16string> dead;                    ///< paths that do not open
    Long length = 200;
    Long position = 0;
    bool playing = false;
    std::u16string played = u"0:00";
    std::u16string remaining = u"-3:20";
    std::u16string lengthText = u"3:20";
    Long sampleRate = 44100;
    Long channels = 2;
    std::u16string bitRate = u"128";
    bool silent = false;  ///< no out value is touched
    std::set<Long> throws;
    std::set<HostMember> failing;
    std::map<Long, sarnel::ImpulseValue> forced;  ///< instead of the answers above, by impulse
};

class ScriptedHost : public sarnel::HostObject {
  public:
    explicit ScriptedHost(World& world) : world_(world) {}

    HostAnswers answers;

    /// The cells that the host has loaded, by the text of their getClass.
    void Cells(std::vector<std::u16string> classes);

    /// Runs once, inside the handling of the next such impulse.
    void On(Long impulse, std::function<void()> action) { actions_.emplace(impulse, action); }

    /// Stands for whatever object a scenario has the host answer with.
    sarnel::Object& AnyObject() { return anyObject_; }

    /// An impulse as it came in.
    struct Entry {
        Long number;
        std::string line;
    };
    const std::vector<Entry>& Log() const { return log_; }
    void Forget() { log_.clear(); }

    sarnel::ImpulseValue ProcessImpulse(sarnel::Ambrisor& sender, sarnel::ImpulseValue& uMsg,
                                        sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                                        sarnel::ImpulseValue& lParam2) override;
    Long Capacity() override;
    sarnel::HostCell* CellItem(Long& number) override;

  private:
    class Cell : public sarnel::HostCell {
      public:
        Cell(const ScriptedHost& host, std::u16string name) : host_(host), name_(std::move(name)) {}
        std::u16string getClass() override;

      private:
        const ScriptedHost& host_;
        std::u16string name_;
    };

    void FailIfTold(HostMember member) const;
    void RunActions(Long impulse);
    void Answer(Long impulse, const sarnel::ImpulseValue& wParam, sarnel::ImpulseValue& lParam1,
                sarnel::ImpulseValue& lParam2);
    void Force(Long impulse, const sarnel::ImpulseValue& value, sarnel::ImpulseValue& lParam1,
               sarnel::ImpulseValue& lParam2);
    void Open(const sarnel::ImpulseValue& path, sarnel::ImpulseValue& opened);
    void Give(sarnel::ImpulseValue& out, const sarnel::ImpulseValue& value) const;
    bool IsSupported(std::u16string_view name) const;

    World& world_;
    std::vector<Entry> log_;
    std::multimap<Long, std::function<void()>> actions_;
    std::vector<Cell> cells_;
    sarnel::Object anyObject_;
};

}  // namespace scenario
