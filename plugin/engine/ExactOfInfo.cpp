#include "StdAfx.h"

#include "ExactOfInfo.h"

#include <cmath>

namespace {

// The directed axis, rightwards, or upwards when it is upright; false when there is no such line.
bool ReadAxis(const AcDbObjectId& id, SExactRequest& request) {
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForRead);
    if (line.openStatus() != Acad::eOk) {
        return false;
    }
    request.m_axisId = id;
    request.m_axisFrom = line->startPoint();
    request.m_axisTo = line->endPoint();
    const double dx = request.m_axisTo.x - request.m_axisFrom.x;
    const double dy = request.m_axisTo.y - request.m_axisFrom.y;
    const bool bUpright = std::fabs(dx) <= 1e-9 * std::fabs(dy);
    if (bUpright ? dy < 0.0 : dx < 0.0) {
        std::swap(request.m_axisFrom, request.m_axisTo);
    }
    return true;
}

// The value, or 0 for that of a new record: the default by the drawing's size.
double UnlessDefault(double value, double standard) { return value == standard ? 0.0 : value; }

}  // namespace

bool GetExactRequest(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                     SExactRequest& request) {
    if (!ReadAxis(info.m_midLineId, request)) {
        return false;
    }
    const CEncircleCalInfo standard;
    request.m_ids = ids;
    request.m_half =
        info.m_nHalfSide == 0 ? SExactRequest::E_Half_Upper : SExactRequest::E_Half_Lower;
    request.m_dPoint =
        UnlessDefault(info.m_tolPoint.equalPoint(), standard.m_tolPoint.equalPoint());
    request.m_dSide = UnlessDefault(info.m_dSideLength, standard.m_dSideLength);
    request.m_bIncludeDashed = !info.m_bExcludeDashed;
    request.m_bVerticalEnds = info.m_bSideLinesVertical;
    return true;
}
