// acedTraceBoundary: node what is shown, find the face around the seed, give its loops back.
#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "aced.h"
#include "dbapserv.h"
#include "dbpl.h"
#include "host/ed/faces.h"
#include "host/ed/noding.h"
#include "host/ed/session.h"
#include "host/ed/shown_curves.h"

namespace host {
namespace {

// No bulge of a loop stands for more; a vertex is kept where two parts of a curve would exceed it.
constexpr double kWidestSweep = 1.5 * 3.14159265358979323846;

// One step of a loop: where it starts, and how far it turns.
struct Side {
    AcGePoint2d start;
    double sweep;
    bool isArc;
    int source;
};

bool ContinueEachOther(const Side& a, const Side& b) {
    return a.source == b.source && a.isArc == b.isArc &&
           std::fabs(a.sweep + b.sweep) <= kWidestSweep && (a.sweep < 0.0) == (b.sweep < 0.0);
}

std::vector<Side> SidesOf(const FaceLoop& loop, const std::vector<PlaneCurve>& curves,
                          const Noding& noding) {
    std::vector<Side> sides;
    for (const FaceLoop::Step& step : loop.steps) {
        const NodedPiece& piece = noding.pieces[step.piece];
        const PlaneCurve curve = CurveOf(piece, curves, noding);
        sides.push_back({step.isForward ? curve.start : curve.end,
                         step.isForward ? curve.sweep : -curve.sweep, curve.isArc, curve.source});
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
        if (polyline->addVertexAt(static_cast<unsigned int>(i), sides[i].start, bulge) != Acad::eOk)
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

}  // namespace
}  // namespace host

Acad::ErrorStatus acedTraceBoundary(const AcGePoint3d& seed, bool detectIslands,
                                    AcDbVoidPtrArray& result) {
    using namespace host;
    result.setLogicalLength(0);
    AcDbDatabase* const database = TracedDatabase();
    if (database == nullptr) return Acad::eNoDocument;
    const AcGePoint2d place(seed.x, seed.y);
    if (!std::isfinite(place.x) || !std::isfinite(place.y)) return Acad::eInvalidInput;
    const std::vector<PlaneCurve> curves = FindShownCurves(*database);
    for (const PlaneCurve& curve : curves)
        if (curve.IsThrough(place)) return Acad::eInvalidInput;
    const Noding noding = NodeCurves(curves);
    std::vector<FaceLoop> loops;
    try {
        loops = FindFaceAround(place, curves, noding);
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
    }
    for (std::unique_ptr<AcDbPolyline>& polyline : polylines) result.append(polyline.release());
    return Acad::eOk;
}
