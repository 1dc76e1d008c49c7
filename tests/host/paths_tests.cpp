#include "host/paths.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

TEST(Paths, RelativeOnesStartAtTheSendersFolder) {
    EXPECT_EQ(AbsolutePath("a.mp3", "/music/new"), "/music/new/a.mp3");
    EXPECT_EQ(AbsolutePath("./a.mp3", "/music"), "/music/a.mp3");
    EXPECT_EQ(AbsolutePath("../a.mp3", "/music/new"), "/music/a.mp3");
    EXPECT_EQ(AbsolutePath(".", "/music"), "/music");
    EXPECT_EQ(AbsolutePath("-x", "/"), "/-x");
}

TEST(Paths, AbsoluteOnesStandAlone) {
    EXPECT_EQ(AbsolutePath("/a/b.mp3", "/music"), "/a/b.mp3");
    EXPECT_EQ(AbsolutePath("/", "/music"), "/");
    EXPECT_EQ(AbsolutePath("//a///b/", "/music"), "/a/b");
    EXPECT_EQ(AbsolutePath("/a/./b/../c", "/music"), "/a/c");
    EXPECT_EQ(AbsolutePath("/../../a", "/music"), "/a");
    EXPECT_EQ(AbsolutePath("/a/..", "/music"), "/");
}

TEST(Paths, NamesThatOnlyLookLikeDotsStay) {
    EXPECT_EQ(AbsolutePath("/a/.../..b/c..", "/"), "/a/.../..b/c..");
}

TEST(Paths, WhatIsAboveALinkIsLeftToTheSystem) {
    const ScratchFolder scratch;
    ASSERT_TRUE(MakeFolder(scratch.Path("there/below")));
    ASSERT_TRUE(MakeFolder(scratch.Path("here/folder")));
    std::ofstream(scratch.Path("there/song")) << "there";
    std::ofstream(scratch.Path("here/song")) << "here";
    std::filesystem::create_directory_symlink("../there/below", scratch.Path("here/link"));
    const auto seen = [&](const std::string& path) {
        return AbsolutePath(path, scratch.Path("here"));
    };
    EXPECT_EQ(seen("link/../song"), scratch.Path("here/link/../song"));
    EXPECT_TRUE(std::filesystem::equivalent(seen("link/../song"), scratch.Path("there/song")));
    EXPECT_EQ(seen("./link//.././../here/song"), scratch.Path("here/link/../../here/song"));
    EXPECT_EQ(seen("link/../below/../song"), scratch.Path("here/link/../song"));
    EXPECT_EQ(seen("folder/../song"), scratch.Path("here/song"));
    EXPECT_EQ(seen("link/song"), scratch.Path("here/link/song"));
    std::filesystem::create_symlink("nowhere", scratch.Path("here/dead"));
    EXPECT_EQ(seen("dead/../song"), scratch.Path("here/dead/../song"));
    // From within the folder that the link leads to.
    EXPECT_EQ(AbsolutePath("../song", scratch.Path("here/link")),
              scratch.Path("here/link/../song"));
}

TEST(Paths, TheFolderOfANameIsInFrontOfIt) {
    EXPECT_EQ(FolderOf("/a/b"), "/a");
    EXPECT_EQ(FolderOf("/a"), "/");
    EXPECT_EQ(FolderOf("/"), "/");
}

TEST(Paths, BytesStayAsTheyAre) {
    EXPECT_EQ(AbsolutePath("b\xE9 \"q\"\n.mp3", "/m\xFF"), "/m\xFF/b\xE9 \"q\"\n.mp3");
}

TEST(Paths, CommandLineAlwaysQuotes) {
    EXPECT_EQ(CommandLine("/add me.mp3", false), "\"/add me.mp3\"");
    EXPECT_EQ(CommandLine("/music", true), "/ADD \"/music\"");
    EXPECT_EQ(CommandLine("/a\"", false), "\"/a\"\"");
}

TEST(Paths, ALineThatPlaysCanAddInstead) {
    EXPECT_FALSE(IsAdding(CommandLine("/add me.mp3", false)));
    EXPECT_TRUE(IsAdding(CommandLine("/a.mp3", true)));
    EXPECT_EQ(Adding(CommandLine("/a.mp3", false)), CommandLine("/a.mp3", true));
    EXPECT_EQ(Adding(CommandLine("/a.mp3", true)), CommandLine("/a.mp3", true));
    EXPECT_FALSE(IsAdding(LineOfNothing(false)));
    EXPECT_TRUE(IsAdding(LineOfNothing(true)));
}

TEST(Paths, ConfigurationFolderOfTheUser) {
    const EnvironmentValue home("HOME", "/home/ann");
    {
        const EnvironmentValue configuration("XDG_CONFIG_HOME", "/conf/");
        EXPECT_EQ(DefaultDirectory(), "/conf/veldrin");
    }
    {
        const EnvironmentValue configuration("XDG_CONFIG_HOME", "conf");
        EXPECT_EQ(DefaultDirectory(), "/home/ann/.config/veldrin");
    }
    const EnvironmentValue configuration("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(DefaultDirectory(), "/home/ann/.config/veldrin");
}

TEST(Paths, AFolderOfTheRootHasOneSeparator) {
    const EnvironmentValue configuration("XDG_CONFIG_HOME", "/");
    EXPECT_EQ(DefaultDirectory(), "/veldrin");
}

TEST(Paths, WithoutAHomeInTheEnvironmentItIsThatOfTheAccount) {
    const passwd* account = getpwuid(geteuid());
    ASSERT_NE(account, nullptr);
    const std::string home = account->pw_dir;
    const EnvironmentValue configuration("XDG_CONFIG_HOME", std::nullopt);
    for (const std::optional<std::string>& value : {std::optional<std::string>(), {"home/ann"}}) {
        const EnvironmentValue variable("HOME", value);
        EXPECT_EQ(DefaultDirectory(), AbsolutePath(".config/veldrin", home));
    }
}

TEST(Paths, TheUserGuideIsThatOfTheProgram) {
    const ScratchFolder scratch;
    const std::string root = scratch.Path("root");
    const auto put = [](const std::filesystem::path& path) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "a guide";
    };
    const std::filesystem::path program = root + "/opt/a/b/c/d/bin/veldrin";
    const std::string folder = program.parent_path();
    const std::string installed = AbsolutePath(GUIDE, folder);
    const std::string built = AbsolutePath(SOURCE_GUIDE, folder);
    ASSERT_TRUE(installed.starts_with(root));
    ASSERT_TRUE(built.starts_with(root));
    EXPECT_EQ(UserGuide(program), installed);
    put(built);
    EXPECT_EQ(UserGuide(program), built);
    std::filesystem::create_directories(installed);
    EXPECT_EQ(UserGuide(program), built);
    std::filesystem::remove(installed);
    put(installed);
    EXPECT_EQ(UserGuide(program), installed);
}

TEST(Paths, CacheFolderOfTheUser) {
    const EnvironmentValue home("HOME", "/home/ann");
    {
        const EnvironmentValue cache("XDG_CACHE_HOME", "/cache");
        EXPECT_EQ(CacheFolder(), "/cache/veldrin");
    }
    const EnvironmentValue cache("XDG_CACHE_HOME", std::nullopt);
    EXPECT_EQ(CacheFolder(), "/home/ann/.cache/veldrin");
}

TEST(Paths, DataFolderOfTheUser) {
    const EnvironmentValue home("HOME", "/home/ann");
    {
        const EnvironmentValue data("XDG_DATA_HOME", "/data");
        EXPECT_EQ(DataFolder(), "/data/veldrin");
    }
    const EnvironmentValue data("XDG_DATA_HOME", std::nullopt);
    EXPECT_EQ(DataFolder(), "/home/ann/.local/share/veldrin");
}

TEST(Paths, StateFolderOfTheUser) {
    const EnvironmentValue home("HOME", "/home/ann");
    {
        const EnvironmentValue state("XDG_STATE_HOME", "/state");
        EXPECT_EQ(StateFolder(), "/state/veldrin");
    }
    const EnvironmentValue state("XDG_STATE_HOME", std::nullopt);
    EXPECT_EQ(StateFolder(), "/home/ann/.local/state/veldrin");
}

TEST(Paths, FoldersAreMadeForTheOwnerOnly) {
    const ScratchFolder scratch;
    EXPECT_TRUE(MakeFolder(scratch.Path("a/b/c")));
    EXPECT_EQ(RightsOf(scratch.Path("a")), 0700U);
    EXPECT_EQ(RightsOf(scratch.Path("a/b/c")), 0700U);
    EXPECT_TRUE(MakeFolder(scratch.Path("a/b/c")));
    std::ofstream(scratch.Path("file")) << "x";
    EXPECT_FALSE(MakeFolder(scratch.Path("file")));
    EXPECT_FALSE(MakeFolder(scratch.Path("file/d")));
}

TEST(Paths, RuntimeFolderOfTheSession) {
    const ScratchFolder session;  // mkdtemp makes it 0700
    const ScratchFolder tmp;
    const EnvironmentValue runtime("XDG_RUNTIME_DIR", session.Path());
    EXPECT_EQ(RuntimeFolder(tmp.Path()), session.Path());
    EXPECT_TRUE(std::filesystem::is_empty(tmp.Path()));
}

TEST(Paths, RuntimeFolderFallsBackToOneOfItsOwn) {
    const ScratchFolder tmp;
    const std::string own = tmp.Path("veldrin-" + std::to_string(geteuid()));
    const ScratchFolder open;
    chmod(open.Path().c_str(), 0755);
    const ScratchFolder deep;
    const std::string longName = deep.Path(std::string(80, 'x'));
    ASSERT_TRUE(MakeFolder(longName));
    for (const std::string& unfit :
         {std::string("relative"), open.Path(), longName, std::string("/nonexistent/folder")}) {
        const EnvironmentValue runtime("XDG_RUNTIME_DIR", unfit);
        EXPECT_EQ(RuntimeFolder(tmp.Path()), own) << unfit;
        EXPECT_EQ(RightsOf(own), 0700U);
    }
}

TEST(Paths, RuntimeFolderLaidOutBySomebodyElseIsRefused) {
    const EnvironmentValue runtime("XDG_RUNTIME_DIR", std::nullopt);
    const ScratchFolder tmp;
    const ScratchFolder elsewhere;
    const std::string own = tmp.Path("veldrin-" + std::to_string(geteuid()));
    std::filesystem::create_directory_symlink(elsewhere.Path(), own);
    EXPECT_EQ(RuntimeFolder(tmp.Path()), std::nullopt);
    std::filesystem::remove(own);
    std::filesystem::create_directory(own);
    chmod(own.c_str(), 0770);
    EXPECT_EQ(RuntimeFolder(tmp.Path()), std::nullopt);
    chmod(own.c_str(), 0700);
    EXPECT_EQ(RuntimeFolder(tmp.Path()), own);
}

TEST(Paths, RuntimeFolderLeavesRoomForANameInASocketsAddress) {
    // An address has 108 bytes, and 40 are for the name.
    constexpr std::size_t kLongest = 68;
    const ScratchFolder tmp;
    const std::string own = tmp.Path("veldrin-" + std::to_string(geteuid()));
    const ScratchFolder deep;
    for (const std::size_t size : {kLongest, kLongest + 1}) {
        const std::string folder = deep.Path(std::string(size - deep.Path().size() - 1, 'x'));
        ASSERT_TRUE(MakeFolder(folder));
        const EnvironmentValue runtime("XDG_RUNTIME_DIR", folder);
        EXPECT_EQ(RuntimeFolder(tmp.Path()), size == kLongest ? folder : own);
    }
}

TEST(Paths, RuntimeFolderOfAnotherUserIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "takes the right to give a folder away";
    }
    constexpr uid_t kNobody = 65534;
    const ScratchFolder session;
    ASSERT_EQ(chown(session.Path().c_str(), kNobody, kNobody), 0);
    const ScratchFolder tmp;
    const EnvironmentValue runtime("XDG_RUNTIME_DIR", session.Path());
    EXPECT_EQ(RuntimeFolder(tmp.Path()), tmp.Path("veldrin-0"));
}

TEST(Paths, OneDirectoryHasOneInstanceName) {
    const ScratchFolder scratch;
    ASSERT_TRUE(MakeFolder(scratch.Path("a")));
    ASSERT_TRUE(MakeFolder(scratch.Path("b")));
    std::filesystem::create_directory_symlink("a", scratch.Path("link"));
    const std::string name = InstanceName(scratch.Path("a"));
    EXPECT_EQ(name.size(), std::string("veldrin-0123456789abcdef").size());
    EXPECT_EQ(InstanceName(scratch.Path("link")), name);
    EXPECT_EQ(InstanceName(scratch.Path("b/../a")), name);
    EXPECT_NE(InstanceName(scratch.Path("b")), name);
}

}  // namespace
}  // namespace veldrin
