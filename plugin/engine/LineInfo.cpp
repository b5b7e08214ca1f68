#include "StdAfx.h"

#include "LineInfo.h"
#include "PointOnSegment.h"

#include <algorithm>
#include <utility>

namespace {

AcGePoint3d Flatten(const AcGePoint3d& pt) { return AcGePoint3d(pt.x, pt.y, 0.0); }

}  // namespace

CLineInfo::CLineInfo() : m_bValid(true) {}

CLineInfo::CLineInfo(const AcDbLine* pLine)
    : m_id(pLine->objectId()),
      m_startPt(Flatten(pLine->startPoint())),
      m_endPt(Flatten(pLine->endPoint())),
      m_bValid(true) {}

CLineInfo::CLineInfo(const AcDbObjectId& id) : m_bValid(true) {
    AcDbObjectPointer<AcDbLine> pLine(id, AcDb::kForRead);
    if (pLine.openStatus() == Acad::eOk) {
        m_id = id;
        m_startPt = Flatten(pLine->startPoint());
        m_endPt = Flatten(pLine->endPoint());
    }
}

CLineInfo::CLineInfo(const CLineInfo& other) = default;
CLineInfo::CLineInfo(CLineInfo&& other) noexcept = default;
CLineInfo& CLineInfo::operator=(const CLineInfo& other) = default;
CLineInfo& CLineInfo::operator=(CLineInfo&& other) noexcept = default;
CLineInfo::~CLineInfo() = default;

void CLineInfo::Sort() {
    // An exchange sort of neighbours is stable, so a stable sort by the same distances leaves the
    // same order; long lines have thousands of break points.
    std::vector<std::pair<double, AcGePoint3d>> keyed;
    keyed.reserve(m_breakPts.size());
    for (const AcGePoint3d& pt : m_breakPts) {
        keyed.emplace_back((pt - m_startPt).length(), pt);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (size_t i = 0; i < keyed.size(); ++i) {
        m_breakPts[i] = keyed[i].second;
    }
}

void CLineInfo::AddBreakPoint(const AcGePoint3d& pt, const AcGeTol& tol) {
    if (!IsOnBoundedSegment(AcGeLineSeg3d(m_startPt, m_endPt), pt, tol)) {
        return;
    }
    const auto isSame = [&](const AcGePoint3d& other) { return other.isEqualTo(pt, tol); };
    if (std::none_of(m_breakPts.begin(), m_breakPts.end(), isSame)) {
        m_breakPts.push_back(pt);
    }
}

void CLineInfo::AddBreakPoints(const std::vector<AcGePoint3d>& pts, const AcGeTol& tol) {
    for (const AcGePoint3d& pt : pts) {
        AddBreakPoint(pt, tol);
    }
}

bool CLineInfo::IsEqual(const CLineInfo& other, const AcGeTol& tol) const {
    return IsSameSegment(m_startPt, m_endPt, other.m_startPt, other.m_endPt, tol);
}
