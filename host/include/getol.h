// The two tolerances of a geometric test.
#pragma once

#include "adesk.h"

// equalPoint   absolute, drawing units: points this close are the same (not strict)
// equalVector  unit vectors that differ by less are parallel; vectors that differ by no more are
// equal
// Handed to every test; the default is AcGeContext::gTol.
class AcGeTol {
public:
    constexpr AcGeTol() = default;

    constexpr double equalPoint() const { return m_point; }
    constexpr double equalVector() const { return m_vector; }
    void setEqualPoint(double value) { m_point = value; }
    void setEqualVector(double value) { m_vector = value; }

private:
    double m_point = 1e-10;   // drawing units
    double m_vector = 1e-10;  // of unit vectors
};
