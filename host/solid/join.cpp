#include "host/solid/join.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "host/solid/tolerance.h"

namespace host::solid {

namespace {

constexpr double kWidestSweep = 4.1887902047863905;  // 240 degrees

// Lines from one start, joined as long as one direction passes within the tolerance of every corner
// left out: the interval of such directions only narrows, so nothing drifts.
class LineRun {
public:
    explicit LineRun(const Piece& first)
        : start_(first.from), along_(Unit(first.Chord())), end_(first.to) {}

    bool Take(const Piece& next) {
        const Vector corner = end_ - start_;
        const double s = Dot(corner, along_), t = Dot(corner, Left(along_));
        const double low = (std::max)(low_, (t - kJoinTol) / s);
        const double high = (std::min)(high_, (t + kJoinTol) / s);
        const Vector far = next.to - start_;
        const double reach = Dot(far, along_);
        if (reach <= s) return false;  // turns back
        const double slope = Dot(far, Left(along_)) / reach;
        if (slope < low || slope > high) return false;
        low_ = low;
        high_ = high;
        end_ = next.to;
        return true;
    }
    Piece Joined() const { return plane::MakeCurve(start_, end_, 0.0); }

private:
    Point start_;
    Vector along_;
    Point end_;
    double low_ = -std::numeric_limits<double>::infinity();
    double high_ = std::numeric_limits<double>::infinity();
};

// Arcs on the circle of the first one.
class ArcRun {
public:
    explicit ArcRun(const Piece& first) : first_(first), end_(first.to) {
        sweep_ = 2.0 * std::fabs(first.HalfAngle());
    }

    bool Take(const Piece& next) {
        const double sweep = sweep_ + 2.0 * std::fabs(next.HalfAngle());
        if ((next.bulge > 0.0) != (first_.bulge > 0.0) || sweep > kWidestSweep) return false;
        // Three points fix a circle; the middle also tells the arc from the rest of its circle.
        for (const Point& p : {next.Middle(), next.to})
            if (std::fabs(Distance(p, first_.centre) - first_.radius) > kJoinTol) return false;
        sweep_ = sweep;
        end_ = next.to;
        joined_ = true;
        return true;
    }
    Piece Joined() const {
        // By the sweep, so that both ends lie on the circle to the last digit.
        return joined_ ? plane::MakeCurve(first_.from, end_,
                                          std::copysign(std::tan(0.25 * sweep_), first_.bulge))
                       : first_;
    }

private:
    Piece first_;
    Point end_;
    double sweep_ = 0.0;
    bool joined_ = false;
};

// Takes pieces from begin on as long as they join; returns the end of the run.
template <class Run>
std::size_t Extend(const std::vector<Piece>& pieces, std::size_t begin, std::vector<Piece>& out) {
    Run run(pieces[begin]);
    std::size_t end = begin + 1;
    while (end < pieces.size() && pieces[end].IsArc() == pieces[begin].IsArc() &&
           run.Take(pieces[end]))
        ++end;
    out.push_back(run.Joined());
    return end;
}

std::vector<Piece> Joined(const std::vector<Piece>& pieces) {
    std::vector<Piece> out;
    for (std::size_t i = 0; i < pieces.size();)
        i = pieces[i].IsArc() ? Extend<ArcRun>(pieces, i, out) : Extend<LineRun>(pieces, i, out);
    return out;
}

bool Joins(const Piece& a, const Piece& b) {
    if (a.IsArc() != b.IsArc()) return false;
    return a.IsArc() ? ArcRun(a).Take(b) : LineRun(a).Take(b);
}

}  // namespace

void JoinNeighbours(Chain& chain) {
    std::vector<Piece>& pieces = chain.pieces;
    if (chain.closed) {
        // Start at a corner that stays, so that a run across the start is one run.
        std::size_t start = 0;
        while (start < pieces.size() &&
               Joins(pieces[(start + pieces.size() - 1) % pieces.size()], pieces[start]))
            ++start;
        std::rotate(pieces.begin(),
                    pieces.begin() + static_cast<std::ptrdiff_t>(start % pieces.size()),
                    pieces.end());
    }
    pieces = Joined(pieces);
}

}  // namespace host::solid
