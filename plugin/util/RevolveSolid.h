// Solids of revolution from curves of the working database.
#pragma once

#include "arxHeaders.h"

// Revolves a closed planar curve about an axis in its plane into a solid, with the drawing's
// current properties, in model space.
//
// dAngle   radians, right-handed about axisDir
// drawing  the curve stays; the new solid is closed
// result   the solid; null when the curve cannot be opened or revolved: open, crossing itself or
//          the axis, without area
AcDbObjectId RevolveCurve(const AcDbObjectId& curveId, const AcGePoint3d& axisPoint,
                          const AcGeVector3d& axisDir, double dAngle);

// The same by way of a region of the curve's pieces, for curves that the modeller does not take as
// they are but whose pieces close within its tolerance.
AcDbObjectId RevolveThroughRegion(const AcDbObjectId& curveId, const AcGePoint3d& axisPoint,
                                  const AcGeVector3d& axisDir, double dAngle);

// An envelope's solid: a full turn about the horizontal through the centre point, or about its own
// axis where it is marked (see EnvelopeAxis.h); directly, else through a region. Null when neither
// works.
AcDbObjectId RevolveEnvelope(const AcDbObjectId& envelopeId, const AcGePoint3d& centre);
