#include "plane/meeting.h"

#include <algorithm>
#include <cmath>

namespace plane {
namespace {

// Sine of the angle below which two lines count as parallel; meetings of parallel lines are ends.
constexpr double kParallel = 1e-12;

// Arcs that bend less than this go by the power of points, the others by their centre. The centre
// of such an arc lies hundreds of chords away, where its formulas lose the digits that count; for
// rounder ones both agree to rounding, and by the centre traced boundaries round as they always
// did.
constexpr double kFlatBulge = 1e-3;

bool IsFlat(const Curve& curve) { return std::fabs(curve.bulge) < kFlatBulge; }

// (distance from the centre)^2 - radius^2, from the start point instead of the centre.
double Power(const Curve& arc, const Point& p) {
    const Vector q = p - arc.from;
    return Dot(q, q) - 2.0 * Dot(q, arc.centre - arc.from);
}

// A line through a point along a unit direction.
struct Ray {
    Point at;
    Vector along;
};

// How an infinite line passes an arc's full circle.
struct Pass {
    Point closest;        // of the line to the centre
    double square = 0.0;  // of half the chord that it cuts off; negative when it misses the circle
    Point cut[2];         // where square is positive: the farther along the line first
};
Pass PassCircle(const Ray& ray, const Curve& arc) {
    // t^2 + 2 b t + power = 0 along the ray.
    const double b = Dot(ray.along, ray.at - arc.centre);
    const double power = Power(arc, ray.at);
    Pass pass;
    pass.closest = ray.at - ray.along * b;
    pass.square = b * b - power;
    if (!(pass.square > 0.0)) return pass;
    // The root of larger size directly, the other by their product: no cancellation.
    const double root = std::sqrt(pass.square);
    const double large = b > 0.0 ? -b - root : -b + root;
    pass.cut[b > 0.0 ? 1 : 0] = ray.at + ray.along * large;
    pass.cut[b > 0.0 ? 0 : 1] = ray.at + ray.along * (power / large);
    return pass;
}

void MeetLines(const Curve& a, const Curve& b, std::vector<Point>& points) {
    const Vector u = a.Chord(), v = b.Chord();
    const double cross = Cross(u, v);
    if (std::fabs(cross) <= kParallel * Length(u) * Length(v)) return;
    points.push_back(a.from + u * (Cross(b.from - a.from, v) / cross));
}

void MeetLineFlatArc(const Ray& line, const Curve& arc, double tol, std::vector<Point>& points) {
    const Pass pass = PassCircle(line, arc);
    // (radius - distance) (radius + distance) is the square; the first factor is what tol is about.
    const double away = std::sqrt((std::max)(arc.radius * arc.radius - pass.square, 0.0));
    const double touch = tol * (arc.radius + away);
    if (std::fabs(pass.square) <= touch)
        points.push_back(pass.closest);
    else if (pass.square > 0.0)
        points.insert(points.end(), {pass.cut[0], pass.cut[1]});
}

void MeetLineArc(const Curve& line, const Curve& arc, double tol, std::vector<Point>& points) {
    const double length = Length(line.Chord());
    if (length == 0.0) return;
    const Vector along = line.Chord() / length;
    if (IsFlat(arc)) return MeetLineFlatArc({line.from, along}, arc, tol, points);
    const Point foot = line.from + along * Dot(arc.centre - line.from, along);
    const double distance = Length(foot - arc.centre);
    if (distance > arc.radius + tol) return;
    if (distance >= arc.radius - tol) {
        points.push_back(foot);
        return;
    }
    const double half = std::sqrt((arc.radius - distance) * (arc.radius + distance));
    points.push_back(foot + along * half);
    points.push_back(foot - along * half);
}

// The line on which two circles have the same power passes through their meetings.
void MeetFlatArcs(const Curve& a, const Curve& b, double tol, std::vector<Point>& points) {
    const Vector g = a.centre - b.centre;
    const double square = Dot(g, g);
    if (square == 0.0) return;
    const double difference = Power(a, a.from) - Power(b, a.from);
    const Ray ray{a.from + g * (difference / (2.0 * square)), Left(g) * (1.0 / std::sqrt(square))};
    // The rounder of both tells where on that line: the flatter one may run along it.
    const Curve &first = a.radius <= b.radius ? a : b, &other = a.radius <= b.radius ? b : a;
    const Pass pass = PassCircle(ray, first);
    // Between two circles with a common chord lies a lens. It is as thick as the square of half the
    // chord, times the distance of the centres, over twice the product of the radii.
    const double touch = 2.0 * tol * a.radius * b.radius / std::sqrt(square);
    if (std::fabs(pass.square) <= touch)
        points.push_back(pass.closest -
                         Unit(pass.closest - other.centre) * CircleDistance(other, pass.closest));
    else if (pass.square > 0.0)
        points.insert(points.end(), {pass.cut[0], pass.cut[1]});
}

void MeetArcs(const Curve& a, const Curve& b, double tol, std::vector<Point>& points) {
    if (IsFlat(a) || IsFlat(b)) return MeetFlatArcs(a, b, tol, points);
    const Vector apart = b.centre - a.centre;
    const double distance = Length(apart);
    // Circles in one another's place meet in the ends of their arcs only.
    if (distance <= tol && std::fabs(a.radius - b.radius) <= tol) return;
    if (distance > a.radius + b.radius + tol) return;
    if (distance < std::fabs(a.radius - b.radius) - tol || distance == 0.0) return;
    const Vector along = apart / distance;
    // From a's centre to the common chord.
    const double foot = (distance + (a.radius - b.radius) * (a.radius + b.radius) / distance) / 2;
    const bool isTangent =
        distance >= a.radius + b.radius - tol || distance <= std::fabs(a.radius - b.radius) + tol;
    if (isTangent) {
        points.push_back(a.centre + along * std::copysign(a.radius, foot));
        return;
    }
    const double square = (a.radius - foot) * (a.radius + foot);
    const Vector half = Left(along) * std::sqrt((std::max)(square, 0.0));
    points.push_back(a.centre + along * foot + half);
    points.push_back(a.centre + along * foot - half);
}

// Where the carriers of two neighbours meet besides their common corner: the corner mirrored on the
// line of symmetry. Exact also where both are nearly tangent.
Point MirroredCorner(const Curve& a, const Curve& b, const Point& corner) {
    if (a.IsArc() && b.IsArc()) {
        const Vector axis = Unit(b.centre - a.centre);
        const Vector q = corner - a.centre;
        const Vector across = q - axis * Dot(q, axis);
        return corner - across * 2.0;
    }
    const Curve& line = a.IsArc() ? b : a;
    const Curve& arc = a.IsArc() ? a : b;
    const Vector u = Unit(line.Chord());
    return corner + u * (2.0 * Dot(arc.centre - corner, u));
}

std::optional<Point> LineStretch(const Curve& a, const Curve& b, double tol) {
    const Vector chord = a.Chord();
    const double length = Length(chord);
    if (length == 0.0) return std::nullopt;
    if (std::fabs(Cross(chord, b.from - a.from)) > tol * length ||
        std::fabs(Cross(chord, b.to - a.from)) > tol * length)
        return std::nullopt;
    const double t0 = Dot(b.from - a.from, chord) / length;
    const double t1 = Dot(b.to - a.from, chord) / length;
    const double low = (std::max)(0.0, (std::min)(t0, t1));
    const double high = (std::min)(length, (std::max)(t0, t1));
    if (!(high - low > tol)) return std::nullopt;
    return a.from + chord * ((low + high) / 2 / length);
}

std::optional<Point> ArcStretch(const Curve& a, const Curve& b, double tol) {
    if (Distance(a.centre, b.centre) > tol || std::fabs(a.radius - b.radius) > tol)
        return std::nullopt;
    // The other arc on the shares of this one, run in its direction; once more a full turn earlier.
    const double sweepA = std::fabs(a.Sweep()), sweepB = std::fabs(b.Sweep());
    const bool isSameWay = (a.bulge > 0.0) == (b.bulge > 0.0);
    double begin = ShareOf(a, isSameWay ? b.from : b.to) * sweepA;
    if (begin < 0.0) begin += kFullTurn;
    for (const double shift : {0.0, -kFullTurn}) {
        const double low = (std::max)(0.0, begin + shift);
        const double high = (std::min)(sweepA, begin + shift + sweepB);
        if ((high - low) * a.radius > tol) return PointAt(a, (low + high) / 2 / sweepA);
    }
    return std::nullopt;
}

}  // namespace

void AppendCarrierMeetings(const Curve& a, const Curve& b, double tol, std::vector<Point>& points) {
    if (a.IsArc() && b.IsArc()) return MeetArcs(a, b, tol, points);
    if (a.IsArc()) return MeetLineArc(b, a, tol, points);
    if (b.IsArc()) return MeetLineArc(a, b, tol, points);
    MeetLines(a, b, points);
}

void AppendMeetings(const Curve& a, const Curve& b, double tol, std::vector<Point>& points) {
    const std::size_t before = points.size();
    points.insert(points.end(), {a.from, a.to, b.from, b.to});
    AppendCarrierMeetings(a, b, tol, points);
    const auto isOff = [&](const Point& p) { return Distance(a, p) > tol || Distance(b, p) > tol; };
    points.erase(
        std::remove_if(points.begin() + static_cast<std::ptrdiff_t>(before), points.end(), isOff),
        points.end());
}

std::optional<Point> Meeting(const Curve& a, const Curve& b, double tol) {
    for (const Point& end : {a.from, a.to})
        if (Distance(b, end) <= tol) return end;
    for (const Point& end : {b.from, b.to})
        if (Distance(a, end) <= tol) return end;
    std::vector<Point> points;
    AppendCarrierMeetings(a, b, tol, points);
    for (const Point& p : points)
        if (Distance(a, p) <= tol && Distance(b, p) <= tol) return p;
    return std::nullopt;
}

std::optional<Point> SecondMeeting(const Curve& a, const Curve& b, double tol) {
    if (Distance(b, a.from) <= tol) return a.from;
    if (Distance(a, b.to) <= tol) return b.to;
    if (!a.IsArc() && !b.IsArc()) return std::nullopt;
    const Point corner = a.to;
    const Point other = MirroredCorner(a, b, corner);
    if (Distance(other, corner) <= tol) return std::nullopt;
    if (Distance(a, other) > tol || Distance(b, other) > tol) return std::nullopt;
    return other;
}

std::optional<Point> Stretch(const Curve& a, const Curve& b, double tol) {
    if (a.IsArc() != b.IsArc()) return std::nullopt;
    return a.IsArc() ? ArcStretch(a, b, tol) : LineStretch(a, b, tol);
}

std::optional<Point> AxisPoint(const Curve& curve, double tol) {
    if (curve.from.y == 0.0) return curve.from;
    if (curve.to.y == 0.0) return curve.to;
    if (!curve.IsArc()) {
        if ((curve.from.y > 0.0) == (curve.to.y > 0.0)) return std::nullopt;
        const double t = curve.from.y / (curve.from.y - curve.to.y);
        return Point{curve.from.x + curve.Chord().x * t, 0.0};
    }
    const Pass pass = PassCircle({{curve.from.x, 0.0}, {1.0, 0.0}}, curve);
    if (!(pass.square > 0.0))
        return Distance(curve, pass.closest) <= tol ? std::optional(pass.closest) : std::nullopt;
    for (const Point& p : pass.cut)
        if (Distance(curve, p) <= tol) return p;
    return std::nullopt;
}

}  // namespace plane
