#include "host/ed/plane_curve.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double kTwoPi = 6.28318530717958647692;

// Sine of the angle below which two lines count as parallel; meetings of parallel lines are ends.
constexpr double kParallel = 1e-12;

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }
double Dot(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.x + a.y * b.y; }
AcGeVector2d Left(const AcGeVector2d& v) { return AcGeVector2d(-v.y, v.x); }

AcGePoint2d OnCircle(const AcGePoint2d& center, double radius, double angle) {
    return AcGePoint2d(center.x + radius * std::cos(angle), center.y + radius * std::sin(angle));
}

void MeetLines(const PlaneCurve& a, const PlaneCurve& b, std::vector<AcGePoint2d>& points) {
    const AcGeVector2d u = a.end - a.start, v = b.end - b.start;
    const double cross = Cross(u, v);
    if (std::fabs(cross) <= kParallel * u.length() * v.length()) return;
    points.push_back(a.start + u * (Cross(b.start - a.start, v) / cross));
}

void MeetLineArc(const PlaneCurve& line, const PlaneCurve& arc, std::vector<AcGePoint2d>& points) {
    const AcGeVector2d along = (line.end - line.start) / line.Length();
    const AcGePoint2d foot = line.start + along * Dot(arc.center - line.start, along);
    const double distance = (foot - arc.center).length();
    if (distance > arc.radius + kNodeTol) return;
    if (distance >= arc.radius - kNodeTol) {
        points.push_back(foot);
        return;
    }
    const double half = std::sqrt((arc.radius - distance) * (arc.radius + distance));
    points.push_back(foot - along * half);
    points.push_back(foot + along * half);
}

void MeetArcs(const PlaneCurve& a, const PlaneCurve& b, std::vector<AcGePoint2d>& points) {
    const AcGeVector2d apart = b.center - a.center;
    const double distance = apart.length();
    // Circles in one another's place meet in the ends of their arcs only.
    if (distance <= kNodeTol && std::fabs(a.radius - b.radius) <= kNodeTol) return;
    if (distance > a.radius + b.radius + kNodeTol) return;
    if (distance < std::fabs(a.radius - b.radius) - kNodeTol || distance == 0.0) return;
    const AcGeVector2d along = apart / distance;
    // From a's centre to the common chord.
    const double foot = (distance + (a.radius - b.radius) * (a.radius + b.radius) / distance) / 2;
    const bool isTangent = distance >= a.radius + b.radius - kNodeTol ||
                           distance <= std::fabs(a.radius - b.radius) + kNodeTol;
    if (isTangent) {
        points.push_back(a.center + along * std::copysign(a.radius, foot));
        return;
    }
    const double square = (a.radius - foot) * (a.radius + foot);
    const AcGeVector2d half = Left(along) * std::sqrt((std::max)(square, 0.0));
    points.push_back(a.center + along * foot + half);
    points.push_back(a.center + along * foot - half);
}

}  // namespace

PlaneCurve PlaneCurve::Line(const AcGePoint2d& start, const AcGePoint2d& end) {
    PlaneCurve line;
    line.start = start;
    line.end = end;
    return line;
}

PlaneCurve PlaneCurve::Arc(const AcGePoint2d& center, double radius, double startAngle,
                           double sweep) {
    PlaneCurve arc;
    arc.isArc = true;
    arc.center = center;
    arc.radius = radius;
    arc.startAngle = startAngle;
    arc.sweep = sweep;
    arc.start = OnCircle(center, radius, startAngle);
    arc.end = OnCircle(center, radius, startAngle + sweep);
    return arc;
}

double PlaneCurve::ParamOf(const AcGePoint2d& p) const {
    if (!isArc) {
        const AcGeVector2d along = end - start;
        return Dot(p - start, along) / Dot(along, along);
    }
    const AcGeVector2d out = p - center;
    const double turn = (std::atan2(out.y, out.x) - startAngle) * (sweep < 0.0 ? -1.0 : 1.0);
    const double reach = std::fabs(sweep);
    double from = std::fmod(turn, kTwoPi);
    if (from < 0.0) from += kTwoPi;
    // Of the part that the arc leaves out, the second half comes before the start.
    if (from > (reach + kTwoPi) / 2) from -= kTwoPi;
    return from / reach;
}

AcGePoint2d PlaneCurve::PointAt(double param) const {
    if (param == 0.0) return start;
    if (param == 1.0) return end;
    return isArc ? OnCircle(center, radius, startAngle + sweep * param)
                 : start + (end - start) * param;
}

double PlaneCurve::DistanceTo(const AcGePoint2d& p) const {
    const double param = ParamOf(p);
    if (param <= 0.0) return (p - start).length();
    if (param >= 1.0) return (p - end).length();
    if (isArc) return std::fabs((p - center).length() - radius);
    const AcGeVector2d along = end - start;
    return std::fabs(Cross(along, p - start)) / along.length();
}

double PlaneCurve::Length() const {
    return isArc ? radius * std::fabs(sweep) : (end - start).length();
}

PlaneBox BoxOf(const PlaneCurve& curve) {
    PlaneBox box{curve.start, curve.start};
    const auto extend = [&box](const AcGePoint2d& p) {
        box.min.set((std::min)(box.min.x, p.x), (std::min)(box.min.y, p.y));
        box.max.set((std::max)(box.max.x, p.x), (std::max)(box.max.y, p.y));
    };
    extend(curve.end);
    if (!curve.isArc) return box;
    for (int quarter = 0; quarter < 4; ++quarter) {
        const AcGePoint2d p = OnCircle(curve.center, curve.radius, quarter * kTwoPi / 4);
        const double param = curve.ParamOf(p);
        if (param > 0.0 && param < 1.0) extend(p);
    }
    return box;
}

void AppendMeetings(const PlaneCurve& a, const PlaneCurve& b, std::vector<AcGePoint2d>& points) {
    std::vector<AcGePoint2d> candidates = {a.start, a.end, b.start, b.end};
    if (a.isArc && b.isArc) {
        MeetArcs(a, b, candidates);
    } else if (a.isArc) {
        MeetLineArc(b, a, candidates);
    } else if (b.isArc) {
        MeetLineArc(a, b, candidates);
    } else {
        MeetLines(a, b, candidates);
    }
    for (const AcGePoint2d& p : candidates)
        if (a.IsThrough(p) && b.IsThrough(p)) points.push_back(p);
}

}  // namespace host
