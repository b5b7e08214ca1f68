// What the kernel library makes of a profile: its own solid, STEP, triangles, pictures.
#include "host/solid/kernel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>

#include "host/solid/picture.h"
#include "host/solid/stl.h"
#include "solid/outlines.h"
#include "support/scratch.h"

using namespace host::solid;

namespace {

constexpr double kPi = 3.14159265358979323846;

Profile Prepared(const Outline& outline) {
    Profile profile;
    const Refusal refusal = Prepare(outline, AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
    EXPECT_FALSE(refusal) << refusal.Text() << "\n" << Show(outline);
    return profile;
}

std::unique_ptr<KernelSolid> Revolved(const Profile& profile) {
    std::string reason;
    const Kernel* kernel = LoadKernel(reason);
    if (kernel == nullptr) {
        ADD_FAILURE() << reason;
        return nullptr;
    }
    auto solid = kernel->Revolve(profile, Measure(profile).volume, reason);
    EXPECT_NE(solid, nullptr) << reason;
    return solid;
}

// Volume of the closed surface; leaks holds the edges that two triangles do not share.
struct MeshAudit {
    double volume = 0.0;
    int leaks = 0;
};
MeshAudit AuditMesh(const std::vector<std::array<AcGePoint3d, 3>>& triangles) {
    const auto key = [](const AcGePoint3d& p) { return std::make_tuple(p.x, p.y, p.z); };
    std::map<std::pair<std::tuple<double, double, double>, std::tuple<double, double, double>>, int>
        edges;
    MeshAudit audit;
    for (const auto& t : triangles) {
        audit.volume +=
            t[0].asVector().dotProduct(t[1].asVector().crossProduct(t[2].asVector())) / 6.0;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto a = key(t[i]), b = key(t[(i + 1) % 3]);
            ++edges[{a, b}];
            --edges[{b, a}];
        }
    }
    for (const auto& [edge, count] : edges) audit.leaks += count != 0;
    return audit;
}

std::vector<std::array<AcGePoint3d, 3>> ReadStl(const std::string& bytes) {
    std::vector<std::array<AcGePoint3d, 3>> triangles;
    std::uint32_t count = 0;
    if (bytes.size() < 84) return triangles;
    std::memcpy(&count, bytes.data() + 80, 4);
    EXPECT_EQ(bytes.size(), 84u + 50u * count);
    for (std::uint32_t i = 0; i < count && 84 + 50 * (i + 1) <= bytes.size(); ++i) {
        float f[12];
        std::memcpy(f, bytes.data() + 84 + 50 * i, sizeof f);
        triangles.push_back({AcGePoint3d(f[3], f[4], f[5]), AcGePoint3d(f[6], f[7], f[8]),
                             AcGePoint3d(f[9], f[10], f[11])});
    }
    return triangles;
}

// Reads the text as a STEP file; the volume in the given unit, 0 when it is no valid solid.
double StepVolume(const std::string& text, const char* unit) {
    const std::string path = test::ScratchFolder() + "kernel_test.stp";
    std::ofstream(path, std::ios::binary) << text;
    Message::DefaultMessenger()->ChangePrinters().Clear();
    STEPControl_Reader reader;
    Interface_Static::SetCVal("xstep.cascade.unit", unit);
    double volume = 0.0;
    if (reader.ReadFile(path.c_str()) == IFSelect_RetDone && reader.TransferRoots() == 1) {
        const TopoDS_Shape shape = reader.OneShape();
        GProp_GProps properties;
        BRepGProp::VolumeProperties(shape, properties);
        if (BRepCheck_Analyzer(shape).IsValid() && shape.ShapeType() == TopAbs_SOLID)
            volume = properties.Mass();
    }
    std::remove(path.c_str());
    return volume;
}

const char* const kParts[] = {
    "0,0 20,0 20,5 0,5",
    "0,0 30,0 10,6 0,6",
    "0,0 42,0(0.23606797749978969) 40,4 30,6 22,6(-0.414213562373095) 20,8 20,12 0,12",
    "0,2 20,2 20,5 0,5",
    "0,0 10,0(1)",
    "0,0 10,0(0.5)",
    "8,10(1) 12,10(1)",
    "0,4 0,0 6,0 10,0 10,9(0.414213562373095) 1,9 0,9",
    "0,0 8,0 20,6 20,10 0,10",
    "0,0 2,0 2,3 8,3 8,0 10,0 10,6 0,6",
    "0,0 40,0 40,7.7796 0,7.78",
    "0,0 40,0 40.0005,8 0,7.78",
    "0,0 1,0 2,0 2,3(1) 4,3 5,0 7,0 7,2(0.3) 8,2 8,0 10,0 10,6 0,6"};

}  // namespace

TEST(Kernel, AgreesOnPartsOfEveryKind) {
    for (const char* part : kParts) {
        SCOPED_TRACE(part);
        const Profile profile = Prepared(ParseOutline(part));
        const auto solid = Revolved(profile);
        ASSERT_NE(solid, nullptr);
        EXPECT_NEAR(solid->Volume() / Measure(profile).volume, 1.0, 1e-6);
    }
}

TEST(Kernel, AgreesOnRandomParts) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed + 9000);
        Outline outline = RandomTurnedPart(random, 1 + static_cast<int>(random() % 8));
        if (seed % 2 == 0) outline = Flipped(outline);
        const Profile profile = Prepared(outline);
        if (HasFailure()) return;
        const auto solid = Revolved(profile);
        ASSERT_NE(solid, nullptr) << Show(outline);
        std::string text, reason;
        EXPECT_TRUE(solid->StepText(StepOptions(), text, reason)) << reason;
        EXPECT_NEAR(StepVolume(text, "MM") / Measure(profile).volume, 1.0, 1e-6) << Show(outline);
    }
}

TEST(Kernel, StepReadsBackAsOneSolidInTheDrawingsUnit) {
    struct {
        int unitsValue;
        const char* unit;
        double perUnit;
    } const kUnits[] = {
        {4, "MM", 1.0}, {1, "INCH", 1.0}, {0, "MM", 1.0}, {5, "CM", 1.0}, {10, "MM", 914.4}};
    for (const char* part : {kParts[2], kParts[5], kParts[6]}) {
        for (const auto& unit : kUnits) {
            SCOPED_TRACE(testing::Message() << part << " in " << unit.unitsValue);
            const Profile profile = Prepared(ParseOutline(part));
            const auto solid = Revolved(profile);
            ASSERT_NE(solid, nullptr);
            StepOptions options;
            options.product = "T-0001";
            options.unitsValue = unit.unitsValue;
            options.timestamp = "2026-01-05T10:00:00";
            std::string text, again, reason;
            ASSERT_TRUE(solid->StepText(options, text, reason)) << reason;
            ASSERT_TRUE(solid->StepText(options, again, reason)) << reason;
            EXPECT_EQ(text, again);
            const double expected = Measure(profile).volume * std::pow(unit.perUnit, 3.0);
            EXPECT_NEAR(StepVolume(text, unit.unit) / expected, 1.0, 1e-6);
            EXPECT_NE(text.find("PRODUCT('T-0001','T-0001'"), std::string::npos);
            EXPECT_NE(text.find("'2026-01-05T10:00:00'"), std::string::npos);
            EXPECT_NE(text.find("AUTOMOTIVE_DESIGN"), std::string::npos);
        }
    }
}

TEST(Kernel, StepNamesMayHoldAnyLetters) {
    const Profile profile = Prepared(ParseOutline(kParts[0]));
    const auto solid = Revolved(profile);
    ASSERT_NE(solid, nullptr);
    StepOptions options;
    options.product = "刀 'x'\\1";
    options.timestamp = "2026-01-05T10:00:00";
    std::string text, reason;
    ASSERT_TRUE(solid->StepText(options, text, reason)) << reason;
    EXPECT_NE(text.find("PRODUCT('\\X2\\5200\\X0\\ ''x''\\\\1',"), std::string::npos);
    EXPECT_NEAR(StepVolume(text, "MM") / (500.0 * kPi), 1.0, 1e-6);
    for (const char c : text) EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~'));
}

// Facets lie inside convex and outside hollow faces, by the tolerance at most; so the volume is off
// by no more than the surface times the tolerance.
TEST(Kernel, TrianglesAreClosedAndWithinTheTolerance) {
    for (const char* part : kParts) {
        for (const double tolerance : {0.5, 0.05, 0.005}) {
            SCOPED_TRACE(testing::Message() << part << " within " << tolerance);
            const Profile profile = Prepared(ParseOutline(part));
            const auto solid = Revolved(profile);
            ASSERT_NE(solid, nullptr);
            Mesh mesh;
            std::string reason;
            ASSERT_TRUE(solid->Triangulate(tolerance, mesh, reason)) << reason;
            const MeshAudit audit = AuditMesh(ReadStl(StlBytes(mesh)));
            EXPECT_EQ(audit.leaks, 0);
            const Measures measures = Measure(profile);
            EXPECT_NEAR(audit.volume, measures.volume, 1.05 * tolerance * measures.area);
            for (std::size_t i = 0; i < mesh.points.size(); ++i)
                EXPECT_NEAR(mesh.normals[i].length(), 1.0, 1e-9);
        }
    }
}

TEST(Kernel, PicturesShowTheSolidAboveItsProfile) {
    const Profile profile = Prepared(ParseOutline(kParts[2]));
    const auto solid = Revolved(profile);
    ASSERT_NE(solid, nullptr);
    Mesh mesh;
    std::string reason, png;
    ASSERT_TRUE(solid->Triangulate(0.02, mesh, reason)) << reason;
    const Image image = RenderPicture({{&profile, mesh}}, 400);
    ASSERT_TRUE(EncodePng(image, png, reason)) << reason;
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    // White around, steel in the middle of the solid, the fill's blue in the profile.
    const auto pixel = [&](int x, int y) {
        return &image.pixels[static_cast<std::size_t>(3 * (y * image.width + x))];
    };
    EXPECT_EQ(pixel(0, 0)[0], 255);
    int shaded = 0, filled = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const unsigned char* p = pixel(x, y);
            filled += p[0] == 219 && p[1] == 230 && p[2] == 242;
            shaded += p[0] < p[2] && p[2] < 242;
        }
    EXPECT_GT(shaded, image.width * image.height / 10);
    EXPECT_GT(filled, image.width * image.height / 20);
}
