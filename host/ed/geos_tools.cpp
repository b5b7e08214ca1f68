#include "host/ed/geos_tools.h"

#include <algorithm>

namespace host {

GeosContext::Geometry GeosContext::LineOf(const std::vector<AcGePoint2d>& points) const {
    // Points are pairs of numbers without padding.
    GEOSCoordSequence* const sequence = GEOSCoordSeq_copyFromBuffer_r(
        m_handle, &points.front().x, static_cast<unsigned int>(points.size()), 0, 0);
    if (sequence == nullptr) return Own(static_cast<GEOSGeometry*>(nullptr));
    return Own(GEOSGeom_createLineString_r(m_handle, sequence));
}

GeosContext::Geometry GeosContext::Collect(std::vector<Geometry>& lines) const {
    std::vector<GEOSGeometry*> raw;
    raw.reserve(lines.size());
    for (Geometry& line : lines) raw.push_back(line.release());
    return Own(GEOSGeom_createCollection_r(m_handle, GEOS_MULTILINESTRING, raw.data(),
                                           static_cast<unsigned int>(raw.size())));
}

std::vector<AcGePoint2d> GeosContext::PointsOf(const GEOSGeometry* line) const {
    const GEOSCoordSequence* const sequence = GEOSGeom_getCoordSeq_r(m_handle, line);
    unsigned int size = 0;
    if (sequence == nullptr || GEOSCoordSeq_getSize_r(m_handle, sequence, &size) == 0) return {};
    std::vector<AcGePoint2d> points(size);
    if (size == 0 || GEOSCoordSeq_copyToBuffer_r(m_handle, sequence, &points.front().x, 0, 0) == 0)
        return {};
    return points;
}

void ForEachTouchingPair(const std::vector<PlaneBox>& boxes, double pad,
                         const std::function<void(size_t, size_t)>& use) {
    const GeosContext geos;
    const GeosContext::Tree tree = geos.Own(GEOSSTRtree_create_r(geos.Handle(), 10));
    std::vector<GeosContext::Geometry> frames;
    std::vector<size_t> numbers(boxes.size());
    frames.reserve(boxes.size());
    for (size_t i = 0; i < boxes.size(); ++i) {
        const AcGeVector2d half(pad / 2, pad / 2);
        numbers[i] = i;
        frames.push_back(geos.LineOf({boxes[i].min - half, boxes[i].max + half}));
        GEOSSTRtree_insert_r(geos.Handle(), tree.get(), frames.back().get(), &numbers[i]);
    }
    std::vector<size_t> found;
    const auto collect = [](void* item, void* list) {
        static_cast<std::vector<size_t>*>(list)->push_back(*static_cast<size_t*>(item));
    };
    for (size_t i = 0; i < boxes.size(); ++i) {
        found.clear();
        GEOSSTRtree_query_r(geos.Handle(), tree.get(), frames[i].get(), collect, &found);
        std::sort(found.begin(), found.end());
        for (const size_t j : found)
            if (j > i) use(i, j);
    }
}

}  // namespace host
