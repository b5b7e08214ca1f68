#include <algorithm>
#include <limits>

#include "dbmain.h"

namespace {
constexpr double kFar = std::numeric_limits<double>::max();
}

AcDbExtents::AcDbExtents() : m_min(kFar, kFar, kFar), m_max(-kFar, -kFar, -kFar) {}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
    if (!(min.x <= max.x && min.y <= max.y && min.z <= max.z)) return Acad::eInvalidInput;
    m_min = min;
    m_max = max;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& point) {
    m_min.set((std::min)(m_min.x, point.x), (std::min)(m_min.y, point.y),
              (std::min)(m_min.z, point.z));
    m_max.set((std::max)(m_max.x, point.x), (std::max)(m_max.y, point.y),
              (std::max)(m_max.z, point.z));
}

void AcDbExtents::addExt(const AcDbExtents& box) {
    if (!(box.m_min.x <= box.m_max.x)) return;
    addPoint(box.m_min);
    addPoint(box.m_max);
}

void AcDbExtents::expandBy(const AcGeVector3d& vec) {
    if (!(m_min.x <= m_max.x)) return;
    const AcGePoint3d low = m_min + vec;
    const AcGePoint3d high = m_max + vec;
    addPoint(low);
    addPoint(high);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
    if (!(m_min.x <= m_max.x)) return;
    AcDbExtents moved;
    for (int corner = 0; corner < 8; ++corner)
        moved.addPoint(matrix * AcGePoint3d((corner & 1) != 0 ? m_max.x : m_min.x,
                                            (corner & 2) != 0 ? m_max.y : m_min.y,
                                            (corner & 4) != 0 ? m_max.z : m_min.z));
    *this = moved;
}
