// The passes of the earlier pipelines as plain loops.
#include <algorithm>
#include <cmath>

#include "engine/plain_engine.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"
#include "plugin/util/SegmentClass.h"

namespace test {

void PlainEngine::RemoveCrossLine(Lines& lines) {
    const auto level = [](double a, double b) { return std::fabs(a - b) < 1e-6; };
    const auto box = [](const CLineInfo& line) { return CQZRect(line.m_startPt, line.m_endPt); };
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        if (!lines[i].m_bValid) continue;
        for (int j = i + 1; j < static_cast<int>(lines.size()); ++j) {
            CLineInfo& a = lines[i];
            CLineInfo& b = lines[j];
            if (ClassifySegments(a.m_startPt, a.m_endPt, b.m_startPt, b.m_endPt,
                                 m_calInfo.m_tolHorVer.equalPoint()) != E_Segment_Collinear)
                continue;
            if (!box(a).Overlaps(box(b), 1e-6)) continue;
            if (!level(a.m_startPt.x, a.m_endPt.x) && !level(a.m_startPt.y, a.m_endPt.y)) continue;
            EraseById(a.m_id);
            EraseById(b.m_id);
            CQZRect both = box(a);
            both.Extend(box(b));
            b.m_startPt = AcGePoint3d(both.min.x, both.min.y, 0);
            b.m_endPt = AcGePoint3d(both.max.x, both.max.y, 0);
            b.m_id = AddLine(b.m_startPt, b.m_endPt, 256, ACDB_MODEL_SPACE);
            lines.erase(lines.begin() + i);
            --i;
            break;
        }
    }
}

PlainEngine::Lines PlainEngine::RemoveLine(E_RemoveLine_Dir dir, const Lines& lines) {
    Lines v = lines;
    UpdateLineStartEndPt(dir, v);
    const Lines r = v;
    const bool vertical = dir == E_Dir_Bottom || dir == E_Dir_Top;
    for (int i = 0; i < static_cast<int>(v.size()); ++i) {
        const AcGePoint3d& s = v[i].m_startPt;
        const AcGePoint3d& e = v[i].m_endPt;
        const AcGePoint3d m(s.x / 2 + e.x / 2, s.y / 2 + e.y / 2, s.z / 2 + e.z / 2);
        bool hidden =
            m_calInfo.m_tolHorVer.equalPoint() > std::fabs(vertical ? s.x - e.x : s.y - e.y);
        for (const CLineInfo& other : r) {
            if (other.m_id == v[i].m_id && !v[i].m_id.isNull()) continue;
            if (other.IsEqual(v[i], m_calInfo.m_tolPoint)) continue;
            hidden = hidden || IsPtInLineSpecifiedDir(m, other.m_startPt, other.m_endPt, dir);
        }
        if (!hidden) continue;
        EraseById(v[i].m_id);
        v.erase(v.begin() + i);
        --i;
    }
    return v;
}

bool PlainEngine::IsPtInLineSpecifiedDir(AcGePoint3d p, AcGePoint3d a, AcGePoint3d b,
                                         E_RemoveLine_Dir dir) {
    const double tol = m_calInfo.m_tolPoint.equalPoint();
    const bool vertical = dir == E_Dir_Bottom || dir == E_Dir_Top;
    const double pc = vertical ? p.x : p.y;
    const double ac = vertical ? a.x : a.y;
    const double bc = vertical ? b.x : b.y;
    if (!((ac < pc && pc < bc) || (bc < pc && pc < ac))) return false;
    if (std::fabs(pc - ac) < tol || std::fabs(pc - bc) < tol) return false;

    const double line = m_calInfo.m_tolLine.equalPoint();
    const bool horizontal = std::fabs(a.y - b.y) < line;
    const bool upright = !horizontal && std::fabs(a.x - b.x) < line;
    const bool oblique = !horizontal && !upright;
    const double cross = (b.x - a.x) * (p.y - a.y) - (p.x - a.x) * (b.y - a.y);
    const int side = std::fabs(cross) < tol ? 0 : cross > 0 ? 1 : -1;
    const auto greater = [tol](double x, double y) { return !(std::fabs(x - y) < tol) && x > y; };
    switch (dir) {
        case E_Dir_Bottom:
            return (side == 1 && oblique) || (horizontal && greater(p.y, a.y));
        case E_Dir_Top:
            return (side == -1 && oblique) || (horizontal && greater(a.y, p.y));
        case E_Dir_Right:
            return (side == -1 && oblique) || (upright && greater(a.x, p.x));
        case E_Dir_Left:
            return (side == 1 && oblique) || (upright && greater(p.x, a.x));
        default:
            return false;
    }
}

}  // namespace test
