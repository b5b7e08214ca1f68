// The exact envelope of a request.
#pragma once

#include "ExactEnvelope.h"
#include "product/base/Outline.h"
#include "product/tool/ToolRequest.h"

namespace product {

// The request in the engine's words, for some entities of one database.
//
// curves  when there are any, they stand for the entities
// takes   what of the entities takes part
SExactRequest ExactRequestOf(const ToolParameters& parameters, const Axis& axis,
                             const AcArray<AcDbObjectId>& ids,
                             const std::vector<plane::Curve>& curves = {},
                             const detect::ItemFilter& takes = {});

// Finds and draws it.
//
// drawing  the working database gains the polyline and its layer
// id       receives the polyline
// fails    Failure: Request for lengths that make no sense for the drawing, NoResult for a drawing
//          without an envelope, with the reason and the place, or when it cannot be drawn
SExactResult DrawExact(const SExactRequest& request, AcDbObjectId& id);

// The corners of a found envelope; the edge from the last to the first closes it along the axis.
std::vector<Vertex> RingOf(const SExactResult& result);

// What a left out entity is told as: "dashed or centre line", "locked layer", ...
const char* NameOf(SExactResult::E_LeftOut reason);

}  // namespace product
