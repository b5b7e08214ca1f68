// Triangles of a solid of revolution straight from its profile, for pictures: no kernel, so a
// thousand pictures take seconds.
#pragma once

#include "host/solid/kernel.h"

namespace host::solid {

// Triangles that leave the surface by about chordTolerance (drawing units) at most, one strip a
// chord of the profile, the same sectors all along the axis. Each piece has corners of its own, so
// that its normals are its own.
// cost   linear in the triangles.
Mesh TurnedMesh(const Profile& profile, double chordTolerance);

}  // namespace host::solid
