// The whole pipeline on small tools, and what a run leaves behind.
#include "plugin/util/EncircleLayers.h"
#include "support/engine_probe.h"
#include "support/envelope_run.h"
#include "plugin/util/LayerTools.h"

namespace {

using test::ShowEnvelope;
using test::TestDrawing;

// A shank with a shoulder, both halves: x 0..40, radius 5 up to x 20, then 3.
const std::string kTool =
    "L 0,-5 0,5 | L 0,5 20,5 | L 20,5 20,3 | L 20,3 40,3 | L 40,3 40,-3 | L 40,-3 20,-3"
    " | L 20,-3 20,-5 | L 20,-5 0,-5";
const std::string kUpper = "0,0 0,5 20,5 20,3 40,3 40,0 c";
const std::string kLower = "0,0 0,-5 20,-5 20,-3 40,-3 40,0 c";

struct Case {
    const char* name;
    std::string entities;
    const char* options;
    std::string outline;
};

void CheckAll(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.outline, ShowEnvelope(c.entities, c.options));
    }
}

TEST(Driver, HalvesAndEnds) {
    CheckAll({
        {"upper half", kTool, "", kUpper},
        {"lower half", kTool, "lower", kLower},
        {"upper half, vertical ends", kTool, "vertical", kUpper},
        {"lower half, vertical ends, begins on the axis", kTool, "lower vertical", kLower},
        {"no axis: all around", kTool, "noaxis", "0,-5 0,5 20,5 20,3 40,3 40,-3 20,-3 20,-5 c"},
        {"axis off the middle", kTool, "axis=1", "0,1 0,5 20,5 20,3 40,3 40,1 c"},
        {"vertical ends close an open half", "L 0,5 20,5 | L 20,3 40,3", "vertical", kUpper},
        {"the other half alone gives nothing", "L 0,-5 20,-5", "", "none"},
    });
}

TEST(Driver, WhatTakesPart) {
    // Each bump would raise the outline if it were counted.
    CheckAll({
        {"dashed entity", kTool + " | L%DASHED 5,9 15,9", "", kUpper},
        {"centre line of another name", kTool + " | L%ACAD_CENTER2 5,9 15,9", "", kUpper},
        {"dashed, included", "L 0,0 0,5 | L%DASHED 0,5 20,5 | L 20,5 20,0", "dashed",
         "0,0 0,5 20,5 20,0 c"},
        {"other capitals are not caught", "L 0,0 0,5 | L%Dashed 0,5 20,5 | L 20,5 20,0", "",
         "0,0 0,5 20,5 20,0 c"},
        {"circle, ellipse, text, elliptical arc",
         kTool + " | C 10,7 1 | E 10,7 2,0 0.5 0 360 | T 10,9 M8 | E 10,7 2,0 0.5 0 180", "",
         kUpper},
        {"polyline drawn twice", "P 0,0 0,5 20,5 20,0 | P 0,0 0,5.1 20,5.1 20,0", "",
         "0,0 0,5 20,5 20,0 c"},
        {"heavy and 3D polylines", "H 0,0 0,5 20,5 | Q 20,5,1 20,3,2 40,3,3 40,0,4", "", kUpper},
        {"point-like and missing coordinates",
         kTool + " | L nan,9 15,9 | L 7,9 7,9 | L 0,1e300 9,9", "", kUpper},
    });
}

TEST(Driver, LayersDecide) {
    struct LayerCase {
        const char* name;
        const char* linetype;
        const char* flags;
        bool counts;
    };
    const std::string raised = "0,0 0,5 5,5 5,9 15,9 15,5 20,5 20,3 40,3 40,0 c";
    for (const LayerCase& c :
         {LayerCase{"DASHES", "DASHED", "", false}, LayerCase{"SOLID", "Continuous", "", true},
          LayerCase{"LOCKED", "", "lock", false}, LayerCase{"OFF", "", "off", true},
          LayerCase{"FROZEN", "", "freeze", true}}) {
        SCOPED_TRACE(c.name);
        const std::string at = std::string("@") + c.name;
        const std::string bump =
            "L" + at + " 5,5 5,9 | L" + at + " 5,9 15,9 | L" + at + " 15,9 15,5";
        TestDrawing d(kTool);
        d.Layer(c.name, c.linetype, c.flags).Add(bump);
        EXPECT_EQ(c.counts ? raised : kUpper, ShowEnvelope(d.ids(), ""));

        TestDrawing nested(kTool);
        nested.Layer(c.name, c.linetype, c.flags).Block("B", bump).Add("I B 0,0");
        const bool bCounts = std::string(c.linetype) != "DASHED";
        EXPECT_EQ(bCounts ? raised : kUpper, ShowEnvelope(nested.ids(), "")) << "in a block";
    }
}

TEST(Driver, DimensionLayerNeverCounts) {
    TestDrawing d(kTool);
    AcDbDatabase& db = d.db();
    const AcDbObjectId layer = d.LayerId(kDimensionLayer);
    d.Add("L 5,9 15,9");
    {
        AcDbObjectPointer<AcDbEntity> line(d.ids().last(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, line->setLayer(layer));
    }
    EXPECT_EQ(kUpper, ShowEnvelope(d.ids(), ""));
    EXPECT_EQ(db.layerZero(), db.clayer());
}

TEST(Driver, Blocks) {
    struct BlockCase {
        const char* name;
        const char* inner;  // block A
        const char* outer;  // block B, may use A
        const char* picked;
        std::string outline;
    };
    const std::string box = "0,0 0,5 20,5 20,0 c";
    const BlockCase cases[] = {
        {"moved, scaled", "P 0,0 0,2.5 10,2.5 10,0", "I A 0,0", "I B 0,0 2", box},
        {"mirrored in y", "P 0,0 0,-5 20,-5 20,0", "I A 0,0", "I B 0,0 1,-1", box},
        {"turned", "P 0,0 5,0 5,20 0,20", "I A 0,0", "I B 20,0 1 90", box},
        {"unequal scales", "P 0,0 0,1 20,1 20,0", "I A 0,0", "I B 0,0 1,5", box},
        {"array", "L 0,5 10,5 | L 0,5 0,0 | L 10,5 10,0", "I A 0,0", "M A 0,0 1,2 0,10", box},
        {"holds only text", "T 0,9 x", "I A 0,0", "I B 0,0 | P 0,0 0,5 20,5 20,0", box},
    };
    for (const BlockCase& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing d;
        d.Block("A", c.inner).Block("B", c.outer).Add(c.picked);
        EXPECT_EQ(c.outline, ShowEnvelope(d.ids(), ""));
    }
    TestDrawing deep;
    deep.Block("B0", "P 0,0 0,5 20,5 20,0");
    for (int i = 1; i <= 12; ++i) {
        deep.Block("B" + std::to_string(i), "I B" + std::to_string(i - 1) + " 0,0");
    }
    deep.Add("I B12 0,0");
    EXPECT_EQ(box, ShowEnvelope(deep.ids(), ""));
}

TEST(Driver, ArcsComeBackAsBulges) {
    CheckAll({
        {"ball nose to the right", "P 0,0 0,5 20,5(-0.414213562) 25,0", "",
         "0,0 0,5 20,5(-0.414214) 25,0 c"},
        {"ball nose to the left", "P 0,0(-0.414213562) 5,5 20,5 20,0", "",
         "0,0(-0.414214) 5,5 20,5 20,0 c"},
        {"mirrored arc", "L 0,0 0,5 | L 0,5 20,5 | A 20,0 5 0 90 m", "",
         "0,0 0,5 20,5(-0.414214) 25,0 c"},
        {"fillet between two cylinders",
         "L 0,0 0,5 | L 0,5 20,5 | A 20,8 3 270 360 | L 23,8 30,8"
         " | L 30,8 30,0",
         "", "0,0 0,5 20,5(0.414214) 23,8 30,8 30,0 c"},
    });
}

TEST(Driver, AFaceDrawnTwiceDoesNotTearTheChain) {
    std::vector<CLineInfo> lines(3);
    lines[0].m_startPt = lines[1].m_startPt = AcGePoint3d(0, 5, 0);
    lines[0].m_endPt = lines[1].m_endPt = lines[2].m_startPt = AcGePoint3d(0, 3, 0);
    test::EngineProbe().ConnectBreakLine(E_Dir_Left, lines);
    AcArray<AcGePoint3d> points;
    test::EngineProbe().GetLineInfoPt(lines, false, false, points);
    std::string shown;
    for (int i = 0; i < points.length(); ++i) shown += test::Show(points[i]) + " ";
    EXPECT_EQ("0,0 0,3 0,5 ", shown);
}

// What a user sees of a drawing that must not change.
std::string Rest(TestDrawing& d, const AcDbObjectId& envelopeId) {
    std::string text = "current " + test::Narrow(GetLayerName(d.db().clayer())) + "\n";
    std::string envelope;
    for (const std::string& line : test::Split(d.Dump(), '\n')) {
        if (line.find("TempEncircleLine") == std::string::npos) {
            text += line + "\n";
        } else {
            envelope += line;
        }
    }
    EXPECT_EQ(envelopeId.isNull(), envelope.empty());
    EXPECT_EQ(std::string::npos, envelope.find("TempEncircleLineClone")) << envelope;
    return text;
}

TEST(Driver, LeavesNothingBehind) {
    const std::string entities =
        kTool +
        " | L@MINE%DASHED 5,9 15,9 | A@OWN 10,5 3 0 180 | S 0,5 3,8 6,2 9,5 | C 10,7 1"
        " | H 0,0 3,9(0.5) 9,9 | T 3,3 x | E 10,7 2,0 0.5 0 180";
    for (const char* options :
         {"", "lower", "vertical", "noaxis", "axis=100", "p=0.02", "by=hatch", "by=hatch lower",
          "by=hatch noaxis", "by=1", "by=1 noaxis", "by=2 lower", "by=2 vertical"}) {
        SCOPED_TRACE(options);
        TestDrawing d;
        d.Layer("OFF", "", "off").Layer("MINE").Layer("LOCKED", "DASHED", "lock");
        d.Block("B",
                "A@OTHER 3,3 2 0 180 | S@OTHER 0,0 1,5 2,5 3,0 | P@LOCKED 0,0(1) 3,3 | T 1,1 y"
                " | A@LOCKED 5,5 4 0 180");
        d.Add(entities + " | I B 0,0 | I B 9,0 -2,1 30 | M B 3,3 2,2 5,5 | L@OFF 0,6 1,6");
        ASSERT_EQ(Acad::eOk, d.db().setClayer(FindLayer(_T("MINE"))));
        const std::string before = Rest(d, AcDbObjectId::kNull);

        const AcDbObjectId first = test::RunEnvelope(d.ids(), test::RunOptions(options));
        EXPECT_EQ(before, Rest(d, first));
        EXPECT_TRUE(FindLayer(kScratchLayer).isNull());
        for (const SLayerLinetype& layer : GetLayerLinetypes()) {
            AcDbObjectPointer<AcDbLayerTableRecord> record(layer.m_layerId, AcDb::kForWrite);
            ASSERT_EQ(Acad::eOk, record.openStatus()) << "left open";
            EXPECT_FALSE(record->isOff());
        }
        for (int i = 0; i < d.ids().length(); ++i) {
            AcDbObjectPointer<AcDbEntity> entity(d.ids()[i], AcDb::kForWrite);
            EXPECT_EQ(Acad::eOk, entity.openStatus()) << "left open";
        }
        const std::string outline = ShowEnvelope(d.ids(), options);
        AcDbObjectPointer<AcDbPolyline> polyline(first, AcDb::kForRead);
        EXPECT_EQ(outline,
                  polyline.openStatus() == Acad::eOk ? test::Show(*polyline.object()) : "none")
            << "a second run gives the same";
    }
}

TEST(Driver, OddInputs) {
    TestDrawing d("L 0,5 20,5 | L 0,0 0,5 | L 20,5 20,0");
    AcDbObjectIdArray ids = d.ids();
    EXPECT_EQ("none", ShowEnvelope(AcDbObjectIdArray(), ""));
    ids.append(AcDbObjectId::kNull);
    ids.append(d.db().layerZero());
    ids.append(d.ids()[0]);  // twice
    d.Add("L 5,9 15,9");
    ids.append(d.ids().last());
    ASSERT_TRUE(EraseById(d.ids().last()));
    EXPECT_EQ("0,0 0,5 20,5 20,0 c", ShowEnvelope(ids, ""));

    TestDrawing other("L 5,9 15,9");
    ids.append(other.ids()[0]);
    acdbHostApplicationServices()->setWorkingDatabase(&d.db());
    EXPECT_EQ("0,0 0,5 20,5 20,0 c", ShowEnvelope(ids, "")) << "an entity of another drawing";
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ("none", ShowEnvelope(ids, "noaxis")) << "no drawing at all";
    acdbHostApplicationServices()->setWorkingDatabase(&other.db());
}

TEST(Driver, TraceTellsWhatWasLeftOut) {
    TestDrawing d;
    d.Layer("LOCKED", "", "lock");
    d.Block("B", "T 1,1 y | L%DASHED 0,9 9,9");
    d.Add(kTool + " | L@LOCKED 5,9 15,9 | C 10,7 1 | I B 0,0 | P 0,0 5,5 | P 0,0 5,5");
    CEncircleTrace trace;
    {
        const CEncircleTraceScope listen(trace);
        EXPECT_FALSE(test::RunEnvelope(d.ids(), test::RunOptions("")).isNull());
    }
    std::string left;
    for (const CEncircleTrace::SLeftOut& entry : trace.m_leftOut) {
        left += std::string(CEncircleTrace::GetReasonName(entry.m_reason)) + " " +
                test::Narrow(entry.m_strWhat) + " " + std::to_string(entry.m_nCount) + ";";
        ASSERT_FALSE(entry.m_handles.empty());
        AcDbObjectId picked;
        ASSERT_EQ(Acad::eOk, d.db().getAcDbObjectId(picked, false, AcDbHandle(entry.m_handles[0])));
        EXPECT_TRUE(d.ids().contains(picked)) << "a handle the user knows";
    }
    EXPECT_EQ(
        "locked LOCKED 1;type AcDbCircle 1;type AcDbText 1;duplicate AcDbPolyline 1;"
        "linetype DASHED 1;",
        left);
    ASSERT_FALSE(trace.m_counts.empty());
    EXPECT_EQ("selected", trace.m_counts.front().first);
    EXPECT_EQ("points_thinned", trace.m_counts.back().first);
    EXPECT_EQ(nullptr, CEncircleTrace::Current());
    ASSERT_EQ(1u, trace.m_gaps.size()) << "the shoulder is bridged for the top side";
    EXPECT_EQ(E_Dir_Top, trace.m_gaps[0].m_side);
    EXPECT_DOUBLE_EQ(2.0, trace.m_gaps[0].m_dLength);
}

}  // namespace
