// STEP: the exchange format that every CAD system reads, as our own text.
#pragma once

#include <string>

#include "host/solid/profile.h"
#include "host/solid/step_parts.h"

namespace host::solid {

// The solid of a profile as a STEP file, application protocol 214, in the drawing's unit where STEP
// has it, else in the nearest. One solid, cavities as its voids; a face a piece, of the piece's own
// kind: planes, cylinders, cones, spheres and tori, and where a torus would meet itself the surface
// that the arc, as a rational spline, makes when it is revolved. Each face but a plane is cut along
// one seam in the profile's plane.
//
// result  the same bytes for the same profile and options on every machine; lines end with \n.
// cost    linear in the number of pieces, some microseconds each.
// source  ISO 10303-21 for the text, ISO 10303-42 and -214 for the entities.
std::string StepText(const Profile& profile, const StepOptions& options);

}  // namespace host::solid
