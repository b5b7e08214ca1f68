// Knots of a spline.
#pragma once

#include "gedblar.h"

// A rising sequence of parameters. globalKnotTolerance: knots this close are one.
class AcGeKnotVector {
public:
    static double globalKnotTolerance;

    explicit AcGeKnotVector(double eps = globalKnotTolerance) : m_eps(eps) {}
    // Copies; nothing is checked, the curve's constructor does that.
    AcGeKnotVector(int size, const double knots[], double eps = globalKnotTolerance);
    AcGeKnotVector(const AcGeDoubleArray& knots, double eps = globalKnotTolerance)
        : m_knots(knots), m_eps(eps) {}

    int length() const { return m_knots.length(); }  // knots
    bool isEmpty() const { return m_knots.isEmpty(); }
    double operator[](int i) const { return m_knots[i]; }
    double& operator[](int i) { return m_knots[i]; }
    double startParam() const { return m_knots.first(); }  // the first knot; there must be one
    double endParam() const { return m_knots.last(); }
    AcGeKnotVector& append(double knot) {  // at the end; not sorted in
        m_knots.append(knot);
        return *this;
    }
    const double* asArrayPtr() const { return m_knots.asArrayPtr(); }
    double tolerance() const { return m_eps; }          // below which knots are one
    bool isEqualTo(const AcGeKnotVector& other) const;  // as many, and each within the tolerance

private:
    AcGeDoubleArray m_knots;
    double m_eps;
};
