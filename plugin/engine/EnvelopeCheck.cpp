#include "StdAfx.h"

#include "EnvelopeCheck.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "ExactOfInfo.h"
#include "plane/apart.h"
#include "plane/ring.h"

namespace {

constexpr double kNotable = 0.01;        // drawing units
constexpr double kDiameterShare = 1e-3;  // or of the diameter, whichever is less
constexpr double kChordShare = 1e-6;     // of the size: what chords leave arcs by

// A closed ring as chords that leave its arcs by no more than the tolerance.
std::vector<plane::Point> ChordsOf(const std::vector<plane::Corner>& corners, double tolerance) {
    std::vector<plane::Point> chords;
    for (const plane::Curve& curve : plane::CurvesOf(corners)) {
        chords.push_back(curve.from);
        if (!curve.IsArc()) {
            continue;
        }
        // A chord over the angle a leaves its arc by r (1 - cos(a / 2)), about r a^2 / 8.
        const double step = std::sqrt(8.0 * tolerance / (std::max)(curve.radius, tolerance));
        const int count = static_cast<int>((std::min)(std::fabs(curve.Sweep()) / step, 1000.0)) + 1;
        for (int i = 1; i < count; ++i) {
            chords.push_back(plane::PointAt(curve, static_cast<double>(i) / count));
        }
    }
    if (!chords.empty()) {
        const plane::Point first = chords.front();
        chords.push_back(first);
    }
    return chords;
}

bool ReadCorners(const AcDbObjectId& id, std::vector<plane::Corner>& corners) {
    const AcDbObjectPointer<AcDbPolyline> pPolyline(id, AcDb::kForRead);
    if (pPolyline.openStatus() != Acad::eOk) {
        return false;
    }
    for (unsigned int i = 0; i < pPolyline->numVerts(); ++i) {
        AcGePoint3d pt;
        plane::Corner corner;
        if (pPolyline->getPointAt(i, pt) != Acad::eOk ||
            pPolyline->getBulgeAt(i, corner.bulge) != Acad::eOk) {
            return false;
        }
        corner.point = {pt.x, pt.y};
        corners.push_back(corner);
    }
    return corners.size() > 1;
}

// Twice the farthest that a corner or an arc lies from the axis.
double DiameterOf(const std::vector<plane::Point>& chords, const SExactRequest& request) {
    const plane::Point from{request.m_axisFrom.x, request.m_axisFrom.y};
    const plane::Vector along =
        plane::Unit(plane::Vector{request.m_axisTo.x - from.x, request.m_axisTo.y - from.y});
    double farthest = 0.0;
    for (const plane::Point& p : chords) {
        farthest = (std::max)(farthest, std::fabs(plane::Cross(along, p - from)));
    }
    return 2.0 * farthest;
}

}  // namespace

bool SEnvelopeCheck::IsNotable() const {
    return m_dApart > (std::min)(kNotable, kDiameterShare * m_dDiameter);
}

SEnvelopeCheck CheckEnvelope(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                             const AcDbObjectId& envelopeId) {
    SEnvelopeCheck check;
    SExactRequest request;
    std::vector<plane::Corner> corners;
    if (!GetExactRequest(info, ids, request) || !ReadCorners(envelopeId, corners)) {
        return check;
    }
    check.m_bCompared = true;
    check.m_exact = CExactEnvelope(request).Find();
    if (check.m_exact.m_refusal != SExactResult::E_Refusal_None) {
        return check;
    }
    std::vector<plane::Corner> exact;
    for (const SExactResult::SVertex& v : check.m_exact.m_vertices) {
        exact.push_back({{v.m_dX, v.m_dY}, v.m_dBulge});
    }
    const double tolerance = (std::max)(kChordShare * check.m_exact.m_dSize, 1e-12);
    const std::vector<plane::Point> chords = ChordsOf(exact, tolerance);
    const plane::Apart apart = plane::FarthestApart(ChordsOf(corners, tolerance), chords);
    check.m_dApart = apart.distance;
    check.m_at.set(apart.at.x, apart.at.y, 0.0);
    check.m_dDiameter = DiameterOf(chords, request);
    return check;
}
