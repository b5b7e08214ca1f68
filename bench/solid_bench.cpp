// Profiles of 10 to 10,000 pieces: preparing, measuring, writing SAT and STEP; and what the kernel
// takes. The growth exponents are printed at the end of each series; the file's size is a counter.
#include <cmath>
#include <string>

#include <benchmark/benchmark.h>

#include "host/solid/kernel.h"
#include "host/solid/sat_text.h"
#include "host/solid/step_text.h"

using namespace host::solid;

namespace {

// A turned part of n pieces: steps joined by fillets, shoulders and cones.
Outline TurnedPart(int pieces) {
    Outline outline;
    outline.corners = {{{0.0, 0.0}, 0.0}, {{static_cast<double>(pieces), 0.0}, 0.0}};
    for (int i = pieces - 3; i >= 0; --i) {
        const double x = i + 3.0, y = 20.0 + 5.0 * std::sin(0.37 * i) + (i % 2 == 0 ? 1.0 : 0.0);
        outline.corners.push_back({{x, y}, i % 3 == 0 ? 0.2 : 0.0});
    }
    outline.corners.push_back({{0.0, 18.0}, 0.0});
    return outline;
}

Profile Prepared(int pieces) {
    Profile profile;
    if (const Refusal refusal = Prepare(TurnedPart(pieces), {}, {1, 0, 0}, profile))
        std::fprintf(stderr, "%s\n", refusal.Text().c_str());
    return profile;
}

void BM_Prepare(benchmark::State& state) {
    const Outline outline = TurnedPart(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Profile profile;
        const Refusal refusal = Prepare(outline, {}, {1, 0, 0}, profile);
        if (refusal) state.SkipWithError(refusal.Text().c_str());
        benchmark::DoNotOptimize(profile);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Prepare)->RangeMultiplier(10)->Range(10, 10000)->Complexity();

void BM_Measure(benchmark::State& state) {
    const Profile profile = Prepared(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(Measure(profile));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Measure)->RangeMultiplier(10)->Range(10, 10000)->Complexity();

void BM_SatText(benchmark::State& state) {
    const Profile profile = Prepared(static_cast<int>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) bytes = SatText({&profile}, SatOptions()).size();
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SatText)->RangeMultiplier(10)->Range(10, 10000)->Complexity();

void BM_StepText(benchmark::State& state) {
    const Profile profile = Prepared(static_cast<int>(state.range(0)));
    StepOptions options;
    options.timestamp = "2026-01-05T10:00:00";
    for (auto _ : state) benchmark::DoNotOptimize(StepText(profile, options));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_StepText)->RangeMultiplier(10)->Range(10, 10000)->Complexity();

void BM_KernelStep(benchmark::State& state) {
    const Profile profile = Prepared(static_cast<int>(state.range(0)));
    const double volume = Measure(profile).volume;
    std::string reason, text;
    const Kernel* kernel = LoadKernel(reason);
    if (kernel == nullptr) return state.SkipWithError(reason.c_str());
    for (auto _ : state) {
        const auto solid = kernel->Revolve(profile, volume, reason);
        if (solid == nullptr || !solid->StepText(StepOptions(), text, reason))
            return state.SkipWithError(reason.c_str());
    }
    state.counters["bytes"] = static_cast<double>(text.size());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_KernelStep)
    ->RangeMultiplier(10)
    ->Range(10, 10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace

BENCHMARK_MAIN();
