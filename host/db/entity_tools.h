// Small pieces that the entity classes share.
#pragma once

#include "dbmain.h"

namespace host {

// Lengths below this, in drawing units, count as zero for directions and radii. Absolute: it only
// keeps divisions meaningful.
constexpr double kZeroLength = 1e-12;

// How far axes may be from perpendicular or from equal scale, relative to their length, for a
// matrix to count as a similarity. Matrices composed of a dozen turns stay far below it.
constexpr double kShapeTol = 1e-9;

// The box if anything was added, else eNullExtents.
Acad::ErrorStatus FinishExtents(const AcDbExtents& found, AcDbExtents& out);

// Adds the box moved by thickness along the normal.
void AddThickness(AcDbExtents& box, const AcGeVector3d& normal, double thickness);

// True when every figure keeps its shape: perpendicular axes of one scale, mirroring allowed.
bool IsSimilarity(const AcGeMatrix3d& matrix);

// True when figures in the plane of the normal keep their shape; scale receives their factor.
bool KeepsShapeInPlane(const AcGeMatrix3d& matrix, const AcGeVector3d& normal, double& scale);

// Normal of the moved plane, unit: the image of the cross product of two of its directions, so
// that mirrored figures keep running the same way about it.
AcGeVector3d MovedNormal(const AcGeMatrix3d& matrix, const AcGeVector3d& normal);

// Directions of an OCS.
struct Plane {
    AcGeVector3d x, y, normal;
};
Plane PlaneOf(const AcGeVector3d& normal);

// A thickness along the normal after the move.
double MovedThickness(const AcGeMatrix3d& matrix, const AcGeVector3d& oldNormal,
                      const AcGeVector3d& newNormal, double thickness);

// Takes over layer, colour, linetype, scale, weight and visibility, whatever the open mode.
void CopyProperties(const AcDbEntity& from, AcDbEntity& to);

}  // namespace host
