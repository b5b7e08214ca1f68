#include "outlines.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <stdexcept>

using host::solid::Outline;
using plane::Corner;

namespace {

constexpr double kPi = 3.14159265358979323846;

// Ten Gauss-Legendre points on [-1, 1], by Newton on the Legendre polynomial.
struct GaussRule {
    double node[10], weight[10];
    GaussRule() {
        for (int i = 0; i < 10; ++i) {
            double x = std::cos(kPi * (i + 0.75) / 10.5), slope = 1.0;
            for (int k = 0; k < 20; ++k) {
                double p = 1.0, q = 0.0;
                for (int n = 1; n <= 10; ++n) {
                    const double r = ((2.0 * n - 1.0) * x * p - (n - 1.0) * q) / n;
                    q = p;
                    p = r;
                }
                slope = 10.0 * (x * p - q) / (x * x - 1.0);
                x -= p / slope;
            }
            node[i] = x;
            weight[i] = 2.0 / ((1.0 - x * x) * slope * slope);
        }
    }
};

double Uniform(std::mt19937& random, double low, double high) {
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}
int Pick(std::mt19937& random, int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
}

// A contour as a graph over x, right to left, between two heights. Arcs stay graphs: their tangents
// keep 5 degrees from the vertical.
void AddContour(std::mt19937& random, Outline& out, double right, double left, int steps,
                double low, double high) {
    double y = Uniform(random, low, high);
    const double margin = 0.05 * (high - low);
    out.corners.push_back({{right, y}, 0.0});
    for (int i = 1; i <= steps; ++i) {
        const double x =
            i == steps ? left : right + (left - right) * (i + Uniform(random, -0.3, 0.3)) / steps;
        const double dx = x - out.corners.back().point.x;
        if (i > 1 && Pick(random, 2) == 0) {  // a shoulder first
            y = Uniform(random, low, high);
            if (std::fabs(y - out.corners.back().point.y) < 0.02)
                y = out.corners.back().point.y;
            else
                out.corners.push_back({{out.corners.back().point.x, y}, 0.0});
        }
        if (Pick(random, 3) != 0) {
            double next = Uniform(random, low, high);
            if (std::fabs(next - y) > 0.02) y = next;
        }
        const plane::Point from = out.corners.back().point;
        const double slope = std::atan2(std::fabs(y - from.y), std::fabs(dx));
        const double widest = 85.0 * kPi / 180.0 - slope;
        if (Pick(random, 2) == 0 && widest > 0.05) {
            const double half = Uniform(random, -widest, widest);
            const double bulge = std::tan(0.5 * half);
            const double rise = 0.5 * std::fabs(bulge) * std::hypot(dx, y - from.y);
            // Travelling left, a positive bulge lies above.
            const double room =
                bulge > 0.0 ? high + margin - (std::max)(y, from.y) : (std::min)(y, from.y) - low;
            if (rise < room && rise > 1e-3) out.corners.back().bulge = bulge;
        }
        out.corners.push_back({{x, y}, 0.0});
    }
}

}  // namespace

Outline ParseOutline(const std::string& text) {
    Outline out;
    std::istringstream in(text);
    for (std::string word; in >> word;) {
        Corner corner;
        if (word == "open") {
            out.closed = false;
            continue;
        }
        if (std::sscanf(word.c_str(), "%lf,%lf(%lf)", &corner.point.x, &corner.point.y,
                        &corner.bulge) < 2)
            throw std::runtime_error("not a corner: " + word);
        out.corners.push_back(corner);
    }
    return out;
}

std::string Show(const Outline& outline) {
    std::string text = outline.closed ? "" : "open ";
    for (const Corner& corner : outline.corners) {
        char word[100];
        std::snprintf(word, sizeof word,
                      corner.bulge != 0.0 ? "%.17g,%.17g(%.17g) " : "%.17g,%.17g ", corner.point.x,
                      corner.point.y, corner.bulge);
        text += word;
    }
    return text;
}

PlainMeasures IntegratePlainly(const Outline& outline, double axisY) {
    static const GaussRule rule;
    PlainMeasures sum;
    const std::size_t n = outline.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const plane::Point a = outline.corners[i].point, b = outline.corners[(i + 1) % n].point;
        const double half = 2.0 * std::atan(outline.corners[i].bulge);
        const double chord = Distance(a, b), turn = std::atan2(b.y - a.y, b.x - a.x);
        constexpr int kPanels = 8;
        for (int k = 0; k < kPanels * 10; ++k) {
            const double t = (k / 10 + 0.5 * (1.0 + rule.node[k % 10])) / kPanels;
            const double w = 0.5 * rule.weight[k % 10] / kPanels;
            // Direction turns evenly from turn - half to turn + half; the point is the chord from
            // the start to it, t of the sweep.
            const double swept = 2.0 * half * t;
            const double radius = half == 0.0 ? 0.0 : 0.5 * chord / std::sin(half);
            const double along = half == 0.0 ? chord * t : 2.0 * radius * std::sin(0.5 * swept);
            const double y = a.y + along * std::sin(turn - half + 0.5 * swept) - axisY;
            const double ds = half == 0.0 ? chord : 2.0 * radius * half;
            sum.volume += kPi * y * y * ds * std::cos(turn - half + swept) * w;
            sum.area += 2.0 * kPi * std::fabs(y) * ds * w;
        }
    }
    sum.volume = std::fabs(sum.volume);
    return sum;
}

Outline RandomTurnedPart(std::mt19937& random, int steps) {
    Outline out;
    const double left = Uniform(random, -200.0, 100.0), right = left + Uniform(random, 5.0, 300.0);
    const double low = Uniform(random, 2.0, 10.0), high = low + Uniform(random, 1.0, 60.0);
    AddContour(random, out, right, left, steps, low, high);
    if (Pick(random, 4) == 0) {  // hollow
        Outline bore;
        AddContour(random, bore, right, left, (std::max)(1, steps / 2), 0.2 * low, 0.8 * low);
        std::reverse(bore.corners.begin(), bore.corners.end());
        for (std::size_t i = 0; i + 1 < bore.corners.size(); ++i)
            bore.corners[i].bulge = -bore.corners[i + 1].bulge;
        bore.corners.back().bulge = 0.0;
        out.corners.insert(out.corners.end(), bore.corners.begin(), bore.corners.end());
        return out;
    }
    // Each end flat, a cone's tip, a ball, or a pointed arch.
    const plane::Point last = out.corners.back().point, first = out.corners.front().point;
    const int leftEnd = Pick(random, 4), rightEnd = Pick(random, 4);
    const double reach = leftEnd == 0   ? 0.0
                         : leftEnd == 2 ? last.y
                                        : last.y * Uniform(random, 0.3, 3.0);
    const double bulges[] = {0.0, 0.0, 0.41421356237309503, Uniform(random, 0.02, 0.3)};
    out.corners.back().bulge = bulges[leftEnd];
    out.corners.push_back({{last.x - reach, 0.0}, 0.0});
    const double nose = rightEnd == 0   ? 0.0
                        : rightEnd == 2 ? first.y
                                        : first.y * Uniform(random, 0.3, 3.0);
    out.corners.push_back({{first.x + nose, 0.0}, bulges[rightEnd]});
    return out;
}

Outline Reversed(const Outline& outline) {
    Outline out = outline;
    const std::size_t n = out.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        out.corners[i].point = outline.corners[n - 1 - i].point;
        out.corners[i].bulge = -outline.corners[(2 * n - 2 - i) % n].bulge;
    }
    return out;
}

Outline Flipped(const Outline& outline) {
    Outline out = outline;
    for (Corner& corner : out.corners) {
        corner.point.y = -corner.point.y;
        corner.bulge = -corner.bulge;
    }
    return out;
}

Outline StartedAt(const Outline& outline, std::size_t corner) {
    Outline out = outline;
    std::rotate(out.corners.begin(),
                out.corners.begin() + static_cast<std::ptrdiff_t>(corner % out.corners.size()),
                out.corners.end());
    return out;
}
