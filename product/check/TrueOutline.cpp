#include "product/check/TrueOutline.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

#include "plane/box.h"
#include "product/base/Text.h"
#include "product/check/Farthest.h"
#include "product/check/Geos.h"
#include "product/check/SourceCurves.h"
#include "product/check/Tolerance.h"

namespace product {
namespace {

// The parts of a line above the axis; what lies within the tolerance counts as on it.
void AppendClipped(const Polyline& line, double tolerance, Polylines& out) {
    Polyline part;
    const auto finish = [&] {
        if (part.size() > 1) out.push_back(part);
        part.clear();
    };
    const auto at = [&](size_t i) {
        Point p = line[i];
        if (std::abs(p.y) <= tolerance) p.y = 0;
        return p;
    };
    for (size_t i = 0; i < line.size(); ++i) {
        const Point p = at(i);
        if (i > 0) {
            const Point before = at(i - 1);
            if ((before.y < 0 && p.y > 0) || (before.y > 0 && p.y < 0)) {
                const double share = before.y / (before.y - p.y);
                part.push_back({before.x + (p.x - before.x) * share, 0});
                if (p.y < 0) finish();
            }
        }
        if (p.y >= 0) part.push_back(p);
        if (p.y < 0) finish();
    }
    finish();
}

// Ends that no other line meets, joined to their nearest like.
Polylines Bridges(const Polylines& noded, double reach) {
    std::map<std::pair<double, double>, int> ends;
    for (const Polyline& line : noded) {
        // Snapped away by a coarse tolerance.
        if (line.empty()) continue;
        for (const Point& end : {line.front(), line.back()}) ++ends[{end.x, end.y}];
    }
    std::vector<Point> loose;
    for (const auto& [place, count] : ends)
        if (count == 1) loose.push_back({place.first, place.second});
    if (loose.size() > kMostLooseEnds) return {};
    struct Pair {
        double distance;
        size_t a, b;
    };
    std::vector<Pair> pairs;
    for (size_t a = 0; a < loose.size(); ++a)
        for (size_t b = a + 1; b < loose.size() && loose[b].x - loose[a].x <= reach; ++b) {
            const double d = std::hypot(loose[b].x - loose[a].x, loose[b].y - loose[a].y);
            if (d <= reach) pairs.push_back({d, a, b});
        }
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const Pair& p, const Pair& q) { return p.distance < q.distance; });
    std::vector<char> isUsed(loose.size(), 0);
    Polylines bridges;
    for (const Pair& pair : pairs) {
        if (isUsed[pair.a] != 0 || isUsed[pair.b] != 0) continue;
        isUsed[pair.a] = isUsed[pair.b] = 1;
        bridges.push_back({loose[pair.a], loose[pair.b]});
    }
    return bridges;
}

double AreaOf(const Polyline& ring) {
    double twice = 0;
    for (size_t i = 1; i < ring.size(); ++i)
        twice += ring[i - 1].x * ring[i].y - ring[i].x * ring[i - 1].y;
    return std::abs(twice) / 2;
}

Polylines ContourOf(const Geos& geos, Polylines lines, double tolerance) {
    Box box;
    for (const Polyline& line : lines)
        for (const Point& p : line) box.Add(p);
    if (box.IsEmpty()) return {};
    lines.push_back({{box.low.x, 0}, {box.high.x, 0}});
    const Geos::Geometry noded = geos.Noded(lines, tolerance);
    if (!noded) return {};
    const double size = std::max(box.Width(), box.Height());
    const Polylines bridges = Bridges(geos.LinesOf(noded.get()), kBridgeShare * size);
    Polylines rings;
    if (bridges.empty()) {
        rings = geos.OuterRings(noded.get());
    } else {
        lines.insert(lines.end(), bridges.begin(), bridges.end());
        const Geos::Geometry joined = geos.Noded(lines, tolerance);
        if (joined) rings = geos.OuterRings(joined.get());
    }
    double area = 0;
    for (const Polyline& ring : rings) area += AreaOf(ring);
    return area >= kLeastAreaShare * box.Width() * box.Height() ? rings : Polylines();
}

// How far `moved` lies from the contour, whichever of the two has the farthest point.
Deviation Compare(const Geos& geos, const Polylines& contour, const Polylines& moved,
                  double tolerance) {
    const Near toContour(geos, geos.MakeLines(contour)), toMoved(geos, geos.MakeLines(moved));
    const Deviation out = Farthest(moved, contour, toContour),
                    in = Farthest(contour, moved, toMoved);
    Deviation worst = out.distance >= in.distance ? out : in;
    // Beyond the contour: a point of `moved` that no area of the contour holds, or a point of the
    // contour that lies inside the area of `moved`.
    const Polylines& areas = out.distance >= in.distance ? contour : moved;
    bool isInside = false;
    for (const Polyline& ring : areas) {
        const Near area(geos, geos.MakeArea(ring));
        const double distance = area.DistanceTo(worst.at);
        isInside = isInside || (distance >= 0 && distance <= tolerance);
    }
    worst.isOutside = out.distance >= in.distance ? !isInside : isInside;
    return worst;
}

struct Gathered {
    Polylines contour;
    struct Circle {
        Polyline points;
        std::string layer;
        AcDbObjectId picked;
    };
    std::vector<Circle> rounds;
    Box box;
};

// Calls use() for what of the source's entities counts.
void ForEachTaken(const OutlineSource& source, const std::function<void(const SourceCurve&)>& use) {
    ForEachCurve(source.ids, true, [&](const SourceCurve& curve) {
        if (!source.takes || source.takes(FromUtf8(curve.layer), curve.curve.isA())) use(curve);
    });
}

Gathered GatherCurves(const std::vector<plane::Curve>& curves, double chord) {
    Gathered gathered;
    for (const plane::Curve& curve : curves) {
        Polyline points = ChordsOf(
            {{curve.from.x, curve.from.y, curve.bulge}, {curve.to.x, curve.to.y, 0}}, false, chord);
        for (const Point& p : points) gathered.box.Add(p);
        gathered.contour.push_back(std::move(points));
    }
    return gathered;
}

Gathered Gather(const OutlineSource& from, bool withDashed, double chord) {
    if (!from.curves.empty()) return GatherCurves(from.curves, chord);
    Gathered gathered;
    ForEachTaken(from, [&](const SourceCurve& source) {
        const bool isDashed = source.kind == CurveKind::Dashed || source.kind == CurveKind::Centre;
        if (source.kind == CurveKind::Ignored || (isDashed && !withDashed)) return;
        Polyline points = ChordsOf(source.curve, chord);
        const bool isFinite = std::all_of(points.begin(), points.end(), [](const Point& p) {
            return std::isfinite(p.x) && std::isfinite(p.y);
        });
        if (points.empty() || !isFinite) return;
        if (source.kind == CurveKind::Round) {
            gathered.rounds.push_back({std::move(points), source.layer, source.picked});
        } else {
            for (const Point& p : points) gathered.box.Add(p);
            gathered.contour.push_back(std::move(points));
        }
    });
    return gathered;
}

// What is drawn on one place again adds nothing to a contour, and much to the cost of noding.
void DropRepeats(Polylines& lines) {
    const auto turn = [](Polyline& line) {
        const Point &a = line.front(), &b = line.back();
        if (std::tie(b.x, b.y) < std::tie(a.x, a.y)) std::reverse(line.begin(), line.end());
    };
    const auto isLess = [](const Polyline& a, const Polyline& b) {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [](const Point& p, const Point& q) { return std::tie(p.x, p.y) < std::tie(q.x, q.y); });
    };
    for (Polyline& line : lines) turn(line);
    std::sort(lines.begin(), lines.end(), isLess);
    lines.erase(std::unique(lines.begin(), lines.end(),
                            [&](const Polyline& a, const Polyline& b) {
                                return !isLess(a, b) && !isLess(b, a);
                            }),
                lines.end());
}

// In an order that has nothing to do with places, and is the same for the same lines: GEOS files
// points in a tree that points in order make as deep as they are many.
void Scatter(Polylines& lines) {
    std::mt19937 random;
    for (size_t left = lines.size(); left > 1; --left)
        std::swap(lines[left - 1], lines[random() % left]);
}

// Noding looks at every pair of chords that come near one another.
bool IsTangled(const Polylines& lines, double tolerance) {
    std::vector<plane::Box> boxes;
    for (const Polyline& line : lines)
        for (size_t i = 1; i < line.size(); ++i) {
            boxes.emplace_back();
            for (const Point& p : {line[i - 1], line[i]}) boxes.back().Add(plane::Point{p.x, p.y});
        }
    const double most = kMostNearPairs + kNearPairsOfChord * static_cast<double>(boxes.size());
    double pairs = 0;
    plane::ForEachMeetingPair(boxes, tolerance, [&](size_t, size_t) { return ++pairs <= most; });
    return pairs > most;
}

Polylines HalfOf(const Polylines& lines, const AxisFrame& frame, double tolerance) {
    Polylines half;
    for (const Polyline& line : lines) {
        Polyline moved;
        for (const Point& p : line) moved.push_back(frame.In(p));
        AppendClipped(moved, tolerance, half);
    }
    return half;
}

Box RoughBox(const OutlineSource& from) {
    Box rough;
    for (const plane::Curve& curve : from.curves) {
        const plane::Box box = plane::BoxOf(curve);
        rough.Add(Point{box.low.x, box.low.y});
        rough.Add(Point{box.high.x, box.high.y});
    }
    if (!from.curves.empty()) return rough;
    ForEachTaken(from, [&](const SourceCurve& source) {
        AcDbExtents extents;
        if (source.kind != CurveKind::Contour || source.curve.getGeomExtents(extents) != Acad::eOk)
            return;
        rough.Add(Point{extents.minPoint().x, extents.minPoint().y});
        rough.Add(Point{extents.maxPoint().x, extents.maxPoint().y});
    });
    return rough;
}

}  // namespace

OutlineCheck CheckOutline(const OutlineSource& source, const Axis& axis, Half half, bool withDashed,
                          const std::vector<Vertex>& envelope, double tolerance) {
    OutlineCheck check;
    const Box rough = RoughBox(source);
    if (rough.IsEmpty()) return check;
    const double chord = kChordShare * std::max({rough.Width(), rough.Height(), tolerance});
    Gathered gathered = Gather(source, withDashed, chord);
    DropRepeats(gathered.contour);
    Scatter(gathered.contour);
    check.isTangled = IsTangled(gathered.contour, tolerance);
    if (check.isTangled) return check;
    // From the middle of the tool on: GEOS sees small numbers wherever the drawing lies.
    const Point middle{(rough.low.x + rough.high.x) / 2, (rough.low.y + rough.high.y) / 2};
    const AxisFrame frame(axis, middle, half == Half::Lower);
    const AxisFrame otherFrame(axis, middle, half != Half::Lower);
    const Geos geos;
    Polylines lines = HalfOf(gathered.contour, frame, tolerance);
    const Polylines otherLines = HalfOf(gathered.contour, otherFrame, tolerance);
    Polylines contour = ContourOf(geos, lines, tolerance);
    const Polylines other = ContourOf(geos, otherLines, tolerance);
    check.hasOtherHalf = !contour.empty() && !other.empty();
    if (check.hasOtherHalf) {
        check.halves = Compare(geos, contour, other, tolerance);
        check.halves->at = frame.Out(check.halves->at);
    }
    if (half == Half::Both) {
        lines.insert(lines.end(), otherLines.begin(), otherLines.end());
        contour = ContourOf(geos, lines, tolerance);
    }
    check.hasContour = !contour.empty();
    if (envelope.empty()) return check;
    Polyline ring;
    for (const Point& p : ChordsOf(envelope, true, chord)) ring.push_back(frame.In(p));
    if (ring.size() < 4) return check;
    ring.back() = ring.front();
    if (check.hasContour) {
        check.envelope = Compare(geos, contour, {ring}, tolerance);
        check.envelope->at = frame.Out(check.envelope->at);
    }
    const Near area(geos, geos.MakeArea(ring));
    for (const Gathered::Circle& round : gathered.rounds) {
        const Polylines inHalf = HalfOf({round.points}, frame, tolerance);
        Deviation reach = Farthest(inHalf, {ring}, area);
        if (!(reach.distance > tolerance)) continue;
        reach.at = frame.Out(reach.at);
        reach.isOutside = true;
        check.rounds.push_back({reach, round.layer, HandleText(round.picked)});
    }
    return check;
}

}  // namespace product
