// Chains: what a side sees, in order along the side, with bridges over the gaps.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <utility>

#include "EncircleTrace.h"
#include "PointCells.h"
#include "SideOrder.h"
#include "plane/key_sort.h"

namespace {

using Lines = std::vector<CLineInfo>;

// Rises along a side: x to the right, or y downwards.
double GetKey(const AcGePoint3d& pt, bool bByX) { return bByX ? pt.x : -pt.y; }

// Lines are large; their places are sorted, then each line moves once. Equal keys keep
// their order.
void Sort(Lines& lines, bool bByX) {
    std::vector<plane::Keyed> places;
    places.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        places.push_back({plane::RisingKey(GetKey(lines[i].m_startPt, bByX)), static_cast<int>(i)});
    }
    if (std::is_sorted(
            places.begin(), places.end(),
            [](const plane::Keyed& a, const plane::Keyed& b) { return a.key < b.key; })) {
        return;
    }
    plane::SortByKey(places);
    Lines sorted;
    sorted.reserve(lines.size());
    for (const plane::Keyed& place : places) {
        sorted.push_back(std::move(lines[static_cast<size_t>(place.item)]));
    }
    lines = std::move(sorted);
}

// A bridge, and before which line of the chain it was built.
struct SBridge {
    double m_dKey;
    size_t m_nNext;
    CLineInfo m_line;
};

// Sorts the bridges into a sorted chain. Among lines of the same key a bridge stands where it was
// built, between its neighbours: put behind all of them, the chain would jump back over a doubled
// line.
void Insert(Lines& lines, std::vector<SBridge>& bridges, bool bByX) {
    std::stable_sort(bridges.begin(), bridges.end(), [](const SBridge& a, const SBridge& b) {
        return a.m_dKey < b.m_dKey;  // built in order
    });
    size_t line = lines.size();
    size_t bridge = bridges.size();
    lines.resize(line + bridge);
    for (size_t to = lines.size(); bridge > 0;) {
        const SBridge& last = bridges[bridge - 1];
        const double key = line > 0 ? GetKey(lines[line - 1].m_startPt, bByX) : last.m_dKey;
        const bool bLine =
            line > 0 && (key > last.m_dKey || (key == last.m_dKey && line - 1 >= last.m_nNext));
        lines[--to] = bLine ? std::move(lines[--line]) : std::move(bridges[--bridge].m_line);
    }
}

// Files the points that an end of the lines may equal. To a long outline a short chain is added
// without filing all of the outline.
CPointCells FileKnown(const Lines& lines, const AcGePoint3dArray& pts, double dTol) {
    constexpr size_t kMuchLonger = 8;
    const bool bAll = static_cast<size_t>(pts.length()) <= kMuchLonger * lines.size();
    CPointCells ends(dTol);
    for (const CLineInfo& line : lines) {
        if (!bAll) {
            ends.Add(line.m_startPt);
            ends.Add(line.m_endPt);
        }
    }
    CPointCells known(dTol);
    for (int i = 0; i < pts.length(); ++i) {
        if (bAll || ends.FindFirst(pts[i]) >= 0) {
            known.Add(pts[i]);
        }
    }
    return known;
}

}  // namespace

void CEncircleLine::UpdateLineStartEndPt(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines) {
    for (CLineInfo& line : lines) {
        OrientForSide(dir, line.m_startPt, line.m_endPt);
    }
}

void CEncircleLine::SortLineInfos(std::vector<CLineInfo>& lines, bool bByX) { Sort(lines, bByX); }

void CEncircleLine::ConnectBreakLine(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines) {
    const bool bByX = IsVerticalSide(dir);
    UpdateLineStartEndPt(dir, lines);
    Sort(lines, bByX);
    std::vector<SBridge> bridges;
    for (size_t i = 0; i + 1 < lines.size(); ++i) {
        const AcGePoint3d& from = lines[i].m_endPt;
        const AcGePoint3d& to = lines[i + 1].m_startPt;
        if (to.isEqualTo(from, m_calInfo.m_tolPoint)) {
            continue;
        }
        CEncircleTrace::Gap(dir, from, to);
        bridges.push_back({GetKey(from, bByX), i + 1, CLineInfo()});
        bridges.back().m_line.m_startPt = from;
        bridges.back().m_line.m_endPt = to;
    }
    Insert(lines, bridges, bByX);
}

void CEncircleLine::GetLineInfoPt(const std::vector<CLineInfo>& lines, bool bForward, bool,
                                  AcGePoint3dArray& pts) {
    CPointCells known = FileKnown(lines, pts, m_calInfo.m_tolPoint.equalPoint());
    const auto offer = [&](const AcGePoint3d& pt) {
        if (known.FindFirst(pt) < 0) {
            known.Add(pt);
            pts.append(pt);
        }
    };
    for (size_t i = 0; i < lines.size(); ++i) {
        const CLineInfo& line = bForward ? lines[i] : lines[lines.size() - 1 - i];
        const AcGePoint3d& first = bForward ? line.m_startPt : line.m_endPt;
        // Neighbours mostly share their corner to the last bit; what was offered is known.
        if (i == 0 || !IsSamePlace(first, bForward ? lines[i - 1].m_endPt
                                                   : lines[lines.size() - i].m_startPt)) {
            offer(first);
        }
        offer(bForward ? line.m_endPt : line.m_startPt);
    }
}

bool CEncircleLine::IsPtExist(const AcGePoint3dArray& pts, const AcGePoint3d& pt) {
    for (int i = 0; i < pts.length(); ++i) {
        if (pts[i].isEqualTo(pt, m_calInfo.m_tolPoint)) {
            return true;
        }
    }
    return false;
}
