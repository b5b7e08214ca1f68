#include "StdAfx.h"

#include "CentreAxis.h"

#include <algorithm>
#include <cmath>

#include "DrawnWalk.h"
#include "plane/curve.h"

namespace {

constexpr double kReach = 0.01;      // of a centre line's length, between it and the centre
constexpr double kUpright = 1e-9;    // of its height, the width of a line that is none
constexpr double kLevelReach = 1.0;  // drawing units along a level axis, which has no length

plane::Point PlaneOf(const AcGePoint3d& pt) { return {pt.x, pt.y}; }

// Rightwards, or upwards when upright.
plane::Curve Directed(const plane::Curve& line) {
    const plane::Vector d = line.Chord();
    const bool isUpright = std::fabs(d.x) <= kUpright * std::fabs(d.y);
    return (isUpright ? d.y < 0.0 : d.x < 0.0) ? line.Reversed() : line;
}

}  // namespace

bool FindCentreAxis(const AcDbObjectIdArray& ids, const AcGePoint3d& centre, AcGePoint3d& from,
                    AcGePoint3d& to) {
    from = centre;
    // However far out the centre lies, the two points stay apart.
    to.set(centre.x + (std::max)(kLevelReach, std::fabs(centre.x)), centre.y, centre.z);
    if (ids.isEmpty()) {
        return false;
    }
    CDrawnWalk walk(ids[0].database());
    double longest = 0.0;
    walk.Walk(ids, [&](const SDrawnItem& item) {
        const AcDbLine* const pLine = AcDbLine::cast(&item.m_entity);
        if (pLine == nullptr || !item.IsShown() ||
            walk.Linetypes().Look(item.m_linetypeId).m_kind != ELinetypeKind::Centre) {
            return;
        }
        const plane::Curve line = plane::MakeLine(PlaneOf(item.m_place * pLine->startPoint()),
                                                  PlaneOf(item.m_place * pLine->endPoint()));
        const double length = line.Length();
        if (!(length > longest) || plane::Distance(line, PlaneOf(centre)) > kReach * length) {
            return;
        }
        longest = length;
        const plane::Curve directed = Directed(line);
        from.set(directed.from.x, directed.from.y, 0.0);
        to.set(directed.to.x, directed.to.y, 0.0);
    });
    return longest > 0.0;
}
