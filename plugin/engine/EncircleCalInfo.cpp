#include "StdAfx.h"

#include "EncircleCalInfo.h"

namespace {

AcGeTol MakeTolerance(double value) {
    AcGeTol tol;
    tol.setEqualPoint(value);
    tol.setEqualVector(value);
    return tol;
}

}  // namespace

CEncircleCalInfo::CEncircleCalInfo()
    : m_bExcludeDashed(true),
      m_bSideLinesVertical(false),
      m_tolPoint(MakeTolerance(0.0005)),
      m_tolLine(MakeTolerance(0.001)),
      m_tolHorVer(MakeTolerance(1e-6)),
      m_dArcPrecision(0.3),
      m_dSideLength(5.0),
      m_nHalfSide(0) {}

CEncircleCalInfo::CEncircleCalInfo(const CEncircleCalInfo& other) = default;
CEncircleCalInfo& CEncircleCalInfo::operator=(const CEncircleCalInfo& other) = default;
CEncircleCalInfo::~CEncircleCalInfo() = default;
