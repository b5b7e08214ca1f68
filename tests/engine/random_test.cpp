// Fast passes against plain loops on random drawings: same records in the same order to the last
// bit, same entities left in the drawing.
#include <cstdlib>

#include "engine/line_sets.h"
#include "engine/plain_engine.h"

namespace {

using test::Bits;
using test::EngineProbe;
using test::LineMaker;
using test::Lines;
using test::PlainEngine;
using test::TestDrawing;

// What a pass left, one record a line, then the drawing.
struct Outcome {
    std::vector<std::string> records;
    std::vector<std::string> drawing;

    void Add(const Lines& lines, const char* title) {
        records.push_back(title);
        for (const CLineInfo& line : lines) records.push_back(Bits(line));
    }
    void Add(const AcArray<AcGePoint3d>& points) {
        records.push_back("points");
        for (int i = 0; i < points.length(); ++i) records.push_back(Bits(points[i]));
    }
    bool operator==(const Outcome& o) const { return records == o.records && drawing == o.drawing; }
};

// The first difference, which is what one looks at.
std::string Differ(const Outcome& plain, const Outcome& fast) {
    std::string title;
    for (size_t i = 0; i < (std::max)(plain.records.size(), fast.records.size()); ++i) {
        const std::string p = i < plain.records.size() ? plain.records[i] : "nothing";
        const std::string f = i < fast.records.size() ? fast.records[i] : "nothing";
        if (p == f && p[0] >= 'a') title = p;
        if (p != f)
            return title + " record " + std::to_string(i) + "\n plain " + p + "\n fast  " + f;
    }
    return "the drawings differ";
}

// A random drawing and random parameters, the same for both engines.
struct Scene {
    std::uint64_t seed;
    size_t count;

    template <class Engine, class Pass>
    Outcome Run(const Pass& pass) const {
        TestDrawing drawing;
        LineMaker maker(seed);
        Engine engine(MakeInfo(maker));
        Lines lines;
        {
            CBlockAppender space;
            for (const auto& segment : maker.Make(1 + maker.Next(count))) {
                lines.push_back(test::AddRecord(space, segment.first, segment.second));
                lines.back().m_bValid = maker.Next(40) != 0;
            }
        }
        SetExtents(engine, lines, maker);
        Outcome outcome;
        pass(engine, lines, maker, outcome);
        outcome.drawing = test::DrawingBits(drawing.db());
        return outcome;
    }

    static CEncircleCalInfo MakeInfo(LineMaker& maker) {
        CEncircleCalInfo info;
        if (maker.Next(6) == 0) {
            const double tols[] = {0.0, 1e-9, 1e-5, 0.01, 0.3};
            const double tol = tols[maker.Next(5)];
            for (AcGeTol* t : {&info.m_tolPoint, &info.m_tolLine}) {
                t->setEqualPoint(tol);
                t->setEqualVector(maker.Next(4) == 0 ? 0.0 : tol);
            }
        }
        if (maker.Next(10) == 0) info.m_tolHorVer.setEqualPoint(maker.Next(2) == 0 ? 0.0 : 0.01);
        info.m_dSideLength = maker.Next(3) == 0 ? maker.Real(0, 20) : 5.0;
        return info;
    }

    // Now and then extents that do not hold all lines, or none at all.
    static void SetExtents(EngineProbe& engine, const Lines& lines, LineMaker& maker) {
        if (maker.Next(20) == 0) return;
        const size_t held = maker.Next(20) == 0 ? lines.size() / 2 : lines.size();
        for (size_t i = 0; i < held; ++i) {
            engine.m_extents.Extend(lines[i].m_startPt);
            engine.m_extents.Extend(lines[i].m_endPt);
        }
    }
};

// The environment's QZ_RUNS makes the tests longer by that factor.
int GetFactor() {
    const char* text = std::getenv("QZ_RUNS");
    return text == nullptr ? 1 : (std::max)(std::atoi(text), 1);
}

template <class Pass>
void Compare(const char* name, int runs, size_t count, const Pass& pass) {
    for (int run = 0; run < runs * GetFactor() && !::testing::Test::HasFailure(); ++run) {
        const Scene scene = {static_cast<std::uint64_t>(run) * 7919 + count, count};
        const Outcome plain = scene.Run<PlainEngine>(pass);
        const Outcome fast = scene.Run<EngineProbe>(pass);
        EXPECT_TRUE(plain == fast) << name << ", seed " << scene.seed << ", up to " << count
                                   << " lines: " << Differ(plain, fast);
    }
}

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
