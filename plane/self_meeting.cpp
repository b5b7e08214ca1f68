#include <algorithm>
#include <cmath>
#include <utility>

#include "plane/meeting.h"
#include "plane/ring.h"

namespace plane {
namespace {

// Radians; directions closer than this leave it open on which side a strand lies: a touch.
constexpr double kAngleTol = 1e-7;

// Angle brought into [0, 2 pi).
double Positive(double angle) { return angle - kFullTurn * std::floor(angle / kFullTurn); }

class Finder {
public:
    Finder(const std::vector<Curve>& ring, double tol) : m_tol(tol) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            if (!(ring[i].Length() > tol)) continue;
            m_numbers.push_back(i);
            m_curves.push_back(ring[i]);
        }
    }

    std::optional<SelfMeeting> Run() {
        std::vector<Box> boxes;
        boxes.reserve(m_curves.size());
        for (const Curve& curve : m_curves) boxes.push_back(BoxOf(curve));
        // Pairs come by their numbers, so the first crossing or overlap is the one to name.
        ForEachMeetingPair(boxes, m_tol, [this](std::size_t i, std::size_t j) {
            Compare(i, j);
            return !m_found || m_found->kind == MeetingKind::Touch;
        });
        return m_found;
    }

private:
    std::size_t After(std::size_t i) const { return (i + 1) % m_curves.size(); }
    std::size_t Before(std::size_t i) const { return (i + m_curves.size() - 1) % m_curves.size(); }

    // i < j.
    void Compare(std::size_t i, std::size_t j) {
        if (const auto along = Stretch(m_curves[i], m_curves[j], m_tol))
            return Note(MeetingKind::Overlap, *along, i, j);
        const bool follows = After(i) == j, precedes = After(j) == i;
        // Two curves that make a ring meet in their corners: no room for more.
        if (follows && precedes) return;
        if (follows || precedes) {
            const std::size_t a = follows ? i : j, b = follows ? j : i;
            if (const auto p = SecondMeeting(m_curves[a], m_curves[b], m_tol))
                Note(KindAt(i, j, *p), *p, i, j);
            return;
        }
        std::vector<Point> points;
        AppendMeetings(m_curves[i], m_curves[j], m_tol, points);
        for (const Point& p : points) Note(KindAt(i, j, p), p, i, j);
    }

    // Directions in which the ring leaves p: where it came from, and where it goes.
    std::pair<double, double> Strand(std::size_t i, const Point& p) const {
        const Curve& curve = m_curves[i];
        const Vector in = Distance(p, curve.from) <= m_tol ? m_curves[Before(i)].EndDirection()
                                                           : DirectionAt(curve, p);
        const Vector out = Distance(p, curve.to) <= m_tol ? m_curves[After(i)].StartDirection()
                                                          : DirectionAt(curve, p);
        return {AngleOf(-in), AngleOf(out)};
    }

    // Strands cross when the directions of one separate those of the other.
    MeetingKind KindAt(std::size_t a, std::size_t b, const Point& p) const {
        const auto [backA, outA] = Strand(a, p);
        const auto [backB, outB] = Strand(b, p);
        const double split = Positive(backA - outA);
        int sides = 0;
        for (const double angle : {Positive(backB - outA), Positive(outB - outA)}) {
            const double toOut = (std::min)(angle, kFullTurn - angle);
            if (toOut < kAngleTol || std::fabs(angle - split) < kAngleTol)
                return MeetingKind::Touch;
            sides += angle < split ? 1 : -1;
        }
        return sides == 0 ? MeetingKind::Crossing : MeetingKind::Touch;
    }

    void Note(MeetingKind kind, const Point& at, std::size_t i, std::size_t j) {
        const bool isTouch = kind == MeetingKind::Touch;
        // In the order of the pairs a later one never ranks before, save a crossing before touches.
        if (m_found && (isTouch || m_found->kind != MeetingKind::Touch)) return;
        m_found = SelfMeeting{kind, at, m_numbers[i], m_numbers[j]};
    }

    double m_tol;
    std::vector<Curve> m_curves;
    std::vector<std::size_t> m_numbers;  // in the ring
    std::optional<SelfMeeting> m_found;
};

}  // namespace

std::optional<SelfMeeting> FindSelfMeeting(const std::vector<Curve>& ring, double tol) {
    return Finder(ring, tol).Run();
}

}  // namespace plane
