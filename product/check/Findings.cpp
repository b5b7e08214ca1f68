#include "product/check/Findings.h"

#include <algorithm>
#include <cmath>

#include "product/base/Text.h"
#include "product/check/Tolerance.h"
#include "product/check/TraceGaps.h"

namespace product {
namespace {

constexpr double kHeightShare = 0.01;  // of the diameter, for heights place by place
constexpr size_t kMostFaults = 3;      // are told one by one

std::string Place(const Point& p) { return Figure(p.x) + ", " + Figure(p.y); }

void Add(std::vector<Finding>& findings, Finding::Kind kind, bool isWarning,
         const std::string& text, const std::optional<Point>& at = std::nullopt) {
    findings.push_back({kind, isWarning, text, at});
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

void AddLeftOut(const CEncircleTrace::SLeftOut& left, std::vector<Finding>& findings) {
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
    Add(findings, Finding::Kind::LeftOut, IsSuspicious(left.m_reason), text);
}

// The exact envelope tells of a circle beyond it without knowing how far: that is one finding.
void AddRound(const OutlineCheck::Round& round, std::vector<Finding>& findings) {
    const std::string handle = "(handle " + round.handle + ")";
    const auto told = std::find_if(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.kind == Finding::Kind::Beyond &&
               finding.text.find(handle) != std::string::npos;
    });
    const bool isTold = told != findings.end();
    if (isTold) findings.erase(told);
    Add(findings, Finding::Kind::Beyond, true,
        "a full circle or ellipse on layer " + round.layer + " " + handle + " reaches " +
            Figure(round.reach.distance) + " beyond the envelope" +
            (isTold ? "; --take-circles makes it part of it" : "; such are no part of it"),
        round.reach.at);
}

// One half with a piece missing. Whether there was one.
bool AddOneSided(const AxisCheck* heights, std::vector<Finding>& findings) {
    if (heights == nullptr || heights->oneSided <= 0) return false;
    Add(findings, Finding::Kind::Halves, true,
        "one half is not drawn over " + Figure(heights->oneSided) + " of the length, at " +
            Place(heights->oneSidedAt),
        heights->oneSidedAt);
    return true;
}

// What is left to compare when nothing encloses an area: heights place by place.
void AddHeightFindings(const OutlineMeasure& measure, const std::string& half, double notable,
                       std::vector<Finding>& findings) {
    const AxisCheck* const heights = measure.heights;
    if (heights == nullptr || !heights->envelopeApart) {
        Add(findings, Finding::Kind::Outline, true,
            "the " + half + " encloses no area: the envelope has nothing to be compared with");
        return;
    }
    // A flank may lie anywhere within the stretch that a height is taken over.
    const double coarse = std::max(notable, kHeightShare * measure.diameter);
    const bool isOff = *heights->envelopeApart > coarse;
    Add(findings, Finding::Kind::Outline, isOff,
        isOff ? "the envelope lies " + Figure(*heights->envelopeApart) +
                    " off the outermost that is drawn, at " + Place(heights->envelopeAt)
              : "the envelope is as high as what is drawn; the " + half + " encloses no area",
        isOff ? std::optional<Point>(heights->envelopeAt) : std::nullopt);
    AddOneSided(heights, findings);
    if (heights->isOneSided || heights->halvesApart <= coarse ||
        heights->halvesApartBehindTeeth <= coarse)
        return;
    Add(findings, Finding::Kind::Halves, true,
        "upper and lower half differ by up to " + Figure(heights->halvesApart) + ", at " +
            Place(heights->halvesAt),
        heights->halvesAt);
}

}  // namespace

void AddTraceFindings(const CEncircleTrace& trace, double pointTolerance,
                      std::vector<Finding>& findings) {
    for (const CEncircleTrace::SGap& gap : WideGaps(trace, pointTolerance)) {
        if (IsStep(gap, pointTolerance)) continue;
        const Point from{gap.m_from.x, gap.m_from.y}, to{gap.m_to.x, gap.m_to.y};
        Add(findings, Finding::Kind::Gap, true,
            "gap of " + Figure(gap.m_dLength) + " bridged, " + Place(from) + " to " + Place(to),
            Point{(from.x + to.x) / 2, (from.y + to.y) / 2});
    }
    for (const CEncircleTrace::SLeftOut& left : trace.m_leftOut) AddLeftOut(left, findings);
    for (const CString& note : trace.m_notes)
        Add(findings, Finding::Kind::Note, true, ToUtf8(note));
}

void AddFaultFindings(const std::vector<std::string>& faults, std::vector<Finding>& findings) {
    const size_t told = std::min(faults.size(), kMostFaults);
    for (size_t i = 0; i < told; ++i) Add(findings, Finding::Kind::LeftOut, true, faults[i]);
    if (faults.size() > told)
        Add(findings, Finding::Kind::LeftOut, true,
            std::to_string(faults.size() - told) +
                " more entities cannot be drawn as they are stated");
}

void AddMeetingFinding(const std::optional<SelfMeeting>& meeting, std::vector<Finding>& findings) {
    if (!meeting) return;
    const Point at{meeting->at.x, meeting->at.y};
    const bool crosses = Crosses(meeting);
    Add(findings, Finding::Kind::Crossing, true,
        std::string("the envelope ") + (crosses ? "crosses" : "touches") + " itself at " +
            Place(at),
        at);
}

OutlineFigures AddOutlineFindings(const OutlineCheck& check, const OutlineMeasure& measure,
                                  std::vector<Finding>& findings) {
    const double notable = std::max(kNotablePointTolerances * measure.pointTolerance,
                                    kNotableDiameterShare * measure.diameter);
    const std::string half = measure.half == Half::Both    ? "drawing"
                             : measure.half == Half::Lower ? "lower half of the drawing"
                                                           : "upper half of the drawing";
    OutlineFigures figures;
    if (check.isTangled) {
        Add(findings, Finding::Kind::Outline, true,
            "not checked against the contour: its lines cross too often");
        return figures;
    }
    if (!check.hasContour) {
        AddHeightFindings(measure, half, notable, findings);
        return figures;
    }
    if (check.envelope) {
        const Deviation& off = *check.envelope;
        figures.offContour = off.distance;
        const AxisCheck* const heights = measure.heights;
        const bool isCovered = heights != nullptr && heights->envelopeApart &&
                               *heights->envelopeApart <= notable && off.isOutside;
        const bool isWarning = off.distance > notable && !isCovered;
        if (off.distance > notable && isCovered)
            Add(findings, Finding::Kind::Outline, false,
                "undercut covered, up to " + Figure(off.distance) + " deep, at " + Place(off.at));
        else
            Add(findings, Finding::Kind::Outline, isWarning,
                off.distance < kNoDeviation ? "the envelope lies on the drawing's contour"
                                            : "the envelope lies up to " + Figure(off.distance) +
                                                  (off.isOutside ? " outside" : " inside") +
                                                  " the drawing's contour, at " + Place(off.at),
                isWarning ? std::optional<Point>(off.at) : std::nullopt);
    }
    for (const OutlineCheck::Round& round : check.rounds)
        if (round.reach.distance > notable) AddRound(round, findings);
    const bool isPartly = AddOneSided(measure.heights, findings);
    if (!check.hasOtherHalf) {
        if (isPartly) return figures;
        Add(findings, Finding::Kind::Halves, false,
            measure.half == Half::Both ? std::string("only one half is drawn")
                                       : "only the " + half + " is there");
    } else if (check.halves) {
        const Deviation& differ = *check.halves;
        figures.betweenHalves = differ.distance;
        const AxisCheck* const heights = measure.heights;
        const bool isAlike = heights != nullptr && heights->halvesApart <= notable;
        const bool isToothed =
            heights != nullptr && !isAlike && heights->halvesApartBehindTeeth <= notable;
        const bool isWarning = differ.distance > notable && !isAlike && !isToothed;
        const double apart = isPartly ? heights->halvesApart : differ.distance;
        const Point at = isPartly ? heights->halvesAt : differ.at;
        // Where a half is not drawn its distance from the other says nothing of either.
        if (isPartly && isAlike) return figures;
        if (differ.distance > notable && isAlike)
            Add(findings, Finding::Kind::Halves, false,
                "the outlines of upper and lower half agree, what they enclose differs");
        else if (differ.distance > notable && isToothed)
            Add(findings, Finding::Kind::Halves, false,
                "the halves differ by " + Figure(heights->halvesApart) +
                    " as the flanks of a thread do");
        else
            Add(findings, Finding::Kind::Halves, isWarning,
                differ.distance < kNoDeviation
                    ? "upper and lower half agree"
                    : "upper and lower half differ by up to " + Figure(apart) + ", at " + Place(at),
                isWarning ? std::optional<Point>(at) : std::nullopt);
    }
    return figures;
}

}  // namespace product
