#include "tests/unit/support/temp_folder.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "platform/base/text.h"

namespace support {

namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;

void ChownTree(const std::string& path, uid_t user) {
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (lchown(entry.path().c_str(), user, static_cast<gid_t>(-1)) != 0) {
            throw std::runtime_error("chown");
        }
    }
    if (chown(path.c_str(), user, static_cast<gid_t>(-1)) != 0) {
        throw std::runtime_error("chown");
    }
}

}  // namespace

TempFolder::TempFolder() {
    std::string name = fs::temp_directory_path() / "unit-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the test");
    }
    path_ = name;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(path_, ignored);
         !ignored && it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        if (!it->is_symlink() && it->is_directory()) {
            fs::permissions(it->path(), fs::perms::owner_all, ignored);
        }
    }
    fs::remove_all(path_, ignored);
}

std::string TempFolder::Path(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::u16string TempFolder::Text() const {
    return platform::Widen(path_);
}

std::u16string TempFolder::Text(std::string_view name) const {
    return platform::Widen(Path(name));
}

void TempFolder::Write(std::string_view name, std::string_view bytes) const {
    fs::create_directories(fs::path(Path(name)).parent_path());
    std::ofstream file(Path(name), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + Path(name));
    }
}

void TempFolder::MakeFolder(std::string_view name) const {
    fs::create_directories(Path(name));
}

void TempFolder::Link(std::string_view target, std::string_view name) const {
    fs::create_symlink(target, Path(name));
}

void TempFolder::Remove(std::string_view name) const {
    fs::remove_all(Path(name));
}

std::optional<std::string> TempFolder::Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    if (!file || fs::is_directory(Path(name))) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool TempFolder::Exists(std::string_view name) const {
    return fs::exists(fs::symlink_status(Path(name)));
}

unsigned TempFolder::Mode(std::string_view name) const {
    return static_cast<unsigned>(fs::status(Path(name)).permissions());
}

std::vector<std::string> TempFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename().native());
    }
    std::sort(names.begin(), names.end());
    return names;
}

AsOrdinaryUser::AsOrdinaryUser(const TempFolder& folder) : wasRoot_(getuid() == 0) {
    if (wasRoot_) {
        ChownTree(folder.Path(), kNobody);
        // The real user too: it is what access() asks. The saved one stays, for the way back.
        if (setresuid(kNobody, kNobody, 0) != 0) {
            throw std::runtime_error("cannot become an ordinary user");
        }
    }
}

AsOrdinaryUser::~AsOrdinaryUser() {
    if (wasRoot_ && setresuid(0, 0, 0) != 0) {
        abort();
    }
}

}  // namespace support
