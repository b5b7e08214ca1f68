// The points by which an entity is taken hold of and changed.
#pragma once

#include <vector>

#include "dbmain.h"

namespace host {

struct Grip {
    enum Kind {
        kMove,     // the whole entity follows
        kStart,    // of a line or an arc
        kEnd,      //
        kThrough,  // the middle of an arc, which stays on its ends
        kRadius,   // a quadrant of a circle
        kVertex,   // of a polyline
        kSegment   // both ends of a straight segment of a polyline
    };
    Kind kind = kMove;
    AcGePoint3d at;
    unsigned index = 0;  // of the vertex, or of the segment's first one
};

// Those of an entity that is open; of one that is not taken apart here the corner where it stands.
std::vector<Grip> GripsOf(const AcDbEntity& entity);

// Moves a grip, and of the entity what hangs on it. The entity is open for write.
// result  eDegenerateGeometry when an arc or a circle would become nothing
Acad::ErrorStatus MoveGrip(AcDbEntity& entity, const Grip& grip, const AcGePoint3d& to);

}  // namespace host
