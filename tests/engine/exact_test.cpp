// The engine's member for the exact envelope: parameters, axes, and what it leaves in the drawing.
#include "support/envelope_run.h"

namespace {

// The outline of the entities with an axis that was drawn, and nothing else new in the drawing.
std::string Envelope(const std::string& entities, const std::string& axis, int half = 0) {
    test::TestDrawing drawing(entities);
    const AcDbObjectIdArray ids = drawing.ids();
    drawing.Add(axis);
    CEncircleCalInfo info;
    info.m_nHalfSide = half;
    info.m_midLineId = drawing.ids()[drawing.ids().length() - 1];
    AcDbObjectId id;
    CEncircleLine(info).GetEncircleLineExact(ids, id);
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    return polyline.openStatus() == Acad::eOk ? test::Show(*polyline) : "none";
}

TEST(EncircleLineExact, TakesTheAxisInAnyDirection) {
    const char* shaft = "L 0,0 0,5 | L 0,5 20,5 | L 20,5 20,8 | A 30,8 10 90 180 | L 30,18 30,0";
    const std::string outline = Envelope(shaft, "L 0,0 1,0");
    EXPECT_EQ(outline, Envelope(shaft, "L 40,0 3,0"));
    EXPECT_NE(std::string::npos, outline.find("20,8(-0.414214) 30,18")) << outline;
    EXPECT_EQ("0,0 -3,0 -3,20 0,20 c",
              Envelope("L 0,0 -3,0 | L -3,0 -3,20 | L -3,20 0,20", "L 0,0 0,9"));
    EXPECT_EQ("none", Envelope(shaft, "L 0,0 1,0", 1));
}

}  // namespace
