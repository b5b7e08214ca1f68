// The envelope by boundary tracing.
#include "support/engine_probe.h"
#include "support/envelope_run.h"

namespace {

using test::ShowEnvelope;
using test::TestDrawing;

// A shank with a shoulder, both halves: x 0..40, radius 5 up to x 20, then 3.
const std::string kTool =
    "L 0,-5 0,5 | L 0,5 20,5 | L 20,5 20,3 | L 20,3 40,3 | L 40,3 40,-3 | L 40,-3 20,-3"
    " | L 20,-3 20,-5 | L 20,-5 0,-5";

struct Case {
    const char* name;
    std::string entities;
    const char* options;
    std::string outline;
};

TEST(ByHatch, Outlines) {
    const Case cases[] = {
        {"upper half", kTool, "", "0,0 0,5 20,5 20,3 40,3 40,0 c"},
        {"lower half", kTool, "lower", "0,0 0,-5 20,-5 20,-3 40,-3 40,0 c"},
        {"axis off the middle", kTool, "axis=1", "0,1 0,5 20,5 20,3 40,3 40,1 c"},
        {"no axis: all around", kTool, "noaxis", "0,-5 0,5 20,5 20,3 40,3 40,-3 20,-3 20,-5 c"},
        {"axis beside the drawing", kTool, "axis=100", "none"},
        {"ball nose", "P 0,0 0,5 20,5(-0.414213562) 25,0", "", "0,0 0,5 20,5(-0.414214) 25,0 c"},
        {"ball nose to the left", "P 0,0(-0.414213562) 5,5 20,5 20,0", "",
         "0,0(-0.414214) 5,5 20,5 20,0 c"},
        {"hollow fillet", "P 0,0 0,5 20,5(0.414213562) 23,8 30,8 30,0", "",
         "0,0 0,5 20,5(0.414214) 23,8 30,8 30,0 c"},
        {"a hole inside does not count", kTool + " | P 5,1 10,1 10,3 5,3 c", "",
         "0,0 0,5 20,5 20,3 40,3 40,0 c"},
        {"a line that ends in the air bounds nothing", kTool + " | L 10,5 10,9", "",
         "0,0 0,5 20,5 20,3 40,3 40,0 c"},
        {"nothing drawn", "T 0,0 x", "", "none"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.outline, ShowEnvelope(c.entities, std::string("by=hatch ") + c.options));
    }
}

// A tool about an upright axis: no parameter asks for these sides, but the trace knows all four.
TEST(ByHatch, SidesOfAnUprightAxis) {
    const struct {
        E_RemoveLine_Dir side;
        const char* outline;
    } cases[] = {{E_Dir_Right, "0,0 3,0 3,-20 5,-20 5,-40 0,-40 c"},
                 {E_Dir_Left, "0,0 -3,0 -3,-20 -5,-20 -5,-40 0,-40 c"}};
    for (const auto& c : cases) {
        TestDrawing d("P -3,0 3,0 3,-20 5,-20 5,-40 -5,-40 -5,-20 -3,-20 c");
        const std::string before = d.Dump();
        AcDbObjectId id;
        test::EngineProbe().TraceOutline(c.side, 0.0, test::BoxOf(d.ids()), id);
        {
            AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
            ASSERT_EQ(Acad::eOk, polyline.openStatus());
            EXPECT_EQ(c.outline, test::Show(*polyline));
        }
        EXPECT_TRUE(EraseById(id));
        EXPECT_EQ(before, d.Dump()) << "the frame is gone";
    }
}

}  // namespace
