#include "StdAfx.h"
#include "RunLine.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

struct SReasonText {
    CEncircleTrace::E_LeftOut m_reason;
    const ACHAR* m_pText;
};
const SReasonText kReasons[] = {
    {CEncircleTrace::E_LeftOut_Unopenable, _T("无法打开")},
    {CEncircleTrace::E_LeftOut_Layer, _T("尺寸线图层")},
    {CEncircleTrace::E_LeftOut_Locked, _T("锁定图层")},
    {CEncircleTrace::E_LeftOut_Type, _T("非轮廓类型")},
    {CEncircleTrace::E_LeftOut_Linetype, _T("线型")},
    {CEncircleTrace::E_LeftOut_Duplicate, _T("重复")},
    {CEncircleTrace::E_LeftOut_Explode, _T("图块无法分解")},
    {CEncircleTrace::E_LeftOut_NotFinite, _T("坐标无效")},
};

// The box of the envelope as it lies when the axis is turned level, and the axis' height then.
Acad::ErrorStatus GetExtentsAlong(const AcDbPolyline& envelope, const AcDbObjectId& axisId,
                                  AcDbExtents& box, double& dAxis) {
    const AcDbObjectPointer<AcDbLine> pAxis(axisId, AcDb::kForRead);
    if (pAxis.openStatus() != Acad::eOk) {
        return envelope.getGeomExtents(box);
    }
    const AcGePoint3d start = pAxis->startPoint();
    const AcGeVector3d along = pAxis->endPoint() - start;
    dAxis = start.y;
    if (along.y == 0.0) {
        return envelope.getGeomExtents(box);
    }
    AcDbEntity* pMade = nullptr;
    const Acad::ErrorStatus status = envelope.getTransformedCopy(
        AcGeMatrix3d::rotation(-std::atan2(along.y, along.x), AcGeVector3d::kZAxis, start), pMade);
    const std::unique_ptr<AcDbEntity> pLevel(pMade);
    return status == Acad::eOk ? pLevel->getGeomExtents(box) : status;
}

bool IsPositive(double dValue) { return dValue > 0.0 && std::isfinite(dValue); }

}  // namespace

CString GetLeftOutText(const CEncircleTrace& trace) {
    CString strText;
    for (const CEncircleTrace::SLeftOut& left : trace.m_leftOut) {
        const ACHAR* pReason = _T("");
        for (const SReasonText& row : kReasons) {
            if (row.m_reason == left.m_reason) {
                pReason = row.m_pText;
            }
        }
        CString strWhat = left.m_strWhat;
        strWhat.Replace(_T("AcDb"), _T(""));
        strText.AppendFormat(_T("%s%s %s %d个"), strText.IsEmpty() ? _T("未参与：") : _T("，"),
                             pReason, strWhat.GetString(), left.m_nCount);
    }
    return strText;
}

CString GetEnvelopeLine(const AcDbObjectId& envelopeId, double dAxis, const AcDbObjectId& axisId,
                        const CEncircleTrace& trace) {
    CString strText;
    const AcDbObjectPointer<AcDbPolyline> pEnvelope(envelopeId, AcDb::kForRead);
    if (pEnvelope.openStatus() != Acad::eOk) {
        return strText;
    }
    const unsigned int nVertices = pEnvelope->numVerts();
    AcDbExtents box;
    if (GetExtentsAlong(*pEnvelope, axisId, box, dAxis) != Acad::eOk) {
        return strText;
    }
    const double dAbove = std::abs(box.maxPoint().y - dAxis);
    const double dBelow = std::abs(box.minPoint().y - dAxis);
    strText.Format(_T("包络线：长 %.10g，直径 %.10g，顶点 %u个"),
                   box.maxPoint().x - box.minPoint().x, 2.0 * (std::max)(dAbove, dBelow),
                   nVertices);
    const CString strLeftOut = GetLeftOutText(trace);
    return strLeftOut.IsEmpty() ? strText : strText + _T("；") + strLeftOut;
}

CString GetParameterFault(const CEncircleCalInfo& info, bool bExact) {
    CString strText;
    const double dPoint = info.m_tolPoint.equalPoint();
    if (!IsPositive(dPoint) || (!bExact && (!IsPositive(info.m_tolLine.equalPoint()) ||
                                            !IsPositive(info.m_tolHorVer.equalPoint())))) {
        strText = _T("公差必须大于0");
    } else if (bExact) {
        return strText;
    } else if (!IsPositive(info.m_dArcPrecision)) {
        strText = _T("圆弧离散精度必须大于0");
    } else if (info.m_dArcPrecision <= dPoint) {
        strText.Format(_T("圆弧离散精度 %.10g 必须大于点公差 %.10g，否则圆弧会丢失"),
                       info.m_dArcPrecision, dPoint);
    }
    return strText;
}
