#include "StdAfx.h"
#include "EncircleValues.h"

namespace {

void SetBoth(AcGeTol& tol, double dValue) {
    tol.setEqualPoint(dValue);
    tol.setEqualVector(dValue);
}

}  // namespace

void SEncircleValues::WriteTo(CEncircleCalInfo& info) const {
    info.m_bExcludeDashed = m_nExcludeDashed == 1;
    info.m_bSideLinesVertical = m_nSidesVertical == 1;
    SetBoth(info.m_tolPoint, m_dPointTol);
    SetBoth(info.m_tolLine, m_dLineTol);
    SetBoth(info.m_tolHorVer, m_dHorVerTol);
    info.m_dArcPrecision = m_dArcPrecision;
    info.m_dSideLength = m_dSideLength;
    info.m_nHalfSide = m_nHalf != 0 ? 1 : 0;
}

void SEncircleValues::ReadFrom(const CEncircleCalInfo& info) {
    m_nExcludeDashed = info.m_bExcludeDashed ? 1 : 0;
    m_nSidesVertical = info.m_bSideLinesVertical ? 1 : 0;
    m_dArcPrecision = info.m_dArcPrecision;
    m_dSideLength = info.m_dSideLength;
    m_nHalf = info.m_nHalfSide != 0 ? 1 : 0;
    m_dLineTol = info.m_tolLine.equalPoint();
    m_dPointTol = info.m_tolPoint.equalPoint();
    m_dHorVerTol = info.m_tolHorVer.equalPoint();
}
