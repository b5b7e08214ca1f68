#include <algorithm>
#include <cmath>
#include <map>

#include "product/base/Text.h"
#include "product/check/Findings.h"
#include "product/check/SourceCurves.h"

namespace product {
namespace {

constexpr double kNotable = 0.01;        // drawing units
constexpr double kDiameterShare = 1e-3;  // or of the diameter, whichever is less
constexpr double kChordShare = 1e-6;     // of the diameter: what chords leave arcs by
constexpr size_t kMostSamples = 20000;

Point At(const SExactResult::SPlace& place) { return {place.m_dX, place.m_dY}; }
std::string Place(const Point& p) { return Figure(p.x) + ", " + Figure(p.y); }
Point Between(const Point& a, const Point& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

void Add(std::vector<Finding>& findings, Finding::Kind kind, bool isWarning,
         const std::string& text, const std::optional<Point>& at = std::nullopt) {
    findings.push_back({kind, isWarning, text, at});
}

void AddSpans(const std::vector<SExactResult::SBridge>& spans, const char* what, double allowed,
              std::vector<Finding>& findings) {
    for (const SExactResult::SBridge& span : spans) {
        const Point from = At(span.m_from), to = At(span.m_to);
        Add(findings, Finding::Kind::Gap, span.m_dLength > allowed,
            std::string(what) + " of " + Figure(span.m_dLength) + " bridged, " + Place(from) +
                " to " + Place(to),
            Between(from, to));
    }
}

// Entities that might have been meant to be part of the contour.
const char* WhySuspicious(SExactResult::E_LeftOut reason) {
    switch (reason) {
        case SExactResult::E_LeftOut_Unopenable:
            return "cannot be opened";
        case SExactResult::E_LeftOut_Locked:
            return "on a locked layer";
        case SExactResult::E_LeftOut_Block:
            return "a block that cannot be taken apart";
        default:
            return nullptr;
    }
}

double DistanceToChord(const Point& p, const Point& a, const Point& b) {
    const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
    const double share =
        square > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - share * dx, p.y - a.y - share * dy);
}

// The corner or sample of one ring that is farthest from the other, whose chords are sorted along
// x so that only those near by are looked at.
class Farthest {
public:
    explicit Farthest(const std::vector<Point>& ring) : m_ring(ring) {
        for (size_t i = 1; i < ring.size(); ++i) m_order.push_back(i);
        std::sort(m_order.begin(), m_order.end(),
                  [&](size_t a, size_t b) { return Left(a) < Left(b); });
        for (const size_t i : m_order) {
            const double right = std::max(m_ring[i - 1].x, m_ring[i].x);
            m_rightmost.push_back(m_rightmost.empty() ? right
                                                      : std::max(right, m_rightmost.back()));
        }
    }

    double DistanceOf(const Point& p) const {
        // Outwards from p in both directions until nothing nearer can come.
        const size_t middle =
            static_cast<size_t>(std::lower_bound(m_order.begin(), m_order.end(), p.x,
                                                 [&](size_t i, double x) { return Left(i) < x; }) -
                                m_order.begin());
        double best = 1e300;
        for (size_t k = middle; k < m_order.size() && Left(m_order[k]) - p.x < best; ++k)
            best = std::min(best, To(p, m_order[k]));
        for (size_t k = middle; k-- > 0 && p.x - m_rightmost[k] < best;)
            best = std::min(best, To(p, m_order[k]));
        return best;
    }

private:
    double Left(size_t i) const { return std::min(m_ring[i - 1].x, m_ring[i].x); }
    double To(const Point& p, size_t i) const {
        return DistanceToChord(p, m_ring[i - 1], m_ring[i]);
    }

    const std::vector<Point>& m_ring;
    std::vector<size_t> m_order;
    std::vector<double> m_rightmost;
};

struct Apart {
    double distance = 0;
    Point at;
};

void Look(const std::vector<Point>& ring, const std::vector<Point>& other, Apart& worst) {
    const Farthest farthest(other);
    const size_t stride = ring.size() / kMostSamples + 1;
    for (size_t i = 1; i < ring.size(); i += stride)
        for (const Point& p : {ring[i], Between(ring[i - 1], ring[i])}) {
            const double distance = farthest.DistanceOf(p);
            if (distance > worst.distance) worst = {distance, p};
        }
}

}  // namespace

void AddExactFindings(const SExactResult& exact, std::vector<Finding>& findings) {
    AddSpans(exact.m_bridges, "opening", exact.m_dOvershoot, findings);
    AddSpans(exact.m_gaps, "gap", 0, findings);
    for (const SExactResult::SPlace& end : exact.m_openEnds)
        Add(findings, Finding::Kind::Gap, true, "open end at " + Place(At(end)), At(end));
    for (const SExactResult::STail& tail : exact.m_tails)
        Add(findings, Finding::Kind::Gap, false,
            "overshoot of " + Figure(tail.m_dLength) + " cut off at " + Place(At(tail.m_at)));
    std::map<std::string, int> counts;
    for (const SExactResult::SLeftOut& left : exact.m_leftOut) {
        if (left.m_reason == SExactResult::E_LeftOut_CircleBeyond)
            Add(findings, Finding::Kind::Beyond, true,
                "a full circle or ellipse (handle " + HandleText(left.m_id) +
                    ") reaches beyond the envelope; --take-circles makes it part of it",
                At(left.m_at));
        else if (const char* const why = WhySuspicious(left.m_reason))
            ++counts[ToUtf8(left.m_strWhat) + " left out, " + why];
    }
    for (const auto& [what, count] : counts)
        Add(findings, Finding::Kind::LeftOut, true, std::to_string(count) + " × " + what);
}

void AddDifference(const std::vector<Vertex>& ring, const std::vector<Vertex>& exact,
                   const Axis& axis, std::vector<Finding>& findings) {
    const Box about = BoxAbout(axis, exact), otherBox = BoxAbout(axis, ring);
    const double diameter = 2 * std::max(about.high.y, -about.low.y);
    const double other = 2 * std::max(otherBox.high.y, -otherBox.low.y);
    const double chord = std::max(kChordShare * diameter, 1e-12);
    const std::vector<Point> a = ChordsOf(ring, true, chord), b = ChordsOf(exact, true, chord);
    if (a.size() < 2 || b.size() < 2) return;
    Apart worst;
    Look(a, b, worst);
    Look(b, a, worst);
    const double notable = std::min(kNotable, kDiameterShare * diameter);
    if (worst.distance <= notable) {
        Add(findings, Finding::Kind::Exact, false, "the exact envelope is the same");
        return;
    }
    std::string text =
        "the exact envelope lies up to " + Figure(worst.distance) + " away, at " + Place(worst.at);
    if (std::abs(other - diameter) > notable)
        text += ", diameter " + Figure(diameter) + " for " + Figure(other);
    if (std::abs(otherBox.Width() - about.Width()) > notable)
        text += ", length " + Figure(about.Width()) + " for " + Figure(otherBox.Width());
    Add(findings, Finding::Kind::Exact, true, text + "; use --algorithm exact", worst.at);
}

void AddAxisFindings(const AxisCheck& check, const Axis& axis, std::vector<Finding>& findings) {
    if (check.borderStrokes > 0)
        Add(findings, Finding::Kind::Border, true,
            "a sheet's border or title block is part of what was picked, at " +
                Place(check.borderAt) + "; pick inside it with --window",
            check.borderAt);
    if (check.shift) {
        const std::string line = axis.IsLevel() ? "y = " + Figure(check.shiftAt.y)
                                                : "a line through " + Place(check.shiftAt);
        Add(findings, Finding::Kind::Axis, true,
            "the drawing is symmetric about " + line + ", " + Figure(std::abs(*check.shift)) +
                " from the axis given",
            check.shiftAt);
    }
    if (check.reachGap > 0)
        Add(findings, Finding::Kind::Axis, true,
            "nothing drawn comes nearer to the axis than " + Figure(check.reachGap) + ", at " +
                Place(check.reachAt),
            check.reachAt);
    if (check.isOneSided)
        Add(findings, Finding::Kind::Halves, false, "only one side of the axis is drawn");
}

}  // namespace product
