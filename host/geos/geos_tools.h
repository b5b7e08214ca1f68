// GEOS behind types of our own: its handle, its geometries as owned objects, points in and out.
//
// What GEOS refuses comes back as a null geometry, and each operation here takes one as nothing.
// Coordinates go through unchanged, to the last bit.
#pragma once

#include <geos_c.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "host/geos/geos_late.h"
#include "plane/point.h"

namespace host {

// A GEOS context of its own: no state is shared with other users of the library in the process.
// The first one loads the library; std::runtime_error when that cannot be done.
class GeosContext {
public:
    GeosContext() : m_handle(GEOS_init_r()) {
        if (m_handle == nullptr) throw std::runtime_error(GeosFault());
    }
    ~GeosContext() { GEOS_finish_r(m_handle); }
    GeosContext(const GeosContext&) = delete;
    GeosContext& operator=(const GeosContext&) = delete;
    // For calls of GEOS itself; valid as long as the context.
    GEOSContextHandle_t Handle() const { return m_handle; }

    // Frees a geometry in the context that made it.
    struct Destroy {
        GEOSContextHandle_t handle;
        void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(handle, geometry); }
    };
    // Must not outlive its context.
    using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;
    Geometry Own(GEOSGeometry* geometry) const { return {geometry, Destroy{m_handle}}; }

    using Points = std::vector<plane::Point>;
    // A line through the points; null for fewer than two.
    Geometry MakeLine(const Points& points) const;
    // All lines of two points at least, as one geometry.
    Geometry MakeLines(const std::vector<Points>& lines) const;
    // The area inside a ring that ends where it begins; null for a ring that does not.
    Geometry MakeArea(const Points& ring) const;
    // The points of a line or ring; none when there is none.
    Points PointsOf(const GEOSGeometry* line) const;

private:
    GEOSCoordSequence* SequenceOf(const Points& points) const;

    GEOSContextHandle_t m_handle;
};

}  // namespace host
