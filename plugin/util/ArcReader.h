// Arcs of the drawing as they lie in the world's XY plane. An arc whose normal points down (a
// mirrored one) is stored clockwise; read here, every arc runs counter-clockwise from start to end.
#pragma once

#include "arxHeaders.h"

struct SArc {
    AcGePoint3d m_centre;
    double m_dRadius = 0.0;
    double m_dStartAngle = 0.0;  // radians in [0, 2 pi), counter-clockwise from +x
    double m_dEndAngle = 0.0;
    AcGePoint3d m_start;
    AcGePoint3d m_end;
};

// Reads an arc; arc is changed only on success. False when the object cannot be opened as an
// AcDbArc.
bool ReadArc(const AcDbObjectId& id, SArc& arc);

// What the two readers below answer for anything but an arc.
constexpr int kNoArc = 2;

// Centre, or the two ends counter-clockwise, of an arc. 0 on success; kNoArc when the object
// cannot be opened as an arc, the points then keep their values.
int GetArcCentre(const AcDbObjectId& id, AcGePoint3d& centre);
int GetArcEndPoints(const AcDbObjectId& id, AcGePoint3d& start, AcGePoint3d& end);

// Whether the point lies on the bounded arc: its distance from the centre is within tol of the
// radius (drawing units), and its direction lies in the arc's angles, the ends within tol (the same
// number, in radians). False when id is no arc.
bool IsPointOnArc(const SArc& arc, const AcGePoint3d& pt, double tol);
bool IsPointOnArc(const AcDbObjectId& id, const AcGePoint3d& pt, double tol);

// The angle from start to end, radians in (0, 2 pi]; an arc whose ends coincide is a full turn.
double GetSweep(const SArc& arc);

// Distance in the XY plane from the point to the nearest point of the bounded arc.
double GetDistanceToArc(const SArc& arc, const AcGePoint3d& pt);
