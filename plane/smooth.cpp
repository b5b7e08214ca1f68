#include "plane/smooth.h"

#include <algorithm>
#include <cmath>

namespace plane {
namespace {

// A point of a spline with its weight: (w x, w y, w).
struct Weighted {
    double x = 0.0, y = 0.0, w = 0.0;
};

// The knot span [knots[k], knots[k + 1]) that holds t, within the curve's range; the last span that
// is not empty also holds the end.
std::size_t SpanOf(const Nurbs& spline, double t) {
    const std::size_t degree = static_cast<std::size_t>(spline.degree);
    const auto begin = spline.knots.begin() + static_cast<std::ptrdiff_t>(degree);
    const auto end = spline.knots.begin() + static_cast<std::ptrdiff_t>(spline.points.size()) + 1;
    auto at = std::upper_bound(begin, end, t);
    if (at == end) at = std::lower_bound(begin, end, spline.knots[spline.points.size()]);
    if (at == begin) ++at;
    return static_cast<std::size_t>(at - spline.knots.begin()) - 1;
}

struct Jet {
    Point point;
    Vector derivative;
};

// De Boor's scheme (1972) on weighted points; its last step but one gives the derivative.
Jet Evaluate(const Nurbs& spline, double t) {
    const std::size_t p = static_cast<std::size_t>(spline.degree), k = SpanOf(spline, t);
    std::vector<Weighted> d(p + 1);
    for (std::size_t j = 0; j <= p; ++j) {
        const std::size_t i = j + k - p;
        const double w = spline.weights.empty() ? 1.0 : spline.weights[i];
        d[j] = {spline.points[i].x * w, spline.points[i].y * w, w};
    }
    Weighted slope;
    for (std::size_t r = 1; r <= p; ++r) {
        for (std::size_t j = p; j >= r; --j) {
            const double low = spline.knots[j + k - p], high = spline.knots[j + 1 + k - r];
            const double a = high > low ? (t - low) / (high - low) : 0.0;
            if (r == p) {
                const double s = static_cast<double>(p) / (high - low);
                slope = {(d[j].x - d[j - 1].x) * s, (d[j].y - d[j - 1].y) * s,
                         (d[j].w - d[j - 1].w) * s};
            }
            d[j] = {d[j - 1].x + (d[j].x - d[j - 1].x) * a, d[j - 1].y + (d[j].y - d[j - 1].y) * a,
                    d[j - 1].w + (d[j].w - d[j - 1].w) * a};
        }
    }
    const Weighted& at = d[p];
    const Point point{at.x / at.w, at.y / at.w};
    return {point, {(slope.x - point.x * slope.w) / at.w, (slope.y - point.y * slope.w) / at.w}};
}

Jet Evaluate(const EllipsePiece& ellipse, double t) {
    const double c = std::cos(t), s = std::sin(t);
    const Vector derivative = ellipse.v * c - ellipse.u * s;
    return {ellipse.centre + ellipse.u * c + ellipse.v * s, derivative};
}

Jet Evaluate(const SmoothCurve& curve, double t) {
    return std::visit([t](const auto& c) { return Evaluate(c, t); }, curve);
}

bool IsFinite(const Vector& v) { return plane::IsFinite(Point{v.x, v.y}); }

bool IsSoundPiece(const EllipsePiece& e) {
    return plane::IsFinite(e.centre) && IsFinite(e.u) && IsFinite(e.v) && std::isfinite(e.from) &&
           std::isfinite(e.to) && e.from < e.to;
}

bool IsSoundPiece(const Nurbs& s) {
    if (s.degree < 1 || s.points.size() <= static_cast<std::size_t>(s.degree)) return false;
    const std::size_t degree = static_cast<std::size_t>(s.degree);
    if (s.knots.size() != s.points.size() + degree + 1) return false;
    if (!s.weights.empty() && s.weights.size() != s.points.size()) return false;
    const auto isPlace = [](const Point& p) { return plane::IsFinite(p); };
    const auto isPositive = [](double w) { return std::isfinite(w) && w > 0.0; };
    const auto isNumber = [](double k) { return std::isfinite(k); };
    return std::all_of(s.points.begin(), s.points.end(), isPlace) &&
           std::all_of(s.weights.begin(), s.weights.end(), isPositive) &&
           std::all_of(s.knots.begin(), s.knots.end(), isNumber) &&
           std::is_sorted(s.knots.begin(), s.knots.end()) &&
           s.knots[degree] < s.knots[s.points.size()];
}

// Whether an ellipse covers a line only.
bool IsEdgeOn(const EllipsePiece& e) {
    constexpr double kThin = 1e-12;  // of the product of the two axes' lengths
    const double u = Dot(e.u, e.u), v = Dot(e.v, e.v);
    return std::fabs(Cross(e.u, e.v)) <= kThin * (std::max)(u, v);
}

// The parameter at which an ellipse is farthest from its centre, along with every quarter after it.
double PrincipalAngle(const EllipsePiece& e) {
    return 0.5 * std::atan2(2.0 * Dot(e.u, e.v), Dot(e.u, e.u) - Dot(e.v, e.v));
}

// Parameters between which the curve bends one way and evenly: quarters of an ellipse from its
// axes, the knots of a spline; ends included.
std::vector<double> BreaksOf(const EllipsePiece& e) {
    std::vector<double> breaks{e.from};
    constexpr double kQuarter = kHalfTurn / 2;
    const double axis = PrincipalAngle(e);
    for (double n = std::ceil((e.from - axis) / kQuarter); axis + n * kQuarter < e.to; n += 1.0)
        if (axis + n * kQuarter > e.from) breaks.push_back(axis + n * kQuarter);
    breaks.push_back(e.to);
    return breaks;
}

std::vector<double> BreaksOf(const Nurbs& spline) {
    std::vector<double> breaks(
        spline.knots.begin() + spline.degree,
        spline.knots.begin() + static_cast<std::ptrdiff_t>(spline.points.size()) + 1);
    breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
    return breaks;
}

// --- Tangent arcs.

constexpr int kPlaces = 15;              // compared within a stretch
constexpr double kMostTurn = 1.0471976;  // 60 degrees: wider stretches are halved unseen
constexpr double kLeastStretch = 1e-9;   // of the range of the parameter
constexpr double kSlack = 0.9;           // of the tolerance, for what lies between the places
constexpr double kStraight = 1e-6;       // of the tolerance: flatter arcs are lines

struct End {
    double t = 0.0;
    Point point;
    Vector direction;  // unit
};

// An arc from a place, with its direction there or at its end.
Curve ArcBetween(const Point& from, const Point& to, double halfSweep, double tol) {
    const double bulge = std::tan(0.5 * halfSweep);
    const double sagitta = 0.5 * std::fabs(bulge) * Distance(from, to);
    return MakeCurve(from, to, sagitta > kStraight * tol ? bulge : 0.0);
}

double TurnBetween(const Vector& a, const Vector& b) { return std::atan2(Cross(a, b), Dot(a, b)); }

// The biarc with equal arms; false where the ends allow none that goes forward.
bool Biarc(const End& a, const End& b, double tol, Curve (&arcs)[2]) {
    const Vector chord = b.point - a.point;
    const double square = Dot(chord, chord);
    if (square == 0.0) return false;
    const double along = Dot(chord, a.direction + b.direction);
    const double denominator = 2.0 * (1.0 - Dot(a.direction, b.direction));
    // The positive root of denominator d^2 + 2 along d = square, without cancellation.
    const double arm = square / (along + std::sqrt(along * along + denominator * square));
    if (!(along > 0.0) || !std::isfinite(arm)) return false;
    const Point first = a.point + a.direction * arm, last = b.point - b.direction * arm;
    const Point joint = first + (last - first) * 0.5;
    if (joint == a.point || joint == b.point) return false;
    arcs[0] = ArcBetween(a.point, joint, TurnBetween(a.direction, joint - a.point), tol);
    arcs[1] = ArcBetween(joint, b.point, TurnBetween(b.point - joint, b.direction), tol);
    return true;
}

class Follower {
public:
    Follower(const SmoothCurve& curve, double tol, std::size_t most)
        : m_curve(curve), m_tol(tol), m_most(most) {}

    TangentArcs Run(const std::vector<double>& breaks) {
        const double range = breaks.back() - breaks.front();
        for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
            // The end of a stretch looks back: a corner has two directions.
            std::vector<Stretch> waiting{
                {EndAt(breaks[i], breaks[i + 1]), EndAt(breaks[i + 1], breaks[i])}};
            while (!waiting.empty()) {
                const Stretch stretch = waiting.back();
                waiting.pop_back();
                if (Follow(stretch, waiting.size(), range)) continue;
                const double t = stretch.a.t + (stretch.b.t - stretch.a.t) / 2;
                const End middle = EndAt(t, stretch.b.t);
                waiting.push_back({middle, stretch.b});
                waiting.push_back({stretch.a, middle});
            }
        }
        return std::move(m_result);
    }

private:
    struct Stretch {
        End a, b;
    };

    // The place at a parameter, its direction seen from within the stretch towards `other`.
    End EndAt(double t, double other) const {
        End end;
        end.t = t;
        end.point = PointAt(m_curve, t);
        // A hair inside the stretch, on its side of a knot; the difference to t is below rounding.
        const double inside = t + (other - t) * 1e-12;
        Vector d = Evaluate(m_curve, inside).derivative;
        const Point step = PointAt(m_curve, t + (other - t) * 1e-4);
        // Where the curve stands still, the way to the next place tells.
        if (Length(d) * std::fabs(other - t) <= 1e-6 * Distance(end.point, step))
            d = other > t ? step - end.point : end.point - step;
        end.direction = Unit(d);
        return end;
    }

    // Appends the arcs of a stretch; false when it has to be halved first.
    bool Follow(const Stretch& s, std::size_t waiting, double range) {
        Curve arcs[2];
        const bool isLast = s.b.t - s.a.t <= kLeastStretch * range ||
                            m_result.curves.size() + 2 * waiting >= m_most;
        if (std::fabs(TurnBetween(s.a.direction, s.b.direction)) <= kMostTurn &&
            Biarc(s.a, s.b, m_tol, arcs) && IsWithin(s, arcs)) {
            for (const Curve& arc : arcs) m_result.curves.push_back(arc);
            return true;
        }
        if (!isLast && !IsPoint(s)) return false;
        if (m_result.curves.size() + 2 * waiting >= m_most && !IsPoint(s))
            m_result.isWithin = false;
        if (s.a.point != s.b.point) m_result.curves.push_back(MakeLine(s.a.point, s.b.point));
        return true;
    }

    // Where a spline stands still no halving makes it turn less: such a stretch is one point.
    bool IsPoint(const Stretch& s) const {
        if (!std::holds_alternative<Nurbs>(m_curve)) return false;
        if (Distance(s.a.point, s.b.point) > kSlack * m_tol) return false;
        for (int i = 1; i <= kPlaces; ++i)
            if (Distance(s.a.point, PointAt(m_curve, s.a.t + (s.b.t - s.a.t) * i / (kPlaces + 1))) >
                kSlack * m_tol)
                return false;
        return true;
    }

    bool IsWithin(const Stretch& s, const Curve (&arcs)[2]) const {
        for (int i = 1; i <= kPlaces; ++i) {
            const double t = s.a.t + (s.b.t - s.a.t) * i / (kPlaces + 1);
            const Point p = PointAt(m_curve, t);
            if ((std::min)(Distance(arcs[0], p), Distance(arcs[1], p)) > kSlack * m_tol)
                return false;
        }
        return true;
    }

    const SmoothCurve& m_curve;
    double m_tol;
    std::size_t m_most;
    TangentArcs m_result;
};

// The lines of an ellipse that is seen edge-on: to where it turns back, and on.
TangentArcs EdgeOnLines(const EllipsePiece& e) {
    TangentArcs result;
    Point last = Evaluate(e, e.from).point;
    for (const double t : BreaksOf(e)) {
        const Point p = Evaluate(e, t).point;
        if (p != last) result.curves.push_back(MakeLine(last, p));
        last = p;
    }
    return result;
}

}  // namespace

bool IsSound(const SmoothCurve& curve) {
    return std::visit([](const auto& c) { return IsSoundPiece(c); }, curve);
}

double StartOf(const SmoothCurve& curve) {
    if (const auto* const ellipse = std::get_if<EllipsePiece>(&curve)) return ellipse->from;
    const Nurbs& spline = std::get<Nurbs>(curve);
    return spline.knots[static_cast<std::size_t>(spline.degree)];
}

double EndOf(const SmoothCurve& curve) {
    if (const auto* const ellipse = std::get_if<EllipsePiece>(&curve)) return ellipse->to;
    const Nurbs& spline = std::get<Nurbs>(curve);
    return spline.knots[spline.points.size()];
}

Point PointAt(const SmoothCurve& curve, double t) { return Evaluate(curve, t).point; }

Vector DerivativeAt(const SmoothCurve& curve, double t) { return Evaluate(curve, t).derivative; }

TangentArcs TangentArcsOf(const SmoothCurve& curve, double tol, std::size_t most) {
    if (!IsSound(curve) || !(tol > 0.0)) return {};
    const auto* const ellipse = std::get_if<EllipsePiece>(&curve);
    if (ellipse != nullptr && IsEdgeOn(*ellipse)) return EdgeOnLines(*ellipse);
    return Follower(curve, tol, most)
        .Run(std::visit([](const auto& c) { return BreaksOf(c); }, curve));
}

}  // namespace plane
