#include "StdAfx.h"
#include "EnvelopeMethod.h"

#include "EnvelopeCheck.h"
#include "ExactOfInfo.h"

namespace {

constexpr const ACHAR* kVariable = _T("QZEnvelopeMethod");

CString GetRefusalText(const SExactResult& exact) {
    CString strText;
    switch (exact.m_refusal) {
        case SExactResult::E_Refusal_NoAxis:
            return _T("轴线没有方向");
        case SExactResult::E_Refusal_BadLengths:
            return _T("长度参数无效");
        case SExactResult::E_Refusal_NotFinite:
            return _T("图元坐标无效");
        case SExactResult::E_Refusal_Empty:
            return _T("所选半边没有图元");
        case SExactResult::E_Refusal_OnlyUpright:
            return _T("所选半边只有垂直于轴线的线");
        case SExactResult::E_Refusal_TwoTools:
            strText.Format(_T("轮廓在 %.8g,%.8g 处回到轴线，请每次只选一把刀具"),
                           exact.m_place.m_dX, exact.m_place.m_dY);
            return strText;
        case SExactResult::E_Refusal_None:
            break;
    }
    return strText;
}

}  // namespace

const ACHAR* GetMethodName(E_EnvelopeMethod method) {
    return method == E_Method_Exact ? _T("Exact") : _T("Steps");
}

E_EnvelopeMethod GetEnvelopeMethod() {
    constexpr size_t kRoom = 64;
    ACHAR value[kRoom];
    value[0] = 0;
    const bool bKept = acedGetEnv(kVariable, value, kRoom) == RTNORM;
    return bKept && _tcsicmp(value, GetMethodName(E_Method_Exact)) == 0 ? E_Method_Exact
                                                                        : E_Method_Steps;
}

bool SetEnvelopeMethod(E_EnvelopeMethod method) {
    return acedSetEnv(kVariable, GetMethodName(method)) == RTNORM;
}

EnvelopePipeline GetPipeline(E_EnvelopeMethod method) {
    return method == E_Method_Exact ? &CEncircleLine::GetEncircleLineExact
                                    : &CEncircleLine::GetEncircleLine3;
}

void TellEnvelopeCheck(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                       const AcDbObjectId& envelopeId, const CString& strTool) {
    const SEnvelopeCheck check = CheckEnvelope(info, ids, envelopeId);
    const CString strFront = strTool.IsEmpty() ? CString() : strTool + _T("：");
    if (check.m_bCompared && check.m_exact.m_refusal != SExactResult::E_Refusal_None) {
        acutPrintf(_T("\n%s包络线无法校核：%s\n"), strFront.GetString(),
                   GetRefusalText(check.m_exact).GetString());
    } else if (check.m_bCompared && check.IsNotable()) {
        acutPrintf(_T("\n%s包络线与精确轮廓最多相差 %.4g，位于 %.8g,%.8g\n"), strFront.GetString(),
                   check.m_dApart, check.m_at.x, check.m_at.y);
    }
}

CString GetExactRefusal(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids) {
    SExactRequest request;
    return GetExactRequest(info, ids, request) ? GetRefusalText(CExactEnvelope(request).Find())
                                               : CString();
}
