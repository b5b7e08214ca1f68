// Runs passes of the plain and of the fast engine on the same random drawings.
#pragma once

#include <cstdlib>

#include "engine/line_sets.h"
#include "engine/plain_engine.h"

namespace test {

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
inline std::string Differ(const Outcome& plain, const Outcome& fast) {
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
                lines.push_back(AddRecord(space, segment.first, segment.second));
                lines.back().m_bValid = maker.Next(40) != 0;
            }
        }
        SetExtents(engine, lines, maker);
        Outcome outcome;
        pass(engine, lines, maker, outcome);
        outcome.drawing = DrawingBits(drawing.db());
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
inline int GetFactor() {
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

}  // namespace test
