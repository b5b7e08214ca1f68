// The engine's passes, each alone and all of them behind each pipeline, on generated tools, and
// boundary tracing. engine_peers.cpp measures a geometry library on the same segments. Growth
// exponents are printed at the end.
#include <sys/resource.h>

#include <cmath>
#include <random>
#include <string>

#include "engine_growth.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"
#include "support/engine_probe.h"

namespace {

using bench::Drawing;
using bench::GetSeconds;
using Lines = std::vector<CLineInfo>;

// A new drawing, the working database for its life.
class BenchDrawing {
public:
    BenchDrawing() : m_db(true, true), m_host(acdbHostApplicationServices()) {
        m_former = m_host->workingDatabase();
        m_host->setWorkingDatabase(&m_db);
    }
    ~BenchDrawing() { m_host->setWorkingDatabase(m_former); }
    BenchDrawing(const BenchDrawing&) = delete;
    BenchDrawing& operator=(const BenchDrawing&) = delete;

private:
    AcDbDatabase m_db;
    AcDbHostApplicationServices* m_host;
    AcDbDatabase* m_former;
};

AcArray<AcDbObjectId> AddTool(Drawing kind, size_t count) {
    CBlockAppender space;
    AcArray<AcDbObjectId> ids;
    for (const auto& segment : bench::MakeDrawing(kind, count)) {
        ids.append(space.AppendLine(segment.first, segment.second, 256));
    }
    return ids;
}

// Adds a pass's time in milliseconds to the counters.
class Stopwatch {
public:
    explicit Stopwatch(benchmark::State& state) : m_state(state) {}

    template <class Pass>
    void Time(const std::string& name, const Pass& pass) {
        const double start = GetSeconds();
        pass();
        const double ms = (GetSeconds() - start) * 1000;
        m_state.counters[name] += ms / static_cast<double>(m_state.max_iterations);
        m_sum += ms;
    }
    double GetSum() const { return m_sum / 1000; }

private:
    benchmark::State& m_state;
    double m_sum = 0.0;
};

// Every pass of an upper half, in pipeline order, on the drawing's lines.
template <Drawing kDrawing>
void BM_Passes(benchmark::State& state) {
    for (auto _ : state) {
        BenchDrawing drawing;
        const AcArray<AcDbObjectId> ids = AddTool(kDrawing, static_cast<size_t>(state.range(0)));
        Stopwatch watch(state);
        test::EngineProbe engine;
        Lines lines;
        watch.Time("00_records", [&] {
            for (int i = 0; i < ids.length(); ++i) lines.emplace_back(ids[i]);
        });
        watch.Time("01_axis", [&] { engine.CreateTempLine(E_Dir_Top, 0.0, lines); });
        watch.Time("02_BreakLines", [&] { engine.BreakLines(lines); });
        state.counters["pieces"] = static_cast<double>(lines.size());
        watch.Time("03_ExcludeDir", [&] { engine.RemoveLineInExcludeDir(E_Dir_Top, 0.0, lines); });
        watch.Time("04_RemoveRepeat", [&] { engine.RemoveRepeatLine2(lines); });
        watch.Time("05_NearestPt", [&] { engine.UpdateLinePtByNearestPt(lines); });
        watch.Time("06_RemoveShort", [&] { engine.RemoveShortLine(lines); });
        lines.pop_back();
        Lines valid;
        for (CLineInfo& line : lines) {
            if (line.m_bValid) valid.push_back(std::move(line));
        }
        for (const CLineInfo& line : valid) {
            engine.m_extents.Extend(line.m_startPt);
            engine.m_extents.Extend(line.m_endPt);
        }
        state.counters["working"] = static_cast<double>(valid.size());
        Lines top;
        Lines left;
        Lines right;
        watch.Time("07_SeeTop",
                   [&] { top = engine.BreakAndSee(valid, true, true, {E_Dir_Top}).front(); });
        state.counters["seen"] = static_cast<double>(top.size());
        watch.Time("08_ConnectTop", [&] { engine.ConnectBreakLine(E_Dir_Top, top); });
        watch.Time("09_SeeLeft",
                   [&] { left = engine.BreakAndSee(valid, false, true, {E_Dir_Left}).front(); });
        watch.Time("10_OtherLeft", [&] { engine.RemoveLineInOtherDir(top, left); });
        watch.Time("11_SeeRight",
                   [&] { right = engine.BreakAndSee(valid, false, false, {E_Dir_Right}).front(); });
        watch.Time("12_OtherRight", [&] { engine.RemoveLineInOtherDir(top, right); });
        AcArray<AcGePoint3d> points;
        watch.Time("13_GetLineInfoPt", [&] {
            engine.GetLineInfoPt(left, false, false, points);
            engine.GetLineInfoPt(top, true, true, points);
            engine.GetLineInfoPt(right, true, false, points);
        });
        benchmark::DoNotOptimize(points.length());
        state.SetIterationTime(watch.GetSum());
    }
}

using Pipeline = void (CEncircleLine::*)(const AcArray<AcDbObjectId>&, AcDbObjectId&);

// The most memory that the process has had, in megabytes. It never falls, so run one size alone to
// learn what it takes.
double GetPeakMegabytes() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

// Picked lines in, envelope out: cloning, conversion, all passes, drawing, erasing.
template <Pipeline kPipeline, Drawing kDrawing>
void BM_Pipeline(benchmark::State& state) {
    for (auto _ : state) {
        BenchDrawing drawing;
        const AcArray<AcDbObjectId> ids = AddTool(kDrawing, static_cast<size_t>(state.range(0)));
        CEncircleCalInfo info;
        info.m_midLineId =
            AddLine(AcGePoint3d(-10, 0, 0), AcGePoint3d(10, 0, 0), 256, ACDB_MODEL_SPACE);
        AcDbObjectId outId;
        const double before = GetPeakMegabytes();
        const double start = GetSeconds();
        (CEncircleLine(info).*kPipeline)(ids, outId);
        state.SetIterationTime(GetSeconds() - start);
        state.counters["MB_before"] = before;
        state.counters["MB_peak"] = GetPeakMegabytes();
        if (outId.isNull()) state.SkipWithError("no envelope");
    }
}

// The host's boundary tracing around lines, arcs and circles that cross all over a square; the seed
// lies outside of them, in a frame.
void BM_TraceBoundary(benchmark::State& state) {
    BenchDrawing drawing;
    const double size = std::sqrt(static_cast<double>(state.range(0))) * 4;
    std::mt19937_64 random(bench::kSeed);
    const auto real = [&](double from, double to) {
        return from + (to - from) * static_cast<double>(random() >> 11) / 9007199254740992.0;
    };
    {
        CBlockAppender space;
        const AcGePoint3d corners[] = {
            {-9, -9, 0}, {size + 9, -9, 0}, {size + 9, size + 9, 0}, {-9, size + 9, 0}};
        for (int i = 0; i < 4; ++i) space.AppendLine(corners[i], corners[(i + 1) % 4], 256);
        for (int i = 0; i < state.range(0); ++i) {
            const AcGePoint3d p(real(0, size), real(0, size), 0);
            if (i % 2 == 0) {
                space.AppendLine(p, p + AcGeVector3d(real(-5, 5), real(-5, 5), 0), 256);
            } else {
                space.Append(new AcDbArc(p, real(0.5, 4), real(0, 3), real(3.5, 6)));
            }
        }
    }
    for (auto _ : state) {
        AcDbVoidPtrArray loops;
        const double start = GetSeconds();
        if (acedTraceBoundary(AcGePoint3d(-8, -8, 0), true, loops) != Acad::eOk)
            state.SkipWithError("no boundary");
        state.SetIterationTime(GetSeconds() - start);
        state.counters["loops"] = loops.length();
        for (int i = 0; i < loops.length(); ++i) delete static_cast<AcDbEntity*>(loops[i]);
    }
}

constexpr Pipeline kLive = &CEncircleLine::GetEncircleLine3;
constexpr Pipeline kTraced = &CEncircleLine::GetEncircleLineByHatch;
constexpr Pipeline kExact = &CEncircleLine::GetEncircleLineExact;
constexpr Pipeline kFirst = &CEncircleLine::GetEncircleLine;
constexpr Pipeline kSecond = &CEncircleLine::GetEncircleLine2;
constexpr Drawing kGridded = Drawing::Gridded;
constexpr Drawing kHatched = Drawing::Hatched;

BENCHMARK(BM_Passes<kHatched>)->Name("BM_Passes/hatched")->Apply(bench::AddSizes);
BENCHMARK(BM_Passes<kGridded>)->Name("BM_Passes/gridded")->Apply(bench::AddSizes);
BENCHMARK(BM_Pipeline<kLive, kHatched>)->Name("BM_Pipeline/hatched")->Apply(bench::AddSizes);
BENCHMARK(BM_Pipeline<kLive, kGridded>)->Name("BM_Pipeline/gridded")->Apply(bench::AddSizes);
BENCHMARK(BM_Pipeline<kExact, kHatched>)->Name("BM_PipelineExact/hatched")->Apply(bench::AddSizes);
BENCHMARK(BM_Pipeline<kExact, kGridded>)->Name("BM_PipelineExact/gridded")->Apply(bench::AddSizes);
BENCHMARK(BM_Pipeline<kTraced, kGridded>)->Name("BM_PipelineHatch")->Apply(bench::AddUsualSizes);
BENCHMARK(BM_Pipeline<kFirst, kGridded>)->Name("BM_Pipeline1")->Apply(bench::AddUsualSizes);
BENCHMARK(BM_Pipeline<kSecond, kGridded>)->Name("BM_Pipeline2")->Apply(bench::AddUsualSizes);
BENCHMARK(BM_TraceBoundary)->Apply(bench::AddUsualSizes);
BENCHMARK(BM_Pipeline<kLive, Drawing::Copies>)
    ->Name("BM_Pipeline/copies")
    ->Apply(bench::SetTimes)
    ->Arg(4000)
    ->Arg(20000)
    ->Arg(100000);
BENCHMARK(BM_Pipeline<kLive, Drawing::Mesh>)
    ->Name("BM_Pipeline/mesh")
    ->Apply(bench::SetTimes)
    ->Arg(300)
    ->Arg(1000)
    ->Arg(3000);
BENCHMARK(BM_Pipeline<kLive, Drawing::Loose>)
    ->Name("BM_Pipeline/loose")
    ->Apply(bench::SetTimes)
    ->Arg(30000)
    ->Arg(100000)
    ->Arg(300000);
// A gigabyte of memory.
BENCHMARK(BM_Pipeline<kLive, kGridded>)
    ->Name("BM_PipelineLarge")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Arg(1000000)
    ->Iterations(1);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    bench::GrowthReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
