#include "host/ed/faces.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/ed/geos_tools.h"

namespace host {
namespace {

// The widest angle under one chord.
constexpr double kChordAngle = 3.14159265358979323846 / 16;
// Chords are halved so often at most; curves that still cross then run within rounding errors of
// one another.
constexpr int kMostRounds = 14;
// The part of the shortest piece at a node at which all its curves are sampled.
constexpr double kStubPart = 0.25;

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// The signed area between a curve and its chord, positive to the right of the chord.
double BulgeArea(const PlaneCurve& curve) {
    return curve.isArc ? curve.radius * curve.radius * (curve.sweep - std::sin(curve.sweep)) / 2
                       : 0.0;
}

// Whether the point lies between an arc and its chord. A point on the chord's line counts as moved
// a little to the right, and by much less upwards: on the side on which CrossesRay() has it.
bool IsUnderArc(const PlaneCurve& curve, const AcGePoint2d& p) {
    if (!curve.isArc || (p - curve.center).length() >= curve.radius) return false;
    const AcGeVector2d chord = curve.end - curve.start;
    double side = Cross(chord, p - curve.start);
    if (side == 0.0) side = chord.y != 0.0 ? -chord.y : chord.x;
    return curve.sweep > 0.0 ? side < 0.0 : side > 0.0;
}

// Whether a ray from p to the right crosses the chord. Half open, so that a shared end counts once.
bool CrossesRay(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& p) {
    if ((a.y > p.y) == (b.y > p.y)) return false;
    const double side = Cross(b - a, p - a);
    return b.y > a.y ? side > 0.0 : side < 0.0;
}

// Pieces as chords for GEOS, and the way back from its rings to the pieces.
//
// GEOS sees the directions in which chords leave a node. All arcs at a node are therefore sampled
// at one distance from it, so that tangent curves leave it in their true order, bent or straight.
class ChordedPieces {
public:
    ChordedPieces(const AcGePoint2d& origin, const std::vector<PlaneCurve>& curves,
                  const Noding& noding)
        : m_origin(origin), m_halvings(noding.pieces.size(), 0) {
        m_curves.reserve(noding.pieces.size());
        std::vector<double> shortest(noding.nodes.size(), HUGE_VAL);
        for (const NodedPiece& piece : noding.pieces) {
            m_curves.push_back(CurveOf(piece, curves, noding));
            const PlaneCurve& curve = m_curves.back();
            const double length = (curve.end - curve.start).length();
            for (const size_t node : {piece.from, piece.to})
                shortest[node] = (std::min)(shortest[node], length);
        }
        for (const NodedPiece& piece : noding.pieces)
            m_stubs.push_back({kStubPart * shortest[piece.from], kStubPart * shortest[piece.to]});
        m_chords.resize(m_curves.size());
        for (size_t i = 0; i < m_curves.size(); ++i) Chord(i);
    }

    const PlaneCurve& Curve(size_t piece) const { return m_curves[piece]; }

    GeosContext::Geometry Lines(const GeosContext& geos) const {
        std::vector<GeosContext::Geometry> lines;
        lines.reserve(m_chords.size());
        for (const std::vector<AcGePoint2d>& chords : m_chords)
            lines.push_back(geos.LineOf(chords));
        return geos.Collect(lines);
    }

    // The pieces of a ring of chords, in its order; the last point repeats the first.
    FaceLoop LoopOf(const std::vector<AcGePoint2d>& ring) const {
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
                if (isDone[piece] != 0 || !m_curves[piece].isArc ||
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
        Key(const AcGePoint2d& a, const AcGePoint2d& b) : bits{a.x, a.y, b.x, b.y} {}
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

    AcGePoint2d Local(const AcGePoint2d& p) const {
        return AcGePoint2d(p.x - m_origin.x, p.y - m_origin.y);
    }

    // The part of an arc's parameter within a distance of its end.
    static double StubParam(const PlaneCurve& arc, double distance) {
        const double angle = 2 * std::asin((std::min)(distance / (2 * arc.radius), 1.0));
        return (std::min)(angle / std::fabs(arc.sweep), 0.4);
    }

    void Chord(size_t piece) {
        const PlaneCurve& curve = m_curves[piece];
        std::vector<AcGePoint2d>& chords = m_chords[piece];
        chords = {Local(curve.start)};
        if (curve.isArc && curve.sweep != 0.0) {
            const double from = StubParam(curve, m_stubs[piece].first);
            const double to = 1 - StubParam(curve, m_stubs[piece].second);
            const double angle = kChordAngle / std::ldexp(1.0, m_halvings[piece]);
            const int count = 1 + static_cast<int>(std::fabs(curve.sweep) * (to - from) / angle);
            for (int i = 0; i <= count; ++i)
                chords.push_back(Local(curve.PointAt(from + (to - from) * i / count)));
        }
        chords.push_back(Local(curve.end));
        // GEOS drops repeated points, and its rings would no longer lead back to the pieces.
        const auto isSame = [](const AcGePoint2d& a, const AcGePoint2d& b) {
            return a.x == b.x && a.y == b.y;
        };
        chords.erase(std::unique(chords.begin(), chords.end(), isSame), chords.end());
        const size_t last = chords.size() - 1;
        m_firstChords[{chords[0], chords[1]}] = {piece, true};
        m_firstChords[{chords[last], chords[last - 1]}] = {piece, false};
    }

    AcGePoint2d m_origin;
    std::vector<PlaneCurve> m_curves;
    std::vector<std::pair<double, double>> m_stubs;  // distances from the ends
    std::vector<int> m_halvings;
    std::vector<std::vector<AcGePoint2d>> m_chords;
    std::unordered_map<Key, FaceLoop::Step, Hash> m_firstChords;
};

PlaneCurve Directed(const ChordedPieces& pieces, const FaceLoop::Step& step) {
    PlaneCurve curve = pieces.Curve(step.piece);
    if (step.isForward) return curve;
    std::swap(curve.start, curve.end);
    curve.startAngle += curve.sweep;
    curve.sweep = -curve.sweep;
    return curve;
}

// Of the curves, not of their chords; positive counter-clockwise.
double AreaOf(const FaceLoop& loop, const ChordedPieces& pieces, const AcGePoint2d& origin) {
    double area = 0.0;
    for (const FaceLoop::Step& step : loop.steps) {
        const PlaneCurve curve = Directed(pieces, step);
        area += Cross(curve.start - origin, curve.end - origin) / 2 + BulgeArea(curve);
    }
    return area;
}

bool Encloses(const FaceLoop& loop, const ChordedPieces& pieces, const AcGePoint2d& p) {
    bool isInside = false;
    for (const FaceLoop::Step& step : loop.steps) {
        const PlaneCurve& curve = pieces.Curve(step.piece);
        if (CrossesRay(curve.start, curve.end, p) != IsUnderArc(curve, p)) isInside = !isInside;
    }
    return isInside;
}

void MakeCounterClockwise(FaceLoop& loop, const ChordedPieces& pieces, const AcGePoint2d& origin) {
    if (AreaOf(loop, pieces, origin) >= 0.0) return;
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

// The face whose outer loop encloses the seed most closely; null when none does.
const GEOSGeometry* FaceAround(const GeosContext& geos, const GEOSGeometry* faces,
                               const ChordedPieces& pieces, const AcGePoint2d& seed) {
    const GEOSGeometry* nearest = nullptr;
    double least = 0.0;
    for (int i = 0; i < GEOSGetNumGeometries_r(geos.Handle(), faces); ++i) {
        const GEOSGeometry* const face = GEOSGetGeometryN_r(geos.Handle(), faces, i);
        const FaceLoop loop = LoopOfRing(geos, GEOSGetExteriorRing_r(geos.Handle(), face), pieces);
        if (!Encloses(loop, pieces, seed)) continue;
        const double area = std::fabs(AreaOf(loop, pieces, seed));
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

std::vector<FaceLoop> FindFaceAround(const AcGePoint2d& seed, const std::vector<PlaneCurve>& curves,
                                     const Noding& noding) {
    if (noding.pieces.empty()) return {};
    const GeosContext geos;
    ChordedPieces pieces(seed, curves, noding);
    while (true) {
        const Polygons polygons = Polygonize(geos, pieces);
        if (RefineInvalid(geos, polygons.invalid.get(), pieces)) continue;
        const GEOSGeometry* const face = FaceAround(geos, polygons.faces.get(), pieces, seed);
        if (face == nullptr) return {};
        std::vector<FaceLoop> loops = LoopsOf(geos, face, pieces);
        // An island whose chords cross the outer loop's may have been given to another face.
        if (GEOSisValid_r(geos.Handle(), face) != 1 && pieces.Refine(loops)) continue;
        for (FaceLoop& loop : loops) MakeCounterClockwise(loop, pieces, seed);
        return loops;
    }
}

}  // namespace host
