// Generated drawings of hatched tools, of any size, for tests and benchmarks.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>

#include "support/tool_profile.h"

namespace test {

// A tool about the x axis drawn by free hand, both halves, longer the more segments it has: a
// contour of lands, shoulders and tapers none of which is quite level or upright; a hatch of two
// directions that fills it; and flutes, waves in chords that rise above the contour and fall
// below it. No two ends have the same height, so every slanted line is cut at a place for nearly
// every other end, down to the point tolerance.
//
// The same seed gives the same drawing on every machine.
class HatchedTool {
public:
    explicit HatchedTool(std::uint64_t seed) : m_random(seed) {}

    Segments Make(size_t count) {
        m_segments.clear();
        MakeHalf(count / 2, 1.0);
        MakeHalf(count, -1.0);
        return std::move(m_segments);
    }

private:
    // Of a hundred segments so many are contour and flutes; the others are hatch.
    static constexpr int kContour = 3;
    static constexpr int kFlutes = 7;
    static constexpr double kLean = 0.01;      // of lines that should be level or upright
    static constexpr double kHatchStep = 0.9;  // between hatch lines of one direction
    static constexpr double kFluteStep = 0.4;  // chords of a flute

    double Unit() { return static_cast<double>(m_random() >> 11) / 9007199254740992.0; }
    double Real(double from, double to) { return from + (to - from) * Unit(); }

    void MakeHalf(size_t count, double sign) {
        m_sign = sign;
        const size_t own = count - m_segments.size();
        const size_t hatch = own * (100 - kContour - kFlutes) / 100;
        const size_t flutes = own * kFlutes / 100;
        const double length = AddContour(own - hatch - flutes);
        AddFlutes(flutes, length);
        AddHatch(hatch, length);
    }

    // Returns how long it has become.
    double AddContour(size_t count) {
        AcGePoint3d at(0, Real(8, 11), 0);
        for (size_t i = 0; i < count; ++i) {
            AcGePoint3d to = at;
            if (i % 2 == 0) {
                to.x += Real(0.5, 3);
                to.y += Real(-kLean, kLean) * 4;
            } else {
                to.x += Unit() < 0.4 ? Real(0, kLean) : Real(0.2, 1.2);
                to.y = Real(7, 13);
            }
            Add(at, to);
            at = to;
        }
        return at.x;
    }

    // Waves one after the other, each with a height, a length and a phase of its own.
    void AddFlutes(size_t count, double length) {
        const double step = length / static_cast<double>((std::max)(count, size_t(1)));
        const double stride = (std::max)(step, kFluteStep);
        const int rows = static_cast<int>(std::ceil(stride / step));
        for (int row = 0; row < rows && count > 0; ++row) {
            const double pitch = Real(15, 30);
            const double height = Real(6, 12);
            const double phase = Real(0, pitch);
            AcGePoint3d at = OnFlute(Real(0, stride), pitch, height, phase);
            while (count > 0 && at.x < length) {
                const AcGePoint3d to =
                    OnFlute(at.x + Real(0.7, 1.3) * stride, pitch, height, phase);
                Add(at, to);
                at = to;
                --count;
            }
        }
        AddHatch(count, length);
    }
    static AcGePoint3d OnFlute(double x, double pitch, double height, double phase) {
        return {x, 6 + height * std::sin(6.283185307179586 * (x + phase) / pitch), 0};
    }

    // Short strokes of a cross hatch, rising and falling in turn.
    void AddHatch(size_t count, double length) {
        for (size_t i = 0; i < count; ++i) {
            const double slope = (i % 2 == 0 ? 1.0 : -1.0) * Real(0.9, 1.1);
            const AcGePoint3d from(Real(0, length), Real(0.2, 7), 0);
            const double width = Real(0.4, 2) * kHatchStep;
            Add(from, AcGePoint3d(from.x + width, from.y + width * slope, 0));
        }
    }

    void Add(const AcGePoint3d& p, const AcGePoint3d& q) {
        m_segments.emplace_back(AcGePoint3d(p.x, m_sign * p.y, 0),
                                AcGePoint3d(q.x, m_sign * q.y, 0));
    }

    std::mt19937_64 m_random;
    Segments m_segments;
    double m_sign = 1.0;
};

}  // namespace test
