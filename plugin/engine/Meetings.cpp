#include "StdAfx.h"

#include "Meetings.h"

#include <algorithm>
#include <cmath>

#include "LineBoxes.h"
#include "PointCells.h"
#include "QZRect.h"

namespace {

// Boxes that miss one another by less still overlap, in drawing units.
constexpr double kBoxTol = 1e-6;
// Twice that, so that no pair is lost to rounding.
constexpr double kPairPad = 2 * kBoxTol;
// Rounding of a sum of products of coordinates, relative to the largest coordinate.
constexpr double kRounding = 1e-12;
// Lines are never told parallel by rounding alone when the tolerance for it is above this.
constexpr double kLeastParallelTol = 1e-9;

struct SMeeting {
    int m_nLow;
    int m_nHigh;
    AcGePoint3d m_pt;
};

// A meeting as one of its two records sees it.
struct SPartner {
    int m_nOther;
    int m_nMeeting;
};

// Refuses what lies wholly on one side of a long line, although within its box.
class CSideTest {
public:
    CSideTest(const std::vector<CLineInfo>& lines, const AcGeTol& tol)
        : m_lines(lines), m_bUsable(tol.equalVector() > kLeastParallelTol) {
        double scale = 0.0;
        for (const CLineInfo& line : lines) {
            for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
                scale = (std::max)({scale, std::fabs(pt.x), std::fabs(pt.y)});
            }
        }
        m_dMargin = 2 * tol.equalPoint() + kRounding * scale;
    }

    bool MayMeet(int item, const SFlatBox& box) const {
        const CLineInfo& line = m_lines[item];
        const double dx = line.m_endPt.x - line.m_startPt.x;
        const double dy = line.m_endPt.y - line.m_startPt.y;
        const double toMiddle = dx * (box.m_dMinY / 2 + box.m_dMaxY / 2 - line.m_startPt.y) -
                                dy * (box.m_dMinX / 2 + box.m_dMaxX / 2 - line.m_startPt.x);
        const double reach = std::fabs(dx) * ((box.m_dMaxY - box.m_dMinY) / 2 + m_dMargin) +
                             std::fabs(dy) * ((box.m_dMaxX - box.m_dMinX) / 2 + m_dMargin);
        return !m_bUsable || std::fabs(toMiddle) <= reach;
    }

private:
    const std::vector<CLineInfo>& m_lines;
    bool m_bUsable;
    double m_dMargin;
};

// Whether the plain loop meets i with j, i < j.
bool Meet(const CLineInfo& i, const CLineInfo& j, const AcGeTol& tol, AcGePoint3d& pt) {
    return AcGeLineSeg3d(i.m_startPt, i.m_endPt)
               .intersectWith(AcGeLineSeg3d(j.m_startPt, j.m_endPt), pt, tol) &&
           CQZRect(i.m_startPt, i.m_endPt).Overlaps(CQZRect(j.m_startPt, j.m_endPt), kBoxTol);
}

std::vector<SMeeting> FindMeetings(const std::vector<CLineInfo>& lines, const AcGeTol& tol) {
    const CSideTest sides(lines, tol);
    std::vector<SMeeting> meetings;
    CBoxIndex(GetFlatBoxes(lines))
        .ForEachPair(
            kPairPad, [&](int item, const SFlatBox& box) { return sides.MayMeet(item, box); },
            [&](int a, int b) {
                SMeeting meeting = {(std::min)(a, b), (std::max)(a, b), AcGePoint3d()};
                if (Meet(lines[meeting.m_nLow], lines[meeting.m_nHigh], tol, meeting.m_pt)) {
                    meetings.push_back(meeting);
                }
            });
    return meetings;
}

// Adds the points in order. As many calls of CLineInfo::AddBreakPoint() give the same list, but
// walk it each time, and a long line has thousands.
void AddPoints(CLineInfo& line, const std::vector<SMeeting>& meetings, const SPartner* first,
               const SPartner* last, const AcGeTol& tol) {
    const AcGeLineSeg3d segment(line.m_startPt, line.m_endPt);
    CPointCells kept(tol.equalPoint());
    for (const AcGePoint3d& pt : line.m_breakPts) {
        kept.Add(pt);
    }
    for (; first != last; ++first) {
        const AcGePoint3d& pt = meetings[first->m_nMeeting].m_pt;
        if (segment.isOn(pt, tol) && kept.FindFirst(pt) < 0) {
            kept.Add(pt);
        }
    }
    line.m_breakPts = kept.GetPoints();
}

}  // namespace

void AddMeetingPoints(std::vector<CLineInfo>& lines, const AcGeTol& tol) {
    const std::vector<SMeeting> meetings = FindMeetings(lines, tol);
    // Counted first, then filed record by record.
    std::vector<size_t> ends(lines.size() + 1, 0);
    for (const SMeeting& meeting : meetings) {
        ++ends[meeting.m_nLow + 1];
        ++ends[meeting.m_nHigh + 1];
    }
    for (size_t i = 1; i < ends.size(); ++i) {
        ends[i] += ends[i - 1];
    }
    std::vector<SPartner> partners(ends.back());
    std::vector<size_t> next(ends.begin(), ends.end() - 1);
    for (size_t m = 0; m < meetings.size(); ++m) {
        const int number = static_cast<int>(m);
        partners[next[meetings[m].m_nLow]++] = {meetings[m].m_nHigh, number};
        partners[next[meetings[m].m_nHigh]++] = {meetings[m].m_nLow, number};
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        SPartner* const first = partners.data() + ends[i];
        SPartner* const last = partners.data() + ends[i + 1];
        if (first != last) {
            std::sort(first, last,
                      [](const SPartner& a, const SPartner& b) { return a.m_nOther < b.m_nOther; });
            AddPoints(lines[i], meetings, first, last, tol);
        }
    }
}
