// GEOS, loaded when it is first called: loading it takes longer than a short run of a program needs
// for everything else, and most runs never ask it anything.
//
// Whoever links geos_late instead of GEOS itself calls the functions of geos_c.h as ever; those
// that geos_late_posix.cpp names are there. Without the library on the machine GEOS_init_r answers
// null, and so does, or 0, every other function.
#pragma once

#include <string>

namespace host {

// Why GEOS cannot be used; empty when it can. Loads it.
// Ends with the system's own message; the same text at every call.
const std::string& GeosFault();

}  // namespace host
