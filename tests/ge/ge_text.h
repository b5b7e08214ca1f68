// Geometry as one line of text, in tables and in failure messages alike.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include "gelnsg3d.h"
#include "gepnt3d.h"

// "x,y" or "x,y,z", blanks between points.
inline std::vector<AcGePoint3d> Points(const char* text) {
    std::vector<AcGePoint3d> points;
    while (*text == ' ') ++text;
    while (*text) {
        char* end = nullptr;
        AcGePoint3d p;
        p.x = std::strtod(text, &end);
        p.y = std::strtod(end + 1, &end);
        if (*end == ',') p.z = std::strtod(end + 1, &end);
        points.push_back(p);
        text = end;
        while (*text == ' ') ++text;
    }
    return points;
}

inline AcGePoint3d Point(const char* text) { return Points(text).at(0); }

// "x,y x,y"
inline AcGeLineSeg3d Segment(const char* text) {
    const std::vector<AcGePoint3d> ends = Points(text);
    return AcGeLineSeg3d(ends.at(0), ends.at(1));
}

// Seventeen digits: what looks equal is equal.
inline std::string Show(const AcGePoint3d& p) {
    char text[80];
    if (p.z == 0.0)
        std::snprintf(text, sizeof(text), "%.17g,%.17g", p.x, p.y);
    else
        std::snprintf(text, sizeof(text), "%.17g,%.17g,%.17g", p.x, p.y, p.z);
    return text;
}

inline AcGeTol Tol(double both) {
    AcGeTol tol;
    tol.setEqualPoint(both);
    tol.setEqualVector(both);
    return tol;
}

inline AcGeTol Tol(double point, double vector) {
    AcGeTol tol = Tol(point);
    tol.setEqualVector(vector);
    return tol;
}

// For gtest's messages.
inline void PrintTo(const AcGePoint3d& p, std::ostream* out) { *out << Show(p); }
inline void PrintTo(const AcGeVector3d& v, std::ostream* out) { *out << Show(v.asPoint()); }

// Bit for bit, save that -0 is 0.
inline bool Same(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
