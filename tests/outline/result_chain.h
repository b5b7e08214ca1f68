// A found envelope as curves, and how far two of them lie apart.
#pragma once

#include <algorithm>
#include <vector>

#include "plane/curve.h"
#include "plugin/outline/ExactEnvelope.h"

namespace test {

// What closes it is not among them.
inline std::vector<plane::Curve> ChainOf(const SExactResult& result) {
    std::vector<plane::Curve> chain;
    const auto& v = result.m_vertices;
    for (size_t i = 0; i + 1 < v.size(); ++i)
        chain.push_back(plane::MakeCurve({v[i].m_dX, v[i].m_dY}, {v[i + 1].m_dX, v[i + 1].m_dY},
                                         v[i].m_dBulge));
    return chain;
}

// The farthest that a point of one lies from the other, and its place.
inline double FarthestOff(const std::vector<plane::Curve>& a, const std::vector<plane::Curve>& b,
                          plane::Point& at) {
    double worst = 0;
    for (const plane::Curve& c : a) {
        for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            const plane::Point p = plane::PointAt(c, share);
            double best = 1e300;
            for (const plane::Curve& d : b) best = (std::min)(best, plane::Distance(d, p));
            if (best > worst) {
                worst = best;
                at = p;
            }
        }
    }
    return worst;
}

inline double FarthestApart(const std::vector<plane::Curve>& a,
                            const std::vector<plane::Curve>& b) {
    plane::Point at;
    return (std::max)(FarthestOff(a, b, at), FarthestOff(b, a, at));
}

}  // namespace test
