// Saving leaves either the old file or the new one, never a part, and says why it failed.
#include "save_fixture.h"

namespace {

using namespace test;
namespace fs = std::filesystem;

TEST_F(Save, NewAndExistingFiles) {
    const fs::path file = folder / "part.dxf";
    ASSERT_TRUE(To(file).ok());
    EXPECT_EQ(bytes, FileContent(file));
    Put(file, "old");
    ASSERT_TRUE(To(file).ok());
    EXPECT_EQ(bytes, FileContent(file));
    EXPECT_EQ(1u, FilesInFolder());
}

TEST_F(Save, MissingFolder) {
    const auto result = To(folder / "none" / "part.dxf");
    EXPECT_EQ(Acad::eFileNotFound, result.status);
    EXPECT_THAT(result.message, testing::EndsWith("cannot be written: No such file or directory"));
    EXPECT_EQ(Acad::eFileAccessErr, To(folder).status);
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
