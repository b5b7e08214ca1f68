// Our own STEP text as the kernel reads it: valid, as large as the profile says, of the same kinds
// of surfaces as the SAT file, and built like the kernel's own file.
#include "host/solid/step_text.h"

#include <cmath>
#include <map>

#include <gtest/gtest.h>

#include "host/solid/kernel.h"
#include "host/solid/sat_topology.h"
#include "solid/outlines.h"
#include "solid_occt/step_reader.h"

using namespace host::solid;

namespace {

Profile Prepared(const Outline& outline) {
    Profile profile;
    const Refusal refusal = Prepare(outline, AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
    EXPECT_FALSE(refusal) << refusal.Text() << "\n" << Show(outline);
    return profile;
}

StepOptions Options() {
    StepOptions options;
    options.product = "T-0001";
    options.timestamp = "2026-01-05T10:00:00";
    return options;
}

// The tolerances are those of the kernel's own integration.
void ExpectAsProfile(const Profile& profile) {
    const step::Solid found = step::Read(StepText(profile, Options()));
    ASSERT_EQ("", found.fault);
    const Measures measures = Measure(profile);
    EXPECT_NEAR(found.volume / measures.volume, 1.0, 1e-6);
    EXPECT_NEAR(found.area / measures.area, 1.0, 1e-6);
    const SatTopology topology = BuildTopology({&profile});
    EXPECT_EQ(topology.surfaces[0], found.planes);
    EXPECT_EQ(topology.surfaces[1], found.cones);
    EXPECT_EQ(topology.surfaces[2], found.spheres);
    EXPECT_EQ(topology.surfaces[3], found.tori);
}

// How many entities of each type that says how a solid is put together.
std::map<std::string, int> Structure(const std::string& text) {
    std::map<std::string, int> counts;
    for (const char* type :
         {"MANIFOLD_SOLID_BREP", "BREP_WITH_VOIDS", "CLOSED_SHELL", "ADVANCED_FACE", "FACE_BOUND",
          "EDGE_LOOP", "ORIENTED_EDGE", "EDGE_CURVE", "VERTEX_POINT", "PRODUCT",
          "PRODUCT_DEFINITION_SHAPE", "SHAPE_DEFINITION_REPRESENTATION", "SI_UNIT",
          "CONVERSION_BASED_UNIT", "APPLICATION_PROTOCOL_DEFINITION"}) {
        std::string wanted = std::string(type) + "(";
        for (std::size_t at = text.find(wanted); at != std::string::npos;
             at = text.find(wanted, at + 1))
            counts[type] +=
                std::isalpha(static_cast<unsigned char>(text[at - 1])) == 0 && text[at - 1] != '_';
    }
    return counts;
}

std::string WithoutBlanks(const std::string& text) {
    std::string out;
    for (char c : text)
        if (c != ' ' && c != '\n') out += c;
    return out;
}

const char* const kParts[] = {
    "0,0 20,0 20,5 0,5",  // a cylinder
    "0,0 30,0 10,6 0,6",  // a cone to its tip
    "0,0 42,0(0.23606797749978969) 40,4 30,6 22,6(-0.414213562373095) 20,8 20,12 0,12",
    "0,2 20,2 20,5 0,5",  // a tube
    "0,0 10,0(1)",        // a ball
    "0,0 10,0(0.5)",      // a lemon
    "0,0 10,0(1.5)",      // an apple
    "8,10(1) 12,10(1)",   // a ring
    "0,4 0,0 6,0 10,0 10,9(0.414213562373095) 1,9 0,9",
    "0,0 8,0 20,6 20,10 0,10",                                        // a pointed hole
    "0,0 2,0 2,3 8,3 8,0 10,0 10,6 0,6",                              // a hollow
    "0,0 40,0 40,7.7796 0,7.78",                                      // hardly a cone
    "0,0 40,0 40.0005,8 0,7.78",                                      // hardly none
    "0,0 1,0 2,0 2,3(1) 4,3 5,0 7,0 7,2(0.3) 8,2 8,0 10,0 10,6 0,6",  // two hollows
    "0,0 20,0 20,1(0.9) 0,1",                                         // beyond a lemon
    "0,0 10,0(-0.3) 14,5 0,5"};

}  // namespace

TEST(StepText, PartsOfEveryKind) {
    for (const char* part : kParts) {
        SCOPED_TRACE(part);
        const Profile profile = Prepared(ParseOutline(part));
        ExpectAsProfile(profile);
    }
}

TEST(StepText, IsBuiltLikeTheKernelsOwn) {
    std::string reason;
    const Kernel* const kernel = LoadKernel(reason);
    ASSERT_NE(kernel, nullptr) << reason;
    for (const char* part : kParts) {
        SCOPED_TRACE(part);
        const Profile profile = Prepared(ParseOutline(part));
        const auto solid = kernel->Revolve(profile, Measure(profile).volume, reason);
        ASSERT_NE(solid, nullptr) << reason;
        for (int units : {4, 1, 6}) {
            StepOptions options = Options();
            options.unitsValue = units;
            std::string theirs;
            ASSERT_TRUE(solid->StepText(options, theirs, reason)) << reason;
            EXPECT_EQ(Structure(WithoutBlanks(theirs)), Structure(StepText(profile, options)));
        }
    }
}

void ExpectRandomParts(unsigned first, unsigned last) {
    for (unsigned seed = first; seed <= last; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed + 9000);
        Outline outline = RandomTurnedPart(random, 1 + static_cast<int>(random() % 12));
        if (seed % 2 == 0) outline = Flipped(outline);
        SCOPED_TRACE(Show(outline));
        const Profile profile = Prepared(outline);
        if (testing::Test::HasFailure()) return;
        ExpectAsProfile(profile);
        if (testing::Test::HasFailure()) return;
    }
}

TEST(StepText, RandomParts) { ExpectRandomParts(1, 30); }

// Some minutes: the kernel reads slowly.
TEST(StepTextSlow, ThousandsOfRandomParts) { ExpectRandomParts(31, 3000); }
