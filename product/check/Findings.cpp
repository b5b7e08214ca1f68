#include "product/check/Findings.h"

#include <algorithm>
#include <cmath>

#include "product/tool/Text.h"
#include "product/report/TraceReport.h"

namespace app {
namespace {

constexpr double kPointTolerances = 10;
constexpr double kDiameterShare = 1e-3;

// Below this nobody draws or measures; in drawing units.
constexpr double kNothing = 1e-4;

std::string Place(const Point& p) { return Figure(p.x) + ", " + Figure(p.y); }

void Add(ToolResult& result, Finding::Kind kind, bool isWarning, const std::string& text,
         const std::optional<Point>& at = std::nullopt) {
    result.findings.push_back({kind, isWarning, text, at});
}

// What never is part of an outline needs no person's look; the rest might have been meant to be.
bool IsSuspicious(CEncircleTrace::E_LeftOut reason) {
    switch (reason) {
        case CEncircleTrace::E_LeftOut_Unopenable:
        case CEncircleTrace::E_LeftOut_Locked:
        case CEncircleTrace::E_LeftOut_Explode:
        case CEncircleTrace::E_LeftOut_NotFinite:
            return true;
        default:
            return false;
    }
}

void AddLeftOut(const CEncircleTrace::SLeftOut& left, ToolResult& result) {
    static const struct {
        CEncircleTrace::E_LeftOut reason;
        const char* text;
    } kTexts[] = {
        {CEncircleTrace::E_LeftOut_Unopenable, "cannot be opened"},
        {CEncircleTrace::E_LeftOut_Layer, "on the dimension layer"},
        {CEncircleTrace::E_LeftOut_Locked, "on a locked layer"},
        {CEncircleTrace::E_LeftOut_Type, "never part of an outline"},
        {CEncircleTrace::E_LeftOut_Linetype, "by its line type"},
        {CEncircleTrace::E_LeftOut_Duplicate, "drawn twice"},
        {CEncircleTrace::E_LeftOut_Explode, "a block that cannot be taken apart"},
        {CEncircleTrace::E_LeftOut_NotFinite, "with a coordinate that is no number"},
    };
    const auto row = std::find_if(std::begin(kTexts), std::end(kTexts),
                                  [&](const auto& r) { return r.reason == left.m_reason; });
    const std::string why = row == std::end(kTexts) ? std::string() : std::string(", ") + row->text;
    std::string text =
        std::to_string(left.m_nCount) + " × " + ToUtf8(left.m_strWhat) + " left out" + why;
    std::string handles;
    for (const CString& handle : left.m_handles) handles += " " + ToUtf8(handle);
    if (IsSuspicious(left.m_reason) && !handles.empty()) text += ", handle" + handles;
    Add(result, Finding::Kind::LeftOut, IsSuspicious(left.m_reason), text);
}

}  // namespace

void AddTraceFindings(const CEncircleTrace& trace, double pointTolerance, ToolResult& result) {
    for (const CEncircleTrace::SGap& gap : WideGaps(trace, pointTolerance)) {
        if (IsStep(gap, pointTolerance)) continue;
        const Point from{gap.m_from.x, gap.m_from.y}, to{gap.m_to.x, gap.m_to.y};
        Add(result, Finding::Kind::Gap, true,
            "gap of " + Figure(gap.m_dLength) + " bridged, " + Place(from) + " to " + Place(to),
            Point{(from.x + to.x) / 2, (from.y + to.y) / 2});
    }
    for (const CEncircleTrace::SLeftOut& left : trace.m_leftOut) AddLeftOut(left, result);
    for (const CString& note : trace.m_notes) Add(result, Finding::Kind::Note, true, ToUtf8(note));
}

void AddMeetingFinding(const Envelope& envelope, ToolResult& result) {
    if (!envelope.selfMeeting) return;
    const Point at = envelope.selfMeeting->at;
    const bool crosses = Crosses(envelope);
    Add(result, Finding::Kind::Crossing, true,
        std::string("the envelope ") + (crosses ? "crosses" : "touches") + " itself at " +
            Place(at),
        at);
}

void AddOutlineFindings(const OutlineCheck& check, const CEncircleCalInfo& parameters,
                        ToolResult& result) {
    const double notable = std::max(kPointTolerances * parameters.m_tolPoint.equalPoint(),
                                    kDiameterShare * result.diameter);
    const char* const half = result.lowerHalf ? "lower" : "upper";
    if (!check.hasContour) {
        Add(result, Finding::Kind::Outline, true,
            std::string("the ") + half +
                " half of the drawing encloses no area: the envelope has nothing to be compared "
                "with");
        return;
    }
    if (check.envelope) {
        const Deviation& off = *check.envelope;
        result.offContour = off.distance;
        const bool isWarning = off.distance > notable;
        Add(result, Finding::Kind::Outline, isWarning,
            off.distance < kNothing ? "the envelope lies on the drawing's contour"
                                    : "the envelope lies up to " + Figure(off.distance) +
                                          (off.isOutside ? " outside" : " inside") +
                                          " the drawing's contour, at " + Place(off.at),
            isWarning ? std::optional<Point>(off.at) : std::nullopt);
    }
    for (const OutlineCheck::Round& round : check.rounds)
        if (round.reach.distance > notable)
            Add(result, Finding::Kind::Beyond, true,
                "a full circle or ellipse on layer " + round.layer + " (handle " + round.handle +
                    ") reaches " + Figure(round.reach.distance) +
                    " beyond the envelope; such are no part of it",
                round.reach.at);
    if (!check.hasOtherHalf) {
        Add(result, Finding::Kind::Halves, false,
            std::string("only the ") + half + " half is drawn");
    } else if (check.halves) {
        const Deviation& differ = *check.halves;
        result.betweenHalves = differ.distance;
        const bool isWarning = differ.distance > notable;
        Add(result, Finding::Kind::Halves, isWarning,
            differ.distance < kNothing ? "upper and lower half agree"
                                       : "upper and lower half differ by up to " +
                                             Figure(differ.distance) + ", at " + Place(differ.at),
            isWarning ? std::optional<Point>(differ.at) : std::nullopt);
    }
}

}  // namespace app
