#include "product/detect/HalfHeights.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace product::detect {

HalfHeights::HalfHeights(const Sheet& sheet, const std::vector<int>& strokes, double offset,
                         double start, double end)
    : m_above(kCount, 0.0),
      m_below(kCount, 0.0),
      m_start(start),
      m_step(end > start ? (end - start) / kCount : 1) {
    if (!(end > start)) return;
    for (const int s : strokes) {
        const std::vector<Point>& p = sheet.strokes[s].points;
        for (size_t k = 1; k < p.size(); ++k)
            Add({p[k - 1].x, p[k - 1].y - offset}, {p[k].x, p[k].y - offset});
    }
}

void HalfHeights::Add(Point a, Point b) {
    if (a.x > b.x) std::swap(a, b);
    const auto cell = [&](double x) {
        return static_cast<int>(std::clamp((x - m_start) / m_step, 0.0, kCount - 1.0));
    };
    const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
    for (int i = cell(a.x); i <= cell(b.x); ++i) {
        double y1 = a.y, y2 = b.y;
        if (b.x > a.x) {
            y1 = a.y + slope * (std::max(a.x, m_start + i * m_step) - a.x);
            y2 = a.y + slope * (std::min(b.x, m_start + (i + 1) * m_step) - a.x);
        }
        m_above[i] = std::max(m_above[i], std::max(y1, y2));
        m_below[i] = std::max(m_below[i], std::max(-y1, -y2));
    }
}

double HalfHeights::Agreement(double tolerance) const {
    int any = 0, same = 0;
    for (int i = 0; i < kCount; ++i) {
        if (m_above[i] <= 0 && m_below[i] <= 0) continue;
        ++any;
        bool agrees = false;
        for (int k = std::max(0, i - 1); k <= std::min(kCount - 1, i + 1); ++k)
            agrees = agrees || std::abs(m_above[i] - m_below[k]) <= tolerance;
        same += agrees;
    }
    return any > 0 ? static_cast<double>(same) / any : 0;
}

// Where a's height is reached by b neither there nor next to it.
HalfHeights::Difference HalfHeights::Greatest(const std::vector<double>& a,
                                              const std::vector<double>& b) const {
    Difference greatest;
    for (int i = 0; i < kCount; ++i) {
        double low = b[i], high = b[i];
        for (int k = std::max(0, i - 1); k <= std::min(kCount - 1, i + 1); ++k) {
            low = std::min(low, b[k]);
            high = std::max(high, b[k]);
        }
        // Between the neighbours' heights lies what a step or a slope there would show.
        const double apart = std::max(a[i] - high, low - a[i]);
        if (apart > greatest.height) greatest = {apart, m_start + (i + 0.5) * m_step};
    }
    return greatest;
}

HalfHeights::Difference HalfHeights::BetweenHalves() const {
    const auto [above, below] = WhereBothAre();
    const Difference a = Greatest(above, below), b = Greatest(below, above);
    return a.height >= b.height ? a : b;
}

std::pair<std::vector<double>, std::vector<double>> HalfHeights::WhereBothAre() const {
    std::vector<double> above = m_above, below = m_below;
    for (int i = 0; i < kCount; ++i)
        if (IsWithoutOther(i)) above[i] = below[i] = std::max(m_above[i], m_below[i]);
    return {above, below};
}

bool HalfHeights::IsWithoutOther(int i) const {
    const auto isEmpty = [&](const std::vector<double>& side, const std::vector<double>& other) {
        if (other[i] <= 0 || side[i] > 0) return false;
        return (i > 0 && side[i - 1] <= 0) || (i + 1 < kCount && side[i + 1] <= 0);
    };
    return isEmpty(m_above, m_below) || isEmpty(m_below, m_above);
}

HalfHeights::Difference HalfHeights::WithoutOther() const {
    Difference all;
    int longest = 0, run = 0;
    for (int i = 0; i < kCount; ++i) {
        run = IsWithoutOther(i) ? run + 1 : 0;
        if (run > 0) all.height += m_step;
        if (run <= longest) continue;
        longest = run;
        all.at = m_start + (i + 1 - 0.5 * run) * m_step;
    }
    return all;
}

HalfHeights::Difference HalfHeights::BetweenHalvesOfTeeth() const {
    constexpr int kReach = kCount / 50;
    const auto filtered = [](const std::vector<double>& from, bool greatest) {
        std::vector<double> out = from;
        for (int i = 0; i < kCount; ++i)
            for (int k = std::max(0, i - kReach); k <= std::min(kCount - 1, i + kReach); ++k)
                out[i] = greatest ? std::max(out[i], from[k]) : std::min(out[i], from[k]);
        return out;
    };
    const auto [above, below] = WhereBothAre();
    const Difference high = Greatest(filtered(above, true), filtered(below, true));
    const Difference low = Greatest(filtered(above, false), filtered(below, false));
    return high.height >= low.height ? high : low;
}

HalfHeights::Difference HalfHeights::To(const HalfHeights& other, bool above, bool below) const {
    std::vector<double> mine(kCount, 0.0), theirs(kCount, 0.0);
    for (int i = 0; i < kCount; ++i) {
        mine[i] = std::max(above ? m_above[i] : 0.0, below ? m_below[i] : 0.0);
        theirs[i] = std::max(other.m_above[i], other.m_below[i]);
        if (mine[i] <= 0) mine[i] = theirs[i];
    }
    const Difference a = Greatest(mine, theirs), b = Greatest(theirs, mine);
    return a.height >= b.height ? a : b;
}

int HalfHeights::Cell(double place) const {
    return static_cast<int>(std::clamp((place - m_start) / m_step, 0.0, kCount - 1.0));
}

double HalfHeights::AgreementBetween(double from, double to, double tolerance) const {
    int same = 0;
    for (int i = Cell(from); i <= Cell(to); ++i)
        for (int k = std::max(0, i - 1); k <= std::min(kCount - 1, i + 1); ++k)
            if (std::abs(m_above[i] - m_below[k]) <= tolerance ||
                std::abs(m_above[k] - m_below[i]) <= tolerance) {
                ++same;
                break;
            }
    return static_cast<double>(same) / (Cell(to) - Cell(from) + 1);
}

double HalfHeights::ReachingBetween(double from, double to, bool above, double height) const {
    const std::vector<double>& side = above ? m_above : m_below;
    int reaching = 0;
    for (int i = Cell(from); i <= Cell(to); ++i) {
        double highest = 0;
        for (int k = std::max(0, i - 1); k <= std::min(kCount - 1, i + 1); ++k)
            highest = std::max(highest, side[k]);
        reaching += highest >= height;
    }
    return static_cast<double>(reaching) / (Cell(to) - Cell(from) + 1);
}

double HalfHeights::At(double place) const {
    const auto i = static_cast<size_t>(Cell(place));
    return std::max(m_above[i], m_below[i]);
}

bool HalfHeights::IsLevel(double tolerance) const {
    double low = 1e300, high = 0;
    for (size_t i = 0; i < m_above.size(); ++i) {
        const double height = std::max(m_above[i], m_below[i]);
        low = std::min(low, height);
        high = std::max(high, height);
    }
    return high - low <= tolerance;
}

double HalfHeights::AgreementTurnedRound(double tolerance) const {
    int same = 0;
    for (int i = 0; i < kCount; ++i) {
        const double height = std::max(m_above[i], m_below[i]);
        bool agrees = false;
        for (int k = std::max(0, kCount - 2 - i); k <= std::min(kCount - 1, kCount - i); ++k)
            agrees = agrees || std::abs(std::max(m_above[k], m_below[k]) - height) <= tolerance;
        same += agrees;
    }
    return static_cast<double>(same) / kCount;
}

std::optional<double> HalfHeights::StandingBetween(double from, double to, double height,
                                                   double tolerance) const {
    int covered = -1;
    bool wasSeen = false;
    for (int i = Cell(from); i <= Cell(to); ++i) {
        const double highest = std::max(m_above[i], m_below[i]);
        if (highest > height + tolerance) {
            if (wasSeen && covered < 0) covered = i;
        } else {
            if (covered >= 0) return m_start + (0.5 * (covered + i - 1) + 0.5) * m_step;
            wasSeen = true;
        }
    }
    return std::nullopt;
}

bool HalfHeights::IsOneSided() const {
    const double above = std::accumulate(m_above.begin(), m_above.end(), 0.0);
    const double below = std::accumulate(m_below.begin(), m_below.end(), 0.0);
    return std::min(above, below) < 0.02 * std::max(above, below);
}

double HalfHeights::Cover() const {
    int any = 0;
    for (int i = 0; i < kCount; ++i) any += m_above[i] > 0 || m_below[i] > 0;
    return static_cast<double>(any) / kCount;
}

}  // namespace product::detect
