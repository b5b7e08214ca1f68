#include "product/tool/EnvelopeRun.h"

#include <algorithm>
#include <chrono>

#include "AxisLine.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "product/tool/EngineRequest.h"
#include "product/tool/Text.h"
#include "host/db/build.h"

namespace app {
namespace {

[[noreturn]] void RefuseEmpty(const Selection& selection, const ComputeOptions& options) {
    std::string text = options.input + ": nothing was picked";
    if (!options.window) {
        text += "; model space is empty, qzenvelope info shows what the drawing holds";
    } else if (selection.notDisplayed > 0) {
        text += "; the " + std::to_string(selection.notDisplayed) +
                " entities inside the window are invisible or on layers that are off or frozen:"
                " switch them on, or leave --window out";
    } else {
        text += "; no entity lies wholly inside the window " + Describe(*options.window) +
                ": enlarge it, or leave --window out";
    }
    throw Failure(kNoResult, text);
}

// Says which drawing a refusal is about.
void Check(const Selection& selection, const CEncircleCalInfo& parameters,
           const std::optional<Point>& axis, const std::string& input,
           std::vector<std::string>& warnings) {
    try {
        CheckRequest(selection.ids, selection.box, parameters, axis, warnings);
    } catch (const Failure& failure) {
        throw Failure(failure.Status(), input + ": " + failure.what());
    }
}

// What the run must not leave behind; a report of it is worth more than silence.
void CheckNothingIsOpen(AcDbDatabase& database, std::vector<std::string>& warnings) {
    for (const host::OpenObject& open : host::OpenObjectsReport(database))
        warnings.push_back("the run left object " + HandleText(AcDbHandle(open.handle)) +
                           " open (" + ToUtf8(open.className.c_str()) + ")");
}

}  // namespace

Envelope ReadEnvelope(const AcDbObjectId& id, const std::optional<Point>& axis) {
    Envelope envelope;
    if (id.isNull()) return envelope;
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk)
        throw Failure(kNoResult, "the envelope polyline cannot be opened");
    AcString layer;
    if (polyline->layer(layer) == Acad::eOk) envelope.layer = ToUtf8(layer);
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d point;
        Vertex vertex;
        if (polyline->getPointAt(i, point) != Acad::eOk ||
            polyline->getBulgeAt(i, vertex.bulge) != Acad::eOk)
            throw Failure(kNoResult, "the envelope's vertices cannot be read");
        vertex.x = point.x;
        vertex.y = point.y;
        envelope.vertices.push_back(vertex);
    }
    envelope.found = true;
    envelope.closed = polyline->isClosed();
    envelope.handle = HandleText(id);
    envelope.extents = ExtentsOf(envelope.vertices);
    envelope.length = LengthOf(envelope.vertices);
    if (axis)
        envelope.diameter =
            2 * std::max(envelope.extents.maxY - axis->y, axis->y - envelope.extents.minY);
    envelope.selfMeeting = FindSelfMeeting(envelope.vertices);
    return envelope;
}

EnvelopeRun RunEnvelope(AcDbDatabase& database, const ComputeOptions& options) {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    EnvelopeRun run;
    run.selection = PickList(database).Pick(options.window);
    if (run.selection.ids.isEmpty()) RefuseEmpty(run.selection, options);
    CEncircleCalInfo info = ParametersOf(options);
    const std::optional<Point> axisPoint = options.noAxis ? std::nullopt : options.centre;
    Check(run.selection, info, axisPoint, options.input, run.warnings);

    AcDbObjectId envelopeId;
    const auto start = std::chrono::steady_clock::now();
    {
        const CEncircleTraceScope listen(run.trace);
        std::optional<CAxisLine> axis;
        if (axisPoint) {
            // Not on the current layer: that may be locked, and the line could not be erased again.
            const CCurrentLayerGuard layer(kEnvelopeLayer);
            const Box& box = run.selection.box;
            axis.emplace(
                CQZRect(AcGePoint3d(box.minX, box.minY, 0.0), AcGePoint3d(box.maxX, box.maxY, 0.0)),
                axisPoint->y);
            if (axis->GetId().isNull()) throw Failure(kNoResult, "the axis line cannot be drawn");
            info.m_midLineId = axis->GetId();
        }
        CEncircleLine engine(info);
        (engine.*PipelineOf(options.algorithm))(run.selection.ids, envelopeId);
    }
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    run.envelope = ReadEnvelope(envelopeId, axisPoint);
    CheckNothingIsOpen(database, run.warnings);
    return run;
}

}  // namespace app
