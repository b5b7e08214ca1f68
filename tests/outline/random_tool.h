// Random drawings of tools, with the faults that real drawings have.
#pragma once

#include <random>
#include <vector>

#include "plane/curve.h"
#include "plugin/outline/Strokes.h"

namespace test {

class RandomTool {
public:
    explicit RandomTool(unsigned seed) : m_random(seed) {}

    // A profile over the axis from (0, 0) on, with inner lines, in (s, r), r >= 0.
    // faults  how much is doubled, split, cut short, drawn over, sticks out
    std::vector<outline::Contour> Make(bool faults);

private:
    double Between(double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(m_random);
    }
    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    bool Chance(double p) { return Between(0, 1) < p; }
    // Lengths as drawings have them, to a tenth, or not.
    double Length(double lo, double hi) {
        const double value = Between(lo, hi);
        return m_isSnapped ? std::round(value * 10) / 10 : value;
    }

    void LineTo(double s, double r);
    void ArcTo(double s, double r, double bulge);
    void LeftFace(double r);
    void Step();
    void RightFace();
    void Inside();
    void Disturb();
    plane::Curve Shortened(const plane::Curve& c, double by, bool atStart) const;

    std::mt19937 m_random;
    bool m_isSnapped = false;
    plane::Point m_at;
    std::vector<plane::Curve> m_curves;
};

}  // namespace test
