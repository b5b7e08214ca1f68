// Saving leaves either the old file or the new one, never a part, and says why it failed.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "drawing_text.h"
#include "support/scratch.h"

namespace {

using namespace test;
namespace fs = std::filesystem;

class Save : public testing::Test {
protected:
    Save() { EXPECT_TRUE(drawing.result.ok()) << drawing.result.message; }
    host::dxf::Result To(const fs::path& path) {
        host::dxf::Report report;
        return host::dxf::WriteFile(drawing.db, path.string(), report);
    }
    void Put(const fs::path& path, const std::string& text) {
        std::ofstream(path, std::ios::binary) << text;
    }
    std::size_t FilesInFolder() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    const std::string bytes = Lines(Section("ENTITIES", Line("A1")) + "0|EOF");
    Loaded drawing{bytes};
    const TempFolder temp;
    const fs::path folder = temp.path;
};

TEST_F(Save, NewAndExistingFiles) {
    const fs::path file = folder / "part.dxf";
    ASSERT_TRUE(To(file).ok());
    EXPECT_EQ(bytes, FileContent(file));
    Put(file, "old");
    fs::permissions(file, fs::perms(0640));
    ASSERT_TRUE(To(file).ok());
    EXPECT_EQ(bytes, FileContent(file));
    EXPECT_EQ(fs::perms(0640), fs::status(file).permissions());
    EXPECT_EQ(1u, FilesInFolder());
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

TEST_F(Save, FullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "the system has no full device";
    const auto result = To("/dev/full");
    EXPECT_EQ(Acad::eFileSystemErr, result.status);
    EXPECT_EQ("/dev/full: cannot be written: No space left on device", result.message);
}

TEST_F(Save, MissingFolder) {
    const auto result = To(folder / "none" / "part.dxf");
    EXPECT_EQ(Acad::eFileNotFound, result.status);
    EXPECT_THAT(result.message, testing::EndsWith("cannot be written: No such file or directory"));
    EXPECT_EQ(Acad::eFileAccessErr, To(folder).status);
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

// A number that is none must not reach a file: other programs would refuse all of it.
TEST_F(Save, ValueThatIsNoNumber) {
    AcDbLine* line = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(line, drawing.Id(0xA1), AcDb::kForWrite));
    const double none = std::numeric_limits<double>::quiet_NaN();
    ASSERT_EQ(Acad::eOk, line->setEndPoint(AcGePoint3d(none, 0, 0)));
    ASSERT_EQ(Acad::eOk, line->close());
    Put(folder / "part.dxf", "old");
    const auto result = To(folder / "part.dxf");
    EXPECT_EQ(Acad::eInvalidInput, result.status);
    EXPECT_THAT(result.message, testing::EndsWith("object A1 holds a value that is not a number"));
    EXPECT_EQ("old", FileContent(folder / "part.dxf"));
}

// The database's own functions, with the paths that the plug-in's host uses.
TEST_F(Save, ThroughTheDatabase) {
    host::dxf::Install();
    Put(folder / "part.dxf", bytes);
    std::wstring path = (folder / "part.dxf").wstring();
    AcDbDatabase db(false, true);
    ASSERT_EQ(Acad::eOk, db.readDwgFile(path.c_str()));
    path = (folder / "copy.dxf").wstring();
    std::replace(path.begin(), path.end(), L'/', L'\\');
    ASSERT_EQ(Acad::eOk, db.dxfOut(path.c_str()));
    EXPECT_EQ(bytes, FileContent(folder / "copy.dxf"));
    AcDbDatabase missing(false, true);
    EXPECT_EQ(Acad::eFileNotFound, missing.dxfIn(L"no\\such.dxf"));
    EXPECT_EQ("no/such.dxf: cannot be read: No such file or directory",
              host::dxf::LastCallOfThread().result.message);
}

}  // namespace
