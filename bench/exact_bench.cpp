// The exact envelope by kinds of drawings that a slow way would fail on, and what GEOS needs merely
// to node the same segments. Processor time; the growth exponent is that from one size to the next.
#include <benchmark/benchmark.h>
#include <geos/algorithm/LineIntersector.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/noding/IntersectionAdder.h>
#include <geos/noding/MCIndexNoder.h>
#include <geos/noding/NodedSegmentString.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <memory>
#include <random>
#include <vector>

#include "plugin/outline/OutlineLaw.h"

namespace {

using outline::Contour;
using outline::Request;

enum class Kind {
    Hatched,      // strokes of random heights and lengths, as shading has them
    Snapped,      // a stepped profile on a grid, with its inner edges
    Overlapping,  // level lines, all over the same stretch
    Concentric,   // arcs about one centre
    Comb,         // teeth side by side
    LongLine      // a comb, and one line over all of it
};

Request MakeRequest(Kind kind, size_t count) {
    Request request;
    request.curves.reserve(count + 1);
    std::mt19937_64 random(20260101);
    const auto real = [&] { return static_cast<double>(random() >> 11) / 9007199254740992.0; };
    const auto add = [&](const plane::Curve& c) {
        request.curves.push_back({c, static_cast<int>(request.curves.size()), false});
    };
    const double size = std::sqrt(static_cast<double>(count));
    double s = 0, r = 5;
    for (size_t i = 0; request.curves.size() < count; ++i) {
        const double at = static_cast<double>(i);
        switch (kind) {
            case Kind::Hatched: {
                const plane::Point p{size * real(), 1 + size * real()};
                add(plane::MakeLine(p, {p.x + 2 * real() - 1, p.y + 2 * real()}));
                break;
            }
            case Kind::Snapped: {
                const double next = 2 + std::floor(20 * real());
                add(plane::MakeLine({s, r}, {s + 1, r}));
                add(plane::MakeLine({s + 1, r}, {s + 1, next}));
                add(plane::MakeLine({s + 1, 0}, {s + 1, (std::min)(r, next)}));
                s += 1;
                r = next;
                break;
            }
            case Kind::Overlapping:
                add(plane::MakeLine({-1 - real(), 1 + at}, {1 + real(), 1 + at}));
                break;
            case Kind::Concentric:
                add(plane::MakeArc({0, 0}, 1 + at, 0.1 + real(), 1 + real()));
                break;
            case Kind::LongLine:
                if (i == 0) add(plane::MakeLine({0, 3}, {static_cast<double>(count), 3.5}));
                [[fallthrough]];
            case Kind::Comb: {
                const double next = 4 + 3 * real();
                add(plane::MakeLine({at, 5}, {at + 0.5, next}));
                add(plane::MakeLine({at + 0.5, next}, {at + 1, 5}));
                break;
            }
        }
    }
    return request;
}

double Seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

template <Kind kind>
void BM_Exact(benchmark::State& state) {
    const Request request = MakeRequest(kind, static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        const double start = Seconds();
        benchmark::DoNotOptimize(outline::FindEnvelope(request));
        state.SetIterationTime(Seconds() - start);
    }
    state.SetComplexityN(state.range(0));
}

template <Kind kind>
void BM_Noder(benchmark::State& state) {
    using geos::noding::NodedSegmentString;
    using geos::noding::SegmentString;
    const Request request = MakeRequest(kind, static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        std::vector<std::unique_ptr<NodedSegmentString>> owned;
        std::vector<SegmentString*> strings;
        for (const Contour& c : request.curves) {
            auto points = std::make_unique<geos::geom::CoordinateArraySequence>(2u, 2u);
            points->setAt(geos::geom::Coordinate(c.curve.from.x, c.curve.from.y), 0);
            points->setAt(geos::geom::Coordinate(c.curve.to.x, c.curve.to.y), 1);
            owned.push_back(std::make_unique<NodedSegmentString>(points.release(), nullptr));
            strings.push_back(owned.back().get());
        }
        const double start = Seconds();
        geos::algorithm::LineIntersector intersector;
        geos::noding::IntersectionAdder adder(intersector);
        geos::noding::MCIndexNoder noder(&adder);
        noder.computeNodes(&strings);
        const std::unique_ptr<std::vector<SegmentString*>> pieces(noder.getNodedSubstrings());
        state.SetIterationTime(Seconds() - start);
        for (SegmentString* piece : *pieces) delete piece;
    }
    state.SetComplexityN(state.range(0));
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.1);
    bench->RangeMultiplier(10)->Range(1000, 1000000)->Complexity();
}

#define EXACT_KIND(kind)                                                    \
    BENCHMARK(BM_Exact<Kind::kind>)->Name("BM_Exact/" #kind)->Apply(Sizes); \
    BENCHMARK(BM_Noder<Kind::kind>)->Name("BM_Noder/" #kind)->Apply(Sizes)
EXACT_KIND(Hatched);
EXACT_KIND(Snapped);
EXACT_KIND(Overlapping);
EXACT_KIND(Comb);
EXACT_KIND(LongLine);
BENCHMARK(BM_Exact<Kind::Concentric>)->Name("BM_Exact/Concentric")->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
