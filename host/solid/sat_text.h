// SAT: the modeller's text format, as other CAD systems read it.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "host/solid/profile.h"
#include "host/solid/stamp.h"

namespace host::solid {

enum class SatVersion {
    k400,  // what drawings up to R2010 hold inside a 3DSOLID
    k700   // the last one whose format was published; practically every reader takes it
};

struct SatOptions {
    SatVersion version = SatVersion::k700;
    double millimetresPerUnit = 1.0;  // positive; coordinates stay in drawing units
    std::time_t date = 0;             // seconds since 1970, written as universal time
};

// The solids of several profiles as one SAT text, one body each. Each has one lump, a shell a
// chain, a face a piece; only planes, cones, cylinders, spheres and tori, no seams. Lines end with
// \n.
//
// result  the same bytes for the same profiles and options on every machine.
// cost    linear in the number of pieces.
// source  layout of the records by the format's published description of version 7.0.
std::string SatText(const std::vector<const Profile*>& bodies, const SatOptions& options);

}  // namespace host::solid
