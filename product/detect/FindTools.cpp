#include "product/detect/FindTools.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "product/detect/Directions.h"
#include "product/detect/Judge.h"

namespace product::detect {
namespace {

constexpr size_t kMostDirections = 5;
constexpr double kTolerance = 2e-5;  // of the sheet's diagonal: points closer are one
constexpr double kJoint = 3e-4;  // of the diagonal: gaps that a contour may have and still be one
constexpr double kRival = 0.08;  // a score as near as that makes another axis a rival
constexpr size_t kMostDoubtful = 8;
constexpr double kRestLength = 0.3;  // of the longest tool's length
constexpr size_t kLeastOfRest = 4;   // strokes

struct Placed {
    Candidate candidate;
    size_t frame = 0;
};

class ToolFinder {
public:
    explicit ToolFinder(const Sheet& sheet) : m_sheet(sheet) {}

    Finding Run() {
        if (m_sheet.box.IsEmpty() || Diagonal(m_sheet.box) <= 0) return {};
        m_tolerance = kTolerance * Diagonal(m_sheet.box);
        FindFrames();
        const Sheet upright = Turned(m_sheet, m_frames.front());
        const std::vector<NoteKind> notes = FindNotes(upright, m_tolerance);
        std::vector<char> use(notes.size());
        for (size_t i = 0; i < use.size(); ++i) {
            const Stroke& stroke = m_sheet.strokes[i];
            // Full circles mark details and show end views; no tool's contour has one.
            use[i] = notes[i] == NoteKind::None && stroke.kind == StrokeKind::Contour &&
                     !stroke.isFullCircle;
            m_finding.noteStrokes += notes[i] != NoteKind::None;
            // What the envelope would take if the whole entity were picked.
            if (stroke.kind == StrokeKind::Contour && !stroke.isFullCircle)
                ++m_contourOf[stroke.entity];
        }
        m_components = FindComponents(upright, use, kJoint * Diagonal(m_sheet.box));
        m_hangers = FindHangers(m_sheet, use, kJoint * Diagonal(m_sheet.box));
        for (size_t f = 0; f < m_frames.size(); ++f) Consider(f);
        JudgeAll();
        Choose();
        return std::move(m_finding);
    }

private:
    void FindFrames() {
        const Point middle = {(m_sheet.box.low.x + m_sheet.box.high.x) / 2,
                              (m_sheet.box.low.y + m_sheet.box.high.y) / 2};
        std::vector<double> angles = FindDirections(m_sheet, kMostDirections);
        if (angles.empty()) angles.push_back(0);
        for (const double angle : angles) {
            m_frames.emplace_back(middle, angle);
            m_frames.push_back(m_frames.back().Squarely());
        }
    }

    void Consider(size_t f) {
        LevelSheet level{Turned(m_sheet, m_frames[f]), m_components, m_hangers, m_tolerance};
        for (Hanger& hanger : level.hangers) hanger.at = m_frames[f].In(hanger.at);
        for (Component& component : level.components) {
            component.box = {};
            for (const int s : component.strokes) component.box.Add(BoxOf(level.sheet.strokes[s]));
        }
        for (Candidate& candidate : FindCandidates(level))
            m_all.push_back({std::move(candidate), f});
    }

    void JudgeAll() {
        double greatest = 0;
        for (const Placed& placed : m_all) {
            const Candidate& c = placed.candidate;
            if (c.nearAxis && (c.reachesStart || c.reachesEnd))
                greatest = std::max(greatest, c.Length());
        }
        const double letters = UsualLetters();
        for (Placed& placed : m_all) Judge(placed.candidate, greatest, letters);
        std::stable_sort(m_all.begin(), m_all.end(), [](const Placed& a, const Placed& b) {
            const double x = a.candidate.score, y = b.candidate.score;
            if (x != y) return x > y;
            return a.candidate.Length() * a.candidate.radius >
                   b.candidate.Length() * b.candidate.radius;
        });
    }

    // The middle one of the texts' heights.
    double UsualLetters() const {
        std::vector<double> heights;
        for (const NoteText& text : m_sheet.texts) heights.push_back(text.height);
        if (heights.empty()) return 0;
        const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
        std::nth_element(heights.begin(), middle, heights.end());
        return *middle;
    }

    void Choose() {
        std::vector<char> taken(m_components.size(), 0);
        for (const Placed& placed : m_all) {
            const Candidate& c = placed.candidate;
            if (c.score < kLeast) continue;
            const auto isTaken = [&](int i) { return taken[i] != 0; };
            if (std::any_of(c.components.begin(), c.components.end(), isTaken)) continue;
            FoundTool tool = Tool(placed);
            AddRivals(placed, tool);
            TakeWhatLiesInside(placed, taken, tool);
            tool.isSure = tool.confidence >= kSure;
            if (tool.isSure)
                m_finding.tools.push_back(std::move(tool));
            else if (m_finding.doubtful.size() < kMostDoubtful)
                m_finding.doubtful.push_back(std::move(tool));
        }
        FindRest(taken);
        std::stable_sort(
            m_finding.tools.begin(), m_finding.tools.end(),
            [](const FoundTool& a, const FoundTool& b) {
                return a.window.low.x < b.window.low.x ||
                       (a.window.low.x == b.window.low.x && a.window.low.y < b.window.low.y);
            });
    }

    // What no candidate explains, when it is as long as a tool of this sheet might be.
    void FindRest(const std::vector<char>& taken) {
        double longest = 0;
        for (const FoundTool& tool : m_finding.tools)
            longest = std::max(longest, Distance(tool.from, tool.to));
        const std::vector<int> circles = CirclesOf(m_sheet);
        for (size_t i = 0; i < m_components.size(); ++i) {
            if (taken[i] != 0 || m_components[i].strokes.size() < kLeastOfRest) continue;
            Rest rest;
            for (const int s : m_components[i].strokes) rest.box.Add(BoxOf(m_sheet.strokes[s]));
            rest.strokes = m_components[i].strokes.size();
            if (Diagonal(rest.box) >= kRestLength * longest &&
                !LiesInCircle(m_sheet, circles, m_components[i]))
                m_finding.rest.push_back(rest);
        }
        std::stable_sort(
            m_finding.rest.begin(), m_finding.rest.end(),
            [](const Rest& a, const Rest& b) { return Diagonal(a.box) > Diagonal(b.box); });
    }

    FoundTool Tool(const Placed& placed) const {
        const Candidate& c = placed.candidate;
        const Frame& frame = m_frames[placed.frame];
        FoundTool tool;
        tool.from = frame.Out({c.start, c.offset});
        tool.to = frame.Out({c.end, c.offset});
        // Turning there and back leaves dust where a coordinate is 0.
        for (double* value : {&tool.from.x, &tool.from.y, &tool.to.x, &tool.to.y})
            if (std::abs(*value) < 1e-7 * m_tolerance) *value = 0;
        const double slack = 1e-9 * Distance(tool.from, tool.to);
        if (tool.from.x > tool.to.x + slack ||
            (std::abs(tool.from.x - tool.to.x) <= slack && tool.from.y > tool.to.y))
            std::swap(tool.from, tool.to);
        tool.cue = c.cue;
        tool.confidence = c.score;
        tool.isHalf = c.isHalf;
        tool.agreement = c.agreement;
        if (c.standing) tool.standing = frame.Out(*c.standing);
        if (!c.why.empty()) tool.remarks.push_back(c.why);
        if (c.cue == AxisCue::Mirror || c.cue == AxisCue::Foot)
            tool.remarks.push_back(std::string("no axis is drawn: it was found by its ") +
                                   NameOf(c.cue));
        return tool;
    }

    // Another axis of the same contour for which about as much speaks.
    void AddRivals(const Placed& chosen, FoundTool& tool) const {
        const std::vector<int>& mine = chosen.candidate.components;
        for (const Placed& other : m_all) {
            if (&other == &chosen || other.candidate.score < chosen.candidate.score - kRival)
                continue;
            const bool same =
                other.frame == chosen.frame &&
                std::abs(other.candidate.offset - chosen.candidate.offset) <= 4 * m_tolerance;
            if (same) continue;
            const auto shared = [&](int i) {
                return std::find(mine.begin(), mine.end(), i) != mine.end();
            };
            if (!std::any_of(other.candidate.components.begin(), other.candidate.components.end(),
                             shared))
                continue;
            // Drawn centre lines that cross: a plate or a face seen from the front.
            const bool isCross = chosen.candidate.cue == AxisCue::CentreLine &&
                                 other.candidate.cue == AxisCue::CentreLine &&
                                 other.frame != chosen.frame;
            tool.confidence -= isCross ? 0.45 : 0.2;
            tool.remarks.push_back(std::string("as much speaks for another axis, by its ") +
                                   NameOf(other.candidate.cue));
            return;
        }
    }

    // Everything inside the chosen one's rectangle about the axis is its own, or stands beside it.
    void TakeWhatLiesInside(const Placed& placed, std::vector<char>& taken, FoundTool& tool) {
        const Candidate& c = placed.candidate;
        const Frame& frame = m_frames[placed.frame];
        for (const int i : c.components) taken[i] = 1;
        std::vector<char> hangs(m_sheet.strokes.size(), 0);
        for (const int i : c.hanging) {
            const Hanger& hanger = m_hangers[i];
            for (const int s : hanger.strokes) hangs[s] = 1;
            tool.leftOut.push_back({hanger.at, hanger.strokes.size(), hanger.hasText});
        }
        for (size_t i = 0; i < m_components.size(); ++i) {
            if (taken[i] == 0) {
                bool inside = true;
                for (const int s : m_components[i].strokes)
                    for (const Point& point : m_sheet.strokes[s].points) {
                        const Point p = frame.In(point);
                        inside = inside && p.x >= c.start - m_tolerance &&
                                 p.x <= c.end + m_tolerance &&
                                 std::abs(p.y - c.offset) <= c.radius + m_tolerance;
                    }
                if (!inside) continue;
                taken[i] = 1;
            } else if (std::find(c.components.begin(), c.components.end(), static_cast<int>(i)) ==
                       c.components.end()) {
                continue;
            }
            for (const int s : m_components[i].strokes) {
                if (hangs[s] != 0) continue;
                tool.entities.push_back(m_sheet.strokes[s].entity);
                tool.strokes.push_back(s);
                if (!LiesAlong(m_sheet.strokes[s], frame, c.offset))
                    tool.window.Add(BoxOf(m_sheet.strokes[s]));
            }
        }
        AddCircles(c, frame, tool);
        std::sort(tool.strokes.begin(), tool.strokes.end());
        std::sort(tool.entities.begin(), tool.entities.end());
        tool.entities.erase(std::unique(tool.entities.begin(), tool.entities.end()),
                            tool.entities.end());
        std::map<int, int> mine;
        for (const int s : tool.strokes) ++mine[m_sheet.strokes[s].entity];
        for (const auto& [entity, count] : mine)
            tool.hasWholeEntities = tool.hasWholeEntities && count == m_contourOf[entity];
    }

    // Full circles on the tool are picked with it: the envelope tells when they reach beyond.
    void AddCircles(const Candidate& c, const Frame& frame, FoundTool& tool) const {
        for (const Stroke& stroke : m_sheet.strokes) {
            if (!stroke.isFullCircle || stroke.kind != StrokeKind::Contour) continue;
            const Point p = frame.In(stroke.centre);
            if (p.x > c.start && p.x < c.end && std::abs(p.y - c.offset) < c.radius &&
                !MarksADetail(stroke, std::abs(p.y - c.offset)))
                tool.entities.push_back(stroke.entity);
        }
    }

    // A circle off the axis with letters beside it. A ball's middle lies on the axis.
    bool MarksADetail(const Stroke& circle, double fromAxis) const {
        if (fromAxis < 0.5 * circle.radius) return false;
        return std::any_of(m_sheet.texts.begin(), m_sheet.texts.end(), [&](const NoteText& text) {
            return !text.isNumber && text.halfLength <= 2 * text.height &&
                   Distance(text.at, circle.centre) <= circle.radius + 3 * text.height;
        });
    }

    bool LiesAlong(const Stroke& stroke, const Frame& frame, double offset) const {
        return std::all_of(stroke.points.begin(), stroke.points.end(), [&](Point p) {
            return std::abs(frame.In(p).y - offset) <= 2 * m_tolerance;
        });
    }

    const Sheet& m_sheet;
    double m_tolerance = 0;
    std::vector<Frame> m_frames;
    std::map<int, int> m_contourOf;  // strokes of each entity
    std::vector<Component> m_components;
    std::vector<Hanger> m_hangers;
    std::vector<Placed> m_all;
    Finding m_finding;
};

}  // namespace

Finding FindTools(const Sheet& sheet) { return ToolFinder(sheet).Run(); }

}  // namespace product::detect
