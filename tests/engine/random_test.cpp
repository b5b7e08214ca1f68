// Fast passes against plain loops on random drawings: same records in the same order to the last
// bit, same entities left in the drawing.
#include "engine/compare_engines.h"
#include "support/hatched_tool.h"

namespace {

using test::Compare;
using test::LineMaker;
using test::Lines;
using test::Outcome;

E_RemoveLine_Dir AnySide(LineMaker& maker) { return static_cast<E_RemoveLine_Dir>(maker.Next(4)); }

TEST(FastAgainstPlain, BreakLines) {
    Compare("BreakLines", 1500, 60, [](auto& engine, Lines& lines, LineMaker&, Outcome& out) {
        engine.BreakLines(lines);
        out.Add(lines, "broken");
    });
}

TEST(FastAgainstPlain, BreakLines2) {
    Compare("BreakLines2", 1500, 30,
            [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
                engine.BreakLines2(lines, maker.Next(2) == 0, maker.Next(2) == 0);
                out.Add(lines, "broken");
            });
}

TEST(FastAgainstPlain, RemoveLine2) {
    Compare("RemoveLine2", 2000, 60,
            [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
                // Records that share an entity do not hide each other.
                if (lines.size() > 2 && maker.Next(4) == 0) lines[1].m_id = lines[0].m_id;
                if (maker.Next(8) == 0) lines[0].m_id = AcDbObjectId::kNull;
                out.Add(engine.RemoveLine2(AnySide(maker), lines), "seen");
            });
}

TEST(FastAgainstPlain, BreakAndSee) {
    Compare("BreakAndSee", 3000, 40,
            [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
                if (maker.Next(10) != 0) {
                    for (CLineInfo& line : lines) line.m_bValid = true;
                }
                if (maker.Next(2) == 0) engine.BreakLines(lines);
                if (maker.Next(2) == 0) engine.RemoveRepeatLine2(lines);
                const bool vertical = maker.Next(2) == 0;
                std::vector<E_RemoveLine_Dir> dirs = {AnySide(maker)};
                if (vertical && maker.Next(4) != 0) {
                    dirs = {maker.Next(2) == 0 ? E_Dir_Top : E_Dir_Bottom};
                    if (maker.Next(3) == 0) dirs = {E_Dir_Top, E_Dir_Bottom};
                }
                for (const Lines& seen :
                     engine.BreakAndSee(lines, vertical, maker.Next(2) == 0, dirs)) {
                    out.Add(seen, "seen");
                }
            });
}

TEST(FastAgainstPlain, CleanUp) {
    Compare("clean-up", 3000, 60, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        if (maker.Next(2) == 0) engine.BreakLines(lines);
        engine.RemoveRepeatLine2(lines);
        out.Add(lines, "repeats removed");
        engine.UpdateLinePtByNearestPt(lines);
        out.Add(lines, "ends moved");
        engine.RemoveShortLine(lines);
        out.Add(lines, "short ones removed");
    });
}

// Lines that are drawn several times over, now and then the other way round.
TEST(FastAgainstPlain, LinesDrawnManyTimes) {
    Compare("twins", 1500, 14, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        {
            CBlockAppender space;
            for (std::uint64_t i = maker.Next(30); i > 0; --i) {
                const CLineInfo line = lines[maker.Next(lines.size())];
                const bool turned = maker.Next(4) == 0;
                lines.push_back(test::AddRecord(space, turned ? line.m_endPt : line.m_startPt,
                                                turned ? line.m_startPt : line.m_endPt));
            }
        }
        if (maker.Next(4) != 0) engine.BreakLines(lines);
        out.Add(lines, "broken");
        engine.RemoveRepeatLine2(lines);
        out.Add(lines, "repeats removed");
    });
}

// Strokes of a hatched tool under tolerances that refuse most of the cuts.
TEST(FastAgainstPlain, HatchedTools) {
    Compare("hatched", 60, 1, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        const double tols[] = {5e-4, 5e-3, 0.02, 0.08};
        const double tol = tols[maker.Next(4)];
        engine.m_calInfo.m_tolPoint.setEqualPoint(tol);
        engine.m_calInfo.m_tolPoint.setEqualVector(5e-4);
        lines.clear();
        {
            CBlockAppender space;
            for (const auto& s : test::HatchedTool(maker.Next(1000)).Make(12 + maker.Next(30)))
                lines.push_back(test::AddRecord(space, s.first, s.second));
        }
        engine.BreakLines(lines);
        engine.RemoveRepeatLine2(lines);
        engine.m_extents = CQZRect(true);
        for (const CLineInfo& line : lines) {
            engine.m_extents.Extend(line.m_startPt);
            engine.m_extents.Extend(line.m_endPt);
        }
        for (const Lines& seen : engine.BreakAndSee(lines, true, true, {E_Dir_Top, E_Dir_Bottom}))
            out.Add(seen, "seen");
        out.Add(engine.BreakAndSee(lines, false, true, {E_Dir_Left}).front(), "seen from the left");
    });
}

TEST(FastAgainstPlain, RemovalByPlace) {
    Compare("removal", 2000, 60, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        const size_t half = lines.size() / 2;
        Lines others(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(half));
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(half));
        const auto dir = static_cast<E_RemoveLine_Dir>(maker.Next(5));
        engine.RemoveLineInExcludeDir(dir, maker.Real(0, 10), lines);
        out.Add(lines, "one side of the axis");
        engine.RemoveLineInOtherDir(others, lines);
        out.Add(lines, "not among others");
        engine.RemoveLineByWalter(lines, maker.Next(2) == 0 ? E_Dir_Left : E_Dir_Right);
        out.Add(lines, "outermost");
    });
}

TEST(FastAgainstPlain, Chains) {
    Compare("chains", 2000, 60, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        AcArray<AcGePoint3d> points;
        for (int chain = 0; chain < 2; ++chain) {
            engine.ConnectBreakLine(AnySide(maker), lines);
            out.Add(lines, "chain");
            engine.GetLineInfoPt(lines, maker.Next(2) == 0, false, points);
            out.Add(points);
        }
    });
}

TEST(FastAgainstPlain, AllPassesInTurn) {
    Compare("all passes", 1500, 50, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        const E_RemoveLine_Dir half = maker.Next(2) == 0 ? E_Dir_Top : E_Dir_Bottom;
        const double axis = maker.Real(0, 6);
        engine.CreateTempLine(half, axis, lines);
        engine.BreakLines(lines);
        engine.RemoveLineInExcludeDir(half, axis, lines);
        engine.RemoveRepeatLine2(lines);
        engine.UpdateLinePtByNearestPt(lines);
        engine.RemoveShortLine(lines);
        out.Add(lines, "cleaned");
        Lines valid;
        for (const CLineInfo& line : lines) {
            if (!line.m_bValid) continue;
            valid.push_back(line);
            engine.m_extents.Extend(line.m_startPt);
            engine.m_extents.Extend(line.m_endPt);
        }
        Lines all;
        AcArray<AcGePoint3d> points;
        for (const E_RemoveLine_Dir dir : {half, E_Dir_Left, E_Dir_Right}) {
            Lines seen = engine.BreakAndSee(valid, dir == half, dir != E_Dir_Right, {dir}).front();
            engine.RemoveLineInOtherDir(all, seen);
            if (dir != half) engine.RemoveLineByWalter(seen, dir);
            engine.ConnectBreakLine(dir, seen);
            out.Add(seen, "chain");
            all.insert(all.end(), seen.begin(), seen.end());
            engine.GetLineInfoPt(seen, dir != E_Dir_Left, false, points);
        }
        out.Add(points);
    });
}

}  // namespace
