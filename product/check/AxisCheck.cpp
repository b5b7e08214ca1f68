#include "product/check/AxisCheck.h"

#include <algorithm>
#include <cmath>

#include "product/check/SourceCurves.h"
#include "product/detect/HalfHeights.h"
#include "product/detect/Notes.h"
#include "product/detect/Symmetry.h"

namespace product {
namespace {

constexpr size_t kMostMirrors = 8;
constexpr double kMirrored = 0.4;  // share of all strokes that a mirror line must match
constexpr double kBetter = 0.1;    // and by how much more of the length than the axis
constexpr double kClose = 0.02;    // of the greatest radius: what comes so near comes to the axis
constexpr double kEnd = 0.06;      // of the length: where an end is looked for

using detect::HalfHeights;
using detect::Sheet;
using detect::Stroke;
using detect::StrokeKind;

class Checker {
public:
    Checker(const Sheet& sheet, const Axis& axis, Half half, const std::vector<Vertex>& envelope,
            double tolerance)
        : m_half(half),
          m_envelope(envelope),
          m_frame(axis.from, std::atan2(axis.to.y - axis.from.y, axis.to.x - axis.from.x)),
          m_sheet(detect::Turned(sheet, m_frame)),
          m_tolerance(tolerance) {}

    AxisCheck Run() {
        FindBorder();
        for (size_t i = 0; i < m_sheet.strokes.size(); ++i) {
            const Stroke& stroke = m_sheet.strokes[i];
            if (stroke.kind != StrokeKind::Contour || stroke.isFullCircle) continue;
            m_strokes.push_back(static_cast<int>(i));
            m_box.Add(detect::BoxOf(stroke));
            m_length += stroke.Length();
        }
        if (m_strokes.empty() || m_box.Width() <= 0) return m_check;
        m_radius = std::max(m_box.high.y, -m_box.low.y);
        const HalfHeights here(m_sheet, m_strokes, 0, m_box.low.x, m_box.high.x);
        m_check.isOneSided = here.IsOneSided();
        FindShift(here.Agreement(Slack()));
        CompareHeights(here);
        FindReach();
        return m_check;
    }

private:
    double Slack() const { return 0.01 * m_radius + m_tolerance; }

    void FindBorder() {
        const std::vector<detect::NoteKind> notes = detect::FindNotes(m_sheet, m_tolerance);
        Box box;
        for (size_t i = 0; i < notes.size(); ++i) {
            if (notes[i] != detect::NoteKind::Border) continue;
            ++m_check.borderStrokes;
            box.Add(detect::BoxOf(m_sheet.strokes[i]));
        }
        if (!box.IsEmpty()) m_check.borderAt = m_frame.Out({box.low.x, box.high.y});
    }

    void FindShift(double agreement) {
        if (m_check.isOneSided) return;
        std::vector<char> use(m_sheet.strokes.size(), 0);
        for (const int i : m_strokes) use[i] = 1;
        for (const detect::MirrorLine& line :
             detect::FindMirrorLines(m_sheet, use, m_tolerance, kMostMirrors)) {
            if (std::abs(line.offset) <= std::max(10 * m_tolerance, 1e-3 * m_radius)) continue;
            if (line.weight < kMirrored * m_length || std::abs(line.offset) > m_radius) continue;
            const HalfHeights there(m_sheet, m_strokes, line.offset, m_box.low.x, m_box.high.x);
            if (there.Agreement(Slack()) < agreement + kBetter) continue;
            m_check.shift = line.offset;
            m_check.shiftAt = m_frame.Out({(m_box.low.x + m_box.high.x) / 2, line.offset});
            for (double* c : {&m_check.shiftAt.x, &m_check.shiftAt.y})
                if (std::abs(*c) < 1e-9 * m_radius) *c = 0;
            return;
        }
    }

    void CompareHeights(const HalfHeights& here) {
        const HalfHeights::Difference halves = here.BetweenHalves();
        m_check.halvesApart = halves.height;
        m_check.halvesApartBehindTeeth = here.BetweenHalvesOfTeeth().height;
        m_check.halvesAt = m_frame.Out({halves.at, 0});
        if (!m_check.isOneSided) {
            const HalfHeights::Difference alone = here.WithoutOther();
            m_check.oneSided = alone.height;
            m_check.oneSidedAt = m_frame.Out({alone.at, 0});
        }
        if (m_envelope.empty()) return;
        Sheet sheet;
        sheet.strokes.emplace_back();
        for (const Point& p : ChordsOf(m_envelope, true, 1e-5 * m_radius))
            sheet.strokes[0].points.push_back(m_frame.In(p));
        const HalfHeights ring(sheet, {0}, 0, m_box.low.x, m_box.high.x);
        const HalfHeights::Difference apart =
            here.To(ring, m_half != Half::Lower, m_half != Half::Upper);
        m_check.envelopeApart = apart.height;
        m_check.envelopeAt = m_frame.Out({apart.at, 0});
    }

    // The nearest that the contour comes to the axis at each end.
    void FindReach() {
        const double depth =
            std::max(kEnd * m_box.Width(), 0.5 * std::min(m_radius, m_box.Width()));
        for (const bool atStart : {true, false}) {
            const double from = atStart ? m_box.low.x : m_box.high.x - depth;
            double nearest = m_radius;
            for (const int i : m_strokes) {
                const std::vector<Point>& p = m_sheet.strokes[i].points;
                for (size_t k = 1; k < p.size(); ++k) {
                    if (std::max(p[k - 1].x, p[k].x) < from ||
                        std::min(p[k - 1].x, p[k].x) > from + depth)
                        continue;
                    const bool crosses = (p[k - 1].y <= 0) != (p[k].y <= 0);
                    nearest = std::min(
                        nearest, crosses ? 0.0 : std::min(std::abs(p[k - 1].y), std::abs(p[k].y)));
                }
            }
            if (nearest <= kClose * m_radius + m_tolerance || nearest <= m_check.reachGap) continue;
            m_check.reachGap = nearest;
            m_check.reachAt = m_frame.Out({atStart ? m_box.low.x : m_box.high.x, 0});
        }
    }

    Half m_half;
    const std::vector<Vertex>& m_envelope;
    detect::Frame m_frame;
    Sheet m_sheet;
    double m_tolerance;
    AxisCheck m_check;
    std::vector<int> m_strokes;
    Box m_box;
    double m_length = 0, m_radius = 0;
};

}  // namespace

AxisCheck CheckAxisPlace(const detect::Sheet& sheet, const Axis& axis, Half half,
                         const std::vector<Vertex>& envelope, double tolerance) {
    return Checker(sheet, axis, half, envelope, tolerance).Run();
}

}  // namespace product
