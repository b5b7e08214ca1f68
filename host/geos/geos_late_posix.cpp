#include "host/geos/geos_late.h"

#include <dlfcn.h>
#include <geos_c.h>

namespace {

// The name that the library promises to keep within its interface's first version.
constexpr char kLibrary[] = "libgeos_c.so.1";

struct Library {
    void* handle = ::dlopen(kLibrary, RTLD_LAZY | RTLD_LOCAL);
    std::string fault;

    Library() {
        if (handle == nullptr) fault = std::string("GEOS cannot be loaded: ") + ::dlerror();
    }
};

const Library& Loaded() {
    static const Library library;
    return library;
}

void* Find(const char* name) {
    return Loaded().handle == nullptr ? nullptr : ::dlsym(Loaded().handle, name);
}

}  // namespace

namespace host {

const std::string& GeosFault() { return Loaded().fault; }

}  // namespace host

// A function of the library under its own name, looked up when it is called first.
#define LATE(result, name, parameters, arguments)                                  \
    result name parameters {                                                       \
        static const auto call = reinterpret_cast<decltype(&::name)>(Find(#name)); \
        return call != nullptr ? call arguments : result();                        \
    }

using Context = GEOSContextHandle_t;
using Geometry = GEOSGeometry*;
using ConstGeometry = const GEOSGeometry*;
using Sequence = GEOSCoordSequence*;
using ConstSequence = const GEOSCoordSequence*;
using Prepared = const GEOSPreparedGeometry*;

extern "C" {

LATE(Context, GEOS_init_r, (), ())
LATE(void, GEOS_finish_r, (Context c), (c))
LATE(Sequence, GEOSCoordSeq_copyFromBuffer_r,
     (Context c, const double* from, unsigned n, int z, int m), (c, from, n, z, m))
LATE(int, GEOSCoordSeq_copyToBuffer_r, (Context c, ConstSequence s, double* to, int z, int m),
     (c, s, to, z, m))
LATE(int, GEOSCoordSeq_getSize_r, (Context c, ConstSequence s, unsigned* n), (c, s, n))
LATE(ConstSequence, GEOSGeom_getCoordSeq_r, (Context c, ConstGeometry g), (c, g))
LATE(Geometry, GEOSGeom_createPointFromXY_r, (Context c, double x, double y), (c, x, y))
LATE(Geometry, GEOSGeom_createLineString_r, (Context c, Sequence s), (c, s))
LATE(Geometry, GEOSGeom_createLinearRing_r, (Context c, Sequence s), (c, s))
LATE(Geometry, GEOSGeom_createPolygon_r, (Context c, Geometry shell, Geometry* holes, unsigned n),
     (c, shell, holes, n))
LATE(Geometry, GEOSGeom_createCollection_r, (Context c, int type, Geometry* parts, unsigned n),
     (c, type, parts, n))
LATE(void, GEOSGeom_destroy_r, (Context c, Geometry g), (c, g))
LATE(int, GEOSGetNumGeometries_r, (Context c, ConstGeometry g), (c, g))
LATE(ConstGeometry, GEOSGetGeometryN_r, (Context c, ConstGeometry g, int i), (c, g, i))
LATE(ConstGeometry, GEOSGetExteriorRing_r, (Context c, ConstGeometry g), (c, g))
LATE(int, GEOSGetNumInteriorRings_r, (Context c, ConstGeometry g), (c, g))
LATE(ConstGeometry, GEOSGetInteriorRingN_r, (Context c, ConstGeometry g, int i), (c, g, i))
LATE(char, GEOSisValid_r, (Context c, ConstGeometry g), (c, g))
LATE(Geometry, GEOSPolygonize_r, (Context c, ConstGeometry const parts[], unsigned n),
     (c, parts, n))
LATE(Geometry, GEOSPolygonize_full_r,
     (Context c, ConstGeometry g, Geometry* cuts, Geometry* dangles, Geometry* invalid),
     (c, g, cuts, dangles, invalid))
LATE(Geometry, GEOSUnaryUnion_r, (Context c, ConstGeometry g), (c, g))
LATE(Geometry, GEOSUnaryUnionPrec_r, (Context c, ConstGeometry g, double grid), (c, g, grid))
LATE(Prepared, GEOSPrepare_r, (Context c, ConstGeometry g), (c, g))
LATE(void, GEOSPreparedGeom_destroy_r, (Context c, Prepared p), (c, p))
LATE(int, GEOSPreparedDistance_r, (Context c, Prepared p, ConstGeometry g, double* distance),
     (c, p, g, distance))

}  // extern "C"
