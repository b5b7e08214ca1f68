#include "product/tool/ToolParts.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "host/solid/outline_of.h"
#include "host/solid/tolerance.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/detect/ReadSheet.h"
#include "product/parts/CutRing.h"
#include "product/parts/Heights.h"
#include "product/parts/SplitLine.h"
#include "product/tool/PartDrawing.h"
#include "product/tool/ToolRun.h"

namespace product {
namespace {

using host::solid::kPositionTol;
using host::solid::Piece;
using host::solid::Profile;

// Of the diameter: contours that differ more from the envelope are worth a look.
constexpr double kNotable = 1e-3;

std::vector<Vertex> VerticesOf(const std::vector<Piece>& pieces) {
    std::vector<Vertex> ring;
    for (const Piece& piece : pieces) ring.push_back({piece.from.x, piece.from.y, piece.bulge});
    return ring;
}

class Finder {
public:
    Finder(AcDbDatabase& database, const ToolRequest& request, const ToolRun& run)
        : m_database(database),
          m_request(request),
          m_run(run),
          m_whole(*run.solid.profile),
          m_reach(ReachOf(m_whole)) {}

    ToolParts Find() {
        m_parts.tip = TipOf(m_whole, m_request.parts.tip);
        switch (m_request.parts.split.kind) {
            case SplitRule::Kind::None:
                break;
            case SplitRule::Kind::Length:
                AtLength(m_request.parts.split.length);
                break;
            case SplitRule::Kind::Line:
                AtLine();
                break;
            case SplitRule::Kind::Layers:
                ByLayers();
                break;
            case SplitRule::Kind::Auto:
                ByAnything();
        }
        if (m_parts.isSplit) Draw();
        // A tip that nothing asks for is nobody's trouble.
        const bool isAsked = m_parts.isSplit || !m_request.parts.placement.IsAsDrawn();
        if (isAsked && !m_parts.tip.isSure)
            Say(true, "the tip is taken to be at the " +
                          std::string(EndName(m_whole, m_parts.tip.isHigh)) + " end, since " +
                          m_parts.tip.why + "; --tip says which it is");
        return std::move(m_parts);
    }

private:
    void Say(bool isWarning, const std::string& text) {
        m_parts.findings.push_back({Finding::Kind::Parts, isWarning, text, std::nullopt});
    }

    double PlaceAt(double length) const {
        return m_parts.tip.isHigh ? m_reach.high - length : m_reach.low + length;
    }

    void AtLength(double length) {
        const double whole = m_reach.high - m_reach.low;
        if (length >= whole - kPositionTol)
            throw Failure(Fault::Request, "--split: " + Figure(length) +
                                              " leaves nothing of the tool, which is " +
                                              Figure(whole) +
                                              " long; give a distance from the "
                                              "tip");
        CutAt(PlaceAt(length));
        m_parts.how = "the distance given";
    }

    void AtLine() {
        const detect::ReadResult read = detect::ReadSheet(m_database, m_run.selection.ids, 0);
        const AxisFrame frame(*m_request.axis);
        std::vector<DrawnLine> lines;
        bool isAbove = false, isBelow = false;
        const double off = kNotable * m_run.solid.measures.largestDiameter;
        for (const detect::Stroke& stroke : read.sheet.strokes) {
            for (const Point& p : stroke.points) {
                const double height = frame.In(p).y;
                isAbove = isAbove || height > off;
                isBelow = isBelow || height < -off;
            }
            if (!stroke.IsLine()) continue;
            lines.push_back({{stroke.From().x, stroke.From().y},
                             {stroke.To().x, stroke.To().y},
                             "handle " + HandleText(read.entities[stroke.entity])});
        }
        const SplitLine line =
            FindSplitLine(m_whole, lines, m_parts.tip.isHigh, !(isAbove && isBelow));
        CutAt(line.at);
        m_parts.how = "the line across the section, " + line.name;
    }

    void CutAt(double at) {
        CutProfiles profiles = CutProfile(m_whole, at);
        const AcGeVector3d& axis = m_whole.frame.axis;
        CutRings rings =
            CutRing(EdgesOf(m_run.envelope.vertices), plane::Vector{axis.x, axis.y}, at);
        const bool isHigh = m_parts.tip.isHigh;
        m_parts.cut.profile = std::move(isHigh ? profiles.above : profiles.below);
        m_parts.rest.profile = std::move(isHigh ? profiles.below : profiles.above);
        m_parts.cut.ring = VerticesOf(isHigh ? rings.behind : rings.before);
        m_parts.rest.ring = VerticesOf(isHigh ? rings.before : rings.behind);
        TakeMeasures();
    }

    void TakeMeasures() {
        m_parts.isSplit = true;
        m_parts.cut.measures = Measure(m_parts.cut.profile);
        m_parts.rest.measures = Measure(m_parts.rest.profile);
        m_parts.length = m_parts.cut.measures.length;
    }

    // ---- Contours by others

    AcArray<AcDbObjectId> OnLayer(const ACHAR* layer) const {
        PickRule rule;
        rule.layers = {ToUtf8(layer)};
        Box box = m_run.envelope.extents;
        const double around = m_run.solid.measures.largestDiameter;
        box.Add(Point{box.low.x - around, box.low.y - around});
        box.Add(Point{box.high.x + around, box.high.y + around});
        rule.window = box;
        return PickBy(m_database, rule).ids;
    }

    // The one closed contour of a layer about this axis. Two that are mirror images are one.
    ToolPart ContourOf(const ACHAR* layer) const {
        const std::string name = ToUtf8(layer);
        const AcArray<AcDbObjectId> ids = OnLayer(layer);
        std::vector<std::unique_ptr<AcDbObjectPointer<AcDbEntity>>> open;
        std::vector<const AcDbCurve*> curves;
        for (int i = 0; i < ids.length(); ++i) {
            open.push_back(std::make_unique<AcDbObjectPointer<AcDbEntity>>(ids[i], AcDb::kForRead));
            if (open.back()->openStatus() != Acad::eOk) continue;
            const auto* curve = AcDbCurve::cast(open.back()->object());
            if (curve != nullptr) curves.push_back(curve);
        }
        std::vector<host::solid::Outline> loops;
        if (!curves.empty())
            if (const host::solid::Refusal refusal = LoopsOfCurves(curves, loops))
                throw Failure(Fault::NoResult, "the contour on layer " + name +
                                                   " cannot be taken: " + refusal.Text());
        std::vector<ToolPart> found;
        std::string why;
        for (const host::solid::Outline& loop : loops) {
            ToolPart part;
            const host::solid::Refusal refusal =
                Prepare(loop, m_whole.frame.origin, m_whole.frame.axis, part.profile);
            if (refusal) {
                why = refusal.Text();
                continue;
            }
            part.measures = Measure(part.profile);
            for (const plane::Corner& corner : loop.corners) {
                const AcGePoint3d p = loop.At(corner.point);
                part.ring.push_back(
                    {p.x, p.y, loop.u.crossProduct(loop.v).z < 0 ? -corner.bulge : corner.bulge});
            }
            const bool isKnown = std::any_of(found.begin(), found.end(), [&](const ToolPart& one) {
                return IsMirrorOf(one.profile, part.profile);
            });
            if (!isKnown) found.push_back(std::move(part));
        }
        if (found.empty())
            throw Failure(Fault::NoResult, "layer " + name +
                                               " holds no closed half contour about the axis" +
                                               (why.empty() ? "" : ": " + why));
        if (found.size() > 1)
            throw Failure(Fault::NoResult, "layer " + name + " holds " +
                                               std::to_string(found.size()) +
                                               " closed contours about the axis; one is needed");
        return std::move(found.front());
    }

    bool IsMirrorOf(const Profile& a, const Profile& b) const {
        const Reach one = ReachOf(a), other = ReachOf(b);
        const double off = kNotable * m_run.solid.measures.largestDiameter;
        return std::fabs(one.low - other.low) < off && std::fabs(one.high - other.high) < off &&
               std::fabs(Compare(a, b).most) < off;
    }

    void ByLayers() {
        m_parts.cut = ContourOf(kCutLayer);
        m_parts.rest = ContourOf(kRestLayer);
        // Both profiles have frames of one axis; only its side may differ.
        m_parts.cut.profile.frame.radial = m_whole.frame.radial;
        m_parts.rest.profile.frame.radial = m_whole.frame.radial;
        m_areContours = true;
        TakeMeasures();
        const Reach cut = ReachOf(m_parts.cut.profile), rest = ReachOf(m_parts.rest.profile);
        if (m_request.parts.tip == TipSide::Auto) {
            m_parts.tip.isHigh = cut.low + cut.high > rest.low + rest.high;
            m_parts.tip.isSure = true;
            m_parts.tip.why = "the contour on layer CUT lies there";
        }
        m_parts.how = "the contours on layers CUT and NOCUT";
        CompareWithEnvelope(cut, rest);
    }

    void CompareWithEnvelope(const Reach& cut, const Reach& rest) {
        const double off = kNotable * m_run.solid.measures.largestDiameter;
        const double gap = std::max(cut.low, rest.low) - std::min(cut.high, rest.high);
        if (gap > kPositionTol)
            Say(true,
                "the contours on CUT and NOCUT leave a gap of " + Figure(gap) + " along the axis");
        Profile both = m_parts.cut.profile;
        const Profile& other = m_parts.rest.profile;
        both.chains.insert(both.chains.end(), other.chains.begin(), other.chains.end());
        const double sum = m_parts.cut.measures.volume + m_parts.rest.measures.volume;
        const double whole = m_run.solid.measures.volume;
        const HeightDifference difference = Compare(both, m_whole);
        if (std::fabs(difference.most) > off) {
            const AcGePoint3d at = m_whole.frame.At(difference.at, HeightAt(both, difference.at));
            m_parts.findings.push_back(
                {Finding::Kind::Parts, true,
                 "the contours on CUT and NOCUT lie " + Figure(std::fabs(difference.most)) +
                     (difference.most > 0 ? " outside" : " inside") + " the envelope, at " +
                     Figure(at.x) + ", " + Figure(at.y),
                 Point{at.x, at.y}});
        } else if (std::fabs(sum - whole) > kNotable * whole) {
            Say(true, "the contours on CUT and NOCUT come to a volume of " + Figure(sum) +
                          ", the envelope to " + Figure(whole) + ": they overlap or leave a gap");
        } else {
            Say(false, "the contours on CUT and NOCUT agree with the envelope");
        }
    }

    void ByAnything() {
        std::string why;
        for (void (Finder::*way)() : {&Finder::AtLine, &Finder::ByLayers}) {
            try {
                (this->*way)();
                return;
            } catch (const Failure& failure) {
                if (failure.Code() != Fault::NoResult) throw;
                why += (why.empty() ? "" : "; ") + std::string(failure.what());
            }
        }
        Say(true, "not split: " + why);
    }

    void Draw() {
        if (m_areContours) return;
        m_parts.cut.handle = DrawPart(m_parts.cut.ring, kCutLayer);
        m_parts.rest.handle = DrawPart(m_parts.rest.ring, kRestLayer);
    }

    AcDbDatabase& m_database;
    const ToolRequest& m_request;
    const ToolRun& m_run;
    const Profile& m_whole;
    const Reach m_reach;
    bool m_areContours = false;
    ToolParts m_parts;
};

}  // namespace

ToolParts FindParts(AcDbDatabase& database, const ToolRequest& request, const ToolRun& run) {
    return Finder(database, request, run).Find();
}

}  // namespace product
