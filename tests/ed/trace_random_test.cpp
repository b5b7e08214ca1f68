// Boundary tracing on random curves, against plain loops.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "ed/plain_tracing.h"
#include "host/geos/faces.h"

namespace {

using plane::Curve;
using plane::Point;
using Curves = std::vector<Curve>;

constexpr double kTol = 1e-6;
constexpr double kQuarter = plane::kHalfTurn / 2;

// The environment's QZ_RUNS makes the tests longer by that factor.
unsigned Factor() {
    const char* const text = std::getenv("QZ_RUNS");
    return text == nullptr ? 1 : static_cast<unsigned>((std::max)(std::atoi(text), 1));
}

// Lines and arcs anywhere, or on a coarse grid, where they touch, overlap and repeat one another.
class CurveMaker {
public:
    explicit CurveMaker(std::uint64_t seed) : m_random(seed) {}

    int Next(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    double Real(double from, double to) {
        return from + (to - from) * (static_cast<double>(m_random() >> 11) / 9007199254740992.0);
    }

    Curves Make(int count) {
        const bool isGrid = Next(2) == 0;
        const double origin = Next(4) == 0 ? 30000.0 : 0.0;
        Curves curves;
        while (static_cast<int>(curves.size()) < count) {
            Curve curve = isGrid ? OnGrid() : Anywhere();
            if (curve.Length() < 0.01) continue;
            const plane::Vector shift{origin, -origin};
            curve.from = curve.from + shift;
            curve.to = curve.to + shift;
            curve.centre = curve.centre + shift;
            curves.push_back(curve);
        }
        return curves;
    }

private:
    Curve Anywhere() {
        const Point p{Real(0, 10), Real(0, 10)};
        if (Next(2) == 0) return plane::MakeLine(p, p + plane::Vector{Real(-6, 6), Real(-6, 6)});
        return plane::MakeArc(p, Real(0.5, 4), Real(-3, 3), Real(-6, 6));
    }
    Curve OnGrid() {
        const Point p{double(Next(8)), double(Next(8))};
        if (Next(2) == 0) {
            const plane::Vector step{double(Next(9) - 4), double(Next(9) - 4)};
            return plane::MakeLine(p, p + step);
        }
        return plane::MakeArc(p, 1 + Next(4), kQuarter * Next(4),
                              kQuarter * (1 + Next(3)) * (Next(2) == 0 ? 1 : -1));
    }

    std::mt19937_64 m_random;
};

bool SameNoding(const plane::Noding& a, const plane::Noding& b) {
    const auto samePiece = [](const plane::NodedPiece& p, const plane::NodedPiece& q) {
        return p.curve == q.curve && p.from == q.from && p.to == q.to &&
               p.fromShare == q.fromShare && p.toShare == q.toShare;
    };
    return std::equal(a.nodes.begin(), a.nodes.end(), b.nodes.begin(), b.nodes.end()) &&
           std::equal(a.pieces.begin(), a.pieces.end(), b.pieces.begin(), b.pieces.end(),
                      samePiece);
}

TEST(TraceRandom, NodingAsAllPairs) {
    for (std::uint64_t seed = 0; seed < 400 * Factor(); ++seed) {
        CurveMaker maker(seed);
        const Curves curves = maker.Make(1 + maker.Next(40));
        ASSERT_TRUE(SameNoding(test::PlainNoding(curves, kTol), plane::NodeCurves(curves, kTol)))
            << "seed " << seed;
    }
}

// Whether the point lies within the first loop and in none of the others.
bool IsIn(const std::vector<host::FaceLoop>& loops, const Curves& curves,
          const plane::Noding& noding, const Point& p) {
    for (size_t i = 0; i < loops.size(); ++i) {
        std::vector<Point> walk;
        for (const host::FaceLoop::Step& step : loops[i].steps) {
            const Curve curve = plane::CurveOf(noding.pieces[step.piece], curves, noding);
            const auto points =
                test::PlainFaces::Sampled(step.isForward ? curve : curve.Reversed());
            walk.insert(walk.end(), points.begin(), points.end() - 1);
        }
        if ((test::PlainFaces::Winding(walk, p) != 0) != (i == 0)) return false;
    }
    return !loops.empty();
}

TEST(TraceRandom, FacesAsWalkedAlongTheirEdges) {
    int enclosed = 0;
    for (std::uint64_t seed = 0; seed < 60 * Factor(); ++seed) {
        CurveMaker maker(seed * 31 + 7);
        const Curves curves = maker.Make(10 + maker.Next(40));
        const plane::Noding noding = plane::NodeCurves(curves, kTol);
        const test::PlainFaces plain(curves, noding);
        const double origin = std::fabs(curves[0].from.x) > 1000 ? 30000.0 : 0.0;
        const auto place = [&] {
            while (true) {
                const Point p{origin + maker.Real(0, 10), -origin + maker.Real(0, 10)};
                const auto isNear = [&](const Curve& c) { return Distance(c, p) < 0.01; };
                if (std::none_of(curves.begin(), curves.end(), isNear)) return p;
            }
        };
        for (int n = 0; n < 4; ++n) {
            const Point point = place();
            const std::vector<host::FaceLoop> loops = host::FindFaceAround(point, curves, noding);
            const size_t face = plain.FaceOf(point);
            ASSERT_EQ(face == test::PlainFaces::kNone, loops.empty())
                << "seed " << seed << " at " << point.x << "," << point.y;
            if (loops.empty()) continue;
            ++enclosed;
            EXPECT_TRUE(IsIn(loops, curves, noding, point)) << "seed " << seed;
            for (int other = 0; other < 12; ++other) {
                const Point q = place();
                ASSERT_EQ(plain.FaceOf(q) == face, IsIn(loops, curves, noding, q))
                    << "seed " << seed << ": " << q.x << "," << q.y << " from " << point.x << ","
                    << point.y;
            }
        }
    }
    EXPECT_GT(enclosed, 50 * static_cast<int>(Factor()));  // of 240: the faces are not all empty
}

}  // namespace
