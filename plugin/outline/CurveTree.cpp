#include "StdAfx.h"

#include "CurveTree.h"

#include <algorithm>
#include <numeric>

#include "plane/meeting.h"

namespace outline {
namespace {

constexpr int kLeaf = 6;
// Boxes that cover their node so many times over are crowded: they tell nothing apart.
constexpr double kCrowded = 6.0;
// Two curves alone are quicker looked at than bounded.
constexpr int kFewest = 4;

// The direction of a chord, turned into the half plane x >= 0.
plane::Vector Heading(const plane::Curve& c) {
    const plane::Vector u = plane::Unit(c.Chord());
    return u.x < 0.0 ? -u : u;
}

double AreaOf(const plane::Box& b, double reach) {
    return (b.Width() + reach) * (b.Height() + reach);
}

}  // namespace

// What a node is split by.
struct CurveTree::Sums {
    plane::Box box, middles;
    double area = 0, wide = 0, high = 0;
    int count = 0;
    bool isCrowded = false;
};

CurveTree::CurveTree(const std::vector<Contour>& curves) : m_curves(curves) {
    const int count = static_cast<int>(curves.size());
    if (count == 0) return;
    m_boxes.reserve(curves.size());
    for (const Contour& c : curves) m_boxes.push_back(plane::BoxOf(c.curve));
    m_order.resize(curves.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    m_nodes.reserve(2 * curves.size() / kLeaf + 2);
    Split(0, count);
    std::vector<plane::Box> sorted;
    sorted.reserve(m_boxes.size());
    for (const int i : m_order) sorted.push_back(m_boxes[i]);
    m_boxes.swap(sorted);
}

void CurveTree::Split(int first, int last) {
    const size_t n = m_nodes.size();
    m_nodes.emplace_back();
    Sums sums;
    sums.count = last - first;
    for (int k = first; k < last; ++k) {
        const plane::Box& box = m_boxes[m_order[k]];
        sums.box.Add(box);
        sums.middles.Add(box.Middle());
        sums.wide += box.Width();
        sums.high += box.Height();
    }
    const double reach = 1e-6 * sums.box.Size();
    for (int k = first; k < last; ++k) sums.area += AreaOf(m_boxes[m_order[k]], reach);
    sums.isCrowded = sums.count > kFewest && sums.area > kCrowded * AreaOf(sums.box, reach);
    if (sums.isCrowded) m_nodes[n].bound = AddBound(first, last, sums);
    m_nodes[n].box = sums.box;
    m_nodes[n].first = first;
    m_nodes[n].last = last;
    if (last - first <= kLeaf) return;
    // By the place, across rather than along what is long; or, among long curves that overlap, by
    // the direction if that says more.
    const double width = sums.middles.Width(), height = sums.middles.Height();
    const double apart = (std::max)(width, height) / sums.count;
    const bool byX =
        width * (sums.high / sums.count + apart) >= height * (sums.wide / sums.count + apart);
    double spread = (std::max)(width, height);
    int by = byX ? 0 : 1;
    if (sums.isCrowded) {
        plane::Box headings, centres;
        int arcs = 0;
        double length = 0, least = 1e300, most = 0;
        for (int k = first; k < last; ++k) {
            const plane::Curve& c = m_curves[m_order[k]].curve;
            const plane::Vector u = Heading(c);
            headings.Add(plane::Point{0.0, u.y});
            length += plane::Length(c.Chord());
            if (!c.IsArc()) continue;
            ++arcs;
            centres.Add(c.centre);
            least = (std::min)(least, c.radius);
            most = (std::max)(most, c.radius);
        }
        if (headings.Height() * length / sums.count > spread) {
            spread = headings.Height() * length / sums.count;
            by = 2;
        }
        // Arcs about one place are told apart by nothing else.
        const bool isRing = arcs == sums.count && most - least > centres.Size();
        if (isRing || most - least > spread) by = 3;
    }
    const auto value = [&](int i) {
        const plane::Curve& c = m_curves[i].curve;
        if (by == 2) return Heading(c).y;
        if (by == 3) return c.IsArc() ? c.radius : 0.0;
        const plane::Point p = m_boxes[i].Middle();
        return by == 0 ? p.x : p.y;
    };
    const int middle = first + (last - first) / 2;
    std::nth_element(m_order.begin() + first, m_order.begin() + middle, m_order.begin() + last,
                     [&](int a, int b) { return value(a) < value(b); });
    Split(first, middle);
    m_nodes[n].right = static_cast<int>(m_nodes.size());
    Split(middle, last);
}

int CurveTree::AddBound(int first, int last, const Sums& sums) {
    Bound strip, ring;
    ring.isRing = true;
    int arcs = 0;
    plane::Vector heading, centres;
    for (int k = first; k < last; ++k) {
        const plane::Curve& c = m_curves[m_order[k]].curve;
        heading = heading + Heading(c);
        if (c.IsArc()) {
            ++arcs;
            centres = centres + plane::Vector{c.centre.x, c.centre.y};
        }
    }
    strip.normal = plane::Left(plane::Unit(heading));
    ring.centre = {centres.x / (std::max)(arcs, 1), centres.y / (std::max)(arcs, 1)};
    strip.low = ring.low = 1e300;
    strip.high = ring.high = -1e300;
    for (int k = first; k < last; ++k) {
        const plane::Curve& c = m_curves[m_order[k]].curve;
        for (const plane::Vector& v : {strip.normal, -strip.normal}) {
            const plane::Point p = plane::Farthest(c, v);
            const double at = plane::Dot(strip.normal, {p.x, p.y});
            strip.low = (std::min)(strip.low, at);
            strip.high = (std::max)(strip.high, at);
        }
        const double off = plane::Distance(c.centre, ring.centre);
        ring.low = (std::min)(ring.low, c.radius - off);
        ring.high = (std::max)(ring.high, c.radius + off);
    }
    // The thinner one.
    const bool isRing = arcs == sums.count && ring.high - ring.low < strip.high - strip.low;
    m_bounds.push_back(isRing ? ring : strip);
    return static_cast<int>(m_bounds.size()) - 1;
}

double CurveTree::EntryOf(const plane::Curve& part, const plane::Box& box, double reach) {
    constexpr double kNever = 2.0;
    if (part.IsArc()) return 0.0;
    double enter = 0.0, leave = 1.0;
    const plane::Vector chord = part.Chord();
    const auto clip = [&](double from, double step, double low, double high) {
        if (step == 0.0) return;  // within the slab, by the boxes
        double a = (low - reach - from) / step, b = (high + reach - from) / step;
        if (a > b) std::swap(a, b);
        enter = (std::max)(enter, a);
        leave = (std::min)(leave, b);
    };
    clip(part.from.x, chord.x, box.low.x, box.high.x);
    clip(part.from.y, chord.y, box.low.y, box.high.y);
    return enter <= leave ? enter : kNever;
}

bool CurveTree::MayMeet(const Node& node, const plane::Curve& part, double sagitta,
                        double reach) const {
    if (node.bound < 0) return true;
    const Bound& b = m_bounds[node.bound];
    const double slack = reach + sagitta;
    const auto overlaps = [&](double low, double high) {
        return high + slack >= b.low && low - slack <= b.high;
    };
    if (!b.isRing) {
        const double at = plane::Dot(b.normal, {part.from.x, part.from.y});
        const double to = plane::Dot(b.normal, {part.to.x, part.to.y});
        return overlaps((std::min)(at, to), (std::max)(at, to));
    }
    if (part.IsArc()) {
        const double off = plane::Distance(part.centre, b.centre);
        if (part.radius + off + reach < b.low || part.radius - off - reach > b.high) return false;
    }
    const double farthest =
        (std::max)(plane::Distance(part.from, b.centre), plane::Distance(part.to, b.centre));
    return overlaps(plane::Distance(plane::MakeLine(part.from, part.to), b.centre), farthest);
}

void CurveTree::Consider(const plane::Curve& part, int curve, double reach,
                         std::vector<plane::Point>& points, std::optional<Contact>& best) const {
    points.clear();
    plane::AppendMeetings(part, m_curves[curve].curve, reach, points);
    const double length = part.Length();
    for (const plane::Point& p : points) {
        const double along = (std::min)(1.0, (std::max)(0.0, plane::ShareOf(part, p))) * length;
        const bool isFirst =
            !best || along < best->length || (along == best->length && curve < best->curve);
        if (isFirst) best = Contact{along, p, curve};
    }
}

}  // namespace outline
