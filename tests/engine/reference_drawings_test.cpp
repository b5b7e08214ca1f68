// Drawings of tools with the outlines that a draughtsman expects, worked out by hand from what is
// drawn. They lie in the repository, so that whole runs are compared wherever it is built.
#include "support/envelope_run.h"

namespace {

struct ReferenceDrawing {
    const char* name;
    const char* block;  // content of the block T; empty: none
    const char* entities;
    const char* options;  // see RunOptions
    const char* outline;
};

const ReferenceDrawing kDrawings[] = {
    {"stepped shank with its centre line", "",
     "P 0,0 0,10 30,10 30,6 60,6 60,0 | L%CENTER -5,0 65,0", "", "0,0 0,10 30,10 30,6 60,6 60,0 c"},
    {"end mill with a chamfer", "", "P 0,0 0,8 50,8 52,6 70,6 70,0", "",
     "0,0 0,8 50,8 52,6 70,6 70,0 c"},
    {"drill, its tip on the axis", "", "P 0,0 0,5 40,5 45,0", "", "0,0 0,5 40,5 45,0 c"},
    {"T-slot cutter", "", "P 0,0 0,4 20,4 20,9 28,9 28,0", "", "0,0 0,4 20,4 20,9 28,9 28,0 c"},
    {"taper shank", "", "P 0,0 0,6 10,10 40,10 40,0", "", "0,0 0,6 10,10 40,10 40,0 c"},
    {"groove", "", "P 0,0 0,8 20,8 20,3 30,3 30,8 50,8 50,0", "",
     "0,0 0,8 20,8 20,3 30,3 30,8 50,8 50,0 c"},
    {"collar over a shaft", "", "P 0,0 0,5 30,5 30,0 | P 10,0 10,8 20,8 20,0", "",
     "0,0 0,5 10,5 10,8 20,8 20,5 30,5 30,0 c"},
    {"both halves drawn, the lower one wanted", "", "P 0,-6 0,6 20,6 20,4 50,4 50,-4 20,-4 20,-6 c",
     "lower", "0,0 0,-6 20,-6 20,-4 50,-4 50,0 c"},
    {"the lower half is wider", "", "P 0,-9 0,6 20,6 20,4 50,4 50,-4 20,-4 20,-9 c", "lower",
     "0,0 0,-9 20,-9 20,-4 50,-4 50,0 c"},
    {"axis above the drawing's origin", "", "P 0,50 0,60 30,60 30,56 60,56 60,50", "axis=50",
     "0,50 0,60 30,60 30,56 60,56 60,50 c"},
    {"dimension and hidden edges beside the profile", "",
     "P 0,0 0,10 40,10 40,0 | L%DASHED 5,14 35,14 | L%CENTER 20,-20 20,20", "",
     "0,0 0,10 40,10 40,0 c"},
    {"tool in a block, turned and mirrored", "P 0,0 0,5 10,5 10,3 30,3 30,0", "I T 100,0 1,-1 180",
     "", "70,0 70,3 90,3 90,5 100,5 100,0 c"},
    {"exact arc of a rounded shoulder", "", "P 0,0 0,10 20,10(-0.41421356237309503) 25,5 25,0 0,0",
     "by=hatch", "0,0 0,10 20,10(-0.414214) 25,5 25,0 c"},
    {"exact arcs of a ball nose", "", "P 0,0 0,5 30,5(-0.41421356237309503) 35,0 0,0", "by=hatch",
     "0,0 0,5 30,5(-0.414214) 35,0 c"},
};

TEST(ReferenceDrawings, OutlinesWorkedOutByHand) {
    for (const ReferenceDrawing& c : kDrawings) {
        SCOPED_TRACE(c.name);
        test::TestDrawing d;
        if (*c.block != 0) d.Block("T", c.block);
        d.Add(c.entities);
        EXPECT_EQ(c.outline, test::ShowEnvelope(d.ids(), c.options));
    }
}

}  // namespace
