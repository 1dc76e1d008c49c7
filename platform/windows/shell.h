// What the window system keeps of the desktop's shell: atoms, the hot keys and tray icons of
// windows, and the registry of file types. The operations on it are WindowSystem's.
#pragma once

#include <bitset>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/driver.h"

namespace platform {

class Shell {
  public:
    /// The driver must outlive it.
    explicit Shell(Driver& driver) : driver_(driver) {}

    Long AddAtom(std::u16string_view name);
    void DeleteAtom(Long atom);

    struct Key {
        Handle grab = 0;  ///< what the driver knows it by
        Handle window = 0;
        Long id = 0;
        KeyCombination combination;
    };
    bool AddKey(Key key);
    bool RemoveKey(Handle window, Long id);
    std::optional<Key> FindKey(Handle grab) const;

    struct Icon {
        Handle window = 0;
        Long id = 0;
        Long callbackMessage = 0;
    };
    /// False if that icon is there already.
    bool AddIcon(const Icon& icon, std::u16string_view tip);
    bool ModifyIcon(Handle window, Long id, std::u16string_view tip);
    bool RemoveIcon(Handle window, Long id);
    std::optional<Icon> IconOf(Handle window) const;

    Handle OpenKey(std::u16string_view name) const;
    Handle CreateKey(std::u16string_view name, Handle fresh);
    bool SetValue(Handle key, std::u16string_view subKey, std::u16string_view text);
    void PublishAssociations() const;

    /// Keys and icon of a window that has gone.
    void Forget(Handle window);

  private:
    struct Atom {
        Long number = 0;
        int count = 0;
    };
    static constexpr Long kFirstAtom = 0xC000;
    static constexpr std::size_t kAtoms = 0x4000;

    Driver& driver_;
    std::map<std::u16string, Atom, std::less<>> atoms_;
    std::bitset<kAtoms> usedAtoms_;  ///< by number, from kFirstAtom on
    std::vector<Key> keys_;
    std::vector<Icon> icons_;
    static constexpr Handle kFolders = -10;  ///< no other handle is negative
    /// Names of keys by handle. One is there without anybody having made it: what folders offer.
    std::map<Handle, std::u16string> opened_{{kFolders, u"Directory"}};
    /// By the key's path in capitals, since case does not tell keys apart.
    std::map<std::u16string, RegistryValue> registry_;
};

}  // namespace platform
