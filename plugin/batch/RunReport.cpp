#include "StdAfx.h"
#include "RunReport.h"

#include "LayerTools.h"

namespace {

// A message box shows no more than this well; the command line has them all.
constexpr size_t kMostLines = 20;

}  // namespace

void SRunReport::AddFailure(const CString& strTool, const CString& strReason) {
    ++m_nFailed;
    const CString strLine = strTool + _T("：") + strReason;
    m_failures.push_back(strLine);
    acutPrintf(_T("\n%s\n"), strLine.GetString());
}

void SRunReport::Add(const SRunReport& other) {
    m_nDone += other.m_nDone;
    m_nFailed += other.m_nFailed;
    m_nNotRun += other.m_nNotRun;
    m_failures.insert(m_failures.end(), other.m_failures.begin(), other.m_failures.end());
}

CString SRunReport::GetCounts() const {
    CString strText;
    strText.Format(_T("完成：%d个 失败：%d个 未执行：%d个"), m_nDone, m_nFailed, m_nNotRun);
    return strText;
}

CString SRunReport::GetMessage(const ACHAR* pText) const {
    CString strText(pText);
    if (IsClean()) {
        return strText;
    }
    strText += _T("\n") + GetCounts();
    for (size_t i = 0; i < m_failures.size(); ++i) {
        if (i == kMostLines) {
            return strText + _T("\n……");
        }
        strText += _T("\n") + m_failures[i];
    }
    return strText;
}

CString GetNoEnvelopeReason(const AcDbObjectIdArray& sourceIds, bool bAxis) {
    int nThere = 0;
    int nLocked = 0;
    for (int i = 0; i < sourceIds.length(); ++i) {
        const AcDbObjectPointer<AcDbEntity> pEntity(sourceIds[i], AcDb::kForRead);
        if (pEntity.openStatus() == Acad::eOk) {
            ++nThere;
            nLocked += IsLayerLocked(pEntity->layerId()) ? 1 : 0;
        }
    }
    if (nThere == 0) {
        return _T("没有图元（已删除）");
    }
    if (nLocked == nThere) {
        return _T("图元全部在锁定的图层上");
    }
    if (!bAxis) {
        return _T("图元没有范围，无法确定轴线");
    }
    return nLocked > 0 ? _T("所选半边没有找到轮廓（部分图元在锁定的图层上）")
                       : _T("所选半边没有找到轮廓");
}
