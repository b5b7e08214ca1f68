// What a geometry library needs merely to node the segments that the engine makes an envelope of:
// GEOS, by the noder itself and by the call of its C interface.
#include <geos/algorithm/LineIntersector.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/noding/IntersectionAdder.h>
#include <geos/noding/MCIndexNoder.h>
#include <geos/noding/NodedSegmentString.h>
#include <geos_c.h>

#include <memory>
#include <vector>

#include "engine_growth.h"

namespace {

using bench::Drawing;
using bench::GetSeconds;
using geos::noding::NodedSegmentString;
using geos::noding::SegmentString;

// Segments as strings of two points each, which is how a drawing's lines come.
class Strings {
public:
    explicit Strings(const test::Segments& segments) {
        for (const auto& segment : segments) {
            auto points = std::make_unique<geos::geom::CoordinateArraySequence>(2u, 2u);
            points->setAt(geos::geom::Coordinate(segment.first.x, segment.first.y), 0);
            points->setAt(geos::geom::Coordinate(segment.second.x, segment.second.y), 1);
            m_owned.push_back(std::make_unique<NodedSegmentString>(points.release(), nullptr));
            m_strings.push_back(m_owned.back().get());
        }
    }
    // Nodes them; the number of pieces.
    size_t Node() {
        geos::algorithm::LineIntersector intersector;
        geos::noding::IntersectionAdder adder(intersector);
        geos::noding::MCIndexNoder noder(&adder);
        noder.computeNodes(&m_strings);
        const std::unique_ptr<std::vector<SegmentString*>> pieces(noder.getNodedSubstrings());
        for (const SegmentString* piece : *pieces) delete piece;
        return pieces->size();
    }

private:
    std::vector<std::unique_ptr<NodedSegmentString>> m_owned;
    std::vector<SegmentString*> m_strings;
};

template <Drawing kDrawing>
void BM_Noder(benchmark::State& state) {
    const test::Segments segments =
        bench::MakeDrawing(kDrawing, static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        Strings strings(segments);
        const double start = GetSeconds();
        const size_t pieces = strings.Node();
        state.SetIterationTime(GetSeconds() - start);
        state.counters["pieces"] = static_cast<double>(pieces);
    }
}

// GEOSNode() also dissolves what it noded, and takes several times as long.
void BM_NodeCall(benchmark::State& state) {
    const test::Segments segments =
        bench::MakeDrawing(Drawing::Gridded, static_cast<size_t>(state.range(0)));
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

BENCHMARK(BM_Noder<Drawing::Hatched>)->Name("BM_Noder/hatched")->Apply(bench::AddSizes);
BENCHMARK(BM_Noder<Drawing::Gridded>)->Name("BM_Noder/gridded")->Apply(bench::AddSizes);
BENCHMARK(BM_NodeCall)->Apply(bench::AddUsualSizes);

}  // namespace
