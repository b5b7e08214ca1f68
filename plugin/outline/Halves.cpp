#include "StdAfx.h"

#include "Halves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "CurveTree.h"
#include "plane/meeting.h"

namespace outline {
namespace {

// A centre line lies no farther from the axis than this share of the greatest r.
constexpr double kCentreBand = 0.01;
// Lines that are taken for the base of a centre line, the longest first.
constexpr size_t kCentreBases = 64;
constexpr double kRelativeTiny = 1e-9;
constexpr double kRelativeTie = 1e-12;
// A point is at least as many roundings wide, and no less than so many of `tiny`.
constexpr double kRoundingsInPoint = 8.0;
// The farthest that a point may be a share of the size.
constexpr double kWidestPoint = 0.1;
// The finest curve tolerance as a share of the size: tangent arcs that follow a curve more closely
// are shorter than what is told apart.
constexpr double kFinestCurve = 1e-10;

plane::Curve Mirrored(const plane::Curve& curve) {
    plane::Curve m = curve;
    m.from.y = -m.from.y;
    m.to.y = -m.to.y;
    m.bulge = curve.IsArc() ? -m.bulge : 0.0;
    m.centre.y = -m.centre.y;
    return m;
}

// Appends the parts of a curve above the axis; cuts lie on it to the last digit.
void AppendAbove(const Contour& contour, std::vector<Contour>& out) {
    const plane::Curve& c = contour.curve;
    const plane::Box box = plane::BoxOf(c);
    if (box.low.y >= 0.0) return out.push_back(contour);
    if (!(box.high.y > 0.0)) return;
    std::vector<plane::Point> cuts;
    const plane::Curve axis =
        plane::MakeLine({box.low.x - box.Size(), 0.0}, {box.high.x + box.Size(), 0.0});
    plane::AppendCarrierMeetings(axis, c, 0.0, cuts);
    std::vector<std::pair<double, plane::Point>> stops{{0.0, c.from}, {1.0, c.to}};
    for (const plane::Point& p : cuts) {
        const double share = plane::ShareOf(c, p);
        if (share > 0.0 && share < 1.0) stops.push_back({share, {p.x, 0.0}});
    }
    std::sort(stops.begin(), stops.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    for (size_t i = 1; i < stops.size(); ++i) {
        Contour part = contour;
        part.curve = plane::PartOf(c, stops[i - 1].second, stops[i].second);
        if (!(part.curve.Middle().y > 0.0) || part.curve.from == part.curve.to) continue;
        part.curve.from.y = (std::max)(part.curve.from.y, 0.0);
        part.curve.to.y = (std::max)(part.curve.to.y, 0.0);
        out.push_back(part);
    }
}

double HighestOf(const plane::Curve& c) { return plane::BoxOf(c).high.y; }

// Which of the short curves belong to chains that reach farther than `reach`.
std::vector<bool> ChainsThatReach(const std::vector<Contour>& shorts, double tiny, double reach) {
    const CurveTree tree(shorts);
    std::vector<int> root(shorts.size());
    std::iota(root.begin(), root.end(), 0);
    const auto find = [&](int i) {
        while (root[i] != i) i = root[i] = root[root[i]];
        return i;
    };
    for (size_t i = 0; i < shorts.size(); ++i)
        for (const plane::Point& p : {shorts[i].curve.from, shorts[i].curve.to})
            tree.Visit(p, tiny, [&](int k) {
                const plane::Curve& other = shorts[k].curve;
                if (plane::Distance(other.from, p) <= tiny || plane::Distance(other.to, p) <= tiny)
                    root[find(k)] = find(static_cast<int>(i));
                return true;
            });
    std::vector<plane::Box> boxes(shorts.size());
    for (size_t i = 0; i < shorts.size(); ++i)
        boxes[find(static_cast<int>(i))].Add(plane::BoxOf(shorts[i].curve));
    std::vector<bool> reaches(shorts.size());
    for (size_t i = 0; i < shorts.size(); ++i) {
        const plane::Box& box = boxes[find(static_cast<int>(i))];
        reaches[i] = plane::Distance(box.low, box.high) >= reach;
    }
    return reaches;
}

// The lines of the band that run, one group of them on one line, past [low, high].
std::vector<size_t> CentreLines(const std::vector<Contour>& strokes,
                                const std::vector<size_t>& band, double low, double high,
                                double g) {
    std::vector<size_t> bases = band;
    std::stable_sort(bases.begin(), bases.end(), [&](size_t a, size_t b) {
        return strokes[a].curve.Length() > strokes[b].curve.Length();
    });
    if (bases.size() > kCentreBases) bases.resize(kCentreBases);
    std::vector<size_t> found;
    for (const size_t base : bases) {
        const plane::Curve& line = strokes[base].curve;
        const plane::Vector along = plane::Unit(line.Chord());
        double from = std::numeric_limits<double>::infinity(), to = -from;
        std::vector<size_t> group;
        for (const size_t i : band) {
            const plane::Curve& c = strokes[i].curve;
            if (std::fabs(plane::Cross(along, c.from - line.from)) > g ||
                std::fabs(plane::Cross(along, c.to - line.from)) > g)
                continue;
            group.push_back(i);
            from = (std::min)({from, c.from.x, c.to.x});
            to = (std::max)({to, c.from.x, c.to.x});
        }
        if (from < low - g && to > high + g) found.insert(found.end(), group.begin(), group.end());
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

}  // namespace

Lengths WithDefaults(const Lengths& lengths, double size, double rounding) {
    const auto take = [](double given, double otherwise) { return given > 0 ? given : otherwise; };
    Lengths used;
    used.point = take(lengths.point,
                      (std::max)((std::min)(0.0005, 5e-6 * size), kRoundingsInPoint * rounding));
    used.side = take(lengths.side, (std::min)(5.0, size / 10));
    used.overshoot = take(lengths.overshoot, (std::min)(0.5, size / 100));
    used.curve = take(lengths.curve, (std::min)(1e-3, 1e-5 * size));
    return used;
}

double FinestCurve(double size) { return (std::min)(kFinestCurve * size, 1e-3); }

bool AreSensible(const Lengths& used, double size, double rounding) {
    for (const double length : {used.point, used.side, used.overshoot, used.curve})
        if (!(length > 0.0) || !std::isfinite(length)) return false;
    return used.point >= kRoundingsInPoint * rounding && used.point <= kWidestPoint * size &&
           used.overshoot <= size && used.curve <= size && used.curve >= FinestCurve(size);
}

std::vector<Contour> ToHalf(const std::vector<Contour>& curves, Half half) {
    std::vector<Contour> out;
    out.reserve(curves.size());
    for (const Contour& c : curves) {
        if (half != Half::Lower) AppendAbove(c, out);
        if (half == Half::Upper) continue;
        Contour mirrored = c;
        mirrored.curve = Mirrored(c.curve);
        AppendAbove(mirrored, out);
    }
    return out;
}

Measures MeasureHalf(const std::vector<Contour>& inHalf, const Lengths& lengths, double rounding) {
    plane::Box box;
    for (const Contour& c : inHalf) box.Add(plane::BoxOf(c.curve));
    Measures m;
    if (box.IsEmpty()) return m;
    m.size = plane::Length({box.Width(), box.high.y});
    const Lengths used = WithDefaults(lengths, m.size, rounding);
    m.g = used.point;
    m.d = used.side;
    m.o = used.overshoot;
    m.tiny = (std::max)((std::min)(kRelativeTiny * m.size, m.g / kRoundingsInPoint), rounding);
    m.tie = (std::max)(kRelativeTie * m.size, rounding / 16);
    return m;
}

std::vector<Contour> FindStrokes(const std::vector<Contour>& inHalf, const Measures& measures,
                                 std::vector<Envelope::Ignorance>& ignored) {
    const std::vector<Contour> joined = JoinStrokes(inHalf, measures.tiny, measures.g);
    const auto ignore = [&](Ignored reason, const Contour& c) {
        ignored.push_back({reason, c.source, c.curve.Middle()});
    };
    std::vector<Contour> strokes, shorts;
    double greatest = 0;
    for (const Contour& c : joined) {
        const double high = HighestOf(c.curve);
        greatest = (std::max)(greatest, high);
        if (high <= measures.g)
            ignore(Ignored::OnAxis, c);
        else
            (c.curve.Length() < measures.g ? shorts : strokes).push_back(c);
    }
    if (!shorts.empty()) {
        const std::vector<bool> reaches = ChainsThatReach(shorts, measures.tiny, measures.g);
        for (size_t i = 0; i < shorts.size(); ++i) {
            if (reaches[i])
                strokes.push_back(shorts[i]);
            else
                ignore(Ignored::Short, shorts[i]);
        }
    }
    plane::Box beyond;
    std::vector<size_t> band;
    for (size_t i = 0; i < strokes.size(); ++i) {
        const plane::Curve& c = strokes[i].curve;
        if (!c.IsArc() && HighestOf(c) <= kCentreBand * greatest)
            band.push_back(i);
        else
            beyond.Add(plane::BoxOf(c));
    }
    if (band.empty() || beyond.IsEmpty()) return strokes;
    const std::vector<size_t> centre =
        CentreLines(strokes, band, beyond.low.x, beyond.high.x, measures.g);
    for (size_t k = centre.size(); k-- > 0;) {
        ignore(Ignored::CentreLine, strokes[centre[k]]);
        strokes.erase(strokes.begin() + static_cast<std::ptrdiff_t>(centre[k]));
    }
    return strokes;
}

}  // namespace outline
