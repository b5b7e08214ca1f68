#include "StdAfx.h"

#include "Tails.h"

#include <cmath>

namespace outline {
namespace {

// How much of a stroke is cut away at one end: up to a place, or all of it.
struct Cut {
    bool isCut = false, isWhole = false;
    plane::Point at;
};

bool FindTail(const Scene& scene, const StrokeEnd& end, WayBack& back) {
    const Measures& m = scene.measures;
    const plane::Curve& c = scene.strokes[end.stroke].curve;
    back = FindWayBack(scene.strokes, scene.tree, end, m.g, m.o + m.tiny);
    if (!back.isFarther) return true;
    if (!end.isSeen || c.IsArc()) return false;
    const double slope = std::fabs(end.inward.x), whole = c.Length();
    const double reach = slope * whole <= m.g ? whole : m.g / slope;
    if (!(reach > m.o)) return false;
    back = FindWayBack(scene.strokes, scene.tree, end, m.g, reach + m.tiny);
    return !back.isFarther;
}

// The place of the cut on the stroke; a corner that lies on it stays what it is.
plane::Point OnStroke(const plane::Curve& c, const plane::Point& p, double tiny) {
    return plane::Distance(c, p) <= tiny ? p : plane::NearestPoint(c, p);
}

}  // namespace

Tails CutTails(const Scene& scene, const Bridges& bridges) {
    Tails tails;
    const size_t count = scene.ends.size();
    tails.isCut.assign(count, false);
    tails.curves.reserve(scene.strokes.size());
    std::vector<Cut> cuts(count);
    for (size_t i = 0; i < count; ++i) {
        const StrokeEnd& end = scene.ends[i];
        WayBack back;
        if (!end.isFree || bridges.isJoined[i] || !FindTail(scene, end, back)) continue;
        cuts[i] = {true, back.isWhole, back.at};
        tails.isCut[i] = true;
        tails.reports.push_back({end.at, back.length, scene.strokes[end.stroke].source});
    }
    for (size_t k = 0; k < scene.strokes.size(); ++k) {
        // Both ends of each stroke, start before end.
        const Cut &start = cuts[2 * k], &stop = cuts[2 * k + 1];
        const plane::Curve& c = scene.strokes[k].curve;
        if (start.isWhole || stop.isWhole) continue;
        const double tiny = scene.measures.tiny;
        const plane::Point from = start.isCut ? OnStroke(c, start.at, tiny) : c.from;
        const plane::Point to = stop.isCut ? OnStroke(c, stop.at, tiny) : c.to;
        if (!start.isCut && !stop.isCut) {
            tails.curves.push_back(c);
        } else if (plane::ShareOf(c, from) < plane::ShareOf(c, to)) {
            tails.curves.push_back(plane::PartOf(c, from, to));
        }
    }
    return tails;
}

}  // namespace outline
