// Single passes on drawings of two or three lines, with results worked out by hand.
#include "engine/line_sets.h"
#include "support/engine_probe.h"

namespace {

using test::EngineProbe;
using test::Lines;
using test::ParseLines;
using test::TestDrawing;

using Pass = void (*)(EngineProbe&, Lines&);

void BreakLines(EngineProbe& engine, Lines& lines) { engine.BreakLines(lines); }
void DropRepeats(EngineProbe& engine, Lines& lines) { engine.RemoveRepeatLine2(lines); }
void SnapEnds(EngineProbe& engine, Lines& lines) { engine.UpdateLinePtByNearestPt(lines); }
void DropShort(EngineProbe& engine, Lines& lines) { engine.RemoveShortLine(lines); }
void ConnectTop(EngineProbe& engine, Lines& lines) { engine.ConnectBreakLine(E_Dir_Top, lines); }
void ConnectLeft(EngineProbe& engine, Lines& lines) { engine.ConnectBreakLine(E_Dir_Left, lines); }
void KeepLeftEnds(EngineProbe& engine, Lines& lines) {
    engine.RemoveLineByWalter(lines, E_Dir_Left);
}
void KeepRightEnds(EngineProbe& engine, Lines& lines) {
    engine.RemoveLineByWalter(lines, E_Dir_Right);
}
void AddLevelAxis(EngineProbe& engine, Lines& lines) { engine.CreateTempLine(E_Dir_Top, 2, lines); }
void AddUprightAxis(EngineProbe& engine, Lines& lines) {
    engine.CreateTempLine(E_Dir_Right, 3, lines);
}

TEST(PassesByHand, GiveWhatTheyShould) {
    const struct {
        const char* name;
        Pass pass;
        const char* before;
        const char* after;
    } cases[] = {
        {"a crossing makes four pieces", BreakLines, "0,0 10,0 | 5,-5 5,5",
         "0,0 5,0 | 5,0 10,0 | 5,-5 5,0 | 5,0 5,5"},
        {"a T-junction splits the bar, and the stem at its own end", BreakLines,
         "0,0 10,0 | 5,0 5,5", "0,0 5,0 | 5,0 10,0 | 5,0 5,0 | 5,0 5,5"},
        {"lines on one another do not meet", BreakLines, "0,0 10,0 | 2,0 5,0",
         "0,0 10,0 | 2,0 5,0"},
        {"a line drawn three times is split three times", BreakLines,
         "0,0 4,0 | 2,-1 2,1 | 0,0 4,0 | 4,0 0,0",
         "0,0 2,0 | 2,0 4,0 | 2,-1 2,0 | 2,0 2,1 | 0,0 2,0 | 2,0 4,0 | 4,0 2,0 | 2,0 0,0"},
        {"of two copies the later one stays", DropRepeats, "0,0 5,0 | 5,0 0,0", "5,0 0,0"},
        {"of five copies the last", DropRepeats, "0,0 5,0 | 5,0 0,0 | 0,0 5,0 | 0,0 5,0 | 5,0 0,0",
         "5,0 0,0"},
        {"a covered line goes, whichever comes first", DropRepeats, "0,0 10,0 | 2,0 5,0",
         "0,0 10,0"},
        {"the other way round", DropRepeats, "2,0 5,0 | 0,0 10,0", "0,0 10,0"},
        {"a turn ends with the first line that it drops", DropRepeats,
         "0,0 10,0 | 2,0 5,0 | 6,0 8,0", "0,0 10,0 | 6,0 8,0"},
        {"an end 0.4 off is moved", SnapEnds, "0,0 10,0 | 5,0.4 5,5", "0,0 10,0 | 5,0 5,5"},
        {"an end 0.5 off is not", SnapEnds, "0,0 10,0 | 5,0.5 5,5", "0,0 10,0 | 5,0.5 5,5"},
        {"later ends see where earlier ones went", SnapEnds,
         "0,0 10,0 | 10.3,0.2 10.3,5 | 10.6,0 14,0",
         "0,0 10.3,0.2 | 10.3,0.2 10.3,5 | 10.3,0.2 14,0"},
        {"a short line between two lines stays", DropShort, "0,0 9,0 | 0,0.3 9,0.3 | 5,0 5,0.3",
         "0,0 9,0 | 0,0.3 9,0.3 | 5,0 5,0.3"},
        {"a short line on one goes", DropShort, "0,0 9,0 | 5,0 5,0.3", "0,0 9,0"},
        {"half a unit is not short", DropShort, "0,0 9,0 | 5,0 5,0.5", "0,0 9,0 | 5,0 5,0.5"},
        {"a gap is bridged", ConnectTop, "6,1 9,1 | 5,0 0,0", "0,0 5,0 | 5,0 6,1 | 6,1 9,1"},
        {"one within the tolerance is not", ConnectTop, "0,0 5,0 | 5.0004,0 9,0",
         "0,0 5,0 | 5.0004,0 9,0"},
        {"an overlap is bridged backwards", ConnectTop, "0,0 5,0 | 3,1 9,1",
         "0,0 5,0 | 3,1 9,1 | 5,0 3,1"},
        {"ends run downwards", ConnectLeft, "0,0 0,5 | 1,6 1,9", "1,9 1,6 | 1,6 0,5 | 0,5 0,0"},
        {"ends at 5, 6 and 20", KeepLeftEnds, "5,0 20,0 | 6,1 20,1 | 20,2 30,2",
         "5,0 20,0 | 6,1 20,1"},
        {"0 is taken for unset", KeepLeftEnds, "20,0 0,0 | 12,1 14,1", "12,1 14,1"},
        {"the outermost to the right is never left of 0", KeepRightEnds, "-9,0 -8,0 | -2,1 -1,1",
         "-9,0 -8,0 | -2,1 -1,1"},
        {"a level axis overhangs by 60", AddLevelAxis, "0,0 10,4", "0,0 10,4 | -60,2 70,2 !"},
        {"an upright one by 10", AddUprightAxis, "0,0 10,4", "0,0 10,4 | 3,14 3,-10 !"},
    };
    for (const auto& c : cases) {
        TestDrawing drawing;
        EngineProbe engine;
        Lines lines = ParseLines(c.before);
        c.pass(engine, lines);
        EXPECT_EQ(c.after, test::Show(lines)) << c.name;
    }
}

}  // namespace
