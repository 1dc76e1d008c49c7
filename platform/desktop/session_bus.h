// What a program offers to others on the desktop's session bus, and asks of them: one object under
// a name of its own, signals from it, and calls. Where there is no bus nothing happens.
//
// All members are called on the driver's thread. Nothing here waits for anybody. Texts are UTF-8;
// what is not, becomes U+FFFD on its way.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

struct BusEntry;

/// The path of an object on the bus; its signature is "o".
struct BusPath {
    std::string text;
    bool operator==(const BusPath&) const = default;
};
using BusTexts = std::vector<std::string>;  ///< "as"
using BusTable = std::vector<BusEntry>;     ///< "a{sv}"

/// "b", "i", "u", "x", "d", "s", "o", "as" or "a{sv}"; what a variant of the bus holds is taken out
/// of it. Nothing: a value of another type.
struct BusValue {
    std::variant<std::monostate, bool, std::int32_t, std::uint32_t, std::int64_t, double,
                 std::string, BusPath, BusTexts, BusTable>
        value;

    template <class T>
    const T* As() const {
        return std::get_if<T>(&value);
    }
    friend bool operator==(const BusValue& one, const BusValue& other);
};
using BusValues = std::vector<BusValue>;

struct BusEntry {
    std::string name;
    BusValue value;
    bool operator==(const BusEntry&) const = default;
};

inline bool operator==(const BusValue& one, const BusValue& other) {
    return one.value == other.value;
}

/// A call that somebody has made. It is answered once, at any time.
struct BusCall {
    std::string interface;  ///< may be empty
    std::string member;
    BusValues arguments;
    std::shared_ptr<const void> message;  ///< what the bus knows it by
};

class SessionBus {
  public:
    virtual ~SessionBus() = default;

    struct Offer {
        std::string name;  ///< on the bus; `name` and ".instance" and the process if it is taken
        std::string objectPath;
        std::vector<std::string> interfaces;  ///< besides that of properties
        std::string description;  ///< their <interface> elements, for who asks what there is
        /// Somebody calls a method of them. From within the driver's wait: for taking note.
        std::function<void(BusCall)> onCall;
        /// The object is to be found under its name now.
        std::function<void()> onReady;
        /// Runs the work on another thread. It may never return; the end of the process does not
        /// wait for it.
        std::function<void(std::function<void()> work)> elsewhere;
    };
    /// Begins as soon as the first picture is on the screen. Once.
    virtual void Begin(Offer offer) = 0;
    /// Nobody is heard any more, and the functions of the offer are gone.
    virtual void End() = 0;

    virtual void Answer(const BusCall& call, const BusValues& values) = 0;
    /// With one value in a variant, as a property is read.
    virtual void AnswerBoxed(const BusCall& call, const BusValue& value) = 0;
    /// `error`: its name, such as "org.freedesktop.DBus.Error.UnknownMethod".
    virtual void Refuse(const BusCall& call, const std::string& error,
                        const std::string& message) = 0;
    /// From the object.
    virtual void Signal(const std::string& interface, const std::string& member,
                        const BusValues& values) = 0;

    struct Target {
        std::string service;
        std::string path;
        std::string interface;
    };
    /// Asks somebody else. `onAnswer` gets nothing if that failed; from within the driver's wait.
    virtual void Call(const Target& target, const std::string& member, const BusValues& values,
                      std::function<void(std::optional<BusValues>)> onAnswer) = 0;
};

}  // namespace platform
