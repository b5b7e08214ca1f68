// What comparing outlines needs of GEOS.
#pragma once

#include <vector>

#include "product/base/Outline.h"
#include "host/geos/geos_tools.h"

namespace product {

// A line through points, and all of them together.
using Polyline = std::vector<Point>;
using Polylines = std::vector<Polyline>;

class Geos : public host::GeosContext {
public:
    // The lines cut where they meet, points closer than the tolerance made one.
    Geometry Noded(const Polylines& lines, double tolerance) const;
    // Every line of a geometry of lines.
    Polylines LinesOf(const GEOSGeometry* lines) const;
    // The outer rings of the union of the faces between noded lines.
    Polylines OuterRings(const GEOSGeometry* noded) const;
};

// Distances from one geometry, indexed.
class Near {
public:
    Near(const Geos& geos, Geos::Geometry geometry);
    ~Near();
    Near(const Near&) = delete;
    Near& operator=(const Near&) = delete;
    // 0 inside an area; negative when GEOS refuses.
    double DistanceTo(const Point& point) const;

private:
    const Geos& m_geos;
    Geos::Geometry m_geometry;
    const GEOSPreparedGeometry* m_prepared = nullptr;
};

}  // namespace product
