// Clean-up of the broken set: doubles, covered lines, loose ends, short dangling pieces.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "EncircleWatch.h"
#include "LineBoxes.h"
#include "PointOnSegment.h"
#include "RemoveMarked.h"
#include "SegmentClass.h"
#include "Twins.h"

namespace {

using Lines = std::vector<CLineInfo>;

// Ends closer than this to another line are moved onto it, and lines shorter than this must bridge
// two others; fixed, in drawing units.
constexpr double kSnapDistance = 0.5;
constexpr double kShortLength = 0.5;

// Boxes that miss one another by less still hold one another, in drawing units.
constexpr double kBoxTol = 1e-6;

// Rounding of a point on a line, relative to the coordinates; a safe bound.
constexpr double kRounding = 1e-14;

double GetLength(const CLineInfo& line) { return line.m_startPt.distanceTo(line.m_endPt); }

CQZRect GetBox(const CLineInfo& line) { return CQZRect(line.m_startPt, line.m_endPt); }

bool EndsAt(const CLineInfo& line, const AcGePoint3d& pt) {
    return IsSamePlace(line.m_startPt, pt) || IsSamePlace(line.m_endPt, pt);
}

// What two lines do to each other, the first one being examined.
enum E_Repeat { E_Repeat_None, E_Repeat_DropFirst, E_Repeat_DropSecond };

E_Repeat CompareLines(const CLineInfo& first, const CLineInfo& second,
                      const CEncircleCalInfo& info) {
    if (first.IsEqual(second, info.m_tolPoint)) {
        return E_Repeat_DropFirst;
    }
    if (ClassifySegments(first.m_startPt, first.m_endPt, second.m_startPt, second.m_endPt,
                         info.m_tolLine.equalPoint()) != E_Segment_Collinear) {
        return E_Repeat_None;
    }
    if (GetBox(first).Contains(GetBox(second), kBoxTol)) {
        return E_Repeat_DropSecond;
    }
    return GetBox(second).Contains(GetBox(first), kBoxTol) ? E_Repeat_DropFirst : E_Repeat_None;
}

// What the lines of one group of twins do to those of another when they are examined first.
struct SRepeat {
    size_t m_nGroup;
    size_t m_nOther;
    E_Repeat m_outcome;
};

// All groups that do anything to each other, by rising first group. Whether they do does not depend
// on which of their lines have gone.
std::vector<SRepeat> FindRepeats(const Lines& lines, const CTwins& twins,
                                 const CEncircleCalInfo& info) {
    const double pad = info.m_tolPoint.equalPoint() + 4 * kBoxTol;
    std::vector<SRepeat> repeats;
    const auto add = [&](size_t group, size_t other) {
        const E_Repeat outcome =
            CompareLines(lines[twins.GetFirst(group)], lines[twins.GetFirst(other)], info);
        if (outcome != E_Repeat_None) {
            repeats.push_back({group, other, outcome});
        }
    };
    std::vector<SFlatBox> boxes;
    boxes.reserve(twins.GetCount());
    for (size_t group = 0; group < twins.GetCount(); ++group) {
        boxes.push_back(GetFlatBox(lines[twins.GetFirst(group)]));
        if (twins.end(group) - twins.begin(group) > 1) {
            add(group, group);
        }
    }
    size_t done = 0;
    CBoxIndex(boxes).ForEachPair(pad, [&](int a, int b) {
        CEncircleWatch::Step("repeats", done++, 0);
        // Equal lines and covered ones lie in one another's box; neighbours at a corner do not.
        if (boxes[a].Padded(pad).Contains(boxes[b]) || boxes[b].Padded(pad).Contains(boxes[a])) {
            add(static_cast<size_t>(a), static_cast<size_t>(b));
            add(static_cast<size_t>(b), static_cast<size_t>(a));
        }
    });
    std::sort(repeats.begin(), repeats.end(),
              [](const SRepeat& a, const SRepeat& b) { return a.m_nGroup < b.m_nGroup; });
    return repeats;
}

// The first line of a group that has not gone, behind the one whose turn it is. Turns rise and what
// has gone stays gone, so each group is walked once.
class CNextLiving {
public:
    CNextLiving(const CTwins& twins, const std::vector<char>& gone) : m_twins(twins), m_gone(gone) {
        m_next.reserve(twins.GetCount());
        for (size_t group = 0; group < twins.GetCount(); ++group) {
            m_next.push_back(twins.begin(group));
        }
    }
    // Beyond all lines when there is none.
    int Find(size_t group, int turn) {
        const int*& next = m_next[group];
        while (next != m_twins.end(group) && (*next <= turn || m_gone[*next] != 0)) {
            ++next;
        }
        return next != m_twins.end(group) ? *next : static_cast<int>(m_gone.size());
    }

private:
    const CTwins& m_twins;
    const std::vector<char>& m_gone;
    std::vector<const int*> m_next;
};

// The nearest place on other lines to an end, as a walk over all lines in order finds it: of
// several at the same distance the one that it tries first.
class CNearestPlace {
public:
    explicit CNearestPlace(const AcGePoint3d& pt) : m_pt(pt) {}

    bool IsInReach(const SFlatBox& box) const {
        const double dx = (std::max)({box.low.x - m_pt.x, m_pt.x - box.high.x, 0.0});
        const double dy = (std::max)({box.low.y - m_pt.y, m_pt.y - box.high.y, 0.0});
        constexpr double kSlack = 1.0 + 1e-9;  // for the rounding of the distances
        return dx * dx + dy * dy <= m_dDistance * m_dDistance * kSlack;
    }
    void Try(int index, const CLineInfo& line) {
        TryPoint(index, line.m_startPt);
        TryPoint(index, line.m_endPt);
        TryPoint(index, AcGeLineSeg3d(line.m_startPt, line.m_endPt).closestPointTo(m_pt));
    }
    bool Touches() const { return m_dDistance == 0.0; }
    bool IsFound() const { return m_nLine >= 0 && !Touches(); }
    const AcGePoint3d& GetPlace() const { return m_place; }

private:
    void TryPoint(int index, const AcGePoint3d& place) {
        const double distance = m_pt.distanceTo(place);
        if (distance < m_dDistance || (distance == m_dDistance && index < m_nLine)) {
            m_dDistance = distance;
            m_nLine = index;
            m_place = place;
        }
    }

    AcGePoint3d m_pt;
    AcGePoint3d m_place;
    double m_dDistance = kSnapDistance;  // nothing from there on is of use
    int m_nLine = -1;
};

// Which lines ended at a place when the table was made. Pieces that were cut apart share their
// corners to the last bit, so this tells of most ends that they touch another line.
class CCorners {
public:
    explicit CCorners(const Lines& lines) : m_lines(lines) {
        size_t size = 64;
        while (size < 4 * lines.size()) {
            size *= 2;
        }
        m_slots.assign(size, -1);
        for (size_t i = 0; i < lines.size(); ++i) {
            File(static_cast<int>(i), lines[i].m_startPt);
            File(static_cast<int>(i), lines[i].m_endPt);
        }
    }
    // Whether a line other than own was filed there and still ends there.
    bool HasOther(int own, const AcGePoint3d& pt) const {
        size_t slot = GetSlot(pt);
        for (int looks = 0; m_slots[slot] >= 0 && looks < kMostLooks; ++looks) {
            if (m_slots[slot] != own && EndsAt(m_lines[m_slots[slot]], pt)) {
                return true;
            }
            slot = (slot + 1) & (m_slots.size() - 1);
        }
        return false;
    }

private:
    // Places that many lines share fill no more slots than that; what is not found is looked for
    // among all lines.
    static constexpr int kMostLooks = 16;

    void File(int index, const AcGePoint3d& pt) {
        size_t slot = GetSlot(pt);
        for (int looks = 0; looks < kMostLooks; ++looks) {
            if (m_slots[slot] < 0) {
                m_slots[slot] = index;
                return;
            }
            slot = (slot + 1) & (m_slots.size() - 1);
        }
    }
    size_t GetSlot(const AcGePoint3d& pt) const {
        const std::uint64_t x = GetBits(pt.x);
        const std::uint64_t y = GetBits(pt.y);
        const std::uint64_t mixed = (x ^ (y * 0x9E3779B97F4A7C15U)) * 0xBF58476D1CE4E5B9U;
        return static_cast<size_t>(mixed ^ (mixed >> 29) ^ (mixed >> 43)) & (m_slots.size() - 1);
    }
    static std::uint64_t GetBits(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }

    const Lines& m_lines;
    std::vector<int> m_slots;
};

// Moves one end of a line onto the nearest other line, or leaves it.
bool SnapEnd(const Lines& lines, const CCorners& corners, const CBoxIndex& index, int own,
             AcGePoint3d& pt) {
    if (corners.HasOther(own, pt)) {
        return false;
    }
    CNearestPlace nearest(pt);
    index.Visit([&](const SFlatBox& box) { return nearest.IsInReach(box); },
                [&](int other) {
                    if (other != own) {
                        nearest.Try(other, lines[other]);
                    }
                    return nearest.Touches();
                });
    if (nearest.IsFound()) {
        pt = nearest.GetPlace();
    }
    return nearest.IsFound();
}

// Lines of which some have gone, and whether a point lies on one that has not.
class CLivingLines {
public:
    CLivingLines(const Lines& lines, const std::vector<char>& gone, const AcGeTol& tol)
        : m_lines(lines), m_gone(gone), m_tol(tol), m_index(GetFlatBoxes(lines)) {}

    bool HasOtherAt(int own, const AcGePoint3d& pt) const {
        const double pad =
            2 * m_tol.equalPoint() + kRounding * (std::max)(std::fabs(pt.x), std::fabs(pt.y));
        const SFlatBox around = GetFlatBox(pt, pt).Padded(pad);
        const auto isOn = [&](int other) {
            const CLineInfo& line = m_lines[other];
            return other != own && m_gone[other] == 0 &&
                   IsPointOnSegment(AcGeLineSeg3d(line.m_startPt, line.m_endPt), pt, true, m_tol);
        };
        return (own > 0 && isOn(own - 1)) ||
               (own + 1 < static_cast<int>(m_lines.size()) && isOn(own + 1)) ||
               m_index.Visit([&](const SFlatBox& box) { return box.Meets(around, 0.0); }, isOn);
    }

private:
    const Lines& m_lines;
    const std::vector<char>& m_gone;
    AcGeTol m_tol;
    CBoxIndex m_index;
};

}  // namespace

void CEncircleLine::RemoveRepeatLine2(std::vector<CLineInfo>& lines) {
    // A line without length goes when its turn comes, before it is compared with any other.
    std::vector<char> skipped(lines.size(), 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        skipped[i] = !lines[i].m_bValid ||
                     lines[i].m_startPt.isEqualTo(lines[i].m_endPt, m_calInfo.m_tolPoint);
    }
    const CTwins twins(lines);
    const std::vector<SRepeat> repeats = FindRepeats(lines, twins, m_calInfo);
    std::vector<size_t> starts(twins.GetCount() + 1, 0);
    for (const SRepeat& repeat : repeats) {
        ++starts[repeat.m_nGroup + 1];
    }
    for (size_t group = 1; group < starts.size(); ++group) {
        starts[group] += starts[group - 1];
    }
    std::vector<char> gone(lines.size(), 0);
    CNextLiving living(twins, gone);
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t group = twins.GetGroup(i);
        if (skipped[i] != 0 || gone[i] != 0) {
            continue;
        }
        // A line's turn is over with its first living partner.
        size_t first = lines.size();
        E_Repeat outcome = E_Repeat_None;
        for (size_t n = starts[group]; n < starts[group + 1]; ++n) {
            const auto partner =
                static_cast<size_t>(living.Find(repeats[n].m_nOther, static_cast<int>(i)));
            if (partner < first) {
                first = partner;
                outcome = repeats[n].m_outcome;
            }
        }
        if (first < lines.size()) {
            gone[outcome == E_Repeat_DropFirst ? i : first] = 1;
        }
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].m_bValid && skipped[i] != 0) {
            gone[i] = 1;
        }
    }
    EraseMarked(lines, gone);
    DeleteMarked(lines, gone);
}

void CEncircleLine::UpdateLinePtByNearestPt(std::vector<CLineInfo>& lines) {
    CBoxIndex index(GetFlatBoxes(lines));
    const CCorners corners(lines);
    for (size_t i = 0; i < lines.size(); ++i) {
        CEncircleWatch::Step("nearest", i, lines.size());
        if (!lines[i].m_bValid) {
            continue;
        }
        const int own = static_cast<int>(i);
        AcGePoint3d start = lines[i].m_startPt;
        AcGePoint3d end = lines[i].m_endPt;
        const bool bStart = SnapEnd(lines, corners, index, own, start);
        const bool bEnd = SnapEnd(lines, corners, index, own, end);
        if (bStart || bEnd) {
            lines[i].m_startPt = start;
            lines[i].m_endPt = end;
            index.Grow(own, {start.x, start.y});
            index.Grow(own, {end.x, end.y});
        }
    }
}

void CEncircleLine::RemoveShortLine(std::vector<CLineInfo>& lines) {
    std::vector<char> gone(lines.size(), 0);
    const CLivingLines living(lines, gone, m_calInfo.m_tolPoint);
    for (size_t i = 0; i < lines.size(); ++i) {
        const int own = static_cast<int>(i);
        if (lines[i].m_bValid && GetLength(lines[i]) < kShortLength) {
            gone[i] = !living.HasOtherAt(own, lines[i].m_startPt) ||
                      !living.HasOtherAt(own, lines[i].m_endPt);
        }
    }
    EraseMarked(lines, gone);
    DeleteMarked(lines, gone);
}

void CEncircleLine::RemoveLineByWalter(std::vector<CLineInfo>& lines, E_RemoveLine_Dir dir) {
    // To the left 0.0 counts as not yet set, so a coordinate of exactly 0.0 is replaced by the next
    // one even if that lies farther right.
    double outermost = 0.0;
    for (const CLineInfo& line : lines) {
        for (const double x : {line.m_startPt.x, line.m_endPt.x}) {
            const bool bFarther = dir == E_Dir_Right ? x > outermost : x < outermost;
            if (bFarther || (dir != E_Dir_Right && outermost == 0.0)) {
                outermost = x;
            }
        }
    }
    if (outermost == 0.0) {
        return;
    }
    std::vector<char> away(lines.size(), 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        away[i] = std::fabs(lines[i].m_startPt.x - outermost) > m_calInfo.m_dSideLength &&
                  std::fabs(lines[i].m_endPt.x - outermost) > m_calInfo.m_dSideLength;
    }
    DeleteMarked(lines, away);
}
