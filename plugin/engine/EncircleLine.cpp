#include "StdAfx.h"

#include "EncircleLine.h"

namespace {

// Room for more curves is made in steps of this many.
constexpr int kGrowLength = 8;

}  // namespace

CEncircleLine::CEncircleLine(const CEncircleCalInfo& info)
    : m_extents(true), m_cloneIds(0, kGrowLength) {
    m_calInfo = info;
}

CEncircleLine::CEncircleLine(const CEncircleLine& other) = default;
CEncircleLine& CEncircleLine::operator=(const CEncircleLine& other) = default;
CEncircleLine::~CEncircleLine() = default;
