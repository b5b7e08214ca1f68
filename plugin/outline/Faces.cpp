#include "StdAfx.h"

#include "Faces.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Slivers.h"

namespace outline {
namespace {

// Here u is the depth behind the end, 0 at it and positive inwards. Curves of the face are pieces
// with r in x and -u in y: the highest of them is the outermost.

// The least height of the profile from the end to a depth: flat, or falling along a piece.
class Floor {
public:
    // profile  pieces in (u, r) from u = 0 inwards, each over its own part
    Floor(const std::vector<Piece>& profile, double tiny) : m_tiny(tiny) {
        double least = std::numeric_limits<double>::infinity();
        for (const Piece& p : profile) {
            least = (std::min)(least, p.y0);
            // Where the piece begins to fall below what was least, and where it stops to fall.
            const double stop = p.bend < 0 ? (std::min)((std::max)(p.cx, p.x0), p.x1) : p.x1;
            const double bottom = HeightAt(p, stop);
            if (!(bottom < least)) {
                Add(p.x0, p.x1, least, nullptr);
                continue;
            }
            const double start = FallsBelow(p, least, stop);
            if (start > p.x0) Add(p.x0, start, least, nullptr);
            if (stop - start > tiny) Add(start, stop, 0, &p);
            least = bottom;
            if (p.x1 > stop) Add(stop, p.x1, least, nullptr);
        }
    }

    double At(double u) const {
        const size_t i = Behind(u);
        if (i == m_parts.size()) return m_parts.empty() ? 0.0 : HeightIn(m_parts.back(), u);
        double height = HeightIn(m_parts[i], u);
        // A step down at u itself counts, as do places that rounding takes for it.
        for (size_t k = i + 1; k < m_parts.size() && m_parts[k].from <= u + 2 * m_tiny; ++k)
            height = (std::min)(height, HeightIn(m_parts[k], m_parts[k].from));
        return height;
    }

    struct Part {
        double from = 0, to = 0, level = 0;
        bool isFlat = true;
        Piece piece;
    };
    size_t Behind(double u) const {
        return static_cast<size_t>(
            std::lower_bound(m_parts.begin(), m_parts.end(), u,
                             [](const Part& p, double value) { return p.to < value; }) -
            m_parts.begin());
    }
    const std::vector<Part>& Parts() const { return m_parts; }

private:
    void Add(double from, double to, double level, const Piece* piece) {
        Part part;
        part.from = from;
        part.to = to;
        part.level = level;
        part.isFlat = piece == nullptr;
        if (piece != nullptr) part.piece = *piece;
        m_parts.push_back(part);
    }
    static double HeightIn(const Part& part, double u) {
        return part.isFlat ? part.level : HeightAt(part.piece, u);
    }
    static double FallsBelow(const Piece& p, double level, double stop) {
        if (p.y0 <= level && SlopeAt(p, p.x0) <= 0) return p.x0;
        Piece flat;
        flat.x0 = p.x0;
        flat.x1 = p.x1;
        flat.y0 = flat.y1 = level;
        double at[2];
        const int count = CrossingsOf(p, flat, p.x0, stop, at);
        return count > 0 ? at[count - 1] : p.x0;
    }

    const double m_tiny;
    std::vector<Part> m_parts;
};

class FaceFinder {
public:
    FaceFinder(const FaceInput& input, bool isRight)
        : m_in(input),
          m_isRight(isRight),
          m_depth((std::min)(input.measures.d, (input.s1 - input.s0) / 3)),
          m_floor(ProfileBehind(), input.measures.tiny) {
        const auto& spans = input.profile.Spans();
        const auto& pieces = input.profile.Pieces();
        m_top = isRight ? HeightAt(pieces[spans.back().piece], spans.back().x1)
                        : HeightAt(pieces[spans.front().piece], spans.front().x0);
    }

    std::vector<plane::Curve> Find() {
        m_r = m_top;
        if (!m_in.isVertical && m_top > 0) {
            FindPieces();
            std::vector<Span> spans = UpperEnvelope(m_pieces, m_in.measures.tie);
            DropSlivers(spans, 2 * m_in.measures.tiny);
            for (size_t k = spans.size(); k-- > 0 && m_r > 0;) Walk(spans[k]);
        }
        GoDown(0.0);
        for (plane::Curve& c : m_edges) c = FromDepth(c);
        return m_edges;
    }

private:
    double End() const { return m_isRight ? m_in.s1 : m_in.s0; }
    double Depth(double s) const { return m_isRight ? m_in.s1 - s : s - m_in.s0; }

    // (s, r) to (u, r), and back.
    plane::Curve ToDepth(const plane::Curve& c) const {
        return Moved(c, [&](double s) { return Depth(s); });
    }
    plane::Curve FromDepth(const plane::Curve& c) const {
        return Moved(c, [&](double u) { return m_isRight ? m_in.s1 - u : m_in.s0 + u; });
    }
    template <class Map>
    plane::Curve Moved(plane::Curve c, const Map& map) const {
        c.from.x = map(c.from.x);
        c.to.x = map(c.to.x);
        if (!c.IsArc()) return c;
        c.centre.x = map(c.centre.x);
        if (m_isRight) c.bulge = -c.bulge;
        return c;
    }
    // A quarter turn: (u, r) to (r, -u), and back.
    static plane::Curve Turned(plane::Curve c) {
        c.from = {c.from.y, -c.from.x};
        c.to = {c.to.y, -c.to.x};
        c.centre = {c.centre.y, -c.centre.x};
        return c;
    }
    static plane::Curve TurnedBack(plane::Curve c) {
        c.from = {-c.from.y, c.from.x};
        c.to = {-c.to.y, c.to.x};
        c.centre = {-c.centre.y, c.centre.x};
        return c;
    }

    // The profile over the depth that counts, from the end inwards.
    std::vector<Piece> ProfileBehind() const {
        std::vector<Piece> behind;
        const auto& spans = m_in.profile.Spans();
        const auto& pieces = m_in.profile.Pieces();
        for (size_t i = 0; i < spans.size(); ++i) {
            const Span& span = spans[m_isRight ? spans.size() - 1 - i : i];
            if (Depth(m_isRight ? span.x1 : span.x0) > m_depth) break;
            AppendPieces(ToDepth(outline::PartOf(pieces[span.piece], span.x0, span.x1)), 0,
                         m_in.measures.tiny, behind);
        }
        return behind;
    }

    void FindPieces() {
        const double tiny = m_in.measures.tiny;
        for (size_t i = 0; i < m_in.curves.size(); ++i) {
            const plane::Box box = plane::BoxOf(m_in.curves[i]);
            const double a = Depth(box.low.x), b = Depth(box.high.x);
            if ((std::min)(a, b) > m_depth || (std::max)(a, b) < -tiny) continue;
            AppendPieces(Turned(ToDepth(m_in.curves[i])), static_cast<int>(i), tiny, m_pieces);
        }
    }

    void Walk(const Span& span) {
        const Piece& piece = m_pieces[span.piece];
        const double top = (std::min)(span.x1, m_r), bottom = (std::max)(span.x0, 0.0);
        if (!(top > bottom)) return;
        if (top < m_r - 3 * m_in.measures.tiny) {
            // Nothing is drawn at that height.
            GoDown(top);
            m_isStraight = true;
        }
        // From one curve to the next the face may touch the profile in their corner alone.
        if (!m_isStraight && m_r < m_top - m_in.measures.tiny && IsAtProfile(top)) {
            Hang(top);
            m_isStraight = true;
        }
        double from = top;
        if (m_isStraight) {
            if (!ComesBack(piece, bottom, from)) return TouchAt(piece, bottom);
            GoDown(from);
            m_isStraight = false;
        } else if (DepthAt(piece, top) > m_u + m_in.measures.g && !MayJump(piece, top)) {
            m_isStraight = true;
            if (!ComesBack(piece, bottom, from)) return TouchAt(piece, bottom);
            GoDown(from);
            m_isStraight = false;
        }
        StepTo(DepthAt(piece, from), from);
        const double stop = FollowTo(piece, from, bottom);
        if (stop > bottom) {
            if (stop >= m_top - m_in.measures.tiny || !m_isTouching) {
                Follow(piece, from, stop);
            } else {
                Hang(stop);
            }
            m_isStraight = true;
            if (ComesBack(piece, bottom, from = stop) && from < stop) {
                GoDown(from);
                m_isStraight = false;
                Follow(piece, from, bottom);
            }
            return;
        }
        Follow(piece, from, bottom);
    }

    bool IsAtProfile(double r) const { return !(m_floor.At(m_u) > r + m_in.measures.tiny); }

    // The face runs into the profile: what lies outside of it would hang by a point, and belongs to
    // the tool. It goes straight down at the end instead.
    void Hang(double r) {
        m_edges.clear();
        m_u = 0;
        m_r = m_top;
        GoDown(r);
    }

    static double Raw(const Piece& piece, double r) { return -HeightAt(piece, r); }
    double DepthAt(const Piece& piece, double r) const { return (std::max)(Raw(piece, r), 0.0); }

    // The highest place from `from` down where the curve lies no deeper than the face does.
    bool ComesBack(const Piece& piece, double bottom, double& from) const {
        if (Raw(piece, from) <= m_u + m_in.measures.tiny) return true;
        double at[2];
        const int count = CrossingsOf(piece, Level(bottom, from, -m_u), bottom, from, at);
        for (int i = count; i-- > 0;) {
            // Below it the curve must go on outside, not only touch.
            const double below = i > 0 ? at[i - 1] : bottom;
            if (Raw(piece, (at[i] + below) / 2) < m_u) {
                from = at[i];
                return true;
            }
        }
        return false;
    }

    // A curve whose lower end reaches the face has come back there.
    void TouchAt(const Piece& piece, double bottom) {
        if (Raw(piece, bottom) > m_u + m_in.measures.tiny) return;
        GoDown(bottom);
        m_isStraight = false;
    }

    static Piece Level(double x0, double x1, double y) {
        Piece level;
        level.x0 = x0;
        level.x1 = x1;
        level.y0 = level.y1 = y;
        return level;
    }

    bool MayJump(const Piece& piece, double r) const {
        const double g = m_in.measures.g, u = DepthAt(piece, r);
        if (u > m_depth || r <= 2 * g || !(m_floor.At(u) > r + g)) return false;
        const plane::Point corner{m_isRight ? End() - m_u : End() + m_u, r};
        for (const plane::Point& p : m_in.freeEnds)
            if (plane::Distance(p, corner) <= 2 * g) return false;
        return true;
    }

    // How far down from `from` the curve stays within the depth and under the profile.
    double FollowTo(const Piece& piece, double from, double bottom) {
        m_isTouching = false;
        const double deepest = -LowestIn(piece, bottom, from);
        if (deepest <= m_depth && m_floor.At((std::max)(deepest, 0.0)) > from + m_in.measures.tie)
            return bottom;
        std::vector<double> stops{from, bottom};
        const auto addCrossings = [&](const Piece& other) {
            const double lo = (std::max)(bottom, other.x0), hi = (std::min)(from, other.x1);
            if (!(hi > lo)) return;
            double at[2];
            const int count = CrossingsOf(piece, other, lo, hi, at);
            stops.insert(stops.end(), at, at + count);
        };
        addCrossings(Level(bottom, from, -m_depth));
        const double outermost = -HighestIn(piece, bottom, from);
        const auto& parts = m_floor.Parts();
        std::vector<Piece> turned;
        for (size_t i = m_floor.Behind(outermost); i < parts.size(); ++i) {
            const Floor::Part& part = parts[i];
            if (part.from > (std::min)(deepest, m_depth)) break;
            addCrossings(Level(bottom, from, -part.from));
            addCrossings(Level(bottom, from, -part.to));
            if (part.isFlat) {
                if (part.level > bottom && part.level < from) stops.push_back(part.level);
                continue;
            }
            turned.clear();
            AppendPieces(Turned(outline::PartOf(part.piece, part.from, part.to)), 0, 0.0, turned);
            for (const Piece& p : turned) addCrossings(p);
        }
        std::sort(stops.begin(), stops.end());
        for (size_t i = stops.size(); --i > 0;) {
            const double middle = (stops[i] + stops[i - 1]) / 2;
            const double u = Raw(piece, middle);
            if (stops[i] - stops[i - 1] <= m_in.measures.tiny) continue;
            if (u > m_depth) return stops[i];
            if (!(m_floor.At((std::max)(u, 0.0)) > middle + m_in.measures.tie)) {
                m_isTouching = true;
                return stops[i];
            }
        }
        return bottom;
    }

    void StepTo(double u, double r) {
        if (std::fabs(u - m_u) > 0) m_edges.push_back(plane::MakeLine({m_u, r}, {u, r}));
        m_u = u;
        m_r = r;
    }

    void Follow(const Piece& piece, double from, double to) {
        if (!(from > to)) return;
        plane::Curve c = TurnedBack(outline::PartOf(piece, to, from)).Reversed();
        c.from = {m_u, m_r};
        c.to = {DepthAt(piece, to), to};
        m_edges.push_back(c);
        m_u = c.to.x;
        m_r = to;
    }

    void GoDown(double r) {
        if (!(m_r > r)) return;
        m_edges.push_back(plane::MakeLine({m_u, m_r}, {m_u, r}));
        m_r = r;
    }

    const FaceInput& m_in;
    const bool m_isRight;
    const double m_depth;
    const Floor m_floor;
    double m_top = 0;
    std::vector<Piece> m_pieces;
    std::vector<plane::Curve> m_edges;  // in (u, r)
    double m_u = 0, m_r = 0;            // where the face has come to
    bool m_isStraight = false;
    bool m_isTouching = false;
};

}  // namespace

std::vector<plane::Curve> FindFace(const FaceInput& input, bool isRight) {
    return FaceFinder(input, isRight).Find();
}

}  // namespace outline
