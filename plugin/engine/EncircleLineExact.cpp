#include "StdAfx.h"

#include "EncircleLine.h"

#include "EncircleTrace.h"
#include "ExactOfInfo.h"

namespace {

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
        case SExactResult::E_LeftOut_Unsound:
            return CEncircleTrace::E_LeftOut_NotFinite;
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
    if (!GetExactRequest(m_calInfo, ids, request)) {
        return;
    }
    const bool bUpper = request.m_half == SExactRequest::E_Half_Upper;
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
