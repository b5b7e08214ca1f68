// How lines and their cuts look from a side.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

// A line as the side that is looking sees it: u runs across the view, v towards the viewer.
struct SSight {
    double m_dFrom;     // lower end in u
    double m_dTo;       // upper end in u
    double m_dV;        // v at the lower end
    double m_dEndV;     // v at the upper end
    double m_dSlope;    // dv / du; 0 where the line stands along the view
    double m_dMargin;   // so much higher is clearly above, in v
    bool m_bClear;      // steady enough for proofs: not close to parallel to the view
    bool m_bCutAcross;  // probes along the view may cut it
    bool m_bCutAlong;   // probes across the view may cut it

    double At(double u) const { return m_dV + (u - m_dFrom) * m_dSlope; }
    // The highest and the lowest v between two places; of the whole line where it is not steady.
    double GetTop(double from, double to) const {
        return m_bClear ? (std::max)(At(from), At(to)) : (std::max)(m_dV, m_dEndV);
    }
    double GetBottom(double from, double to) const {
        return m_bClear ? (std::min)(At(from), At(to)) : (std::min)(m_dV, m_dEndV);
    }
};

// Where the probes of a side stand, and so where lines may be cut.
struct SCutPlaces {
    std::vector<double> m_across;  // places in u of the probes along the view, rising
    std::vector<double> m_along;   // places in v of the others, rising
    double m_dNear;                // computed places closer than this in u may be the same
    double m_dRounding;            // of a cut by a probe across the view, in u and in v

    static bool HasIn(const std::vector<double>& places, double from, double to) {
        const auto found = std::lower_bound(places.begin(), places.end(), from);
        return found != places.end() && *found <= to;
    }
    bool HasAcross(double from, double to) const { return HasIn(m_across, from, to); }
    // How far off the line's cuts by probes across the view may be, in u.
    double GetSlack(const SSight& sight) const {
        return m_dRounding * (1.0 + 1.0 / std::fabs(sight.m_dSlope));
    }
    // Whether a probe across the view may cut the line between the two places.
    bool HasAlong(const SSight& sight, double from, double to) const {
        if (!sight.m_bCutAlong) {
            return false;
        }
        const double a = sight.At(from);
        const double b = sight.At(to);
        const double slack = m_dRounding * (1.0 + std::fabs(sight.m_dSlope));
        return HasIn(m_along, (std::min)(a, b) - slack, (std::max)(a, b) + slack);
    }
    // Whether such a cut of one line may stand over one of the other, between the two places.
    bool HaveCommon(const SSight& one, const SSight& other, double from, double to) const;
};

// Asks for places that come in order, or nearly so: from where the last one was found.
class CPlaceCursor {
public:
    explicit CPlaceCursor(const std::vector<double>& places) : m_pPlaces(&places) {}
    // As SCutPlaces::HasIn().
    bool HasIn(double from, double to);

private:
    const std::vector<double>* m_pPlaces;  // rising; not owned
    size_t m_nAt = 0;
};
