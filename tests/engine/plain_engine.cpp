#include "engine/plain_engine.h"

#include <algorithm>
#include <cmath>

#include "plugin/util/EncircleLayers.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"
#include "plugin/util/LayerTools.h"
#include "plugin/util/PointOnSegment.h"
#include "plugin/util/SegmentClass.h"
#include "plugin/util/TolerantCompare.h"

namespace test {

namespace {

constexpr double kBox = 1e-6;

bool IsVertical(E_RemoveLine_Dir dir) { return dir == E_Dir_Bottom || dir == E_Dir_Top; }

CQZRect Box(const CLineInfo& line) { return {line.m_startPt, line.m_endPt}; }

AcGeLineSeg3d Segment(const CLineInfo& line) { return {line.m_startPt, line.m_endPt}; }

// Erases the entity, then the record, and steps back.
template <class Index>
void Remove(std::vector<CLineInfo>& lines, Index& i) {
    EraseById(lines[i].m_id);
    lines.erase(lines.begin() + i);
    --i;
}

void Sort(AcArray<AcGePoint3d>& points, double AcGePoint3d::*key) {
    std::stable_sort(points.begin(), points.end(),
                     [key](const AcGePoint3d& a, const AcGePoint3d& b) { return a.*key < b.*key; });
}

}  // namespace

void PlainEngine::BreakLines(Lines& lines) {
    const AcGeTol tol = m_calInfo.m_tolPoint;
    for (size_t i = 0; i < lines.size(); ++i) {
        for (size_t j = i + 1; j < lines.size(); ++j) {
            AcGePoint3d pt;
            if (Box(lines[i]).Overlaps(Box(lines[j]), kBox) &&
                Segment(lines[i]).intersectWith(Segment(lines[j]), pt, tol)) {
                lines[i].AddBreakPoint(pt, tol);
                lines[j].AddBreakPoint(pt, tol);
            }
        }
    }
    SplitAll(lines);
}

void PlainEngine::SplitAll(Lines& lines) {
    for (int k = 0; k < static_cast<int>(lines.size()); ++k) {
        AcArray<AcDbObjectId> newIds;
        if (SplitLine(lines[k], newIds)) {
            lines.erase(lines.begin() + k);
            --k;
        }
        for (int n = 0; n < newIds.length(); ++n) {
            lines.push_back(CLineInfo(newIds[n]));
        }
    }
}

bool PlainEngine::SplitLine(CLineInfo& line, AcArray<AcDbObjectId>& newIds) {
    newIds.removeAll();
    if (line.m_breakPts.empty() || !line.m_bValid) return false;
    line.Sort();
    std::vector<AcGePoint3d> chain = line.m_breakPts;
    chain.insert(chain.begin(), line.m_startPt);
    chain.push_back(line.m_endPt);
    AcDbObjectId layerId = FindLayer(kScratchLayer);
    {
        AcDbObjectPointer<AcDbEntity> entity(line.m_id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) layerId = entity->layerId();
    }
    EraseById(line.m_id);
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        const AcDbObjectId id = CBlockAppender().AppendLine(chain[i], chain[i + 1], 256, layerId);
        if (!id.isNull()) newIds.append(id);
    }
    return true;
}

void PlainEngine::BreakLines2(Lines& lines, bool withVertical, bool shiftRight) {
    CQZRect moved = m_extents;
    const double shift = shiftRight ? m_calInfo.m_dSideLength : -m_calInfo.m_dSideLength;
    moved.min.x += shift;
    moved.max.x += shift;
    std::vector<AcGePoint3d> ends;
    for (const CLineInfo& line : lines) {
        for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
            if (withVertical || !moved.Contains(CQZRect(pt, pt), 0.0)) {
                AddBreakPoint(pt, ends, m_calInfo.m_tolPoint);
            }
        }
    }
    AcArray<AcGePoint3d> points;
    for (const AcGePoint3d& pt : ends) points.append(pt);
    if (withVertical) {
        Sort(points, &AcGePoint3d::x);
        for (CLineInfo& line : lines) CalBreakPoint(line, points, true, m_extents.GetHeight());
    }
    Sort(points, &AcGePoint3d::y);
    for (CLineInfo& line : lines) CalBreakPoint(line, points, false, m_extents.GetWidth());
    SplitAll(lines);
}

void PlainEngine::CalBreakPoint(CLineInfo& line, const AcArray<AcGePoint3d>& points, bool vertical,
                                double halfLength) {
    int i0 = GetBreakIndex(points, line.m_startPt, m_calInfo.m_tolPoint);
    int i1 = GetBreakIndex(points, line.m_endPt, m_calInfo.m_tolPoint);
    if (i0 < 0 || i1 < 0) return;
    if (i0 > i1) std::swap(i0, i1);
    for (int k = i0 + 1; k < i1; ++k) {
        const AcGePoint3d& p = points[k];
        const AcGeVector3d half(vertical ? 0 : halfLength, vertical ? halfLength : 0, 0);
        AcGePoint3d pt;
        if (AcGeLineSeg3d(p - half, p + half)
                .intersectWith(Segment(line), pt, m_calInfo.m_tolPoint)) {
            line.AddBreakPoint(pt, m_calInfo.m_tolPoint);
        }
    }
}

PlainEngine::Lines PlainEngine::RemoveLine2(E_RemoveLine_Dir dir, const Lines& lines) {
    Lines v = lines;
    UpdateLineStartEndPt(dir, v);
    const Lines r = v;
    for (int i = 0; i < static_cast<int>(v.size()); ++i) {
        const AcGePoint3d& s = v[i].m_startPt;
        const AcGePoint3d& e = v[i].m_endPt;
        const AcGePoint3d m(s.x / 2 + e.x / 2, s.y / 2 + e.y / 2, s.z / 2 + e.z / 2);
        const double across = IsVertical(dir) ? s.x - e.x : s.y - e.y;
        if (m_calInfo.m_tolHorVer.equalPoint() > std::fabs(across)) {
            Remove(v, i);
            continue;
        }
        const bool hidden = std::any_of(r.begin(), r.end(), [&](const CLineInfo& other) {
            return !(other.m_id == v[i].m_id && !v[i].m_id.isNull()) &&
                   !other.IsEqual(v[i], m_calInfo.m_tolPoint) &&
                   IsPtInLineSpecifiedDir2(m, other.m_startPt, other.m_endPt, dir);
        });
        if (hidden) Remove(v, i);
    }
    return v;
}

bool PlainEngine::IsPtInLineSpecifiedDir2(AcGePoint3d pt, AcGePoint3d start, AcGePoint3d end,
                                          E_RemoveLine_Dir dir) {
    const bool vertical = IsVertical(dir);
    const double a = vertical ? start.x : start.y;
    const double b = vertical ? end.x : end.y;
    const double across = vertical ? pt.x : pt.y;
    if (!(((std::min)(a, b) < across) && across < (std::max)(a, b))) return false;
    const AcGeVector3d reach(vertical ? 0 : m_extents.GetWidth(),
                             vertical ? m_extents.GetHeight() : 0, 0);
    AcGePoint3d met;
    if (!AcGeLineSeg3d(start, end)
             .intersectWith(AcGeLineSeg3d(pt - reach, pt + reach), met, m_calInfo.m_tolPoint)) {
        return false;
    }
    if (m_calInfo.m_tolPoint.equalPoint() > std::fabs(vertical ? met.y - pt.y : met.x - pt.x)) {
        return true;
    }
    switch (dir) {
        case E_Dir_Bottom:
            return pt.y > met.y;
        case E_Dir_Top:
            return met.y > pt.y;
        case E_Dir_Right:
            return met.x > pt.x;
        default:
            return pt.x > met.x;
    }
}

void PlainEngine::RemoveLineInExcludeDir(E_RemoveLine_Dir dir, double axis, Lines& lines) {
    if (dir == E_Dir_None) return;
    const double tol = m_calInfo.m_tolPoint.equalPoint();
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        if (!lines[i].m_bValid) continue;
        const AcGePoint3d& s = lines[i].m_startPt;
        const AcGePoint3d& e = lines[i].m_endPt;
        const bool above = IsAtOrAboveValue(s.y, axis, tol) && IsAtOrAboveValue(e.y, axis, tol);
        const bool below = IsAtOrBelowValue(s.y, axis, tol) && IsAtOrBelowValue(e.y, axis, tol);
        const bool left = IsAtOrBelowValue(s.x, axis, tol) && IsAtOrBelowValue(e.x, axis, tol);
        const bool right = IsAtOrAboveValue(s.x, axis, tol) && IsAtOrAboveValue(e.x, axis, tol);
        if (dir == E_Dir_Bottom  ? above
            : dir == E_Dir_Top   ? below
            : dir == E_Dir_Right ? left
                                 : right)
            Remove(lines, i);
    }
}

void PlainEngine::RemoveLineInOtherDir(const Lines& otherLines, Lines& lines) {
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        for (const CLineInfo& other : otherLines) {
            const CLineInfo& line = lines[i];
            const bool collinear =
                ClassifySegments(line.m_startPt, line.m_endPt, other.m_startPt, other.m_endPt,
                                 m_calInfo.m_tolLine.equalPoint()) == E_Segment_Collinear;
            if (line.IsEqual(other, m_calInfo.m_tolLine) ||
                (collinear && Box(other).Contains(Box(line), kBox)) ||
                Box(line).Overlaps(Box(other), -m_calInfo.m_tolPoint.equalPoint())) {
                Remove(lines, i);
                break;
            }
        }
    }
}

void PlainEngine::RemoveRepeatLine2(Lines& lines) {
    const AcGeTol tol = m_calInfo.m_tolPoint;
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        if (!lines[i].m_bValid) continue;
        if (lines[i].m_startPt.isEqualTo(lines[i].m_endPt, tol)) {
            Remove(lines, i);
            continue;
        }
        for (int j = i + 1; j < static_cast<int>(lines.size()); ++j) {
            const CLineInfo& a = lines[i];
            const CLineInfo& b = lines[j];
            if (a.IsEqual(b, tol)) {
                Remove(lines, i);
                break;
            }
            if (ClassifySegments(a.m_startPt, a.m_endPt, b.m_startPt, b.m_endPt,
                                 m_calInfo.m_tolLine.equalPoint()) != E_Segment_Collinear) {
                continue;
            }
            if (Box(a).Contains(Box(b), kBox)) {
                Remove(lines, j);
                break;
            }
            if (Box(b).Contains(Box(a), kBox)) {
                Remove(lines, i);
                break;
            }
        }
    }
}

void PlainEngine::UpdateLinePtByNearestPt(Lines& lines) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].m_bValid) continue;
        const AcGePoint3d ends[2] = {lines[i].m_startPt, lines[i].m_endPt};
        double best[2] = {10000.0, 10000.0};
        AcGePoint3d place[2];
        for (size_t j = 0; j < lines.size() && (best[0] > 0 || best[1] > 0); ++j) {
            if (j == i) continue;
            const AcGePoint3d& p = lines[j].m_startPt;
            const AcGePoint3d& q = lines[j].m_endPt;
            for (int n = 0; n < 2; ++n) {
                for (const AcGePoint3d& to : {p, q, Segment(lines[j]).closestPointTo(ends[n])}) {
                    if (best[n] > 0 && ends[n].distanceTo(to) < best[n]) {
                        best[n] = ends[n].distanceTo(to);
                        place[n] = to;
                    }
                }
            }
        }
        if (best[0] > 0 && best[0] < 0.5) lines[i].m_startPt = place[0];
        if (best[1] > 0 && best[1] < 0.5) lines[i].m_endPt = place[1];
    }
}

void PlainEngine::RemoveShortLine(Lines& lines) {
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        const CLineInfo& line = lines[i];
        if (!line.m_bValid || line.m_startPt.distanceTo(line.m_endPt) >= 0.5) continue;
        bool start = false;
        bool end = false;
        for (int j = 0; j < static_cast<int>(lines.size()) && !(start && end); ++j) {
            if (j == i) continue;
            const AcGeLineSeg3d other = Segment(lines[j]);
            start = start || IsPointOnSegment(other, line.m_startPt, true, m_calInfo.m_tolPoint);
            end = end || IsPointOnSegment(other, line.m_endPt, true, m_calInfo.m_tolPoint);
        }
        if (!start || !end) Remove(lines, i);
    }
}

void PlainEngine::RemoveLineByWalter(Lines& lines, E_RemoveLine_Dir dir) {
    double outermost = 0.0;
    for (const CLineInfo& line : lines) {
        for (const double x : {line.m_startPt.x, line.m_endPt.x}) {
            if (dir == E_Dir_Right) {
                outermost = (std::max)(outermost, x);
            } else if (outermost == 0.0 || x < outermost) {
                outermost = x;
            }
        }
    }
    if (outermost == 0.0) return;
    const double reach = m_calInfo.m_dSideLength;
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        if (std::fabs(lines[i].m_startPt.x - outermost) > reach &&
            std::fabs(lines[i].m_endPt.x - outermost) > reach) {
            lines.erase(lines.begin() + i);
            --i;
        }
    }
}

void PlainEngine::ConnectBreakLine(E_RemoveLine_Dir dir, Lines& lines) {
    const bool byX = IsVertical(dir);
    const auto key = [byX](const CLineInfo& line) {
        return byX ? line.m_startPt.x : -line.m_startPt.y;
    };
    const auto isBefore = [&](const CLineInfo& a, const CLineInfo& b) { return key(a) < key(b); };
    UpdateLineStartEndPt(dir, lines);
    std::stable_sort(lines.begin(), lines.end(), isBefore);
    // Bridges stand between their neighbours before the second sort, which keeps equal keys in
    // order.
    Lines joined;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0 && !lines[i].m_startPt.isEqualTo(lines[i - 1].m_endPt, m_calInfo.m_tolPoint)) {
            CLineInfo bridge;
            bridge.m_startPt = lines[i - 1].m_endPt;
            bridge.m_endPt = lines[i].m_startPt;
            joined.push_back(bridge);
        }
        joined.push_back(lines[i]);
    }
    std::stable_sort(joined.begin(), joined.end(), isBefore);
    lines = joined;
}

void PlainEngine::GetLineInfoPt(const Lines& lines, bool forward, bool, AcArray<AcGePoint3d>& pts) {
    for (size_t i = 0; i < lines.size(); ++i) {
        const CLineInfo& line = forward ? lines[i] : lines[lines.size() - 1 - i];
        const AcGePoint3d first = forward ? line.m_startPt : line.m_endPt;
        const AcGePoint3d second = forward ? line.m_endPt : line.m_startPt;
        if (!IsPtExist(pts, first)) pts.append(first);
        if (!IsPtExist(pts, second)) pts.append(second);
    }
}

std::vector<PlainEngine::Lines> PlainEngine::BreakAndSee(
    const Lines& lines, bool withVertical, bool shiftRight,
    const std::vector<E_RemoveLine_Dir>& dirs) {
    Lines copy = lines;
    BreakLines2(copy, withVertical, shiftRight);
    std::vector<Lines> seen;
    for (const E_RemoveLine_Dir dir : dirs) seen.push_back(RemoveLine2(dir, copy));
    // Pieces of broken lines end without an entity.
    const auto isWhole = [&](const CLineInfo& line) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const CLineInfo& whole) { return whole.m_id == line.m_id; });
    };
    for (CLineInfo& line : copy) {
        if (!isWhole(line)) EraseById(line.m_id);
    }
    return seen;
}

}  // namespace test
