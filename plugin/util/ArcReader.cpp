#include "StdAfx.h"

#include "ArcReader.h"

#include <algorithm>

#include "Tolerances.h"
#include "TolerantCompare.h"
#include "plane/point.h"

namespace {

constexpr double kFullTurn = 2 * plane::kHalfTurn;

// Into [0, 2 pi), with what is nearer than kFullTurnTol to a full turn as 0.
double FoldAngle(double angle) {
    double folded = angle;
    if (folded < 0.0 || folded >= kFullTurn) {
        folded = std::fmod(folded, kFullTurn);
        if (folded < 0.0) {
            folded += kFullTurn;
        }
    }
    return kFullTurn - folded < kFullTurnTol ? 0.0 : folded;
}

AcGeVector2d GetOffset(const SArc& arc, const AcGePoint3d& pt) {
    return AcGeVector2d(pt.x - arc.m_centre.x, pt.y - arc.m_centre.y);
}

double GetFlatDistance(const AcGePoint3d& p, const AcGePoint3d& q) {
    return AcGeVector2d(p.x - q.x, p.y - q.y).length();
}

}  // namespace

bool ReadArc(const AcDbObjectId& id, SArc& arc) {
    AcDbObjectPointer<AcDbArc> pArc(id, AcDb::kForRead);
    if (pArc.openStatus() != Acad::eOk) {
        return false;
    }
    SArc read;
    read.m_centre = pArc->center();
    read.m_dRadius = pArc->radius();
    read.m_dStartAngle = pArc->startAngle();
    read.m_dEndAngle = pArc->endAngle();
    if (pArc->getStartPoint(read.m_start) != Acad::eOk ||
        pArc->getEndPoint(read.m_end) != Acad::eOk) {
        return false;
    }
    if (pArc->normal().z < 0.0) {
        // The arc's own x axis is the world's turned round: an angle a there is pi - a here.
        std::swap(read.m_start, read.m_end);
        std::swap(read.m_dStartAngle, read.m_dEndAngle);
        read.m_dStartAngle = plane::kHalfTurn - read.m_dStartAngle;
        read.m_dEndAngle = plane::kHalfTurn - read.m_dEndAngle;
    }
    read.m_dStartAngle = FoldAngle(read.m_dStartAngle);
    read.m_dEndAngle = FoldAngle(read.m_dEndAngle);
    arc = read;
    return true;
}

int GetArcCentre(const AcDbObjectId& id, AcGePoint3d& centre) {
    SArc arc;
    if (!ReadArc(id, arc)) {
        return kNoArc;
    }
    centre = arc.m_centre;
    return 0;
}

int GetArcEndPoints(const AcDbObjectId& id, AcGePoint3d& start, AcGePoint3d& end) {
    SArc arc;
    if (!ReadArc(id, arc)) {
        return kNoArc;
    }
    start = arc.m_start;
    end = arc.m_end;
    return 0;
}

bool IsPointOnArc(const SArc& arc, const AcGePoint3d& pt, double tol) {
    const AcGeVector2d offset = GetOffset(arc, pt);
    if (!(std::fabs(offset.length() - arc.m_dRadius) <= tol)) {
        return false;
    }
    const double angle = FoldAngle(offset.angle());
    const double start = arc.m_dStartAngle;
    const double end = arc.m_dEndAngle;
    const bool bAtStart = IsEqualValue(angle, start, tol);
    const bool bAtEnd = IsEqualValue(angle, end, tol);
    if (start > end) {
        return bAtStart || bAtEnd || !(end < angle && angle < start);
    }
    return (angle < end && (angle > start || bAtStart)) || bAtEnd;
}

bool IsPointOnArc(const AcDbObjectId& id, const AcGePoint3d& pt, double tol) {
    SArc arc;
    return ReadArc(id, arc) && IsPointOnArc(arc, pt, tol);
}

double GetSweep(const SArc& arc) {
    const double sweep = arc.m_dEndAngle - arc.m_dStartAngle;
    return sweep > 0.0 ? sweep : sweep + kFullTurn;
}

double GetDistanceToArc(const SArc& arc, const AcGePoint3d& pt) {
    const AcGeVector2d offset = GetOffset(arc, pt);
    const double turned = FoldAngle(offset.angle()) - arc.m_dStartAngle;
    if ((turned < 0.0 ? turned + kFullTurn : turned) <= GetSweep(arc)) {
        return std::fabs(offset.length() - arc.m_dRadius);
    }
    return (std::min)(GetFlatDistance(pt, arc.m_start), GetFlatDistance(pt, arc.m_end));
}
