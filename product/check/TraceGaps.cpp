#include "product/check/TraceGaps.h"

#include <cmath>

namespace product {

const char* SideName(E_RemoveLine_Dir side) {
    static const char* const kNames[] = {"bottom", "top", "right", "left", "none"};
    return kNames[side];
}

const char* MeetingName(Meeting kind) {
    static const char* const kNames[] = {"touch", "crossing", "overlap"};
    return kNames[static_cast<int>(kind)];
}

bool Crosses(const std::optional<SelfMeeting>& meeting) {
    return meeting && meeting->kind != Meeting::Touch;
}

std::vector<CEncircleTrace::SGap> WideGaps(const CEncircleTrace& trace, double pointTolerance) {
    std::vector<CEncircleTrace::SGap> gaps;
    for (const CEncircleTrace::SGap& gap : trace.m_gaps)
        if (gap.m_dLength > pointTolerance) gaps.push_back(gap);
    return gaps;
}

bool IsStep(const CEncircleTrace::SGap& gap, double pointTolerance) {
    const bool vertical = gap.m_side == E_Dir_Top || gap.m_side == E_Dir_Bottom;
    const double across = vertical ? gap.m_to.x - gap.m_from.x : gap.m_to.y - gap.m_from.y;
    return std::abs(across) <= pointTolerance;
}

}  // namespace product
