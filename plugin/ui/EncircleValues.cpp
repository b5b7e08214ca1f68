#include "StdAfx.h"
#include "EncircleValues.h"

#include "res/resource.h"

namespace {

void SetBoth(AcGeTol& tol, double dValue) {
    tol.setEqualPoint(dValue);
    tol.setEqualVector(dValue);
}

// In the order of the controls.
const std::vector<SValueField> kFields = {
    {_T("点公差"), &SEncircleValues::m_dPointTol, IDC_PARAMS_POINT_TOL, true, false},
    {_T("线公差"), &SEncircleValues::m_dLineTol, IDC_PARAMS_LINE_TOL, true, false},
    {_T("水平竖直线判断公差"), &SEncircleValues::m_dHorVerTol, IDC_PARAMS_HORVER_TOL, true, false},
    {_T("圆弧离散精度"), &SEncircleValues::m_dArcPrecision, IDC_PARAMS_ARC_PRECISION, false, false},
    {_T("左右识别长度"), &SEncircleValues::m_dSideLength, IDC_PARAMS_SIDE_LENGTH, false, true},
};

// No drawing has numbers from here on; infinity is among them.
constexpr double kLargest = 1e20;

}  // namespace

const std::vector<SValueField>& GetValueFields() { return kFields; }

SEncircleValues::SEncircleValues() { ReadFrom(CEncircleCalInfo()); }

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

const SValueField* SEncircleValues::FindFault(double dDrawingSize) const {
    for (const SValueField& field : kFields) {
        const double dValue = this->*field.m_pValue;
        const double dLimit = field.m_bTolerance && dDrawingSize > 0.0 ? dDrawingSize : kLargest;
        // Written so that what is no number at all is a fault.
        const bool bSound =
            (dValue > 0.0 || (field.m_bMayBeZero && dValue == 0.0)) && dValue < dLimit;
        // Shorter chords than the points of a curve may lie apart would take the curve away.
        const bool bLost =
            field.m_pValue == &SEncircleValues::m_dArcPrecision && dValue <= m_dPointTol;
        if (!bSound || bLost) {
            return &field;
        }
    }
    return nullptr;
}
