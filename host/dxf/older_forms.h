// Entities in the words of versions that do not have them.
#pragma once

#include <memory>
#include <vector>

#include "dbents.h"

namespace host::dxf {

// What an entity becomes in a version without its class: light polylines, ellipses, splines and
// leaders a heavy polyline, everything else the pieces it explodes into. Non-resident, with the
// layer, colour and linetype of the original. Empty when there is no such form.
//
// Ellipses and splines become straight segments whose ends lie on the curve, kSegmentsPerCurve of
// them.
std::vector<std::unique_ptr<AcDbEntity>> OlderForms(const AcDbEntity& entity);

constexpr int kSegmentsPerCurve = 128;

// Vertices of a polyline that no database has.
const std::vector<std::unique_ptr<AcDbEntity>>& FreshVertices(const AcDbEntity& polyline);

}  // namespace host::dxf
