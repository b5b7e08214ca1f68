// One run of one tool, on drawings made in a line: what changes in the drawing, what is refused,
// and that whoever asks gets the same.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "product/base/Failure.h"
#include "product/tool/ToolRun.h"
#include "support/test_drawing.h"

namespace {

using namespace product;
using testing::HasSubstr;

// A stepped shaft of which both halves are drawn; its envelope above the axis is known by heart.
const char* const kShaft =
    "L 0,0 0,10 | L 0,10 30,10 | L 30,10 30,6 | L 30,6 50,6 | L 50,6 50,0 | "
    "L 0,0 0,-10 | L 0,-10 30,-10 | L 30,-10 30,-6 | L 30,-6 50,-6 | L 50,-6 50,0";
// Pi * (100 * 30 + 36 * 20)
constexpr double kVolume = 3.14159265358979323846 * 3720;

ToolRequest Request() {
    ToolRequest request;
    request.axis = Axis::Level({25, 0});
    return request;
}

ToolRun Compute(AcDbDatabase& database, const ToolRequest& request) {
    ToolRun run;
    ToolRunner(database, false).Compute(request, run);
    return run;
}

std::string Refusal(AcDbDatabase& database, const ToolRequest& request, Fault fault) {
    try {
        Compute(database, request);
    } catch (const Failure& failure) {
        EXPECT_EQ(fault, failure.Code()) << failure.what();
        return failure.what();
    }
    return "no refusal";
}

TEST(ToolRun, EnvelopeAndSolidOfAShaft) {
    test::TestDrawing d(kShaft);
    const ToolRun run = Compute(d.db(), Request());
    ASSERT_TRUE(run.envelope.found && run.envelope.closed);
    EXPECT_EQ(6u, run.envelope.vertices.size());
    EXPECT_NEAR(20, run.envelope.diameter, 1e-9);
    ASSERT_TRUE(run.solid.profile);
    EXPECT_NEAR(kVolume, run.solid.measures.volume, 1e-6);
    EXPECT_TRUE(run.warnings.empty());
}

TEST(ToolRun, TheSolidOfTheDrawingIsTheSolidOfTheRing) {
    for (const char* half : {"upper", "lower"}) {
        SCOPED_TRACE(half);
        ToolRequest request = Request();
        request.parameters.half = half[0] == 'l' ? Half::Lower : Half::Upper;
        test::TestDrawing one(kShaft), other(kShaft);
        const ToolRun ring = Compute(one.db(), request);
        request.solidInDrawing = true;
        const ToolRun drawn = Compute(other.db(), request);
        EXPECT_EQ(ring.solid.measures.volume, drawn.solid.measures.volume);
        EXPECT_EQ(ring.solid.measures.area, drawn.solid.measures.area);
        // Its layer stays, the solid does not.
        EXPECT_THAT(other.Dump(), testing::Not(HasSubstr("AcDb3dSolid")));
        EXPECT_FALSE(other.LayerId(L"EncircleLine3D").isNull());
    }
}

TEST(ToolRun, WhatIsRefusedLeavesTheDrawingAsItWas) {
    const struct {
        const char* name;
        void (*change)(ToolRequest& request);
        Fault fault;
        const char* text;
    } cases[] = {
        {"slanted axis",
         [](ToolRequest& r) {
             r.axis = Axis{{0, 0}, {10, 1}};
         },
         Fault::NotCarriedOut, "horizontal axis only"},
        {"axis from right to left",
         [](ToolRequest& r) {
             r.axis = Axis{{10, 0}, {0, 0}};
         },
         Fault::NotCarriedOut, "horizontal axis only"},
        {"upright axis",
         [](ToolRequest& r) {
             r.axis = Axis{{10, 0}, {10, 5}};
         },
         Fault::NotCarriedOut, "horizontal axis only"},
        {"both halves", [](ToolRequest& r) { r.parameters.half = Half::Both; },
         Fault::NotCarriedOut, "one half at a time"},
        {"centre far away",
         [](ToolRequest& r) {
             r.axis = Axis::Level({900, 0});
         },
         Fault::Request, "the centre 900,0 lies 850 units outside"},
        {"centre nowhere",
         [](ToolRequest& r) {
             r.axis = Axis::Level({25, NAN});
         },
         Fault::NotCarriedOut, ""},
        {"tolerance of no number", [](ToolRequest& r) { r.parameters.pointTolerance = NAN; },
         Fault::Request, "leaves no length"},
        {"tolerance of the tool's size", [](ToolRequest& r) { r.parameters.lineTolerance = 51; },
         Fault::Request, "larger than all that was picked"},
        {"side length below nothing", [](ToolRequest& r) { r.parameters.sideLength = -1; },
         Fault::Request, "a side length of -1 is none"},
        {"empty window",
         [](ToolRequest& r) {
             r.rule.window = Box{{200, 200}, {300, 300}};
         },
         Fault::NothingThere, "no entity lies wholly inside the window"},
        {"nothing picked", [](ToolRequest& r) { r.picked.emplace(); }, Fault::NothingThere,
         "nothing was picked"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::TestDrawing d(kShaft);
        d.Add("P@TempEncircleLine 0,0 0,10 50,10 50,0 c");
        const std::string before = d.Dump();
        ToolRequest request = Request();
        c.change(request);
        EXPECT_THAT(Refusal(d.db(), request, c.fault), HasSubstr(c.text));
        EXPECT_EQ(before, d.Dump());
    }
}

TEST(ToolRun, ReplacesEnvelopesAndNothingElse) {
    test::TestDrawing d(kShaft);
    const ToolRun first = Compute(d.db(), Request());
    EXPECT_EQ(0, first.envelopesErased);
    const ToolRun second = Compute(d.db(), Request());
    EXPECT_EQ(1, second.envelopesErased);
    EXPECT_EQ(10, second.selection.ids.length());
    // Handed over as the task's own; among the picked ones it would be told apart too.
    ToolRequest third = Request();
    third.picked = d.ids();
    third.formerEnvelope = second.envelopeId;
    EXPECT_EQ(0, Compute(d.db(), third).envelopesErased);
    // One that the user has moved to a layer of his own is his.
    test::TestDrawing own(kShaft);
    const ToolRun kept = Compute(own.db(), Request());
    {
        AcDbObjectPointer<AcDbEntity> envelope(kept.envelopeId, AcDb::kForWrite);
        test::Check(envelope->setLayer(own.LayerId(L"MINE")));
    }
    third.picked = own.ids();
    third.formerEnvelope = kept.envelopeId;
    Compute(own.db(), third);
    EXPECT_THAT(own.Dump(), HasSubstr("AcDbPolyline MINE"));
}

TEST(ToolRun, WithoutAnAxisThereIsAnOutlineAndNoSolid) {
    test::TestDrawing d(kShaft);
    ToolRequest request;
    const ToolRun run = Compute(d.db(), request);
    EXPECT_TRUE(run.envelope.found);
    EXPECT_EQ(0, run.envelope.diameter);
    EXPECT_FALSE(run.solid.profile || run.solid.refusal);
    // An axis that the engine is not told of still turns the solid, here of an outline on both
    // sides of it.
    request = Request();
    request.ignoresAxis = true;
    const ToolRun ignored = Compute(d.db(), request);
    ASSERT_TRUE(ignored.solid.refusal);
    EXPECT_THAT(ignored.solid.refusal->Text(), HasSubstr("axis"));
}

TEST(ToolRun, ADatabaseThatIsNotTheWorkingOne) {
    test::TestDrawing mine(kShaft);
    test::TestDrawing other("L 0,0 5,5");  // the working one
    const std::string before = other.Dump();
    EXPECT_TRUE(Compute(mine.db(), Request()).envelope.found);
    EXPECT_EQ(before, other.Dump());
}

TEST(PickList, FindsAndErasesNothing) {
    test::TestDrawing d("L 0,0 10,0 | P@TempEncircleLine 0,0 0,10 c | L@OFF 1,1 2,2 | L 11,0 12,0");
    d.Layer("OFF", "", "off");
    const std::string before = d.Dump();
    const PickList list(d.db());
    const Selection all = list.Pick(std::nullopt);
    EXPECT_EQ(3, all.ids.length());
    EXPECT_EQ(1, all.envelopes.length());
    EXPECT_EQ(0, all.notDisplayed);
    const Selection some = list.Pick(Box{{0, 0}, {10, 10}});  // what touches its border is inside
    EXPECT_EQ(1, some.ids.length());
    EXPECT_EQ(1, some.envelopes.length());
    EXPECT_EQ(1, some.notDisplayed);
    EXPECT_EQ(before, d.Dump());
    EXPECT_EQ(1, EraseEnvelopes(some.envelopes));
    EXPECT_EQ(0, EraseEnvelopes(some.envelopes)) << "erased twice";
}

TEST(ToolParameters, AreTheEnginesOwnThereAndBack) {
    const CEncircleCalInfo usual;
    const CEncircleCalInfo back = EngineRecordOf(ToolParameters());
    EXPECT_EQ(usual.m_bExcludeDashed, back.m_bExcludeDashed);
    EXPECT_EQ(usual.m_tolPoint.equalPoint(), back.m_tolPoint.equalPoint());
    EXPECT_EQ(usual.m_tolPoint.equalVector(), back.m_tolPoint.equalVector());
    EXPECT_EQ(usual.m_dSideLength, back.m_dSideLength);
    CEncircleCalInfo stored;
    stored.m_nHalfSide = 7;  // anything but 0 is the lower half
    stored.m_bExcludeDashed = false;
    stored.m_dArcPrecision = 0.125;
    const CEncircleCalInfo again = EngineRecordOf(ToolParameters(stored));
    EXPECT_EQ(1, again.m_nHalfSide);
    EXPECT_FALSE(again.m_bExcludeDashed);
    EXPECT_EQ(0.125, again.m_dArcPrecision);
}

TEST(Axis, LevelAtAnyCoordinate) {
    for (const double x : {0.0, -5.0, 1e17, -1e17, 1e300, -1e300})
        EXPECT_TRUE(Axis::Level({x, 3}).IsLevel()) << x;
}

}  // namespace
