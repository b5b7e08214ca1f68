#include "host/geos/faces.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/geos/geos_tools.h"
#include "plane/ring.h"

namespace host {
namespace {

using plane::Curve;
using plane::NodedPiece;
using plane::Noding;
using plane::Point;
using Points = GeosContext::Points;

// The widest angle under one chord.
constexpr double kChordAngle = plane::kHalfTurn / 16;
// Chords are halved so often at most; curves that still cross then run within rounding errors of
// one another.
constexpr int kMostRounds = 14;
// The part of the shortest piece at a node at which all its curves are sampled.
constexpr double kStubPart = 0.25;

// Pieces as chords for GEOS, and the way back from its rings to the pieces.
//
// GEOS sees the directions in which chords leave a node. All arcs at a node are therefore sampled
// at one distance from it, so that tangent curves leave it in their true order, bent or straight.
class ChordedPieces {
public:
    // All coordinates are taken from the origin, near which what is looked for lies.
    ChordedPieces(const Point& origin, const std::vector<Curve>& curves, const Noding& noding)
        : m_pieces(noding.pieces), m_halvings(noding.pieces.size(), 0) {
        m_sources.reserve(curves.size());
        for (const Curve& curve : curves) m_sources.push_back(Moved(curve, origin));
        m_curves.reserve(m_pieces.size());
        std::vector<double> shortest(noding.nodes.size(), HUGE_VAL);
        for (const NodedPiece& piece : m_pieces) {
            m_curves.push_back(Moved(CurveOf(piece, curves, noding), origin));
            const double length = Length(m_curves.back().Chord());
            for (const size_t node : {piece.from, piece.to})
                shortest[node] = (std::min)(shortest[node], length);
        }
        for (const NodedPiece& piece : m_pieces)
            m_stubs.push_back({kStubPart * shortest[piece.from], kStubPart * shortest[piece.to]});
        m_chords.resize(m_curves.size());
        for (size_t i = 0; i < m_curves.size(); ++i) Chord(i);
    }

    // The curves of a loop, in its order and direction.
    std::vector<Curve> RingOf(const FaceLoop& loop) const {
        std::vector<Curve> ring;
        ring.reserve(loop.steps.size());
        for (const FaceLoop::Step& step : loop.steps)
            ring.push_back(step.isForward ? m_curves[step.piece] : m_curves[step.piece].Reversed());
        return ring;
    }

    GeosContext::Geometry Lines(const GeosContext& geos) const { return geos.MakeLines(m_chords); }

    // The pieces of a ring of chords, in its order; the last point repeats the first.
    FaceLoop LoopOf(const Points& ring) const {
        FaceLoop loop;
        size_t i = 0;
        while (i + 1 < ring.size()) {
            const auto found = m_firstChords.find({ring[i], ring[i + 1]});
            if (found == m_firstChords.end()) {
                if (!loop.steps.empty()) throw std::runtime_error("a ring leaves the curves");
                ++i;  // a ring may begin amid a piece, which then ends it as well
                continue;
            }
            loop.steps.push_back(found->second);
            i += m_chords[found->second.piece].size() - 1;
        }
        return loop;
    }

    // Halves the chords of the loops' pieces; false when none of them is an arc that still can be.
    // Loops read before no longer fit what GEOS holds.
    bool Refine(const std::vector<FaceLoop>& loops) {
        std::vector<char> isDone(m_curves.size(), 0);
        bool isFiner = false;
        for (const FaceLoop& loop : loops) {
            for (const FaceLoop::Step& step : loop.steps) {
                const size_t piece = step.piece;
                if (isDone[piece] != 0 || !m_curves[piece].IsArc() ||
                    m_halvings[piece] >= kMostRounds)
                    continue;
                isDone[piece] = 1;
                ++m_halvings[piece];
                Chord(piece);
                isFiner = true;
            }
        }
        return isFiner;
    }

private:
    // Two points, told apart by their bits.
    struct Key {
        double bits[4];
        Key(const Point& a, const Point& b) : bits{a.x, a.y, b.x, b.y} {}
        bool operator==(const Key& other) const { return std::equal(bits, bits + 4, other.bits); }
    };
    struct Hash {
        size_t operator()(const Key& key) const {
            size_t hash = 0;
            for (const double d : key.bits)
                hash = hash * 0x100000001B3u ^ std::hash<double>()(d == 0.0 ? 0.0 : d);
            return hash;
        }
    };

    static Curve Moved(Curve curve, const Point& origin) {
        const plane::Vector back{-origin.x, -origin.y};
        curve.from = curve.from + back;
        curve.to = curve.to + back;
        curve.centre = curve.centre + back;
        return curve;
    }

    // The share of an arc's sweep within a distance of its end.
    static double StubShare(const Curve& arc, double distance) {
        const double angle = 2 * std::asin((std::min)(distance / (2 * arc.radius), 1.0));
        return (std::min)(angle / std::fabs(arc.Sweep()), 0.4);
    }

    void Chord(size_t i) {
        const Curve& curve = m_curves[i];
        Points& chords = m_chords[i];
        chords = {curve.from};
        if (curve.IsArc()) {
            const double from = StubShare(curve, m_stubs[i].first);
            const double to = 1 - StubShare(curve, m_stubs[i].second);
            const double angle = kChordAngle / std::ldexp(1.0, m_halvings[i]);
            const int count = 1 + static_cast<int>(std::fabs(curve.Sweep()) * (to - from) / angle);
            // Along the whole curve: a short piece of it may be a little off its nodes, and a long
            // arc between two near ones must not turn with them.
            const NodedPiece& piece = m_pieces[i];
            const double length = piece.toShare - piece.fromShare;
            for (int k = 0; k <= count; ++k)
                chords.push_back(
                    PointAt(m_sources[piece.curve],
                            piece.fromShare + length * (from + (to - from) * k / count)));
        }
        chords.push_back(curve.to);
        // GEOS drops repeated points, and its rings would no longer lead back to the pieces.
        chords.erase(std::unique(chords.begin(), chords.end()), chords.end());
        const size_t last = chords.size() - 1;
        m_firstChords[{chords[0], chords[1]}] = {i, true};
        m_firstChords[{chords[last], chords[last - 1]}] = {i, false};
    }

    std::vector<NodedPiece> m_pieces;
    std::vector<Curve> m_sources;                    // what the pieces are parts of
    std::vector<Curve> m_curves;                     // the pieces
    std::vector<std::pair<double, double>> m_stubs;  // distances from the ends
    std::vector<int> m_halvings;
    std::vector<Points> m_chords;
    std::unordered_map<Key, FaceLoop::Step, Hash> m_firstChords;
};

// Of the curves, not of their chords; positive counter-clockwise.
double AreaOf(const FaceLoop& loop, const ChordedPieces& pieces) {
    return Integrate(pieces.RingOf(loop)).area;
}

void MakeCounterClockwise(FaceLoop& loop, const ChordedPieces& pieces) {
    if (AreaOf(loop, pieces) >= 0.0) return;
    std::reverse(loop.steps.begin(), loop.steps.end());
    for (FaceLoop::Step& step : loop.steps) step.isForward = !step.isForward;
}

// What GEOS made of the chords.
struct Polygons {
    GeosContext::Geometry faces;
    GeosContext::Geometry invalid;
};

Polygons Polygonize(const GeosContext& geos, const ChordedPieces& pieces) {
    const GeosContext::Geometry lines = pieces.Lines(geos);
    GEOSGeometry *cuts = nullptr, *dangles = nullptr, *invalid = nullptr;
    GEOSGeometry* const faces =
        GEOSPolygonize_full_r(geos.Handle(), lines.get(), &cuts, &dangles, &invalid);
    const GeosContext::Geometry ownCuts = geos.Own(cuts), ownDangles = geos.Own(dangles);
    if (faces == nullptr) throw std::runtime_error("the curves cannot be polygonized");
    return {geos.Own(faces), geos.Own(invalid)};
}

// Rings of chords that cross, although their curves do not, are lost to GEOS: finer chords bring
// them back. False when every ring is good, or none can get better.
bool RefineInvalid(const GeosContext& geos, const GEOSGeometry* invalid, ChordedPieces& pieces) {
    std::vector<FaceLoop> loops;
    for (int i = 0; i < GEOSGetNumGeometries_r(geos.Handle(), invalid); ++i)
        loops.push_back(
            pieces.LoopOf(geos.PointsOf(GEOSGetGeometryN_r(geos.Handle(), invalid, i))));
    return pieces.Refine(loops);
}

FaceLoop LoopOfRing(const GeosContext& geos, const GEOSGeometry* ring,
                    const ChordedPieces& pieces) {
    return pieces.LoopOf(geos.PointsOf(ring));
}

// The face whose outer loop encloses the origin most closely; null when none does.
const GEOSGeometry* FaceAround(const GeosContext& geos, const GEOSGeometry* faces,
                               const ChordedPieces& pieces) {
    const GEOSGeometry* nearest = nullptr;
    double least = 0.0;
    for (int i = 0; i < GEOSGetNumGeometries_r(geos.Handle(), faces); ++i) {
        const GEOSGeometry* const face = GEOSGetGeometryN_r(geos.Handle(), faces, i);
        const FaceLoop loop = LoopOfRing(geos, GEOSGetExteriorRing_r(geos.Handle(), face), pieces);
        if (!IsInside(pieces.RingOf(loop), Point{})) continue;
        const double area = std::fabs(AreaOf(loop, pieces));
        if (nearest != nullptr && area >= least) continue;
        nearest = face;
        least = area;
    }
    return nearest;
}

std::vector<FaceLoop> LoopsOf(const GeosContext& geos, const GEOSGeometry* face,
                              const ChordedPieces& pieces) {
    std::vector<FaceLoop> loops = {
        LoopOfRing(geos, GEOSGetExteriorRing_r(geos.Handle(), face), pieces)};
    for (int i = 0; i < GEOSGetNumInteriorRings_r(geos.Handle(), face); ++i)
        loops.push_back(LoopOfRing(geos, GEOSGetInteriorRingN_r(geos.Handle(), face, i), pieces));
    return loops;
}

}  // namespace

std::vector<FaceLoop> FindFaceAround(const Point& seed, const std::vector<Curve>& curves,
                                     const Noding& noding) {
    if (noding.pieces.empty()) return {};
    const GeosContext geos;
    ChordedPieces pieces(seed, curves, noding);
    while (true) {
        const Polygons polygons = Polygonize(geos, pieces);
        if (RefineInvalid(geos, polygons.invalid.get(), pieces)) continue;
        const GEOSGeometry* const face = FaceAround(geos, polygons.faces.get(), pieces);
        if (face == nullptr) return {};
        std::vector<FaceLoop> loops = LoopsOf(geos, face, pieces);
        // An island whose chords cross the outer loop's may have been given to another face.
        if (GEOSisValid_r(geos.Handle(), face) != 1 && pieces.Refine(loops)) continue;
        for (FaceLoop& loop : loops) MakeCounterClockwise(loop, pieces);
        return loops;
    }
}

}  // namespace host
