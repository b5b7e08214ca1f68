#pragma once

#include <memory>

#include "StdAfx.h"

// Says in a closed polyline that its closing edge, from the last vertex to the first, lies along
// its axis: for envelopes about an axis that is not level, where nothing else tells. The mark goes
// with the polyline wherever it is moved or turned.
//
// drawing  gains the name of the mark
// result   false when the host does not take it
bool MarkClosingEdgeAsAxis(AcDbPolyline& polyline);

// The axis of an envelope about which it is revolved: a point on it and its unit direction. That of
// the closing edge where the envelope is marked so; else level, through the start of the longest
// horizontal edge (ends within 0.0001 in y; of equal ones the first), of the closing edge the
// polyline's first vertex, where it ends. An envelope's longest horizontal edge is the one that
// closes it along the axis.
//
// result  false, nothing changed, when id is no polyline or neither is there
bool GetEnvelopeAxis(const AcDbObjectId& id, AcGePoint3d& pt, AcGeVector3d& dir);

// Whether the envelope is marked so; both are set only then.
bool GetMarkedAxis(const AcDbObjectId& id, AcGePoint3d& pt, AcGeVector3d& dir);
