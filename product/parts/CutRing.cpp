#include "product/parts/CutRing.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "host/solid/tolerance.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"

namespace product {
namespace {

using host::solid::Chain;
using host::solid::kPositionTol;
using host::solid::Piece;
using host::solid::Profile;
using plane::MakeCurve;

// A straight cut: places before it are negative.
class Line {
public:
    Line(const std::vector<Piece>& ring, const plane::Vector& direction, double at)
        : m_direction(direction), m_at(at) {
        double nearest = kPositionTol;
        double moved = at;
        for (const Piece& piece : ring) {
            const double place = Along(piece.from);
            if (std::fabs(place - at) >= nearest) continue;
            nearest = std::fabs(place - at);
            moved = place;
        }
        m_at = moved;
    }

    const plane::Vector& Direction() const { return m_direction; }
    // A point next to the line, put on it.
    plane::Point Onto(const plane::Point& p) const { return p + m_direction * (m_at - Along(p)); }
    // 0 on the line.
    double Side(const plane::Point& p) const {
        const double side = Along(p) - m_at;
        return std::fabs(side) < kPositionTol ? 0 : side;
    }
    // Across the line, to order places on it.
    double Across(const plane::Point& p) const { return p.y * m_direction.x - p.x * m_direction.y; }

private:
    double Along(const plane::Point& p) const { return p.x * m_direction.x + p.y * m_direction.y; }

    plane::Vector m_direction;
    double m_at;
};

// An arc as a rational parabola (1-t)^2 A + 2 t (1-t) W + t^2 B with the weight w in the middle:
// no formula goes through the centre, which may be far away.
struct RationalArc {
    plane::Point from;
    plane::Vector chord, middle;  // from the start; the middle corner times its weight
    double weight = 0;

    explicit RationalArc(const Piece& arc) : from(arc.from), chord(arc.Chord()) {
        const double half = arc.HalfAngle();
        weight = std::cos(half);
        const double rise = 0.5 * std::sin(half);
        middle = chord * (0.5 * weight) - Left(chord) * rise;
    }
    plane::Point Point(double t) const {
        const double b = 2 * t * (1 - t), c = t * t;
        const double w = (1 - t) * (1 - t) + b * weight + c;
        return from + (middle * b + chord * c) * (1 / w);
    }
};

// Where a piece passes the line, in the order of travel.
std::vector<double> Passes(const Piece& piece, const Line& line) {
    const double a = line.Side(piece.from), d = line.Side(piece.to);
    if (!piece.IsArc()) {
        if (a * d >= 0) return {};
        return {a / (a - d)};
    }
    const RationalArc arc(piece);
    const double b = Dot(arc.middle, line.Direction()) + arc.weight * a;
    std::vector<double> found;
    const auto take = [&](double u) {
        if (u > 0 && std::isfinite(u)) found.push_back(u / (1 + u));
    };
    if (a == 0 && d == 0) return {};
    if (a == 0) {
        take(-2 * b / d);
    } else if (d == 0) {
        take(-a / (2 * b));
    } else {
        const double under = b * b - a * d;
        if (under <= 0) return {};
        const double q = -(b + std::copysign(std::sqrt(under), b));
        take(q / d);
        take(a / q);
    }
    std::sort(found.begin(), found.end());
    // An arc that only just looks over the line does not pass it.
    if (found.size() == 2 && line.Side(arc.Point(0.5 * (found[0] + found[1]))) == 0) return {};
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](double t) {
                                   const plane::Point p = arc.Point(t);
                                   return Distance(p, piece.from) < kPositionTol ||
                                          Distance(p, piece.to) < kPositionTol;
                               }),
                found.end());
    return found;
}

struct Sided {
    Piece piece;
    int side = 0;
};

void AddSided(const Piece& piece, const Line& line, std::vector<Sided>& out) {
    std::vector<double> places = Passes(piece, line);
    places.push_back(1);
    plane::Point start = piece.from;
    for (const double to : places) {
        plane::Point end = piece.to;
        if (to != 1)
            end = line.Onto(piece.IsArc() ? RationalArc(piece).Point(to)
                                          : piece.from + piece.Chord() * to);
        const Piece part = places.size() == 1 ? piece : PartOf(piece, start, end);
        const double middle = line.Side(part.Middle());
        out.push_back({part, middle < 0 ? -1 : middle > 0 ? 1 : 0});
        start = end;
    }
}

// A run along one side, closed by straight lines through those of the other run's ends that lie
// between its own.
std::vector<Piece> Closed(std::vector<Piece> run, const Line& line, const plane::Point& one,
                          const plane::Point& other) {
    const plane::Point from = run.back().to, to = run.front().from;
    const double begin = line.Across(from), end = line.Across(to);
    std::vector<plane::Point> between;
    for (const plane::Point& p : {one, other}) {
        const double at = line.Across(p);
        if (at > (std::min)(begin, end) + kPositionTol &&
            at < (std::max)(begin, end) - kPositionTol)
            between.push_back(p);
    }
    std::sort(between.begin(), between.end(), [&](const plane::Point& a, const plane::Point& b) {
        return std::fabs(line.Across(a) - begin) < std::fabs(line.Across(b) - begin);
    });
    between.push_back(to);
    plane::Point at = from;
    for (const plane::Point& p : between) {
        if (at.x != p.x || at.y != p.y) run.push_back(MakeCurve(at, p, 0));
        at = p;
    }
    return run;
}

[[noreturn]] void Refuse(const std::string& why) { throw Failure(Fault::NoResult, why); }

bool LiesOnAxis(const Piece& piece) {
    return !piece.IsArc() && piece.from.y == 0 && piece.to.y == 0;
}

// From the axis back to the axis, neighbours on one plane across the axis joined.
Chain ChainOf(std::vector<Piece> ring) {
    Chain chain;
    const auto axis = std::find_if(ring.begin(), ring.end(), LiesOnAxis);
    chain.closed = axis == ring.end();
    if (!chain.closed) std::rotate(ring.begin(), axis, ring.end());
    const auto isFace = [](const Piece& piece) {
        return !piece.IsArc() && piece.from.x == piece.to.x;
    };
    for (const Piece& piece : ring) {
        if (LiesOnAxis(piece)) continue;
        std::vector<Piece>& pieces = chain.pieces;
        const bool goesOn =
            !pieces.empty() && isFace(pieces.back()) && isFace(piece) &&
            (pieces.back().to.y - pieces.back().from.y) * (piece.to.y - piece.from.y) > 0;
        if (goesOn)
            pieces.back() = MakeCurve(pieces.back().from, piece.to, 0);
        else
            pieces.push_back(piece);
    }
    return chain;
}

Reach ReachOf(const Chain& chain) {
    plane::Box box;
    for (const Piece& piece : chain.pieces) box.Add(BoxOf(piece));
    return {box.low.x, box.high.x};
}

}  // namespace

CutRings CutRing(const std::vector<Piece>& ring, const plane::Vector& direction, double at) {
    const Line line(ring, direction, at);
    std::vector<Sided> sided;
    for (const Piece& piece : ring) AddSided(piece, line, sided);
    // To begin with the first piece that lies before the line after one that lies behind it.
    const size_t n = sided.size();
    size_t begin = n;
    int last = 0, changes = 0;
    for (size_t k = 0; k < 2 * n; ++k) {
        const int side = sided[k % n].side;
        if (side == 0) continue;
        if (last != 0 && side != last && k >= n) ++changes;
        if (last > 0 && side < 0 && begin == n) begin = k % n;
        last = side;
    }
    if (begin == n) Refuse("the cut lies beyond the envelope");
    if (changes > 2)
        Refuse("the cut leads through the envelope in more than one place; choose another one");
    std::rotate(sided.begin(), sided.begin() + static_cast<std::ptrdiff_t>(begin), sided.end());
    std::vector<Piece> runs[2];  // before, behind
    std::vector<Piece> waiting;
    int current = -1;
    for (const Sided& part : sided) {
        if (part.side == 0) {
            waiting.push_back(part.piece);
            continue;
        }
        std::vector<Piece>& run = runs[part.side < 0 ? 0 : 1];
        // Along the line between two pieces of one side.
        if (part.side == current) run.insert(run.end(), waiting.begin(), waiting.end());
        waiting.clear();
        current = part.side;
        run.push_back(part.piece);
    }
    const plane::Point ends[] = {runs[0].back().to, runs[0].front().from, runs[1].back().to,
                                 runs[1].front().from};
    CutRings cut;
    cut.before = Closed(std::move(runs[0]), line, ends[2], ends[3]);
    cut.behind = Closed(std::move(runs[1]), line, ends[0], ends[1]);
    return cut;
}

CutProfiles CutProfile(const Profile& profile, double at) {
    CutProfiles cut;
    cut.below.frame = cut.above.frame = profile.frame;
    bool isFirst = true;
    for (const Chain& chain : profile.chains) {
        const Reach reach = ReachOf(chain);
        if (reach.high <= at + kPositionTol && !isFirst) {
            cut.below.chains.push_back(chain);
        } else if (reach.low >= at - kPositionTol && !isFirst) {
            cut.above.chains.push_back(chain);
        } else if (!isFirst) {
            Refuse("the cut leads through a cavity of the solid; choose another one");
        } else {
            std::vector<Piece> ring = chain.pieces;
            if (!chain.closed) ring.push_back(MakeCurve(ring.back().to, ring.front().from, 0));
            CutRings rings = CutRing(ring, plane::Vector{1, 0}, at);
            cut.below.chains.push_back(ChainOf(std::move(rings.before)));
            cut.above.chains.push_back(ChainOf(std::move(rings.behind)));
        }
        isFirst = false;
    }
    return cut;
}

Reach ReachOf(const Profile& profile) {
    Reach reach = ReachOf(profile.chains.front());
    for (const Chain& chain : profile.chains) {
        const Reach other = ReachOf(chain);
        reach.low = (std::min)(reach.low, other.low);
        reach.high = (std::max)(reach.high, other.high);
    }
    return reach;
}

}  // namespace product
