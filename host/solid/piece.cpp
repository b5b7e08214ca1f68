#include "host/solid/piece.h"

#include <algorithm>
#include <cmath>

#include "host/solid/tolerance.h"

namespace host::solid {

namespace {

constexpr double kPi = 3.14159265358979323846;

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// Unit vector from the chord towards the side on which the arc lies: right of travel for a positive
// bulge.
AcGeVector2d BulgeSide(const Piece& arc) {
    const AcGeVector2d left = arc.Chord().normal().perpVector();
    return arc.bulge > 0.0 ? -left : left;
}

// Turns a direction by an angle, counter-clockwise.
AcGeVector2d Turned(const AcGeVector2d& v, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {v.x * c - v.y * s, v.x * s + v.y * c};
}

// True for a point of the arc's circle that lies on the arc itself, ends included.
bool IsOnArcSide(const Piece& arc, const AcGePoint2d& p) {
    const double side = Cross(arc.Chord(), p - arc.from);
    return arc.bulge > 0.0 ? side <= 0.0 : side >= 0.0;
}

// (distance from the centre)^2 - radius^2, from the start point instead of the centre.
double Power(const Piece& arc, const AcGePoint2d& p) {
    const AcGeVector2d q = p - arc.from;
    return q.lengthSqrd() - 2.0 * q.dotProduct(arc.centre - arc.from);
}

// Distance from the arc's full circle, positive outside. By the power, since the difference of two
// large radii would lose the digits that count.
double CircleDistance(const Piece& arc, const AcGePoint2d& p) {
    return Power(arc, p) / ((p - arc.centre).length() + arc.radius);
}

double LineDistance(const Piece& line, const AcGePoint2d& p) {
    const AcGeVector2d chord = line.Chord();
    const double len2 = chord.lengthSqrd();
    const double t = len2 > 0.0 ? (p - line.from).dotProduct(chord) / len2 : 0.0;
    return p.distanceTo(line.from + chord * (std::clamp)(t, 0.0, 1.0));
}

// A line through a point along a unit direction.
struct Ray {
    AcGePoint2d at;
    AcGeVector2d along;
};

// Where an infinite line meets the arc's full circle: two points, or the line's nearest point to
// the circle when it misses it (count 1).
struct CircleCuts {
    AcGePoint2d point[2];
    int count = 0;
};
CircleCuts CutCircle(const Ray& ray, const Piece& arc) {
    // t^2 + 2 b t + power = 0 along the ray.
    const double b = ray.along.dotProduct(ray.at - arc.centre);
    const double power = Power(arc, ray.at);
    const double d = b * b - power;
    CircleCuts cuts;
    if (d <= 0.0) {
        cuts.point[0] = ray.at - ray.along * b;
        cuts.count = 1;
        return cuts;
    }
    // The root of larger size directly, the other by their product: no cancellation.
    const double large = b > 0.0 ? -b - std::sqrt(d) : -b + std::sqrt(d);
    cuts.point[0] = ray.at + ray.along * large;
    cuts.point[1] = ray.at + ray.along * (power / large);
    cuts.count = 2;
    return cuts;
}

// The line on which two circles have the same power: it passes through their meeting points.
std::optional<Ray> RadicalLine(const Piece& a, const Piece& b) {
    const AcGeVector2d g = a.centre - b.centre;
    const double g2 = g.lengthSqrd();
    if (g2 == 0.0) return std::nullopt;
    const AcGePoint2d origin = a.from;
    const double difference = Power(a, origin) - Power(b, origin);
    return Ray{origin + g * (difference / (2.0 * g2)), g.perpVector() * (1.0 / std::sqrt(g2))};
}

std::optional<AcGePoint2d> LinesCross(const Piece& a, const Piece& b) {
    const AcGeVector2d u = a.Chord(), v = b.Chord(), w = b.from - a.from;
    const double c = Cross(u, v);
    if (c == 0.0) return std::nullopt;  // parallel: they can only meet at an end
    const double t = Cross(w, v) / c, s = Cross(w, u) / c;
    if (t < 0.0 || t > 1.0 || s < 0.0 || s > 1.0) return std::nullopt;
    return a.from + u * t;
}

std::optional<AcGePoint2d> InnerMeeting(const Piece& a, const Piece& b, double tol) {
    if (!a.IsArc() && !b.IsArc()) return LinesCross(a, b);
    std::optional<Ray> ray;
    if (a.IsArc() && b.IsArc())
        ray = RadicalLine(a, b);
    else if (a.IsArc())
        ray = Ray{b.from, b.Chord().normal()};
    else
        ray = Ray{a.from, a.Chord().normal()};
    if (!ray) return std::nullopt;
    const CircleCuts cuts = CutCircle(*ray, a.IsArc() ? a : b);
    for (int i = 0; i < cuts.count; ++i)
        if (Distance(a, cuts.point[i]) <= tol && Distance(b, cuts.point[i]) <= tol)
            return cuts.point[i];
    return std::nullopt;
}

// Where the carriers of two neighbours meet besides their common corner: the corner mirrored on the
// line of symmetry. Exact also where both are nearly tangent.
AcGePoint2d MirroredCorner(const Piece& a, const Piece& b, const AcGePoint2d& corner) {
    if (a.IsArc() && b.IsArc()) {
        const AcGeVector2d axis = (b.centre - a.centre).normal();
        const AcGeVector2d q = corner - a.centre;
        const AcGeVector2d across = q - axis * q.dotProduct(axis);
        return corner - across * 2.0;
    }
    const Piece& line = a.IsArc() ? b : a;
    const Piece& arc = a.IsArc() ? a : b;
    const AcGeVector2d u = line.Chord().normal();
    return corner + u * (2.0 * (arc.centre - corner).dotProduct(u));
}

// f(h) = sin h - h cos h, g(h) = h - sin h cos h, m(h) = 2/3 sin^3 h - g(h) cos h: they give an
// arc's centroid, its segment's area and moment. All start with h^3 or h^5, so small angles take
// the power series; eight terms reach the last digit at the switch.
struct ArcFunctions {
    double f, g, m;
};
ArcFunctions FunctionsOf(double h) {
    constexpr double kSeriesBelow = 0.5;
    if (std::fabs(h) >= kSeriesBelow) {
        const double s = std::sin(h), c = std::cos(h);
        const double g = h - s * c;
        return {s - h * c, g, 2.0 / 3.0 * s * s * s - g * c};
    }
    ArcFunctions sum{0.0, 0.0, 0.0};
    double power = h, factorial = 1.0, two = 1.0, three = 3.0;  // h^(2k+1), (2k+1)!, 4^k, 3^(2k+1)
    double sign = 1.0;
    for (int k = 1; k <= 9; ++k) {
        power *= h * h;
        factorial *= 2.0 * k * (2.0 * k + 1.0);
        two *= 4.0;
        three *= 9.0;
        sign = -sign;
        sum.f -= sign * 2.0 * k / factorial * power;
        sum.g -= sign * two / factorial * power;
        // The terms of h and h^3 cancel exactly; leaving them out keeps the rest exact.
        if (k >= 2) sum.m += sign * (0.75 + three / 12.0 - (2.0 * k + 1.0)) / factorial * power;
    }
    return sum;
}

}  // namespace

double Piece::HalfAngle() const { return 2.0 * std::atan(bulge); }

double Piece::Length() const {
    const double chord = Chord().length();
    if (!IsArc()) return chord;
    // h / sin h with sin h = 2 b / (1 + b^2).
    return chord * HalfAngle() * (1.0 + bulge * bulge) / (2.0 * bulge);
}

double Piece::Sagitta() const { return 0.5 * std::fabs(bulge) * Chord().length(); }

AcGePoint2d Piece::Middle() const {
    const AcGePoint2d mid = from + Chord() * 0.5;
    return IsArc() ? mid + BulgeSide(*this) * Sagitta() : mid;
}

AcGeVector2d Piece::StartDirection() const { return Turned(Chord().normal(), -HalfAngle()); }

AcGeVector2d Piece::EndDirection() const { return Turned(Chord().normal(), HalfAngle()); }

Piece Piece::Reversed() const {
    Piece back = *this;
    back.from = to;
    back.to = from;
    back.bulge = IsArc() ? -bulge : 0.0;
    return back;
}

Piece MakePiece(const AcGePoint2d& from, const AcGePoint2d& to, double bulge) {
    Piece piece;
    piece.from = from;
    piece.to = to;
    piece.bulge = bulge;
    if (bulge == 0.0) return piece;
    const AcGeVector2d chord = piece.Chord();
    const double b2 = bulge * bulge;
    // bulge = tan(sweep / 4): centre and radius by the half angle (DXF reference, LWPOLYLINE).
    piece.centre = from + chord * 0.5 + chord.perpVector() * ((1.0 - b2) / (4.0 * bulge));
    piece.radius = chord.length() * (1.0 + b2) / (4.0 * std::fabs(bulge));
    return piece;
}

Piece MakeArcOnCircle(const AcGePoint2d& from, const AcGePoint2d& to, const AcGePoint2d& centre,
                      double radius, bool turnsLeft) {
    const AcGeVector2d a = from - centre, b = to - centre;
    double sweep = std::atan2(Cross(a, b), a.dotProduct(b));
    if (turnsLeft && sweep < 0.0) sweep += 2.0 * kPi;
    if (!turnsLeft && sweep > 0.0) sweep -= 2.0 * kPi;
    Piece arc;
    arc.from = from;
    arc.to = to;
    arc.bulge = std::tan(sweep / 4.0);
    arc.centre = centre;
    arc.radius = radius;
    return arc;
}

void Box::Add(const Box& other) {
    Add(other.low);
    Add(other.high);
}

void Box::Add(const AcGePoint2d& p) {
    low.set((std::min)(low.x, p.x), (std::min)(low.y, p.y));
    high.set((std::max)(high.x, p.x), (std::max)(high.y, p.y));
}

bool Box::Meets(const Box& other, double margin) const {
    return low.x - margin <= other.high.x && other.low.x - margin <= high.x &&
           low.y - margin <= other.high.y && other.low.y - margin <= high.y;
}

Box BoxOf(const Piece& piece) {
    Box box{piece.from, piece.from};
    box.Add(piece.to);
    if (!piece.IsArc()) return box;
    for (const AcGeVector2d& e :
         {AcGeVector2d(1, 0), AcGeVector2d(-1, 0), AcGeVector2d(0, 1), AcGeVector2d(0, -1)})
        box.Add(Farthest(piece, e));
    return box;
}

AcGePoint2d Farthest(const Piece& piece, const AcGeVector2d& direction) {
    const AcGeVector2d chord = piece.Chord();
    const AcGePoint2d end = chord.dotProduct(direction) > 0.0 ? piece.to : piece.from;
    if (!piece.IsArc()) return end;
    const AcGeVector2d along = chord.normal(), side = BulgeSide(piece);
    const double h = std::fabs(piece.HalfAngle());
    const double psi = std::atan2(along.dotProduct(direction), side.dotProduct(direction));
    if (std::fabs(psi) >= h) return end;
    // With the angle phi from the arc's middle, its points are (middle of the chord) +
    // along r sin(phi) + side r (cos(phi) - cos(h)); phi = psi faces the direction. The difference
    // of cosines goes by half angles: sin((h + psi) / 2) sin((h - psi) / 2).
    const double r = piece.radius;
    const double rise = 2.0 * r * std::sin(0.5 * (h + psi)) * std::sin(0.5 * (h - psi));
    return piece.from + chord * 0.5 + along * (r * std::sin(psi)) + side * rise;
}

double Distance(const Piece& piece, const AcGePoint2d& p) {
    if (!piece.IsArc()) return LineDistance(piece, p);
    // The nearest point of the full circle, when the arc reaches it; else one of the ends.
    const double off = CircleDistance(piece, p);
    const AcGePoint2d foot = p - (p - piece.centre).normal() * off;
    if (IsOnArcSide(piece, foot)) return std::fabs(off);
    return (std::min)(p.distanceTo(piece.from), p.distanceTo(piece.to));
}

std::optional<AcGePoint2d> Meeting(const Piece& a, const Piece& b, double tol) {
    for (const AcGePoint2d& end : {a.from, a.to})
        if (Distance(b, end) <= tol) return end;
    for (const AcGePoint2d& end : {b.from, b.to})
        if (Distance(a, end) <= tol) return end;
    return InnerMeeting(a, b, tol);
}

std::optional<AcGePoint2d> SecondMeeting(const Piece& a, const Piece& b, double tol) {
    if (Distance(b, a.from) <= tol) return a.from;
    if (Distance(a, b.to) <= tol) return b.to;
    if (!a.IsArc() && !b.IsArc()) return std::nullopt;
    const AcGePoint2d corner = a.to;
    const AcGePoint2d other = MirroredCorner(a, b, corner);
    if (other.distanceTo(corner) <= tol) return std::nullopt;
    if (Distance(a, other) > tol || Distance(b, other) > tol) return std::nullopt;
    return other;
}

std::optional<AcGePoint2d> AxisPoint(const Piece& piece) {
    if (piece.from.y == 0.0) return piece.from;
    if (piece.to.y == 0.0) return piece.to;
    if (!piece.IsArc()) {
        if ((piece.from.y > 0.0) == (piece.to.y > 0.0)) return std::nullopt;
        const double t = piece.from.y / (piece.from.y - piece.to.y);
        return AcGePoint2d(piece.from.x + piece.Chord().x * t, 0.0);
    }
    const CircleCuts cuts =
        CutCircle(Ray{AcGePoint2d(piece.from.x, 0.0), AcGeVector2d(1.0, 0.0)}, piece);
    for (int i = 0; i < cuts.count; ++i)
        if (Distance(piece, cuts.point[i]) <= kPositionTol) return cuts.point[i];
    return std::nullopt;
}

PieceIntegrals Integrate(const Piece& piece) {
    const AcGeVector2d chord = piece.Chord();
    const double y1 = piece.from.y, y2 = piece.to.y;
    PieceIntegrals sum;
    // A ring that runs counter-clockwise: area = - integral of y dx, moment = - integral of y^2/2
    // dx.
    sum.area = -chord.x * 0.5 * (y1 + y2);
    sum.moment = -chord.x * (y1 * y1 + y1 * y2 + y2 * y2) / 6.0;
    const double len = chord.length();
    if (!piece.IsArc()) {
        sum.length = len;
        sum.lengthMoment = len * 0.5 * (y1 + y2);
        return sum;
    }
    // The chord's part and that of the segment between chord and arc, which a positive bulge adds.
    const double r = piece.radius, h = std::fabs(piece.HalfAngle());
    const ArcFunctions fun = FunctionsOf(h);
    const double side = BulgeSide(piece).y, middle = 0.5 * (y1 + y2);
    const double sign = piece.bulge > 0.0 ? 1.0 : -1.0;
    const double segment = r * r * fun.g;
    sum.area += sign * segment;
    sum.moment += sign * (segment * middle + r * r * r * fun.m * side);
    sum.length = 2.0 * r * h;
    sum.lengthMoment = sum.length * middle + 2.0 * r * r * fun.f * side;
    return sum;
}

}  // namespace host::solid
