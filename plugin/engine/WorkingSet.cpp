#include "StdAfx.h"

#include "WorkingSet.h"

#include <cmath>
#include <utility>

#include "EncircleTrace.h"
#include "EncircleWatch.h"
#include "EraseEntity.h"

namespace {

// Coordinates from here on stand for no place in a drawing, and no box holds them.
constexpr double kMaxCoordinate = 1e20;

bool IsPlace(const AcGePoint3d& pt) {
    return std::fabs(pt.x) < kMaxCoordinate && std::fabs(pt.y) < kMaxCoordinate;
}

}  // namespace

std::vector<CLineInfo> MakeWorkingSet(const AcDbObjectIdArray& lineIds) {
    std::vector<CLineInfo> lines;
    lines.reserve(static_cast<size_t>(lineIds.length()));
    for (int i = 0; i < lineIds.length(); ++i) {
        CEncircleWatch::Step("prepare", static_cast<size_t>(i),
                             static_cast<size_t>(lineIds.length()));
        CLineInfo line(lineIds[i]);
        if (line.m_id.isNull()) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Type, lineIds[i]);
            EraseById(lineIds[i]);
        } else if (!IsPlace(line.m_startPt) || !IsPlace(line.m_endPt)) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_NotFinite, lineIds[i]);
            EraseById(lineIds[i]);
        } else {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}
