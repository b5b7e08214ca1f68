#include "product/detect/OffContour.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace product::detect {
namespace {

constexpr double kGoesOn = 0.9;      // share of a mark's width below which the contour goes on
constexpr double kPeakReach = 0.03;  // of the length, to both sides of a peak
constexpr size_t kMostPieces = 100;  // of a tool: more are hatching or dots
constexpr size_t kMostLevel = 1000;  // level strokes of half a contour: more are hatching
constexpr double kFloats = 1.05;     // of the contour's height, from where on a piece floats

class Outside {
public:
    Outside(const LevelSheet& level, double offset) : m_level(level), m_offset(offset) {}

    void LeaveFloatingOut(Candidate& out) const {
        if (out.components.size() < 2 || out.components.size() > kMostPieces) return;
        std::vector<int> kept;
        for (const int i : out.components)
            (Floats(i, out.components) ? out.floating : kept).push_back(i);
        if (kept.empty())
            out.floating.clear();
        else
            out.components = kept;
    }

    void LeaveHangersOut(Candidate& out, std::vector<int>& strokes) const {
        if (m_level.hangers.empty()) return;
        Box box;
        std::vector<char> isMine(sheet().strokes.size(), 0);
        for (const int s : strokes) {
            box.Add(BoxOf(sheet().strokes[s]));
            isMine[s] = 1;
        }
        const double radius = std::max(box.high.y - m_offset, m_offset - box.low.y);
        const double slack = 4 * tolerance() + 1e-3 * radius;
        const bool isHalf =
            HalfHeights(sheet(), strokes, m_offset, box.low.x, box.high.x).IsOneSided();
        std::vector<int> chosen;
        for (size_t i = 0; i < m_level.hangers.size(); ++i) {
            const Hanger& hanger = m_level.hangers[i];
            if (!isMine[hanger.strokes.front()] || (isHalf && !hanger.hasText)) continue;
            if (!StandsOut(hanger, m_offset, slack)) continue;
            if (!isHalf && IsMirrored(hanger, m_offset, slack, strokes)) continue;
            chosen.push_back(static_cast<int>(i));
        }
        const std::vector<int> rest = Without(strokes, chosen);
        if (chosen.empty() || rest.empty()) return;
        const HalfHeights heights(sheet(), rest, m_offset, box.low.x, box.high.x);
        for (const int i : chosen)
            if (StandsOnContour(m_level.hangers[static_cast<size_t>(i)], m_offset, isHalf,
                                0.01 * radius + slack, heights))
                out.hanging.push_back(i);
        strokes = Without(strokes, out.hanging);
    }

    bool HangsOnPeak(const Candidate& candidate, const HalfHeights& heights) const {
        const double beside = kPeakReach * candidate.Length();
        return std::any_of(candidate.hanging.begin(), candidate.hanging.end(), [&](int i) {
            const Point at = m_level.hangers[static_cast<size_t>(i)].at;
            const double least =
                std::abs(at.y - candidate.offset) - 0.02 * candidate.radius - tolerance();
            return heights.At(at.x - beside) < least && heights.At(at.x + beside) < least;
        });
    }

    std::optional<Point> StandsOnLine(const Candidate& candidate, const std::vector<int>& strokes,
                                      const HalfHeights& heights) const {
        const double slack = 0.005 * candidate.radius + tolerance();
        std::vector<Box> lines;  // pieces in one line as one
        for (const int s : strokes) {
            const Box box = BoxOf(sheet().strokes[s]);
            if (sheet().strokes[s].IsLine() && box.Height() <= slack) lines.push_back(box);
        }
        if (lines.size() > kMostLevel) return std::nullopt;
        std::sort(lines.begin(), lines.end(),
                  [](const Box& a, const Box& b) { return a.low.x < b.low.x; });
        for (size_t i = 0; i < lines.size(); ++i) {
            for (size_t k = i + 1; k < lines.size() && lines[k].low.x <= lines[i].high.x + slack;
                 ++k)
                if (std::abs(lines[k].low.y - lines[i].low.y) <= slack)
                    lines[i].high.x = std::max(lines[i].high.x, lines[k].high.x);
            const double height = std::abs(lines[i].low.y - m_offset);
            if (height <= 4 * slack) continue;
            const std::optional<double> at =
                heights.StandingBetween(lines[i].low.x, lines[i].high.x, height, slack);
            if (at) return Point{*at, lines[i].low.y};
        }
        return std::nullopt;
    }

private:
    const Sheet& sheet() const { return m_level.sheet; }
    double tolerance() const { return m_level.tolerance; }

    bool Floats(int i, const std::vector<int>& group) const {
        const Box& box = m_level.components[i].box;
        const double lowest = std::max(box.low.y - m_offset, m_offset - box.high.y);
        if (lowest <= tolerance()) return false;
        std::vector<int> others = group;
        others.erase(std::find(others.begin(), others.end(), i));
        double start = 1e300, end = -1e300;
        for (const int k : others) {
            start = std::min(start, m_level.components[k].box.low.x);
            end = std::max(end, m_level.components[k].box.high.x);
        }
        if (box.low.x <= start || box.high.x >= end) return false;
        // What is outside everywhere is so with its mirror image, too.
        others.erase(std::remove_if(others.begin(), others.end(),
                                    [&](int k) {
                                        const Box& b = m_level.components[k].box;
                                        return std::max(b.low.y - m_offset, m_offset - b.high.y) >=
                                               lowest - tolerance();
                                    }),
                     others.end());
        const std::vector<int> strokes = ContourOf(m_level, others, m_offset);
        if (strokes.empty()) return false;
        const HalfHeights heights(sheet(), strokes, m_offset, start, end);
        const double beside = (end - start) / 100;
        for (int k = 0; k <= 4; ++k) {
            const double s = box.low.x - beside + (box.Width() + 2 * beside) * k / 4;
            const double height = heights.At(s);
            if (height <= tolerance() || lowest < kFloats * height + tolerance()) return false;
        }
        return true;
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

    const LevelSheet& m_level;
    double m_offset;
};

}  // namespace

std::vector<int> ContourOf(const LevelSheet& level, const std::vector<int>& components,
                           double offset) {
    std::vector<int> out;
    for (const int i : components)
        for (const int s : level.components[i].strokes) {
            const Box box = BoxOf(level.sheet.strokes[s]);
            if (std::max(box.high.y - offset, offset - box.low.y) > 2 * level.tolerance)
                out.push_back(s);
        }
    return out;
}

void LeaveFloatingOut(const LevelSheet& level, Candidate& candidate) {
    Outside(level, candidate.offset).LeaveFloatingOut(candidate);
}

void LeaveHangersOut(const LevelSheet& level, Candidate& candidate, std::vector<int>& strokes) {
    if (!level.hangers.empty())
        Outside(level, candidate.offset).LeaveHangersOut(candidate, strokes);
}

bool HangsOnPeak(const LevelSheet& level, const Candidate& candidate, const HalfHeights& heights) {
    return Outside(level, candidate.offset).HangsOnPeak(candidate, heights);
}

std::optional<Point> StandsOnLine(const LevelSheet& level, const Candidate& candidate,
                                  const std::vector<int>& strokes, const HalfHeights& heights) {
    return Outside(level, candidate.offset).StandsOnLine(candidate, strokes, heights);
}

}  // namespace product::detect
