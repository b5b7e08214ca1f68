#include "plane/curve.h"

#include <algorithm>
#include <cmath>

namespace plane {
namespace {

constexpr double kQuarterBulge = 0.41421356237309503;  // tan(90 degrees / 4)

// Unit vector from the chord towards the side on which the arc lies: right of travel for a positive
// bulge.
Vector BulgeSide(const Curve& arc) {
    const Vector left = Left(Unit(arc.Chord()));
    return arc.bulge > 0.0 ? -left : left;
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

// What the places of an arc are measured by: the angle phi from the arc's middle, positive towards
// its end, whichever way it turns. All goes by the chord, which is exact, and not by the centre.
struct ArcFrame {
    explicit ArcFrame(const Curve& arc)
        : middle(arc.from + arc.Chord() * 0.5),
          along(Unit(arc.Chord())),
          side(BulgeSide(arc)),
          h(std::fabs(arc.HalfAngle())),
          r(arc.radius) {}

    // (middle of the chord) + along r sin(phi) + side r (cos(phi) - cos(h)). The difference of
    // cosines goes by half angles: sin((h + phi) / 2) sin((h - phi) / 2).
    Point At(double phi) const {
        const double rise = 2.0 * r * std::sin(0.5 * (h + phi)) * std::sin(0.5 * (h - phi));
        return middle + along * (r * std::sin(phi)) + side * rise;
    }

    Point middle;
    Vector along, side;
    double h, r;
};

}  // namespace

double Curve::Length() const {
    const double chord = plane::Length(Chord());
    if (!IsArc()) return chord;
    // h / sin h with sin h = 2 b / (1 + b^2).
    return chord * HalfAngle() * (1.0 + bulge * bulge) / (2.0 * bulge);
}

double Curve::Sagitta() const { return 0.5 * std::fabs(bulge) * plane::Length(Chord()); }

Point Curve::Middle() const {
    const Point mid = from + Chord() * 0.5;
    return IsArc() ? mid + BulgeSide(*this) * Sagitta() : mid;
}

Vector Curve::StartDirection() const { return Turned(Unit(Chord()), -HalfAngle()); }

Vector Curve::EndDirection() const { return Turned(Unit(Chord()), HalfAngle()); }

Curve Curve::Reversed() const {
    Curve back = *this;
    back.from = to;
    back.to = from;
    back.bulge = IsArc() ? -bulge : 0.0;
    return back;
}

Curve MakeLine(const Point& from, const Point& to) {
    Curve line;
    line.from = from;
    line.to = to;
    return line;
}

Curve MakeCurve(const Point& from, const Point& to, double bulge) {
    Curve curve = MakeLine(from, to);
    curve.bulge = bulge;
    if (bulge == 0.0) return curve;
    const Vector chord = curve.Chord();
    const double b2 = bulge * bulge;
    // bulge = tan(sweep / 4): centre and radius by the half angle (DXF reference, LWPOLYLINE).
    curve.centre = from + chord * 0.5 + Left(chord) * ((1.0 - b2) / (4.0 * bulge));
    curve.radius = Length(chord) * (1.0 + b2) / (4.0 * std::fabs(bulge));
    return curve;
}

Curve MakeArcOnCircle(const Point& from, const Point& to, const Point& centre, double radius,
                      bool turnsLeft) {
    const Vector a = from - centre, b = to - centre;
    double sweep = std::atan2(Cross(a, b), Dot(a, b));
    if (turnsLeft && sweep < 0.0) sweep += 2.0 * kHalfTurn;
    if (!turnsLeft && sweep > 0.0) sweep -= 2.0 * kHalfTurn;
    Curve arc = MakeLine(from, to);
    arc.bulge = std::tan(sweep / 4.0);
    arc.centre = centre;
    arc.radius = radius;
    return arc;
}

Curve MakeArc(const Point& centre, double radius, double startAngle, double sweep) {
    const auto at = [&](double angle) {
        return Point{centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
    };
    Curve arc = MakeLine(at(startAngle), at(startAngle + sweep));
    arc.bulge = std::tan(sweep / 4.0);
    arc.centre = centre;
    arc.radius = radius;
    return arc;
}

std::array<Curve, 2> HalvesOfCircle(const Point& centre, double radius, double startAngle) {
    std::array<Curve, 2> halves{MakeArc(centre, radius, startAngle, kHalfTurn),
                                MakeArc(centre, radius, startAngle + kHalfTurn, kHalfTurn)};
    // tan(pi / 4) falls one bit short of it.
    halves[0].bulge = halves[1].bulge = 1.0;
    halves[1].from = halves[0].to;
    halves[1].to = halves[0].from;
    return halves;
}

Point PointAt(const Curve& curve, double share) {
    if (share == 0.0) return curve.from;
    if (share == 1.0) return curve.to;
    if (!curve.IsArc()) return curve.from + curve.Chord() * share;
    const ArcFrame frame(curve);
    return frame.At((2.0 * share - 1.0) * frame.h);
}

double ShareOf(const Curve& curve, const Point& p) {
    const Vector chord = curve.Chord();
    const double square = Dot(chord, chord);
    if (square == 0.0) return 0.0;
    if (!curve.IsArc()) return Dot(p - curve.from, chord) / square;
    // The centre lies on the chord's perpendicular, so along the chord it counts from the middle.
    const ArcFrame frame(curve);
    const double phi =
        std::atan2(Dot(frame.along, p - frame.middle), Dot(frame.side, p - curve.centre));
    return 0.5 + phi / (2.0 * frame.h);
}

Curve PartOf(const Curve& curve, const Point& p, const Point& q) {
    Curve part = curve;
    part.from = p;
    part.to = q;
    if (!curve.IsArc()) return part;
    const double sweep = curve.Sweep() * (ShareOf(curve, q) - ShareOf(curve, p));
    part.bulge = std::tan(sweep / 4.0);
    return part;
}

Vector DirectionAt(const Curve& curve, const Point& p) {
    if (!curve.IsArc()) return Unit(curve.Chord());
    const Vector out = Unit(p - curve.centre);
    return curve.bulge > 0.0 ? Left(out) : -Left(out);
}

double CircleDistance(const Curve& arc, const Point& p) {
    // By the power of the point, taken from the start point instead of the centre: the difference
    // of two large radii would lose the digits that count.
    const Vector q = p - arc.from;
    const double power = Dot(q, q) - 2.0 * Dot(q, arc.centre - arc.from);
    return power / (Length(p - arc.centre) + arc.radius);
}

bool IsOnArc(const Curve& arc, const Point& p) {
    const Vector chord = arc.Chord(), q = p - arc.from;
    const double side = Cross(chord, q);
    if (std::fabs(arc.bulge) > kQuarterBulge) return arc.bulge > 0.0 ? side <= 0.0 : side >= 0.0;
    // A flat circle leaves the chord's line too slowly at the ends: there the place along the chord
    // tells, and the other half of the circle is told by the centre's side.
    const double along = Dot(chord, q);
    if (along < 0.0 || along > Dot(chord, chord)) return false;
    const double fromCentre = Cross(chord, p - arc.centre);
    return arc.bulge > 0.0 ? fromCentre <= 0.0 : fromCentre >= 0.0;
}

double Distance(const Curve& curve, const Point& p) {
    if (!curve.IsArc()) {
        const Vector chord = curve.Chord();
        const double square = Dot(chord, chord);
        const double t = square > 0.0 ? Dot(p - curve.from, chord) / square : 0.0;
        return Distance(p, curve.from + chord * (std::clamp)(t, 0.0, 1.0));
    }
    // The nearest point of the full circle, when the arc reaches it; else one of the ends.
    const double off = CircleDistance(curve, p);
    const Point foot = p - Unit(p - curve.centre) * off;
    if (IsOnArc(curve, foot)) return std::fabs(off);
    return (std::min)(Distance(p, curve.from), Distance(p, curve.to));
}

Point NearestPoint(const Curve& curve, const Point& p) {
    if (!curve.IsArc()) {
        const Vector chord = curve.Chord();
        const double square = Dot(chord, chord);
        const double t = square > 0.0 ? Dot(p - curve.from, chord) / square : 0.0;
        if (t <= 0.0) return curve.from;
        if (t >= 1.0) return curve.to;
        return curve.from + chord * t;
    }
    const Vector out = Unit(p - curve.centre);
    const Point foot = p - out * CircleDistance(curve, p);
    if ((out.x != 0.0 || out.y != 0.0) && IsOnArc(curve, foot)) return foot;
    return Distance(p, curve.to) < Distance(p, curve.from) ? curve.to : curve.from;
}

Point Farthest(const Curve& curve, const Vector& direction) {
    const Vector chord = curve.Chord();
    const Point end = Dot(chord, direction) > 0.0 ? curve.to : curve.from;
    if (!curve.IsArc()) return end;
    // phi = psi faces the direction.
    const ArcFrame frame(curve);
    const double psi = std::atan2(Dot(frame.along, direction), Dot(frame.side, direction));
    return std::fabs(psi) >= frame.h ? end : frame.At(psi);
}

Box BoxOf(const Curve& curve) {
    Box box;
    box.Add(curve.from);
    box.Add(curve.to);
    if (!curve.IsArc()) return box;
    for (const Vector& e : {Vector{1, 0}, Vector{-1, 0}, Vector{0, 1}, Vector{0, -1}})
        box.Add(Farthest(curve, e));
    return box;
}

Integrals Integrate(const Curve& curve) {
    const Vector chord = curve.Chord();
    const double y1 = curve.from.y, y2 = curve.to.y;
    Integrals sum;
    // A ring that runs counter-clockwise: area = - integral of y dx, moment = - integral of y^2/2
    // dx.
    sum.area = -chord.x * 0.5 * (y1 + y2);
    sum.moment = -chord.x * (y1 * y1 + y1 * y2 + y2 * y2) / 6.0;
    const double len = Length(chord);
    if (!curve.IsArc()) {
        sum.length = len;
        sum.lengthMoment = len * 0.5 * (y1 + y2);
        return sum;
    }
    // The chord's part and that of the segment between chord and arc, which a positive bulge adds.
    const double r = curve.radius, h = std::fabs(curve.HalfAngle());
    const ArcFunctions fun = FunctionsOf(h);
    const double side = BulgeSide(curve).y, middle = 0.5 * (y1 + y2);
    const double sign = curve.bulge > 0.0 ? 1.0 : -1.0;
    const double segment = r * r * fun.g;
    sum.area += sign * segment;
    sum.moment += sign * (segment * middle + r * r * r * fun.m * side);
    sum.length = 2.0 * r * h;
    sum.lengthMoment = sum.length * middle + 2.0 * r * r * fun.f * side;
    return sum;
}

}  // namespace plane
