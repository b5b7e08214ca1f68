#include "StdAfx.h"

#include "Meetings.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "EncircleWatch.h"
#include "LineBoxes.h"
#include "PointCells.h"
#include "PointOnSegment.h"
#include "QZRect.h"
#include "Twins.h"

namespace {

// Boxes that miss one another by less still overlap, in drawing units.
constexpr double kBoxTol = 1e-6;
// Twice that, so that no pair is lost to rounding.
constexpr double kPairPad = 2 * kBoxTol;
// Rounding of a sum of products of coordinates, relative to the largest coordinate.
constexpr double kRounding = 1e-12;
// Lines are never told parallel by rounding alone when the tolerance for it is above this.
constexpr double kLeastParallelTol = 1e-9;

// Instead of a place: not looked for, and that there is none.
constexpr int kNotYet = -2;
constexpr int kNone = -1;

// A meeting as one of its two records sees it.
struct SMeeting {
    int m_nRecord;
    int m_nOther;
    int m_nPoint;
};

// Meetings of all records, and where they are; twins share points.
struct SMeetings {
    std::vector<SMeeting> m_meetings;
    std::vector<AcGePoint3d> m_points;
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
        const double toMiddle = dx * (box.low.y / 2 + box.high.y / 2 - line.m_startPt.y) -
                                dy * (box.low.x / 2 + box.high.x / 2 - line.m_startPt.x);
        const double reach = std::fabs(dx) * ((box.high.y - box.low.y) / 2 + m_dMargin) +
                             std::fabs(dy) * ((box.high.x - box.low.x) / 2 + m_dMargin);
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

std::vector<SFlatBox> GetGroupBoxes(const std::vector<CLineInfo>& lines, const CTwins& twins) {
    std::vector<SFlatBox> boxes;
    boxes.reserve(twins.GetCount());
    for (size_t group = 0; group < twins.GetCount(); ++group) {
        boxes.push_back(GetFlatBox(lines[twins.GetFirst(group)]));
    }
    return boxes;
}

// Calls use(group, group) for the groups whose lines may meet.
template <class Use>
void ForEachGroupPair(const std::vector<CLineInfo>& lines, const CTwins& twins, const AcGeTol& tol,
                      const Use& use) {
    const CSideTest sides(lines, tol);
    size_t done = 0;
    CBoxIndex(GetGroupBoxes(lines, twins))
        .ForEachPair(
            kPairPad,
            [&](int group, const SFlatBox& box) {
                return sides.MayMeet(twins.GetFirst(group), box);
            },
            [&](int a, int b) {
                CEncircleWatch::Step("meetings", done++, 0);
                use(static_cast<size_t>(a), static_cast<size_t>(b));
            });
}

// Adds to what the records of one group meet those of the other. The place depends on which of two
// lines comes first in the drawing, and of several at one place only the first counts: so each
// record needs the other group's first record and its first one behind the record.
void AddGroup(const std::vector<CLineInfo>& lines, const CTwins& twins, size_t own, size_t other,
              const AcGeTol& tol, int (&points)[2], SMeetings& found) {
    const auto add = [&](int record, int partner) {
        // The first place is that with the own group's line before the other's.
        int& point = points[record < partner ? 0 : 1];
        if (point == kNotYet) {
            AcGePoint3d pt;
            const bool bMeet = Meet(lines[(std::min)(record, partner)],
                                    lines[(std::max)(record, partner)], tol, pt);
            point = bMeet ? static_cast<int>(found.m_points.size()) : kNone;
            if (bMeet) {
                found.m_points.push_back(pt);
            }
        }
        if (point != kNone) {
            found.m_meetings.push_back({record, partner, point});
        }
    };
    for (const int* record = twins.begin(own); record != twins.end(own); ++record) {
        const int* const behind = std::upper_bound(twins.begin(other), twins.end(other), *record);
        if (behind != twins.begin(other)) {
            add(*record, twins.GetFirst(other));
        }
        if (behind != twins.end(other)) {
            add(*record, *behind);
        }
    }
}

SMeetings FindMeetings(const std::vector<CLineInfo>& lines, const AcGeTol& tol) {
    const CTwins twins(lines);
    SMeetings found;
    ForEachGroupPair(lines, twins, tol, [&](size_t a, size_t b) {
        int points[2] = {kNotYet, kNotYet};
        AddGroup(lines, twins, a, b, tol, points, found);
        std::swap(points[0], points[1]);
        AddGroup(lines, twins, b, a, tol, points, found);
    });
    return found;
}

// Adds the points in order. As many calls of CLineInfo::AddBreakPoint() give the same list, but
// walk it each time, and a long line has thousands.
void AddPoints(CLineInfo& line, const SMeetings& found, const SMeeting* first, const SMeeting* last,
               const AcGeTol& tol) {
    const AcGeLineSeg3d segment(line.m_startPt, line.m_endPt);
    CPointCells kept(tol.equalPoint());
    for (const AcGePoint3d& pt : line.m_breakPts) {
        kept.Add(pt);
    }
    for (; first != last; ++first) {
        const AcGePoint3d& pt = found.m_points[first->m_nPoint];
        if (IsOnBoundedSegment(segment, pt, tol) && kept.FindFirst(pt) < 0) {
            kept.Add(pt);
        }
    }
    line.m_breakPts = kept.GetPoints();
}

// The meetings record by record, each record's by rising partners.
std::vector<SMeeting> Arrange(const std::vector<SMeeting>& meetings, std::vector<size_t>& ends) {
    for (const SMeeting& meeting : meetings) {
        ++ends[meeting.m_nRecord + 1];
    }
    for (size_t i = 1; i < ends.size(); ++i) {
        ends[i] += ends[i - 1];
    }
    std::vector<SMeeting> arranged(meetings.size());
    std::vector<size_t> next(ends.begin(), ends.end() - 1);
    for (const SMeeting& meeting : meetings) {
        arranged[next[meeting.m_nRecord]++] = meeting;
    }
    for (size_t i = 0; i + 1 < ends.size(); ++i) {
        std::sort(arranged.data() + ends[i], arranged.data() + ends[i + 1],
                  [](const SMeeting& a, const SMeeting& b) { return a.m_nOther < b.m_nOther; });
    }
    return arranged;
}

}  // namespace

void AddMeetingPoints(std::vector<CLineInfo>& lines, const AcGeTol& tol) {
    CEncircleWatch* const pWatch = CEncircleWatch::Current();
    if (pWatch != nullptr && !pWatch->MayBreak(lines.size(), CountMeetings(lines, tol))) {
        throw SEncircleStop();
    }
    SMeetings found = FindMeetings(lines, tol);
    std::vector<size_t> ends(lines.size() + 1, 0);
    found.m_meetings = Arrange(found.m_meetings, ends);
    const SMeeting* const meetings = found.m_meetings.data();
    for (size_t i = 0; i < lines.size(); ++i) {
        if (ends[i] != ends[i + 1]) {
            AddPoints(lines[i], found, meetings + ends[i], meetings + ends[i + 1], tol);
        }
    }
}

size_t CountMeetings(const std::vector<CLineInfo>& lines, const AcGeTol& tol) {
    const CTwins twins(lines);
    size_t count = 0;
    ForEachGroupPair(lines, twins, tol, [&](size_t a, size_t b) {
        const CLineInfo& one = lines[twins.GetFirst(a)];
        const CLineInfo& other = lines[twins.GetFirst(b)];
        AcGePoint3d pt;
        // A shared corner breaks nothing.
        const bool bCorner = IsSamePlace(one.m_startPt, other.m_startPt) ||
                             IsSamePlace(one.m_startPt, other.m_endPt) ||
                             IsSamePlace(one.m_endPt, other.m_startPt) ||
                             IsSamePlace(one.m_endPt, other.m_endPt);
        if (!bCorner && Meet(one, other, tol, pt)) {
            count += static_cast<size_t>(twins.end(a) - twins.begin(a)) *
                     static_cast<size_t>(twins.end(b) - twins.begin(b));
        }
    });
    return count;
}
