#include "host/geos/geos_tools.h"

namespace host {

GEOSCoordSequence* GeosContext::SequenceOf(const Points& points) const {
    // Points are pairs of numbers without padding.
    static_assert(sizeof(plane::Point) == 2 * sizeof(double));
    return points.empty()
               ? nullptr
               : GEOSCoordSeq_copyFromBuffer_r(m_handle, &points.front().x,
                                               static_cast<unsigned int>(points.size()), 0, 0);
}

GeosContext::Geometry GeosContext::MakeLine(const Points& points) const {
    GEOSCoordSequence* const sequence = SequenceOf(points);
    return Own(sequence == nullptr ? nullptr : GEOSGeom_createLineString_r(m_handle, sequence));
}

GeosContext::Geometry GeosContext::MakeLines(const std::vector<Points>& lines) const {
    std::vector<GEOSGeometry*> made;
    made.reserve(lines.size());
    for (const Points& line : lines) {
        if (line.size() < 2) continue;
        if (GEOSGeometry* const geometry = MakeLine(line).release()) made.push_back(geometry);
    }
    return Own(GEOSGeom_createCollection_r(m_handle, GEOS_MULTILINESTRING, made.data(),
                                           static_cast<unsigned int>(made.size())));
}

GeosContext::Geometry GeosContext::MakeArea(const Points& ring) const {
    GEOSCoordSequence* const sequence = SequenceOf(ring);
    if (sequence == nullptr) return Own(nullptr);
    GEOSGeometry* const shell = GEOSGeom_createLinearRing_r(m_handle, sequence);
    return Own(shell == nullptr ? nullptr : GEOSGeom_createPolygon_r(m_handle, shell, nullptr, 0));
}

GeosContext::Points GeosContext::PointsOf(const GEOSGeometry* line) const {
    const GEOSCoordSequence* const sequence = GEOSGeom_getCoordSeq_r(m_handle, line);
    unsigned int size = 0;
    if (sequence == nullptr || GEOSCoordSeq_getSize_r(m_handle, sequence, &size) == 0) return {};
    Points points(size);
    if (size == 0 || GEOSCoordSeq_copyToBuffer_r(m_handle, sequence, &points.front().x, 0, 0) == 0)
        return {};
    return points;
}

}  // namespace host
