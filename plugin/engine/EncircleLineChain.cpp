// Chains: what a side sees, in order along the side, with bridges over the gaps.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <utility>

#include "EncircleTrace.h"
#include "PointCells.h"
#include "SideOrder.h"

namespace {

using Lines = std::vector<CLineInfo>;

// Rises along a side: x to the right, or y downwards.
double GetKey(const AcGePoint3d& pt, bool bByX) { return bByX ? pt.x : -pt.y; }

// Lines are large; the places are sorted, then each line moves once.
struct SSortPlace {
    double m_dKey;
    size_t m_nTie;  // order of equal keys
    size_t m_nLine;
};

void Arrange(Lines& lines, std::vector<SSortPlace>& places) {
    std::sort(places.begin(), places.end(), [](const SSortPlace& a, const SSortPlace& b) {
        return a.m_dKey != b.m_dKey ? a.m_dKey < b.m_dKey : a.m_nTie < b.m_nTie;
    });
    Lines sorted;
    sorted.reserve(lines.size());
    for (const SSortPlace& place : places) {
        sorted.push_back(std::move(lines[place.m_nLine]));
    }
    lines = std::move(sorted);
}

}  // namespace

void CEncircleLine::UpdateLineStartEndPt(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines) {
    for (CLineInfo& line : lines) {
        OrientForSide(dir, line.m_startPt, line.m_endPt);
    }
}

void CEncircleLine::SortLineInfos(std::vector<CLineInfo>& lines, bool bByX) {
    std::vector<SSortPlace> places;
    places.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        places.push_back({GetKey(lines[i].m_startPt, bByX), i, i});
    }
    Arrange(lines, places);
}

void CEncircleLine::ConnectBreakLine(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines) {
    const bool bByX = IsVerticalSide(dir);
    UpdateLineStartEndPt(dir, lines);
    SortLineInfos(lines, bByX);
    const size_t count = lines.size();
    std::vector<SSortPlace> places;
    places.reserve(2 * count);
    for (size_t i = 0; i < count; ++i) {
        places.push_back({GetKey(lines[i].m_startPt, bByX), 2 * i + 1, i});
    }
    for (size_t i = 0; i + 1 < count; ++i) {
        if (lines[i + 1].m_startPt.isEqualTo(lines[i].m_endPt, m_calInfo.m_tolPoint)) {
            continue;
        }
        CLineInfo bridge;
        bridge.m_startPt = lines[i].m_endPt;
        bridge.m_endPt = lines[i + 1].m_startPt;
        CEncircleTrace::Gap(dir, bridge.m_startPt, bridge.m_endPt);
        // Among lines of the same key a bridge stands where it was built, between its neighbours:
        // put behind all of them, the chain would jump back over a doubled line.
        places.push_back({GetKey(bridge.m_startPt, bByX), 2 * (i + 1), lines.size()});
        lines.push_back(std::move(bridge));
    }
    Arrange(lines, places);
}

void CEncircleLine::GetLineInfoPt(const std::vector<CLineInfo>& lines, bool bForward, bool,
                                  AcGePoint3dArray& pts) {
    CPointCells known(m_calInfo.m_tolPoint.equalPoint());
    for (int i = 0; i < pts.length(); ++i) {
        known.Add(pts[i]);
    }
    const auto offer = [&](const AcGePoint3d& pt) {
        if (known.FindFirst(pt) < 0) {
            known.Add(pt);
            pts.append(pt);
        }
    };
    for (size_t i = 0; i < lines.size(); ++i) {
        const CLineInfo& line = bForward ? lines[i] : lines[lines.size() - 1 - i];
        offer(bForward ? line.m_startPt : line.m_endPt);
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
