#include "product/parts/Figures.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/solid/tolerance.h"
#include "product/parts/CutRing.h"

namespace product {
namespace {

using host::solid::Piece;
using host::solid::Profile;

constexpr double kDegrees = 180 / 3.14159265358979323846;
// Heights nearer than this are one, of the greatest diameter: drawings round to a thousandth.
constexpr double kSameShare = 1e-5;
// Lengths of a face at the tip that a cone's point may have, of the greatest diameter.
constexpr double kLeastShare = 1e-6;

// The contour from the tip on: s is the distance from the tip, y the height.
struct Step {
    double fromS = 0, toS = 0, fromY = 0, toY = 0;
    double radius = 0;  // of an arc; 0: a line

    bool IsCylinder(double same) const {
        return radius == 0 && std::fabs(toY - fromY) <= same && toS - fromS > same && fromY > same;
    }
    bool IsFace() const { return radius == 0 && fromS == toS; }
};

class Reader {
public:
    Reader(const Profile& profile, const FigureRequest& request)
        : m_profile(profile), m_request(request), m_measures(Measure(profile)) {
        m_same = kSameShare * m_measures.largestDiameter;
    }

    ToolFigures Read() {
        m_figures.greatestDiameter = m_measures.largestDiameter;
        m_figures.overallLength = m_measures.length;
        m_figures.volume = m_measures.volume;
        if (m_request.cut != nullptr) {
            const host::solid::Measures cut = Measure(*m_request.cut);
            m_figures.cuttingDiameter = cut.largestDiameter;
            m_figures.cuttingLength = cut.length;
            m_figures.cuttingVolume = cut.volume;
        }
        if (!m_request.isTipSure || m_profile.chains.front().closed) return m_figures;
        WalkFromTip();
        const auto first = std::find_if(m_steps.begin(), m_steps.end(),
                                        [&](const Step& s) { return s.IsCylinder(m_same); });
        Point();
        if (first == m_steps.end()) return m_figures;
        FirstCylinder(static_cast<size_t>(first - m_steps.begin()));
        Shank();
        return m_figures;
    }

private:
    void WalkFromTip() {
        const Reach reach = ReachOf(m_profile);
        std::vector<Piece> pieces = m_profile.chains.front().pieces;
        // From the high end to the low one: material lies left of travel.
        if (!m_request.isTipHigh) {
            std::reverse(pieces.begin(), pieces.end());
            for (Piece& piece : pieces) piece = piece.Reversed();
        }
        const auto fromTip = [&](double x) {
            return m_request.isTipHigh ? reach.high - x : x - reach.low;
        };
        for (const Piece& piece : pieces)
            m_steps.push_back({fromTip(piece.from.x), fromTip(piece.to.x), piece.from.y, piece.to.y,
                               piece.IsArc() ? piece.radius : 0});
    }

    // A cone from the axis, pointing outwards.
    void Point() {
        const Step& step = m_steps.front();
        const double length = step.toS - step.fromS;
        if (step.radius != 0 || step.fromY != 0 ||
            length < kLeastShare * m_measures.largestDiameter || step.toY <= 0)
            return;
        m_figures.pointAngle = 2 * kDegrees * std::atan2(step.toY, length);
        m_figures.pointLength = length;
    }

    void FirstCylinder(size_t at) {
        const double radius = m_steps[at].fromY;
        m_figures.tipDiameter = 2 * radius;
        m_first = at;
        for (const Step& step : m_steps)
            if (std::max(step.fromY, step.toY) > radius + m_same) {
                m_figures.usableLength = std::min(step.fromS, step.toS);
                break;
            }
        if (at == 0) return;
        const Step& corner = m_steps[at - 1];
        const bool rises = corner.toY > corner.fromY && corner.toS > corner.fromS;
        if (!rises) return;
        if (corner.radius != 0) {
            m_figures.cornerRadius = corner.radius;
            return;
        }
        // Behind a face, or a ground hollow, it is a chamfer; from the axis on it is the point.
        if (at < 2 || corner.fromY == 0) return;
        m_figures.chamferWidth = corner.toY - corner.fromY;
        m_figures.chamferAngle =
            kDegrees * std::atan2(corner.toY - corner.fromY, corner.toS - corner.fromS);
    }

    void Shank() {
        const double end = m_measures.length;
        size_t last = m_steps.size();
        for (size_t i = m_steps.size(); i-- > 0;)
            if (m_steps[i].IsCylinder(m_same)) {
                last = i;
                break;
            }
        // One cylinder all along is the shank and the cutting part at once; nothing tells how much
        // of it is which.
        if (last == m_first && m_request.cut == nullptr) return;
        const double radius = m_steps[last].fromY;
        m_figures.shankDiameter = 2 * radius;
        // Parts of one cylinder, with marks between them, are told by the last one.
        m_figures.shankLength = end - m_steps[last].fromS;
        Neck(last);
    }

    // The least cylinder between the two that is smaller than both.
    void Neck(size_t last) {
        const double behind = m_figures.cuttingLength.value_or(0);
        const double least = std::min(m_steps[m_first].fromY, m_steps[last].fromY);
        const Step* neck = nullptr;
        for (size_t i = m_first + 1; i < last; ++i) {
            const Step& step = m_steps[i];
            if (!step.IsCylinder(m_same) || step.fromY >= least - m_same || step.toS <= behind)
                continue;
            if (neck == nullptr || step.fromY < neck->fromY) neck = &step;
        }
        if (neck == nullptr) return;
        m_figures.neckDiameter = 2 * neck->fromY;
        m_figures.neckLength = neck->toS - std::max(neck->fromS, behind);
    }

    const Profile& m_profile;
    const FigureRequest& m_request;
    const host::solid::Measures m_measures;
    double m_same = 0;
    std::vector<Step> m_steps;
    size_t m_first = 0;
    ToolFigures m_figures;
};

}  // namespace

ToolFigures FiguresOf(const Profile& profile, const FigureRequest& request) {
    return Reader(profile, request).Read();
}

}  // namespace product
