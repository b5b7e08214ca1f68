// STEP: the exchange format that every CAD system reads, as our own text.
#pragma once

#include <string>
#include <vector>

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

struct StepPart {
    const Profile* profile = nullptr;
    std::string product;  // UTF-8, its name in the file
    int rgb = -1;         // 0xRRGGBB, of every face; -1: none
};

// Several solids as one file, each a product of its own with its name and colour, where they stand;
// options.product is what the file says it is about.
// source  colours as ISO 10303-46 has them for styled items
std::string StepText(const std::vector<StepPart>& parts, const StepOptions& options);

}  // namespace host::solid
