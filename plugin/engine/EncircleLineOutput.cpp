// The axis, the lines' layer, and the outline as a polyline.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <cmath>
#include <memory>
#include <utility>

#include "ArcIndex.h"
#include "ArcReader.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "EncircleTrace.h"
#include "EncircleWatch.h"
#include "EnvelopePolyline.h"
#include "LayerTools.h"
#include "LinetypeResolver.h"
#include "ThinPoints.h"

namespace {

// Steps whose directions differ by less go straight on.
constexpr double kStraightOnDeg = 1.0;

double GetFlatDistance(const AcGePoint3d& p, const AcGePoint3d& q) {
    return AcGeVector2d(p.x - q.x, p.y - q.y).length();
}

// Directions from a centre are the same when their cross product is no more than this of the
// product of their lengths: the rounding of the products alone.
constexpr double kSameDirection = 1e-15;

// tan(t / 4) for the turn t in [0, 2 pi) from one direction counter-clockwise on to another.
//
// By half angles: sin(t/2) and cos(t/2) from the cross and dot product, each in the form in which
// nothing cancels. Only operations that round alike on every machine, which sines and tangents of
// the C libraries do not: an envelope is the same to the last bit wherever it is computed.
double GetTurnBulge(const AcGeVector2d& from, const AcGeVector2d& to) {
    const double dot = from.x * to.x + from.y * to.y;
    const double cross = from.x * to.y - from.y * to.x;
    const double size = std::sqrt(dot * dot + cross * cross);
    if (dot >= 0.0 && std::fabs(cross) <= kSameDirection * size) {
        return 0.0;
    }
    const double wide = std::sqrt((size + std::fabs(dot)) / (2 * size));
    const double narrow = std::fabs(cross) / (2 * size * wide);
    const double sine = dot >= 0.0 ? narrow : wide;
    const double cosine = (cross < 0.0 ? -1.0 : 1.0) * (dot >= 0.0 ? wide : narrow);
    return cosine < 0.0 ? (1.0 - cosine) / sine : sine / (1.0 + cosine);
}

// bulge = tan(sweep / 4), counter-clockwise positive (DXF reference, LWPOLYLINE). A stretch that
// ends nearer to the arc's start than it began runs clockwise.
double GetBulge(const SArc& arc, const AcGePoint3d& first, const AcGePoint3d& last) {
    const AcGeVector2d toFirst(first.x - arc.m_centre.x, first.y - arc.m_centre.y);
    const AcGeVector2d toLast(last.x - arc.m_centre.x, last.y - arc.m_centre.y);
    if (GetFlatDistance(last, arc.m_start) <= GetFlatDistance(first, arc.m_start)) {
        return -GetTurnBulge(toLast, toFirst);
    }
    return GetTurnBulge(toFirst, toLast);
}

}  // namespace

bool CEncircleLine::GetMidLineAxisValue(double& dAxis) {
    AcDbObjectPointer<AcDbLine> line(m_calInfo.m_midLineId, AcDb::kForRead);
    if (line.openStatus() != Acad::eOk) {
        return false;
    }
    const AcGePoint3d start = line->startPoint();
    const AcGePoint3d end = line->endPoint();
    // Not strict, unlike the other comparisons.
    if (m_calInfo.m_tolLine.equalPoint() >= std::fabs(start.y - end.y)) {
        dAxis = start.y;
        return true;
    }
    if (m_calInfo.m_tolLine.equalPoint() >= std::fabs(start.x - end.x)) {
        dAxis = start.x;
        return true;
    }
    return false;
}

void CEncircleLine::SetLineLayerAndType(AcDbObjectIdArray ids, CString strLayerName) {
    const CLinetypeResolver resolver(m_calInfo.m_bExcludeDashed);
    const AcDbObjectId layerId = FindLayer(strLayerName);
    for (int i = 0; i < ids.length(); ++i) {
        CEncircleWatch::Step("prepare", static_cast<size_t>(i), static_cast<size_t>(ids.length()));
        AcDbObjectPointer<AcDbLine> line(ids[i], AcDb::kForWrite);
        // A line that keeps its layer keeps its dashes too: only one that could be given its line
        // type moves.
        if (line.openStatus() == Acad::eOk && resolver.Resolve(line.object())) {
            static_cast<void>(line->setLayer(layerId, true, false));
        }
    }
}

void CEncircleLine::DrawPolyLine(AcDbObjectIdArray, AcGePoint3dArray pts, double dAxis,
                                 AcDbObjectId& polylineId) {
    const CCurrentLayerGuard layer(kEnvelopeLayer);
    ThinPoints(pts, kStraightOnDeg);
    CEncircleTrace::Count("points_thinned", static_cast<size_t>(pts.length()));
    if (pts.length() < 2 || layer.GetLayerId().isNull()) {
        return;
    }
    if (!std::isnan(dAxis)) {
        pts.first().y = dAxis;
        pts.last().y = dAxis;
    }
    std::unique_ptr<AcDbPolyline> polyline = MakePolyline(layer.GetLayerId());
    if (polyline == nullptr) {
        return;
    }
    AddOutline(polyline.get(), pts);
    AddEnvelope(std::move(polyline), polylineId);
}

void CEncircleLine::AddOutline(AcDbPolyline* pPolyline, const AcGePoint3dArray& pts) {
    const CArcIndex arcs(GetAllArc(m_cloneIds));
    AcGePoint3dArray arcPts;
    bool bPending = false;  // the last point of the stretch before is still to be added
    int nVertex = 0;
    for (int i = 0; i < pts.length();) {
        std::vector<size_t> through = arcs.FindThrough(pts[i]);
        const bool bLeaves = bPending && arcs.KeepAlong(through, pts[i - 1]).empty();
        if (bLeaves) {
            AddVertex(pPolyline, pts[i - 1], 0.0, nVertex);
        } else if (bPending) {
            arcPts.append(pts[i - 1]);
        }
        bPending = through.size() > 1;
        arcPts.append(pts[i]);

        // Follow the arcs; the last of those that hold out longest is the one the outline runs on.
        size_t last = 0;
        int j = i;
        for (; j < pts.length(); ++j) {
            std::vector<size_t> along = arcs.KeepAlong(through, pts[j]);
            if (along.empty()) {
                break;
            }
            through.swap(along);
            last = through.back();
            arcPts.append(pts[j]);
        }
        const bool bOnArc = j > i;
        const bool bAtEnd = j == pts.length();
        if (!bOnArc) {
            bPending = false;
        }
        AddPolyLinePt(pPolyline, bOnArc ? arcs.GetId(last) : AcDbObjectId::kNull, arcPts,
                      bPending && !bAtEnd, nVertex);
        arcPts.removeAll();
        // A point that lies on an arc only loosely past its end is a corner; the walk must go on.
        i = bOnArc ? j : i + 1;
    }
}

void CEncircleLine::AddPolyLinePt(AcDbPolyline* pPolyline, AcDbObjectId arcId,
                                  AcGePoint3dArray arcPts, bool bSkipLast, int& nVertexIndex) {
    SArc arc;
    if (arcPts.length() < 2 || !ReadArc(arcId, arc)) {
        for (int i = 0; i < arcPts.length(); ++i) {
            AddVertex(pPolyline, arcPts[i], 0.0, nVertexIndex);
        }
        return;
    }
    AddVertex(pPolyline, arcPts.first(), GetBulge(arc, arcPts.first(), arcPts.last()),
              nVertexIndex);
    if (!bSkipLast) {
        AddVertex(pPolyline, arcPts.last(), 0.0, nVertexIndex);
    }
}
