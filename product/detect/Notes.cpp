#include "product/detect/Notes.h"

#include <algorithm>
#include <cmath>

#include "product/detect/Heads.h"
#include "product/detect/Marks.h"
#include "product/detect/NearLines.h"

namespace product::detect {
namespace {

constexpr double kLevel = 1e-3;     // sine of an angle that counts as none
constexpr double kTextReach = 2.5;  // heights of a text between it and its dimension line
constexpr double kPastLine = 1.5;   // lengths of a head by which extension lines run past
constexpr double kMostHolds = 0.5;  // share of the length of all else that a border holds
constexpr size_t kTextsOfTable = 2;
constexpr size_t kStrokesOfText = 6;  // strokes of cells for each text of a table
constexpr size_t kMostSides = 60;     // of which the largest rectangle is made

bool IsParallel(const Vector& a, const Vector& b) {
    return std::abs(Cross(a, b)) <= kLevel * std::sqrt(Dot(a, a) * Dot(b, b));
}
bool IsSquare(const Vector& a, const Vector& b) {
    return std::abs(Dot(a, b)) <= kLevel * std::sqrt(Dot(a, a) * Dot(b, b));
}

class NoteFinder {
public:
    NoteFinder(const Sheet& sheet, double tolerance)
        : m_sheet(sheet),
          m_tolerance(tolerance),
          m_lines(sheet, tolerance),
          m_kinds(sheet.strokes.size(), NoteKind::None),
          m_notes{sheet, tolerance, m_lines, m_kinds} {}

    std::vector<NoteKind> Run() {
        m_heads = FindHeads(m_sheet, m_lines, m_tolerance);
        for (size_t i = 0; i < m_heads.size(); ++i)
            if (At(static_cast<int>(i)).IsLine())
                for (const int k : m_heads[i].strokes) m_notes.Mark(k, NoteKind::Dimension);
        MarkLetters(m_notes);
        MarkAngles(m_notes, m_heads);
        for (size_t i = 0; i < m_sheet.strokes.size(); ++i) ByHeads(static_cast<int>(i));
        for (const NoteText& text : m_sheet.texts)
            if (text.isNumber) ByNumber(text);
        FindBorders();
        return m_kinds;
    }

private:
    const Stroke& At(int i) const { return m_sheet.strokes[i]; }

    void ByHeads(int i) {
        const LineHeads& heads = m_heads[i];
        if (!heads.AtAny() || !At(i).IsLine() || m_kinds[i] != NoteKind::None) return;
        if (heads.AtBoth()) {
            MarkDimension(i, std::max(heads.length[0], heads.length[1]), false);
        } else {
            m_notes.Mark(i, NoteKind::Leader);
            FollowLeader(m_notes, i, heads.length[0] > 0 ? At(i).To() : At(i).From());
        }
    }

    void ByNumber(const NoteText& text) {
        const Vector along = {std::cos(text.angle), std::sin(text.angle)};
        const double reach = kTextReach * text.height;
        int best = -1;
        double nearest = reach;
        for (const int i : m_lines.Near(text.at, reach)) {
            const Stroke& line = At(i);
            if (!line.IsLine() || m_kinds[i] != NoteKind::None) continue;
            if (!IsParallel(line.To() - line.From(), along)) continue;
            const double distance = Distance(text.at, line.From(), line.To());
            if (distance >= nearest || ExtensionsAt(i, text.height, true).ends < 2) continue;
            nearest = distance;
            best = i;
        }
        if (best >= 0) MarkDimension(best, text.height, true);
    }

    struct Extensions {
        std::vector<int> strokes;
        int ends = 0;  // of the dimension line, that have some
    };

    // Lines square to the dimension line through its ends, that stand free beside it. Where nothing
    // but a number says that it is a dimension line they have to run past it, as no corner of a
    // contour does.
    Extensions ExtensionsAt(int i, double size, bool runPast) const {
        Extensions out;
        const Vector along = At(i).To() - At(i).From();
        for (const Point& end : {At(i).From(), At(i).To()}) {
            bool isFound = false;
            for (const int k : m_lines.Near(end, m_tolerance)) {
                const Stroke& line = At(k);
                if (k == i || !line.IsLine() || !IsSquare(line.To() - line.From(), along)) continue;
                const bool fromNear = Distance(line.From(), end) < Distance(line.To(), end);
                const Point nearEnd = fromNear ? line.From() : line.To();
                const double past = Distance(nearEnd, end);
                if (past > kPastLine * size || (runPast && past <= m_tolerance)) continue;
                if (IsFree(k, nearEnd, along, past <= m_tolerance)) {
                    out.strokes.push_back(k);
                    isFound = true;
                }
            }
            out.ends += isFound;
        }
        return out;
    }

    // Whether no stroke comes to an extension line's end but another dimension's, which begins at
    // the same place and runs past this one, or a chain of them where it ends on the line.
    bool IsFree(int stroke, Point end, Vector along, bool inChain) const {
        for (const int k : m_lines.Near(end, m_tolerance)) {
            if (k == stroke || m_kinds[k] != NoteKind::None) continue;
            const Vector other = At(k).To() - At(k).From();
            if (!At(k).IsLine() ||
                !(IsSquare(other, along) || (inChain && IsParallel(other, along))))
                return false;
        }
        return true;
    }

    void MarkDimension(int i, double size, bool runPast) {
        for (const int k : ExtensionsAt(i, size, runPast).strokes)
            m_notes.Mark(k, NoteKind::Dimension);
        m_notes.Mark(i, NoteKind::Dimension);
    }

    // ---- borders and tables

    bool IsGrid(const Component& component) const {
        return std::all_of(component.strokes.begin(), component.strokes.end(), [&](int i) {
            for (size_t k = 1; k < At(i).points.size(); ++k) {
                const Vector d = At(i).points[k] - At(i).points[k - 1];
                if (std::min(std::abs(d.x), std::abs(d.y)) > kLevel * std::hypot(d.x, d.y))
                    return false;
            }
            return !At(i).isArc;
        });
    }

    size_t TextsIn(const Box& box) const {
        return std::count_if(m_sheet.texts.begin(), m_sheet.texts.end(), [&](const NoteText& t) {
            return t.at.x > box.low.x && t.at.x < box.high.x && t.at.y > box.low.y &&
                   t.at.y < box.high.y;
        });
    }

    // Whether a centre line runs along the middle of the box and past its sides: a part's axis
    // does, that of what stands in a border ends before it.
    bool HasCentreLine(const Box& box) const {
        const double slack = 1e-3 * Diagonal(box);
        for (const Stroke& stroke : m_sheet.strokes) {
            if (stroke.kind != StrokeKind::Centre || !stroke.IsLine()) continue;
            const Box line = BoxOf(stroke);
            const bool level = line.Height() <= slack && line.low.x <= box.low.x + slack &&
                               line.high.x >= box.high.x - slack &&
                               std::abs(line.low.y - (box.low.y + box.high.y) / 2) <= slack;
            const bool upright = line.Width() <= slack && line.low.y <= box.low.y + slack &&
                                 line.high.y >= box.high.y - slack &&
                                 std::abs(line.low.x - (box.low.x + box.high.x) / 2) <= slack;
            if (level || upright) return true;
        }
        return false;
    }

    std::vector<Component> Components() const {
        std::vector<char> use(m_kinds.size());
        for (size_t i = 0; i < use.size(); ++i)
            use[i] =
                m_kinds[i] == NoteKind::None && At(static_cast<int>(i)).kind == StrokeKind::Contour;
        return FindComponents(m_sheet, use, m_tolerance);
    }

    // Rectangles one inside the other, from the outermost, with what is joined to them; then
    // tables.
    void FindBorders() {
        while (RemoveBorder()) {
        }
        for (const Component& component : Components())
            if (IsGrid(component) && !HasCentreLine(component.box) &&
                (IsFullOfTexts(component) ||
                 (IsTable(component) && TextsIn(component.box) >= kTextsOfTable)))
                MarkAll(component, NoteKind::Table);
    }

    bool RemoveBorder() {
        const std::vector<int> rectangle = OutermostRectangle();
        if (rectangle.empty()) return false;
        Box box;
        for (const int i : rectangle) box.Add(BoxOf(At(i)));
        if (HasCentreLine(box)) return false;
        for (const int i : rectangle) m_kinds[i] = NoteKind::Border;
        if (HoldsASheet(box, Components())) {
            MarkTitleBlock(box);
            return true;
        }
        for (const int i : rectangle) m_kinds[i] = NoteKind::None;
        return false;
    }

    bool TouchesSide(const Box& b, const Box& border) const {
        return b.low.x <= border.low.x + m_tolerance || b.high.x >= border.high.x - m_tolerance ||
               b.low.y <= border.low.y + m_tolerance || b.high.y >= border.high.y - m_tolerance;
    }

    // What is joined to the rectangle's sides with level and upright lines alone: title block,
    // marks of folds and fields.
    void MarkTitleBlock(const Box& border) {
        for (const Component& component : Components())
            if (TouchesSide(component.box, border) && IsGrid(component) &&
                !HasCentreLine(component.box))
                MarkAll(component, NoteKind::Border);
    }

    struct Side {
        double at, from, to;
        int stroke;
    };

    // The four sides of the largest rectangle of level and upright lines; none when the longest
    // lines make none.
    std::vector<int> OutermostRectangle() const {
        std::vector<Side> level, upright;
        for (size_t i = 0; i < m_kinds.size(); ++i) {
            const Stroke& stroke = At(static_cast<int>(i));
            if (!stroke.IsLine() || m_kinds[i] != NoteKind::None ||
                stroke.kind != StrokeKind::Contour)
                continue;
            const Box b = BoxOf(stroke);
            if (b.Height() <= kLevel * b.Width())
                level.push_back({(b.low.y + b.high.y) / 2, b.low.x, b.high.x, static_cast<int>(i)});
            else if (b.Width() <= kLevel * b.Height())
                upright.push_back(
                    {(b.low.x + b.high.x) / 2, b.low.y, b.high.y, static_cast<int>(i)});
        }
        KeepLongest(level);
        KeepLongest(upright);
        std::vector<int> best;
        double greatest = 0;
        for (const Side& low : level)
            for (const Side& high : level) {
                const double area = (high.at - low.at) * (low.to - low.from);
                if (area <= greatest || !IsNear(low.from, high.from) || !IsNear(low.to, high.to))
                    continue;
                const int left = Closing(upright, low.from, low.at, high.at);
                const int right = Closing(upright, low.to, low.at, high.at);
                if (left < 0 || right < 0) continue;
                greatest = area;
                best = {low.stroke, high.stroke, left, right};
            }
        return best;
    }

    static void KeepLongest(std::vector<Side>& sides) {
        std::stable_sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
            return a.to - a.from > b.to - b.from;
        });
        if (sides.size() > kMostSides) sides.resize(kMostSides);
    }
    bool IsNear(double a, double b) const { return std::abs(a - b) <= 4 * m_tolerance; }
    int Closing(const std::vector<Side>& sides, double at, double from, double to) const {
        for (const Side& side : sides)
            if (IsNear(side.at, at) && IsNear(side.from, from) && IsNear(side.to, to))
                return side.stroke;
        return -1;
    }

    // Whether what a rectangle encloses makes it a border: most of the sheet, and texts or a part
    // with room around it.
    bool HoldsASheet(const Box& border, const std::vector<Component>& others) const {
        Box inner;
        bool hasPart = false;
        double held = 0, all = 0;
        for (const Component& component : others) {
            all += component.length;
            if (!border.Contains(component.box)) continue;
            held += component.length;
            if (TouchesSide(component.box, border)) continue;
            inner.Add(component.box);
            hasPart = hasPart || (component.strokes.size() >= 3 &&
                                  Diagonal(component.box) >= 0.1 * Diagonal(border));
        }
        if (!hasPart || held < kMostHolds * all) return false;
        const double room =
            std::min(std::min(inner.low.x - border.low.x, border.high.x - inner.high.x),
                     std::min(inner.low.y - border.low.y, border.high.y - inner.high.y));
        return TextsIn(border) >= kTextsOfTable || room > 0.01 * Diagonal(border);
    }

    // Whether about every cell has its text, however its lines are drawn.
    bool IsFullOfTexts(const Component& component) const {
        const size_t texts = TextsIn(component.box);
        return texts >= 4 && kStrokesOfText * texts >= component.strokes.size();
    }

    // Whether several lines run from one side to the other, so that there are cells.
    bool IsTable(const Component& component) const {
        const Box& box = component.box;
        int across = 0, along = 0;
        for (const int i : component.strokes) {
            const Box line = BoxOf(At(i));
            across += line.Width() > 0.9 * box.Width();
            along += line.Height() > 0.9 * box.Height();
        }
        return across + along >= 4 && across > 0 && along > 0;
    }

    void MarkAll(const Component& component, NoteKind kind) {
        for (const int i : component.strokes) m_notes.Mark(i, kind);
    }

    const Sheet& m_sheet;
    double m_tolerance;
    NearLines m_lines;
    std::vector<NoteKind> m_kinds;
    NoteSheet m_notes;
    std::vector<LineHeads> m_heads;
};

}  // namespace

std::vector<NoteKind> FindNotes(const Sheet& sheet, double tolerance) {
    return NoteFinder(sheet, tolerance).Run();
}

}  // namespace product::detect
