// Benchmarks of the engine: drawings, processor time, and how times grow.
#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <random>
#include <string>

#include "support/hatched_tool.h"
#include "support/tool_profile.h"

namespace bench {

constexpr std::uint64_t kSeed = 20260101;

// Processor time: other programs on the machine do not count.
inline double GetSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Everything is measured on the first two; the others are what a drawing should not be.
enum class Drawing {
    Gridded,
    Hatched,
    Copies,  // one line drawn over and over
    Mesh,    // half of the lines level, half upright, all across one another
    Loose    // short strokes that meet nothing
};

inline test::Segments MakeDrawing(Drawing kind, size_t count) {
    if (kind == Drawing::Gridded) return test::ToolProfile(kSeed).Make(count);
    if (kind == Drawing::Hatched) return test::HatchedTool(kSeed).Make(count);
    test::Segments segments;
    std::mt19937_64 random(kSeed);
    const auto real = [&](double to) {
        return to * static_cast<double>(random() >> 11) / 9007199254740992.0;
    };
    const double half = static_cast<double>(count / 2);
    const double size = std::sqrt(static_cast<double>(count));
    for (size_t i = 0; i < count; ++i) {
        const double at = static_cast<double>(i / 2) + 0.5;
        AcGePoint3d p(0, 1, 0);
        AcGePoint3d q(100, 2, 0);
        if (kind == Drawing::Mesh) {
            p = i % 2 == 0 ? AcGePoint3d(0, at, 0) : AcGePoint3d(at, 0, 0);
            q = i % 2 == 0 ? AcGePoint3d(half, at, 0) : AcGePoint3d(at, half, 0);
        } else if (kind == Drawing::Loose) {
            p = AcGePoint3d(real(2 * size), 1 + real(2 * size), 0);
            q = AcGePoint3d(p.x + 0.6 + real(0.3), p.y + real(0.5), 0);
        }
        segments.emplace_back(p, q);
    }
    return segments;
}

inline void SetTimes(benchmark::internal::Benchmark* bench) {
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.2);
}
inline void AddSizes(benchmark::internal::Benchmark* bench) {
    SetTimes(bench);
    for (const int size : {1000, 3000, 10000, 30000, 100000, 300000}) bench->Arg(size);
}
inline void AddUsualSizes(benchmark::internal::Benchmark* bench) {
    SetTimes(bench);
    for (const int size : {1000, 3000, 10000, 30000, 100000}) bench->Arg(size);
}

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

}  // namespace bench
