// Parameter ranges.
#pragma once

#include "gegbl.h"

// A range that may be open-ended on either side.
class AcGeInterval {
public:
    AcGeInterval() = default;  // unbounded
    // Bounded; lower must not lie above upper.
    AcGeInterval(double lower, double upper)
        : m_lower(lower), m_upper(upper), m_hasLower(true), m_hasUpper(true) {}
    // Open on one side.
    AcGeInterval(bool boundedBelow, double bound)
        : m_lower(bound), m_upper(bound), m_hasLower(boundedBelow), m_hasUpper(!boundedBelow) {}

    double lowerBound() const { return m_lower; }  // without meaning when there is none
    double upperBound() const { return m_upper; }
    double length() const { return m_upper - m_lower; }                // of a bounded range
    double element() const { return m_hasLower ? m_lower : m_upper; }  // some value of the range
    void getBounds(double& lower, double& upper) const {
        lower = m_lower;
        upper = m_upper;
    }
    bool isBounded() const { return m_hasLower && m_hasUpper; }  // on both sides
    bool isBoundedBelow() const { return m_hasLower; }
    bool isBoundedAbove() const { return m_hasUpper; }
    bool isUnBounded() const { return !m_hasLower && !m_hasUpper; }
    AcGeInterval& set(double lower, double upper) { return *this = AcGeInterval(lower, upper); }
    AcGeInterval& set() { return *this = AcGeInterval(); }  // unbounded
    // Inside the range or outside by no more than tol.
    bool contains(double value, double tol = 1e-12) const {
        return (!m_hasLower || value >= m_lower - tol) && (!m_hasUpper || value <= m_upper + tol);
    }

private:
    double m_lower = 0.0, m_upper = 0.0;
    bool m_hasLower = false, m_hasUpper = false;
};
