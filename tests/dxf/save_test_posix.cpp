// Saving on systems with links, device files and rights of a file.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/sys/temporary_files_posix.h"

#include "save_fixture.h"

namespace {

using namespace test;
namespace fs = std::filesystem;

TEST_F(Save, RightsAreKept) {
    const fs::path file = folder / "part.dxf";
    Put(file, "old");
    fs::permissions(file, fs::perms(0640));
    ASSERT_TRUE(To(file).ok());
    EXPECT_EQ(bytes, FileContent(file));
    EXPECT_EQ(fs::perms(0640), fs::status(file).permissions());
}

TEST_F(Save, LinksAreFollowed) {
    fs::create_directory(folder / "real");
    Put(folder / "real" / "part.dxf", "old");
    fs::create_symlink("real/part.dxf", folder / "link.dxf");
    fs::create_symlink("link.dxf", folder / "chain.dxf");
    fs::create_symlink("real/fresh.dxf", folder / "dangling.dxf");
    fs::create_symlink("circle.dxf", folder / "circle.dxf");
    ASSERT_TRUE(To(folder / "chain.dxf").ok());
    EXPECT_TRUE(fs::is_symlink(folder / "chain.dxf"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.dxf"));
    EXPECT_EQ(bytes, FileContent(folder / "real" / "part.dxf"));
    ASSERT_TRUE(To(folder / "dangling.dxf").ok());
    EXPECT_EQ(bytes, FileContent(folder / "real" / "fresh.dxf"));
    EXPECT_FALSE(To(folder / "circle.dxf").ok());
}

// What a process leaves that dies between naming its new file and moving it into its place.
TEST_F(Save, WhatDeadProcessesLeftIsSwept) {
    const std::string inside = folder.string() + "/";
    const ::pid_t child = ::fork();
    if (child == 0) {
        Put(host::NewTemporaryName(inside), "half");
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    const std::string own = host::NewTemporaryName(inside);
    Put(own, "being written");
    const std::string others[] = {".save-another_machine-1-1", ".save-", ".save-x", "save-1-1"};
    for (const std::string& other : others) Put(folder / other, "not ours");
    ASSERT_EQ(6u, FilesInFolder());
    ASSERT_TRUE(To(folder / "part.dxf").ok());
    EXPECT_EQ(6u, FilesInFolder());  // one less, and the drawing
    EXPECT_TRUE(fs::exists(own));
    for (const std::string& other : others) EXPECT_TRUE(fs::exists(folder / other)) << other;
}

TEST_F(Save, FullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "the system has no full device";
    const auto result = To("/dev/full");
    EXPECT_EQ(Acad::eFileSystemErr, result.status);
    EXPECT_EQ("/dev/full: cannot be written: No space left on device", result.message);
}

// The superuser may write everywhere, so the attempt is made as somebody else, in another process.
TEST_F(Save, ReadOnlyFolderAndFile) {
    constexpr ::uid_t kNobody = 65534;
    const fs::path file = folder / "part.dxf";
    Put(file, "old");
    fs::permissions(file, fs::perms(0444));
    fs::permissions(folder, fs::perms(0755));
    const auto refused = [&](const fs::path& path) {
        if (::geteuid() == 0 && ::setuid(kNobody) != 0) ::_exit(2);
        ::_exit(To(path).status == Acad::eFileAccessErr ? 0 : 1);
    };
    EXPECT_EXIT(refused(file), testing::ExitedWithCode(0), "");
    EXPECT_EQ("old", FileContent(file));
    // The file may be written, but nothing can be put beside it.
    fs::permissions(file, fs::perms(0666));
    fs::permissions(folder, fs::perms(0555));
    EXPECT_EXIT(refused(file), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(refused(folder / "new.dxf"), testing::ExitedWithCode(0), "");
    fs::permissions(folder, fs::perms(0755));
    EXPECT_EQ("old", FileContent(file));
    EXPECT_EQ(1u, FilesInFolder());
}

}  // namespace
