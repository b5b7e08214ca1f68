// The envelope by boundary tracing: a frame around the drawing, and the host's loop between the
// two.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "AddEntity.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "EncircleRun.h"
#include "EncircleTrace.h"
#include "EntityBox.h"
#include "EnvelopePolyline.h"
#include "EraseEntity.h"
#include "ShowBox.h"
#include "SideOrder.h"
#include "Tolerances.h"
#include "WorkingSet.h"

namespace {

// The frame stands so far off the drawing, and the seed lies so far inside the frame, in drawing
// units; the axis goes its overhang beyond.
constexpr double kFrameWidening = 50.0;
constexpr double kSeedInset = 1.0;

// Fewer vertices enclose nothing, unless one of them bulges.
constexpr size_t kFewestVertices = 3;

struct SVertex {
    AcGePoint3d m_point;
    double m_dBulge;
};
using Outline = std::vector<SVertex>;

// Pieces of a boundary that belong to nobody.
class CTracedLoops {
public:
    explicit CTracedLoops(const AcGePoint3d& seed) {
        // A host that finds no boundary leaves nothing; that is no outline, not an error.
        if (acedTraceBoundary(seed, true, m_loops) != Acad::eOk) {
            DeleteAll();
        }
    }
    ~CTracedLoops() { DeleteAll(); }
    CTracedLoops(const CTracedLoops&) = delete;
    CTracedLoops& operator=(const CTracedLoops&) = delete;

    int GetCount() const { return m_loops.length(); }
    // Null for a loop that is no polyline.
    const AcDbPolyline* GetLoop(int index) const {
        return AcDbPolyline::cast(static_cast<AcDbEntity*>(m_loops[index]));
    }

private:
    void DeleteAll() {
        for (int i = 0; i < m_loops.length(); ++i) {
            delete static_cast<AcDbEntity*>(m_loops[i]);
        }
        m_loops.removeAll();
    }
    AcDbVoidPtrArray m_loops;
};

// The auxiliary lines; gone at the end of the scope.
class CTraceFrame {
public:
    CTraceFrame() = default;
    ~CTraceFrame() {
        for (const AcDbObjectId& id : m_ids) {
            EraseById(id);
        }
    }
    CTraceFrame(const CTraceFrame&) = delete;
    CTraceFrame& operator=(const CTraceFrame&) = delete;

    void AddLine(double x1, double y1, double x2, double y2) {
        m_ids.push_back(::AddLine(AcGePoint3d(x1, y1, 0.0), AcGePoint3d(x2, y2, 0.0),
                                  kByLayerColour, ACDB_MODEL_SPACE));
    }
    void AddBorder(const CQZRect& box) {
        AddLine(box.min.x, box.min.y, box.max.x, box.min.y);
        AddLine(box.max.x, box.min.y, box.max.x, box.max.y);
        AddLine(box.max.x, box.max.y, box.min.x, box.max.y);
        AddLine(box.min.x, box.max.y, box.min.x, box.min.y);
    }

private:
    std::vector<AcDbObjectId> m_ids;
};

// The part of the frame's box on the side of the axis that is computed; all of it without one.
CQZRect GetHalf(const CQZRect& box, E_RemoveLine_Dir side, double dAxis) {
    CQZRect half = box;
    switch (side) {
        case E_Dir_Top:
            half.min.y = dAxis;
            break;
        case E_Dir_Bottom:
            half.max.y = dAxis;
            break;
        case E_Dir_Right:
            half.min.x = dAxis;
            break;
        case E_Dir_Left:
            half.max.x = dAxis;
            break;
        default:
            break;
    }
    return half;
}

// In the corner of the frame that lies farthest from the drawing's axis.
AcGePoint3d GetSeed(const CQZRect& half, E_RemoveLine_Dir side) {
    const double x = side == E_Dir_Right ? half.max.x - kSeedInset : half.min.x + kSeedInset;
    const double y = side == E_Dir_Bottom ? half.min.y + kSeedInset : half.max.y - kSeedInset;
    // Not const: the host may take its arguments as plain arrays.
    ads_point seed = {x, y, 0.0};
    ads_point inUcs = {};
    // A plan drawing has no other coordinates than the world's.
    return acdbWcs2Ucs(seed, inUcs, false) ? asPnt3d(inUcs) : asPnt3d(seed);
}

// The loop's vertices inside the box, in order, beginning after those that are dropped. A segment
// that leaves the box is straight.
Outline ReadInside(const AcDbPolyline* pLoop, const CQZRect& box) {
    Outline all;
    std::vector<char> inside;
    for (unsigned int i = 0; i < pLoop->numVerts(); ++i) {
        SVertex vertex;
        if (pLoop->getPointAt(i, vertex.m_point) != Acad::eOk ||
            pLoop->getBulgeAt(i, vertex.m_dBulge) != Acad::eOk) {
            return Outline();
        }
        vertex.m_point.z = 0.0;
        all.push_back(vertex);
        inside.push_back(box.Contains(CQZRect(vertex.m_point, vertex.m_point), 0.0) ? 1 : 0);
    }
    size_t first = 0;
    while (first < all.size() &&
           (inside[first] == 0 || inside[(first + all.size() - 1) % all.size()] != 0)) {
        ++first;
    }
    Outline kept;
    for (size_t i = 0; i < all.size(); ++i) {
        const size_t at = (first + i) % all.size();
        if (inside[at] != 0) {
            kept.push_back(all[at]);
            if (inside[(at + 1) % all.size()] == 0) {
                kept.back().m_dBulge = 0.0;
            }
        }
    }
    return kept;
}

bool EnclosesSomething(const Outline& outline) {
    return outline.size() >= kFewestVertices ||
           (outline.size() == 2 && (outline[0].m_dBulge != 0.0 || outline[1].m_dBulge != 0.0));
}

// Walks the outline the other way; a bulge belongs to the segment after its vertex.
void Reverse(Outline& outline) {
    Outline reversed;
    for (size_t i = outline.size(); i-- > 0;) {
        const size_t before = (i + outline.size() - 1) % outline.size();
        reversed.push_back({outline[i].m_point, -outline[before].m_dBulge});
    }
    outline.swap(reversed);
}

// Twice the area inside, positive counter-clockwise; of the vertices alone, which turn as the
// bulges between them do unless there are two.
double GetTurnArea(const Outline& outline) {
    double area = 0.0;
    for (size_t i = 0; i < outline.size(); ++i) {
        const AcGePoint3d& p = outline[i].m_point;
        const AcGePoint3d& q = outline[(i + 1) % outline.size()].m_point;
        area +=
            (p.x - outline[0].m_point.x) * (q.y - p.y) - (q.x - p.x) * (p.y - outline[0].m_point.y);
    }
    return outline.size() > 2 ? area : outline.front().m_dBulge;
}

// As the live pipeline goes around: clockwise from the lowest of the leftmost vertices.
void GoAround(Outline& outline) {
    if (GetTurnArea(outline) > 0.0) {
        Reverse(outline);
    }
    std::rotate(
        outline.begin(),
        std::min_element(outline.begin(), outline.end(),
                         [](const SVertex& a, const SVertex& b) {
                             return a.m_point.x < b.m_point.x ||
                                    (a.m_point.x == b.m_point.x && a.m_point.y < b.m_point.y);
                         }),
        outline.end());
}

// Of the islands the one that covers most.
Outline ReadLargestIsland(const CTracedLoops& loops, const CQZRect& box) {
    Outline largest;
    double largestArea = 0.0;
    for (int i = 1; i < loops.GetCount(); ++i) {
        const AcDbPolyline* pLoop = loops.GetLoop(i);
        double area = 0.0;
        if (pLoop != nullptr && pLoop->getArea(area) == Acad::eOk && area > largestArea) {
            largest = ReadInside(pLoop, box);
            largestArea = area;
        }
    }
    return largest;
}

// The outline runs as that of the live pipeline: from left to right, or from top to bottom.
Outline ReadOutline(const CTracedLoops& loops, const CQZRect& box, E_RemoveLine_Dir side) {
    const AcDbPolyline* pOuter = loops.GetCount() > 0 ? loops.GetLoop(0) : nullptr;
    if (pOuter == nullptr) {
        return Outline();
    }
    Outline outline = ReadInside(pOuter, box);
    if (!EnclosesSomething(outline)) {
        outline = ReadLargestIsland(loops, box);
        if (!outline.empty()) {
            GoAround(outline);
        }
    } else if (IsVerticalSide(side) ? outline.front().m_point.x > outline.back().m_point.x
                                    : outline.front().m_point.y < outline.back().m_point.y) {
        Reverse(outline);
    }
    return outline;
}

}  // namespace

void CEncircleLine::GetEncircleLineByHatch(const AcDbObjectIdArray& ids, AcDbObjectId& outId) {
    CEncircleRun run(*this);
    if (!run.IsReady()) {
        return;
    }
    run.Watch([&] {
        const int firstCurve = m_cloneIds.length();
        const std::vector<CLineInfo> lines =
            MakeWorkingSet(PrepareLines(run.Clone(ids, m_calInfo.m_bExcludeDashed), true));
        CEncircleTrace::Count("working", lines.size());
        for (int i = firstCurve; i < m_cloneIds.length(); ++i) {
            // Its chords stand for it: the boundary of a spline need not come back as a polyline.
            if (!m_cloneIds[i].objectClass()->isDerivedFrom(AcDbArc::desc())) {
                EraseById(m_cloneIds[i]);
            }
        }
        double axis = 0.0;
        E_RemoveLine_Dir side = m_calInfo.m_nHalfSide != 0 ? E_Dir_Bottom : E_Dir_Top;
        if (!GetMidLineAxisValue(axis)) {
            side = E_Dir_None;
        }
        const CQZRect box = GetTraceBox(lines, firstCurve);
        if (box.IsValid()) {
            TraceOutline(side, axis, box, outId);
        }
    });
}

CQZRect CEncircleLine::GetTraceBox(const std::vector<CLineInfo>& lines, int nFirstCurve) const {
    CQZRect box(true);
    for (const CLineInfo& line : lines) {
        box.Extend(CQZRect(line.m_startPt, line.m_endPt));
    }
    for (int i = nFirstCurve; i < m_cloneIds.length(); ++i) {
        box.Extend(GetEntityBox(m_cloneIds[i]));
    }
    return box;
}

void CEncircleLine::TraceOutline(E_RemoveLine_Dir side, double dAxis, const CQZRect& box,
                                 AcDbObjectId& outId) {
    CQZRect frameBox = box;
    if (side != E_Dir_None) {
        frameBox.Extend(IsVerticalSide(side) ? AcGePoint3d(box.min.x, dAxis, 0.0)
                                             : AcGePoint3d(dAxis, box.min.y, 0.0));
    }
    frameBox.Widen(kFrameWidening);
    const CQZRect half = GetHalf(frameBox, side, dAxis);
    Outline outline;
    {
        CTraceFrame frame;
        frame.AddBorder(half);
        if (side != E_Dir_None && IsVerticalSide(side)) {
            frame.AddLine(half.min.x - kAxisOverhang, dAxis, half.max.x + kAxisOverhang, dAxis);
        } else if (side != E_Dir_None) {
            frame.AddLine(dAxis, half.min.y - kAxisOverhang, dAxis, half.max.y + kAxisOverhang);
        }
        // Tracing sees what is on the screen. A program without windows has no view, and traces all
        // the same; a host that cannot show the box will find no boundary.
        static_cast<void>(ShowBox(frameBox));
        const CTracedLoops loops(GetSeed(half, side));
        CEncircleTrace::Count("loops", static_cast<size_t>(loops.GetCount()));
        outline = ReadOutline(loops, box, side);
    }
    CEncircleTrace::Count("points", outline.size());
    const CCurrentLayerGuard layer(kEnvelopeLayer);
    if (!EnclosesSomething(outline) || layer.GetLayerId().isNull()) {
        return;
    }
    std::unique_ptr<AcDbPolyline> polyline = MakePolyline(layer.GetLayerId());
    if (polyline == nullptr) {
        return;
    }
    int vertex = 0;
    for (const SVertex& v : outline) {
        AddVertex(polyline.get(), v.m_point, v.m_dBulge, vertex);
    }
    AddEnvelope(std::move(polyline), outId);
}
