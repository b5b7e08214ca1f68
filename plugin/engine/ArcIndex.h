// Which arcs of the drawing an outline runs along.
#pragma once

#include <vector>

#include "ArcReader.h"
#include "BoxIndex.h"
#include "StdAfx.h"

// A point that is no farther from the bounded arc lies on it (drawing units, <=): what rounding
// leaves of a point that was computed on the arc.
constexpr double kThroughArcTol = 1e-4;

// An outline goes on along an arc as long as its points are this near, in drawing units from the
// radius and in radians past its ends: points of the outline may have been snapped.
constexpr double kAlongArcTol = 0.01;

// The arcs among the given ids, read once. An outline has as many points as there are arcs, so
// opening and testing every arc for every point would be quadratic; the arcs are cut into short
// stretches whose boxes stand in a tree. The answers are those of a walk over all arcs in order.
class CArcIndex {
public:
    // ids  arcs; what cannot be opened as one is passed over
    explicit CArcIndex(const AcDbObjectIdArray& ids);

    // The arcs that pass through the point within kThroughArcTol, as ascending indices.
    std::vector<size_t> FindThrough(const AcGePoint3d& pt) const;

    // Drops from arcs those that do not hold the point within kAlongArcTol.
    std::vector<size_t> KeepAlong(const std::vector<size_t>& arcs, const AcGePoint3d& pt) const;

    const AcDbObjectId& GetId(size_t index) const { return m_ids[index]; }

private:
    std::vector<AcDbObjectId> m_ids;
    std::vector<SArc> m_arcs;
    std::vector<size_t> m_stretchArcs;  // which arc a short stretch belongs to
    CBoxIndex m_boxes;                  // of the stretches
};
