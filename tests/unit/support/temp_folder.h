// A folder of a test's own, removed with all it holds when the test is over. Names are raw bytes,
// relative to the folder; a "/" in a name makes the folders on the way.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string Path(std::string_view name) const;
    /// The same paths as text.
    std::u16string Text() const;
    std::u16string Text(std::string_view name) const;

    void Write(std::string_view name, std::string_view bytes) const;
    void MakeFolder(std::string_view name) const;
    void Link(std::string_view target, std::string_view name) const;
    void Remove(std::string_view name) const;
    /// The whole content of a file; none if it cannot be read.
    std::optional<std::string> Read(std::string_view name) const;
    bool Exists(std::string_view name) const;
    /// The permission bits of what `name` leads to.
    unsigned Mode(std::string_view name) const;
    /// All names, hidden ones too, by code unit.
    std::vector<std::string> Names() const;

  private:
    std::string path_;
};

/// Makes the process an ordinary user while it lives, so that permissions count also where the
/// tests run as root; `folder` goes to that user.
class AsOrdinaryUser {
  public:
    explicit AsOrdinaryUser(const TempFolder& folder);
    ~AsOrdinaryUser();
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

  private:
    bool wasRoot_ = false;
};

}  // namespace support
