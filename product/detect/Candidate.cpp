#include "product/detect/Candidate.h"

#include <algorithm>
#include <cmath>

#include "product/detect/AxisLines.h"
#include "product/detect/HalfHeights.h"
#include "product/detect/OffContour.h"

namespace product::detect {
namespace {

constexpr double kSupported = 0.5;      // share of a component's length that has a mirror image
constexpr double kPartly = 0.15;        // of one that lies on both sides of the line alike,
constexpr double kEven = 0.8;           // the nearer side at least this part of the farther
constexpr double kGap = 0.05;           // of the length so far, between parts of one tool
constexpr double kGapAlongLine = 0.25;  // the same where the axis is drawn through the gap

class CandidateFinder {
public:
    explicit CandidateFinder(const LevelSheet& level)
        : m_level(level), m_of(level.sheet.strokes.size(), -1) {
        for (size_t i = 0; i < level.components.size(); ++i)
            for (const int s : level.components[i].strokes) m_of[s] = static_cast<int>(i);
        m_circles = CirclesOf(level.sheet);
        for (const Component& component : level.components)
            m_isInCircle.push_back(LiesInCircle(sheet(), m_circles, component));
    }

    std::vector<Candidate> Run() {
        for (const AxisLine& line : FindAxisLines(m_level, m_of))
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

    // ---- measures

    Candidate Measured(const AxisLine& line, const std::vector<int>& group) const {
        Candidate out;
        out.offset = line.offset;
        out.cue = line.cue;
        out.components = group;
        LeaveFloatingOut(m_level, out);
        std::vector<int> strokes = ContourOf(m_level, out.components, line.offset);
        if (strokes.empty()) return out;
        LeaveHangersOut(m_level, out, strokes);
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
        out.hasPeak = HangsOnPeak(m_level, out, heights);
        if (out.isHalf) {
            out.turnedRound = heights.AgreementTurnedRound(0.01 * out.radius + tolerance());
            out.standing = StandsOnLine(m_level, out, strokes, heights);
        }
        out.cover = heights.Cover();
        const double nearBy = 0.02 * out.radius + tolerance();
        const double close = std::min(0.06 * out.Length(), 0.5 * out.radius) + tolerance();
        out.reachesStart = Reaches(strokes, line.offset, out.start, out.start + close, nearBy);
        out.reachesEnd = Reaches(strokes, line.offset, out.end - close, out.end, nearBy);
        out.nearAxis = Reaches(strokes, line.offset, out.start, out.end, 0.06 * out.radius);
        out.foot = Foot(out);
        if (out.cue != AxisCue::CentreLine) {
            const bool isDrawn =
                (out.foot > 0.9 && FootRunsPast(out)) ||
                (line.cue == AxisCue::FullLine &&
                 RunsPast(line.start, line.end, box.low.x, box.high.x, tolerance()));
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
            out.endViews += (p.x < out.start || p.x > out.end) &&
                            std::abs(p.y - line.offset) <= 2 * tolerance() &&
                            sheet().strokes[c].radius <= 1.05 * out.radius;
            out.holes += p.x > out.start && p.x < out.end &&
                         std::abs(p.y - line.offset) < out.radius &&
                         std::abs(p.y - line.offset) > 0.05 * out.radius;
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
    bool FootRunsPast(const Candidate& candidate) const {
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
