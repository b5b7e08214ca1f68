#include "product/tool/ToolRun.h"

#include <chrono>
#include <stdexcept>
#include <string_view>

#include "AxisLine.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "EncircleLine.h"
#include "EraseEntity.h"
#include "FileName.h"
#include "LayerTools.h"
#include "ToolFrame.h"
#include "host/db/build.h"
#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/check/TrueOutline.h"
#include "product/check/Verdict.h"
#include "product/detect/ReadSheet.h"
#include "product/picture/SolidPicture.h"
#include "product/tool/EngineRequest.h"
#include "product/tool/ExactRun.h"
#include "product/tool/LimitWatch.h"
#include "product/tool/PartDrawing.h"
#include "product/tool/SolidBodies.h"
#include "product/tool/ToolName.h"
#include "product/tool/ToolPicture.h"

namespace product {
namespace {

constexpr int kPageSolidWidth = 560;   // pixels
constexpr double kSecondShift = 1000;  // of the second pipeline, to the right

using Pipeline = void (CEncircleLine::*)(const AcArray<AcDbObjectId>& ids, AcDbObjectId& outId);

Pipeline PipelineOf(Algorithm algorithm) {
    switch (algorithm) {
        case Algorithm::Live:
            return &CEncircleLine::GetEncircleLine3;
        case Algorithm::Hatch:
            return &CEncircleLine::GetEncircleLineByHatch;
        case Algorithm::First:
            return &CEncircleLine::GetEncircleLine;
        case Algorithm::Second:
            return &CEncircleLine::GetEncircleLine2;
        case Algorithm::Exact:
            break;
    }
    throw std::logic_error("the exact envelope is none of the engine's pipelines");
}

[[noreturn]] void RefuseEmpty(const Selection& selection, const ToolRequest& request) {
    std::string text = "nothing was picked";
    if (selection.filtered > 0) {
        text += "; --layer, --exclude-layer and --exclude-type keep all " +
                std::to_string(selection.filtered) + " entities out; loosen them";
    } else if (!request.rule.window) {
        text += "; model space is empty, qzenvelope info shows what the drawing holds";
    } else if (selection.notDisplayed > 0) {
        text += "; the " + std::to_string(selection.notDisplayed) +
                " entities inside the window are invisible or on layers that are off or frozen:"
                " switch them on, or leave --window out";
    } else {
        text += "; no entity lies " +
                std::string(request.rule.isCrossing ? "inside or across" : "wholly inside") +
                " the window " + Describe(*request.rule.window) +
                ": enlarge it, or leave --window out";
    }
    throw Failure(Fault::NothingThere, text);
}

// The engine looks at a tool whose axis lies level, from left to right.
void RequireLevel(const std::optional<Axis>& axis) {
    if (axis && !axis->IsLevel())
        throw Failure(Fault::NotCarriedOut,
                      "this algorithm takes a horizontal axis only; turn the drawing");
}

// What the run must not leave behind; a report of it is worth more than silence.
void CheckNothingIsOpen(AcDbDatabase& database, std::vector<std::string>& warnings) {
    for (const host::OpenObject& open : host::OpenObjectsReport(database))
        warnings.push_back("the run left object " + HandleText(AcDbHandle(open.handle)) +
                           " open (" + ToUtf8(open.className.c_str()) + ")");
}

// Only what still is an envelope: the user may have moved the polyline to a layer of his own.
void EraseFormer(const AcDbObjectId& id) {
    if (id.isNull()) return;
    const Selection former = [&] {
        AcArray<AcDbObjectId> ids;
        ids.append(id);
        return SelectionOf(ids);
    }();
    EraseEnvelopes(former.envelopes);
}

// Points closer than this were one.
double PointTolerance(const ToolRun& run, const ToolParameters& parameters) {
    return run.exact ? run.exact->m_dPoint : parameters.pointTolerance;
}

// The exact envelope costs little: what the steps miss is seen beside it.
void CompareWithExact(const ToolRequest& request, const ToolRun& run,
                      const std::vector<Vertex>& ring, std::vector<Finding>& findings) {
    if (run.exact) return;
    const SExactResult exact =
        CExactEnvelope(ExactRequestOf(request.parameters, *request.axis, run.selection.ids,
                                      request.curves, request.rule.Filter()))
            .Find();
    if (exact.m_refusal != SExactResult::E_Refusal_None) {
        findings.push_back({Finding::Kind::Exact, true,
                            "there is no exact envelope: " + ToUtf8(CExactEnvelope::Explain(exact)),
                            std::nullopt});
        return;
    }
    AddDifference(ring, RingOf(exact), *request.axis, findings);
}

// The envelope where the tool lies: the second pipeline puts it beside.
std::vector<Vertex> RingAtTheTool(const ToolRun& run, Algorithm algorithm) {
    std::vector<Vertex> ring = run.envelope.vertices;
    if (algorithm == Algorithm::Second)
        for (Vertex& v : ring) v.x -= kSecondShift;
    return ring;
}

CQZRect RectOf(const Box& box) {
    return CQZRect(AcGePoint3d(box.low.x, box.low.y, 0.0),
                   AcGePoint3d(box.high.x, box.high.y, 0.0));
}

}  // namespace

ToolRunner::ToolRunner(AcDbDatabase& database, bool withPictures) : m_database(database) {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    if (withPictures) m_pictures = std::make_unique<PictureBuilder>(database);
}

void ToolRunner::Compute(const ToolRequest& request, ToolRun& run) {
    const std::optional<Axis> axis = request.SeesAxis() ? request.axis : std::nullopt;
    run.selection =
        request.picked ? SelectionOf(*request.picked) : PickBy(m_database, request.rule);
    if (run.selection.ids.isEmpty()) RefuseEmpty(run.selection, request);
    if (request.parameters.algorithm != Algorithm::Exact) {
        RequireLevel(request.axis);
        if (run.selection.partial > 0)
            run.warnings.push_back(
                std::to_string(run.selection.partial) +
                " blocks hold some of what --layer, --exclude-layer and --exclude-type keep out; "
                "this algorithm takes blocks whole, --algorithm exact does not");
    }
    CheckRequest(run.selection, request.parameters, axis, run.warnings);
    if (request.parameters.algorithm == Algorithm::Exact)
        DrawExactEnvelope(request, run);
    else
        DrawEnvelope(request, run);
    run.envelope = ReadEnvelope(run.envelopeId, axis);
    CheckNothingIsOpen(m_database, run.warnings);
    if (!run.envelope.found || !request.axis) return;
    run.solid =
        request.solidInDrawing
            ? RevolveInDrawing(run.envelopeId, run.envelope, *request.axis, m_isSolidLayerEmpty)
            : RevolveRing(run.envelope.vertices, run.envelope.closed, *request.axis);
    TakeParts(request, run);
}

void ToolRunner::TakeParts(const ToolRequest& request, ToolRun& run) {
    try {
        if (run.solid.profile)
            run.parts = FindParts(m_database, request, run);
        else if (request.parts.IsSplit() && run.solid.refusal)
            throw Failure(Fault::NoSolid,
                          "the tool cannot be split, for no solid can be made of the envelope: " +
                              run.solid.refusal->Text());
    } catch (const Failure&) {
        // Nothing is left half done: without the parts that were asked for, no envelope.
        EraseById(run.envelopeId);
        run.envelopeId = AcDbObjectId();
        run.envelope = {};
        run.solid = {};
        run.isBegun = false;
        throw;
    }
}

void ToolRunner::DrawExactEnvelope(const ToolRequest& request, ToolRun& run) {
    if (!request.SeesAxis())
        throw Failure(Fault::Request,
                      "the exact envelope needs an axis; add --centre or --axis, or use "
                      "--algorithm 3");
    run.isBegun = true;
    run.envelopesErased = EraseEnvelopes(run.selection.envelopes);
    EraseFormer(request.formerEnvelope);
    const auto start = std::chrono::steady_clock::now();
    run.exact = DrawExact(ExactRequestOf(request.parameters, *request.axis, run.selection.ids,
                                         request.curves, request.rule.Filter()),
                          run.envelopeId);
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void ToolRunner::DrawEnvelope(const ToolRequest& request, ToolRun& run) {
    CEncircleCalInfo info = EngineRecordOf(request.parameters);
    const Pipeline pipeline = PipelineOf(request.parameters.algorithm);
    run.isBegun = true;
    run.envelopesErased = EraseEnvelopes(run.selection.envelopes);
    EraseFormer(request.formerEnvelope);
    const auto start = std::chrono::steady_clock::now();
    LimitWatch watch(request.parameters.limit);
    {
        const CEncircleTraceScope listen(run.trace);
        const CEncircleWatchScope watched(watch);
        std::optional<CAxisLine> line;
        if (request.SeesAxis()) {
            // Not on the current layer: that may be locked, and the line could not be erased again.
            const CCurrentLayerGuard layer(kEnvelopeLayer);
            line.emplace(RectOf(run.selection.box), request.axis->from.y);
            if (line->GetId().isNull())
                throw Failure(Fault::NoResult, "the axis line cannot be drawn");
            info.m_midLineId = line->GetId();
        }
        CEncircleLine engine(info);
        (engine.*pipeline)(run.selection.ids, run.envelopeId);
    }
    if (!watch.Reason().empty()) throw Failure(Fault::Request, watch.Reason());
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void ToolRunner::WriteFiles(const ToolRequest& request, ToolRun& run) {
    if (!request.svg.empty() && m_pictures != nullptr) {
        std::string warning;
        const std::string svg = ToSvg(SheetPicture(m_pictures->Run(), request, run, warning));
        if (!warning.empty()) run.warnings.push_back(warning);
        host::FileError error;
        if (!host::WriteFileAtomically(request.svg, {std::string_view(svg)}, error))
            throw Failure(Fault::Output, request.svg + ": the picture cannot be written: " +
                                             error.reason + "; choose another place with --svg");
    }
    if (!run.envelope.found || (!request.solid.Any() && request.profile.empty())) return;
    if (request.fileName && run.solid.profile && !IsFileName(FromUtf8(*request.fileName)))
        throw Failure(Fault::Request,
                      "the tool's name '" + *request.fileName + "' cannot be the name of a file");
    const std::vector<SolidBody> bodies =
        BodiesOf(request, run, NameOfTool(request, run.envelope, m_database));
    WriteSolidFiles(run.solid, bodies, m_database, request.solid, request.place, run.files);
    if (request.profile.empty() || bodies.empty()) return;
    std::vector<ProfilePart> parts;
    for (const SolidBody& body : bodies) parts.push_back({&body.profile, body.layer});
    WriteProfile(request.profile, parts,
                 request.solid.units ? *request.solid.units : m_database.insunits(), request.place);
    run.files.push_back(request.profile);
}

ToolReview ToolRunner::Review(const ToolRequest& request, const ToolRun& run, const std::string& id,
                              const std::vector<Finding>& before) {
    ToolReview review;
    review.findings = before;
    const ToolParameters& parameters = request.parameters;
    for (const std::string& warning : run.warnings)
        review.findings.push_back({Finding::Kind::Note, true, warning, std::nullopt});
    AddMeetingFinding(run.envelope.selfMeeting, review.findings);
    if (run.parts)
        for (const Finding& finding : run.parts->findings) review.findings.push_back(finding);
    if (run.exact)
        AddExactFindings(*run.exact, review.findings);
    else
        AddTraceFindings(run.trace, parameters.pointTolerance, review.findings);
    if (run.selection.cut > 0)
        review.findings.push_back({Finding::Kind::Window, true,
                                   "the window cuts " + std::to_string(run.selection.cut) +
                                       " entities, which are left out, the first at " +
                                       Figure(run.selection.cutAt.x) + ", " +
                                       Figure(run.selection.cutAt.y) + "; --crossing picks them",
                                   run.selection.cutAt});
    std::optional<AxisCheck> heights;
    const std::vector<Vertex> ring = RingAtTheTool(run, parameters.algorithm);
    detect::Sheet sheet = detect::SheetOf(request.curves);
    if (request.curves.empty()) {
        detect::ReadResult read =
            detect::ReadSheet(m_database, run.selection.ids, 0, request.rule.Filter());
        AddFaultFindings(read.faults, review.findings);
        sheet = std::move(read.sheet);
    }
    if (request.SeesAxis() && run.envelope.found) {
        heights = CheckAxisPlace(sheet, *request.axis, parameters.half, ring,
                                 2e-5 * detect::Diagonal(sheet.box));
        AddAxisFindings(*heights, *request.axis, review.findings);
        CompareWithExact(request, run, ring, review.findings);
        if (!run.exact)
            AddUndrawnFindings(ring, sheet, *request.axis, PointTolerance(run, parameters),
                               review.findings);
    }
    if (request.axis) {
        const detect::ItemFilter filter = request.rule.Filter();
        const OutlineCheck check = CheckOutline(
            {run.selection.ids, filter, request.curves}, *request.axis, parameters.half,
            parameters.includeDashed, ring, PointTolerance(run, parameters));
        const double diameter =
            run.solid.profile ? run.solid.measures.largestDiameter : run.envelope.diameter;
        review.figures = AddOutlineFindings(check,
                                            {parameters.half, PointTolerance(run, parameters),
                                             diameter, heights ? &*heights : nullptr},
                                            review.findings);
    }
    SortFindings(review.findings);
    if (m_pictures != nullptr && !id.empty()) DrawForPage(request, run, id, review);
    return review;
}

void ToolRunner::DrawForPage(const ToolRequest& request, const ToolRun& run, const std::string& id,
                             ToolReview& review) {
    if (run.selection.box.IsEmpty()) return;
    review.svg = ToSvgElement(
        PagePicture(m_pictures->Run(run.selection.ids), request, run, review.findings), id);
    if (!run.solid.profile) return;
    std::string reason;
    if (const auto solid = DrawSolid(ShownParts(request, run), kPageSolidWidth, reason))
        review.png = solid->bytes;
    else
        review.findings.push_back(
            {Finding::Kind::Solid, false, "the solid cannot be shown: " + reason, std::nullopt});
}

}  // namespace product
