// The host's own calls: revolving curves and regions, regions from curves, writing SAT.
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include <gmock/gmock.h>

#include "host/dxf/dxf_file.h"
#include "host/solid/revolve.h"
#include "sat_reader.h"
#include "support/scratch.h"
#include "support/test_drawing.h"

using ::testing::IsEmpty;

namespace {

constexpr double kPi = 3.14159265358979323846;
const AcGeVector3d kAlongX(1, 0, 0);

std::string ReadFile(const std::string& path) {
    std::ifstream in(std::filesystem::u8path(path), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

sat::Audit ReadSat(const std::string& text) {
    sat::File file;
    const std::string error = sat::Parse(text, file);
    EXPECT_EQ(error, "");
    return error.empty() ? sat::Check(file) : sat::Audit();
}

class Modelling : public testing::Test {
protected:
    Modelling() { host::solid::InstallModeller(); }

    static Acad::ErrorStatus Revolve(test::TestDrawing& drawing, int index, AcDb3dSolid& solid,
                                     const AcGePoint3d& axisPoint = {},
                                     const AcGeVector3d& axis = kAlongX, double angle = 2.0 * kPi) {
        AcDbObjectPointer<AcDbEntity> profile(drawing.ids()[index], AcDb::kForRead);
        AcDbRevolveOptions options;
        return solid.createRevolvedSolid(profile.object(), axisPoint, axis, angle, 0.0, options);
    }

    static Acad::ErrorStatus Regions(test::TestDrawing& drawing,
                                     std::vector<std::unique_ptr<AcDbRegion>>& regions) {
        std::vector<std::unique_ptr<AcDbObjectPointer<AcDbEntity>>> open;
        AcDbVoidPtrArray curves, made;
        for (int i = 0; i < drawing.ids().length(); ++i) {
            open.push_back(
                std::make_unique<AcDbObjectPointer<AcDbEntity>>(drawing.ids()[i], AcDb::kForRead));
            curves.append(open.back()->object());
        }
        const Acad::ErrorStatus es = AcDbRegion::createFromCurves(curves, made);
        for (int i = 0; i < made.length(); ++i)
            regions.emplace_back(static_cast<AcDbRegion*>(made[i]));
        return es;
    }

    static std::string SatPath() { return test::ScratchFolder() + "modelling_test.sat"; }
};

}  // namespace

TEST_F(Modelling, CurvesThatCanBeRevolved) {
    struct {
        const char* name;
        const char* entity;
        AcGePoint3d axisPoint;
        AcGeVector3d axis;
        double volume;
    } const kCases[] = {
        {"polyline", "P 0,0 20,0 20,5 0,5 c", {}, kAlongX, kPi * 500},
        {"its lower half", "P 0,0 20,0 20,-5 0,-5 c", {}, kAlongX, kPi * 500},
        {"axis aside, the other way", "P 0,3 20,3 20,8 0,8 c", {50, 3, 0}, {-2, 0, 0}, kPi * 500},
        {"upright axis", "P 3,0 8,0 8,20 3,20 c", {3, -7, 0}, {0, 1, 0}, kPi * 500},
        {"closed by its last vertex", "P 0,0 20,0 20,5 0,5 0,0", {}, kAlongX, kPi * 500},
        {"arcs", "P 0,0 10,0(1) c", {}, kAlongX, kPi * 4 / 3 * 125},
        {"heavy polyline", "H 0,0 10,0(1) c", {}, kAlongX, kPi * 4 / 3 * 125},
        {"space polyline", "Q 0,0,0 20,0,0 20,5,0 0,5,0 c", {}, kAlongX, kPi * 500},
        {"circle", "C 0,10 2", {}, kAlongX, 2 * kPi * kPi * 40}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        test::TestDrawing drawing(c.entity);
        AcDb3dSolid solid;
        EXPECT_TRUE(solid.isNull());
        ASSERT_EQ(Revolve(drawing, 0, solid, c.axisPoint, c.axis), Acad::eOk);
        EXPECT_FALSE(solid.isNull());
        double volume = 0.0;
        ASSERT_EQ(solid.getVolume(volume), Acad::eOk);
        EXPECT_NEAR(volume / c.volume, 1.0, 1e-12);
    }
}

TEST_F(Modelling, RefusalsAreStatuses) {
    struct {
        const char* name;
        const char* entity;
        AcGePoint3d axisPoint;
        AcGeVector3d axis;
        double angle;
        Acad::ErrorStatus status;
    } const kCases[] = {
        {"open", "P 0,0 20,0 20,5 0,5", {}, kAlongX, 2 * kPi, Acad::eInvalidInput},
        {"line", "L 0,0 20,0", {}, kAlongX, 2 * kPi, Acad::eWrongObjectType},
        {"text", "T 0,0 x", {}, kAlongX, 2 * kPi, Acad::eWrongObjectType},
        {"crossing itself", "P 0,0 20,5 20,0 0,5 c", {}, kAlongX, 2 * kPi, Acad::eSelfIntersecting},
        {"crossing the axis",
         "P 0,-1 20,-1 20,5 0,5 c",
         {},
         kAlongX,
         2 * kPi,
         Acad::eGeneralModelingFailure},
        {"pinching the axis",
         "P 0,0 20,5 0,5 c",
         {},
         kAlongX,
         2 * kPi,
         Acad::eGeneralModelingFailure},
        {"no area", "P 0,1 20,1 10,1 c", {}, kAlongX, 2 * kPi, Acad::eDegenerateGeometry},
        {"not a number", "P 0,1 nan,1 10,5 c", {}, kAlongX, 2 * kPi, Acad::eInvalidInput},
        {"axis across", "P 0,0 20,0 20,5 0,5 c", {}, {0, 0, 1}, 2 * kPi, Acad::eInvalidAxis},
        {"axis off the plane",
         "P 0,0 20,0 20,5 0,5 c",
         {0, 0, 1},
         kAlongX,
         2 * kPi,
         Acad::eInvalidAxis},
        {"no angle", "P 0,0 20,0 20,5 0,5 c", {}, kAlongX, 0.0, Acad::eInvalidInput},
        {"angle not a number",
         "P 0,0 20,0 20,5 0,5 c",
         {},
         kAlongX,
         std::nan(""),
         Acad::eInvalidInput},
        {"part of a turn", "P 0,0 20,0 20,5 0,5 c", {}, kAlongX, 1.0, Acad::eNotImplementedYet}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        test::TestDrawing drawing(c.entity);
        AcDb3dSolid solid;
        EXPECT_EQ(Revolve(drawing, 0, solid, c.axisPoint, c.axis, c.angle), c.status);
        EXPECT_TRUE(solid.isNull());
    }
}

TEST_F(Modelling, RegionsOfCurves) {
    struct {
        const char* name;
        const char* entities;
        Acad::ErrorStatus status;
        std::vector<double> areas;
    } const kCases[] = {
        {"four lines in any order and direction",
         "L 0,0 20,0 | L 0,5 20,5 | L 20,5 20,0 | L 0,5 0,0",
         Acad::eOk,
         {100}},
        {"line and arc", "A 0,0 5 0 180 | L -5,0 5,0", Acad::eOk, {kPi * 12.5}},
        {"mirrored arc", "A 0,0 5 0 180 m | L -5,0 5,0", Acad::eOk, {kPi * 12.5}},
        {"circle and square apart", "C 50,0 2 | P 0,0 4,0 4,4 0,4 c", Acad::eOk, {kPi * 4, 16}},
        {"ends that meet but for noise",
         "L 0,0 20,0 | L 20,0.0000005 20,5 | L 20,5 0,0.0000004",
         Acad::eOk,
         {50}},
        {"ends that do not meet",
         "L 0,0 20,0 | L 20,0.000002 20,5 | L 20,5 0,0",
         Acad::eInvalidInput,
         {}},
        {"crossing lines",
         "L 0,0 20,5 | L 20,5 20,0 | L 20,0 0,5 | L 0,5 0,0",
         Acad::eSelfIntersecting,
         {}},
        {"a good loop beside a crossing one",
         "L 0,0 20,5 | L 20,5 20,0 | L 20,0 0,5 | L 0,5 0,0 | C 50,0 1",
         Acad::eOk,
         {kPi}},
        {"three ends in a point",
         "L 0,0 20,0 | L 20,0 20,5 | L 20,5 0,0 | L 0,0 -5,0",
         Acad::eInvalidInput,
         {}},
        {"not plane", "Q 0,0,0 20,0,0 20,5,1 0,5,0 c", Acad::eNotPlanarEntity, {}},
        {"nothing", "", Acad::eInvalidInput, {}}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        test::TestDrawing drawing(c.entities);
        std::vector<std::unique_ptr<AcDbRegion>> regions;
        EXPECT_EQ(Regions(drawing, regions), c.status);
        ASSERT_EQ(regions.size(), c.areas.size());
        for (std::size_t i = 0; i < regions.size(); ++i) {
            double area = 0.0;
            EXPECT_EQ(regions[i]->getArea(area), Acad::eOk);
            EXPECT_NEAR(area / c.areas[i], 1.0, 1e-6);
        }
    }
}

// The way round for curves the direct call refuses: explode, region, revolve.
TEST_F(Modelling, RegionsRevolveAndExplode) {
    test::TestDrawing drawing("L 0,0 20,0 | L 0,5 20,5 | A 20,2.5 2.5 -90 90 | L 0,5 0,0");
    std::vector<std::unique_ptr<AcDbRegion>> regions;
    ASSERT_EQ(Regions(drawing, regions), Acad::eOk);
    ASSERT_EQ(regions.size(), 1u);
    AcDb3dSolid solid, again;
    ASSERT_EQ(solid.revolve(regions[0].get(), AcGePoint3d(), kAlongX, 2 * kPi), Acad::eOk);
    double volume = 0.0, second = 0.0;
    ASSERT_EQ(solid.getVolume(volume), Acad::eOk);
    // Pappus: the half disc's centroid lies on the height of its centre.
    EXPECT_NEAR(volume, kPi * 500 + 2 * kPi * 2.5 * (kPi * 6.25 / 2), 1e-9);

    AcDbVoidPtrArray pieces;
    ASSERT_EQ(regions[0]->explode(pieces), Acad::eOk);
    ASSERT_EQ(pieces.length(), 4);
    AcDbVoidPtrArray rebuilt;
    EXPECT_EQ(AcDbRegion::createFromCurves(pieces, rebuilt), Acad::eOk);
    ASSERT_EQ(rebuilt.length(), 1);
    const std::unique_ptr<AcDbRegion> region(static_cast<AcDbRegion*>(rebuilt[0]));
    for (int i = 0; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
    ASSERT_EQ(again.revolve(region.get(), AcGePoint3d(), kAlongX, 2 * kPi), Acad::eOk);
    ASSERT_EQ(again.getVolume(second), Acad::eOk);
    EXPECT_NEAR(second / volume, 1.0, 1e-12);
}

TEST_F(Modelling, SolidsMoveWithTheirBox) {
    test::TestDrawing drawing("P 0,0 20,0 20,5 0,5 c");
    AcDb3dSolid solid;
    ASSERT_EQ(Revolve(drawing, 0, solid), Acad::eOk);
    AcDbExtents box;
    ASSERT_EQ(solid.getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(box.minPoint().isEqualTo({0, -5, -5})) << test::Show(box.minPoint());
    EXPECT_TRUE(box.maxPoint().isEqualTo({20, 5, 5})) << test::Show(box.maxPoint());

    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kPi / 4, {0, 0, 1}, {0, 0, 0});
    const AcGeMatrix3d move = AcGeMatrix3d::translation({100, 0, 7});
    ASSERT_EQ(solid.transformBy(move * AcGeMatrix3d::scaling(2.0) * turn), Acad::eOk);
    ASSERT_EQ(solid.getGeomExtents(box), Acad::eOk);
    const double d = std::sqrt(0.5);
    EXPECT_TRUE(box.minPoint().isEqualTo({100 - 10 * d, -10 * d, -3}))
        << test::Show(box.minPoint());
    EXPECT_TRUE(box.maxPoint().isEqualTo({100 + 50 * d, 50 * d, 17})) << test::Show(box.maxPoint());
    double volume = 0.0;
    ASSERT_EQ(solid.getVolume(volume), Acad::eOk);
    EXPECT_NEAR(volume, 8 * kPi * 500, 1e-9);

    AcGeMatrix3d stretch;
    stretch(0, 0) = 2.0;
    EXPECT_EQ(solid.transformBy(stretch), Acad::eCannotScaleNonUniformly);

    AcDbVoidPtrArray one;
    one.append(&solid);
    ASSERT_EQ(AcDbBody::acisOut(test::Widen(SatPath()).c_str(), one), Acad::eOk);
    const sat::Audit audit = ReadSat(ReadFile(SatPath()));
    EXPECT_THAT(audit.faults, IsEmpty());
    EXPECT_NEAR(audit.volume, 8 * kPi * 500, 1e-9);
}

TEST_F(Modelling, AcisOutWritesWhatWasAskedOrSaysNo) {
    test::TestDrawing drawing("P 0,0 20,0 20,5 0,5 c");
    ASSERT_EQ(drawing.db().setInsunits(AcDb::kUnitsInches), Acad::eOk);
    AcDb3dSolid solid, empty;
    ASSERT_EQ(Revolve(drawing, 0, solid), Acad::eOk);
    AcDbVoidPtrArray solids, nothing, withEmpty;
    solids.append(&solid);
    withEmpty.append(&empty);
    const std::wstring path = test::Widen(SatPath());
    ASSERT_EQ(AcDbBody::acisOut(path.c_str(), solids), Acad::eOk);
    sat::File file;
    ASSERT_EQ(sat::Parse(ReadFile(SatPath()), file), "");
    EXPECT_EQ(file.millimetresPerUnit, 25.4);
    EXPECT_EQ(AcDbBody::acisOut(path.c_str(), nothing), Acad::eInvalidInput);
    EXPECT_EQ(AcDbBody::acisOut(path.c_str(), withEmpty), Acad::eInvalidInput);
    EXPECT_EQ(AcDbBody::acisOut(L"/no/such/folder/x.sat", solids), Acad::eFileAccessErr);
    // A refused call leaves the former file alone.
    EXPECT_EQ(ReadSat(ReadFile(SatPath())).faces, 3);
    // Any letters, and the other system's separators.
    const std::wstring folder = test::Widen(test::ScratchFolder());
    EXPECT_EQ(AcDbBody::acisOut((folder + L"\\刀具 1.sat").c_str(), solids), Acad::eOk);
    const std::string named = test::ScratchFolder() + "刀具 1.sat";
    EXPECT_EQ(ReadSat(ReadFile(named)).faces, 3);
    std::filesystem::remove(std::filesystem::u8path(named));
    std::remove(SatPath().c_str());
}

// A solid that stays in the drawing is saved with it, as far as the version can hold it.
TEST_F(Modelling, SolidsAreStoredInDrawings) {
    test::TestDrawing drawing(
        "P 0,0 42,0(0.23606797749978969) 40,4 30,6 22,6(-0.414213562373095) 20,8 20,12 0,12 c");
    auto* solid = new AcDb3dSolid;
    ASSERT_EQ(Revolve(drawing, 0, *solid), Acad::eOk);
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(
            acdbSymUtil()->blockModelSpaceId(&drawing.db()), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(solid), Acad::eOk);
        ASSERT_EQ(solid->close(), Acad::eOk);
    }
    for (const int version : {1015, 1018, 1021, 1024, 1027, 1032}) {
        SCOPED_TRACE(version);
        std::string text;
        host::dxf::Report report;
        host::dxf::WriteOptions options;
        options.version = version;
        ASSERT_TRUE(host::dxf::WriteToString(drawing.db(), text, report, options).ok());
        if (version > 1024) {
            EXPECT_EQ(text.find("3DSOLID"), std::string::npos);
            EXPECT_FALSE(report.empty());
            continue;
        }
        EXPECT_TRUE(report.empty());
        // Undo the disguise of the text in groups 1 and 3 behind the solid's marker.
        std::istringstream lines(text.substr(text.find("AcDbModelerGeometry")));
        std::string code, value, plain;
        std::getline(lines, value);
        while (std::getline(lines, code) && std::getline(lines, value)) {
            const int group = std::atoi(code.c_str());
            if (group == 70) continue;
            if (group != 1 && group != 3) break;
            if (group == 1 && !plain.empty()) plain += '\n';
            for (std::size_t i = 0; i < value.size() && value[i] != '\r'; ++i) {
                if (value[i] == '^') {
                    ASSERT_EQ(value[i + 1], ' ');
                    plain += static_cast<char>(159 - value[i++]);
                } else {
                    plain += value[i] == ' ' ? ' ' : static_cast<char>(159 - value[i]);
                }
            }
        }
        EXPECT_EQ(plain.substr(0, 4), "400 ");
        EXPECT_NE(plain.find("torus-surface $-1 22 0 0 1 0 0 8 2"), std::string::npos) << plain;
        EXPECT_NE(plain.find("edge $-1 $"), std::string::npos);
        EXPECT_EQ(plain.substr(plain.rfind('\n') + 1), "End-of-ACIS-data");
    }
}
