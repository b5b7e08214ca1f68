// Generated drawings of turned tools, of any size, for tests and benchmarks.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "arxHeaders.h"

namespace test {

using Segments = std::vector<std::pair<AcGePoint3d, AcGePoint3d>>;

// A tool about the x axis, both halves, longer the more segments it has: lands, shoulders and
// chamfers, and over them pockets for inserts and keys, which cross the contour and one another.
// Corners included, a segment meets about 2.2 others.
//
// As drawn with the snap on: coordinates are multiples of 0.05 and slopes are 45 degrees. With
// freeHand nothing is round, and quarter circles in chords come in. Heights then never repeat, so
// that every slope is cut at a number of places that grows with the drawing, down to the point
// tolerance: what the passes must give is itself nearly quadratic.
//
// The same seed gives the same drawing on every machine.
class ToolProfile {
public:
    explicit ToolProfile(std::uint64_t seed, bool freeHand = false)
        : m_random(seed), m_freeHand(freeHand) {}

    Segments Make(size_t count) {
        m_segments.clear();
        const size_t half = count / 2;
        MakeHalf(half, 1.0);
        MakeHalf(count, -1.0);
        return std::move(m_segments);
    }

private:
    static constexpr double kSnap = 0.05;
    static constexpr double kLongest = 10.0;  // side of a pocket

    double Unit() { return static_cast<double>(m_random() >> 11) / 9007199254740992.0; }
    double Real(double from, double to) { return from + (to - from) * Unit(); }

    void MakeHalf(size_t count, double sign) {
        m_sign = sign;
        m_at = AcGePoint3d(0, 10, 0);
        while (m_segments.size() < count) {
            const double x = m_at.x;
            AddStep();
            // Two segments of pockets for one of contour.
            for (m_pocketsDue += 2 * m_added; m_pocketsDue >= 4 && m_segments.size() < count;
                 m_pocketsDue -= 4) {
                AddPocket(x, m_at.x);
            }
            m_added = 0;
        }
        m_segments.resize(count);
    }

    double Length(double from, double to) {
        const double value = Real(from, to);
        return m_freeHand ? value : std::round(value / kSnap) * kSnap;
    }

    // A land, then a shoulder, a chamfer or a fillet to the next diameter.
    void AddStep() {
        const double radius = Length(6, 14);
        const double rise = radius - m_at.y;
        const double kind = Unit();
        LineTo(m_at.x + Length(0.3, 2), m_at.y);
        if (kind < 0.4) {
            LineTo(m_at.x, radius);
            return;
        }
        const double size = (std::min)(std::fabs(rise), Length(0.4, 1.6));
        LineTo(m_at.x, radius - std::copysign(size, rise));
        if (kind < 0.8 || !m_freeHand) {
            LineTo(m_at.x + size, radius);
        } else {
            FilletTo(radius);
        }
    }

    // A quarter circle in chords of about 0.3.
    void FilletTo(double radius) {
        const double size = std::fabs(radius - m_at.y);
        const double side = radius > m_at.y ? 1.0 : -1.0;
        const AcGePoint3d from = m_at;
        const int chords = static_cast<int>(size * 1.57 / 0.3) + 1;
        for (int i = 1; i <= chords; ++i) {
            const double angle = 1.5707963267948966 * i / chords;
            LineTo(from.x + size * std::sin(angle), from.y + side * size * (1 - std::cos(angle)));
        }
    }

    void LineTo(double x, double y) {
        const AcGePoint3d to(x, y, 0);
        Add(m_at, to);
        m_at = to;
        ++m_added;
    }

    // A rectangle that crosses contour and other pockets; free ones lean.
    void AddPocket(double fromX, double toX) {
        const AcGePoint3d from(Length(fromX, toX), Length(1, 10), 0);
        const double width = Length(0.5, kLongest);
        const double height = Length(0.5, kLongest);
        const double lean = m_freeHand ? Real(-0.3, 0.3) : 0.0;
        const AcGeVector3d across(width, width * lean, 0);
        const AcGeVector3d up(-height * lean, height, 0);
        Add(from, from + across);
        Add(from + across, from + across + up);
        Add(from + across + up, from + up);
        Add(from + up, from);
    }

    void Add(const AcGePoint3d& p, const AcGePoint3d& q) {
        m_segments.emplace_back(AcGePoint3d(p.x, m_sign * p.y, 0),
                                AcGePoint3d(q.x, m_sign * q.y, 0));
    }

    std::mt19937_64 m_random;
    bool m_freeHand;
    Segments m_segments;
    AcGePoint3d m_at;
    double m_sign = 1.0;
    int m_pocketsDue = 0;
    int m_added = 0;
};

}  // namespace test
