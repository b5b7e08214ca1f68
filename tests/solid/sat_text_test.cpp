// What the written SAT text says, read back by an independent reader.
#include "host/solid/sat_text.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "outlines.h"
#include "sat_reader.h"

using host::solid::Outline;
using host::solid::Prepare;
using host::solid::Profile;
using host::solid::Refusal;
using host::solid::SatOptions;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double kPi = 3.14159265358979323846;

std::string Sat(const Outline& outline, const AcGePoint3d& axisPoint = {},
                const AcGeVector3d& axis = {1, 0, 0}) {
    Profile profile;
    const Refusal refusal = Prepare(outline, axisPoint, axis, profile);
    EXPECT_FALSE(refusal) << refusal.Text();
    return refusal ? std::string() : host::solid::SatText({&profile}, SatOptions());
}

sat::Audit Read(const std::string& text) {
    sat::File file;
    const std::string error = sat::Parse(text, file);
    EXPECT_EQ(error, "");
    return error.empty() ? sat::Check(file) : sat::Audit();
}

// The audit finds nothing, and the file holds the volume and area of the drawn outline.
void ExpectSolid(const Outline& outline, const sat::Audit& audit, double axisY = 0.0) {
    EXPECT_THAT(audit.faults, IsEmpty());
    const PlainMeasures expected = IntegratePlainly(outline, axisY);
    EXPECT_NEAR(audit.volume / expected.volume, 1.0, 1e-9);
    EXPECT_NEAR(audit.area / expected.area, 1.0, 1e-9);
}

struct PartCase {
    const char* name;
    const char* outline;
    double volume;
    std::vector<std::string> faces;
    int circles, tips;
};

}  // namespace

TEST(SatText, PartsOfEveryKindOfFace) {
    const PartCase kParts[] = {
        {"cylinder", "0,0 20,0 20,5 0,5", kPi * 500, {"plane", "cylinder", "plane"}, 2, 0},
        {"cone with its tip", "0,0 30,0 10,6 0,6", kPi * 600, {"cone", "cylinder", "plane"}, 2, 1},
        {"shank, fillet, neck, ball",
         "0,0 42,0(0.23606797749978969) 40,4 30,6 22,6(-0.414213562373095) 20,8 20,12 0,12",
         11063.8552882,
         {"sphere", "cone", "cylinder", "-torus", "plane", "cylinder", "plane"},
         6,
         0},
        {"bore", "0,2 20,2 20,5 0,5", kPi * 420, {"-cylinder", "plane", "cylinder", "plane"}, 4, 0},
        {"ball", "0,0 10,0(1)", 4.0 / 3.0 * kPi * 125, {"sphere"}, 0, 0},
        {"spindle of one arc", "0,0 10,0(0.5)", 0.0, {"torus"}, 0, 2},
        {"ring of two half circles",
         "8,10(1) 12,10(1)",
         2.0 * kPi * kPi * 40,
         {"torus", "torus"},
         2,
         0},
        {"hollow ball nose",
         "0,4 0,0 6,0 10,0 10,9(0.414213562373095) 1,9 0,9",
         0.0,
         {"plane", "torus", "cylinder", "plane"},
         3,
         0},
        {"countersunk end",
         "0,0 8,0 20,6 20,10 0,10",
         0.0,
         {"-cone", "plane", "cylinder", "plane"},
         3,
         1},
        {"closed cavity on the axis",
         "0,0 2,0 2,3 8,3 8,0 10,0 10,6 0,6",
         kPi * (360 - 54),
         {"plane", "cylinder", "plane", "plane", "-cylinder", "plane"},
         4,
         0}};
    for (const PartCase& part : kParts) {
        SCOPED_TRACE(part.name);
        const Outline outline = ParseOutline(part.outline);
        const sat::Audit audit = Read(Sat(outline));
        ExpectSolid(outline, audit);
        if (part.volume != 0.0) {
            EXPECT_NEAR(audit.volume / part.volume, 1.0, 1e-7);
        }
        EXPECT_EQ(audit.faceKinds, part.faces);
        EXPECT_EQ(audit.circles, part.circles);
        EXPECT_EQ(audit.tips, part.tips);
    }
}

TEST(SatText, CavityIsAShellOfItsOwnBehindTheOutside) {
    const sat::Audit audit = Read(Sat(ParseOutline("8,0 10,0 10,6 0,6 0,0 2,0 2,3 8,3")));
    ASSERT_EQ(audit.shellVolumes.size(), 2u);
    EXPECT_NEAR(audit.shellVolumes[0], kPi * 360, 1e-9);
    EXPECT_NEAR(audit.shellVolumes[1], -kPi * 54, 1e-9);
}

// However the outline is drawn, and wherever, the solid is the same.
TEST(SatText, RandomPartsHoldTheirVolumeAndAudit) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Outline outline = RandomTurnedPart(random, 1 + static_cast<int>(random() % 12));
        if (seed % 2 == 0) outline = Reversed(outline);
        if (seed % 3 == 0) outline = Flipped(outline);
        outline = StartedAt(outline, random());
        ExpectSolid(outline, Read(Sat(outline)));
        if (HasFailure()) FAIL() << Show(outline);
    }
}

TEST(SatText, AxisMayLieAnywhereInThePlaneAndPointAnywhere) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Outline outline = RandomTurnedPart(random, 6);
        const PlainMeasures expected = IntegratePlainly(outline, 0.0);
        const double a = 0.1 * seed, b = 0.037 * seed;
        outline.u = AcGeVector3d(std::cos(a) * std::cos(b), std::sin(a) * std::cos(b), std::sin(b));
        outline.v = AcGeVector3d(-std::sin(a), std::cos(a), 0.0);
        outline.origin.set(15.0 * seed, -7.0, 0.25 * seed);
        const AcGeVector3d axis = outline.u * (seed % 2 == 0 ? 1.0 : -2.5);
        const sat::Audit audit = Read(Sat(outline, outline.origin + outline.u * 11.0, axis));
        EXPECT_THAT(audit.faults, IsEmpty());
        EXPECT_NEAR(audit.volume / expected.volume, 1.0, 1e-9);
        EXPECT_NEAR(audit.area / expected.area, 1.0, 1e-9);
        if (HasFailure()) FAIL() << Show(outline);
    }
}

// Arcs that are nearly lines keep their bend; flatter ones become cones and cylinders.
TEST(SatText, ArcsOfLargeRadius) {
    for (const double sagitta : {1.0, 1e-2, 1e-3, 1e-4, 1e-5, 2e-6, 5e-7, 1e-9, 1e-13}) {
        for (const double rise : {0.0, 3.0}) {
            SCOPED_TRACE(testing::Message() << "sagitta " << sagitta << " rise " << rise);
            Outline outline = ParseOutline("0,0 100,0 100,10 0,10");
            outline.corners[3].point.y += rise;
            for (const double sign : {1.0, -1.0}) {
                outline.corners[2].bulge = sign * 2.0 * sagitta / std::hypot(100.0, rise);
                const sat::Audit audit = Read(Sat(outline));
                EXPECT_THAT(audit.faults, IsEmpty());
                EXPECT_NEAR(audit.volume / IntegratePlainly(outline, 0.0).volume, 1.0,
                            sagitta < 1e-6 ? 1e-6 : 1e-9);
                const std::string& kind = audit.faceKinds[1];
                EXPECT_EQ(kind.find("torus") != std::string::npos, sagitta >= 1e-6) << kind;
            }
        }
    }
}

TEST(SatText, NeighboursOnOneCarrierAreOneFace) {
    struct {
        const char* name;
        const char* outline;
        std::vector<std::string> faces;
    } const kCases[] = {
        {"split lines", "0,0 7,0 20,0 20,2 20,5 12,5 3,5 0,5 0,1", {"plane", "cylinder", "plane"}},
        {"split cone", "0,0 20,0 20,2 15,3 10,4 0,6", {"plane", "cone", "plane"}},
        {"split arc",
         "0,0 10,0(0.198912367379658) 8.53553390593274,3.53553390593274(0.198912367379658) 5,5 0,5",
         {"sphere", "cylinder", "plane"}},
        {"corner off the line by more than noise",
         "0,0 20,0 20,5 10,5.000003 0,5",
         {"plane", "cone", "cone", "plane"}},
        {"corner off the line by noise",
         "0,0 20,0 20,5 10,5.0000003 0,5",
         {"plane", "cylinder", "plane"}}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const sat::Audit audit = Read(Sat(ParseOutline(c.outline)));
        EXPECT_THAT(audit.faults, IsEmpty());
        EXPECT_EQ(audit.faceKinds, c.faces);
    }
}

// A gentle curve of many short lines must not be taken for one line, piece by piece.
TEST(SatText, ManyShortLinesKeepTheirCurve) {
    Outline outline = ParseOutline("0,0 100,0");
    for (int i = 0; i <= 10000; ++i) {
        const double x = 100.0 - 0.01 * i;
        outline.corners.push_back({{x, 10.0 + 1e-3 * std::sin(kPi * x / 100.0)}, 0.0});
    }
    const sat::Audit audit = Read(Sat(outline));
    EXPECT_THAT(audit.faults, IsEmpty());
    EXPECT_NEAR(audit.volume / IntegratePlainly(outline, 0.0).volume, 1.0, 1e-6);
    EXPECT_GT(audit.faces, 20);
}

TEST(SatText, HeadAndBytes) {
    Profile profile;
    ASSERT_FALSE(Prepare(ParseOutline("0,0 20,0 20,5 0,5"), {}, {1, 0, 0}, profile));
    SatOptions options;
    options.date = 1767607200;
    options.millimetresPerUnit = 25.4;
    const std::string text = host::solid::SatText({&profile}, options);
    EXPECT_EQ(text, host::solid::SatText({&profile}, options));
    sat::File file;
    ASSERT_EQ(sat::Parse(text, file), "");
    EXPECT_EQ(file.version, "700");
    EXPECT_EQ(file.modeller, "ACIS 7.0");
    EXPECT_EQ(file.date, "Mon Jan  5 10:00:00 2026");
    EXPECT_EQ(file.millimetresPerUnit, 25.4);
    for (const char c : text) EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~'));
    // Two bodies stand in front of everything else.
    const sat::Audit two = Read(host::solid::SatText({&profile, &profile}, options));
    EXPECT_THAT(two.faults, IsEmpty());
    EXPECT_EQ(two.bodies, 2);
    EXPECT_NEAR(two.volume, 2.0 * kPi * 500, 1e-9);
}

TEST(SatText, DatesAreWrittenAsTheCLibraryWritesThem) {
    for (const std::time_t t : {std::time_t(0), std::time_t(951782400), std::time_t(1709164799),
                                std::time_t(4102444799), std::time_t(-1)}) {
        if (std::gmtime(&t) == nullptr) continue;  // not every C library goes back beyond 1970
        char expected[40];
        std::strftime(expected, sizeof expected, "%a %b %d %H:%M:%S %Y", std::gmtime(&t));
        if (expected[8] == '0') expected[8] = ' ';
        EXPECT_EQ(host::solid::DateText(t), expected);
        std::strftime(expected, sizeof expected, "%Y-%m-%dT%H:%M:%S", std::gmtime(&t));
        EXPECT_EQ(host::solid::IsoDateText(t), expected);
    }
}
