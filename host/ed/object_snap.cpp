#include "host/ed/object_snap.h"

#include <algorithm>
#include <cmath>

#include "dbblkref.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbsymutl.h"
#include "host/ed/shown_curves.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

// Curves that are looked at for intersections in one place; a heap of thousands is nobody's aim.
constexpr size_t kMostCrossing = 64;

constexpr double kQuarterTurn = 1.57079632679489661923;

AcGePoint2d Flat(const AcGePoint3d& p) { return AcGePoint2d(p.x, p.y); }

// Where the curve is nearest to p, within its ends.
AcGePoint2d NearestOn(const PlaneCurve& curve, const AcGePoint2d& p) {
    return curve.PointAt((std::clamp)(curve.ParamOf(p), 0.0, 1.0));
}

// How a found point ranks: what the pointer is at before what it is merely on.
enum Rank { kAt, kOn, kOnCentreLine, kOnAny };

struct Candidate {
    Snap snap;
    Rank rank;
    double distance;
};

class Finder {
public:
    Finder(const AcGePoint2d& at, double aperture, unsigned modes, const AcGePoint3d* base)
        : m_at(at), m_aperture(aperture), m_modes(modes), m_base(base) {}

    void Look(const SnapSource& source) {
        m_id = source.id;
        for (const AcGePoint2d& node : source.nodes) TryPoint(kSnapNode, node);
        for (const AcGePoint2d& centre : source.centres) TryPoint(kSnapCentre, centre);
        for (const AcGePoint2d& quadrant : source.quadrants) TryPoint(kSnapQuadrant, quadrant);
        const std::vector<PlaneCurve>& curves = source.curves;
        for (size_t i = 0; i < curves.size(); ++i) {
            const PlaneCurve& curve = curves[i];
            TryCurve(curve, source.isCentreLine);
            if (curve.isArc) TryArc(curve);
            if (IsHalfOfCircle(curves, i)) continue;
            const bool joinsBefore =
                curve.isChord && i > 0 && Meets(curves[i - 1].end, curve.start);
            const bool joinsAfter =
                curve.isChord && i + 1 < curves.size() && Meets(curve.end, curves[i + 1].start);
            if (!joinsBefore) TryPoint(kSnapEnd, curve.start);
            if (!joinsAfter) TryPoint(kSnapEnd, curve.end);
            if (!curve.isChord) TryPoint(kSnapMiddle, curve.PointAt(0.5));
        }
    }

    void LookForCrossings() {
        if ((m_modes & kSnapIntersection) == 0) return;
        std::vector<AcGePoint2d> meetings;
        for (size_t i = 0; i < m_through.size(); ++i)
            for (size_t k = i + 1; k < m_through.size(); ++k)
                AppendMeetings(*m_through[i], *m_through[k], meetings);
        for (const AcGePoint2d& meeting : meetings) TryPoint(kSnapIntersection, meeting);
    }

    std::vector<Snap> Best() {
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const Candidate& a, const Candidate& b) {
                             return a.rank != b.rank ? a.rank < b.rank : a.distance < b.distance;
                         });
        std::vector<Snap> best;
        for (const Candidate& found : m_found) {
            const bool isKnown = std::any_of(best.begin(), best.end(), [&](const Snap& known) {
                return Meets(Flat(known.point), Flat(found.snap.point));
            });
            if (!isKnown) best.push_back(found.snap);
        }
        return best;
    }

private:
    // The two halves share their source.
    static bool IsHalfOfCircle(const std::vector<PlaneCurve>& curves, size_t i) {
        const int source = curves[i].source;
        return (i > 0 && curves[i - 1].source == source) ||
               (i + 1 < curves.size() && curves[i + 1].source == source);
    }
    static bool Meets(const AcGePoint2d& a, const AcGePoint2d& b) {
        return (a - b).length() <= kNodeTol;
    }

    void Add(SnapMode mode, const AcGePoint2d& point, Rank rank) {
        if ((m_modes & mode) == 0) return;
        m_found.push_back(
            {{mode, AcGePoint3d(point.x, point.y, 0.0), m_id}, rank, (point - m_at).length()});
    }
    void TryPoint(SnapMode mode, const AcGePoint2d& point) {
        if ((point - m_at).length() <= m_aperture) Add(mode, point, kAt);
    }

    void TryArc(const PlaneCurve& arc) {
        const bool isOn = arc.DistanceTo(m_at) <= m_aperture;
        if (isOn || (arc.center - m_at).length() <= m_aperture)
            Add(kSnapCentre, arc.center, isOn ? kOn : kAt);
        for (int quarter = 0; quarter < 4; ++quarter) {
            static const double kX[] = {1, 0, -1, 0}, kY[] = {0, 1, 0, -1};
            const AcGePoint2d point(arc.center.x + kX[quarter] * arc.radius,
                                    arc.center.y + kY[quarter] * arc.radius);
            const double param = arc.ParamOf(point);
            if (param >= 0.0 && param <= 1.0) TryPoint(kSnapQuadrant, point);
        }
    }

    void TryCurve(const PlaneCurve& curve, bool isCentreLine) {
        const AcGePoint2d nearest = NearestOn(curve, m_at);
        if ((nearest - m_at).length() > m_aperture) return;
        if (m_through.size() < kMostCrossing) m_through.push_back(&curve);
        if (m_base != nullptr) {
            // The foot may lie where the line would go on.
            const AcGePoint2d base = Flat(*m_base);
            const AcGePoint2d foot =
                curve.isArc ? NearestOn(curve, base) : curve.PointAt(curve.ParamOf(base));
            if (!curve.isChord && !Meets(foot, base)) Add(kSnapPerpendicular, foot, kOn);
        }
        if (isCentreLine) Add(kSnapCentreLine, nearest, kOnCentreLine);
        Add(kSnapNearest, nearest, kOnAny);
    }

    AcGePoint2d m_at;
    double m_aperture;
    unsigned m_modes;
    const AcGePoint3d* m_base;
    AcDbObjectId m_id;
    std::vector<const PlaneCurve*> m_through;  // what passes within the aperture
    std::vector<Candidate> m_found;
};

std::wstring LinetypeOf(const AcDbEntity& entity) {
    AcDbObjectId id = entity.linetypeId();
    if (entity.database() != nullptr && id == entity.database()->byLayerLinetype()) {
        const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
        if (layer.openStatus() == Acad::eOk) id = layer->linetypeObjectId();
    }
    AcString name;
    return acdbSymUtil()->getSymbolName(name, id) == Acad::eOk ? name.kACharPtr() : L"";
}

void AddEllipse(const AcDbEllipse& ellipse, SnapSource& source) {
    source.centres.push_back(Flat(ellipse.center()));
    double from = 0.0, to = 0.0;
    if (ellipse.getStartParam(from) != Acad::eOk || ellipse.getEndParam(to) != Acad::eOk) return;
    for (int quarter = 0; quarter < 8; ++quarter) {
        AcGePoint3d point;
        const double param = quarter * kQuarterTurn;
        if (param >= from && param <= to && ellipse.getPointAtParam(param, point) == Acad::eOk)
            source.quadrants.push_back(Flat(point));
    }
}

}  // namespace

const std::vector<SnapModeName>& SnapModeNames() {
    static const std::vector<SnapModeName> names = {
        {kSnapEnd, L"ENDpoint", L"Endpoint"},
        {kSnapMiddle, L"MIDpoint", L"Midpoint"},
        {kSnapCentre, L"CENter", L"Centre"},
        {kSnapNode, L"NODe", L"Node"},
        {kSnapQuadrant, L"QUAdrant", L"Quadrant"},
        {kSnapIntersection, L"INTersection", L"Intersection"},
        {kSnapPerpendicular, L"PERpendicular", L"Perpendicular"},
        {kSnapCentreLine, L"AXIs", L"Centre line"},
        {kSnapNearest, L"NEArest", L"Nearest"},
    };
    return names;
}

SnapSource MakeSnapSource(AcDbObjectId id) {
    SnapSource source;
    source.id = id;
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return source;
    source.isCentreLine = IsCentreLinetype(LinetypeOf(*entity));
    if (const auto* const ellipse = AcDbEllipse::cast(entity.object()))
        AddEllipse(*ellipse, source);
    if (const auto* const point = AcDbPoint::cast(entity.object()))
        source.nodes.push_back(Flat(point->position()));
    else if (const auto* const text = AcDbText::cast(entity.object()))
        source.nodes.push_back(Flat(text->position()));
    else if (const auto* const lines = AcDbMText::cast(entity.object()))
        source.nodes.push_back(Flat(lines->location()));
    else if (const auto* const block = AcDbBlockReference::cast(entity.object()))
        source.nodes.push_back(Flat(block->position()));
    AppendPlaneCurves(*entity, source.curves);
    return source;
}

std::vector<Snap> FindSnaps(const std::vector<const SnapSource*>& sources, const AcGePoint3d& at,
                            double aperture, unsigned modes, const AcGePoint3d* base) {
    Finder finder(Flat(at), aperture, modes, base);
    for (const SnapSource* const source : sources) finder.Look(*source);
    finder.LookForCrossings();
    return finder.Best();
}

bool IsCentreLinetype(const std::wstring& name) {
    const std::wstring upper = ToUpper(name);
    for (const wchar_t* const part : {L"CENTER", L"CENTRE", L"DASHDOT", L"CHAIN", L"ISO04W",
                                      L"ISO08W", L"ISO10W", L"点画", L"点划", L"中心"})
        if (upper.find(part) != std::wstring::npos) return true;
    return false;
}

}  // namespace host
