#include "product/detect/Components.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <tuple>

namespace product::detect {
namespace {

class Groups {
public:
    explicit Groups(size_t count) : m_parent(count) {
        std::iota(m_parent.begin(), m_parent.end(), 0);
    }
    int Find(int i) {
        while (m_parent[i] != i) i = m_parent[i] = m_parent[m_parent[i]];
        return i;
    }
    void Join(int a, int b) { m_parent[std::max(Find(a), Find(b))] = std::min(Find(a), Find(b)); }

private:
    std::vector<int> m_parent;
};

struct Chord {
    int stroke;
    Point a, b;
    double left, right, low, high;

    std::array<double, 4> Place() const {
        const bool isFromA = std::tie(a.x, a.y) <= std::tie(b.x, b.y);
        return isFromA ? std::array<double, 4>{a.x, a.y, b.x, b.y}
                       : std::array<double, 4>{b.x, b.y, a.x, a.y};
    }
};

std::vector<Chord> ChordsOf(const Sheet& sheet, const std::vector<char>& use) {
    std::vector<Chord> chords;
    for (size_t i = 0; i < sheet.strokes.size(); ++i) {
        if (!use[i]) continue;
        const std::vector<Point>& p = sheet.strokes[i].points;
        for (size_t k = 1; k < p.size(); ++k)
            chords.push_back({static_cast<int>(i), p[k - 1], p[k], std::min(p[k - 1].x, p[k].x),
                              std::max(p[k - 1].x, p[k].x), std::min(p[k - 1].y, p[k].y),
                              std::max(p[k - 1].y, p[k].y)});
    }
    std::sort(chords.begin(), chords.end(),
              [](const Chord& a, const Chord& b) { return a.Place() < b.Place(); });
    return chords;
}

// Looks at every two chords whose boxes come closer than the tolerance: along x, and what has ended
// is dropped as it is met.
template <class Look>
void Sweep(const std::vector<Chord>& chords, double tolerance, Look look) {
    std::vector<int> open;
    for (size_t i = 0; i < chords.size(); ++i) {
        const Chord& chord = chords[i];
        // What is drawn on the same place again touches what the first one touches.
        if (i > 0 && chord.Place() == chords[i - 1].Place()) {
            look(chord, chords[i - 1]);
            continue;
        }
        size_t kept = 0;
        for (const int k : open) {
            const Chord& other = chords[k];
            if (other.right < chord.left - tolerance) continue;
            open[kept++] = k;
            if (other.low <= chord.high + tolerance && other.high >= chord.low - tolerance)
                look(chord, other);
        }
        open.resize(kept);
        open.push_back(static_cast<int>(i));
    }
}

}  // namespace

double Distance(Point p, Point a, Point b) {
    const Vector d = b - a;
    const double square = Dot(d, d);
    const double t = square > 0 ? std::clamp(Dot(p - a, d) / square, 0.0, 1.0) : 0;
    return Distance(p, a + d * t);
}

double Distance(Point a, Point b, Point c, Point d) {
    const double ab1 = Cross(b - a, c - a), ab2 = Cross(b - a, d - a);
    const double cd1 = Cross(d - c, a - c), cd2 = Cross(d - c, b - c);
    if (((ab1 < 0) != (ab2 < 0)) && ((cd1 < 0) != (cd2 < 0))) return 0;
    return std::min(std::min(Distance(a, c, d), Distance(b, c, d)),
                    std::min(Distance(c, a, b), Distance(d, a, b)));
}

bool ForEachTouch(const Sheet& sheet, const std::vector<char>& use, double tolerance,
                  const std::function<bool(int a, int b, Point at)>& touch) {
    bool goesOn = true;
    Sweep(ChordsOf(sheet, use), tolerance, [&](const Chord& p, const Chord& q) {
        if (!goesOn || p.stroke == q.stroke) return;
        const auto tell = [&](Point at) { goesOn = goesOn && touch(p.stroke, q.stroke, at); };
        bool isAtEnd = false;
        for (const auto& [end, a, b] : {std::tuple(p.a, q.a, q.b), std::tuple(p.b, q.a, q.b),
                                        std::tuple(q.a, p.a, p.b), std::tuple(q.b, p.a, p.b)})
            if (Distance(end, a, b) <= tolerance) {
                isAtEnd = true;
                tell(end);
            }
        if (isAtEnd || Distance(p.a, p.b, q.a, q.b) > tolerance) return;
        const Vector along = p.b - p.a, across = q.b - q.a;
        tell(p.a + along * (Cross(q.a - p.a, across) / Cross(along, across)));
    });
    return goesOn;
}

std::vector<Component> FindComponents(const Sheet& sheet, const std::vector<char>& use,
                                      double tolerance) {
    Groups groups(sheet.strokes.size());
    Sweep(ChordsOf(sheet, use), tolerance, [&](const Chord& p, const Chord& q) {
        if (groups.Find(p.stroke) == groups.Find(q.stroke)) return;
        if (Distance(p.a, p.b, q.a, q.b) <= tolerance) groups.Join(p.stroke, q.stroke);
    });
    std::vector<int> number(sheet.strokes.size(), -1);
    std::vector<Component> out;
    for (size_t i = 0; i < sheet.strokes.size(); ++i) {
        if (!use[i]) continue;
        int& n = number[groups.Find(static_cast<int>(i))];
        if (n < 0) {
            n = static_cast<int>(out.size());
            out.emplace_back();
        }
        Component& component = out[n];
        component.strokes.push_back(static_cast<int>(i));
        component.box.Add(BoxOf(sheet.strokes[i]));
        component.length += sheet.strokes[i].Length();
    }
    return out;
}

std::vector<int> CirclesOf(const Sheet& sheet) {
    std::vector<int> out;
    for (size_t i = 0; i < sheet.strokes.size(); ++i)
        if (sheet.strokes[i].isFullCircle) out.push_back(static_cast<int>(i));
    return out;
}

bool LiesInCircle(const Sheet& sheet, const std::vector<int>& circles, const Component& component) {
    Box box;
    for (const int s : component.strokes) box.Add(BoxOf(sheet.strokes[s]));
    const Point middle = {(box.low.x + box.high.x) / 2, (box.low.y + box.high.y) / 2};
    return std::any_of(circles.begin(), circles.end(), [&](int c) {
        const Stroke& circle = sheet.strokes[c];
        if (Distance(circle.centre, middle) > circle.radius) return false;
        return std::all_of(component.strokes.begin(), component.strokes.end(), [&](int s) {
            const std::vector<Point>& points = sheet.strokes[s].points;
            return std::all_of(points.begin(), points.end(), [&](Point p) {
                return Distance(p, circle.centre) <= 1.02 * circle.radius;
            });
        });
    });
}

}  // namespace product::detect
