// What a hatch stores.
#pragma once

#include <string>
#include <vector>

#include "dbid.h"
#include "gepnt2d.h"
#include "gevec2d.h"
#include "gevec3d.h"

namespace host {

enum class HatchEdgeKind { kLine = 1, kArc = 2, kEllipse = 3, kSpline = 4 };  // group 72

// One edge of a loop, in the OCS plane of the hatch. Angles in radians; a clockwise arc or ellipse
// has its angles measured clockwise, as in the file (group 73 is 0).
struct HatchEdge {
    HatchEdgeKind kind = HatchEdgeKind::kLine;
    AcGePoint2d start, end;   // line
    AcGePoint2d center;       // arc, ellipse
    AcGeVector2d major;       // ellipse
    double radius = 0.0;      // arc: radius; ellipse: ratio of the axes
    double startAngle = 0.0;  // arc, ellipse
    double endAngle = 0.0;
    bool counterClockwise = true;
    int degree = 3;         // spline
    bool rational = false;  // has weights
    bool periodic = false;
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<AcGePoint2d> points;  // control points
    std::vector<AcGePoint2d> fitPoints;
};

struct HatchVertex {
    AcGePoint2d point;   // OCS
    double bulge = 0.0;  // tan(sweep / 4)
};

// A loop is either a polyline (flag 2 of group 92) or a list of edges.
struct HatchLoop {
    int flags = 1;       // group 92: 1 external, 2 polyline, 16 outermost
    bool closed = true;  // group 73
    bool hasBulges = false;
    std::vector<HatchVertex> vertices;
    std::vector<HatchEdge> edges;
    // group 330
    std::vector<AcDbObjectId> sources;  // boundary objects
    bool IsPolyline() const { return (flags & 2) != 0; }
};

// One family of parallel pattern lines, as stored (already scaled and turned).
struct HatchPatternLine {
    double angle = 0.0;          // radians
    AcGePoint2d base;            // groups 43 and 44
    AcGeVector2d offset;         // groups 45 and 46: from line to line
    std::vector<double> dashes;  // group 49; empty: a full line
};

struct HatchData {
    std::wstring patternName = L"SOLID";  // group 2
    AcGeVector3d normal{0.0, 0.0, 1.0};
    double elevation = 0.0;      // z of group 10
    bool solid = true;           // group 70
    bool associative = false;    // group 71: follows its boundary
    int style = 0;               // group 75: which of nested loops are filled
    int patternType = 1;         // group 76: own, of the file of patterns, custom
    double patternAngle = 0.0;   // radians
    double patternScale = 1.0;   // group 41
    bool patternDouble = false;  // group 77: a second time across
    double pixelSize = 0.0;      // group 47
    std::vector<HatchLoop> loops;
    std::vector<HatchPatternLine> patternLines;
    std::vector<AcGePoint2d> seeds;  // group 98: where the user pointed
};

}  // namespace host
