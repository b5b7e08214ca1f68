#include "host/ge/curve_numeric.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "host/base/angles.h"
#include "host/ge/linear_kernel.h"

namespace host {
namespace {

constexpr int kNodes = 12;

// Halvings after which a piece is taken as it is; a cusp would otherwise never settle.
constexpr int kMaxHalvings = 24;
constexpr int kMaxChordHalvings = 16;

// Two estimates of a length that agree to this part of it are as good as doubles get.
constexpr double kLengthAgreement = 1e-12;

// Deviation is measured at seven places of a chord; the true largest one is a little above theirs.
constexpr double kChordSafety = 0.95;

struct Quadrature {
    std::array<double, kNodes> node, weight;
};

// Nodes are the roots of the Legendre polynomial, found by Newton's method from Tricomi's estimate.
Quadrature GaussLegendre() {
    Quadrature q{};
    for (int i = 0; i < kNodes; ++i) {
        double x = std::cos(kPi * (i + 0.75) / (kNodes + 0.5));
        double slope = 1.0;
        for (int round = 0; round < 10; ++round) {
            double p = x, before = 1.0;
            for (int n = 2; n <= kNodes; ++n) {
                const double next = ((2 * n - 1) * x * p - (n - 1) * before) / n;
                before = p;
                p = next;
            }
            slope = kNodes * (x * p - before) / (x * x - 1.0);
            x -= p / slope;
        }
        q.node[i] = x;
        q.weight[i] = 2.0 / ((1.0 - x * x) * slope * slope);
    }
    return q;
}

double Estimate(const CurveEval& curve, double from, double to) {
    static const Quadrature q = GaussLegendre();
    const double half = 0.5 * (to - from), middle = 0.5 * (from + to);
    double sum = 0.0;
    for (int i = 0; i < kNodes; ++i) {
        AcGeVector3d speed;
        curve(middle + half * q.node[i], 1, &speed);
        sum += q.weight[i] * speed.length();
    }
    return half * sum;
}

// What the coordinates' own rounding makes of a length: differences of points at this distance
// from the origin are wrong by some units of their last place, whatever the halving.
constexpr double kLengthNoise = 64 * std::numeric_limits<double>::epsilon();
// Estimates that one piece may cost. A cusp needs about fifty; noise would never end.
constexpr int kMostEstimates = 4096;

struct LengthSum {
    const CurveEval& curve;
    double tolerance;
    int budget = kMostEstimates;

    double Halved(double from, double to, double whole, int depth) {
        const double middle = 0.5 * (from + to);
        const double left = Estimate(curve, from, middle), right = Estimate(curve, middle, to);
        budget -= 2;
        if (depth >= kMaxHalvings || budget <= 0 || std::fabs(left + right - whole) <= tolerance)
            return left + right;
        return Halved(from, middle, left, depth + 1) + Halved(middle, to, right, depth + 1);
    }
};

double FarthestCoordinate(const AcGePoint3d& p) {
    return (std::max)({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

// Newton's method on (C - p) . C' = 0 inside [low, high], halving where it would leave or stall.
double Refine(const CurveEval& curve, const AcGePoint3d& p, double low, double high, double t) {
    for (int round = 0; round < 60; ++round) {
        AcGeVector3d d[2];
        const AcGeVector3d w = curve(t, 2, d) - p;
        const double slope = w.dotProduct(d[0]);
        const double bend = d[0].lengthSqrd() + w.dotProduct(d[1]);
        (slope > 0.0 ? high : low) = t;
        if (slope == 0.0) break;
        double next = bend > 0.0 ? t - slope / bend : low - 1.0;
        if (!(next >= low && next <= high)) next = 0.5 * (low + high);
        if (std::fabs(next - t) <= std::numeric_limits<double>::epsilon() * std::fabs(t)) break;
        t = next;
    }
    return t;
}

double Deviation(const CurveEval& curve, double from, double to, const Straight& chord) {
    double worst = 0.0;
    for (int i = 1; i < 8; ++i) {
        const AcGePoint3d p = curve(from + (to - from) * (i / 8.0), 0, nullptr);
        worst = (std::max)(worst, p.distanceTo(chord.start + chord.dir * NearestOn(chord, p)));
    }
    return worst;
}

struct ChordWalk {
    const CurveEval& curve;
    double eps;
    AcGePoint3dArray& pts;
    AcGeDoubleArray& params;

    void Walk(double from, const AcGePoint3d& p, double to, const AcGePoint3d& q, int depth) {
        const Straight chord{p, q - p, true, true};
        if (depth < kMaxChordHalvings &&
            !(Deviation(curve, from, to, chord) <= kChordSafety * eps)) {
            const double middle = 0.5 * (from + to);
            const AcGePoint3d m = curve(middle, 0, nullptr);
            Walk(from, p, middle, m, depth + 1);
            Walk(middle, m, to, q, depth + 1);
            return;
        }
        pts.append(q);
        params.append(to);
    }
};

}  // namespace

double SmoothLength(const CurveEval& curve, double from, double to) {
    const double whole = Estimate(curve, from, to);
    const double size = (std::max)(FarthestCoordinate(curve(from, 0, nullptr)),
                                   FarthestCoordinate(curve(to, 0, nullptr)));
    LengthSum sum{curve, (std::max)(kLengthAgreement * whole, kLengthNoise * size)};
    return sum.Halved(from, to, whole, 0);
}

double NearestParam(const CurveEval& curve, const AcGeDoubleArray& breaks, int samples,
                    const AcGePoint3d& p) {
    AcGeDoubleArray params, distances;
    for (int i = 0; i + 1 < breaks.length(); ++i)
        for (int k = 0; k < samples; ++k)
            params.append(breaks[i] + (breaks[i + 1] - breaks[i]) * k / samples);
    params.append(breaks.last());
    for (const double t : params) distances.append(curve(t, 0, nullptr).distanceTo(p));

    double best = params.first(), bestDistance = distances.first();
    const auto consider = [&](double t, double distance) {
        if (distance < bestDistance) {
            best = t;
            bestDistance = distance;
        }
    };
    const int last = params.length() - 1;
    for (int i = 0; i <= last; ++i) {
        const int before = (std::max)(i - 1, 0), after = (std::min)(i + 1, last);
        if (distances[i] > distances[before] || distances[i] > distances[after]) continue;
        consider(params[i], distances[i]);
        // Each side by itself: the place may be a break, where the derivative jumps.
        for (const int other : {before, after}) {
            if (other == i) continue;
            const double low = params[(std::min)(i, other)], high = params[(std::max)(i, other)];
            const double t = Refine(curve, p, low, high, 0.5 * (low + high));
            consider(t, curve(t, 0, nullptr).distanceTo(p));
        }
    }
    return best;
}

void AppendByChord(const CurveEval& curve, double from, double to, double eps,
                   AcGePoint3dArray& pts, AcGeDoubleArray& params) {
    ChordWalk walk{curve, eps, pts, params};
    walk.Walk(from, curve(from, 0, nullptr), to, curve(to, 0, nullptr), 0);
}

}  // namespace host
