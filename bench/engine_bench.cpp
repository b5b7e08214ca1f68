// The engine's passes, each alone and all of them behind each pipeline, on generated tools,
// boundary tracing, and beside them what a geometry library needs merely to node the same segments.
// Growth exponents are printed at the end.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "support/engine_probe.h"
#include "support/tool_profile.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"

namespace {

using Lines = std::vector<CLineInfo>;

constexpr std::uint64_t kSeed = 20260101;

// Processor time: other programs on the machine do not count.
double GetSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

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

AcArray<AcDbObjectId> AddTool(size_t count) {
    CBlockAppender space;
    AcArray<AcDbObjectId> ids;
    for (const auto& segment : test::ToolProfile(kSeed).Make(count)) {
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
void BM_Passes(benchmark::State& state) {
    for (auto _ : state) {
        BenchDrawing drawing;
        const AcArray<AcDbObjectId> ids = AddTool(static_cast<size_t>(state.range(0)));
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

// Picked lines in, envelope out: cloning, conversion, all passes, drawing, erasing.
template <Pipeline kPipeline>
void BM_Pipeline(benchmark::State& state) {
    for (auto _ : state) {
        BenchDrawing drawing;
        const AcArray<AcDbObjectId> ids = AddTool(static_cast<size_t>(state.range(0)));
        CEncircleCalInfo info;
        info.m_midLineId =
            AddLine(AcGePoint3d(-10, 0, 0), AcGePoint3d(10, 0, 0), 256, ACDB_MODEL_SPACE);
        AcDbObjectId outId;
        const double start = GetSeconds();
        (CEncircleLine(info).*kPipeline)(ids, outId);
        state.SetIterationTime(GetSeconds() - start);
        if (outId.isNull()) state.SkipWithError("no envelope");
    }
}

// The host's boundary tracing around lines, arcs and circles that cross all over a square; the seed
// lies outside of them, in a frame.
void BM_TraceBoundary(benchmark::State& state) {
    BenchDrawing drawing;
    const double size = std::sqrt(static_cast<double>(state.range(0))) * 4;
    std::mt19937_64 random(kSeed);
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

// Noding alone, of the same segments, by GEOS.
void BM_GeosNode(benchmark::State& state) {
    const test::Segments segments =
        test::ToolProfile(kSeed).Make(static_cast<size_t>(state.range(0)));
    const auto context = std::unique_ptr<GEOSContextHandle_HS, decltype(&GEOS_finish_r)>(
        GEOS_init_r(), GEOS_finish_r);
    GEOSContextHandle_t geos = context.get();
    std::vector<GEOSGeometry*> lines;
    for (const auto& segment : segments) {
        GEOSCoordSequence* points = GEOSCoordSeq_create_r(geos, 2, 2);
        GEOSCoordSeq_setXY_r(geos, points, 0, segment.first.x, segment.first.y);
        GEOSCoordSeq_setXY_r(geos, points, 1, segment.second.x, segment.second.y);
        lines.push_back(GEOSGeom_createLineString_r(geos, points));
    }
    GEOSGeometry* all = GEOSGeom_createCollection_r(geos, GEOS_MULTILINESTRING, lines.data(),
                                                    static_cast<unsigned>(lines.size()));
    for (auto _ : state) {
        const double start = GetSeconds();
        GEOSGeometry* noded = GEOSNode_r(geos, all);
        state.SetIterationTime(GetSeconds() - start);
        state.counters["pieces"] = noded == nullptr ? 0 : GEOSGetNumGeometries_r(geos, noded);
        if (noded == nullptr) state.SkipWithError("GEOS did not node the segments");
        GEOSGeom_destroy_r(geos, noded);
    }
    GEOSGeom_destroy_r(geos, all);
}

void AddSizes(benchmark::internal::Benchmark* bench) {
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.2);
    for (const int size : {1000, 3000, 10000, 30000, 100000, 300000}) bench->Arg(size);
}

BENCHMARK(BM_Passes)->Apply(AddSizes);
BENCHMARK(BM_Pipeline<&CEncircleLine::GetEncircleLine3>)->Name("BM_Pipeline")->Apply(AddSizes);
BENCHMARK(BM_Pipeline<&CEncircleLine::GetEncircleLineByHatch>)
    ->Name("BM_PipelineHatch")
    ->Apply(AddSizes);
BENCHMARK(BM_Pipeline<&CEncircleLine::GetEncircleLine>)->Name("BM_Pipeline1")->Apply(AddSizes);
BENCHMARK(BM_Pipeline<&CEncircleLine::GetEncircleLine2>)->Name("BM_Pipeline2")->Apply(AddSizes);
BENCHMARK(BM_TraceBoundary)->Apply(AddSizes);
BENCHMARK(BM_GeosNode)->Apply(AddSizes);
// Two gigabytes of memory and more.
BENCHMARK(BM_Pipeline<&CEncircleLine::GetEncircleLine3>)
    ->Name("BM_PipelineLarge")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Arg(1000000)
    ->Iterations(1);

// Prints as usual and, at the end, how each time grows with the number of segments.
class GrowthReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred) continue;
            const std::string name = run.run_name.function_name;
            const double size = std::atof(run.run_name.args.c_str());
            m_times[name][size] = run.GetAdjustedRealTime();
            for (const auto& counter : run.counters) {
                if (std::isdigit(counter.first[0]) == 0) continue;
                m_times[name + " " + counter.first][size] = counter.second.value;
            }
        }
    }
    void Finalize() override {
        std::printf("\ngrowth: time ~ segments ^ exponent, fitted from 10k segments up\n");
        for (const auto& entry : m_times) Print(entry.first, entry.second);
    }

private:
    static void Print(const std::string& name, const std::map<double, double>& times) {
        double n = 0;
        double x = 0;
        double y = 0;
        double xx = 0;
        double xy = 0;
        for (const auto& [size, time] : times) {
            if (size < 10000 || !(time > 0.0)) continue;
            const double lx = std::log(size);
            const double ly = std::log(time);
            n += 1;
            x += lx;
            y += ly;
            xx += lx * lx;
            xy += lx * ly;
        }
        if (n < 2) return;
        std::printf("  %-32s %.2f\n", name.c_str(), (n * xy - x * y) / (n * xx - x * x));
    }

    std::map<std::string, std::map<double, double>> m_times;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    GrowthReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
