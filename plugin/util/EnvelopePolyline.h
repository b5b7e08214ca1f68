// Putting a finished outline into the drawing.
#pragma once

#include <memory>

#include "StdAfx.h"

// An empty polyline on the layer, with the line type ByLayer whatever the drawing's current
// setting; null when the layer cannot be given.
std::unique_ptr<AcDbPolyline> MakePolyline(const AcDbObjectId& layerId);

// Appends a vertex of the default width. A vertex that the host refuses is left out.
//
// dBulge        of the segment that starts here: tan(sweep / 4), counter-clockwise positive
// nVertexIndex  where the vertex goes; grows by one when it went in
void AddVertex(AcDbPolyline* pPolyline, const AcGePoint3d& pt, double dBulge, int& nVertexIndex);

// Closes the polyline and appends it to model space. id receives it; keeps its value when that
// fails.
void AddEnvelope(std::unique_ptr<AcDbPolyline> polyline, AcDbObjectId& id);
