#include "apps/qzhost/review/EnvelopeReview.h"

#include <algorithm>

#include "apps/qzhost/words/Words.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/base/WorkingDatabase.h"
#include "product/check/Findings.h"
#include "product/tool/ExactRun.h"
#include "product/tool/ToolRun.h"

namespace app {
namespace {

// Lines up to which a preview keeps up with its user.
constexpr double kMostLines = 60000;

const char* KindName(product::Finding::Kind kind) {
    using Kind = product::Finding::Kind;
    switch (kind) {
        case Kind::Axis:
            return Word("Axis");
        case Kind::Border:
            return Word("Border");
        case Kind::Window:
            return Word("Window");
        case Kind::Exact:
            return Word("Exact");
        case Kind::Gap:
            return Word("Gap");
        case Kind::Crossing:
            return Word("Crossing");
        case Kind::LeftOut:
            return Word("Left out");
        case Kind::Beyond:
            return Word("Beyond");
        case Kind::Halves:
            return Word("Halves");
        case Kind::Outline:
            return Word("Outline");
        case Kind::Solid:
            return Word("Solid");
        case Kind::Parts:
            return Word("Parts");
        case Kind::Note:
            break;
    }
    return Word("Note");
}

// Hints at options of the command line are of no use here.
QString WithoutOptions(const std::string& text) {
    return QString::fromStdString(text).section("; use --", 0, 0).section("; --", 0, 0);
}

ReviewRow RowOf(const product::Finding& finding) {
    ReviewRow row;
    row.kind = Tr(KindName(finding.kind));
    row.text = WithoutOptions(finding.text);
    row.isWarning = finding.isWarning;
    row.at = finding.at;
    return row;
}

void AddFindings(const std::vector<product::Finding>& findings, EnvelopeReview& review) {
    for (const product::Finding& finding : findings) {
        // What was left out comes with its entities.
        if (finding.kind == product::Finding::Kind::LeftOut) continue;
        ReviewRow row = RowOf(finding);
        const bool isThere =
            std::any_of(review.rows.begin(), review.rows.end(),
                        [&](const ReviewRow& other) { return other.text == row.text; });
        if (!isThere) review.rows.push_back(std::move(row));
    }
}

// What the steps left out, with the entities that are named.
void AddLeftOut(const CEncircleTrace& trace, AcDbDatabase& drawing, EnvelopeReview& review) {
    for (const CEncircleTrace::SLeftOut& left : trace.m_leftOut) {
        ReviewRow row;
        row.kind = Tr("Left out");
        row.text = QString("%1 \u00D7 %2, %3")
                       .arg(left.m_nCount)
                       .arg(QString::fromStdString(product::ToUtf8(left.m_strWhat)).remove("AcDb"),
                            Tr(CEncircleTrace::GetReasonName(left.m_reason)));
        for (const CString& handle : left.m_handles) {
            AcDbObjectId id;
            if (drawing.getAcDbObjectId(id, false, AcDbHandle(handle.GetString())) == Acad::eOk)
                row.ids.push_back(id);
        }
        review.rows.push_back(std::move(row));
    }
}

void ReviewSteps(AcDbDatabase& drawing, DrawingCopy& copy, const ToolPick& pick,
                 product::ToolParameters parameters, EnvelopeReview& review) {
    const product::WorkingDatabase copied(copy.Database());
    parameters.limit = kMostLines;
    product::ToolRequest request;
    request.parameters = parameters;
    request.picked = copy.Counterparts(pick.ids);
    request.axis = product::Axis::Level({pick.centre.x, pick.centre.y});
    product::ToolRun run;
    try {
        product::ToolRunner runner(copy.Database(), false);
        runner.Compute(request, run);
        const product::ToolReview findings = runner.Review(request, run, {}, {});
        AddFindings(findings.findings, review);
        AddLeftOut(run.trace, drawing, review);
        for (const product::Finding& finding : findings.findings)
            if (finding.kind == product::Finding::Kind::Exact) {
                review.difference = WithoutOptions(finding.text);
                review.greatest = finding.at;
            }
    } catch (const product::Failure& failure) {
        review.reason = WithoutOptions(failure.what());
    }
    review.steps = run.envelope.vertices;
    review.length = run.envelope.span;
    review.diameter = run.envelope.diameter;
    review.solid = run.solid;
    if (review.reason.isEmpty() && !run.envelope.found)
        review.reason = Tr("nothing of what was picked is seen from this half");
    AcArray<AcDbObjectId> made;
    if (!run.envelopeId.isNull()) made.append(run.envelopeId);
    product::EraseEnvelopes(made);
}

}  // namespace

EnvelopeReview ReviewTool(AcDbDatabase& drawing, DrawingCopy& copy, const ToolPick& pick,
                          const product::ToolParameters& parameters) {
    EnvelopeReview review;
    if (!copy.IsGood()) {
        review.reason = QString::fromStdString(copy.Reason());
        return review;
    }
    AcArray<AcDbObjectId> ids;
    for (const AcDbObjectId id : pick.ids)
        if (!id.isErased()) ids.append(id);
    const product::WorkingDatabase original(drawing);
    ids = product::SelectionOf(ids).ids;
    const product::Axis axis = product::Axis::Level({pick.centre.x, pick.centre.y});
    const SExactResult exact =
        CExactEnvelope(product::ExactRequestOf(parameters, axis, ids)).Find();
    review.exact = product::RingOf(exact);
    std::vector<product::Finding> findings;
    product::AddExactFindings(exact, findings);
    AddFindings(findings, review);
    ReviewSteps(drawing, copy, pick, parameters, review);
    std::stable_sort(
        review.rows.begin(), review.rows.end(),
        [](const ReviewRow& a, const ReviewRow& b) { return a.isWarning && !b.isWarning; });
    return review;
}

}  // namespace app
