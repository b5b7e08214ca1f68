#include "product/detect/AxisLines.h"

#include <algorithm>
#include <cmath>

#include "product/detect/Symmetry.h"

namespace product::detect {
namespace {

constexpr size_t kMostMirrors = 24;
constexpr size_t kMostLines = 64;

class LineFinder {
public:
    LineFinder(const LevelSheet& level, const std::vector<int>& componentOf)
        : m_level(level), m_of(componentOf) {}

    std::vector<AxisLine> Run() const {
        std::vector<AxisLine> lines = CentreLines();
        std::vector<char> use(sheet().strokes.size());
        for (size_t i = 0; i < use.size(); ++i) use[i] = m_of[i] >= 0;
        for (MirrorLine& mirror : FindMirrorLines(sheet(), use, tolerance(), kMostMirrors))
            lines.push_back({mirror.offset, 1, 0, AxisCue::Mirror, std::move(mirror.strokes)});
        AddFullLines(lines);
        AddDashedLines(lines);
        AddFeet(lines);
        if (lines.size() > kMostLines) lines.resize(kMostLines);
        return lines;
    }

private:
    const Sheet& sheet() const { return m_level.sheet; }
    double tolerance() const { return m_level.tolerance; }

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

    // Dashed lines that run past a component at both ends, as hidden edges do not: axes with a line
    // type that was badly chosen.
    void AddDashedLines(std::vector<AxisLine>& lines) const {
        for (const Stroke& stroke : sheet().strokes) {
            if (stroke.kind != StrokeKind::Hidden || !IsLevel(stroke)) continue;
            const Box box = BoxOf(stroke);
            const double y = (box.low.y + box.high.y) / 2;
            for (const Component& component : m_level.components) {
                const double low = y - component.box.low.y, high = component.box.high.y - y;
                if (component.strokes.size() < 3 ||
                    !RunsPast(box.low.x, box.high.x, component.box.low.x, component.box.high.x,
                              tolerance()) ||
                    std::min(low, high) < 0.2 * std::max(low, high))
                    continue;
                lines.push_back({y, box.low.x, box.high.x, AxisCue::FullLine, {}});
                break;
            }
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

    const LevelSheet& m_level;
    const std::vector<int>& m_of;
};

}  // namespace

std::vector<AxisLine> FindAxisLines(const LevelSheet& level, const std::vector<int>& componentOf) {
    return LineFinder(level, componentOf).Run();
}

bool RunsPast(double from, double to, double partFrom, double partTo, double tolerance) {
    const double past = 0.005 * (partTo - partFrom) + 2 * tolerance;
    return from < partFrom - past && to > partTo + past;
}

}  // namespace product::detect
