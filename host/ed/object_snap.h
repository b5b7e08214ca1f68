// Object snap: the exact points of what is drawn near the pointer.
#pragma once

#include <string>
#include <vector>

#include "dbid.h"
#include "gepnt3d.h"
#include "host/ed/shown_curves.h"

namespace host {

// Bits as in the system variable OSMODE.
enum SnapMode : unsigned {
    kSnapEnd = 1,
    kSnapMiddle = 2,
    kSnapCentre = 4,
    kSnapNode = 8,  // points, texts and references where they stand
    kSnapQuadrant = 16,
    kSnapIntersection = 32,
    kSnapPerpendicular = 128,
    kSnapNearest = 512,
    kSnapCentreLine = 0x10000,  // the nearest point of a centre line; the host's own
    kSnapUsual = kSnapEnd | kSnapMiddle | kSnapCentre | kSnapNode | kSnapQuadrant |
                 kSnapIntersection | kSnapPerpendicular | kSnapCentreLine
};

struct SnapModeName {
    SnapMode mode;
    const wchar_t* word;   // as typed at a prompt for a point: the three capitals are enough
    const wchar_t* label;  // as shown
};
// In the order in which they are shown.
const std::vector<SnapModeName>& SnapModeNames();

// What one entity gives to snap to, worked out once.
struct SnapSource {
    AcDbObjectId id;
    std::vector<ShownCurve> curves;
    std::vector<plane::Point> nodes;
    std::vector<plane::Point> centres;    // of ellipses; circles and arcs have theirs in the curves
    std::vector<plane::Point> quadrants;  // likewise
    bool isCentreLine = false;            // by its linetype, own or of its layer
};
SnapSource MakeSnapSource(AcDbObjectId id);

struct Snap {
    SnapMode mode = kSnapEnd;
    AcGePoint3d point;
    AcDbObjectId id;
};

// The points of the sources that the pointer means, the likeliest first: those at most the aperture
// (drawing units) away by distance; then feet of perpendiculars from the base and centres of what
// the pointer is on; then the nearest point of a centre line; then that of any curve. Each place
// comes once.
//
// base  null: no perpendiculars
// cost  linear in the sources' curves, and in the pairs of those that pass within the aperture
std::vector<Snap> FindSnaps(const std::vector<const SnapSource*>& sources, const AcGePoint3d& at,
                            double aperture, unsigned modes, const AcGePoint3d* base);

}  // namespace host
