#include "product/detect/Marks.h"

#include <algorithm>
#include <cmath>

#include "product/detect/Components.h"

namespace product::detect {
namespace {

constexpr double kLevel = 1e-3;        // sine of an angle that counts as none
constexpr double kRadial = 0.02;       // sine between a line and an angle's centre
constexpr double kRoomAbove = 2.5;     // heights of a text between its middle and its box
constexpr double kRoomBeside = 2.5;    // the same between its ends and the box
constexpr double kRoundReach = 4;      // heights of a text that its circle's radius has at most
constexpr double kOnCircle = 0.05;     // of a circle's radius: lines end there on it
constexpr double kTriangle = 4;        // heads' or letters' sizes of a triangle's sides at most
constexpr double kAngleReach = 2.5;    // heights of a text between it and an angle's arc
constexpr double kMostCell = 12;       // heights of a box that a cell beside it is long
constexpr size_t kMostOfLetters = 40;  // strokes of boxes in a row

class MarkFinder {
public:
    explicit MarkFinder(NoteSheet& notes) : m_notes(notes) {}

    void Letters() {
        for (const NoteText& text : m_notes.sheet.texts) {
            if (m_notes.lines.IsCrowded(text.at)) continue;
            InBox(text);
            InCircle(text);
        }
    }

private:
    const Stroke& At(int i) const { return m_notes.sheet.strokes[i]; }
    double Tolerance() const { return m_notes.tolerance; }
    std::vector<int> EndsAt(Point p) const { return m_notes.lines.EndsAt(p, Tolerance()); }
    bool IsOn(Point p, int i) const {
        const std::vector<Point>& q = At(i).points;
        for (size_t k = 1; k < q.size(); ++k)
            if (Distance(p, q[k - 1], q[k]) <= Tolerance()) return true;
        return false;
    }

    // The nearest lines above, below, right and left of a text, when they are the sides of a
    // rectangle; none otherwise. Its height is given back, too.
    std::vector<int> Around(const NoteText& text, double& height) const {
        const Vector u = {std::cos(text.angle), std::sin(text.angle)}, v = {-u.y, u.x};
        const double above = kRoomAbove * text.height;
        const double beside = text.halfLength + kRoomBeside * text.height;
        std::array<int, 4> out = {-1, -1, -1, -1};
        std::array<double, 4> best = {above, -above, beside, -beside};
        for (const int i : m_notes.lines.Near(text.at, std::max(above, beside))) {
            if (!At(i).IsLine() || m_notes.kinds[i] != NoteKind::None) continue;
            const Vector a = At(i).From() - text.at, b = At(i).To() - text.at;
            for (const bool isAlong : {true, false}) {
                const Vector along = isAlong ? u : v, across = isAlong ? v : u;
                const double a1 = Dot(a, along), b1 = Dot(b, along);
                if (std::abs(Cross(b - a, along)) > kLevel * At(i).Length() || a1 * b1 > 0)
                    continue;
                const double off = Dot(a, across);
                const size_t side = (isAlong ? 0U : 2U) + (off > 0 ? 0U : 1U);
                if (std::abs(off) >= std::abs(best[side])) continue;
                best[side] = off;
                out[side] = i;
            }
        }
        height = best[0] - best[1];
        for (const size_t level : {size_t{0}, size_t{1}})
            for (const size_t upright : {size_t{2}, size_t{3}}) {
                if (out[level] < 0 || out[upright] < 0) return {};
                const Point corner = text.at + u * best[upright] + v * best[level];
                if (!IsOn(corner, out[level]) || !IsOn(corner, out[upright])) return {};
            }
        return {out.begin(), out.end()};
    }

    void InBox(const NoteText& text) {
        double height = 0;
        std::vector<int> box = Around(text, height);
        if (box.empty() || !Grow(box, height)) return;
        for (const int i : box) m_notes.Mark(i, NoteKind::Leader);
        for (const int i : box)
            for (const Point& p : {At(i).From(), At(i).To(), Middle(i)}) LeadFrom(p, i);
    }
    Point Middle(int i) const {
        return {(At(i).From().x + At(i).To().x) / 2, (At(i).From().y + At(i).To().y) / 2};
    }

    // Adds the cells beside it. False when it is no box for itself: a line goes on past it, or more
    // than one stroke of something else comes to its corners.
    bool Grow(std::vector<int>& box, double height) const {
        std::vector<int> others;
        for (size_t n = 0; n < box.size(); ++n)
            for (const Point& end : {At(box[n]).From(), At(box[n]).To()}) {
                bool isJoined = false;
                for (const int k : m_notes.lines.Near(end, Tolerance())) {
                    if (k == box[n]) continue;
                    if (std::find(box.begin(), box.end(), k) != box.end()) {
                        isJoined = true;
                    } else if (ClosesCell(k, box)) {
                        if (box.size() >= kMostOfLetters) return false;
                        box.push_back(k);
                        isJoined = true;
                    } else if (const int closing = NextCell(k, end, height); closing >= 0) {
                        if (box.size() >= kMostOfLetters) return false;
                        box.push_back(k);
                        if (std::find(box.begin(), box.end(), closing) == box.end())
                            box.push_back(closing);
                        isJoined = true;
                    } else if (m_notes.kinds[k] == NoteKind::None &&
                               At(k).kind == StrokeKind::Contour &&
                               std::find(others.begin(), others.end(), k) == others.end()) {
                        others.push_back(k);
                    }
                }
                if (!isJoined) return false;
            }
        return others.size() <= 1;
    }

    bool ClosesCell(int k, const std::vector<int>& box) const {
        if (!At(k).IsLine()) return false;
        const auto touches = [&](Point p) {
            return std::any_of(box.begin(), box.end(), [&](int i) { return IsOn(p, i); });
        };
        return touches(At(k).From()) && touches(At(k).To());
    }

    // The far side of the cell beside a box that a line from its corner leads along; -1: none.
    int NextCell(int k, Point corner, double height) const {
        const Stroke& line = At(k);
        if (!line.IsLine() || line.Length() > kMostCell * height) return -1;
        const bool fromCorner = Distance(line.From(), corner) <= Tolerance();
        if (!fromCorner && Distance(line.To(), corner) > Tolerance()) return -1;
        const Vector along = line.To() - line.From();
        for (const int side : EndsAt(fromCorner ? line.To() : line.From())) {
            const Vector d = At(side).To() - At(side).From();
            if (side != k && At(side).IsLine() &&
                std::abs(At(side).Length() - height) <= 2 * Tolerance() &&
                std::abs(Dot(d, along)) <= kLevel * At(side).Length() * line.Length())
                return side;
        }
        return -1;
    }

    void InCircle(const NoteText& text) {
        for (const int i : m_notes.lines.Near(text.at, kRoundReach * text.height)) {
            const Stroke& circle = At(i);
            if (!circle.isFullCircle || circle.radius > kRoundReach * text.height ||
                Distance(circle.centre, text.at) > 0.5 * circle.radius)
                continue;
            m_notes.Mark(i, NoteKind::Leader);
            const double reach = kOnCircle * circle.radius;
            for (const int k : m_notes.lines.Near(circle.centre, circle.radius + reach)) {
                if (k == i || !At(k).IsLine() || m_notes.kinds[k] != NoteKind::None) continue;
                for (const bool atFrom : {true, false}) {
                    const Point end = atFrom ? At(k).From() : At(k).To();
                    const Point other = atFrom ? At(k).To() : At(k).From();
                    if (std::abs(Distance(end, circle.centre) - circle.radius) > reach ||
                        Distance(other, circle.centre) < circle.radius + reach)
                        continue;
                    m_notes.Mark(k, NoteKind::Leader);
                    FollowLeader(m_notes, k, other);
                    break;
                }
            }
        }
    }

    // Lines that begin on a box.
    void LeadFrom(Point p, int side) {
        const double reach = At(side).Length() / 2 + Tolerance();
        for (const int k : m_notes.lines.Near(p, reach)) {
            if (!At(k).IsLine() || m_notes.kinds[k] != NoteKind::None) continue;
            for (const bool atFrom : {true, false}) {
                if (!IsOn(atFrom ? At(k).From() : At(k).To(), side)) continue;
                m_notes.Mark(k, NoteKind::Leader);
                FollowLeader(m_notes, k, atFrom ? At(k).To() : At(k).From());
                break;
            }
        }
    }

    NoteSheet& m_notes;
};

// The triangle that a leader ends in: two sides of one length from its end, and their base.
std::vector<int> TriangleAt(const NoteSheet& notes, int from, Point tip) {
    const std::vector<Stroke>& strokes = notes.sheet.strokes;
    const auto far = [&](int i) {
        return Distance(strokes[i].From(), tip) < Distance(strokes[i].To(), tip)
                   ? strokes[i].To()
                   : strokes[i].From();
    };
    const std::vector<int> sides = notes.lines.EndsAt(tip, notes.tolerance);
    const double most = kTriangle * strokes[from].Length();
    for (const int a : sides)
        for (const int b : sides) {
            if (a >= b || a == from || b == from || !strokes[a].IsLine() || !strokes[b].IsLine())
                continue;
            const double length = strokes[a].Length();
            if (length > most || std::abs(length - strokes[b].Length()) > 0.05 * length) continue;
            for (const int base : notes.lines.EndsAt(far(a), notes.tolerance))
                if (base != a && strokes[base].IsLine() &&
                    (Distance(strokes[base].From(), far(b)) <= notes.tolerance ||
                     Distance(strokes[base].To(), far(b)) <= notes.tolerance))
                    return {a, b, base};
        }
    return {};
}

}  // namespace

void FollowLeader(NoteSheet& notes, int from, Point end) {
    const std::vector<Stroke>& strokes = notes.sheet.strokes;
    for (int steps = 0; steps < 4; ++steps) {
        for (const int i : TriangleAt(notes, from, end)) notes.Mark(i, NoteKind::Leader);
        int follower = -1;
        for (const int i : notes.lines.EndsAt(end, notes.tolerance))
            if (i != from && notes.kinds[i] == NoteKind::None) {
                if (follower >= 0) return;
                follower = i;
            }
        if (follower < 0) return;
        notes.Mark(follower, NoteKind::Leader);
        end = Distance(strokes[follower].From(), end) < Distance(strokes[follower].To(), end)
                  ? strokes[follower].To()
                  : strokes[follower].From();
        from = follower;
    }
}

void MarkLetters(NoteSheet& notes) { MarkFinder(notes).Letters(); }

void MarkAngles(NoteSheet& notes, const std::vector<LineHeads>& heads) {
    const std::vector<Stroke>& strokes = notes.sheet.strokes;
    const auto hasNumber = [&](const Stroke& arc) {
        return std::any_of(notes.sheet.texts.begin(), notes.sheet.texts.end(),
                           [&](const NoteText& text) {
                               if (!text.isNumber) return false;
                               const double reach = kAngleReach * text.height + text.halfLength;
                               for (size_t k = 1; k < arc.points.size(); ++k)
                                   if (Distance(text.at, arc.points[k - 1], arc.points[k]) <= reach)
                                       return true;
                               return false;
                           });
    };
    // The line that an end of the arc lies on and that points to its centre; -1: none, or something
    // else comes to that end.
    const auto sideAt = [&](int i, Point end) {
        int side = -1;
        for (const int k : notes.lines.Near(end, notes.tolerance)) {
            const std::vector<int>& drawn = heads[i].strokes;
            if (k == i || std::find(drawn.begin(), drawn.end(), k) != drawn.end()) continue;
            const Vector out = end - strokes[i].centre;
            const Vector along = strokes[k].To() - strokes[k].From();
            if (!strokes[k].IsLine() ||
                std::abs(Cross(along, out)) > kRadial * strokes[k].Length() * strokes[i].radius)
                return -1;
            side = k;
        }
        return side;
    };
    const auto isFree = [&](int i, int side, Point outer) {
        const std::vector<int> there = notes.lines.Near(outer, notes.tolerance);
        return std::all_of(there.begin(), there.end(), [&](int k) { return k == side || k == i; });
    };
    for (size_t n = 0; n < strokes.size(); ++n) {
        const int i = static_cast<int>(n);
        const Stroke& arc = strokes[n];
        if (!arc.isArc || arc.isFullCircle || notes.kinds[n] != NoteKind::None ||
            notes.lines.IsCrowded(arc.From()) || notes.lines.IsCrowded(arc.To()))
            continue;
        const int a = sideAt(i, arc.From()), b = sideAt(i, arc.To());
        if (a < 0 || b < 0 || a == b || !(heads[n].AtBoth() || hasNumber(arc))) continue;
        notes.Mark(i, NoteKind::Dimension);
        for (const int k : heads[n].strokes) notes.Mark(k, NoteKind::Dimension);
        for (const int side : {a, b}) {
            const Stroke& line = strokes[side];
            const Point outer = Distance(line.From(), arc.centre) > Distance(line.To(), arc.centre)
                                    ? line.From()
                                    : line.To();
            if (isFree(i, side, outer)) notes.Mark(side, NoteKind::Dimension);
        }
    }
}

}  // namespace product::detect
