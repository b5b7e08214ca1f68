#include "product/detect/Directions.h"

#include <algorithm>
#include <cmath>

#include "host/base/angles.h"

namespace product::detect {
namespace {

constexpr double kQuarter = host::kPi / 2;
constexpr int kBins = 720;            // an eighth of a degree
constexpr int kReach = 2;             // bins to each side that belong to a peak
constexpr double kCentreWeight = 10;  // a centre line says what a direction is for
constexpr double kLevel = 1e-9;
constexpr double kLeastShare = 1.0 / 30;

struct Direction {
    double angle = 0;  // in [0, a quarter turn)
    double weight = 0;
};

std::vector<Direction> LineDirections(const Sheet& sheet) {
    std::vector<Direction> out;
    for (const Stroke& stroke : sheet.strokes) {
        if (!stroke.IsLine() || stroke.kind == StrokeKind::Hidden) continue;
        const Vector d = stroke.To() - stroke.From();
        if (d.x == 0 && d.y == 0) continue;
        double angle = std::fmod(std::atan2(d.y, d.x), kQuarter);
        if (angle < 0) angle += kQuarter;
        const double factor = stroke.kind == StrokeKind::Centre ? kCentreWeight : 1;
        out.push_back({angle, factor * std::hypot(d.x, d.y)});
    }
    return out;
}

// The difference of two angles that are the same after quarter turns, in (-pi/4, pi/4].
double Apart(double a, double b) {
    double d = std::fmod(a - b, kQuarter);
    if (d <= -kQuarter / 2) d += kQuarter;
    if (d > kQuarter / 2) d -= kQuarter;
    return d;
}

}  // namespace

std::vector<double> FindDirections(const Sheet& sheet, size_t most) {
    const std::vector<Direction> lines = LineDirections(sheet);
    std::vector<double> bins(kBins, 0.0);
    for (const Direction& line : lines)
        bins[static_cast<size_t>(line.angle / kQuarter * kBins) % kBins] += line.weight;

    std::vector<double> found;
    double first = 0;
    while (found.size() < most) {
        int peak = 0;
        double best = 0;
        for (int i = 0; i < kBins; ++i) {
            double sum = 0;
            for (int k = -kReach; k <= kReach; ++k) sum += bins[(i + k + kBins) % kBins];
            // Among equals the fullest bin itself, so that the peak lies in the middle.
            sum += 1e-3 * bins[i];
            if (sum > best) best = sum, peak = i;
        }
        if (best <= 0 || best < kLeastShare * first) break;
        if (found.empty()) first = best;
        const double near = (peak + 0.5) / kBins * kQuarter;
        double sum = 0, weight = 0;
        for (const Direction& line : lines) {
            const double apart = Apart(line.angle, near);
            if (std::abs(apart) > (kReach + 0.5) / kBins * kQuarter) continue;
            // The longest lines say best where a direction points.
            sum += line.weight * line.weight * apart;
            weight += line.weight * line.weight;
        }
        const double angle = Apart(near + (weight > 0 ? sum / weight : 0), 0);
        // Drawn level: no rounding shall turn it.
        found.push_back(std::abs(angle) < kLevel ? 0.0 : angle);
        for (int k = -kReach; k <= kReach; ++k) bins[(peak + k + kBins) % kBins] = 0;
    }
    return found;
}

}  // namespace product::detect
