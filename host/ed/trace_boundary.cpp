// acedTraceBoundary: node what is shown, find the face around the seed, give its loops back.
#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "aced.h"
#include "dbapserv.h"
#include "dbpl.h"
#include "host/base/angles.h"
#include "host/ed/document_imp.h"
#include "host/ed/session.h"
#include "host/ed/shown_curves.h"
#include "host/geos/faces.h"
#include "plane/noding.h"

namespace host {
namespace {

// No bulge of a loop stands for more; a vertex is kept where two parts of a curve would exceed it.
constexpr double kWidestSweep = 1.5 * kPi;

// One step of a loop: where it starts, and how far it turns.
struct Side {
    plane::Point start;
    double sweep;
    bool isArc;
    int source;
};

bool ContinueEachOther(const Side& a, const Side& b) {
    return a.source == b.source && a.isArc == b.isArc &&
           std::fabs(a.sweep + b.sweep) <= kWidestSweep && (a.sweep < 0.0) == (b.sweep < 0.0);
}

// How far a piece of an arc turns; by the arc's own angles, so that it stays what was drawn.
double SweepOf(const plane::NodedPiece& piece, const ShownCurve& arc, const plane::Noding& noding) {
    const auto turnedTo = [&](double share, size_t node) {
        const bool isEnd = share == 0.0 || share == 1.0;
        return isEnd ? share : (std::clamp)(arc.TurnedTo(noding.nodes[node]), 0.0, 1.0);
    };
    return arc.sweep * (turnedTo(piece.toShare, piece.to) - turnedTo(piece.fromShare, piece.from));
}

std::vector<Side> SidesOf(const FaceLoop& loop, const std::vector<ShownCurve>& curves,
                          const plane::Noding& noding) {
    std::vector<Side> sides;
    for (const FaceLoop::Step& step : loop.steps) {
        const plane::NodedPiece& piece = noding.pieces[step.piece];
        const ShownCurve& curve = curves[piece.curve];
        const bool isArc = curve.shape.IsArc();
        const double sweep = isArc ? SweepOf(piece, curve, noding) : 0.0;
        sides.push_back({noding.nodes[step.isForward ? piece.from : piece.to],
                         step.isForward ? sweep : -sweep, isArc, curve.source});
    }
    return sides;
}

// Takes out the vertices at which a curve merely met another one and goes on; the loop begins at
// the leftmost of the lowest that stay.
void JoinSides(std::vector<Side>& sides) {
    // Begin where two curves meet, so that no curve runs across the end of the list.
    for (size_t i = 0; i < sides.size(); ++i) {
        if (ContinueEachOther(sides[i == 0 ? sides.size() - 1 : i - 1], sides[i])) continue;
        std::rotate(sides.begin(), sides.begin() + static_cast<std::ptrdiff_t>(i), sides.end());
        break;
    }
    std::vector<Side> joined;
    for (const Side& side : sides) {
        if (joined.empty() || !ContinueEachOther(joined.back(), side)) {
            joined.push_back(side);
        } else {
            joined.back().sweep += side.sweep;
        }
    }
    if (joined.size() > 1) sides = std::move(joined);
    double lowest = sides.front().start.y;
    for (const Side& side : sides) lowest = (std::min)(lowest, side.start.y);
    const auto key = [lowest](const Side& side) {
        return side.start.y - lowest <= kNodeTol ? side.start.x : HUGE_VAL;
    };
    std::rotate(sides.begin(),
                std::min_element(sides.begin(), sides.end(),
                                 [&](const Side& a, const Side& b) { return key(a) < key(b); }),
                sides.end());
}

std::unique_ptr<AcDbPolyline> PolylineOf(const std::vector<Side>& sides) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(sides.size()));
    for (size_t i = 0; i < sides.size(); ++i) {
        // bulge = tan(sweep / 4), counter-clockwise positive (DXF reference, LWPOLYLINE)
        const double bulge = sides[i].isArc ? std::tan(sides[i].sweep / 4) : 0.0;
        const AcGePoint2d corner(sides[i].start.x, sides[i].start.y);
        if (polyline->addVertexAt(static_cast<unsigned int>(i), corner, bulge) != Acad::eOk)
            return nullptr;
    }
    polyline->setClosed(true);
    return polyline;
}

AcDbDatabase* TracedDatabase() {
    AcApDocument* const document = Session::Get().Current();
    return document != nullptr ? document->database()
                               : acdbHostApplicationServices()->workingDatabase();
}

// Only what is on the screen bounds anything, and its very edge does not count as on it. A program
// that shows nothing has no screen.
bool IsOnScreen(const AcDbPolyline& loop) {
    AcApDocument* const document = Session::Get().Current();
    if (document == nullptr || !(document->imp().view.height > 0.0)) return true;
    const View& view = document->imp().view;
    AcDbExtents extents;
    return loop.getGeomExtents(extents) == Acad::eOk &&
           extents.minPoint().x > view.center.x - view.width / 2 &&
           extents.maxPoint().x < view.center.x + view.width / 2 &&
           extents.minPoint().y > view.center.y - view.height / 2 &&
           extents.maxPoint().y < view.center.y + view.height / 2;
}

}  // namespace
}  // namespace host

Acad::ErrorStatus acedTraceBoundary(const AcGePoint3d& seed, bool detectIslands,
                                    AcDbVoidPtrArray& result) {
    using namespace host;
    result.setLogicalLength(0);
    AcDbDatabase* const database = TracedDatabase();
    if (database == nullptr) return Acad::eNoDocument;
    const plane::Point place{seed.x, seed.y};
    if (!IsFinite(place)) return Acad::eInvalidInput;
    const std::vector<ShownCurve> curves = FindShownCurves(*database);
    std::vector<plane::Curve> shapes;
    shapes.reserve(curves.size());
    for (const ShownCurve& curve : curves) {
        if (curve.IsThrough(place)) return Acad::eInvalidInput;
        shapes.push_back(curve.shape);
    }
    const plane::Noding noding = plane::NodeCurves(shapes, kNodeTol);
    std::vector<FaceLoop> loops;
    try {
        loops = FindFaceAround(place, shapes, noding);
    } catch (const std::exception&) {
        return Acad::eGeneralModelingFailure;
    }
    if (loops.empty()) return Acad::eInvalidInput;
    if (!detectIslands) loops.resize(1);
    std::vector<std::unique_ptr<AcDbPolyline>> polylines;
    for (const FaceLoop& loop : loops) {
        std::vector<Side> sides = SidesOf(loop, curves, noding);
        JoinSides(sides);
        polylines.push_back(PolylineOf(sides));
        if (polylines.back() == nullptr) return Acad::eGeneralModelingFailure;
        if (!IsOnScreen(*polylines.back())) return Acad::eInvalidInput;
    }
    for (std::unique_ptr<AcDbPolyline>& polyline : polylines) result.append(polyline.release());
    return Acad::eOk;
}
