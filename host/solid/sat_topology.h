// Faces, loops, edges of solids of revolution, by number, as SAT records refer to each other.
#pragma once

#include <cstddef>
#include <vector>

#include "host/solid/profile.h"

namespace host::solid {

enum class SurfaceKind {
    kPlane,   // a line square to the axis
    kCone,    // any other line; cylinders are cones, too
    kSphere,  // an arc about a point of the axis
    kTorus    // any other arc
};            // a cylinder is a cone that does not widen
inline constexpr std::size_t kSurfaceKinds = 4;
SurfaceKind SurfaceOf(const Piece& piece);

// One circle of a corner off the axis, or a tip on it. Vertex and point have the edge's number.
struct SatEdge {
    Point at;  // in the profile's plane
    const Frame* frame = nullptr;
    int loop = -1;    // a loop whose coedge runs on this edge
    int circle = -1;  // number among the circles; -1: a tip, which has no curve
};

// A loop has one coedge, which has the loop's number.
struct SatLoop {
    int face = -1;     // whose border it is
    int edge = -1;     // that its coedge runs on
    int partner = -1;  // the loop whose coedge runs on the same edge the other way; -1: a tip
    bool reversed = false;
};

struct SatFace {
    const Piece* piece = nullptr;  // the line or arc that makes it by turning
    const Frame* frame = nullptr;
    int shell = -1;  // that it belongs to
    int firstLoop = -1, loopCount = 0;
    SurfaceKind surface = SurfaceKind::kPlane;
    int surfaceNumber = -1;  // among the surfaces of its kind
};

struct SatShell {
    int body = -1;  // one shell for each body
    int firstFace = -1, faceCount = 0;
};

struct SatTopology {
    std::vector<SatShell> shells;
    std::vector<SatFace> faces;
    std::vector<SatLoop> loops;
    std::vector<SatEdge> edges;
    int bodies = 0, circles = 0;  // how many there are
    int surfaces[kSurfaceKinds] = {};
};

// The profiles must outlive the result. Cost linear.
SatTopology BuildTopology(const std::vector<const Profile*>& bodies);

}  // namespace host::solid
