// Decisions that could contradict one another: curves that nearly coincide, nearly touch, nearly
// stand upright, near the origin and a million units away. Heights are compared with those of wider
// numbers; outlines must be closed, meet themselves nowhere and hold ray by ray.
#include <algorithm>
#include <cmath>
#include <random>

#include "outline_text.h"
#include "plain_law.h"
#include "plane/meeting.h"
#include "plugin/outline/ExactEnvelope.h"
#include "plugin/outline/UpperEnvelope.h"
#include "random_tool.h"
#include "result_chain.h"

namespace {

using Exact = long double;  // eleven bits more than the product has
using outline::Piece;
using outline::Span;

// The height of a piece at x: a line through both ends, a circle through the nearer one.
Exact HeightOf(const Piece& piece, double x) {
    const bool isLeft = x - piece.x0 <= piece.x1 - x;
    const Exact ex = isLeft ? piece.x0 : piece.x1, ey = isLeft ? piece.y0 : piece.y1;
    if (piece.bend == 0)
        return ey + (Exact(x) - ex) * (Exact(piece.y1) - piece.y0) / (Exact(piece.x1) - piece.x0);
    const Exact h0 = ey - piece.cy;
    Exact square = h0 * h0 + (ex - x) * ((ex - piece.cx) + (Exact(x) - piece.cx));
    if (square < 0) square = 0;
    return piece.cy + piece.bend * std::sqrt(square);
}

// Pieces that are hard to tell apart, over 0 .. 100.
class HardPieces {
public:
    explicit HardPieces(unsigned seed) : m_random(seed) {}

    std::vector<Piece> Make() {
        const int count = 2 + static_cast<int>(m_random() % 12);
        std::vector<plane::Curve> curves;
        for (int i = 0; i < count; ++i) curves.push_back(Next(curves));
        std::vector<Piece> pieces;
        for (size_t i = 0; i < curves.size(); ++i)
            outline::AppendPieces(curves[i], static_cast<int>(i), 1e-7, pieces);
        return pieces;
    }

private:
    double Between(double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(m_random);
    }
    double Hair() {
        static const double kHairs[] = {0, 1e-16, 1e-14, 1e-12, 1e-11, 1e-10, 1e-9, 1e-7};
        return (m_random() % 2 == 0 ? 1 : -1) * kHairs[m_random() % 8] * 100;
    }
    plane::Point Somewhere() { return {Between(0, 100), Between(1, 20)}; }

    plane::Curve Next(const std::vector<plane::Curve>& before) {
        if (!before.empty() && m_random() % 4 != 0)
            return Beside(before[m_random() % before.size()]);
        const plane::Point a = Somewhere(), b = Somewhere();
        switch (m_random() % 4) {
            case 0:
                return plane::MakeLine(a, b);
            case 1:  // nearly upright, nearly level
                return m_random() % 2 == 0 ? plane::MakeLine(a, {a.x + 1e-5, b.y})
                                           : plane::MakeLine(a, {b.x, a.y + Hair()});
            case 2:
                return plane::MakeCurve(a, b, Between(-1, 1));
            default:  // a million times as large as itself
                return plane::MakeCurve(a, b, 1e-6 * Between(-1, 1));
        }
    }
    // A curve that is hard to tell from another.
    plane::Curve Beside(const plane::Curve& c) {
        plane::Curve other = c;
        switch (m_random() % 5) {
            case 0: {  // the same, shifted by a hair
                const plane::Vector by{Hair(), Hair()};
                other.from = c.from + by;
                other.to = c.to + by;
                other.centre = c.centre + by;
                return other;
            }
            case 1: {  // a part of it
                const double u = Between(0, 0.5), v = Between(0.5, 1);
                return plane::PartOf(c, plane::PointAt(c, u), plane::PointAt(c, v));
            }
            case 2: {  // from the same point by nearly the same way
                const plane::Point to{c.to.x + Hair(), c.to.y + Hair()};
                return plane::MakeCurve(c.from, to, c.bulge);
            }
            case 3: {  // a line that touches it, or nearly
                const plane::Point at = plane::PointAt(c, Between(0.1, 0.9));
                const plane::Vector along = plane::DirectionAt(c, at) * Between(1, 20);
                const plane::Vector off = plane::Left(plane::Unit(along)) * Hair();
                return plane::MakeLine(at - along + off, at + along + off);
            }
            default: {  // a circle that touches it, or nearly
                const plane::Point at = plane::PointAt(c, Between(0.1, 0.9));
                const plane::Vector normal = plane::Left(plane::DirectionAt(c, at));
                const double radius = Between(-30, 30);
                if (std::fabs(radius) < 0.1) return c;
                const plane::Point centre = at + normal * (radius + Hair());
                return plane::MakeArc(centre, std::fabs(radius), Between(0, 6), Between(1, 5));
            }
        }
    }

    std::mt19937 m_random;
};

// Spans stand in order, cover what the pieces cover and nothing else, and each is the highest.
void CheckEnvelope(const std::vector<Piece>& pieces, const std::vector<Span>& spans, double same) {
    std::vector<double> at;
    for (size_t i = 0; i < spans.size(); ++i) {
        const Piece& p = pieces[spans[i].piece];
        ASSERT_LT(spans[i].x0, spans[i].x1);
        ASSERT_TRUE(spans[i].x0 >= p.x0 && spans[i].x1 <= p.x1);
        if (i > 0) {
            ASSERT_LE(spans[i - 1].x1, spans[i].x0);
        }
        for (const double share : {0.0, 1e-6, 0.1, 0.5, 0.9, 1 - 1e-6, 1.0})
            at.push_back(spans[i].x0 + (spans[i].x1 - spans[i].x0) * share);
    }
    for (const Piece& p : pieces)
        for (const double share : {0.01, 0.33, 0.77, 0.99})
            at.push_back(p.x0 + (p.x1 - p.x0) * share);
    for (const double x : at) {
        Exact highest = -1e9L;
        for (const Piece& p : pieces)
            if (x >= p.x0 && x <= p.x1) highest = (std::max)(highest, HeightOf(p, x));
        // Of what is nearly upright, the height says less than the place.
        Exact shown = -1e9L;
        for (const double beside : {x - same, x, x + same})
            for (const Span& s : spans)
                if (beside >= s.x0 && beside <= s.x1)
                    shown = (std::max)(shown, HeightOf(pieces[s.piece], beside));
        ASSERT_LE(highest - shown, same) << x;
    }
}

TEST(Adversarial, NoPieceThatIsHigherIsMissed) {
    constexpr double kSize = 100, kTie = 1e-12 * kSize;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        std::vector<Piece> pieces = HardPieces(seed).Make();
        // A decimal digit of what counts as one place: ties add up by merging, and no further.
        CheckEnvelope(pieces, outline::UpperEnvelope(pieces, kTie), 1e-10 * kSize);
        if (HasFatalFailure()) return;
        std::mt19937 random(seed);
        std::shuffle(pieces.begin(), pieces.end(), random);
        CheckEnvelope(pieces, outline::UpperEnvelope(pieces, kTie), 1e-10 * kSize);
        if (HasFatalFailure()) return;
    }
}

// Tools that are drawn twice a hair apart, thinned to slender tapers, and moved far away.
std::vector<plane::Curve> HardTool(unsigned seed) {
    std::mt19937 random(seed);
    const auto hair = [&] {
        static const double kHairs[] = {0, 1e-13, 1e-11, 3e-10, 1e-9, 1e-8};
        return (random() % 2 == 0 ? 50 : -50) * kHairs[random() % 6];
    };
    std::vector<plane::Curve> curves;
    for (const outline::Contour& contour : test::RandomTool(seed).Make(seed % 3 != 0)) {
        plane::Curve c = contour.curve;
        if (seed % 4 == 1 && !c.IsArc()) {
            // Walls lean by a hair, level lines fall by one.
            if (c.from.x == c.to.x) c.to.x += hair();
            if (c.from.y == c.to.y) c.to.y = (std::max)(0.0, c.to.y + hair());
        }
        curves.push_back(c);
        if (random() % 2 == 0) {
            const plane::Vector by{hair(), hair()};
            plane::Curve twin = c;
            twin.from = c.from + by;
            twin.to = c.to + by;
            twin.centre = c.centre + by;
            curves.push_back(random() % 2 == 0 ? twin : twin.Reversed());
        }
    }
    return curves;
}

// Nothing of an outline but neighbours' corners meets.
std::string Crossings(const std::vector<plane::Curve>& edges, double size) {
    std::vector<plane::Curve> ring = edges;
    ring.push_back(plane::MakeLine(edges.back().to, edges.front().from));
    for (size_t i = 0; i < ring.size(); ++i)
        for (size_t k = i + 1; k < ring.size(); ++k) {
            const bool areNeighbours = k == i + 1 || (i == 0 && k + 1 == ring.size());
            const plane::Curve &a = ring[i], &b = ring[k];
            std::vector<plane::Point> points;
            plane::AppendMeetings(a, b, 0.0, points);
            for (const plane::Point& p : points) {
                const bool isCorner = areNeighbours && (plane::Distance(p, a.from) <= 1e-9 * size ||
                                                        plane::Distance(p, a.to) <= 1e-9 * size);
                if (!isCorner)
                    return plane::Show(std::vector<plane::Curve>{a}, 12) + " meets " +
                           plane::Show(std::vector<plane::Curve>{b}, 12);
            }
        }
    return "";
}

TEST(Adversarial, OutlinesOfTwinsAndTapersHoldWhereverTheyLie) {
    int drawn = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        outline::Request rules;
        const std::vector<plane::Curve> curves = HardTool(seed);
        for (const plane::Curve& c : curves)
            rules.curves.push_back({c, static_cast<int>(rules.curves.size()), false});
        const outline::Envelope found = outline::FindEnvelope(rules);
        if (found.refusal != outline::Refusal::None) continue;
        ++drawn;
        EXPECT_EQ("", Crossings(found.edges, found.size)) << test::Show(found);
        // The rules in their plainest form take long.
        if (seed % 5 == 0) {
            EXPECT_EQ("", plain::Faults(plain::Law(rules), found.edges)) << test::Show(found);
        }
        // Turned and a million away.
        const double angle = 0.1 + seed;
        const auto move = [&](const plane::Point& p) {
            const plane::Vector v = plane::Turned(plane::Vector{p.x, p.y}, angle);
            return plane::Point{v.x + 1e6, v.y - 1e6};
        };
        SExactRequest request;
        for (plane::Curve c : curves) {
            c.from = move(c.from);
            c.to = move(c.to);
            c.centre = move(c.centre);
            request.m_curves.push_back(c);
        }
        const plane::Point from = move({0, 0}), to = move({1, 0});
        request.m_axisFrom.set(from.x, from.y, 0);
        request.m_axisTo.set(to.x, to.y, 0);
        request.m_half = SExactRequest::E_Half_Upper;
        std::vector<plane::Curve> moved;
        for (plane::Curve c : found.edges)
            moved.push_back(plane::MakeCurve(move(c.from), move(c.to), c.bulge));
        const SExactResult away = CExactEnvelope(request).Find();
        ASSERT_EQ(SExactResult::E_Refusal_None, away.m_refusal);
        // Where twins end apart by less than a point, which of them goes is a matter of rounding.
        EXPECT_LE(test::FarthestApart(moved, test::ChainOf(away)), 2.5 * found.lengths.point);
    }
    EXPECT_GT(drawn, 50);
}

}  // namespace
