#include <algorithm>
#include <cmath>
#include <map>

#include "plane/apart.h"
#include "product/base/Text.h"
#include "product/check/Findings.h"
#include "product/check/SourceCurves.h"

namespace product {
namespace {

constexpr double kNotable = 0.01;        // drawing units
constexpr double kDiameterShare = 1e-3;  // or of the diameter, whichever is less
constexpr double kVolumeShare = 1e-4;    // what differs by less is told to agree
constexpr double kChordShare = 1e-6;     // of the diameter: what chords leave arcs by

Point At(const SExactResult::SPlace& place) { return {place.m_dX, place.m_dY}; }
std::string Place(const Point& p) { return Figure(p.x) + ", " + Figure(p.y); }
Point Between(const Point& a, const Point& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

void Add(std::vector<Finding>& findings, Finding::Kind kind, bool isWarning,
         const std::string& text, const std::optional<Point>& at = std::nullopt) {
    findings.push_back({kind, isWarning, text, at});
}

void AddSpans(const std::vector<SExactResult::SBridge>& spans, const char* what, double allowed,
              std::vector<Finding>& findings) {
    for (const SExactResult::SBridge& span : spans) {
        const Point from = At(span.m_from), to = At(span.m_to);
        Add(findings, Finding::Kind::Gap, span.m_dLength > allowed,
            std::string(what) + " of " + Figure(span.m_dLength) + " bridged, " + Place(from) +
                " to " + Place(to),
            Between(from, to));
    }
}

std::vector<plane::Point> PlaneChords(const std::vector<Vertex>& ring, double tolerance) {
    std::vector<plane::Point> chords;
    for (const Point& p : ChordsOf(ring, true, tolerance)) chords.push_back({p.x, p.y});
    return chords;
}

// Of what the ring sweeps about the axis: by the moment of its area.
double VolumeOf(const std::vector<Vertex>& ring, const Axis& axis) {
    const AxisFrame frame(axis);
    std::vector<Vertex> about;
    for (const Vertex& v : ring) {
        const Point p = frame.In({v.x, v.y});
        about.push_back({p.x, p.y, v.bulge});
    }
    return plane::kFullTurn * std::abs(plane::Integrate(EdgesOf(about)).moment);
}

}  // namespace

void AddExactFindings(const SExactResult& exact, std::vector<Finding>& findings) {
    AddSpans(exact.m_bridges, "opening", exact.m_dOvershoot, findings);
    AddSpans(exact.m_gaps, "gap", 0, findings);
    for (const SExactResult::SPlace& end : exact.m_openEnds)
        Add(findings, Finding::Kind::Gap, true, "open end at " + Place(At(end)), At(end));
    for (const SExactResult::STail& tail : exact.m_tails)
        Add(findings, Finding::Kind::Gap, false,
            "overshoot of " + Figure(tail.m_dLength) + " cut off at " + Place(At(tail.m_at)));
    std::map<std::string, int> counts;
    for (const SExactResult::SLeftOut& left : exact.m_leftOut) {
        if (left.m_reason == SExactResult::E_LeftOut_CircleBeyond)
            Add(findings, Finding::Kind::Beyond, true,
                "a full circle or ellipse (handle " + HandleText(left.m_id) +
                    ") reaches beyond the envelope; --take-circles makes it part of it",
                At(left.m_at));
        else if (left.m_reason == SExactResult::E_LeftOut_Locked)
            ++counts[ToUtf8(left.m_strWhat) + " left out, on a locked layer"];
    }
    for (const auto& [what, count] : counts)
        Add(findings, Finding::Kind::LeftOut, true, std::to_string(count) + " × " + what);
}

void AddDifference(const std::vector<Vertex>& ring, const std::vector<Vertex>& exact,
                   const Axis& axis, std::vector<Finding>& findings) {
    const Box about = BoxAbout(axis, exact), otherBox = BoxAbout(axis, ring);
    const double diameter = 2 * std::max(about.high.y, -about.low.y);
    const double other = 2 * std::max(otherBox.high.y, -otherBox.low.y);
    const double chord = std::max(kChordShare * diameter, 1e-12);
    const std::vector<plane::Point> a = PlaneChords(ring, chord), b = PlaneChords(exact, chord);
    if (a.size() < 2 || b.size() < 2) return;
    const plane::Apart apart = plane::FarthestApart(a, b);
    const Deviation worst{apart.distance, {apart.at.x, apart.at.y}, false};
    const double notable = std::min(kNotable, kDiameterShare * diameter);
    if (worst.distance <= notable) {
        Add(findings, Finding::Kind::Exact, false, "the exact envelope is the same");
        return;
    }
    std::string text =
        "the exact envelope lies up to " + Figure(worst.distance) + " away, at " + Place(worst.at);
    if (std::abs(other - diameter) > notable)
        text += ", diameter " + Figure(diameter) + " for " + Figure(other);
    if (std::abs(otherBox.Width() - about.Width()) > notable)
        text += ", length " + Figure(about.Width()) + " for " + Figure(otherBox.Width());
    const double volume = VolumeOf(exact, axis), otherVolume = VolumeOf(ring, axis);
    if (std::abs(otherVolume - volume) > kVolumeShare * volume)
        text += ", volume " + Figure(volume) + " for " + Figure(otherVolume);
    Add(findings, Finding::Kind::Exact, true, text + "; use --algorithm exact", worst.at);
}

void AddAxisFindings(const AxisCheck& check, const Axis& axis, std::vector<Finding>& findings) {
    if (check.borderStrokes > 0)
        Add(findings, Finding::Kind::Border, true,
            "a sheet's border or title block is part of what was picked, at " +
                Place(check.borderAt) + "; pick inside it with --window",
            check.borderAt);
    if (check.shift) {
        const std::string line = axis.IsLevel() ? "y = " + Figure(check.shiftAt.y)
                                                : "a line through " + Place(check.shiftAt);
        Add(findings, Finding::Kind::Axis, true,
            "the drawing is symmetric about " + line + ", " + Figure(std::abs(*check.shift)) +
                " from the axis given",
            check.shiftAt);
    }
    if (check.reachGap > 0)
        Add(findings, Finding::Kind::Axis, true,
            "nothing drawn comes nearer to the axis than " + Figure(check.reachGap) + ", at " +
                Place(check.reachAt),
            check.reachAt);
    if (check.isOneSided)
        Add(findings, Finding::Kind::Halves, false, "only one side of the axis is drawn");
}

}  // namespace product
