#include "host/db/poly_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dbents.h"
#include "gelnsg3d.h"
#include "host/db/access.h"
#include "host/db/entity_tools.h"
#include "host/base/angles.h"

namespace host {

BulgeArc PolyPath::ArcOf(size_t index) const {
    // Half chord h, sagitta b h, radius h (1 + b^2) / (2 b); the centre lies left of the chord at
    // h (1 - b^2) / (2 b) from its middle.
    const PolySegment& s = m_segments[index];
    const AcGeVector3d chord = s.end - s.start;
    const AcGePoint3d middle = s.start + chord * 0.5;
    const AcGeVector3d left = m_normal.crossProduct(chord);
    const double b = s.bulge;
    return {middle + left * ((1.0 - b * b) / (4.0 * b)),
            chord.length() * (1.0 + b * b) / (4.0 * std::fabs(b)), 4.0 * std::atan(b)};
}

AcGePoint3d PolyPath::At(size_t index, double fraction) const {
    const PolySegment& s = m_segments[index];
    if (fraction <= 0.0) return s.start;
    if (fraction >= 1.0) return s.end;
    if (IsStraight(index)) return s.start + (s.end - s.start) * fraction;
    const BulgeArc arc = ArcOf(index);
    const AcGeVector3d from = s.start - arc.center;
    const double angle = arc.sweep * fraction;
    return arc.center + from * std::cos(angle) + m_normal.crossProduct(from) * std::sin(angle);
}

double PolyPath::Length(size_t index) const {
    const PolySegment& s = m_segments[index];
    if (IsStraight(index)) return s.start.distanceTo(s.end);
    const BulgeArc arc = ArcOf(index);
    return arc.radius * std::fabs(arc.sweep);
}

Acad::ErrorStatus PolyPath::Locate(double param, size_t& index, double& fraction) const {
    const double count = static_cast<double>(m_segments.size());
    if (!(param >= -kParamTol && param <= count + kParamTol)) return Acad::eInvalidInput;
    if (m_segments.empty()) return m_hasPoint ? Acad::eOk : Acad::eDegenerateGeometry;
    const double inside = (std::min)((std::max)(param, 0.0), count);
    index = (std::min)(static_cast<size_t>(inside), m_segments.size() - 1);
    fraction = inside - static_cast<double>(index);
    return Acad::eOk;
}

Acad::ErrorStatus PolyPath::PointAt(double param, AcGePoint3d& point) const {
    size_t index = 0;
    double fraction = 0.0;
    const Acad::ErrorStatus es = Locate(param, index, fraction);
    if (es == Acad::eOk) point = m_segments.empty() ? m_point : At(index, fraction);
    return es;
}

Acad::ErrorStatus PolyPath::DerivAt(double param, AcGeVector3d& derivative) const {
    size_t index = 0;
    double fraction = 0.0;
    const Acad::ErrorStatus es = Locate(param, index, fraction);
    if (es != Acad::eOk) return es;
    if (m_segments.empty()) return Acad::eDegenerateGeometry;
    if (IsStraight(index)) {
        derivative = m_segments[index].end - m_segments[index].start;
    } else {
        const BulgeArc arc = ArcOf(index);
        derivative = m_normal.crossProduct(At(index, fraction) - arc.center) * arc.sweep;
    }
    return Acad::eOk;
}

Acad::ErrorStatus PolyPath::DistAt(double param, double& dist) const {
    size_t index = 0;
    double fraction = 0.0;
    const Acad::ErrorStatus es = Locate(param, index, fraction);
    if (es != Acad::eOk) return es;
    dist = 0.0;
    if (m_segments.empty()) return Acad::eOk;
    for (size_t i = 0; i < index; ++i) dist += Length(i);
    dist += Length(index) * fraction;
    return Acad::eOk;
}

Acad::ErrorStatus PolyPath::ParamAtDist(double dist, double& param) const {
    if (!(dist >= -kParamTol)) return Acad::eInvalidInput;
    double rest = (std::max)(dist, 0.0);
    for (size_t i = 0; i < m_segments.size(); ++i) {
        const double length = Length(i);
        if (rest <= length && length > 0.0) {
            param = static_cast<double>(i) + rest / length;
            return Acad::eOk;
        }
        rest -= length;
    }
    if (rest > kParamTol) return Acad::eInvalidInput;
    param = static_cast<double>(m_segments.size());
    return Acad::eOk;
}

double PolyPath::Nearest(size_t index, const AcGePoint3d& point) const {
    const PolySegment& s = m_segments[index];
    const AcGeVector3d chord = s.end - s.start;
    if (IsStraight(index)) {
        const double lengthSqrd = chord.lengthSqrd();
        if (lengthSqrd == 0.0) return 0.0;
        return (std::min)((std::max)((point - s.start).dotProduct(chord) / lengthSqrd, 0.0), 1.0);
    }
    const BulgeArc arc = ArcOf(index);
    const AcGeVector3d from = s.start - arc.center;
    const AcGeVector3d to = point - arc.center;
    const AcGeVector3d side = m_normal.crossProduct(from);
    const double sign = arc.sweep < 0.0 ? -1.0 : 1.0;
    const double angle = FullAngle(sign * to.dotProduct(side), to.dotProduct(from));
    const double fraction = angle / std::fabs(arc.sweep);
    if (fraction <= 1.0) return fraction;
    return point.distanceTo(s.start) <= point.distanceTo(s.end) ? 0.0 : 1.0;
}

double PolyPath::NearestParam(const AcGePoint3d& point, double& distance) const {
    double best = 0.0;
    distance = m_segments.empty() && m_hasPoint ? point.distanceTo(m_point)
                                                : std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < m_segments.size(); ++i) {
        const double fraction = Nearest(i, point);
        const double d = point.distanceTo(At(i, fraction));
        if (d >= distance) continue;
        distance = d;
        best = static_cast<double>(i) + fraction;
    }
    return best;
}

Acad::ErrorStatus PolyPath::ParamAt(const AcGePoint3d& point, double& param) const {
    double distance = 0.0;
    const double nearest = NearestParam(point, distance);
    if (!(distance <= kOnCurveTol)) return Acad::eInvalidInput;
    param = nearest;
    return Acad::eOk;
}

Acad::ErrorStatus PolyPath::Closest(const AcGePoint3d& point, AcGePoint3d& onCurve) const {
    double distance = 0.0;
    return PointAt(NearestParam(point, distance), onCurve);
}

double PolyPath::Area() const {
    if (m_segments.empty()) return 0.0;
    const AcGePoint3d origin = m_segments.front().start;
    double twice = 0.0;
    for (size_t i = 0; i < m_segments.size(); ++i) {
        const PolySegment& s = m_segments[i];
        twice += (s.start - origin).crossProduct(s.end - origin).dotProduct(m_normal);
        if (IsStraight(i)) continue;
        const BulgeArc arc = ArcOf(i);  // the circular segment beyond the chord
        twice += arc.radius * arc.radius * (arc.sweep - std::sin(arc.sweep));
    }
    return std::fabs(twice) * 0.5;
}

AcGeCurve3d* PolyPath::GeCurve(size_t index) const {
    const PolySegment& s = m_segments[index];
    if (IsStraight(index)) return new AcGeLineSeg3d(s.start, s.end);
    const BulgeArc arc = ArcOf(index);
    return new AcGeCircArc3d(arc.center, arc.sweep < 0.0 ? -m_normal : m_normal,
                             s.start - arc.center, arc.radius, 0.0, std::fabs(arc.sweep));
}

Acad::ErrorStatus PolyPath::Extents(AcDbExtents& box) const {
    AcDbExtents found;
    if (m_hasPoint) found.addPoint(m_point);
    for (size_t i = 0; i < m_segments.size(); ++i) {
        const PolySegment& s = m_segments[i];
        found.addPoint(s.start);
        found.addPoint(s.end);
        const double half = (std::max)(s.startWidth, s.endWidth) * 0.5;
        if (IsStraight(i)) {
            const AcGeVector3d side = m_normal.crossProduct(s.end - s.start).normal();
            for (const double sign : {-0.5, 0.5}) {
                if (s.startWidth > 0.0) found.addPoint(s.start + side * (sign * s.startWidth));
                if (s.endWidth > 0.0) found.addPoint(s.end + side * (sign * s.endWidth));
            }
            continue;
        }
        // A tapered arc is taken at its greater width: its outline is no circle.
        const BulgeArc arc = ArcOf(i);
        const AcGeCircArc3d outline(arc.center, arc.sweep < 0.0 ? -m_normal : m_normal,
                                    s.start - arc.center, arc.radius + half, 0.0,
                                    std::fabs(arc.sweep));
        const AcGeBoundBlock3d block = outline.boundBlock();
        found.addPoint(block.minPoint());
        found.addPoint(block.maxPoint());
        if (half > 0.0)
            for (const AcGePoint3d& end : {s.start, s.end})
                found.addPoint(end - (end - arc.center).normal() * half);
    }
    return FinishExtents(found, box);
}

void PolyPath::Explode(const AcDbEntity& entity, double thickness, AcDbVoidPtrArray& pieces) const {
    const Plane plane = PlaneOf(m_normal);
    for (size_t i = 0; i < m_segments.size(); ++i) {
        const PolySegment& s = m_segments[i];
        AcDbEntity* piece = nullptr;
        if (IsStraight(i)) {
            AcDbLine* const line = new AcDbLine(s.start, s.end);
            Access::Normal(*line) = m_normal;
            Access::Thickness(*line) = thickness;
            piece = line;
        } else {
            const BulgeArc arc = ArcOf(i);
            const auto angle = [&](const AcGePoint3d& p) {
                const AcGeVector3d v = p - arc.center;
                return FullAngle(v.dotProduct(plane.y), v.dotProduct(plane.x));
            };
            // Arcs run counter-clockwise: a clockwise segment changes its ends.
            const bool forward = arc.sweep > 0.0;
            AcDbArc* const made =
                new AcDbArc(arc.center, m_normal, arc.radius, angle(forward ? s.start : s.end),
                            angle(forward ? s.end : s.start));
            Access::Thickness(*made) = thickness;
            piece = made;
        }
        CopyProperties(entity, *piece);
        pieces.append(piece);
    }
}

}  // namespace host
