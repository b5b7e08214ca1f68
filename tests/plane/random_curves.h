// Curves as drawings have them, and as they are at their worst.
#pragma once

#include <random>

#include "plane/curve.h"

namespace test {

class RandomCurves {
public:
    explicit RandomCurves(unsigned seed, double offset = 0.0) : m_random(seed), m_offset(offset) {}

    double Number(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    plane::Point Point() { return {Number(-10, 10) + m_offset, Number(-10, 10) - m_offset}; }

    // A third of them lines; arcs up to 330 degrees, and as flat as a millionth of their chord.
    double Bulge() {
        if (Below(3) == 0) return 0.0;
        const double bulge = Below(2) == 0 ? Number(0.05, 7.0) : std::pow(10.0, Number(-7, 0));
        return Below(2) == 0 ? bulge : -bulge;
    }

    plane::Curve Curve() { return plane::MakeCurve(Point(), Point(), Bulge()); }

    // A partner that has something to do with a curve: it starts on it, touches it there, runs on
    // its line or circle, or just passes.
    plane::Curve Partner(const plane::Curve& curve) {
        const plane::Point at = plane::PointAt(curve, Number(0, 1));
        const plane::Vector along = plane::DirectionAt(curve, at);
        switch (Below(6)) {
            case 0:
                return plane::MakeCurve(at, Point(), Bulge());
            case 1:  // a line along the tangent
                return plane::MakeLine(at - along * Number(0, 5), at + along * Number(0.1, 5));
            case 2: {  // an arc that touches, from outside or inside
                const plane::Point centre = at + plane::Left(along) * Number(-8, 8);
                const double radius = plane::Distance(centre, at);
                const double angle = plane::AngleOf(at - centre);
                return plane::MakeArc(centre, radius, angle - Number(0, 2), Number(0.1, 5));
            }
            case 3:  // from a point of it to another one, as it runs
                return plane::PartOf(curve, plane::PointAt(curve, Number(-0.2, 0.3)),
                                     plane::PointAt(curve, Number(0.5, 1.2)));
            case 4:  // the same ends, another way
                return plane::MakeCurve(curve.to, curve.from, Bulge());
            default:
                return Curve();
        }
    }

private:
    std::mt19937 m_random;
    double m_offset;
};

}  // namespace test
