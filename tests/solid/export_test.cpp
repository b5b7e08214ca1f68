// The export operations of both dialogs, on drawings without a window.
#include "StdAfx.h"

#include "EnvelopeAxis.h"
#include "EnvelopeExport.h"
#include "EraseEntity.h"
#include "RevolveSolid.h"
#include "SatExport.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "host/base/format.h"
#include "host/solid/revolve.h"
#include "sat_reader.h"
#include "support/scratch.h"
#include "support/test_drawing.h"

namespace {

// What the save dialog was offered, and what it answers.
CString g_offered, g_answer;

int SolidFaces(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    sat::File file;
    if (!sat::Parse(text.str(), file).empty()) return 0;
    const sat::Audit audit = sat::Check(file);
    return audit.faults.empty() ? audit.faces : -1;
}

class Export : public testing::Test {
protected:
    Export() {
        host::solid::InstallModeller();
        g_offered = _T("not asked");
        g_answer = test::Widen(Path()).c_str();
        std::remove(Path().c_str());
    }
    ~Export() override { std::remove(Path().c_str()); }

    static std::string Path() { return test::ScratchFolder() + "qz_export_test.sat"; }

    // "x y" lines of model space by class, to see what is left.
    static std::string Classes(test::TestDrawing& drawing) {
        std::istringstream lines(drawing.Dump());
        std::string out, line, handle, name;
        while (std::getline(lines, line)) {
            std::istringstream words(line);
            words >> handle >> name;
            out += (out.empty() ? "" : " ") + name;
        }
        return out;
    }

    static std::vector<SToolFrame> Frames() {
        const auto frame = [](const ACHAR* number, double left, double right) {
            SToolFrame made;
            made.m_strNumber = number;
            made.m_rect = CQZRect(AcGePoint3d(left, -50, 0), AcGePoint3d(right, 50, 0));
            return made;
        };
        return {frame(_T("0001"), 500, 900), frame(_T("0002"), -50, 50),
                frame(_T("0003"), -90, 90)};
    }
};

}  // namespace

CString AskSatPath(const CString& strDefaultName, CWnd*) {
    g_offered = strDefaultName;
    return g_answer;
}

TEST_F(Export, OneEnvelopeByDialog) {
    const char* const kGood = "P 0,0 20,0 20,5 0,5 c";
    struct {
        const char* name;
        const char* envelope;
        bool cancel, badPath, deleteEnvelope, deleteSolid;
        const ACHAR* failure;
        const char* left;
        bool written;
    } const kCases[] = {
        {"done", kGood, false, false, false, true, nullptr, "AcDbPolyline", true},
        {"done, all stays", kGood, false, false, false, false, nullptr, "AcDbPolyline AcDb3dSolid",
         true},
        {"done, nothing stays", kGood, false, false, true, true, nullptr, "", true},
        {"cancelled", kGood, true, false, false, true, nullptr, "AcDbPolyline", false},
        {"cancelled, nothing stays", kGood, true, false, true, true, nullptr, "", false},
        {"no such folder", kGood, false, true, false, true, _T("0002生成失败"), "AcDbPolyline",
         false},
        {"open", "P 0,0 20,0 20,5 0,5", false, false, false, true, _T("0002生成三维实体失败"),
         "AcDbPolyline", false},
        {"crossing itself", "P 0,0 20,5 20,0 0,5 c", false, false, false, true,
         _T("0002生成三维实体失败"), "AcDbPolyline", false},
        {"crossing itself, erased", "P 0,0 20,5 20,0 0,5 c", false, false, true, true,
         _T("0002生成三维实体失败"), "", false}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::remove(Path().c_str());
        test::TestDrawing drawing(c.envelope);
        g_answer = c.cancel
                       ? CString()
                       : CString(test::Widen(c.badPath ? "/no/such/folder/a.sat" : Path()).c_str());
        SExportCleanUp cleanUp;
        cleanUp.m_bEnvelope = c.deleteEnvelope;
        cleanUp.m_bSolid = c.deleteSolid;
        std::vector<CString> failures;
        ExportEnvelopeSolid(drawing.ids()[0], AcGePoint3d(7, 0, 0), cleanUp, Frames(), nullptr,
                            failures);
        if (c.failure == nullptr)
            EXPECT_TRUE(failures.empty());
        else
            EXPECT_TRUE(failures.size() == 1 && failures[0] == c.failure);
        EXPECT_EQ(Classes(drawing), c.left);
        EXPECT_EQ(SolidFaces(Path()), c.written ? 3 : 0);
    }
    EXPECT_TRUE(g_offered == _T("0002"));
}

TEST_F(Export, WithoutEnvelopeNothingIsAsked) {
    test::TestDrawing drawing;
    std::vector<CString> failures;
    ExportEnvelopeSolid(AcDbObjectId::kNull, AcGePoint3d(), SExportCleanUp(), Frames(), nullptr,
                        failures);
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_TRUE(failures[0] == _T("请先计算包络线"));
    EXPECT_TRUE(g_offered == _T("not asked"));
}

TEST_F(Export, ToolOfABatch) {
    const std::string folder = test::ScratchFolder().substr(0, test::ScratchFolder().size() - 1);
    struct {
        const char* name;
        const char* envelope;
        const char* folder;
        bool cancel;
        E_ExportResult result;
        const char* left;
    } const kCases[] = {
        {"into a folder", "P 0,0 20,0 20,5 0,5 c", folder.c_str(), false, E_Export_Done,
         "AcDbPolyline"},
        {"asked", "P 0,0 20,0 20,5 0,5 c", "", false, E_Export_Done, "AcDbPolyline"},
        {"asked and cancelled", "P 0,0 20,0 20,5 0,5 c", "", true, E_Export_Cancelled,
         "AcDbPolyline"},
        {"no such folder", "P 0,0 20,0 20,5 0,5 c", "/no/such/folder", false, E_Export_NotSaved,
         "AcDbPolyline"},
        {"crossing the axis", "P 0,-1 20,-1 20,5 0,5 c", folder.c_str(), false, E_Export_NoSolid,
         "AcDbPolyline"}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        std::remove(Path().c_str());
        test::TestDrawing drawing(c.envelope);
        const AcDbObjectId layer = drawing.db().clayer();
        g_answer = c.cancel ? CString() : CString(test::Widen(Path()).c_str());
        EXPECT_EQ(ExportToolSolid(drawing.ids()[0], AcGePoint3d(7, 0, 0), _T("qz_export_test"),
                                  test::Widen(c.folder).c_str()),
                  c.result);
        EXPECT_EQ(Classes(drawing), c.left);
        EXPECT_EQ(SolidFaces(Path()), c.result == E_Export_Done ? 3 : 0);
        EXPECT_TRUE(drawing.db().clayer() == layer);
    }
}

// Within a run only what is new is looked at; nothing is left all the same, whatever came between.
TEST_F(Export, RunOfManyTools) {
    const CString folder = test::Widen(test::ScratchFolder()).c_str();
    const auto tool = [&](const test::TestDrawing& drawing, int i, const CString& where) {
        return ExportToolSolid(drawing.ids()[i], AcGePoint3d(), _T("qz_export_test"), where);
    };
    test::TestDrawing drawing(
        "P 0,0 20,0 20,5 0,5 c | P 30,0 50,0 50,5 30,5 c | L 0,9 9,9 | L@EncircleLine3D 0,20 9,20");
    const std::string both = "AcDbPolyline AcDbPolyline";
    g_answer = CString();
    {
        const CExportRun run;
        EXPECT_EQ(tool(drawing, 1, folder), E_Export_Done);
        EXPECT_EQ(Classes(drawing), both + " AcDbLine") << "what lay there goes with the first";
        EXPECT_EQ(tool(drawing, 0, CString()), E_Export_Cancelled);
        EXPECT_EQ(Classes(drawing), both + " AcDbLine") << "a cancelled one leaves nothing";
        ASSERT_TRUE(EraseById(drawing.ids()[2]));  // the entity up to which the layer was empty
        EXPECT_EQ(tool(drawing, 1, folder), E_Export_Done);
        EXPECT_EQ(Classes(drawing), both);
    }
    EXPECT_EQ(tool(drawing, 1, folder), E_Export_Done);
    EXPECT_EQ(Classes(drawing), both);
}

// The closing edge's axis point is the ring's first vertex; a drawing without an envelope that
// exists says so; a failed write leaves the file that was there.
TEST_F(Export, AxisPointOfTheClosingEdge) {
    const struct {
        const char* envelope;
        double x;
    } cases[] = {{"P 0,0 0,5 20,5 30,0 c", 0.0},  // closed from (30,0) to the first vertex
                 {"P 5,0 40,0 40,5 5,5 c", 5.0},  // the first of two that are as long
                 {"P 40,0 40,5 10,5 0,0 c", 40.0}};
    for (const auto& c : cases) {
        test::TestDrawing drawing(c.envelope);
        AcGePoint3d point(-1, -1, -1);
        AcGeVector3d along;
        ASSERT_TRUE(GetEnvelopeAxis(drawing.ids()[0], point, along));
        EXPECT_EQ(c.x, point.x) << c.envelope;
        EXPECT_EQ(0.0, point.y);
        EXPECT_EQ(AcGeVector3d(1, 0, 0), along);
    }
}

TEST_F(Export, OverAFileAndIntoAnyFolder) {
    const std::filesystem::path folder =
        std::filesystem::u8path(test::ScratchFolder()) / std::filesystem::u8path("导出");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    test::TestDrawing drawing("P 0,0 20,0 20,5 0,5 c");
    const CString path((host::Widen(folder.u8string()) + L"/刀具.sat").c_str());
    for (int i = 0; i < 2; ++i) {
        const AcDbObjectId id = RevolveEnvelope(drawing.ids()[0], AcGePoint3d());
        EXPECT_TRUE(WriteSat(path, id));
        EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder), {}));
    }
    const auto size = std::filesystem::file_size(folder / std::filesystem::u8path("刀具.sat"));
    EXPECT_FALSE(WriteSat(path, drawing.ids()[0])) << "no solid";
    EXPECT_EQ(size, std::filesystem::file_size(folder / std::filesystem::u8path("刀具.sat")));
    // A folder of that name: nothing is written, nothing left beside it.
    const CString taken(host::Widen(folder.u8string()).c_str());
    EXPECT_FALSE(WriteSat(taken, RevolveEnvelope(drawing.ids()[0], AcGePoint3d())));
    std::filesystem::remove_all(folder);
}

TEST_F(Export, ReasonsOfFailures) {
    const struct {
        const char* envelope;
        const char* word;
    } cases[] = {{"P 0,0 20,0 20,5 0,5", "未闭合"},
                 {"P 0,-1 20,-1 20,5 0,5 c", "越过轴线"},
                 {"P 0,0 20,5 20,0 0,5 c", "自相交"}};
    for (const auto& c : cases) {
        test::TestDrawing drawing(c.envelope);
        const CString reason = GetExportReason(E_Export_NoSolid, drawing.ids()[0], 0.0);
        EXPECT_NE(std::string::npos, host::Narrow(reason.GetString()).find(c.word)) << c.envelope;
    }
    test::TestDrawing drawing("P 0,0 20,0 20,5 0,5 c");
    EXPECT_TRUE(GetExportReason(E_Export_Done, drawing.ids()[0], 0.0).IsEmpty());
    {
        AcDbEntityPointer entity(drawing.ids()[0], AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, entity->erase());
    }
    std::vector<CString> failures;
    EXPECT_EQ(E_Export_NoEnvelope, ExportEnvelopeSolid(drawing.ids()[0], AcGePoint3d(), {},
                                                       Frames(), nullptr, failures));
    EXPECT_EQ(E_Export_NoEnvelope,
              ExportToolSolid(drawing.ids()[0], AcGePoint3d(), _T("x"), _T("/tmp")));
}

TEST_F(Export, ThroughARegion) {
    const double turn = 8.0 * std::atan(1.0);
    for (const char* curve :
         {"P 0,0 20,0 20,5 0,5 c", "H 0,0 20,0 20,5 0,5 c", "P 0,0 10,0(1) c"}) {
        SCOPED_TRACE(curve);
        test::TestDrawing drawing(curve);
        const std::string before = Classes(drawing);
        const AcDbObjectId id =
            RevolveThroughRegion(drawing.ids()[0], AcGePoint3d(), AcGeVector3d(1, 0, 0), turn);
        EXPECT_EQ(Classes(drawing), before + " AcDb3dSolid");
        EXPECT_TRUE(WriteSat(g_answer, id));
        EXPECT_GT(SolidFaces(Path()), 0);
    }
    for (const char* curve :
         {"P 0,0 20,0 20,5 0,5", "P 0,0 20,5 20,0 0,5 c", "L 0,0 20,0", "T 0,0 x"}) {
        SCOPED_TRACE(curve);
        test::TestDrawing drawing(curve);
        const std::string before = Classes(drawing);
        EXPECT_TRUE(
            RevolveThroughRegion(drawing.ids()[0], AcGePoint3d(), AcGeVector3d(1, 0, 0), turn)
                .isNull());
        EXPECT_EQ(Classes(drawing), before);
    }
}
