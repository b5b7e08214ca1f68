// GEOS, as far as boundary tracing needs it, behind types of our own.
#pragma once

#include <geos_c.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

#include "host/geos/geos_late.h"
#include "host/ed/plane_curve.h"

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
    GEOSContextHandle_t Handle() const { return m_handle; }

    struct Destroy {
        GEOSContextHandle_t handle;
        void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(handle, geometry); }
        void operator()(GEOSSTRtree* tree) const { GEOSSTRtree_destroy_r(handle, tree); }
    };
    using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;
    using Tree = std::unique_ptr<GEOSSTRtree, Destroy>;
    Geometry Own(GEOSGeometry* geometry) const { return {geometry, Destroy{m_handle}}; }
    Tree Own(GEOSSTRtree* tree) const { return {tree, Destroy{m_handle}}; }

    // A line through at least two points; null when GEOS refuses it.
    Geometry LineOf(const std::vector<AcGePoint2d>& points) const;
    // All lines as one geometry, which takes them.
    Geometry Collect(std::vector<Geometry>& lines) const;
    // The points of a line or ring.
    std::vector<AcGePoint2d> PointsOf(const GEOSGeometry* line) const;

private:
    GEOSContextHandle_t m_handle;
};

// Calls use(i, j), i < j, once for every two boxes that are at most pad apart; by i and then j.
void ForEachTouchingPair(const std::vector<PlaneBox>& boxes, double pad,
                         const std::function<void(size_t, size_t)>& use);

}  // namespace host
