#pragma once

// The axis point of an envelope: the start of its longest horizontal edge (ends within 0.0001 in y;
// of equal ones the first); of the closing edge the polyline's first vertex, where it ends. An
// envelope's longest horizontal edge is the one that closes it along the axis.
//
// result  false, point unchanged, when id is no polyline or no edge is horizontal
bool GetEnvelopeAxisPoint(const AcDbObjectId& id, AcGePoint3d& pt);
