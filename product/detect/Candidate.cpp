#include "product/detect/Candidate.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "product/detect/HalfHeights.h"
#include "product/detect/Symmetry.h"

namespace product::detect {
namespace {

constexpr size_t kMostMirrors = 24;
constexpr size_t kMostLines = 64;
constexpr double kSupported = 0.5;      // share of a component's length that has a mirror image
constexpr double kPartly = 0.15;        // of one that lies on both sides of the line alike,
constexpr double kEven = 0.8;           // the nearer side at least this part of the farther
constexpr double kGoesOn = 0.9;         // share of a mark's width below which the contour goes on
constexpr double kPeakReach = 0.03;     // of the length, to both sides of a peak
constexpr double kGap = 0.05;           // of the length so far, between parts of one tool
constexpr double kGapAlongLine = 0.25;  // the same where the axis is drawn through the gap

struct AxisLine {
    double offset;
    double start, end;  // of the drawn line; empty for a mirror line
    AxisCue cue;
    std::vector<int> mirrored;  // strokes that speak for it
};

class CandidateFinder {
public:
    explicit CandidateFinder(const LevelSheet& level)
        : m_level(level), m_of(level.sheet.strokes.size(), -1) {
        for (size_t i = 0; i < level.components.size(); ++i)
            for (const int s : level.components[i].strokes) m_of[s] = static_cast<int>(i);
        for (size_t s = 0; s < level.sheet.strokes.size(); ++s)
            if (level.sheet.strokes[s].isFullCircle) m_circles.push_back(static_cast<int>(s));
        for (const Component& component : level.components)
            m_isInCircle.push_back(IsInCircle(component));
    }

    std::vector<Candidate> Run() {
        for (const AxisLine& line : Lines())
            for (const std::vector<int>& group : Groups(line)) {
                Candidate candidate = Measured(line, group);
                if (candidate.Length() > 0 && candidate.radius > 0)
                    m_found.push_back(std::move(candidate));
            }
        return std::move(m_found);
    }

private:
    const Sheet& sheet() const { return m_level.sheet; }
    double tolerance() const { return m_level.tolerance; }

    // ---- lines that may be axes

    std::vector<AxisLine> Lines() const {
        std::vector<AxisLine> lines = CentreLines();
        std::vector<char> use(sheet().strokes.size());
        for (size_t i = 0; i < use.size(); ++i) use[i] = m_of[i] >= 0;
        for (MirrorLine& mirror : FindMirrorLines(sheet(), use, tolerance(), kMostMirrors))
            lines.push_back({mirror.offset, 1, 0, AxisCue::Mirror, std::move(mirror.strokes)});
        AddFullLines(lines);
        AddFeet(lines);
        if (lines.size() > kMostLines) lines.resize(kMostLines);
        return lines;
    }

    bool IsLevel(const Stroke& stroke) const {
        return stroke.IsLine() &&
               std::abs(stroke.To().y - stroke.From().y) <=
                   tolerance() + 2e-3 * std::abs(stroke.To().x - stroke.From().x);
    }

    // Level centre lines, pieces in one line that meet or nearly so as one; the longest first.
    std::vector<AxisLine> CentreLines() const {
        std::vector<AxisLine> lines;
        for (const Stroke& stroke : sheet().strokes) {
            if (stroke.kind != StrokeKind::Centre || !IsLevel(stroke)) continue;
            const Box box = BoxOf(stroke);
            if (box.Width() <= 10 * tolerance()) continue;
            lines.push_back(
                {(box.low.y + box.high.y) / 2, box.low.x, box.high.x, AxisCue::CentreLine, {}});
        }
        std::sort(lines.begin(), lines.end(), [](const AxisLine& a, const AxisLine& b) {
            return a.offset < b.offset || (a.offset == b.offset && a.start < b.start);
        });
        std::vector<AxisLine> merged;
        for (const AxisLine& line : lines) {
            const auto same = std::find_if(merged.begin(), merged.end(), [&](const AxisLine& m) {
                const double slack = 0.1 * std::min(m.end - m.start, line.end - line.start);
                return std::abs(m.offset - line.offset) <= tolerance() &&
                       line.start <= m.end + slack && line.end >= m.start - slack;
            });
            if (same == merged.end()) {
                merged.push_back(line);
            } else {
                same->start = std::min(same->start, line.start);
                same->end = std::max(same->end, line.end);
            }
        }
        std::stable_sort(merged.begin(), merged.end(), [](const AxisLine& a, const AxisLine& b) {
            return a.end - a.start > b.end - b.start;
        });
        return merged;
    }

    // Full lines that run past everything they cross at both ends.
    void AddFullLines(std::vector<AxisLine>& lines) const {
        for (size_t i = 0; i < sheet().strokes.size(); ++i) {
            const Stroke& stroke = sheet().strokes[i];
            if (m_of[i] < 0 || !IsLevel(stroke)) continue;
            const Component& component = m_level.components[m_of[i]];
            const Box box = BoxOf(stroke);
            if (box.Width() < 0.98 * component.box.Width() || component.strokes.size() < 3)
                continue;
            const double y = (box.low.y + box.high.y) / 2;
            const double low = y - component.box.low.y, high = component.box.high.y - y;
            if (std::min(low, high) < 0.2 * std::max(low, high)) continue;
            lines.push_back({y, box.low.x, box.high.x, AxisCue::FullLine, {}});
        }
    }

    // The lower and the upper border of the greater components.
    void AddFeet(std::vector<AxisLine>& lines) const {
        double longest = 0;
        for (const Component& component : m_level.components)
            longest = std::max(longest, component.length);
        std::vector<int> order;
        for (size_t i = 0; i < m_level.components.size(); ++i)
            if (m_level.components[i].length >= 0.1 * longest) order.push_back(static_cast<int>(i));
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return m_level.components[a].length > m_level.components[b].length;
        });
        for (const int i : order) {
            const Box& box = m_level.components[i].box;
            for (const double y : {box.low.y, box.high.y})
                lines.push_back({y, box.low.x, box.high.x, AxisCue::Foot, {}});
        }
    }

    // ---- what belongs to a line

    // How far along the axis a component's strokes are mirror images of one another.
    std::vector<double> Support(const AxisLine& line) const {
        std::vector<double> support(m_level.components.size(), 0.0);
        for (const int s : line.mirrored)
            if (m_of[s] >= 0) support[m_of[s]] += sheet().strokes[s].Length();
        for (size_t i = 0; i < support.size(); ++i)
            support[i] /= std::max(m_level.components[i].length, tolerance());
        return support;
    }

    bool Belongs(const AxisLine& line, int i, double support) const {
        const Box& box = m_level.components[i].box;
        const double slack = tolerance() + 1e-3 * box.Height();
        if (line.cue == AxisCue::Foot) {
            // All on one side, and standing on it.
            return (std::abs(box.low.y - line.offset) <= slack ||
                    std::abs(box.high.y - line.offset) <= slack);
        }
        if (support >= kSupported) return true;
        // Lines that cross the part take from its symmetry but not from where its middle is.
        const double low = line.offset - box.low.y, high = box.high.y - line.offset;
        if (support >= kPartly && std::min(low, high) >= kEven * std::max(low, high)) return true;
        const bool comesToIt =
            box.low.y <= line.offset + slack && box.high.y >= line.offset - slack;
        if (!comesToIt) return false;
        if (line.cue == AxisCue::Mirror) return false;
        return box.high.x >= line.start && box.low.x <= line.end;
    }

    // The components of each tool along the line.
    std::vector<std::vector<int>> Groups(const AxisLine& line) const {
        const std::vector<double> support = Support(line);
        std::vector<int> members;
        for (size_t i = 0; i < m_level.components.size(); ++i)
            if (Belongs(line, static_cast<int>(i), support[i]) && !m_isInCircle[i])
                members.push_back(static_cast<int>(i));
        std::sort(members.begin(), members.end(), [&](int a, int b) {
            return BoxAt(a).low.x < BoxAt(b).low.x || (BoxAt(a).low.x == BoxAt(b).low.x && a < b);
        });
        std::vector<std::vector<int>> groups;
        double start = 0, end = 0;
        for (const int i : members) {
            const Box& box = BoxAt(i);
            const double length = std::max(end - start, box.Width());
            const double bridged = std::min(line.end, box.low.x) >= std::max(line.start, end) &&
                                           line.start <= end && line.end >= box.low.x
                                       ? kGapAlongLine
                                       : kGap;
            if (groups.empty() || box.low.x > end + bridged * length) {
                groups.emplace_back();
                start = box.low.x;
                end = box.high.x;
            }
            groups.back().push_back(i);
            end = std::max(end, box.high.x);
        }
        return groups;
    }

    const Box& BoxAt(int i) const { return m_level.components[i].box; }

    // Whether a circle holds the component: an end view, or a detail drawn larger.
    bool IsInCircle(const Component& component) const {
        const Point middle = {(component.box.low.x + component.box.high.x) / 2,
                              (component.box.low.y + component.box.high.y) / 2};
        for (const int c : m_circles) {
            const Stroke& circle = sheet().strokes[c];
            if (Distance(circle.centre, middle) > circle.radius) continue;
            if (std::all_of(component.strokes.begin(), component.strokes.end(), [&](int s) {
                    for (const Point& p : sheet().strokes[s].points)
                        if (Distance(p, circle.centre) > 1.02 * circle.radius) return false;
                    return true;
                }))
                return true;
        }
        return false;
    }

    // ---- measures

    Candidate Measured(const AxisLine& line, const std::vector<int>& group) const {
        Candidate out;
        out.offset = line.offset;
        out.cue = line.cue;
        out.components = group;
        std::vector<int> strokes = StrokesOf(line, group);
        if (strokes.empty()) return out;
        LeaveHangersOut(line, out, strokes);
        out.strokeCount = strokes.size();
        Box box;
        for (const int s : strokes) box.Add(BoxOf(sheet().strokes[s]));
        out.start = box.low.x;
        out.end = box.high.x;
        out.radius = std::max(box.high.y - line.offset, line.offset - box.low.y);
        if (out.Length() <= 10 * tolerance()) return out;

        const HalfHeights heights(sheet(), strokes, line.offset, out.start, out.end);
        out.agreement = heights.Agreement(0.01 * out.radius + tolerance());
        out.isHalf = heights.IsOneSided();
        out.isPlain = heights.IsLevel(0.01 * out.radius + tolerance());
        out.hasPeak = HangsOnPeak(out, heights);
        out.cover = heights.Cover();
        const double nearBy = 0.02 * out.radius + tolerance();
        const double close = std::min(0.06 * out.Length(), 0.5 * out.radius) + tolerance();
        out.reachesStart = Reaches(strokes, line.offset, out.start, out.start + close, nearBy);
        out.reachesEnd = Reaches(strokes, line.offset, out.end - close, out.end, nearBy);
        out.nearAxis = Reaches(strokes, line.offset, out.start, out.end, 0.06 * out.radius);
        out.foot = Foot(out);
        if (out.cue != AxisCue::CentreLine) {
            const bool isDrawn = out.foot > 0.9 && RunsPast(out);
            if (isDrawn) out.cue = AxisCue::FullLine;
            if (!isDrawn && out.cue == AxisCue::FullLine) out.cue = AxisCue::Mirror;
        }
        if (line.end > line.start)
            out.lineCover =
                std::max(0.0, std::min(line.end, out.end) - std::max(line.start, out.start)) /
                out.Length();
        out.openEnds = out.isHalf && FreeEndsOn(out, strokes);
        for (const int c : m_circles) {
            const Point p = sheet().strokes[c].centre;
            out.holes += p.x > out.start && p.x < out.end &&
                         std::abs(p.y - line.offset) < out.radius &&
                         std::abs(p.y - line.offset) > 0.05 * out.radius;
        }
        return out;
    }

    // Marks that stand out from the contour on one side only are none of the tool. Of half a
    // contour there is no other side to ask: then a text has to stand beside them.
    void LeaveHangersOut(const AxisLine& line, Candidate& out, std::vector<int>& strokes) const {
        if (m_level.hangers.empty()) return;
        Box box;
        std::vector<char> isMine(sheet().strokes.size(), 0);
        for (const int s : strokes) {
            box.Add(BoxOf(sheet().strokes[s]));
            isMine[s] = 1;
        }
        const double radius = std::max(box.high.y - line.offset, line.offset - box.low.y);
        const double slack = 4 * tolerance() + 1e-3 * radius;
        const bool isHalf =
            HalfHeights(sheet(), strokes, line.offset, box.low.x, box.high.x).IsOneSided();
        std::vector<int> chosen;
        for (size_t i = 0; i < m_level.hangers.size(); ++i) {
            const Hanger& hanger = m_level.hangers[i];
            if (!isMine[hanger.strokes.front()] || (isHalf && !hanger.hasText)) continue;
            if (!StandsOut(hanger, line.offset, slack)) continue;
            if (!isHalf && IsMirrored(hanger, line.offset, slack, strokes)) continue;
            chosen.push_back(static_cast<int>(i));
        }
        const std::vector<int> rest = Without(strokes, chosen);
        if (chosen.empty() || rest.empty()) return;
        const HalfHeights heights(sheet(), rest, line.offset, box.low.x, box.high.x);
        for (const int i : chosen)
            if (StandsOnContour(m_level.hangers[static_cast<size_t>(i)], line.offset, isHalf,
                                0.01 * radius + slack, heights))
                out.hanging.push_back(i);
        strokes = Without(strokes, out.hanging);
    }

    std::vector<int> Without(const std::vector<int>& strokes,
                             const std::vector<int>& hangers) const {
        std::vector<char> hangs(sheet().strokes.size(), 0);
        for (const int i : hangers)
            for (const int s : m_level.hangers[static_cast<size_t>(i)].strokes) hangs[s] = 1;
        std::vector<int> out;
        std::copy_if(strokes.begin(), strokes.end(), std::back_inserter(out),
                     [&](int s) { return hangs[s] == 0; });
        return out;
    }

    // Whether the contour goes on below a mark when the mark is gone: a piece of the contour that
    // holds to the rest in one point, because of a gap, leaves a hole.
    bool StandsOnContour(const Hanger& hanger, double offset, bool isHalf, double slack,
                         const HalfHeights& rest) const {
        Box box;
        for (const int s : hanger.strokes) box.Add(BoxOf(sheet().strokes[s]));
        const double foot = hanger.at.y - offset;
        if (isHalf)
            return rest.ReachingBetween(box.low.x, box.high.x, foot > 0, std::abs(foot) - slack) >=
                   kGoesOn;
        return rest.AgreementBetween(box.low.x, box.high.x, slack) >= kGoesOn &&
               rest.ReachingBetween(hanger.at.x, hanger.at.x, foot > 0, std::abs(foot) - slack) > 0;
    }

    // Whether something that was left out hung where the contour falls on both sides: it may have
    // stood on a mark that is still there.
    bool HangsOnPeak(const Candidate& candidate, const HalfHeights& heights) const {
        const double beside = kPeakReach * candidate.Length();
        return std::any_of(candidate.hanging.begin(), candidate.hanging.end(), [&](int i) {
            const Point at = m_level.hangers[static_cast<size_t>(i)].at;
            const double least =
                std::abs(at.y - candidate.offset) - 0.02 * candidate.radius - tolerance();
            return heights.At(at.x - beside) < least && heights.At(at.x + beside) < least;
        });
    }

    // Nowhere nearer to the axis than where it touches, and farther out somewhere.
    bool StandsOut(const Hanger& hanger, double offset, double slack) const {
        const double foot = hanger.at.y - offset;
        const double side = foot < 0 ? -1 : 1;
        double farthest = 0;
        for (const int s : hanger.strokes)
            for (const Point& p : sheet().strokes[s].points) {
                const double r = side * (p.y - offset);
                if (r < std::abs(foot) - slack) return false;
                farthest = std::max(farthest, r);
            }
        return farthest > std::abs(foot) + slack;
    }

    // Whether most of it has a mirror image among the strokes.
    bool IsMirrored(const Hanger& hanger, double offset, double slack,
                    const std::vector<int>& strokes) const {
        double whole = 0, mirrored = 0;
        for (const int s : hanger.strokes) {
            const Box box = BoxOf(sheet().strokes[s]);
            const double length = sheet().strokes[s].Length();
            whole += length;
            if (std::any_of(strokes.begin(), strokes.end(), [&](int other) {
                    const Box b = BoxOf(sheet().strokes[other]);
                    return std::abs(b.low.x - box.low.x) <= slack &&
                           std::abs(b.high.x - box.high.x) <= slack &&
                           std::abs(2 * offset - b.low.y - box.high.y) <= slack &&
                           std::abs(2 * offset - b.high.y - box.low.y) <= slack;
                }))
                mirrored += length;
        }
        return mirrored > 0.5 * whole;
    }

    // What a tool's size is taken from: strokes along the axis are none of its contour.
    std::vector<int> StrokesOf(const AxisLine& line, const std::vector<int>& group) const {
        std::vector<int> out;
        for (const int i : group)
            for (const int s : m_level.components[i].strokes) {
                const Box box = BoxOf(sheet().strokes[s]);
                if (std::max(box.high.y - line.offset, line.offset - box.low.y) > 2 * tolerance())
                    out.push_back(s);
            }
        return out;
    }

    // Whether a stroke comes that near to the axis between two places.
    bool Reaches(const std::vector<int>& strokes, double offset, double from, double to,
                 double nearBy) const {
        for (const int s : strokes) {
            const std::vector<Point>& p = sheet().strokes[s].points;
            for (size_t k = 1; k < p.size(); ++k) {
                const Point a = p[k - 1], b = p[k];
                if (std::max(a.x, b.x) < from || std::min(a.x, b.x) > to) continue;
                const double low = std::min(a.y, b.y) - offset, high = std::max(a.y, b.y) - offset;
                if (low <= nearBy && high >= -nearBy) return true;
            }
        }
        return false;
    }

    // Share of the length along which full lines lie on the axis.
    double Foot(const Candidate& candidate) const {
        double covered = 0;
        for (const int i : candidate.components)
            for (const int s : m_level.components[i].strokes) {
                const std::vector<Point>& p = sheet().strokes[s].points;
                for (size_t k = 1; k < p.size(); ++k) {
                    if (std::abs(p[k - 1].y - candidate.offset) > 2 * tolerance() ||
                        std::abs(p[k].y - candidate.offset) > 2 * tolerance())
                        continue;
                    covered +=
                        std::max(0.0, std::min(std::max(p[k - 1].x, p[k].x), candidate.end) -
                                          std::max(std::min(p[k - 1].x, p[k].x), candidate.start));
                }
            }
        return std::min(1.0, covered / candidate.Length());
    }

    // Whether full lines on the axis run past the contour at both ends, as no face's foot does.
    bool RunsPast(const Candidate& candidate) const {
        const double past = 0.005 * candidate.Length() + 2 * tolerance();
        bool atStart = false, atEnd = false;
        for (const int i : candidate.components)
            for (const int s : m_level.components[i].strokes) {
                const Box box = BoxOf(sheet().strokes[s]);
                if (std::max(box.high.y - candidate.offset, candidate.offset - box.low.y) >
                    2 * tolerance())
                    continue;
                atStart = atStart || box.low.x < candidate.start - past;
                atEnd = atEnd || box.high.x > candidate.end + past;
            }
        return atStart && atEnd;
    }

    // Whether the contour ends on the axis at both its ends and nowhere else.
    bool FreeEndsOn(const Candidate& candidate, const std::vector<int>& strokes) const {
        bool atStart = false, atEnd = false;
        for (const int s : strokes)
            for (const Point& end : {sheet().strokes[s].From(), sheet().strokes[s].To()}) {
                if (std::abs(end.y - candidate.offset) > 2 * tolerance()) continue;
                atStart = atStart || end.x < candidate.start + 0.25 * candidate.Length();
                atEnd = atEnd || end.x > candidate.end - 0.25 * candidate.Length();
            }
        return atStart && atEnd;
    }

    const LevelSheet& m_level;
    std::vector<int> m_of;  // component of each stroke; none: -1
    std::vector<int> m_circles;
    std::vector<char> m_isInCircle;  // by component
    std::vector<Candidate> m_found;
};

}  // namespace

const char* NameOf(AxisCue cue) {
    switch (cue) {
        case AxisCue::CentreLine:
            return "centre line";
        case AxisCue::FullLine:
            return "line through both ends";
        case AxisCue::Mirror:
            return "mirror symmetry";
        case AxisCue::Foot:
            break;
    }
    return "foot of a half profile";
}

std::vector<Candidate> FindCandidates(const LevelSheet& level) {
    return CandidateFinder(level).Run();
}

}  // namespace product::detect
