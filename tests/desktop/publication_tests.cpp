// What a publication writes, in folders of the tests' own.
#include "platform/desktop/associations/media_types.h"
#include "platform/desktop/associations/publication.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>

#include "platform/desktop/associations/associations.h"
#include "platform/desktop/associations/media_types.h"

namespace {

using namespace platform;
using namespace platform::desktop;
namespace fs = std::filesystem;

const ProgramIdentity kThatPlayer{"that", "That", "Music Player", "AudioVideo;Audio;"};

FileClass ClassOf(std::vector<std::string> extensions) {
    FileClass found;
    found.extensions = std::move(extensions);
    found.verbs = {{"enqueue", "Enqueue", {"/bin/sh", "/ADD", "%1"}},
                   {"open", "Play", {"/bin/sh", "%1"}}};
    found.folderVerbs = found.verbs;
    return found;
}

class PublicationTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "publication-XXXXXX";
        root_ = mkdtemp(pattern.data());
        folders_ = {At("data"), At("config"), {At("machine")}, {At("etc")}, {}};
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string At(const std::string& name) const { return root_ + "/" + name; }
    void Save(const std::string& name, const std::string& text) const {
        fs::create_directories(fs::path(At(name)).parent_path());
        std::ofstream(At(name), std::ios::binary) << text;
    }
    std::string Text(const std::string& name) const {
        std::ifstream file(At(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Publish(std::vector<std::string> extensions) const {
        PublishClass(kThatPlayer, ClassOf(std::move(extensions)), folders_);
    }
    /// All files with their content, and when they were written; without the machine's caches.
    std::map<std::string, std::pair<std::string, fs::file_time_type>> All() const {
        std::map<std::string, std::pair<std::string, fs::file_time_type>> all;
        for (const auto& entry : fs::recursive_directory_iterator(root_)) {
            if (entry.is_regular_file() && entry.path().filename() != "mimeinfo.cache") {
                const std::string name = fs::relative(entry.path(), root_).native();
                all[name] = {Text(name), entry.last_write_time()};
            }
        }
        return all;
    }

    std::string root_;
    UserFolders folders_;
};

TEST_F(PublicationTest, EntriesIconsAndDefaultsAreWritten) {
    Publish({"flac"});
    EXPECT_NE(Text("data/applications/that.desktop").find("\nMimeType=audio/flac;\n"),
              std::string::npos);
    EXPECT_TRUE(fs::exists(At("data/applications/that_enqueue.desktop")));
    EXPECT_TRUE(fs::exists(At("data/applications/that_folder.desktop")));
    for (const char* size : {"16x16", "22x22", "24x24", "32x32", "48x48", "64x64", "128x128"}) {
        const std::string icon = Text(std::string("data/icons/hicolor/") + size + "/apps/that.png");
        EXPECT_TRUE(icon.starts_with("\x89PNG")) << size;
    }
    EXPECT_EQ(Text("config/mimeapps.list"), "[Default Applications]\naudio/flac=that.desktop\n");
    EXPECT_FALSE(fs::exists(At("data/mime")));
}

TEST_F(PublicationTest, ASecondOneWritesNothing) {
    Save("machine/applications/mimeinfo.cache", "[MIME Cache]\ninode/directory=files.desktop;\n");
    Publish({"mp3", "q7z-z"});
    const auto once = All();
    EXPECT_TRUE(once.contains("data/mime/packages/that.xml"));
    Publish({"mp3", "q7z-z"});
    EXPECT_EQ(All(), once);
}

TEST_F(PublicationTest, APackageThatNobodyNeedsGoes) {
    Publish({"q7z-z"});
    EXPECT_EQ(Text("data/mime/packages/that.xml"), TypesPackage({"q7z-z"}));
    Publish({"mp3"});
    EXPECT_FALSE(fs::exists(At("data/mime/packages/that.xml")));
}

TEST_F(PublicationTest, AProgramThatIsNotThereIsNotPublished) {
    FileClass found = ClassOf({"mp3"});
    found.verbs.back().command.front() = At("gone");
    PublishClass(kThatPlayer, found, folders_);
    EXPECT_TRUE(fs::is_empty(root_));
}

class InstalledPublicationTest : public PublicationTest {
  protected:
    void SetUp() override {
        PublicationTest::SetUp();
        fs::create_directories(At("bin"));
        fs::create_symlink("/bin/sh", At("bin/sh"));
        Save("machine/applications/that.desktop",
             "[Desktop Entry]\nMimeType=text/x-that; audio/mpeg ;\n");
    }
};

TEST_F(InstalledPublicationTest, ItsEntryIsTheDefaultAndNothingElseIsWritten) {
    Publish({"mp3", "flac"});
    EXPECT_FALSE(fs::exists(At("data")));
    EXPECT_EQ(Text("config/mimeapps.list"),
              "[Default Applications]\naudio/flac=that.desktop\naudio/mpeg=that.desktop\n\n"
              "[Added Associations]\naudio/flac=that.desktop\n");
    const auto once = All();
    Publish({"mp3", "flac"});
    EXPECT_EQ(All(), once);
}

TEST_F(InstalledPublicationTest, AnEntryOfTheUsersOwnGoesBeforeItAndIsKeptUpToDate) {
    Save("data/applications/that.desktop", "[Desktop Entry]\nExec=/gone/that %F\n");
    Publish({"mp3"});
    EXPECT_NE(Text("data/applications/that.desktop").find("\nExec=/bin/sh %F\n"),
              std::string::npos);
}

TEST_F(InstalledPublicationTest, ACopyOfTheProgramElsewhereHasAnEntryOfItsOwn) {
    fs::remove(At("bin/sh"));
    fs::copy_file("/bin/sh", At("bin/sh"));
    Publish({"mp3"});
    EXPECT_NE(Text("data/applications/that.desktop").find("\nExec=/bin/sh %F\n"),
              std::string::npos);
}

TEST_F(PublicationTest, WithoutItsEntryNobodyBecomesADefault) {
    fs::create_directories(At("data/applications/that.desktop"));
    Save("config/mimeapps.list", "# mine\n");
    Publish({"mp3"});
    EXPECT_EQ(Text("config/mimeapps.list"), "# mine\n");
}

TEST_F(PublicationTest, AFileInTheWayOfTheFolderStaysAsItIs) {
    Save("data", "in the way");
    Publish({"mp3"});
    EXPECT_EQ(Text("data"), "in the way");
    EXPECT_FALSE(fs::exists(At("config")));
}

TEST_F(PublicationTest, AListThatCannotBeReadIsLeftAlone) {
    fs::create_directories(At("config"));
    fs::create_symlink(At("nowhere"), At("config/mimeapps.list"));
    Publish({"mp3"});
    EXPECT_TRUE(fs::is_symlink(At("config/mimeapps.list")));
    EXPECT_FALSE(fs::exists(At("nowhere")));
}

TEST_F(PublicationTest, ALinkedListStaysALink) {
    Save("dotfiles/list", "# mine\n");
    fs::create_directories(At("config"));
    fs::create_symlink(At("dotfiles/list"), At("config/mimeapps.list"));
    Publish({"flac"});
    EXPECT_TRUE(fs::is_symlink(At("config/mimeapps.list")));
    EXPECT_EQ(Text("dotfiles/list"), "# mine\n\n[Default Applications]\naudio/flac=that.desktop\n");
}

TEST_F(PublicationTest, WhatOpensFoldersBySoFarGoesOnDoingSo) {
    Save("data/applications/mimeinfo.cache",
         "[MIME Cache]\ninode/directory=that_folder.desktop;that_enqueue.desktop;\n");
    Save("machine/applications/mimeinfo.cache",
         "[MIME Cache]\ninode/directory=files.desktop;more.desktop;\n");
    Publish({"flac"});
    EXPECT_EQ(Text("config/mimeapps.list"),
              "[Default Applications]\naudio/flac=that.desktop\n"
              "inode/directory=files.desktop\n");
}

TEST_F(PublicationTest, AChosenOpenerOfFoldersIsEnough) {
    Save("machine/applications/mimeinfo.cache", "[MIME Cache]\ninode/directory=files.desktop;\n");
    folders_.desktops = {"any"};
    for (const char* list :
         {"config/mimeapps.list", "config/any-mimeapps.list", "etc/mimeapps.list",
          "etc/any-mimeapps.list", "data/applications/mimeapps.list",
          "machine/applications/any-mimeapps.list", "machine/applications/mimeapps.list"}) {
        Save(list, "[Default Applications]\ninode/directory=mine.desktop\n");
        Publish({"flac"});
        EXPECT_EQ(Text("config/mimeapps.list").find("files.desktop"), std::string::npos) << list;
        fs::remove(At(list));
        fs::remove(At("config/mimeapps.list"));
    }
}

TEST_F(PublicationTest, AListOfADesktopChangesOnlyWhereItNamesADefault) {
    folders_.desktops = {"one", "two", "three"};
    Save("config/one-mimeapps.list", "[Default Applications]\naudio/flac=a.desktop\n");
    Save("config/two-mimeapps.list", "[Default Applications]\ntext/plain=b.desktop\n");
    Publish({"flac", "mp3"});
    EXPECT_EQ(Text("config/one-mimeapps.list"),
              "[Default Applications]\naudio/flac=that.desktop;a.desktop\n");
    EXPECT_EQ(Text("config/two-mimeapps.list"), "[Default Applications]\ntext/plain=b.desktop\n");
    EXPECT_FALSE(fs::exists(At("config/three-mimeapps.list")));
}

TEST_F(PublicationTest, RemovedOnesComeBack) {
    Save("config/mimeapps.list",
         "[Removed Associations]\naudio/flac=that.desktop;\n"
         "inode/directory=that_folder.desktop;x.desktop;\n");
    Publish({"flac"});
    EXPECT_EQ(Text("config/mimeapps.list"),
              "[Removed Associations]\ninode/directory=x.desktop;\n\n"
              "[Default Applications]\naudio/flac=that.desktop\n");
}

class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        const char* const old = getenv(name);
        old_ = old != nullptr ? std::optional<std::string>(old) : std::nullopt;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() {
        if (old_) {
            setenv(name_, old_->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> old_;
};

std::vector<RegistryValue> RegistryOf(std::u16string extension) {
    return {{u"." + extension, u"X"},
            {u"X\\shell\\open", u"Play"},
            {u"X\\shell\\open\\command", u"\"/bin/sh\" \"%1\""}};
}

TEST_F(PublicationTest, TheNewestIsDoneWhenTheEndHasBeenWaitedFor) {
    const Variable data("XDG_DATA_HOME", At("data"));
    const Variable config("XDG_CONFIG_HOME", At("config"));
    {
        Associations associations(kThatPlayer);
        associations.Publish(RegistryOf(u"flac"));
        associations.Publish({});
        associations.Publish(RegistryOf(u"q1z"));
        associations.Publish(RegistryOf(u"q2z"));
    }
    EXPECT_NE(
        Text("data/applications/that.desktop").find("\nMimeType=application/x-extension-q2z;\n"),
        std::string::npos);
    EXPECT_FALSE(fs::exists(At("data/applications/that_folder.desktop")));
}

// The tool waits for what is only written when Publish has returned.
TEST_F(PublicationTest, ItsCallerDoesNotWait) {
    const Variable data("XDG_DATA_HOME", At("data"));
    const Variable config("XDG_CONFIG_HOME", At("config"));
    const Variable machine("XDG_DATA_DIRS", At("machine"));  // types, but no opener of folders
    fs::create_directories(At("machine"));
    fs::create_directory_symlink("/usr/share/mime", At("machine/mime"));
    const Variable path("PATH", At("tools") + ":" + getenv("PATH"));
    const std::string tool = "tools/update-desktop-database";
    Save(tool, "#!/bin/sh\nuntil test -e '" + At("returned") +
                   "'; do sleep 0.01; done\necho it >'" + At("ended") + "'\n");
    fs::permissions(At(tool), fs::perms::owner_all);
    {
        Associations associations(kThatPlayer);
        associations.Publish(RegistryOf(u"flac"));
        EXPECT_FALSE(fs::exists(At("ended")));
        Save("returned", "");
    }
    EXPECT_EQ(Text("ended"), "it\n");
    EXPECT_EQ(Text("config/mimeapps.list"), "[Default Applications]\naudio/flac=that.desktop\n");
}

}  // namespace
