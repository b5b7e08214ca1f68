#include "host/ed/object_snap.h"

#include <algorithm>
#include <cmath>

#include "dbblkref.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/base/angles.h"
#include "plane/linetype_kind.h"
#include "plane/meeting.h"

namespace host {
namespace {

// Curves that are looked at for intersections in one place; a heap of thousands is nobody's aim.
constexpr size_t kMostCrossing = 64;

plane::Point Flat(const AcGePoint3d& p) { return {p.x, p.y}; }

// How a found point ranks: what the pointer is at before what it is merely on.
enum Rank { kAt, kOn, kOnCentreLine, kOnAny };

struct Candidate {
    Snap snap;
    Rank rank;
    double distance;
};

class Finder {
public:
    Finder(const plane::Point& at, double aperture, unsigned modes, const AcGePoint3d* base)
        : m_at(at), m_aperture(aperture), m_modes(modes), m_base(base) {}

    void Look(const SnapSource& source) {
        m_id = source.id;
        for (const plane::Point& node : source.nodes) TryPoint(kSnapNode, node);
        for (const plane::Point& centre : source.centres) TryPoint(kSnapCentre, centre);
        for (const plane::Point& quadrant : source.quadrants) TryPoint(kSnapQuadrant, quadrant);
        const std::vector<ShownCurve>& curves = source.curves;
        for (size_t i = 0; i < curves.size(); ++i) {
            const ShownCurve& curve = curves[i];
            TryCurve(curve, source.isCentreLine);
            if (curve.shape.IsArc()) TryArc(curve.shape);
            if (IsHalfOfCircle(curves, i)) continue;
            const bool joinsBefore =
                curve.isChord && i > 0 && Meets(curves[i - 1].shape.to, curve.shape.from);
            const bool joinsAfter = curve.isChord && i + 1 < curves.size() &&
                                    Meets(curve.shape.to, curves[i + 1].shape.from);
            if (!joinsBefore) TryPoint(kSnapEnd, curve.shape.from);
            if (!joinsAfter) TryPoint(kSnapEnd, curve.shape.to);
            if (!curve.isChord) TryPoint(kSnapMiddle, curve.shape.Middle());
        }
    }

    void LookForCrossings() {
        if ((m_modes & kSnapIntersection) == 0) return;
        std::vector<plane::Point> meetings;
        for (size_t i = 0; i < m_through.size(); ++i)
            for (size_t k = i + 1; k < m_through.size(); ++k)
                AppendMeetings(*m_through[i], *m_through[k], kNodeTol, meetings);
        for (const plane::Point& meeting : meetings) TryPoint(kSnapIntersection, meeting);
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
    static bool IsHalfOfCircle(const std::vector<ShownCurve>& curves, size_t i) {
        const int source = curves[i].source;
        return (i > 0 && curves[i - 1].source == source) ||
               (i + 1 < curves.size() && curves[i + 1].source == source);
    }
    static bool Meets(const plane::Point& a, const plane::Point& b) {
        return Distance(a, b) <= kNodeTol;
    }

    void Add(SnapMode mode, const plane::Point& point, Rank rank) {
        if ((m_modes & mode) == 0) return;
        m_found.push_back(
            {{mode, AcGePoint3d(point.x, point.y, 0.0), m_id}, rank, Distance(point, m_at)});
    }
    void TryPoint(SnapMode mode, const plane::Point& point) {
        if (Distance(point, m_at) <= m_aperture) Add(mode, point, kAt);
    }

    void TryArc(const plane::Curve& arc) {
        const bool isOn = Distance(arc, m_at) <= m_aperture;
        if (isOn || Distance(arc.centre, m_at) <= m_aperture)
            Add(kSnapCentre, arc.centre, isOn ? kOn : kAt);
        for (int quarter = 0; quarter < 4; ++quarter) {
            static const double kX[] = {1, 0, -1, 0}, kY[] = {0, 1, 0, -1};
            const plane::Point point{arc.centre.x + kX[quarter] * arc.radius,
                                     arc.centre.y + kY[quarter] * arc.radius};
            if (Distance(arc, point) <= kNodeTol) TryPoint(kSnapQuadrant, point);
        }
    }

    void TryCurve(const ShownCurve& curve, bool isCentreLine) {
        const plane::Curve& shape = curve.shape;
        const plane::Point nearest = NearestPoint(shape, m_at);
        if (Distance(nearest, m_at) > m_aperture) return;
        if (m_through.size() < kMostCrossing) m_through.push_back(&shape);
        if (m_base != nullptr) {
            // The foot may lie where the line would go on.
            const plane::Point base = Flat(*m_base);
            const plane::Point foot =
                shape.IsArc() ? NearestPoint(shape, base) : PointAt(shape, ShareOf(shape, base));
            if (!curve.isChord && !Meets(foot, base)) Add(kSnapPerpendicular, foot, kOn);
        }
        if (isCentreLine) Add(kSnapCentreLine, nearest, kOnCentreLine);
        Add(kSnapNearest, nearest, kOnAny);
    }

    plane::Point m_at;
    double m_aperture;
    unsigned m_modes;
    const AcGePoint3d* m_base;
    AcDbObjectId m_id;
    std::vector<const plane::Curve*> m_through;  // what passes within the aperture
    std::vector<Candidate> m_found;
};

// By the line type, own or of the layer.
bool IsCentreLine(const AcDbEntity& entity) {
    AcDbObjectId id = entity.linetypeId();
    if (entity.database() != nullptr && id == entity.database()->byLayerLinetype()) {
        const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
        if (layer.openStatus() == Acad::eOk) id = layer->linetypeObjectId();
    }
    const AcDbLinetypeTableRecordPointer linetype(id, AcDb::kForRead);
    AcString name;
    if (linetype.openStatus() != Acad::eOk || linetype->getName(name) != Acad::eOk) return false;
    std::vector<double> pattern;
    for (int i = 0; i < linetype->numDashes(); ++i) pattern.push_back(linetype->dashLengthAt(i));
    return plane::KindOfLinetype(name.kACharPtr(), pattern) == plane::LinetypeKind::Centre;
}

void AddEllipse(const AcDbEllipse& ellipse, SnapSource& source) {
    source.centres.push_back(Flat(ellipse.center()));
    double from = 0.0, to = 0.0;
    if (ellipse.getStartParam(from) != Acad::eOk || ellipse.getEndParam(to) != Acad::eOk) return;
    for (int quarter = 0; quarter < 8; ++quarter) {
        AcGePoint3d point;
        const double param = quarter * (kPi / 2);
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
    source.isCentreLine = IsCentreLine(*entity);
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
    AppendShownCurves(*entity, source.curves);
    return source;
}

std::vector<Snap> FindSnaps(const std::vector<const SnapSource*>& sources, const AcGePoint3d& at,
                            double aperture, unsigned modes, const AcGePoint3d* base) {
    Finder finder(Flat(at), aperture, modes, base);
    for (const SnapSource* const source : sources) finder.Look(*source);
    finder.LookForCrossings();
    return finder.Best();
}

}  // namespace host
