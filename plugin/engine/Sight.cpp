#include "StdAfx.h"

#include "Sight.h"

namespace {

// Walks a line's cuts by probes across the view, in rising u.
class CCutWalk {
public:
    CCutWalk(const SCutPlaces& places, const SSight& sight, double from, double to)
        : m_sight(sight), m_bRising(sight.m_dSlope > 0.0) {
        const double slack = 2 * places.m_dRounding * (1.0 + std::fabs(sight.m_dSlope));
        const double a = sight.At(from);
        const double b = sight.At(to);
        const std::vector<double>& along = places.m_along;
        m_pFirst = &*along.begin() +
                   (std::lower_bound(along.begin(), along.end(), (std::min)(a, b) - slack) -
                    along.begin());
        m_pLast = m_pFirst;
        const double* const pEnd = along.data() + along.size();
        const double top = (std::max)(a, b) + slack;
        m_pLast = std::upper_bound(m_pFirst, pEnd, top);
    }
    bool IsDone() const { return m_pFirst == m_pLast; }
    double GetU() const {
        const double v = m_bRising ? *m_pFirst : m_pLast[-1];
        return m_sight.m_dFrom + (v - m_sight.m_dV) / m_sight.m_dSlope;
    }
    void Step() { m_bRising ? ++m_pFirst : --m_pLast; }

private:
    const SSight& m_sight;
    bool m_bRising;
    const double* m_pFirst;
    const double* m_pLast;
};

}  // namespace

bool SCutPlaces::HaveCommon(const SSight& one, const SSight& other, double from, double to) const {
    if (m_along.empty() || !one.m_bCutAlong || !other.m_bCutAlong) {
        return false;
    }
    // Both cuts, and the middle that is compared with each, may be off.
    const double slack = 2 * (GetSlack(one) + GetSlack(other));
    CCutWalk a(*this, one, from, to);
    CCutWalk b(*this, other, from, to);
    while (!a.IsDone() && !b.IsDone()) {
        const double ua = a.GetU();
        const double ub = b.GetU();
        if (std::fabs(ua - ub) <= slack) {
            return true;
        }
        (ua < ub ? a : b).Step();
    }
    return false;
}

bool CPlaceCursor::HasIn(double from, double to) {
    const std::vector<double>& places = *m_pPlaces;
    const size_t count = places.size();
    // Doubling steps around the last one, then halving between two of them.
    size_t low = m_nAt;
    size_t high = m_nAt;
    for (size_t step = 1; high < count && places[high] < from; step *= 2) {
        low = high + 1;
        high = (std::min)(high + step, count);
    }
    for (size_t step = 1; low > 0 && !(places[low - 1] < from); step *= 2) {
        high = low - 1;
        low = low > step ? low - step : 0;
    }
    m_nAt = static_cast<size_t>(std::lower_bound(places.data() + low, places.data() + high, from) -
                                places.data());
    return m_nAt < count && places[m_nAt] <= to;
}
