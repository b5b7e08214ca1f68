#include "product/detect/Heads.h"

#include <algorithm>
#include <cmath>

#include "product/detect/Components.h"

namespace product::detect {
namespace {

constexpr double kLeastSine = 0.08, kMostSine = 0.75;  // of half an open head's angle
constexpr double kMostShare = 0.5;  // of the line's length, of heads without fill
constexpr double kAlike = 0.05;     // of a head's length

struct Tail {
    int stroke;
    Point free;
    Vector back;  // from the line's end to the free one
};

class HeadFinder {
public:
    HeadFinder(const Sheet& sheet, const NearLines& lines, double tolerance)
        : m_sheet(sheet), m_lines(lines), m_tolerance(tolerance), m_heads(sheet.strokes.size()) {}

    std::vector<LineHeads> Run() {
        for (const ArrowHead& head : m_sheet.heads) AddFilled(head);
        for (size_t i = 0; i < m_sheet.strokes.size(); ++i) {
            const Stroke& stroke = m_sheet.strokes[i];
            if (stroke.isFullCircle || stroke.kind != StrokeKind::Contour) continue;
            for (const size_t which : {size_t{0}, size_t{1}})
                if (m_heads[i].length[which] <= 0) AddDrawn(static_cast<int>(i), which);
        }
        return std::move(m_heads);
    }

private:
    const Stroke& At(int i) const { return m_sheet.strokes[i]; }

    void AddFilled(const ArrowHead& head) {
        const Vector along = head.tip - head.back;
        const double length = std::sqrt(Dot(along, along));
        for (const Point& end : {head.tip, head.back})
            for (const int i : m_lines.EndsAt(end, m_tolerance + 0.1 * length)) {
                const Stroke& stroke = At(i);
                if (stroke.isFullCircle) continue;
                const size_t which =
                    Distance(stroke.From(), end) < Distance(stroke.To(), end) ? 0 : 1;
                // An arc's head follows its chord.
                const double slack = stroke.isArc ? 0.3 : 0.05;
                if (std::abs(Cross(Outwards(stroke, which), along)) > slack * length) continue;
                m_heads[i].length[which] = length;
            }
    }

    // Unit direction in which a stroke leaves at its end.
    static Vector Outwards(const Stroke& stroke, size_t which) {
        const std::vector<Point>& p = stroke.points;
        const Vector d = which == 0 ? p[0] - p[1] : p[p.size() - 1] - p[p.size() - 2];
        const double length = std::sqrt(Dot(d, d));
        return length > 0 ? d * (1 / length) : d;
    }

    void AddDrawn(int i, size_t which) {
        const Stroke& stroke = At(i);
        const Point end = which == 0 ? stroke.From() : stroke.To();
        if (m_lines.IsCrowded(end)) return;
        const double most = kMostShare * stroke.Length();
        const Vector out = Outwards(stroke, which);
        std::vector<Tail> tails;
        for (const int k : m_lines.Near(end, m_tolerance)) {
            const Stroke& other = At(k);
            const double length = other.Length();
            if (k == i || !other.IsLine() || length > most || length <= 4 * m_tolerance) continue;
            const bool atFrom = Distance(other.From(), end) <= m_tolerance;
            if (atFrom || Distance(other.To(), end) <= m_tolerance) {
                const Point free = atFrom ? other.To() : other.From();
                tails.push_back({k, free, free - end});
            } else if (IsTick(k, end, out)) {
                m_heads[i].length[which] = length;
                m_heads[i].strokes.push_back(k);
                return;
            }
        }
        for (size_t a = 0; a < tails.size(); ++a)
            for (size_t b = a + 1; b < tails.size(); ++b)
                if (IsOpenHead(i, tails[a], tails[b], out)) {
                    m_heads[i].length[which] = At(tails[a].stroke).Length();
                    for (const Tail& tail : {tails[a], tails[b]})
                        m_heads[i].strokes.push_back(tail.stroke);
                    const int closing = Between(tails[a], tails[b]);
                    if (closing >= 0) m_heads[i].strokes.push_back(closing);
                    return;
                }
    }

    bool IsTick(int k, Point end, Vector out) const {
        const Stroke& tick = At(k);
        const Point middle = {(tick.From().x + tick.To().x) / 2, (tick.From().y + tick.To().y) / 2};
        const double length = tick.Length();
        const double sine = std::abs(Cross(tick.To() - tick.From(), out)) / length;
        return Distance(middle, end) <= m_tolerance + kAlike * length && sine > 0.4 &&
               sine < 0.92 && IsFree(tick.From(), {k}) && IsFree(tick.To(), {k});
    }

    bool IsOpenHead(int i, const Tail& a, const Tail& b, Vector out) const {
        const double la = At(a.stroke).Length(), lb = At(b.stroke).Length();
        if (std::abs(la - lb) > kAlike * la) return false;
        if (Dot(a.back, out) >= 0 || Dot(b.back, out) >= 0) return false;
        const double sa = Cross(out, a.back) / la, sb = Cross(out, b.back) / lb;
        if (std::abs(sa + sb) > kAlike || std::abs(sa) < kLeastSine || std::abs(sa) > kMostSine)
            return false;
        const int closing = Between(a, b);
        return IsFree(a.free, {i, a.stroke, closing}) && IsFree(b.free, {i, b.stroke, closing});
    }

    // The stroke that closes a head; -1: it is open.
    int Between(const Tail& a, const Tail& b) const {
        for (const int k : m_lines.EndsAt(a.free, m_tolerance)) {
            const Stroke& stroke = At(k);
            if (k == a.stroke || !stroke.IsLine()) continue;
            if (Distance(stroke.From(), b.free) <= m_tolerance ||
                Distance(stroke.To(), b.free) <= m_tolerance)
                return k;
        }
        return -1;
    }

    bool IsFree(Point p, std::initializer_list<int> but) const {
        const std::vector<int> there = m_lines.Near(p, m_tolerance);
        return std::all_of(there.begin(), there.end(), [&](int k) {
            return std::find(but.begin(), but.end(), k) != but.end();
        });
    }

    const Sheet& m_sheet;
    const NearLines& m_lines;
    double m_tolerance;
    std::vector<LineHeads> m_heads;
};

}  // namespace

std::vector<LineHeads> FindHeads(const Sheet& sheet, const NearLines& lines, double tolerance) {
    return HeadFinder(sheet, lines, tolerance).Run();
}

}  // namespace product::detect
