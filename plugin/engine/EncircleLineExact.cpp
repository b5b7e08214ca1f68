#include "StdAfx.h"

#include "EncircleLine.h"

#include <cmath>

#include "EncircleTrace.h"
#include "ExactEnvelope.h"

namespace {

// The directed axis, rightwards, or upwards when it is upright; false when there is no such line.
bool ReadAxis(const AcDbObjectId& id, SExactRequest& request) {
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForRead);
    if (line.openStatus() != Acad::eOk) {
        return false;
    }
    request.m_axisId = id;
    request.m_axisFrom = line->startPoint();
    request.m_axisTo = line->endPoint();
    const double dx = request.m_axisTo.x - request.m_axisFrom.x;
    const double dy = request.m_axisTo.y - request.m_axisFrom.y;
    const bool bUpright = std::fabs(dx) <= 1e-9 * std::fabs(dy);
    if (bUpright ? dy < 0.0 : dx < 0.0) {
        std::swap(request.m_axisFrom, request.m_axisTo);
    }
    return true;
}

// The value, or 0 for that of a new record: the default by the drawing's size.
double UnlessDefault(double value, double standard) { return value == standard ? 0.0 : value; }

CEncircleTrace::E_LeftOut ReasonOf(SExactResult::E_LeftOut reason) {
    switch (reason) {
        case SExactResult::E_LeftOut_Unopenable:
            return CEncircleTrace::E_LeftOut_Unopenable;
        case SExactResult::E_LeftOut_Layer:
        case SExactResult::E_LeftOut_Dimension:
            return CEncircleTrace::E_LeftOut_Layer;
        case SExactResult::E_LeftOut_Locked:
            return CEncircleTrace::E_LeftOut_Locked;
        case SExactResult::E_LeftOut_Linetype:
            return CEncircleTrace::E_LeftOut_Linetype;
        case SExactResult::E_LeftOut_Block:
            return CEncircleTrace::E_LeftOut_Explode;
        default:
            return CEncircleTrace::E_LeftOut_Type;
    }
}

void Record(const SExactResult& result, bool bUpper) {
    for (const SExactResult::SLeftOut& left : result.m_leftOut) {
        if (left.m_strWhat.IsEmpty()) {
            CEncircleTrace::LeftOut(ReasonOf(left.m_reason), left.m_id);
        } else {
            CEncircleTrace::LeftOut(ReasonOf(left.m_reason), left.m_strWhat, left.m_id);
        }
    }
    for (const auto* pList : {&result.m_bridges, &result.m_gaps}) {
        for (const SExactResult::SBridge& b : *pList) {
            CEncircleTrace::Gap(bUpper ? E_Dir_Top : E_Dir_Bottom,
                                AcGePoint3d(b.m_from.m_dX, b.m_from.m_dY, 0.0),
                                AcGePoint3d(b.m_to.m_dX, b.m_to.m_dY, 0.0));
        }
    }
}

}  // namespace

void CEncircleLine::GetEncircleLineExact(const AcDbObjectIdArray& ids, AcDbObjectId& outId) {
    SExactRequest request;
    if (!ReadAxis(m_calInfo.m_midLineId, request)) {
        return;
    }
    const CEncircleCalInfo standard;
    const bool bUpper = m_calInfo.m_nHalfSide == 0;
    request.m_ids = ids;
    request.m_half = bUpper ? SExactRequest::E_Half_Upper : SExactRequest::E_Half_Lower;
    request.m_dPoint =
        UnlessDefault(m_calInfo.m_tolPoint.equalPoint(), standard.m_tolPoint.equalPoint());
    request.m_dSide = UnlessDefault(m_calInfo.m_dSideLength, standard.m_dSideLength);
    request.m_bIncludeDashed = !m_calInfo.m_bExcludeDashed;
    request.m_bVerticalEnds = m_calInfo.m_bSideLinesVertical;
    const SExactResult result = CExactEnvelope(request).Find();
    Record(result, bUpper);
    if (result.m_refusal != SExactResult::E_Refusal_None) {
        CEncircleTrace::Note(CExactEnvelope::Explain(result), AcDbObjectId());
        return;
    }
    const AcDbObjectId id = CExactEnvelope::Draw(result);
    if (!id.isNull()) {
        outId = id;
    }
}
